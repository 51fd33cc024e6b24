// Calls of the installed table on one file: on Windows the system's, else the one in memory.
#pragma once

#include "zemacore/FileCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#ifdef _WIN32
#include "tests/support/LogFolder.h"

using FolderTest = LogFolderTest;
#else
#include "tests/support/MemorySession.h"

struct FolderTest : testing::Test, MemorySession
{
};
#endif

class FileCallsTest : public FolderTest
{
protected:
    static constexpr DWORD kReadWrite = GENERIC_READ | GENERIC_WRITE;
    static constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE;
    static constexpr std::uint64_t kEverything = 0xFFFFFFFFFFFFFFFF;

    HANDLE Open(DWORD access = kReadWrite, DWORD share = kShareAll, DWORD disposition = OPEN_ALWAYS)
    {
        return calls.Create(path.c_str(), access, share, disposition, FILE_ATTRIBUTE_NORMAL);
    }

    // ERROR_SUCCESS when the call went well, else the error it left.
    long Error(bool done) { return done ? ERROR_SUCCESS : static_cast<long>(calls.LastError()); }

    std::string ErrorNumber() { return "error " + std::to_string(calls.LastError()); }

    // Where the file pointer is after the call, or the error.
    std::string Seek(HANDLE file, std::int64_t distance, DWORD origin = FILE_BEGIN)
    {
        std::uint64_t position = 0;
        const bool done = calls.Seek(file, distance, origin, position);
        return done ? std::to_string(position) : ErrorNumber();
    }

    // The bytes at `offset`, zeros shown as '.'; or the error.
    std::string Read(HANDLE file, std::int64_t offset, DWORD size)
    {
        Seek(file, offset);
        std::string bytes(size, '?');
        DWORD count = 99;
        const bool done = calls.Read(file, bytes.data(), size, count);
        bytes.resize(count);
        std::replace(bytes.begin(), bytes.end(), '\0', '.');
        return done ? bytes : bytes + ErrorNumber();
    }

    // The number of bytes written at the file pointer, or the error.
    std::string Write(HANDLE file, const std::string& bytes)
    {
        DWORD count = 99;
        const bool done = calls.Write(file, bytes.data(), static_cast<DWORD>(bytes.size()), count);
        return done ? std::to_string(count) : ErrorNumber();
    }

    ZEMA::IFileCalls& calls = ZEMA::FileCalls();
    std::string path = Path("Main.LOG"); // not there yet
};
