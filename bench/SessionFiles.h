// A large session of five logs for the benchmarks.
#pragma once

#include "QmLogRow.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

namespace bench
{

// Writes the files of a session in which a task is a block of Main around one of Run, with rows of all logs
// in between; one task in 500 has an error. Lines have 79 bytes on average.
class SessionFiles
{
public:
    static constexpr const char* kLogs[] = {"Main", "Run", "Source", "SQL", "Service"};

    // Ends with the first task after `textBytes` bytes of text in all logs.
    SessionFiles(const std::string& folder, std::uint64_t textBytes);
    SessionFiles(const SessionFiles&) = delete;
    SessionFiles& operator=(const SessionFiles&) = delete;

    unsigned RowCount() const { return m_number; }
    std::uint64_t TextBytes() const { return m_textBytes; }

private:
    enum Name
    {
        kMain,
        kRun,
        kSource,
        kSql,
        kService
    };

    struct Log
    {
        std::FILE* text = nullptr;
        std::FILE* rows = nullptr;
        std::uint32_t size = 0;
    };

    void AddTask(unsigned task);
    void AddRow(Name log, unsigned indent, QmLogBlockKind kind, bool header);
    void WriteCounters(const std::string& folder) const;

    std::array<Log, 5> m_logs;
    unsigned m_number = 0;
    std::uint64_t m_textBytes = 0;
};

} // namespace bench
