#include "LinesEdit.h"

#include <qmcommon/QmWindowText.h>

#include <algorithm>
#include <utility>

namespace
{

// The size of an editor, in cells.
constexpr int kLines = 5;
constexpr int kWidthInLines = 15;

std::string LineEndOf(const std::string& text)
{
    const std::size_t end = text.find_first_of("\r\n");
    return end == std::string::npos ? "\n" : text.substr(end, text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
}

std::string WithLineEnds(const std::string& text, const std::string& lineEnd)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] == '\r' || text[i] == '\n')
            result += lineEnd;
        else
            result += text[i];
        if (text.compare(i, 2, "\r\n") == 0)
            ++i;
    }
    return result;
}

} // namespace

BEGIN_MESSAGE_MAP(LinesEdit, CEdit)
    ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

bool LinesEdit::Create(CWnd& control, const CRect& cell)
{
    CRect client;
    control.GetClientRect(client);
    const int width = std::max(cell.Width(), kWidthInLines * cell.Height());
    const int height = kLines * cell.Height();
    const int left = std::min(int{cell.left}, std::max(0, client.Width() - width));
    const int top = std::min(int{cell.top}, std::max(0, client.Height() - height));
    const DWORD style =
        WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
    if (!CWnd::Create("EDIT", nullptr, style, CRect(left, top, left + width, top + height), &control, 2))
        return false;
    SetFont(control.GetFont());
    QmSetWindowText(m_hWnd, WithLineEnds(m_text, "\r\n"));
    SendMessage(EM_SETLIMITTEXT);
    const int end = GetWindowTextLength();
    SendMessage(EM_SETSEL, static_cast<WPARAM>(end), end);
    SendMessage(EM_SCROLLCARET);
    return true;
}

BOOL LinesEdit::PreTranslateMessage(MSG* message)
{
    const bool isKey = message->message == WM_KEYDOWN;
    const bool isLineEnd = message->wParam == VK_RETURN && ::GetKeyState(VK_CONTROL) < 0;
    if (isKey && isLineEnd)
        SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("\r\n"));
    else if (isKey && (message->wParam == VK_RETURN || message->wParam == VK_TAB))
        Finish(true);
    else if (isKey && message->wParam == VK_ESCAPE)
        Finish(false);
    else
        return CEdit::PreTranslateMessage(message);
    return TRUE;
}

void LinesEdit::OnKillFocus(CWnd*)
{
    Default();
    Finish(true);
}

void LinesEdit::Finish(bool isAccepted)
{
    if (!m_end)
        return; // it has ended, or is about to
    const End end = std::exchange(m_end, {});
    if (!end(isAccepted, WithLineEnds(QmGetWindowText(m_hWnd), LineEndOf(m_text))))
        m_end = end;
}
