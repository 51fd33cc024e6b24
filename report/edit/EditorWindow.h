// What the windows share in which a cell is edited.
#pragma once

#include "afxwin.h"

namespace report
{

constexpr UINT kEditorId = 1;   // of the control's child windows
extern const UINT kEditMessage; // that the control sends itself

// The text as a cell can keep it: UTF-8, at most 65,535 bytes of whole characters, without the byte that
// separates encoded cells.
std::string EditorText(HWND editor);

// The field of a combo box; any other editor is its own.
HWND TextField(HWND editor);

// Tells the control, the editor's parent, that an edit ends (RVN_ENDITEMEDIT); `key` is 0 for the lost focus.
// The editor and the control may be gone afterwards.
void TellEnd(HWND editor, UINT key);

// Whether a message is a key that ends an edit. The editor gives the focus to the control then, and ends
// because it has lost it.
bool IsEndKey(const MSG& message);

} // namespace report
