// What the files in memory do beyond the rules they share with the system's.

#include "FileCallsFixture.h"

namespace
{

using ZEMA::Fault;
using MemoryFilesTest = FileCallsTest;

// The system is documented so; not every system that runs the library keeps to it.
TEST_F(MemoryFilesTest, LocksBarReadsAndWritesOfOthers)
{
    const HANDLE owner = Open();
    const HANDLE other = Open();
    Write(owner, "0123456789");
    EXPECT_TRUE(files.Lock(owner, 0, kEverything));
    EXPECT_EQ("error 33", Read(other, 4, 2));
    EXPECT_EQ("error 33", Write(other, "xy"));
    EXPECT_EQ("56789", Read(owner, 5, 5));
    EXPECT_EQ(ERROR_NOT_LOCKED, Error(files.Unlock(other, 0, kEverything)));
    files.CloseAllHandles();
    EXPECT_TRUE(files.Lock(Open(), 0, kEverything));
}

TEST_F(MemoryFilesTest, AFullDiskTakesWhatFitsAndThenRefuses)
{
    const HANDLE file = Open();
    files.SetFreeSpace(12);
    EXPECT_EQ("8", Write(file, "01234567"));
    EXPECT_EQ("4", Write(file, "abcdefgh"));
    EXPECT_EQ("error 112", Write(file, "x"));
    Seek(file, 2);
    EXPECT_EQ("3", Write(file, "xyz")) << "overwriting takes space";
    Seek(file, 13);
    EXPECT_EQ(ERROR_DISK_FULL, Error(files.SetEnd(file)));
    Seek(file, 4);
    EXPECT_TRUE(files.SetEnd(file)); // gives 8 bytes back
    Seek(file, 10);
    EXPECT_EQ("2", Write(file, "gap counts"));
    EXPECT_EQ("01xy......ga", Read(file, 0, 99));
}

TEST_F(MemoryFilesTest, FaultsStrikeTheCallsTheyAreScriptedFor)
{
    const HANDLE file = Open();
    const std::pair<ZEMA::ScriptedFault, const char*> writes[] = {
        {{2, Fault::Fail, false, 5}, "4 error 5 4 "},
        {{2, Fault::Fail, true, 1450}, "4 error 1450 error 1450 "},
        {{1, Fault::ShortWrite}, "2 4 4 "},
    };
    for (const auto& [fault, expected] : writes)
    {
        files.ForgetCalls();
        files.SetFault(fault);
        std::string answers;
        for (int call = 1; call <= 3; ++call)
            answers += Write(file, "data") + " ";
        EXPECT_EQ(expected, answers);
    }

    for (const Fault fault : {Fault::Fail, Fault::NullHandle, Fault::InvalidHandle})
    {
        files.SetFault({files.CallCount() + 1, fault, false, 32});
        EXPECT_EQ(fault == Fault::NullHandle ? nullptr : INVALID_HANDLE_VALUE, Open());
        EXPECT_EQ(ERROR_SHARING_VIOLATION, Error(false));
    }
}

TEST_F(MemoryFilesTest, WaitingForEverIsNoticed)
{
    const HANDLE owner = Open();
    const HANDLE other = Open();
    const auto failLocks = [&](int times) {
        EXPECT_TRUE(files.Lock(owner, 0, kEverything)); // somebody gets on, so the count starts again
        for (int count = 0; count < times; ++count)
            files.Lock(other, 0, kEverything);
        files.Unlock(owner, 0, kEverything);
    };
    failLocks(ZEMA::MemoryFiles::kPatience - 1);
    failLocks(ZEMA::MemoryFiles::kPatience - 1);
    EXPECT_THROW(failLocks(ZEMA::MemoryFiles::kPatience), ZEMA::EndlessWait);
}

} // namespace
