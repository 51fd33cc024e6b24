// The rules that the system's file calls and those in memory share.

#include "FileCallsFixture.h"

namespace
{

TEST_F(FileCallsTest, HandlesShareAFileAsBothAllow)
{
    struct
    {
        DWORD access, share, nextAccess, nextShare;
        bool opens;
    } const cases[] = {
        {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, kShareAll, true},
        {GENERIC_WRITE, FILE_SHARE_READ, GENERIC_WRITE, kShareAll, false},
        {GENERIC_WRITE, FILE_SHARE_WRITE, GENERIC_WRITE, FILE_SHARE_WRITE, true},
        {kReadWrite, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, false},
        {GENERIC_READ, 0, GENERIC_READ, kShareAll, false},
    };
    for (const auto& [access, share, nextAccess, nextShare, opens] : cases)
    {
        SCOPED_TRACE(&access - &cases[0].access);
        const HANDLE first = Open(access, share);
        const HANDLE next = Open(nextAccess, nextShare);
        EXPECT_EQ(opens ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION, Error(next != INVALID_HANDLE_VALUE));
        EXPECT_EQ(ERROR_SHARING_VIOLATION, Error(calls.Delete(path.c_str())));
        calls.Close(first);
        if (opens)
            calls.Close(next);
        EXPECT_TRUE(calls.Delete(path.c_str()));
    }
}

TEST_F(FileCallsTest, OpeningTellsNewFilesFromOldOnes)
{
    std::uint64_t size = 0;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Error(calls.GetSize(path.c_str(), size)));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Error(calls.Delete(path.c_str())));
    EXPECT_EQ(INVALID_HANDLE_VALUE, Open(GENERIC_READ, kShareAll, OPEN_EXISTING));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Error(false));
    for (const DWORD error : {ERROR_SUCCESS, ERROR_ALREADY_EXISTS})
    {
        calls.SetLastError(ERROR_INVALID_PARAMETER);
        const HANDLE file = Open();
        EXPECT_NE(INVALID_HANDLE_VALUE, file);
        EXPECT_EQ(error, calls.LastError());
        calls.Close(file);
        path = Path("mAIN.log"); // the same file, spelled otherwise
        std::replace(path.begin(), path.end(), '\\', '/');
    }
}

TEST_F(FileCallsTest, AFileHasOneIdentityForAllHandles)
{
    ZEMA::FileIdentity identities[3];
    const HANDLE first = Open(GENERIC_READ, kShareAll);
    const HANDLE second = Open(GENERIC_READ, kShareAll);
    path = Path("other.log");
    const HANDLE other = Open(GENERIC_READ, kShareAll);
    EXPECT_TRUE(calls.GetIdentity(first, identities[0]));
    EXPECT_TRUE(calls.GetIdentity(second, identities[1]));
    EXPECT_TRUE(calls.GetIdentity(other, identities[2]));
    EXPECT_EQ(identities[0], identities[1]);
    EXPECT_NE(identities[0], identities[2]);
    for (const HANDLE file : {first, second, other})
        calls.Close(file);
    EXPECT_FALSE(calls.GetIdentity(INVALID_HANDLE_VALUE, identities[0]));
}

TEST_F(FileCallsTest, SeeksReachBeyondTheEndButNotBeforeTheStart)
{
    const HANDLE file = Open();
    Write(file, "0123456789");
    EXPECT_EQ("7", Seek(file, -3, FILE_END));
    EXPECT_EQ("5", Seek(file, -2, FILE_CURRENT));
    EXPECT_EQ("error 131", Seek(file, -6, FILE_CURRENT));
    EXPECT_EQ("error 131", Seek(file, -11, FILE_END));
    EXPECT_EQ("5", Seek(file, 0, FILE_CURRENT)) << "a refused seek has moved it";
    EXPECT_EQ("5000000000", Seek(file, 5000000000));
    EXPECT_EQ("10", Seek(file, 0, FILE_END)) << "the seek alone has made the file longer";
    calls.Close(file);
}

TEST_F(FileCallsTest, ReadsEndWithTheFileAndGapsAreZeros)
{
    const HANDLE file = Open();
    const HANDLE reader = Open(GENERIC_READ);
    EXPECT_EQ("9", Write(file, "012345678"));
    for (const std::int64_t end : {5, 7})
    {
        Seek(file, end);
        EXPECT_TRUE(calls.SetEnd(file));
    }
    EXPECT_EQ("2", Write(file, "78"));
    EXPECT_EQ("01234..78", Read(reader, 0, 99)) << "bytes once cut come back";
    EXPECT_EQ("", Read(reader, 100, 99)) << "no bytes behind the end, but no error";

    // Across 64 KiB and 4 GiB, where a table in memory or an offset in two halves may break.
    for (const std::int64_t offset : {0xFFFCll, 0xFFFFFFFCll})
    {
        Seek(file, offset);
        EXPECT_EQ("8", Write(file, "abcdefgh"));
        EXPECT_EQ("..abcdefgh", Read(reader, offset - 2, 99));
    }
    calls.Close(file);
    calls.Close(reader);
    std::uint64_t size = 0;
    EXPECT_TRUE(calls.GetSize(path.c_str(), size));
    EXPECT_EQ(0x100000004u, size);
}

TEST_F(FileCallsTest, LocksOfTheWholeFileKeepEveryHandleOut)
{
    const HANDLE first = Open();
    const HANDLE next = Open();
    EXPECT_TRUE(calls.Lock(first, 0, kEverything));
    for (const HANDLE file : {first, next})
        EXPECT_EQ(ERROR_LOCK_VIOLATION, Error(calls.Lock(file, 0, kEverything)));
    EXPECT_FALSE(calls.Unlock(next, 0, kEverything)) << "another's";
    EXPECT_EQ("3", Write(first, "own")) << "its own lock hinders it";
    EXPECT_TRUE(calls.Unlock(first, 0, kEverything));
    EXPECT_TRUE(calls.Lock(next, 0, kEverything));
    calls.Close(next); // releases its lock
    EXPECT_TRUE(calls.Lock(first, 0, kEverything));
    calls.Close(first);
}

TEST_F(FileCallsTest, HandlesDoOnlyWhatTheyWereOpenedFor)
{
    const HANDLE writer = Open(GENERIC_WRITE);
    const HANDLE reader = Open(GENERIC_READ);
    EXPECT_EQ("error 5", Read(writer, 0, 1));
    EXPECT_EQ("error 5", Write(reader, "x"));
    EXPECT_FALSE(calls.SetEnd(reader)); // systems differ in the number
    calls.Close(writer);
    calls.Close(reader);

    EXPECT_EQ("error 6", Read(reader, 0, 1));
    EXPECT_EQ("error 6", Write(reader, "x"));
    EXPECT_EQ(ERROR_INVALID_HANDLE, Error(calls.Lock(reader, 0, 1)));
    EXPECT_EQ(ERROR_INVALID_HANDLE, Error(calls.Close(reader)));
    EXPECT_TRUE(calls.Close(INVALID_HANDLE_VALUE));
}

} // namespace
