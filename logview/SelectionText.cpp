#include "logview/SelectionText.h"

#include "logview/RowCache.h"

#include <algorithm>

namespace logview
{

namespace
{

constexpr int kRowsTogether = 256;

// The columns of a line from `begin` to `end`, as far as there are any.
std::string_view Part(std::string_view line, int begin, int end)
{
    const std::size_t last = std::min(line.size(), static_cast<std::size_t>(std::max(end, 0)));
    const std::size_t first = std::min(last, static_cast<std::size_t>(std::max(begin, 0)));
    return line.substr(first, last - first);
}

} // namespace

std::string SelectionText(RowSource& source, const LogSession& session, int beginRow, int beginColumn,
                          int endRow, int endColumn)
{
    std::string text;
    std::string whole;
    RowCache cache(source);
    const int rowsEnd = endRow < session.RowCount() ? endRow + 1 : session.RowCount();
    int prepared = std::max(beginRow, 0);
    for (int row = prepared; row < rowsEnd; ++row)
    {
        if (row == prepared)
        {
            const int count = std::min(kRowsTogether, rowsEnd - row);
            cache.Prepare(session, row, count);
            prepared = row + count;
        }
        const CachedRow* const cached = cache.Get(row);
        if (!cached || !cached->readable)
            continue;
        std::string_view line = cached->text;
        if (cached->length > RowCache::kLineBytes && session.ReadLine(row, whole))
            line = whole;
        line =
            Part(line, row == beginRow ? beginColumn : 0, row == endRow ? endColumn : LogSession::kMaxRows);
        if (text.size() + line.size() > kMaxSelectionBytes)
            break;
        text += line;
    }
    return text;
}

} // namespace logview
