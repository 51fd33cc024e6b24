#include "Contents.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Order = CReportSorter::Order;

constexpr int kAlignRight = 1;
constexpr int kSample = 1000; // rows that are looked at to learn what a column holds

enum Column
{
    kName,
    kSize,
    kModified,
    kType
};

// The first order that fits all texts of a column but empty ones.
Order GuessOrder(CReportCtrl& report, int subitem)
{
    static const std::pair<Order, std::regex> orders[] = {
        {Order::Number, std::regex(R"([-+]?(?=\.?\d)(\d{1,3}(,\d{3})+|\d*)(\.\d*)?([eE][-+]?\d+)?)")},
        {Order::DecimalComma, std::regex(R"([-+]?(?=,?\d)(\d{1,3}(\.\d{3})+|\d*)(,\d*)?([eE][-+]?\d+)?)")},
        {Order::Date, std::regex(R"((\d{4}([-/.])\d\d?\2\d\d?|(0?\d|1[0-2])([-/])\d\d?\4\d{4})([T ].*)?)")},
        {Order::DateDayFirst, std::regex(R"(\d\d?([-/.])\d\d?\1\d{4}([T ].*)?)")},
    };
    std::vector<std::string> texts;
    for (int item = 0; item < std::min(kSample, report.GetItemCount()); ++item)
        texts.emplace_back(report.GetItemText(item, subitem).c_str());
    for (const auto& [order, pattern] : orders)
        if (std::all_of(texts.begin(), texts.end(), [&](const std::string& text) {
                // Matching a long text would take much stack.
                return text.empty() || (text.size() < 50 && std::regex_match(text, pattern));
            }))
            return order;
    return Order::Natural;
}

// Pixels at 96 dots per inch, as so many of the control's display.
int Scaled(CReportCtrl& report, int pixels)
{
    return ::MulDiv(pixels, report.GetResolution(), 96);
}

// As wide as the caption and all texts, within bounds.
int FitWidth(CReportCtrl& report, int subitem)
{
    int width = Scaled(report, 40);
    for (int item = RVI_DEFAULT; item < report.GetItemCount(); ++item)
    {
        CRect rect;
        report.MeasureItem(item, subitem, rect, 0);
        width = std::max(width, rect.Width());
    }
    return std::min(width, Scaled(report, 400));
}

std::string SizeText(const WIN32_FIND_DATA& entry)
{
    std::string text =
        std::to_string(static_cast<unsigned __int64>(entry.nFileSizeHigh) << 32 | entry.nFileSizeLow);
    for (std::size_t i = text.size(); i > 3; i -= 3)
        text.insert(i - 3, ",");
    return text;
}

std::string TimeText(const FILETIME& time)
{
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    ::FileTimeToSystemTime(&time, &utc);
    ::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    char text[40];
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d:%02d", local.wYear, local.wMonth, local.wDay,
                  local.wHour, local.wMinute);
    return text;
}

void AddEntries(const std::string& folder, CReportCtrl& report, _TREEITEM* parent, const Progress& progress)
{
    WIN32_FIND_DATA entry;
    const std::unique_ptr<void, decltype(&::FindClose)> find(
        ::FindFirstFile((folder + "\\*").c_str(), &entry), &::FindClose);
    if (find.get() == INVALID_HANDLE_VALUE)
        return;
    do
    {
        const std::string name = entry.cFileName;
        if (name == "." || name == "..")
            continue;
        _TREEITEM* const treeItem = report.InsertTreeItem(parent, TVI_LAST, name.c_str());
        const int item = report.GetItemIndex(treeItem);
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        report.SetItemText(item, kModified, TimeText(entry.ftLastWriteTime).c_str());
        if (!isFolder)
        {
            report.SetItemText(item, kSize, SizeText(entry).c_str());
            report.SetItemText(item, kType, name.substr(std::min(name.rfind('.'), name.size())).c_str());
            continue;
        }
        report.SetItemText(item, kType, "folder");
        report.SetItemData(item, RowOrder::kFolder);
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) // it may lead back to where we are
            AddEntries(folder + "\\" + name, report, treeItem, progress);
    } while (::FindNextFile(find.get(), &entry));
    progress(report.GetItemCount());
}

} // namespace

RowOrder::RowOrder(CReportCtrl& report) : m_report(report), m_sorter(report)
{
    report.SetSortCallback(Compare, reinterpret_cast<__int64>(this));
}

int RowOrder::Compare(int item1, int subitem1, int item2, int subitem2, __int64 rowOrder)
{
    RowOrder& order = *reinterpret_cast<RowOrder*>(rowOrder);
    const bool isFolder1 = order.m_report.GetItemData(item1) == kFolder;
    const bool isFolder2 = order.m_report.GetItemData(item2) == kFolder;
    if (isFolder1 == isFolder2)
        return CReportSorter::Compare(item1, subitem1, item2, subitem2,
                                      reinterpret_cast<__int64>(&order.m_sorter));
    if (order.m_sortNumber != order.m_report.GetSortNumber())
    {
        int subitem = 0;
        order.m_report.GetSortSettings(&subitem, &order.m_ascending);
        order.m_sortNumber = order.m_report.GetSortNumber();
    }
    return isFolder1 == (order.m_ascending != 0) ? -1 : 1; // a descending sort turns answers round
}

void FitColumn(CReportCtrl& report, RowOrder& order, int subitem)
{
    const Order guess = GuessOrder(report, subitem);
    order.GetSorter().SetOrder(subitem, guess);
    _RVSUBITEM definition;
    report.GetSubItem(subitem, &definition);
    definition.width = FitWidth(report, subitem);
    if (guess == Order::Number || guess == Order::DecimalComma)
        definition.format = kAlignRight;
    const std::string caption = definition.text; // of the definition that is replaced
    definition.text = caption.c_str();
    report.RedefineSubItem(subitem, &definition);
}

void ShowFolder(const std::string& path, CReportCtrl& report, RowOrder& order, const Progress& progress)
{
    const struct
    {
        const char* caption;
        int width;
        std::uint32_t format;
        Order order;
    } columns[] = {{"Name", 300, 0, Order::Natural},
                   {"Size", 100, kAlignRight, Order::Number},
                   {"Modified", 130, 0, Order::Date},
                   {"Type", 80, 0, Order::Caseless}};
    for (const auto& column : columns)
    {
        _RVSUBITEM subitem;
        subitem.text = column.caption;
        subitem.width = Scaled(report, column.width);
        subitem.format = column.format;
        const int number = report.DefineSubItem(report.GetSubItemCount(), &subitem);
        report.ActivateSubItem(number, -1);
        order.GetSorter().SetOrder(number, column.order);
    }
    report.ModifyStyle(0, RVS_TREE);
    AddEntries(path, report, nullptr, progress);
    order.GetSorter().AddFurtherKey(kName, 1);
    report.SortItems(kName, 1);
}
