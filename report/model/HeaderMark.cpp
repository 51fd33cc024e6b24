#include "report/model/HeaderMark.h"

#include "report/model/View.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace report
{

namespace
{

constexpr int kWidth = 7;

// At 96 dots per inch
std::vector<int> PlainRows(HeaderMark mark)
{
    switch (mark)
    {
    case HeaderMark::Ascending:
        return {1, 3, 5, 7};
    case HeaderMark::Descending:
        return {7, 5, 3, 1};
    default:
        return {7, 7, 5, 3, 1, 1, 1};
    }
}

} // namespace

int MarkWidth(int dpi)
{
    return Scale(kWidth, dpi);
}

std::vector<int> MarkRows(HeaderMark mark, int dpi)
{
    const std::vector<int> plain = PlainRows(mark);
    const int last = static_cast<int>(plain.size()) - 1;
    const int width = MarkWidth(dpi);
    const int parity = width % 2; // of each row, so that all have the same middle
    std::vector<int> rows(static_cast<std::size_t>(Scale(last + 1, dpi)));
    for (std::size_t y = 0; y < rows.size(); ++y)
    {
        // Between the middles of two plain rows.
        const double middle = (static_cast<double>(y) + 0.5) * (last + 1) / static_cast<double>(rows.size());
        const double place = std::clamp(middle - 0.5, 0.0, static_cast<double>(last));
        const int above = static_cast<int>(place);
        const int below = std::min(above + 1, last);
        const auto at = [&plain](int row) { return plain[static_cast<std::size_t>(row)]; };
        const double wide = (at(above) + (at(below) - at(above)) * (place - above)) * dpi / 96;
        rows[y] = std::clamp(2 * static_cast<int>(std::lround((wide - parity) / 2)) + parity, 1, width);
    }
    return rows;
}

} // namespace report
