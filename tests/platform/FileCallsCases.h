// The rules that every table of file calls keeps, the system's and the one in memory alike.
#pragma once

#include "zemacore/FileCalls.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace file_calls
{

constexpr DWORD kReadWrite = GENERIC_READ | GENERIC_WRITE;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr std::uint64_t kEverything = 0xFFFFFFFFFFFFFFFF;

// A table, and the path of a file that is not there yet.
struct Probe
{
    ZEMA::IFileCalls& calls;
    std::string path;

    HANDLE Open(DWORD access = kReadWrite, DWORD share = kShareAll, DWORD disposition = OPEN_ALWAYS) const
    {
        return calls.Create(path.c_str(), access, share, disposition, FILE_ATTRIBUTE_NORMAL);
    }

    // 0 when the call went well, else the error it left.
    DWORD Error(bool done) const { return done ? ERROR_SUCCESS : calls.LastError(); }

    // Where the file pointer is after the call; on failure, the error and where it is still.
    std::string Seek(HANDLE file, std::int64_t distance, DWORD origin) const
    {
        std::uint64_t position = 0;
        if (calls.Seek(file, distance, origin, position))
            return std::to_string(position);

        const std::string error = "error " + std::to_string(calls.LastError());
        calls.Seek(file, 0, FILE_CURRENT, position);
        return error + " at " + std::to_string(position);
    }

    // The bytes at `offset`, zeros shown as '.'.
    std::string Read(HANDLE file, std::int64_t offset, DWORD size) const
    {
        Seek(file, offset, FILE_BEGIN);
        std::string bytes(size, '?');
        DWORD count = 99;
        EXPECT_TRUE(calls.Read(file, bytes.data(), size, count));
        bytes.resize(count);
        for (char& byte : bytes)
            byte = byte == '\0' ? '.' : byte;
        return bytes;
    }

    DWORD Write(HANDLE file, std::int64_t offset, const std::string& bytes) const
    {
        Seek(file, offset, FILE_BEGIN);
        DWORD count = 0;
        EXPECT_TRUE(calls.Write(file, bytes.data(), static_cast<DWORD>(bytes.size()), count));
        return count;
    }
};

inline void HandlesShareAFileAsBothAllow(const Probe& probe)
{
    struct
    {
        DWORD access, share, nextAccess, nextShare, error;
    } const cases[] = {
        {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, kShareAll, ERROR_SUCCESS},
        {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_WRITE, kShareAll, ERROR_SHARING_VIOLATION},
        {GENERIC_WRITE, FILE_SHARE_WRITE, GENERIC_WRITE, FILE_SHARE_WRITE, ERROR_SUCCESS},
        {GENERIC_WRITE, FILE_SHARE_WRITE, GENERIC_READ, kShareAll, ERROR_SHARING_VIOLATION},
        {kReadWrite, FILE_SHARE_READ, GENERIC_READ, kShareAll, ERROR_SUCCESS},
        {kReadWrite, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, ERROR_SHARING_VIOLATION},
        {GENERIC_READ, 0, GENERIC_READ, kShareAll, ERROR_SHARING_VIOLATION},
    };
    for (const auto& [access, share, nextAccess, nextShare, error] : cases)
    {
        SCOPED_TRACE(&access - &cases[0].access);
        const HANDLE first = probe.Open(access, share);
        const HANDLE next = probe.Open(nextAccess, nextShare);
        EXPECT_EQ(error, probe.Error(next != INVALID_HANDLE_VALUE));
        EXPECT_FALSE(probe.calls.Delete(probe.path.c_str()));
        EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, probe.calls.LastError());
        probe.calls.Close(first);
        if (next != INVALID_HANDLE_VALUE)
            probe.calls.Close(next);
        EXPECT_TRUE(probe.calls.Delete(probe.path.c_str()));
    }
}

