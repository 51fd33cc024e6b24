#include "report/model/CopyRows.h"

#include "report/model/Rows.h"

namespace report
{

namespace
{

constexpr ZEMA::WideChar kTab = 9;
constexpr ZEMA::WideChar kLineEnd[] = {13, 10};
constexpr ZEMA::WideChar kBlank = 32;

} // namespace

ZEMA::WideString CopyRows(Items& items, Rows& rows, RowRange range, const std::vector<int>& subitems)
{
    ZEMA::WideString copied;
    ZEMA::WideString text;
    for (int row = range.first; row <= range.last && row < rows.Count(); ++row)
    {
        const int item = rows.ItemAt(row);
        for (std::size_t column = 0; column < subitems.size(); ++column)
        {
            if (column > 0)
                copied += kTab;
            FetchedCell fetched;
            if (!items.Fetch(item, subitems[column], RVIM_TEXT, fetched))
                continue;
            ZEMA::ToWide(fetched.cell.text.data(), fetched.cell.text.size(), text);
            for (const ZEMA::WideChar character : text)
                copied += character < kBlank ? kBlank : character;
        }
        copied.append(kLineEnd, 2);
    }
    return copied;
}

} // namespace report
