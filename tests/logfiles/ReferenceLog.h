// A log writer and its counters as the format describes them, one row at a time: what the library is compared
// with. Written for reading, not for speed, and apart from the library but for the report of a failure.
#pragma once

#include "QmLogRow.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/IndexEnd.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

constexpr DWORD kAppendFlags =
    FILE_FLAG_RANDOM_ACCESS | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL;

// "Log.DAT" through the update handle.
class ReferenceCounters
{
public:
    explicit ReferenceCounters(const std::string& folder) : m_path(folder + "Log.DAT") {}

    std::uint32_t NextTime()
    {
        return Update({kReadRow, "GlobalTimeIncrement.ReadFile", kReadRow, "GlobalTimeIncrement.WriteFile"},
                      [](Record& record) { return ++record.time; });
    }

    std::uint8_t IndentUp()
    {
        return static_cast<std::uint8_t>(
            Update({kReadRow, "GlobalIndentIncrement.ReadFile", "GlobalIndentIncrement().SetFilePointer()",
                    "GlobalIndentIncrement.WriteFile"},
                   [](Record& record) { return std::uint32_t{++record.indent}; }));
    }

    void IndentDown()
    {
        Update({"GlobalIndentDecrement().SetFilePointer()", "GlobalIndentDecrement.ReadFile",
                "GlobalIndentDecrement().SetFilePointer()", "GlobalTimeDecrement.WriteFile"},
               [](Record& record) { return std::uint32_t{--record.indent}; });
    }

    void Close()
    {
        if (m_file != nullptr)
            ZEMA::FileCalls().Close(m_file);
        m_file = nullptr;
    }

private:
    static constexpr const char* kReadRow = "CQmLogReader::ReadRow().SetFilePointer()";

    struct Reports
    {
        const char* seek;
        const char* read;
        const char* seekAgain;
        const char* write;
    };

    struct Record
    {
        std::uint32_t time = 0;
        std::uint8_t indent = 0;
        std::uint8_t reserved[3] = {};
    };

    void Acquire()
    {
        const bool isOpen = m_file != nullptr;
        while (m_file == nullptr || m_file == INVALID_HANDLE_VALUE)
            m_file = ZEMA_CreateFile(m_path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                     OPEN_ALWAYS, FILE_FLAG_WRITE_THROUGH | kAppendFlags, nullptr);
        while (!ZEMA::FileCalls().Lock(m_file, 0, ~0ull) && isOpen)
            ;
    }

    template <typename Change> std::uint32_t Update(const Reports& reports, Change change)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        Record record;
        std::uint64_t position = 0;
        DWORD bytes = 0;
        Acquire();
        if (!files.Seek(m_file, 0, FILE_BEGIN, position))
            return logfiles::Report(reports.seek), 0;
        if (!files.Read(m_file, &record, 8, bytes))
        {
            logfiles::Report(reports.read);
            record = {};
        }
        const std::uint32_t value = change(record);
        if (!files.Seek(m_file, 0, FILE_BEGIN, position))
            return logfiles::Report(reports.seekAgain), 0;
        if (!files.Write(m_file, &record, 8, bytes))
            logfiles::Report(reports.write);
        else if (bytes != 8)
            logfiles::FailWith(ERROR_DISK_FULL, reports.write);
        files.Unlock(m_file, 0, ~0ull);
        return value;
    }

    std::string m_path;
    HANDLE m_file = nullptr;
};

class ReferenceWriter
{
public:
    ReferenceWriter(const std::string& folder, const std::string& name, ReferenceCounters& counters)
        : m_logPath(folder + name + ".LOG"), m_rowPath(folder + name + ".ROW"), m_counters(counters),
          m_blocks(1)
    {
    }

    // A write whose text fails leaves both files, and the writer, as they were.
    bool Write(const std::string& text)
    {
        const bool startsLine = !text.empty() && text[0] == '\n';
        bool due = m_pending;
        m_pending = false;
        if (due && !startsLine)
            due = !Write("\n");
        if (Append(text))
            return true;
        m_pending = due;
        return false;
    }

    bool BlockBegin(QmLogBlockKind kind)
    {
        if (kind == kEnclosingKind)
            kind = m_blocks.back().kind;
        m_blocks.emplace_back();
        m_blocks.back().indent = m_counters.IndentUp();
        m_blocks.back().kind = kind;
        m_pending = !Write("\n") || m_pending;
        return true;
    }

    bool BlockEnd()
    {
        m_counters.IndentDown();
        m_blocks.pop_back();
        m_pending = m_pending || m_last != '\n';
        return true;
    }

