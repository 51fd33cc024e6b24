#include "report/edit/EditorWindow.h"

#include "ReportNotify.h"
#include "ReportStyle.h"
#include "qmcommon/QmWindowText.h"

#include <string>

namespace report
{

constexpr char kCellSeparator = 7;
constexpr std::size_t kMaxText = 65535; // bytes of a cell's text

std::string EditorText(HWND editor)
{
    std::string text = QmGetWindowText(editor);
    std::erase(text, kCellSeparator);
    if (text.size() <= kMaxText)
        return text;
    std::size_t end = kMaxText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) // within a character
        --end;
    return text.substr(0, end);
}

HWND TextField(HWND editor)
{
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    const bool isCombo = dynamic_cast<CComboBox*>(CWnd::FromHandlePermanent(editor)) != nullptr;
    return isCombo && ::GetComboBoxInfo(editor, &info) && info.hwndItem ? info.hwndItem : editor;
}

void TellEnd(HWND editor, UINT key)
{
    const std::string text = EditorText(editor);
    _NMRVITEMEDIT record = {};
    record.hdr = {editor, kEditorId, RVN_ENDITEMEDIT};
    record.editor = editor;
    record.key = key;
    record.text = text.c_str();
    ::SendMessage(::GetParent(editor), WM_NOTIFY, kEditorId, reinterpret_cast<LPARAM>(&record));
}

bool IsEndKey(const MSG& message)
{
    return message.message == WM_KEYDOWN &&
           (message.wParam == RVEK_TAB || message.wParam == RVEK_RETURN || message.wParam == RVEK_ESCAPE);
}

} // namespace report
