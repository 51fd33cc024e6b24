#include "logdesk/PaneSplit.h"

#include <algorithm>

namespace logdesk
{

namespace
{

// The log text's part of `room` pixels.
int BoundedHeight(int wanted, int room)
{
    const int least = std::min(PaneSplit::kLeastHeight, room / 2);
    return std::clamp(wanted, least, room - least);
}

} // namespace

PaneSplit::Heights PaneSplit::LayOut(int height) const
{
    height = std::max(height, 0);
    if (!m_showsMessages)
        return {height, 0, 0};
    if (!m_showsLogText)
        return {0, 0, height};
    Heights heights;
    heights.bar = std::min(kBarHeight, height);
    const int room = height - heights.bar;
    heights.logText = BoundedHeight((room * m_share + kWhole / 2) / kWhole, room);
    heights.messages = room - heights.logText;
    return heights;
}

void PaneSplit::SetShare(int share)
{
    m_share = std::clamp(share, 1, kWhole - 1);
}

void PaneSplit::MoveBar(int y, int height)
{
    const int room = height - kBarHeight;
    if (room > 0)
        SetShare((BoundedHeight(y, room) * kWhole + room / 2) / room);
}

void PaneSplit::Show(Pane pane, bool show)
{
    bool& one = pane == Pane::LogText ? m_showsLogText : m_showsMessages;
    bool& other = pane == Pane::LogText ? m_showsMessages : m_showsLogText;
    one = show;
    other = other || !show;
}

} // namespace logdesk
