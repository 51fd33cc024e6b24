// What the strip beside the log text shows, and where a click there leads.
#pragma once

#include "logview/merge/StripState.h"

#include <functional>
#include <optional>

namespace logview
{

// Marks by pixel row.
struct StripMarks
{
    std::vector<std::uint8_t> errorLogs; // a bit for each log that has errors there
    std::vector<std::uint32_t> found;    // matches
    std::vector<int> bookmarks;          // their rows
};

class Strip
{
public:
    // The matches in each of `parts` equal parts of a range of numbers.
    using CountFound = std::function<std::vector<std::uint32_t>(const NumberRange& range, std::size_t parts)>;

    // Where a click leads: to an error, else to the first row with the number or a greater one.
    struct Target
    {
        std::optional<RowId> error;
        std::uint32_t number = 0;
    };

    // False if everything looks as before. Scrolling counts nothing.
    bool Update(const MergedRows& merged, const StripState& now, const CountFound& countFound);
    void Reset() { *this = {}; }

    const StripState& GetState() const { return m_state; }
    const StripMarks& GetMarks() const { return m_marks; }

    // An error within reach of a pixel row goes before a bookmark, and a bookmark before the row itself.
    Target GetTarget(const MergedRows& merged, int row) const;

private:
    StripState m_state;
    StripMarks m_marks;
};

} // namespace logview
