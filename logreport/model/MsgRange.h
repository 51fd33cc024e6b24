// Which messages a viewer shows: arithmetic of ids and rows.
#pragma once

#include <cstdint>
#include <optional>

namespace logreport
{

// What is announced is shown by the next tick. Ids of cleared messages lie below the clear point.
class MsgRange
{
public:
    // A new message at the end, or a new view: both are shown from id 1 on.
    void Announce(std::uint32_t last);

    // Hides `rows` rows, which are all that are shown.
    void Clear(int rows);
    void ShowCleared() { m_clear = 0; }

    // Takes over what was announced and answers how many rows there are now; none if nothing is pending.
    std::optional<int> Tick();

    // Row 0 is again id 0: as for a new window.
    void ResetOffset() { m_offset = 0; }

    std::uint32_t Offset() const { return m_offset; } // the id of row 0
    std::uint32_t Last() const { return m_last; }     // the id of the newest message; 0 for none
    std::uint32_t IdOf(int row) const { return m_offset + static_cast<std::uint32_t>(row); }

    // The row of an id; none if it would not be among `rows` rows.
    std::optional<int> RowOf(std::uint32_t id, int rows) const;

private:
    static constexpr std::uint32_t kNothing = 0xFFFFFFFF;

    std::uint32_t m_offset = 0;
    std::uint32_t m_clear = 0;
    std::uint32_t m_pending = kNothing; // the first id to show with the next tick
    std::uint32_t m_last = 0;
    bool m_isAnnounced = false; // anything ever
};

} // namespace logreport