inline void OpeningTellsNewFilesFromOldOnes(const Probe& probe)
{
    EXPECT_EQ(INVALID_HANDLE_VALUE, probe.Open(GENERIC_READ, kShareAll, OPEN_EXISTING));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, probe.calls.LastError());
    EXPECT_EQ(INVALID_HANDLE_VALUE, probe.calls.Create("", GENERIC_READ, 0, OPEN_ALWAYS, 0));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, probe.calls.LastError());

    std::string sameFile = probe.path;
    for (char& character : sameFile)
        character = character == '\\' ? '/' : character == 'M' ? 'm' : character;
    for (const DWORD error : {ERROR_SUCCESS, ERROR_ALREADY_EXISTS})
    {
        probe.calls.SetLastError(ERROR_INVALID_PARAMETER);
        const HANDLE file = Probe{probe.calls, error == ERROR_SUCCESS ? probe.path : sameFile}.Open();
        EXPECT_NE(INVALID_HANDLE_VALUE, file);
        EXPECT_EQ(error, probe.calls.LastError());
        probe.calls.Close(file);
    }
}

inline void SeeksReachBeyondTheEndButNotBeforeTheStart(const Probe& probe)
{
    const HANDLE file = probe.Open();
    probe.Write(file, 0, "0123456789");
    EXPECT_EQ("7", probe.Seek(file, -3, FILE_END));
    EXPECT_EQ("5", probe.Seek(file, -2, FILE_CURRENT));
    EXPECT_EQ("error 131 at 5", probe.Seek(file, -6, FILE_CURRENT));
    EXPECT_EQ("error 131 at 5", probe.Seek(file, -11, FILE_END));
    EXPECT_EQ("error 131 at 5", probe.Seek(file, -1, FILE_BEGIN));
    EXPECT_EQ("error 87 at 5", probe.Seek(file, 0, 3));
    EXPECT_EQ("5000000000", probe.Seek(file, 5000000000, FILE_BEGIN));
    EXPECT_EQ("10", probe.Seek(file, 0, FILE_END)); // the seek alone has not made the file longer
    probe.calls.Close(file);
}

inline void ReadsEndWithTheFileAndGapsAreZeros(const Probe& probe)
{
    const HANDLE file = probe.Open();
    const HANDLE reader = probe.Open(GENERIC_READ);
    EXPECT_EQ(5u, probe.Write(file, 0, "01234"));
    EXPECT_EQ(2u, probe.Write(file, 7, "78"));
    EXPECT_EQ("01234..78", probe.Read(reader, 0, 99));
    EXPECT_EQ("", probe.Read(reader, 9, 99)); // true with no bytes, at the end and behind it
    EXPECT_EQ("", probe.Read(reader, 100, 99));

    // Across 64 KiB and 4 GiB, where a table in memory or an offset in two halves may break.
    for (const std::int64_t offset : {std::int64_t{0xFFFC}, std::int64_t{0xFFFFFFFC}})
    {
        EXPECT_EQ(8u, probe.Write(file, offset, "abcdefgh"));
        EXPECT_EQ("..abcdefgh", probe.Read(reader, offset - 2, 99));
    }
    std::uint64_t size = 0;
    EXPECT_TRUE(probe.calls.GetSize(probe.path.c_str(), size));
    EXPECT_EQ(0x100000004u, size);
    probe.calls.Close(file);
    probe.calls.Close(reader);
}

inline void TheEndIsSetWhereTheFilePointerIs(const Probe& probe)
{
    const HANDLE file = probe.Open();
    probe.Write(file, 0, "0123456789");
    for (const std::int64_t end : {4, 8})
    {
        probe.Seek(file, end, FILE_BEGIN);
        EXPECT_TRUE(probe.calls.SetEnd(file));
    }
    EXPECT_EQ("0123....", probe.Read(file, 0, 99)); // bytes once cut do not come back
    probe.calls.Close(file);
}