    void Close()
    {
        const bool rowClosed = m_row == nullptr || ZEMA::FileCalls().Close(m_row);
        const DWORD error = ZEMA::FileCalls().LastError();
        if (m_log != nullptr && !ZEMA::FileCalls().Close(m_log))
            logfiles::Report("CQmLogWriter::Close().CloseHandle(Log)");
        if (!rowClosed)
            logfiles::FailWith(error, "CQmLogWriter::Close().CloseHandle(Row)");
        m_log = m_row = nullptr;
    }

private:
    bool Append(const std::string& text)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        if (!Open(m_log, m_logPath, m_logError))
            return m_log != nullptr &&
                   logfiles::FailWith(m_logError, "CQmLogWriter::Write().CreateFileWrite(Log)");
        std::uint64_t position = 0;
        if (!files.Seek(m_log, 0, FILE_END, position))
            return logfiles::Fail("CQmLogWriter::Write().SetFilePointer()");
        const CQmLogRow line = m_blocks.back();
        m_rowsBegin = kNowhere;
        m_reported = false;
        if (position == 0 && (text.empty() || text[0] != '\n'))
        {
            m_blocks.back().offset = 0;
            WriteRow(m_blocks.back());
        }
        for (std::size_t i = 0; i < text.size(); ++i)
        {
            if (text[i] != '\n')
                continue;
            m_blocks.back().offset = static_cast<std::uint32_t>(position + i + 1);
            WriteRow(m_blocks.back());
            m_blocks.back().blockBegin = 0;
        }
        if (text.empty())
            return true;
        if (position > 0)
            OpenIndex(); // a text that begins no line has not opened it
        if (AppendWhole(m_log, text.data(), text.size(), position))
        {
            m_last = text.back();
            return true;
        }
        const DWORD error = files.LastError();
        if (m_rowsBegin != kNowhere &&
            files.Seek(m_row, static_cast<std::int64_t>(m_rowsBegin), FILE_BEGIN, position))
            files.SetEnd(m_row);
        m_blocks.back() = line;
        return logfiles::FailWith(error, "CQmLogWriter::Write().WriteFile()");
    }

    static bool Open(HANDLE& file, const std::string& path, DWORD& error)
    {
        if (file == nullptr)
        {
            file = ZEMA_CreateFile(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                   kAppendFlags, nullptr);
            error = ZEMA::FileCalls().LastError();
        }
        return file != nullptr && file != INVALID_HANDLE_VALUE;
    }

    // What is cut short is taken back.
    static bool AppendWhole(HANDLE file, const void* data, std::size_t size, std::uint64_t end)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        DWORD bytes = 0;
        if (!files.Write(file, data, static_cast<DWORD>(size), bytes))
            return false;
        if (bytes == size)
            return true;
        if (bytes > 0 && files.Seek(file, static_cast<std::int64_t>(end), FILE_BEGIN, end))
            files.SetEnd(file);
        files.SetLastError(ERROR_DISK_FULL);
        return false;
    }

    // One message a write, whatever its rows meet.
    void ReportRow(DWORD error, const char* message)
    {
        if (!m_reported)
            logfiles::FailWith(error, message);
        m_reported = true;
    }

    bool OpenIndex()
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        const bool opening = m_row == nullptr;
        if (!Open(m_row, m_rowPath, m_rowError))
            return false;
        const auto looksAtEnd = [&] {
            std::uint64_t rowSize = 0;
            std::uint64_t textSize = 0;
            std::uint64_t surplus = 0;
            if (!files.GetSize(m_rowPath.c_str(), rowSize))
                return false;
            const bool seen =
                rowSize == 0 || (files.GetSize(m_logPath.c_str(), textSize) &&
                                 logfiles::CountRowsWithoutText(m_rowPath.c_str(), textSize, surplus));
            EXPECT_EQ(0u, surplus) << "nobody was killed";
            return seen;
        };
        if (opening && !looksAtEnd() && !looksAtEnd())
            logfiles::Report("CQmLogWriter::WriteRow(): rows without text cannot be cut");
        return true;
    }

    void WriteRow(CQmLogRow& row)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        if (!OpenIndex())
        {
            if (m_row != nullptr)
                ReportRow(m_rowError, "CQmLogWriter::WriteRow().CreateFileWrite(Row)");
            return;
        }
        std::uint64_t end = 0;
        row.time = m_counters.NextTime();
        if (!files.Seek(m_row, 0, FILE_END, end))
            ReportRow(files.LastError(), "CQmLogWriter::WriteRow().SetFilePointer()");
        else if (!AppendWhole(m_row, &row, 20, end))
            ReportRow(files.LastError(), "CQmLogWriter::WriteRow().WriteFile()");
        else
            m_rowsBegin = std::min(m_rowsBegin, end);
    }

    static constexpr std::uint64_t kNowhere = ~0ull;

    std::string m_logPath;
    std::string m_rowPath;
    ReferenceCounters& m_counters;
    HANDLE m_log = nullptr;
    HANDLE m_row = nullptr;
    std::vector<CQmLogRow> m_blocks;
    bool m_pending = false;
    char m_last = 0;
    DWORD m_logError = 0;
    DWORD m_rowError = 0;
    std::uint64_t m_rowsBegin = kNowhere; // where the first row of the present write lies
    bool m_reported = false;
};
