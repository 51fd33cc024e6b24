// What the strip beside the log text stands for.
#pragma once

#include "logview/merge/MergedRows.h"

#include <algorithm>
#include <vector>

namespace logview
{

// The session's numbers over `height` pixel rows, and whatever else makes the strip look another way.
struct StripState
{
    NumberRange numbers = {0, 0};
    int height = 0;
    std::uint32_t changes = 0; // of the merged rows, and of what is found
    unsigned foundChanges = 0;
    std::vector<std::uint32_t> bookmarks;
    std::uint32_t window = 0; // colour
    int viewTop = 0;
    int viewBottom = 0;
    bool operator==(const StripState&) const = default;

    // The pixel row of a number, and the first number of a pixel row, both within bounds.
    int RowOf(std::uint32_t number) const
    {
        const std::uint64_t at = std::clamp(number, numbers.first, numbers.last) - numbers.first;
        return static_cast<int>(at * static_cast<std::uint64_t>(height) / Count());
    }
    std::uint32_t NumberAt(int row) const
    {
        if (height <= 0)
            return numbers.first;
        const auto at = static_cast<std::uint64_t>(std::clamp(row, 0, height));
        const auto rows = static_cast<std::uint64_t>(height);
        return static_cast<std::uint32_t>(
            std::min(numbers.first + (at * Count() + rows - 1) / rows, std::uint64_t{0xFFFFFFFF}));
    }

private:
    std::uint64_t Count() const { return std::uint64_t{numbers.last} - numbers.first + 1; }
};

} // namespace logview
