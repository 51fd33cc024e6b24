// What the program remembers of its window from run to run.
#pragma once

#include <ReportCtrl.h>

#include <string>

// A section of an INI file. Without a file, as at first, nothing is found and nothing kept; nor is anything
// kept in a file that cannot be written.
class Layout
{
public:
    Layout() = default;
    Layout(const std::string& file, const std::string& section);

    std::string GetText(const char* key) const; // empty when there is no such key
    int GetNumber(const char* key, int missing) const;
    void SetText(const char* key, const std::string& text);
    void SetNumber(const char* key, int number) { SetText(key, std::to_string(number)); }

private:
    std::string m_file;
    std::string m_section;
};

// A window's place. Loading it shows the window.
void LoadPlace(const Layout& layout, CWnd& wnd);
void SavePlace(Layout& layout, CWnd& wnd);

// The columns, their widths, and which one sorts. What is remembered of another number of subitems, as of a
// CSV file that has got one more, is not taken.
void LoadColumns(const Layout& layout, CReportCtrl& report);
void SaveColumns(Layout& layout, CReportCtrl& report);
