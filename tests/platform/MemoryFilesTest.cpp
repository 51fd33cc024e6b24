#include "zemacore/MemoryFiles.h"

#include "FileCallsCases.h"

#include <gtest/gtest.h>

using ZEMA::EndlessWait;
using ZEMA::Fault;
using ZEMA::MemoryFiles;

namespace
{

const char* const kPath = "C:\\Logs\\Main.LOG";

class MemoryFilesRules : public testing::TestWithParam<file_calls::Case>
{
};

TEST_P(MemoryFilesRules, AreTheSystems)
{
    MemoryFiles files;
    GetParam().check({files, kPath});
    EXPECT_EQ(0u, files.OpenHandles());
}

INSTANTIATE_TEST_SUITE_P(, MemoryFilesRules, testing::ValuesIn(file_calls::Cases()), file_calls::CaseName);

class MemoryFilesTest : public testing::Test
{
protected:
    HANDLE Open() { return m_probe.Open(); }

    // The bytes written, or "error <n>".
    std::string Write(HANDLE file, const std::string& bytes)
    {
        DWORD written = 99;
        if (!m_files.Write(file, bytes.data(), static_cast<DWORD>(bytes.size()), written))
            return "error " + std::to_string(m_files.LastError());
        return std::to_string(written);
    }

