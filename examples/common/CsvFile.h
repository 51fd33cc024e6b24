// Reads CSV files, and puts them into a report control.
#pragma once

#include <ReportCtrl.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using Line = std::vector<std::string>;

// The separator that the first line has most of.
inline char GuessSeparator(const std::string& text)
{
    const auto count = [&](char c) { return std::count(text.begin(), text.begin() + text.find('\n'), c); };
    return count(';') > count(',') ? ';' : count('\t') > count(',') ? '\t' : ',';
}

// Quoted fields may hold separators, line feeds and doubled quotes. Control characters become blanks. Short
// lines are filled up; one that is longer than the captions is an error: std::runtime_error, as is a file
// that cannot be read.
inline std::vector<Line> ReadCsv(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.starts_with("\xEF\xBB\xBF")) // the mark of UTF-8
        text.erase(0, 3);
    if (!text.ends_with('\n'))
        text += '\n';
    const char separator = GuessSeparator(text);
    std::vector<Line> lines;
    Line line = {""};
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char c = text[i];
        if (c == '"' && quoted && text[i + 1] == '"') // a line feed ends the text
            line.back() += text[++i];
        else if (c == '"' && (quoted || line.back().empty()))
            quoted = !quoted;
        else if (c == separator && !quoted)
            line.emplace_back();
        else if (c == '\n' && !quoted)
        {
            const std::size_t fields = lines.empty() ? line.size() : lines.front().size();
            if (line.size() > fields)
                throw std::runtime_error(path + ": too long: row " + std::to_string(lines.size()));
            line.resize(fields);
            if (line.size() > 1 || !line.front().empty())
                lines.push_back(std::move(line));
            line = {""};
        }
        else if (c != '\r')
            line.back() += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    if (quoted || lines.empty())
        throw std::runtime_error(path + (quoted ? ": a quote is not closed" : ": there are no captions"));
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
