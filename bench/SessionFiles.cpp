#include "SessionFiles.h"

#include "BenchFiles.h"

#include <algorithm>
#include <string_view>

namespace bench
{

SessionFiles::SessionFiles(const std::string& folder, std::uint64_t textBytes)
{
    for (std::size_t i = 0; i < m_logs.size(); ++i)
    {
        m_logs[i].text = std::fopen((folder + kLogs[i] + ".LOG").c_str(), "wb");
        m_logs[i].rows = std::fopen((folder + kLogs[i] + ".ROW").c_str(), "wb");
        Check(m_logs[i].text && m_logs[i].rows, "creating a session");
        std::setvbuf(m_logs[i].text, nullptr, _IOFBF, 64 * 1024);
        std::setvbuf(m_logs[i].rows, nullptr, _IOFBF, 64 * 1024);
    }
    for (unsigned task = 0; m_textBytes < textBytes; ++task)
        AddTask(task);
    for (const Log& log : m_logs)
        Check(std::fclose(log.text) == 0 && std::fclose(log.rows) == 0, "writing a session");
    WriteCounters(folder);
}

// A hundred rows; those of Run, Source and SQL take turns as three busy programs do.
void SessionFiles::AddTask(unsigned task)
{
    AddRow(kMain, 1, kPlainKind, true);
    for (int i = 0; i < 4; ++i)
        AddRow(kMain, 1, kPlainKind, false);
    const QmLogBlockKind kind = task % 500 == 0 ? kErrorKind : kDetailKind;
    AddRow(kRun, 2, kind, true);
    for (int i = 0; i < 91; ++i)
        AddRow(i % 7 < 3 ? kRun : i % 7 < 5 ? kSource : kSql, 2, kind, false);
    AddRow(kRun, 1, kPlainKind, false);
    AddRow(kService, 1, kPlainKind, false);
    AddRow(kMain, 0, kPlainKind, false);
}

void SessionFiles::AddRow(Name name, unsigned indent, QmLogBlockKind kind, bool header)
{
    static constexpr std::string_view kWords =
        "connecting to depot 14 of 37 at node east-2; retry in 250 ms, transfer of list.txt (12,481 bytes) "
        "took 31 ms, cached; next job waits for table ORDERS, 3 locks held ";
    Log& log = m_logs[name];
    CQmLogRow row;
    row.offset = log.size;
    row.indent = static_cast<std::uint8_t>(indent);
    row.kind = kind;
    row.blockBegin = header ? 1 : 0;
    row.time = ++m_number;

    const unsigned varied = m_number * 2654435761u;
    const std::size_t length = 38 + (varied >> 16) % 81; // with a line feed 39 to 119, 79 on average
    const std::size_t begin = (varied >> 8) % (kWords.size() - 118);
    std::array<char, 120> line;
    std::copy_n(kWords.begin() + static_cast<std::ptrdiff_t>(begin), length, line.begin());
    line[length] = '\n';
    Check(std::fwrite(&row, sizeof(row), 1, log.rows) == 1 &&
              std::fwrite(line.data(), 1, length + 1, log.text) == length + 1,
          "writing a session");
    log.size += static_cast<std::uint32_t>(length + 1);
    m_textBytes += length + 1;
}

void SessionFiles::WriteCounters(const std::string& folder) const
{
    const std::uint32_t counters[2] = {m_number, 0};
    std::FILE* const file = std::fopen((folder + "Log.DAT").c_str(), "wb");
    Check(file && std::fwrite(counters, sizeof(counters), 1, file) == 1 && std::fclose(file) == 0,
          "writing the counters");
}

} // namespace bench
