// When a tip shows: after the pointer has stayed over a cell's text. Plain integers; no window system.
#pragma once

#include "report/model/Selection.h"

#include <cstdint>
#include <optional>

namespace report
{

// A tip that was seen so many milliseconds ago, or later, makes the next one show at once.
constexpr std::uint32_t kQuickTip = 500;
constexpr std::uint32_t kUsualHover = 400; // milliseconds

struct TipCell
{
    int row = kNoRow;
    int column = -1;

    bool operator==(const TipCell&) const = default;
};

// Times are milliseconds of a clock that may run over.
class TipHover
{
public:
    enum class Action
    {
        Nothing,
        Show, // ask whether there is something to show for Cell(), hide the tip if not, and tell by HasShown
        Hide
    };

    void SetDelay(std::uint32_t delay) { m_delay = delay; }

    // The pointer is over the text of a cell, or over none.
    Action Move(std::optional<TipCell> cell, std::uint32_t now);

    // How long until Tick is worth a call; none if nothing is waited for.
    std::optional<std::uint32_t> Rest(std::uint32_t now) const;
    Action Tick(std::uint32_t now);

    void HasShown(bool shows) { m_state = shows ? State::Shown : State::Done; }

    // The user does something else: no tip any more as long as the pointer stays over the cell.
    void Dismiss();

    // Nothing is known of where the pointer is.
    void Forget();

    const std::optional<TipCell>& Cell() const { return m_cell; }
    bool IsShown() const { return m_cell && m_state == State::Shown; }
    bool IsDone() const { return m_cell && m_state == State::Done; }

private:
    enum class State
    {
        Waiting,
        Shown,
        Done
    };

    std::uint32_t m_delay = kUsualHover;
    std::optional<TipCell> m_cell; // that the pointer is over
    State m_state = State::Done;   // with it
    std::uint32_t m_since = 0;     // when it came there
    std::optional<std::uint32_t> m_lastSeen;
};

} // namespace report
