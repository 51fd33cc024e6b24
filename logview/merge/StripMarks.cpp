#include "logview/merge/StripMarks.h"

namespace logview
{

namespace
{

constexpr int kReach = 3; // of a click, in pixel rows

} // namespace

bool Strip::Update(const MergedRows& merged, const StripState& now, const CountFound& countFound)
{
    if (now == m_state)
        return false;
    const auto height = static_cast<std::size_t>(now.height);
    const bool isSameScale = now.height == m_state.height && now.numbers == m_state.numbers;
    if (!isSameScale || now.changes != m_state.changes)
        m_marks.errorLogs = merged.FindErrorParts(now.numbers, height);
    if (!isSameScale || now.foundChanges != m_state.foundChanges)
        m_marks.found = countFound(now.numbers, height);
    m_marks.bookmarks.clear();
    for (const std::uint32_t number : now.bookmarks)
        if (number >= now.numbers.first && number <= now.numbers.last)
            m_marks.bookmarks.push_back(now.RowOf(number));
    m_state = now;
    return true;
}

Strip::Target Strip::GetTarget(const MergedRows& merged, int row) const
{
    const std::uint32_t begin = m_state.NumberAt(row - kReach);
    const std::uint32_t end = m_state.NumberAt(row + 1);
    const std::optional<PlacedRow> error = merged.FindErrorFrom(begin);
    if (error && error->record.time < end)
        return {error->place, error->record.time};
    const std::vector<std::uint32_t>& bookmarks = m_state.bookmarks;
    const auto bookmark = std::lower_bound(bookmarks.begin(), bookmarks.end(), begin);
    return {std::nullopt, bookmark != bookmarks.end() && *bookmark < end ? *bookmark : m_state.NumberAt(row)};
}

} // namespace logview
