#include "Layout.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

Layout::Layout(const std::string& file, const std::string& section) : m_file(file), m_section(section)
{
    std::replace(m_section.begin(), m_section.end(), '[', '('); // brackets stand around it in the file
    std::replace(m_section.begin(), m_section.end(), ']', ')');
}

std::string Layout::GetText(const char* key) const
{
    std::string text(0x8000, '\0');
    text.resize(m_file.empty() ? 0
                               : ::GetPrivateProfileString(m_section.c_str(), key, "", text.data(),
                                                           static_cast<DWORD>(text.size()), m_file.c_str()));
    return text;
}

int Layout::GetNumber(const char* key, int missing) const
{
    const std::string text = GetText(key);
    return text.empty() ? missing : std::atoi(text.c_str());
}

void Layout::SetText(const char* key, const std::string& text)
{
    if (!m_file.empty())
        ::WritePrivateProfileString(m_section.c_str(), key, text.c_str(), m_file.c_str());
}

void LoadPlace(const Layout& layout, CWnd& wnd)
{
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof(placement);
    ::GetWindowPlacement(wnd, &placement);
    CRect rect;
    if (std::istringstream(layout.GetText("Place")) >> rect.left >> rect.top >> rect.right >> rect.bottom)
        placement.rcNormalPosition = rect;
    placement.showCmd = layout.GetNumber("Maximised", 0) != 0 ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    ::SetWindowPlacement(wnd, &placement); // keeps it on the screen
}

void SavePlace(Layout& layout, CWnd& wnd)
{
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof(placement);
    ::GetWindowPlacement(wnd, &placement);
    const RECT& rect = placement.rcNormalPosition;
    std::ostringstream place;
    place << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom;
    layout.SetText("Place", place.str());
    layout.SetNumber("Maximised", placement.showCmd == SW_SHOWMAXIMIZED);
}

void LoadColumns(const Layout& layout, CReportCtrl& report)
{
    if (layout.GetNumber("SubItems", 0) != report.GetSubItemCount())
        return;
    report.DeactivateAllSubItems();
    std::istringstream columns(layout.GetText("Columns"));
    int subitem = 0;
    int width = 0;
    while (columns >> subitem >> width)
    {
        if (subitem < 0 || subitem >= report.GetSubItemCount())
            continue; // someone has edited the file
        report.SetSubItemWidth(subitem, width);
        report.ActivateSubItem(subitem, -1);
    }
    report.ClearSortSettings();
    report.SortItems(layout.GetNumber("Sort", -1), layout.GetNumber("Ascending", 1));
}

void SaveColumns(Layout& layout, CReportCtrl& report)
{
    std::ostringstream columns;
    for (int column = 0; column < report.GetActiveSubItemCount(); ++column)
    {
        const int subitem = report.GetSubItemFromColumn(column);
        columns << subitem << ' ' << report.GetSubItemWidth(subitem) << "  ";
    }
    int sort = -1;
    int ascending = 1;
    report.GetSortSettings(&sort, &ascending);
    layout.SetNumber("SubItems", report.GetSubItemCount());
    layout.SetText("Columns", columns.str());
    layout.SetNumber("Sort", sort);
    layout.SetNumber("Ascending", ascending);
}
