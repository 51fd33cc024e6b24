#include "report/header/HeaderTip.h"

#include "zemacore/WideText.h"

#include <commctrl.h>
#include <utility>

// The system gets the tip for one item at a time: the items move and change their texts.
void HeaderTip::Follow(const MSG& message, int headerItem, const RECT& rect, const std::string& text)
{
    if (headerItem != m_headerItem || text != m_text || !::EqualRect(&rect, &m_rect))
    {
        Hide();
        if (text.empty())
            return;
        if (!m_hwnd)
            m_hwnd = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                       WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, message.hwnd,
                                       nullptr, nullptr, nullptr);
        m_header = message.hwnd;
        m_headerItem = headerItem;
        m_text = text;
        m_rect = rect;
        TOOLINFOW tool = {};
        tool.cbSize = TTTOOLINFOW_V1_SIZE; // which every version of the control knows
        tool.hwnd = message.hwnd;
        tool.rect = rect;
        ZEMA::WideString wide;
        ZEMA::ToWide(text.data(), text.size(), wide);
        tool.lpszText = wide.data(); // the control takes a copy
        ::SendMessage(m_hwnd, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    MSG relayed = message;
    ::SendMessage(m_hwnd, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

void HeaderTip::Hide()
{
    if (std::exchange(m_headerItem, -1) < 0)
        return;
    TOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = m_header;
    ::SendMessage(m_hwnd, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void HeaderTip::End()
{
    m_headerItem = -1;
    if (m_hwnd)
        ::DestroyWindow(std::exchange(m_hwnd, nullptr));
}
