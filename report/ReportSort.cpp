#include "ReportSort.h"

#include "report/sort/KeyOrder.h"
#include "zemacore/Collation.h"

#include <array>
#include <map>
#include <string_view>

namespace
{

// The key ends with its only NUL, so the text after it decides only between texts with equal keys.
report::CellKey LocaleTextKey(std::string_view text)
{
    report::CellKey key = report::TextKey({});
    ZEMA::AppendSortKey(text.data(), text.size(), ZEMA::LetterCase::Kept, key.text);
    key.text += text;
    return key;
}

} // namespace

struct CReportSorter::Data
{
    explicit Data(CReportCtrl& theControl) : control(theControl) {}

    void FollowSort();
    report::CellKey ReadKey(int item, int subitem);

    CReportCtrl& control;
    report::KeyOrder keyOrder{[this](int item, int subitem) { return ReadKey(item, subitem); }};
    std::map<int, Order> orders;       // by subitem
    unsigned sortNumber = 0;           // of the sort whose keys are kept
    std::array<char, 65536> text = {}; // the longest that a cell has, with its NUL
};

// Keys hold for one sort. Outside a sort cells may change between any two comparisons.
void CReportSorter::Data::FollowSort()
{
    const unsigned number = control.GetSortNumber();
    if (number != 0 && number == sortNumber)
        return;
    sortNumber = number;
    int subitem = 0;
    int ascending = 1;
    const bool sorted = control.GetSortSettings(&subitem, &ascending) != 0;
    keyOrder.Begin(number != 0 ? control.GetItemCount() : 0, !sorted || ascending != 0);
}

// The preview, subitem -1, may be longer than any cell and is nothing to sort by.
report::CellKey CReportSorter::Data::ReadKey(int item, int subitem)
{
    _RVITEM cell;
    cell.mask = RVIM_TEXT;
    cell.item = item;
    cell.subitem = subitem;
    cell.text = text.data();
    cell.textMax = static_cast<std::int32_t>(text.size());
    if (subitem < 0 || !control.GetItem(&cell) || (cell.mask & RVIM_TEXT) == 0)
        return report::KeyWithoutText(cell.check, cell.image);

    const auto found = orders.find(subitem);
    switch (found != orders.end() ? found->second : Order::Text)
    {
    case Order::Caseless:
        return report::CaselessTextKey(cell.text);
    case Order::Natural:
        return report::NaturalTextKey(cell.text);
    case Order::Number:
        return report::NumberKey(cell.text, '.');
    case Order::DecimalComma:
        return report::NumberKey(cell.text, ',');
    case Order::Date:
        return report::DateKey(cell.text, report::DateOrder::MonthFirst);
    case Order::DateDayFirst:
        return report::DateKey(cell.text, report::DateOrder::DayFirst);
    case Order::Locale:
        return LocaleTextKey(cell.text);
    default:
        return report::TextKey(cell.text);
    }
}

CReportSorter::CReportSorter(CReportCtrl& control) : m_data(std::make_unique<Data>(control)) {}

CReportSorter::~CReportSorter() = default;

void CReportSorter::SetOrder(int subitem, Order order)
{
    m_data->orders[subitem] = order;
}

void CReportSorter::AddFurtherKey(int subitem, int ascending)
{
    m_data->keyOrder.AddFurtherKey(subitem, ascending != 0);
}

void CReportSorter::RemoveFurtherKeys()
{
    m_data->keyOrder.RemoveFurtherKeys();
}

int CReportSorter::Compare(int item1, int subitem1, int item2, int subitem2, __int64 sorter)
{
    Data& data = *reinterpret_cast<CReportSorter*>(sorter)->m_data;
    data.FollowSort();
    return data.keyOrder.Compare(item1, subitem1, item2, subitem2);
}
