#include "report/ReportKeysPort.h"

#include "report/model/CopyRows.h"

#include "afxwin.h"
#include "qmcommon/QmClipboard.h"

// ---- Rows

// Where the rows are not sorted, the first column is what one reads.
int CReportCtrl::Data::KeysPort::TypingSubItem()
{
    const ReportHeaderWnd& header = m_data.header;
    const int sorted = header.GetSortItem();
    return header.GetSubItem(sorted != ReportHeaderWnd::kNone ? sorted : header.GetItemOfColumn(0));
}

bool CReportCtrl::Data::KeysPort::BeginsWith(int row, const ZEMA::WideString& typed)
{
    const int subitem = TypingSubItem();
    report::FetchedCell fetched;
    if (subitem < 0 || row >= RowCount() ||
        !m_data.items.Fetch(m_data.rows.ItemAt(row), subitem, RVIM_TEXT, fetched))
        return false;
    ZEMA::ToWide(fetched.cell.text.data(), fetched.cell.text.size(), m_text);
    const int length = static_cast<int>(typed.size());
    return m_text.size() >= typed.size() &&
           ::CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, m_text.data(), length, typed.data(),
                            length) == CSTR_EQUAL;
}

report::TreeRow CReportCtrl::Data::KeysPort::TreeRowAt(int row)
{
    report::TreeRow answer;
    _TREEITEM* const item = m_data.rows.HandleOf(m_data.rows.ItemAt(row));
    if (!item)
        return answer;
    answer.hasChildren = item->firstChild != nullptr;
    answer.isExpanded = item->expanded != 0;
    if (const _TREEITEM* const parent = m_data.rows.Next(item, RVGN_PARENT))
        answer.parent = m_data.rows.RowOf(parent->item);
    return answer;
}

void CReportCtrl::Data::KeysPort::SelectAll()
{
    if (!(m_data.style & RVS_SINGLESELECT))
        m_data.control.SelectAll();
}

void CReportCtrl::Data::KeysPort::Copy()
{
    const report::RowRange selected = m_data.rows.SelectedRows();
    if (selected.first <= selected.last && !m_data.control.CopySelection())
        ::MessageBeep(MB_ICONWARNING);
}

int CReportCtrl::CopySelection()
{
    const report::RowRange selected = m_data->rows.SelectedRows();
    if (selected.first > selected.last)
        return 0;
    const CWaitCursor wait; // an owner may be asked for millions
    std::vector<int> subitems;
    for (const report::Column& column : m_data->header.GetColumns())
        subitems.push_back(column.subitem);
    const std::wstring text = report::CopyRows(m_data->items, m_data->rows, selected, subitems);
    return QmSetClipboard(m_hWnd, CF_UNICODETEXT, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

// ---- Columns

int CReportCtrl::Data::KeysPort::MarkedColumn()
{
    return m_data.header.GetColumn(m_data.header.GetMarkedItem());
}

void CReportCtrl::Data::KeysPort::MarkColumn(int column)
{
    m_data.header.MarkItem(m_data.header.GetItemOfColumn(column));
}

int CReportCtrl::Data::KeysPort::WidthOf(int column)
{
    return m_data.header.GetWidth(m_data.header.GetItemOfColumn(column));
}

void CReportCtrl::Data::KeysPort::SetWidth(int column, int width)
{
    m_data.control.SetSubItemWidth(m_data.control.GetSubItemFromColumn(column), width);
}

void CReportCtrl::Data::KeysPort::FitColumn(int column)
{
    m_data.FitColumn(m_data.control.GetSubItemFromColumn(column));
}

void CReportCtrl::Data::KeysPort::MoveColumn(int from, int to)
{
    m_data.header.MoveColumn(from, to);
    m_data.Redraw();
}

void CReportCtrl::Data::KeysPort::ClickColumn(int column)
{
    m_data.header.ClickItem(m_data.header.GetItemOfColumn(column));
}