inline void LocksKeepEveryHandleOut(const Probe& probe)
{
    ZEMA::IFileCalls& calls = probe.calls;
    const HANDLE first = probe.Open();
    HANDLE next = probe.Open();

    EXPECT_TRUE(calls.Lock(first, 0, kEverything));
    for (const HANDLE file : {first, next})
        EXPECT_EQ(DWORD{ERROR_LOCK_VIOLATION}, probe.Error(calls.Lock(file, 0x200000000, 1)));
    EXPECT_FALSE(calls.Unlock(next, 0, kEverything)); // another's
    EXPECT_FALSE(calls.Unlock(first, 0, 10));         // not the range that was locked
    EXPECT_TRUE(calls.Unlock(first, 0, kEverything));
    EXPECT_FALSE(calls.Unlock(first, 0, kEverything));

    EXPECT_TRUE(calls.Lock(first, 10, 10));
    EXPECT_TRUE(calls.Lock(next, 0, 10));
    EXPECT_TRUE(calls.Lock(next, 20, 10));
    EXPECT_EQ(DWORD{ERROR_LOCK_VIOLATION}, probe.Error(calls.Lock(first, 29, 1)));
    EXPECT_EQ(DWORD{ERROR_LOCK_VIOLATION}, probe.Error(calls.Lock(next, 19, 1)));

    calls.Close(next);
    EXPECT_FALSE(calls.Lock(first, 20, kEverything));     // beyond the greatest offset
    EXPECT_TRUE(calls.Lock(first, 20, kEverything - 20)); // the other's is released by the close
    next = probe.Open();
    EXPECT_EQ(3u, probe.Write(first, 25, "own")); // its own lock does not hinder it
    EXPECT_TRUE(calls.Lock(next, 0, 10));
    calls.Close(next);
    calls.Close(first);
}

inline void MissingFilesHaveNoSizeAndCannotBeDeleted(const Probe& probe)
{
    std::uint64_t size = 7;
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, probe.Error(probe.calls.GetSize(probe.path.c_str(), size)));
    EXPECT_EQ(7u, size);
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, probe.Error(probe.calls.Delete(probe.path.c_str())));
}

inline void HandlesDoOnlyWhatTheyWereOpenedFor(const Probe& probe)
{
    ZEMA::IFileCalls& calls = probe.calls;
    const HANDLE writer = probe.Open(GENERIC_WRITE);
    const HANDLE reader = probe.Open(GENERIC_READ);
    char byte = 'x';
    DWORD count = 99;
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, probe.Error(calls.Read(writer, &byte, 1, count)));
    EXPECT_EQ(0u, count);
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, probe.Error(calls.Write(reader, &byte, 1, count)));
    EXPECT_FALSE(calls.SetEnd(reader)); // systems differ in the number
    calls.Close(reader);
    calls.Close(writer);

    std::uint64_t position = 0;
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, probe.Error(calls.Close(reader)));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, probe.Error(calls.Seek(reader, 0, FILE_BEGIN, position)));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, probe.Error(calls.Read(reader, &byte, 1, count)));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, probe.Error(calls.Write(INVALID_HANDLE_VALUE, &byte, 1, count)));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, probe.Error(calls.Lock(reader, 0, 1)));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, probe.Error(calls.Close(nullptr)));
    EXPECT_TRUE(calls.Close(INVALID_HANDLE_VALUE));
}

struct Case
{
    const char* name;
    void (*check)(const Probe& probe);
};

inline std::vector<Case> Cases()
{
    return {
        {"HandlesShareAFileAsBothAllow", HandlesShareAFileAsBothAllow},
        {"OpeningTellsNewFilesFromOldOnes", OpeningTellsNewFilesFromOldOnes},
        {"SeeksReachBeyondTheEndButNotBeforeTheStart", SeeksReachBeyondTheEndButNotBeforeTheStart},
        {"ReadsEndWithTheFileAndGapsAreZeros", ReadsEndWithTheFileAndGapsAreZeros},
        {"TheEndIsSetWhereTheFilePointerIs", TheEndIsSetWhereTheFilePointerIs},
        {"LocksKeepEveryHandleOut", LocksKeepEveryHandleOut},
        {"MissingFilesHaveNoSizeAndCannotBeDeleted", MissingFilesHaveNoSizeAndCannotBeDeleted},
        {"HandlesDoOnlyWhatTheyWereOpenedFor", HandlesDoOnlyWhatTheyWereOpenedFor},
    };
}

inline std::string CaseName(const testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}

} // namespace file_calls
