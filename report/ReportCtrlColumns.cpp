// The report control's subitems and the columns that show them.
#include "report/ReportCtrlData.h"
#include "report/model/InvalidArgument.h"

#include <algorithm>
#include <new>

namespace
{

report::SubItem MakeSubItem(const _RVSUBITEM& definition, int defaultWidth)
{
    report::SubItem made;
    made.format = definition.format;
    made.width = definition.width < 0 ? defaultWidth : definition.width;
    made.header1 = definition.header1;
    made.header2 = definition.header2;
    made.image = definition.format & RVSF_IMAGE ? definition.image : 0;
    made.text = definition.text;
    return made;
}

// The header item for a subitem; the caption is read only.
HDITEM MakeHeaderItem(const report::SubItem& definition, int subitem)
{
    HDITEM item = {};
    item.mask = HDI_WIDTH | HDI_TEXT | HDI_FORMAT | HDI_LPARAM;
    item.cxy = definition.width;
    item.pszText = const_cast<char*>(definition.text.c_str());
    item.fmt = HDF_STRING | static_cast<int>(definition.format & RVSF_ALIGNMASK);
    item.lParam = subitem;
    if (definition.format & RVSF_IMAGE)
    {
        item.mask |= HDI_IMAGE;
        item.fmt |= HDF_IMAGE;
        item.iImage = definition.image;
    }
    return item;
}

} // namespace

int CReportCtrl::DefineSubItem(int subitem, _RVSUBITEM* definition, int list)
{
    if (subitem < 0 || subitem > GetSubItemCount())
        report::ThrowInvalidArgument();
    if (subitem < GetSubItemCount() && !m_data->FinishEdit(Data::EditEnd::Renumbered))
        return -1;
    try
    {
        if (!m_data->items.Define(subitem, MakeSubItem(*definition, m_data->sizes.DefaultColumnWidth())))
            return -1;
    }
    catch (const std::bad_alloc&) // the caption
    {
        return -1;
    }
    m_data->header.RenumberSubItems(subitem, 1);
    m_data->Redraw();
    if (list)
        m_data->RefreshSubItemList();
    return subitem;
}

int CReportCtrl::RedefineSubItem(int subitem, _RVSUBITEM* definition, int list)
{
    structSUBITEM& stored = m_data->items.SubItemAt(subitem);
    std::vector<ZEMA::String> choices = std::move(stored.choices);
    stored = MakeSubItem(*definition, m_data->sizes.DefaultColumnWidth());
    stored.choices = std::move(choices);
    const int headerItem = m_data->header.GetItemOfColumn(GetColumnFromSubItem(subitem));
    if (headerItem != ReportHeaderWnd::kNone)
    {
        m_data->header.ReplaceColumn(headerItem, MakeHeaderItem(stored, subitem));
        m_data->header.SetItemValues(headerItem, stored.header1, stored.header2);
        m_data->FitScrolling();
    }
    m_data->Redraw();
    if (list)
        m_data->RefreshSubItemList();
    return subitem;
}

void CReportCtrl::SetSubItemChoices(int subitem, const char* const* texts, int count)
{
    m_data->items.SubItemAt(subitem).choices.assign(texts, texts + count);
}

int CReportCtrl::GetSubItem(int subitem, _RVSUBITEM* definition)
{
    if (subitem < 0 || subitem >= GetSubItemCount())
        return 0;
    const structSUBITEM& stored = m_data->items.SubItemAt(subitem);
    definition->format = stored.format;
    definition->width = GetSubItemWidth(subitem);
    definition->header1 = stored.header1;
    definition->header2 = stored.header2;
    definition->image = stored.image;
    definition->text = stored.text.c_str();
    return 1;
}

