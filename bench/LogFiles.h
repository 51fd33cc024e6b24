// Large logs for the benchmarks.
#pragma once

#include "BenchFiles.h"
#include "QmLogRow.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace bench
{

// A log's files written at once: a million rows through the writer would take its counters a minute.
class LogFiles
{
public:
    static constexpr unsigned kLineBytes = 81; // the line feed counted

    LogFiles(const std::string& folder, const char* name) : m_base(folder + name) {}

    // `count` lines of kLineBytes whose numbers begin with `number` and grow by `step`, and whose records are
    // else `like`.
    void Add(CQmLogRow like, unsigned count, unsigned number, unsigned step)
    {
        for (unsigned i = 0; i < count; ++i)
        {
            like.offset = static_cast<std::uint32_t>(m_rows.size() * kLineBytes);
            like.time = number + i * step;
            m_rows.push_back(like);
        }
    }

    // Plain ones.
    void Add(unsigned count, unsigned number, unsigned step = 1)
    {
        CQmLogRow plain;
        plain.blockBegin = 0;
        Add(plain, count, number, step);
    }

    void Write() const
    {
        std::FILE* const rows = std::fopen((m_base + ".ROW").c_str(), "wb");
        std::FILE* const text = std::fopen((m_base + ".LOG").c_str(), "wb");
        Check(rows && text, "creating a log");
        Check(std::fwrite(m_rows.data(), sizeof(CQmLogRow), m_rows.size(), rows) == m_rows.size(),
              "writing rows");
        std::string lines;
        constexpr std::size_t kTogether = 10000;
        for (std::size_t i = 0; i < kTogether; ++i)
            lines += std::string(kLineBytes - 1, 'x') + '\n';
        for (std::size_t left = m_rows.size(); left > 0;)
        {
            const std::size_t count = std::min(left, kTogether);
            Check(std::fwrite(lines.data(), kLineBytes, count, text) == count, "writing text");
            left -= count;
        }
        std::fclose(rows);
        std::fclose(text);
    }

private:
    std::string m_base;
    std::vector<CQmLogRow> m_rows;
};

} // namespace bench
