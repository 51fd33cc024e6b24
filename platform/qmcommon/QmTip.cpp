#include "qmcommon/QmTip.h"

#include "zemacore/WideText.h"

#include <commctrl.h>

CQmTip::~CQmTip()
{
    if (m_tip && ::IsWindow(m_tip))
        ::DestroyWindow(m_tip);
}

void CQmTip::Show(HWND window, const char* text, int width)
{
    if (m_tip && (window != m_window || !text || !*text))
    {
        if (::IsWindow(m_tip)) // it goes with the window that it belongs to
            ::DestroyWindow(m_tip);
        m_tip = nullptr;
    }
    if (!text || !*text)
        return;
    m_window = window;
    ZEMA::WideString wide;
    ZEMA::ToWide(text, std::char_traits<char>::length(text), wide);
    TOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // which every version of the control knows
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    tool.lpszText = wide.data(); // the tip takes a copy
    const bool isNew = !m_tip;
    if (isNew)
        m_tip = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                  WS_POPUP | TTS_ALWAYSTIP | (width > 0 ? TTS_NOPREFIX : 0u), 0, 0, 0, 0,
                                  window, nullptr, nullptr, nullptr);
    if (width > 0) // also what makes it take line ends
        ::SendMessage(m_tip, TTM_SETMAXTIPWIDTH, 0, width);
    ::SendMessage(m_tip, isNew ? TTM_ADDTOOLW : TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}
