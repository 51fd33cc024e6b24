// What the windows share in which a cell is edited.
#pragma once

#include "afxwin.h"

namespace report
{

constexpr UINT kEditorId = 1;   // of the control's child windows
extern const UINT kEditMessage; // that the control sends itself

// Without the byte that separates encoded cells, which is none of their texts; as UTF-8.
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
