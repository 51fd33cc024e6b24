#include "logview/MarginLayout.h"

#include "logview/RowSource.h"

#include <algorithm>
#include <iterator>

namespace logview
{

namespace
{

constexpr int kRowHeight = 16;   // for which the other sizes are meant
constexpr int kTextColumns = 40; // that the window must have beside initials and counts

struct LogMark
{
    StripePattern stripe;
    const char* initial;
};

constexpr LogMark kLogMarks[] = {
    {{0, 16, 1, 1}, "M"},  // whole
    {{0, 6, 1, 1}, "R"},   // narrow, at the left
    {{0, 16, 6, 8}, "So"}, // dashes
    {{0, 16, 2, 4}, "SQ"}, // dots
    {{10, 16, 1, 1}, "Se"} // narrow, at the right
};
static_assert(std::size(kLogMarks) == kFileCount);

bool HasMark(int file)
{
    return file >= 0 && file < static_cast<int>(kFileCount);
}

} // namespace

MarginLayout::MarginLayout(int rowHeight, int columnWidth, int windowWidth, int textColumns)
{
    const int height = std::max(rowHeight, 1);
    const int column = std::max(columnWidth, 1);
    const auto scaled = [height](int pixels) { return std::max(pixels * height / kRowHeight, 1); };
    const auto take = [this](int width) {
        const MarginBand band = {m_width, m_width + width};
        m_width = band.end;
        return band;
    };
    m_line = std::max((height + kRowHeight / 2) / kRowHeight, 1);
    int size = std::max(std::min(std::max(height * 3 / 4, kLeastBox), height), 1);
    size += size % 2 == 0 ? (size < height ? 1 : -1) : 0;

    const int gap = scaled(3);
    const int without = scaled(9) + scaled(6) + size + 4 * gap;
    const int letters = (kInitialColumns + kCountColumns) * column;
    const bool hasLetters = windowWidth - without - letters >= kTextColumns * column;

    const int text = textColumns * column;
    const bool hasText = hasLetters && windowWidth - without - letters - text >= kTextColumns * column;

    m_bookmark = take(scaled(9));
    m_stripe = take(scaled(6));
    take(gap);
    m_initial = take(hasLetters ? kInitialColumns * column : 0);
    m_text = take(hasText ? text : 0);
    m_fold = take(size + 2 * gap);
    m_box = {m_fold.begin + gap, (height - size) / 2, size};
    m_count = take(hasLetters ? kCountColumns * column : 0);
    take(gap);
}

MarginZone MarginLayout::ZoneAt(int x) const
{
    if (x < 0 || x >= m_width)
        return MarginZone::Outside;
    if (x < m_bookmark.end)
        return MarginZone::Bookmark;
    return x >= m_fold.begin && x < m_count.end ? MarginZone::Fold : MarginZone::Log;
}

StripePattern StripeOf(int file)
{
    return HasMark(file) ? kLogMarks[file].stripe : StripePattern{0, 0, 0, 1};
}

const char* InitialOf(int file)
{
    return HasMark(file) ? kLogMarks[file].initial : "";
}

std::string CountText(unsigned count)
{
    if (count == 0)
        return "";
    return count > 99 ? "99+" : std::to_string(count);
}

} // namespace logview