int CReportCtrl::UndefineSubItem(int subitem)
{
    if (subitem < 0 || subitem >= GetSubItemCount() || !m_data->FinishEdit(Data::EditEnd::Renumbered) ||
        subitem >= GetSubItemCount())
        return 0;
    DeactivateSubItem(subitem, 0);
    m_data->items.Undefine(subitem);
    m_data->header.RenumberSubItems(subitem + 1, -1);
    m_data->Redraw();
    m_data->RefreshSubItemList();
    return 1;
}

void CReportCtrl::UndefineAllSubItems()
{
    while (GetSubItemCount() > 0)
        UndefineSubItem(GetSubItemCount() - 1);
}

int CReportCtrl::GetSubItemCount()
{
    return m_data->items.SubItemCount();
}

int CReportCtrl::ActivateSubItem(int subitem, int column)
{
    if (subitem < 0 || subitem >= GetSubItemCount() || !m_data->header.m_hWnd)
        return -1;
    if (IsActiveSubItem(subitem))
        return GetColumnFromSubItem(subitem);
    const int columns = GetActiveSubItemCount();
    const int place = column < 0 ? columns : std::min(column, columns);
    const structSUBITEM& definition = m_data->items.SubItemAt(subitem);
    HDITEM item = MakeHeaderItem(definition, subitem);
    const int headerItem = m_data->header.InsertColumn(place, item);
    if (headerItem == ReportHeaderWnd::kNone)
        return -1;
    m_data->header.SetItemValues(headerItem, definition.header1, definition.header2);
    m_data->Redraw();
    m_data->RefreshSubItemList();
    return place;
}

int CReportCtrl::DeactivateSubItem(int subitem, int list)
{
    const int column = GetColumnFromSubItem(subitem);
    if (column < 0)
        return 0;
    structSUBITEM& definition = m_data->items.SubItemAt(subitem);
    definition.width = GetSubItemWidth(subitem); // comes back as wide as it went
    m_data->header.DeleteColumn(column);
    if (m_data->rows.selection.focusColumn >= GetActiveSubItemCount())
        m_data->rows.selection.focusColumn = GetActiveSubItemCount() - 1;
    m_data->FitScrolling();
    m_data->Redraw();
    if (list)
        m_data->RefreshSubItemList();
    return 1;
}

void CReportCtrl::DeactivateAllSubItems()
{
    while (GetActiveSubItemCount() > 0)
        DeactivateSubItem(GetSubItemFromColumn(GetActiveSubItemCount() - 1));
}

int CReportCtrl::IsActiveSubItem(int subitem)
{
    return GetColumnFromSubItem(subitem) >= 0;
}

int CReportCtrl::GetActiveSubItemCount()
{
    return m_data->header.m_hWnd ? m_data->header.GetItemCount() : 0;
}

int CReportCtrl::GetColumnFromSubItem(int subitem)
{
    return subitem < 0 ? -1 : m_data->header.GetColumnOfSubItem(subitem);
}

int CReportCtrl::GetSubItemFromColumn(int column)
{
    if (column < 0)
        return -1;
    if (column >= GetActiveSubItemCount())
        report::ThrowInvalidArgument();
    return m_data->header.GetSubItem(m_data->header.GetItemOfColumn(column));
}

int CReportCtrl::GetSubItemWidth(int subitem)
{
    const structSUBITEM& definition = m_data->items.SubItemAt(subitem);
    const int column = GetColumnFromSubItem(subitem);
    if (column >= 0)
        return m_data->header.GetWidth(m_data->header.GetItemOfColumn(column));
    return definition.width;
}

int CReportCtrl::SetSubItemWidth(int subitem, int width)
{
    structSUBITEM& definition = m_data->items.SubItemAt(subitem);
    if (width < 0)
        return 0;
    definition.width = width;
    const int column = GetColumnFromSubItem(subitem);
    if (column >= 0)
    {
        HDITEM item = {};
        item.mask = HDI_WIDTH;
        item.cxy = width;
        m_data->header.SetItem(m_data->header.GetItemOfColumn(column), &item);
        m_data->FitScrolling();
        m_data->Redraw();
    }
    return 1;
}
