// Reads CSV files, and puts them into a report control.
#pragma once

#include "CsvText.h"

#include <ReportCtrl.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using Line = std::vector<std::string>;

// Returns the text as a cell holds it: control characters become blanks, and a line end is one of them.
inline std::string CellText(std::string text)
{
    std::erase(text, '\r');
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

// Returns the texts of all rows but empty ones. Short rows are filled up; one that is longer than the
// captions is an error: std::runtime_error, as is a file that cannot be read.
inline std::vector<Line> ReadCsv(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    std::string_view text = bytes;
    if (text.starts_with("\xEF\xBB\xBF")) // the mark of UTF-8
        text.remove_prefix(3);
    const char separator = csv::GuessSeparator(text);
    std::vector<Line> lines;
    while (!text.empty())
    {
        const std::size_t length = csv::RowLength(text, separator);
        if (length == std::string_view::npos)
            throw std::runtime_error(path + ": a quote is not closed");
        Line line;
        for (const std::string_view field : csv::SplitFields(text.substr(0, length), separator))
            line.push_back(CellText(csv::FieldText(field)));
        text.remove_prefix(length);
        if (line == Line{""})
            continue;
        const std::size_t fields = lines.empty() ? line.size() : lines.front().size();
        if (line.size() > fields)
            throw std::runtime_error(path + ": too long: row " + std::to_string(lines.size()));
        line.resize(fields);
        lines.push_back(std::move(line));
    }
    if (lines.empty())
        throw std::runtime_error(path + ": there are no captions");
    return lines;
}

// A subitem for each caption, shown as a column, and an item for each further line. The default item holds
// the captions once more. `progress` is told now and then how many items there are.
inline void Fill(CReportCtrl& report, const std::vector<Line>& lines,
                 const std::function<void(int items)>& progress = {})
{
    for (const std::string& caption : lines.front())
    {
        _RVSUBITEM subitem;
        subitem.text = caption.c_str();
        report.ActivateSubItem(report.DefineSubItem(report.GetSubItemCount(), &subitem), -1);
    }
    for (const Line& line : lines)
    {
        const int item = &line == &lines.front() ? RVI_DEFAULT : report.InsertItem(report.GetItemCount());
        for (std::size_t i = 0; i < line.size(); ++i)
            report.SetItemText(item, static_cast<int>(i), line[i].c_str());
        if (progress && item % 1000 == 999)
            progress(item + 1);
    }
}
