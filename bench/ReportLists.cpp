#include "ReportLists.h"
#include "BenchFiles.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>

namespace bench
{

namespace
{

constexpr int kColumnWidth = 190;

// Each step can be undone, so that different numbers stay different.
std::uint32_t Scatter(std::uint32_t number)
{
    number ^= number >> 16;
    number *= 0x85ebca6bu;
    number ^= number >> 13;
    number *= 0xc2b2ae35u;
    return number ^ number >> 16;
}

} // namespace

CellText MakeText(int row, int column)
{
    CellText text = {"Message 01234567 of unit 07"};
    std::uint32_t number = Scatter(static_cast<std::uint32_t>(row * kColumns + column));
    for (std::size_t i = 8; i < 16; ++i, number <<= 4)
        text[i] = "0123456789abcdef"[number >> 28];
    return text;
}

std::string MakeMixedText(int row, int column)
{
    constexpr const char* kWords[kColumns][2] = {{"Größe   ", " der Teile."},
                                                 {"Μήνυμα  ", " της άλλης "},
                                                 {"Событие ", " от узла 7 "},
                                                 {"第一条系统消息", "来自其他的单元组件。"},
                                                 {"Message ", " of \U0001F600 unit "}};
    const CellText plain = MakeText(row, column);
    return kWords[column][0] + std::string(plain.data() + 8, 8) + kWords[column][1];
}

Frame::Frame()
{
    CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr, nullptr);
}

Frame::~Frame()
{
    DestroyWindow();
}

BOOL Frame::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    auto* const info = reinterpret_cast<NMLVDISPINFOA*>(lParam);
    if (info->hdr.code != LVN_GETDISPINFOA)
        return CWnd::OnNotify(wParam, lParam, result);
    if ((info->item.mask & LVIF_TEXT) != 0)
    {
        const CellText text = MakeText(info->item.iItem, info->item.iSubItem);
        std::memcpy(info->item.pszText, text.data(), text.size());
    }
    return TRUE;
}

ReportList::ReportList(Frame& frame, DWORD style)
{
    Check(Create(WS_CHILD | WS_VISIBLE | style, CRect(0, 0, kWidth, kHeight), &frame, 1) != FALSE,
          "the report control");
    for (int i = 0; i < kColumns; ++i)
    {
        _RVSUBITEM subitem;
        subitem.width = kColumnWidth;
        subitem.text = "Column";
        Check(DefineSubItem(i, &subitem) == i && ActivateSubItem(i, i) == i, "a subitem");
    }
}

void ReportList::Fill(int count)
{
    SetRedraw(0);
    Append(count);
    SetRedraw(1);
}

void ReportList::Append(int count)
{
    const int end = GetItemCount() + count;
    for (int item = GetItemCount(); item < end; ++item)
    {
        Check(InsertItem(item, MakeText(item, 0).data()) == item, "a row of the report control");
        for (int subitem = 1; subitem < kColumns; ++subitem)
            SetItemText(item, subitem, MakeText(item, subitem).data());
    }
}

std::vector<int> ReportList::Order()
{
    const CArray<int, int>& items = *GetItemRowArray();
    return {items.GetData(), items.GetData() + items.GetSize()};
}

void ReportList::SetOrder(const std::vector<int>& items)
{
    CArray<int, int> array;
    array.SetSize(static_cast<INT_PTR>(items.size()));
    std::copy(items.begin(), items.end(), array.GetData());
    Check(SetItemRowArray(array) == 1, "an order of rows");
}

void ReportList::ResetOrder()
{
    std::vector<int> items(static_cast<std::size_t>(GetItemCount()));
    std::iota(items.begin(), items.end(), 0);
    SetOrder(items);
}

CallbackList::CallbackList(Frame& frame, int count) : ReportList(frame, RVS_CALLBACK)
{
    SetItemCount(count);
}

__int64 CallbackList::OnRvnItemCallbackBypass(_NMREPORTVIEW* notification)
{
    _RVITEM& item = reinterpret_cast<_NMRVITEMCALLBACK*>(notification)->item;
    item.mask = 0;
    if (item.subitem < 0)
        return 0; // no previews
    const CellText text = MakeText(item.item, item.subitem);
    std::memcpy(item.text, text.data(), text.size());
    item.mask = RVIM_TEXT;
    return 0;
}

ListView::ListView(Frame& frame, DWORD style)
{
    INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&controls);
    m_hwnd = ::CreateWindowA(WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT | style, 0, 0, kWidth,
                             kHeight, frame.m_hWnd, nullptr, AfxGetInstanceHandle(), nullptr);
    Check(m_hwnd != nullptr, "the list view");
    for (int i = 0; i < kColumns; ++i)
    {
        LVCOLUMNA column = {};
        column.mask = LVCF_WIDTH;
        column.cx = kColumnWidth;
        Send(LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

ListView::~ListView()
{
    ::DestroyWindow(m_hwnd);
}

LRESULT ListView::Send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessageA(m_hwnd, message, wParam, lParam);
}

void ListView::Fill(int count)
{
    SetRedraw(FALSE);
    Append(count);
    SetRedraw(TRUE);
}

void ListView::Append(int count)
{
    const int end = Count() + count;
    for (int row = Count(); row < end; ++row)
    {
        CellText text = MakeText(row, 0);
        LVITEMA item = {};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        Check(Send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)) == row, "a row of the list view");
        for (int column = 1; column < kColumns; ++column)
            SetText(row, column, MakeText(row, column));
    }
}

void ListView::FillWithNumbers(int count)
{
    SetRedraw(FALSE);
    for (int row = 0; row < count; ++row)
    {
        LVITEMA item = {};
        item.mask = LVIF_PARAM;
        item.iItem = row;
        item.lParam = row;
        Check(Send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)) == row, "a row of the list view");
    }
    SetRedraw(TRUE);
}

void ListView::SetText(int row, int column, const CellText& text)
{
    LVITEMA item = {};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text.data());
    Send(LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void ListView::GetText(int row, int column, CellText& text) const
{
    LVITEMA item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    Send(LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

} // namespace bench
