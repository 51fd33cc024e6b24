// Logs in memory, and what the log view shows of them by its rules read literally, row by row.
#pragma once

#include "logview/LogSession.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace logview
{

// Logs as vectors of records and text; counts what is read. Five logs, growing at will.
class LogRows : public RowSource
{
public:
    // Appends a line to log `file`; numbers count over all logs.
    void Add(unsigned file, const std::string& line = "x\n", std::uint8_t indent = 0, bool begin = false,
             QmLogBlockKind kind = kPlainKind)
    {
        CQmLogRow row;
        row.offset = static_cast<std::uint32_t>(texts[file].size());
        row.indent = indent;
        row.blockBegin = begin;
        row.kind = kind;
        row.time = ++time;
        rows[file].push_back(row);
        texts[file] += line;
    }

    // One line a letter: M, R, O, Q or S for the log.
    void AddAll(const std::string& letters)
    {
        for (const char letter : letters)
            Add(static_cast<unsigned>(std::strchr("MROQS", letter) - "MROQS"));
    }

    unsigned long RowCount(unsigned file) override { return rows[file].size(); }
    unsigned long TextSize(unsigned file) override { return texts[file].size(); }

    unsigned long ReadRows(unsigned file, unsigned long first, unsigned long count, CQmLogRow* out) override
    {
        ++recordReads;
        const std::size_t size = rows[file].size();
        count = std::min<unsigned long>(count, first < size ? size - first : 0);
        std::copy_n(rows[file].begin() + static_cast<std::ptrdiff_t>(std::min(first, size)), count, out);
        return count;
    }

    unsigned long ReadText(unsigned file, unsigned long offset, unsigned long size, char* out) override
    {
        ++textReads;
        bytesRead += size;
        return offset < texts[file].size() ? texts[file].copy(out, size, offset) : 0;
    }

    bool Find(unsigned file, unsigned long number, bool forward, unsigned long& found,
              unsigned long& row) override
    {
        const std::vector<CQmLogRow>& log = rows[file];
        if (log.empty())
            return false;
        const auto at = std::partition_point(log.begin(), log.end(), [=](const CQmLogRow& each) {
            return forward ? each.time < number : each.time <= number;
        });
        const std::size_t before = static_cast<std::size_t>(at - log.begin());
        row = forward ? std::min(before, log.size() - 1) : std::max<std::size_t>(before, 1) - 1;
        if (log.size() > 1)
            found = log[row].time;
        return true;
    }

    std::vector<CQmLogRow> rows[kFileCount];
    std::string texts[kFileCount];
    std::uint32_t time = 0;
    unsigned recordReads = 0;
    unsigned textReads = 0;
    unsigned long bytesRead = 0;
};

// All rows in one list with their depths; for sessions without damage.
class LiteralView
{
public:
    explicit LiteralView(RowSource& source) : m_source(source) {}

    std::uint32_t Size() const { return static_cast<std::uint32_t>(m_rows.size()); }
    void Refresh()
    {
        while (m_mainRows < m_source.RowCount(0))
            m_rows.push_back({{0, m_mainRows++}, 0});
    }

    // Behind the last row the log at the top goes on.
    RowId Translate(std::uint32_t row) const
    {
        return row < Size() ? m_rows[row].place : RowId{0, m_mainRows + row - Size()};
    }

    bool GetExpanded(std::uint32_t row, bool& expanded)
    {
        CQmLogRow a;
        CQmLogRow b;
        const RowId first = Translate(row);
        const RowId second = Translate(row + 1);
        if (!Read(first, a) || !Read(second, b))
            return false;
        if (b.time == a.time + 1 && (first.file == second.file || b.indent < a.indent))
            return false;
        expanded = b.time == a.time + 1;
        return true;
    }

    bool Expand(std::uint32_t row)
    {
        bool expanded = false;
        if (!GetExpanded(row, expanded) || expanded)
            return expanded;
        const auto [place, depth] = m_rows[row];
        CQmLogRow record;
        Read(place, record);
        const std::uint32_t first = record.time + 1;
        std::uint32_t last = Read({place.file, place.row + 1}, record) ? record.time - 1 : 0;
        if (last < first)
            last = 0xFFFFFFFF;
        std::vector<Row> added;
        for (std::uint32_t file = 0; file < kFileCount && added.empty(); ++file)
            for (std::uint32_t at = 0; Read({file, at}, record) && record.time <= last; ++at)
                if (record.time == first || !added.empty())
                    added.push_back({{file, at}, depth + 1});
        m_rows.insert(m_rows.begin() + row + 1, added.begin(), added.end());
        return !added.empty();
    }

    bool ExpandAll(std::uint32_t row)
    {
        const std::uint32_t before = Size();
        const bool done = Expand(row);
        for (std::uint32_t at = row + 1; at <= row + (Size() - before); ++at)
            Expand(at);
        return done;
    }

    bool Collapse(std::uint32_t row)
    {
        const auto begin = m_rows.begin() + std::min(row + 1, Size());
        const auto end =
            std::find_if(begin, m_rows.end(), [&](const Row& each) { return each.depth <= begin[-1].depth; });
        const bool any = begin != end;
        m_rows.erase(begin, end);
        return any;
    }

private:
    struct Row
    {
        RowId place;
        int depth;
    };

    bool Read(RowId place, CQmLogRow& row) { return m_source.ReadRows(place.file, place.row, 1, &row) == 1; }

    RowSource& m_source;
    std::vector<Row> m_rows;
    std::uint32_t m_mainRows = 0;
};

} // namespace logview
