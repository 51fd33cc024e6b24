// A log writer and its counters as the format describes them, one row at a time: what the library is compared
// with. Written for reading, not for speed, and apart from the library but for the report of a failure.
#pragma once

#include "QmLogRow.h"
#include "logfiles/ErrorLog.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

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
        return Update("CQmLogReader::ReadRow().SetFilePointer()", "GlobalTimeIncrement.ReadFile",
                      "CQmLogReader::ReadRow().SetFilePointer()", "GlobalTimeIncrement.WriteFile",
                      [](Record& record) { return ++record.time; });
    }

    std::uint8_t IndentUp()
    {
        return static_cast<std::uint8_t>(
            Update("CQmLogReader::ReadRow().SetFilePointer()", "GlobalIndentIncrement.ReadFile",
                   "GlobalIndentIncrement().SetFilePointer()", "GlobalIndentIncrement.WriteFile",
                   [](Record& record) { return std::uint32_t{++record.indent}; }));
    }

    void IndentDown()
    {
        Update("GlobalIndentDecrement().SetFilePointer()", "GlobalIndentDecrement.ReadFile",
               "GlobalIndentDecrement().SetFilePointer()", "GlobalTimeDecrement.WriteFile",
               [](Record& record) { return std::uint32_t{--record.indent}; });
    }

    void Close()
    {
        if (m_file != nullptr)
            ZEMA::FileCalls().Close(m_file);
        m_file = nullptr;
    }

private:
    struct Record
    {
        std::uint32_t time = 0;
        std::uint8_t indent = 0;
        std::uint8_t reserved[3] = {};
    };

    void Acquire()
    {
        if (m_file != nullptr)
        {
            while (!ZEMA::FileCalls().Lock(m_file, 0, ~0ull))
                ;
            return;
        }
        HANDLE file = nullptr;
        while (file == nullptr || file == INVALID_HANDLE_VALUE)
            file = ZEMA_CreateFile(m_path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                   OPEN_ALWAYS, FILE_FLAG_WRITE_THROUGH | kAppendFlags, nullptr);
        ZEMA::FileCalls().Lock(file, 0, ~0ull);
        m_file = file;
    }

    template <typename Change>
    std::uint32_t Update(const char* seek, const char* read, const char* seekAgain, const char* write,
                         Change change)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        Record record;
        std::uint64_t position = 0;
        DWORD bytes = 0;
        Acquire();
        if (!files.Seek(m_file, 0, FILE_BEGIN, position))
            return logfiles::Report(seek), 0;
        if (!files.Read(m_file, &record, 8, bytes))
            logfiles::Report(read);
        const std::uint32_t value = change(record);
        if (!files.Seek(m_file, 0, FILE_BEGIN, position))
            return logfiles::Report(seekAgain), 0;
        if (!files.Write(m_file, &record, 8, bytes))
            logfiles::Report(write);
        else if (bytes != 8)
            logfiles::FailWith(ERROR_DISK_FULL, write);
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

    bool Write(const std::string& text)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        const bool startsLine = !text.empty() && text[0] == '\n';
        if (!startsLine && m_pending)
            Write("\n");
        if (startsLine)
            m_pending = false;
        if (!Open(m_log, m_logPath, "CQmLogWriter::Write().CreateFileWrite(Log)"))
            return false;
        std::uint64_t position = 0;
        if (!files.Seek(m_log, 0, FILE_END, position))
            return logfiles::Fail("CQmLogWriter::Write().SetFilePointer()");
        if (position == 0 && !startsLine)
        {
            m_blocks.back().offset = 0;
            WriteRow(m_blocks.back());
        }
        if (text.empty())
            return true;
        for (std::size_t i = 0; i < text.size(); ++i)
        {
            if (text[i] != '\n')
                continue;
            m_blocks.back().offset = static_cast<std::uint32_t>(position + i + 1);
            WriteRow(m_blocks.back());
            m_blocks.back().blockBegin = 0;
        }
        m_last = text.back();
        DWORD bytes = 0;
        if (!files.Write(m_log, text.data(), static_cast<DWORD>(text.size()), bytes))
            return logfiles::Fail("CQmLogWriter::Write().WriteFile()");
        if (bytes != text.size())
            return logfiles::FailWith(ERROR_DISK_FULL, "CQmLogWriter::Write().WriteFile()");
        return true;
    }

    void BlockBegin(std::uint32_t kind)
    {
        if (kind == 0xFFFFFFFF)
            kind = m_blocks.back().kind;
        m_blocks.emplace_back();
        m_blocks.back().indent = m_counters.IndentUp();
        m_blocks.back().kind = static_cast<QmLogBlockKind>(kind);
        Write("\n");
    }

    void BlockEnd()
    {
        m_counters.IndentDown();
        m_blocks.pop_back();
        m_pending = m_pending || m_last != '\n';
    }

    void Close()
    {
        if (m_log != nullptr && !ZEMA::FileCalls().Close(m_log))
            logfiles::Report("CQmLogWriter::Close().CloseHandle(Log)");
        if (m_row != nullptr && !ZEMA::FileCalls().Close(m_row))
            logfiles::Report("CQmLogWriter::Close().CloseHandle(Row)");
        m_log = m_row = nullptr;
    }

private:
    static bool Open(HANDLE& file, const std::string& path, const char* message)
    {
        if (file == nullptr)
            file = ZEMA_CreateFile(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                   kAppendFlags, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return logfiles::Fail(message);
        return file != nullptr;
    }

    // A row cut short is taken back.
    void WriteRow(CQmLogRow& row)
    {
        ZEMA::IFileCalls& files = ZEMA::FileCalls();
        if (!Open(m_row, m_rowPath, "CQmLogWriter::WriteRow().CreateFileWrite(Row)"))
            return;
        row.time = m_counters.NextTime();
        std::uint64_t end = 0;
        DWORD bytes = 0;
        if (!files.Seek(m_row, 0, FILE_END, end))
            logfiles::Report("CQmLogWriter::WriteRow().SetFilePointer()");
        else if (!files.Write(m_row, &row, 20, bytes))
            logfiles::Report("CQmLogWriter::WriteRow().WriteFile()");
        else if (bytes != 20)
        {
            if (bytes > 0 && files.Seek(m_row, static_cast<std::int64_t>(end), FILE_BEGIN, end))
                files.SetEnd(m_row);
            logfiles::FailWith(ERROR_DISK_FULL, "CQmLogWriter::WriteRow().WriteFile()");
        }
    }

    std::string m_logPath;
    std::string m_rowPath;
    ReferenceCounters& m_counters;
    HANDLE m_log = nullptr;
    HANDLE m_row = nullptr;
    std::vector<CQmLogRow> m_blocks;
    bool m_pending = false;
    char m_last = 0;
};
