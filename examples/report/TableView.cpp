#include "TableView.h"

#include "../common/CsvFile.h"

#include <zemacore/WideText.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace
{

// Inserting or deleting an item moves those after it. So many at once take longer than filling the control
// again.
constexpr std::size_t kMany = 200;

// A column offers its texts as choices if these are few in the first rows, and each of them stands in several
// rows on average.
constexpr int kSample = 1000;
constexpr int kMostChoices = 12;
constexpr int kRowsForChoice = 3;

std::vector<int> OrderOf(CReportCtrl& report)
{
    const CArray<int, int>& rows = *report.GetItemRowArray();
    return {rows.GetData(), rows.GetData() + rows.GetSize()};
}

void SetOrder(CReportCtrl& report, const std::vector<int>& order)
{
    CArray<int, int> rows;
    rows.SetSize(std::ssize(order));
    std::copy(order.begin(), order.end(), rows.GetData());
    report.SetItemRowArray(rows);
}

ZEMA::WideString Wide(const std::string& text)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    return wide;
}

} // namespace

void TableView::Load(const std::string& bytes, const Progress& progress)
{
    auto table = std::make_unique<CsvTable>(bytes);
    const std::vector<std::string> captions = table->Captions();
    const bool isSame = m_table && m_table->Captions() == captions;
    m_table = std::move(table);
    m_coding = TextCoding(*m_table);
    m_report.SetRedraw(0);
    m_report.DeleteAllItems();
    if (!isSame)
        DefineColumns(captions);
    FillItems(progress);
    if (!isSame)
        FitColumns();
    OfferChoices(isSame ? Widen::No : Widen::Yes);
    m_report.ResortItems();
    m_report.SetRedraw(1);
}

std::string TableView::Text(int item, int subitem) const
{
    return m_table->Texts(item)[static_cast<std::size_t>(subitem)];
}

// A text that was not changed keeps its bytes, even if they are in another encoding.
void TableView::SetText(int item, int subitem, const std::string& text)
{
    if (Wide(Text(item, subitem)) != Wide(text))
        m_table->SetText(item, subitem, m_coding.Encode(text, m_table->Row(item)));
    FillItem(item);
}

void TableView::InsertRow()
{
    const int row = m_report.GetCurrentFocus();
    const int item = row >= 0 ? m_report.GetItemFromRow(row) : m_table->RowCount() - 1;
    Show(m_table->InsertRow(item + 1, row >= 0 ? row + 1 : m_table->RowCount()));
}

int TableView::DeleteRows()
{
    int first = 0;
    int last = 0;
    m_report.GetSelectedRows(&first, &last);
    std::vector<int> items;
    for (int row = first; row <= last; ++row)
        items.push_back(m_report.GetItemFromRow(row));
    if (!items.empty())
        Show(m_table->DeleteRows(items, first));
    return static_cast<int>(items.size());
}

bool TableView::Show(const std::optional<CsvTable::Change>& change)
{
    if (!change)
        return false;
    if (change->kind == CsvTable::Kind::Text)
        ShowText(*change);
    else
        ShowRows(*change);
    return true;
}

void TableView::ShowText(const CsvTable::Change& change)
{
    const int item = change.rows.front();
    FillItem(item);
    const int row = m_report.GetRowFromItem(item);
    m_report.SelectRows(row, row, 1, 0, 0, 1);
    Focus(row, m_report.GetColumnFromSubItem(change.column));
}

void TableView::ShowRows(const CsvTable::Change& change)
{
    const int column = m_report.GetCurrentFocusColumn();
    const std::vector<int> order = OrderAfter(change, OrderOf(m_report));
    std::vector<int> items = change.rows;
    std::sort(items.begin(), items.end());
    m_report.SetRedraw(0);
    if (items.size() > kMany)
    {
        m_report.DeleteAllItems();
        FillItems({});
    }
    else if (change.kind == CsvTable::Kind::Insert)
        for (const int item : items)
        {
            m_report.InsertItem(item);
            FillItem(item);
        }
    else
        std::for_each(items.rbegin(), items.rend(), [&](int item) { m_report.DeleteItem(item); });
    SetOrder(m_report, order);
    m_report.SetRedraw(1);

    if (order.empty())
        return;
    const int row = std::clamp(change.place, 0, m_report.GetRowCount() - 1);
    const int count = change.kind == CsvTable::Kind::Insert ? static_cast<int>(items.size()) : 1;
    m_report.SelectRows(row, row + count - 1, 1, 0, 0, 1);
    Focus(row, column);
}

// Every cell gets a text, an empty one too: the control does not edit a cell without.
void TableView::FillItem(int item)
{
    const std::vector<std::string> texts = m_table->Texts(item);
    for (std::size_t i = 0; i < texts.size(); ++i)
        m_report.SetItemText(item, static_cast<int>(i), CellText(texts[i]).c_str());
}

void TableView::FillItems(const Progress& progress)
{
    for (int item = 0; item < m_table->RowCount(); ++item)
    {
        m_report.InsertItem(item);
        FillItem(item);
        if (progress && item % 1000 == 999)
            progress(item + 1);
    }
}

void TableView::DefineColumns(const std::vector<std::string>& captions)
{
    m_report.UndefineAllSubItems();
    for (const std::string& caption : captions)
    {
        const std::string text = CellText(caption);
        _RVSUBITEM subitem;
        subitem.text = text.c_str();
        const int number = m_report.DefineSubItem(m_report.GetSubItemCount(), &subitem);
        m_report.ActivateSubItem(number, -1);
        m_report.SetItemText(RVI_DEFAULT, number, subitem.text); // as wide as this, too
    }
}

void TableView::FitColumns()
{
    for (int subitem = 0; subitem < m_report.GetSubItemCount(); ++subitem)
        FitColumn(m_report, m_order, subitem);
}

void TableView::OfferChoices(Widen widen)
{
    std::vector<std::vector<std::string>> rows;
    for (int row = 0; row < std::min(kSample, m_table->RowCount()); ++row)
        rows.push_back(m_table->Texts(row));
    for (int subitem = 0; subitem < m_report.GetSubItemCount(); ++subitem)
    {
        std::set<std::string> texts;
        int count = 0; // of rows with a text
        for (const std::vector<std::string>& row : rows)
        {
            const std::string& text = row[static_cast<std::size_t>(subitem)];
            if (!text.empty() && text == CellText(text))
                texts.insert(text);
            count += !text.empty();
        }
        const auto different = static_cast<int>(texts.size());
        std::vector<const char*> choices;
        if (different > 1 && different <= kMostChoices && count >= kRowsForChoice * different)
            std::transform(texts.begin(), texts.end(), std::back_inserter(choices),
                           [](const std::string& text) { return text.c_str(); });
        m_report.SetSubItemChoices(subitem, choices.data(), static_cast<int>(choices.size()));
        if (!choices.empty() && widen == Widen::Yes) // by the arrow of the combo box
            m_report.SetSubItemWidth(subitem, m_report.GetSubItemWidth(subitem) +
                                                  2 * ::GetSystemMetrics(SM_CXVSCROLL));
    }
}

void TableView::Focus(int row, int column)
{
    m_report.AdjustFocus(row, column);
    m_report.EnsureVisible(m_report.GetItemFromRow(row), -1);
    if (column >= 0)
        m_report.EnsureVisibleColumn(column);
}
