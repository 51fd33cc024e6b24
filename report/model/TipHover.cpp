#include "report/model/TipHover.h"

namespace report
{

TipHover::Action TipHover::Move(std::optional<TipCell> cell, std::uint32_t now)
{
    if (cell == m_cell)
        return Action::Nothing;
    const bool wasShown = IsShown();
    if (wasShown)
        m_lastSeen = now;
    m_cell = cell;
    m_state = State::Waiting;
    m_since = now;
    if (m_lastSeen && now - *m_lastSeen > kQuickTip)
        m_lastSeen.reset();
    if (cell && m_lastSeen)
        return Action::Show;
    return wasShown ? Action::Hide : Action::Nothing;
}

std::optional<std::uint32_t> TipHover::Rest(std::uint32_t now) const
{
    if (!m_cell || m_state != State::Waiting)
        return std::nullopt;
    const std::uint32_t gone = now - m_since;
    return gone < m_delay ? m_delay - gone : 0;
}

TipHover::Action TipHover::Tick(std::uint32_t now)
{
    return Rest(now) == 0u ? Action::Show : Action::Nothing;
}

void TipHover::Dismiss()
{
    m_state = State::Done;
    m_lastSeen.reset();
}

void TipHover::Forget()
{
    m_cell.reset();
    m_lastSeen.reset();
}

} // namespace report
