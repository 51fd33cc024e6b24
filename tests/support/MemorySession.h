// A log folder in memory: the fixture of all native tests that touch files.
#pragma once

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/MemoryFiles.h"
#include "zemacore/AppDataManager.h"

#include <cstring>
#include <string>

// A host's manager whose log folder is "C:\Logs\"; without a profile store.
class MemoryManager : public IAppDataManager, public IAppDataAccess
{
public:
    IAppDataAccess* GetAccess() override { return hasAccess ? this : nullptr; }
    IProfileStore* GetProfileStore() override { return nullptr; }

    DWORD GetLogFolder(char* text, DWORD size) override { return Give(folder, text, size); }
    DWORD GetFallbackFolder(char* text, DWORD size) override { return Give(fallback, text, size); }

    std::string folder = "C:\\Logs\\"; // empty: the query answers 0
    std::string fallback;              // likewise
    bool hasAccess = true;

private:
    static DWORD Give(const std::string& path, char* text, DWORD size)
    {
        *text = '\0';
        if (path.size() >= size)
            return 0;
        std::memcpy(text, path.c_str(), path.size() + 1);
        return static_cast<DWORD>(path.size());
    }
};

inline CQmLogWriter WriterOf(const char* name)
{
    CQmLogWriter writer;
    writer.SetFilePath(name);
    return writer;
}

// A line of a log as a new reader gives it, or "-" if it cannot be read.
inline std::string LineOf(const char* log, unsigned long index)
{
    CQmLogReader reader;
    reader.SetFilePath(log);
    const char* text = nullptr;
    unsigned long length = 0;
    CQmLogRow row;
    return reader.Read(index, text, length, row) ? std::string(text, length) : "-";
}

// Installs both for its lifetime. What the library keeps open is closed at the end.
class MemorySession
{
public:
    MemorySession()
    {
        ZEMA::SetFileCalls(&files);
        AppDataManager::SetAppDataManager(&manager);
    }

    ~MemorySession()
    {
        files.ClearFault();
        QmLogWriterCloseAll();
        AppDataManager::SetAppDataManager(nullptr);
        ZEMA::SetFileCalls(nullptr);
    }

    MemorySession(const MemorySession&) = delete;
    MemorySession& operator=(const MemorySession&) = delete;

    // Full path of a file of the log folder.
    std::string Path(const std::string& file) const { return manager.folder + file; }

    std::string Text(const std::string& log) const { return files.Contents(Path(log + ".LOG")); }

    // The counter as it stands in "Log.DAT".
    unsigned long Time() const
    {
        const std::string bytes = files.Contents(Path("Log.DAT"));
        std::uint32_t time = 0;
        std::memcpy(&time, bytes.data(), bytes.size() < sizeof(time) ? bytes.size() : sizeof(time));
        return time;
    }

    // The rows by their offsets, as "0! 2@1.2": '!' marks the beginning of a block, "@1.2" depth 1 and kind
    // 2, and
    // "#7" a number that is not the next one.
    std::string Rows(const std::string& log) const
    {
        const std::string bytes = files.Contents(Path(log + ".ROW"));
        std::string dump;
        CQmLogRow row;
        row.time = 0;
        for (std::size_t at = 0; at + sizeof(row) <= bytes.size(); at += sizeof(row))
        {
            const std::uint32_t next = row.time + 1;
            std::memcpy(&row, bytes.data() + at, sizeof(row));
            dump += (dump.empty() ? "" : " ") + std::to_string(row.offset);
            if (row.indent != 0 || row.kind != kPlainKind)
                dump += '@' + std::to_string(row.indent) + '.' + std::to_string(row.kind);
            dump += row.blockBegin != 0 ? "!" : "";
            dump += row.time != next ? '#' + std::to_string(row.time) : "";
        }
        return dump;
    }

    ZEMA::MemoryFiles files;
    MemoryManager manager;
};
