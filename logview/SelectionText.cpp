#include "logview/SelectionText.h"

#include "logview/RowCache.h"
#include "vkgrafic/TextCells.h"

#include <algorithm>

namespace logview
{

namespace
{

constexpr int kRowsTogether = 256;

// Tells of each line that can be read, and of its columns from `begin` to `end`.
template <typename Tell>
void ForEachLine(RowSource& source, const DisplayedRows& rows, const Selection& selection, Tell tell)
{
    std::string whole;
    RowCache cache(source);
    std::size_t size = 0;
    const int rowsEnd = selection.endRow < rows.RowCount() ? selection.endRow + 1 : rows.RowCount();
    int prepared = std::max(selection.beginRow, 0);
    for (int row = prepared; row < rowsEnd; ++row)
    {
        if (row == prepared)
        {
            const int count = std::min(kRowsTogether, rowsEnd - row);
            cache.Prepare(rows, row, count);
            prepared = row + count;
        }
        const CachedRow* const cached = cache.Get(row);
        if (!cached || !cached->readable)
            continue;
        std::string_view line = cached->text;
        if (cached->length > RowCache::kLineBytes && rows.ReadLine(row, whole))
            line = whole;
        const auto within = [&line](int column) {
            return std::min(line.size(), static_cast<std::size_t>(std::max(column, 0)));
        };
        const std::size_t end = row == selection.endRow ? within(selection.endColumn) : line.size();
        const std::size_t begin =
            row == selection.beginRow ? std::min(within(selection.beginColumn), end) : 0;
        size += end - begin;
        if (size > kMaxSelectionBytes)
            break;
        tell(line, begin, end);
    }
}

} // namespace

std::string SelectedBytes(RowSource& source, const DisplayedRows& rows, const Selection& selection)
{
    std::string text;
    ForEachLine(source, rows, selection, [&](std::string_view line, std::size_t begin, std::size_t end) {
        text += line.substr(begin, end - begin);
    });
    return text;
}

ZEMA::WideString SelectedCharacters(RowSource& source, const DisplayedRows& rows, const Selection& selection)
{
    ZEMA::WideString text;
    ZEMA::WideString wide;
    VkGrafic::TextCells cells;
    ForEachLine(source, rows, selection, [&](std::string_view line, std::size_t begin, std::size_t end) {
        ZEMA::ToWide(line.data(), line.size(), wide);
        if (begin == 0 && end == line.size())
        {
            text += wide;
            return;
        }
        cells.Take(line.data(), line.size());
        const auto unit = [&](std::size_t column) {
            return static_cast<std::size_t>(cells.UnitOf(static_cast<int>(column)));
        };
        text += wide.substr(unit(begin), unit(end) - unit(begin));
    });
    return text;
}

} // namespace logview
