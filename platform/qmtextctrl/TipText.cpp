#include "qmtextctrl/TipText.h"

#include <algorithm>

namespace textview
{

namespace
{

bool MayBreakBehind(char character)
{
    return character == ' ' || character == '\t' || character == ',' || character == ';';
}

} // namespace

std::vector<TipLine> BreakTip(const std::string& text, const VkGrafic::TextCells& cells, int width,
                              int mostLines)
{
    const int length = static_cast<int>(text.size());
    const int room = std::max(width, 1);
    std::vector<TipLine> lines;
    int begin = 0;
    while (begin < length && static_cast<int>(lines.size()) < std::max(mostLines, 1))
    {
        const int first = cells.CellOf(begin);
        int end = begin;
        int good = begin; // where a break would be better
        while (end < length && text[static_cast<std::size_t>(end)] != '\n')
        {
            const int next = std::min(cells.EndOf(end), length);
            if (cells.CellOf(next) - first > room && end > begin)
                break;
            if (MayBreakBehind(text[static_cast<std::size_t>(end)]))
                good = next;
            end = next;
        }
        const bool isFull = end < length && text[static_cast<std::size_t>(end)] != '\n';
        if (isFull && 2 * (cells.CellOf(good) - first) >= room)
            end = good;
        lines.push_back({begin, end});
        begin = end + (end < length && text[static_cast<std::size_t>(end)] == '\n' ? 1 : 0);
    }
    return lines;
}

Span PlaceTipAcross(int wanted, int size, Span screen)
{
    const int length = std::min(size, std::max(screen.end - screen.begin, 0));
    const int begin = std::max(std::min(wanted, screen.end - length), screen.begin);
    return {begin, begin + length};
}

Span PlaceTipDown(Span row, int size, Span screen)
{
    const int below = std::max(screen.end - row.end, 0);
    const int above = std::max(row.begin - screen.begin, 0);
    if (size <= below || below >= above)
        return {row.end, row.end + std::min(size, below)};
    return {row.begin - std::min(size, above), row.begin};
}

} // namespace textview