    MemoryFiles m_files;
    file_calls::Probe m_probe{m_files, kPath};
};

// The system is documented so; not every system that runs the library keeps to it.
TEST_F(MemoryFilesTest, LocksBarReadsAndWritesOfOthers)
{
    const HANDLE owner = Open();
    const HANDLE other = Open();
    m_probe.Write(owner, 0, "0123456789");
    EXPECT_TRUE(m_files.Lock(owner, 5, 5));
    EXPECT_EQ("01234", m_probe.Read(other, 0, 5));

    char bytes[10];
    DWORD count = 99;
    m_probe.Seek(other, 4, FILE_BEGIN);
    EXPECT_FALSE(m_files.Read(other, bytes, 2, count));
    EXPECT_EQ(DWORD{ERROR_LOCK_VIOLATION}, m_files.LastError());
    EXPECT_EQ("error 33", Write(other, "xy"));
    EXPECT_EQ("4", m_probe.Seek(other, 0, FILE_CURRENT));
    EXPECT_EQ("56789", m_probe.Read(owner, 5, 5));

    EXPECT_FALSE(m_files.Unlock(other, 5, 5));
    EXPECT_EQ(DWORD{ERROR_NOT_LOCKED}, m_files.LastError());
    m_files.CloseAllHandles();
    EXPECT_EQ(0u, m_files.OpenHandles());
    EXPECT_TRUE(m_files.Lock(Open(), 0, file_calls::kEverything));
}

TEST_F(MemoryFilesTest, AFullDiskTakesWhatFitsAndThenRefuses)
{
    const HANDLE file = Open();
    m_files.SetFreeSpace(12);
    EXPECT_EQ("8", Write(file, "01234567"));
    EXPECT_EQ("4", Write(file, "abcdefgh"));
    EXPECT_EQ("error 112", Write(file, "x"));
    EXPECT_EQ("12", m_probe.Seek(file, 0, FILE_CURRENT));
    m_probe.Seek(file, 2, FILE_BEGIN);
    EXPECT_EQ("3", Write(file, "xyz")); // overwriting takes no space
    EXPECT_EQ("01xyz567abcd", m_files.Contents(kPath));

    m_probe.Seek(file, 13, FILE_BEGIN);
    EXPECT_FALSE(m_files.SetEnd(file));
    EXPECT_EQ(DWORD{ERROR_DISK_FULL}, m_files.LastError());
    m_probe.Seek(file, 4, FILE_BEGIN);
    EXPECT_TRUE(m_files.SetEnd(file)); // gives 8 bytes back
    m_probe.Seek(file, 10, FILE_BEGIN);
    EXPECT_EQ("2", Write(file, "gap counts"));
    EXPECT_EQ(std::string("01xy\0\0\0\0\0\0ga", 12), m_files.Contents(kPath));
}

TEST_F(MemoryFilesTest, FaultsStrikeTheCallsTheyAreScriptedFor)
{
    const HANDLE file = Open();
    struct
    {
        ZEMA::ScriptedFault fault;
        const char* writes; // what calls 1 to 3 answer
    } const cases[] = {
        {{2, Fault::kFail, false, 5}, "4 error 5 4 "},
        {{2, Fault::kFail, true, 1450}, "4 error 1450 error 1450 "},
        {{1, Fault::kShortWrite}, "2 4 4 "},
        {{2, Fault::kShortWrite, true}, "4 2 2 "},
        {{1, Fault::kNullHandle, true}, "4 4 4 "},
    };
    for (const auto& [fault, writes] : cases)
    {
        m_files.ForgetCalls();
        m_files.SetFault(fault);
        std::string answers;
        for (int call = 1; call <= 3; ++call)
            answers += Write(file, "data") + " ";
        EXPECT_EQ(writes, answers);
    }

    m_files.ForgetCalls();
    m_files.SetFault({1, Fault::kFail, false, 21});
    EXPECT_FALSE(m_files.Close(file)); // does nothing: the handle is still open
    EXPECT_EQ(21u, m_files.LastError());
    EXPECT_TRUE(m_files.Close(file));

    for (const Fault fault : {Fault::kFail, Fault::kNullHandle, Fault::kInvalidHandle})
    {
        m_files.ForgetCalls();
        m_files.SetFault({1, fault, false, 32});
        EXPECT_EQ(fault == Fault::kNullHandle ? nullptr : INVALID_HANDLE_VALUE, Open());
        EXPECT_EQ(32u, m_files.LastError());
    }
    m_files.ClearFault();
    EXPECT_NE(INVALID_HANDLE_VALUE, Open());
}

TEST_F(MemoryFilesTest, WaitingForEverIsNoticed)
{
    const HANDLE owner = Open();
    const HANDLE other = Open();
    EXPECT_TRUE(m_files.Lock(owner, 0, 1));
    const auto failLocks = [&](int times) {
        for (int count = 0; count < times; ++count)
            m_files.Lock(other, 0, 1);
    };
    const auto failCreates = [&](int times) {
        for (int count = 0; count < times; ++count)
            m_files.Create("C:\\missing", GENERIC_READ, 0, OPEN_EXISTING, 0);
    };

    failLocks(MemoryFiles::kPatience - 1);
    failCreates(MemoryFiles::kPatience - 1);
    EXPECT_TRUE(m_files.Lock(owner, 1, 1)); // somebody got on, so the count starts again
    failCreates(MemoryFiles::kPatience - 1);
    EXPECT_THROW(failCreates(1), EndlessWait);
    failLocks(MemoryFiles::kPatience - 1);
    EXPECT_THROW(failLocks(1), EndlessWait);
}

TEST_F(MemoryFilesTest, TestsSeeAndSetFilesBehindTheCalls)
{
    m_files.SetContents("C:\\b.txt", "bytes");
    m_files.SetContents("c:/A.txt", "");
    m_files.SetSize("C:\\B.TXT", 3);
    m_files.SetSize("C:\\large", 0x200000000);
    EXPECT_EQ("byt", m_files.Contents("c:/b.txt"));
    EXPECT_EQ("", m_files.Contents("C:\\missing"));
    EXPECT_EQ((std::vector<std::string>{"c:/A.txt", "C:\\b.txt", "C:\\large"}), m_files.Paths());
    EXPECT_EQ(0u, m_files.CallCount());

    std::uint64_t size = 0;
    EXPECT_TRUE(m_files.GetSize("C:\\large", size));
    EXPECT_EQ(0x200000000u, size);
    m_files.Close(Open());
    EXPECT_TRUE(m_files.Delete("c:/a.TXT"));
    EXPECT_FALSE(m_files.Exists("C:\\A.txt"));
    EXPECT_EQ((std::vector<std::string>{"GetSize C:\\large", "Create C:\\Logs\\Main.LOG", "Close",
                                        "Delete c:/a.TXT"}),
              m_files.Calls());
}

} // namespace
