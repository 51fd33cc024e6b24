#include "report/edit/ReasonTip.h"

#include "zemacore/WideText.h"

#include <commctrl.h>
#include <utility>

namespace report
{

constexpr int kMaxWidth = 400; // pixels

void ReasonTip::Show(HWND editor, const std::string& text)
{
    Hide();
    if (text.empty())
    {
        ::MessageBeep(MB_ICONWARNING);
        return;
    }
    const HWND control = ::GetParent(editor);
    m_hwnd =
        ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                          0, 0, 0, control, nullptr, nullptr, nullptr);
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    TOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // which every version of the control knows
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = control;
    tool.lpszText = wide.data(); // the tip takes a copy
    RECT place = {};
    ::GetWindowRect(editor, &place);
    ::SendMessage(m_hwnd, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    ::SendMessage(m_hwnd, TTM_SETMAXTIPWIDTH, 0, kMaxWidth);
    ::SendMessage(m_hwnd, TTM_TRACKPOSITION, 0, MAKELPARAM(place.left, place.bottom));
    ::SendMessage(m_hwnd, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void ReasonTip::Hide()
{
    if (m_hwnd)
        ::DestroyWindow(std::exchange(m_hwnd, nullptr));
}

} // namespace report
