// What the windows share in which a cell is edited.
#pragma once

#include "afxwin.h"

namespace report
{

constexpr UINT kEditorId = 1;   // of the control's child windows
extern const UINT kEditMessage; // that the control sends itself

// What a cell can keep of the text, in UTF-8: no more bytes, and not the one that separates encoded cells.
std::string EditorText(HWND editor);

// The field of a combo box; any other editor is its own.
HWND TextField(HWND editor);

// Tells the control, the editor's parent, that an edit ends (RVN_ENDITEMEDIT); `key` is 0 for the lost focus.
// The editor and the control may be gone afterwards.
void TellEnd(HWND editor, UINT key);

// Whether a message is a key that ends an edit. It gives the focus to the control then, and the editor ends
// because it has lost it.
bool IsEndKey(const MSG& message);

} // namespace report
