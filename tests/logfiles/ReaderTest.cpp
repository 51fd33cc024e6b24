// Reading: lines, lengths, search, and indexes that are damaged.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LongRun.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <utility>

namespace
{

struct ReaderTest : testing::Test
{
    void Write(const char* text)
    {
        CQmLogWriter log;
        log.SetFilePath("Main");
        log.Write(text);
        reader.SetFilePath("Main");
    }

    // The line's text, or "-" when it cannot be read.
    std::string Line(unsigned long index)
    {
        const char* text = nullptr;
        return reader.Read(index, text, length, row) ? std::string(text, length) : "-";
    }

    // An index with one row for each of `times`.
    void SetTimes(const std::vector<std::uint32_t>& times)
    {
        std::string bytes;
        for (const std::uint32_t time : times)
        {
            CQmLogRow record;
            record.time = time;
            bytes.append(reinterpret_cast<const char*>(&record), sizeof(record));
        }
        session.files.SetContents(session.Path("Main.ROW"), bytes);
        reader.SetFilePath("Main");
    }

    MemorySession session;
    CQmLogReader reader;
    unsigned long length = 0;
    CQmLogRow row;
};

// A writer goes on between the reading of a record and of its text.
TEST_F(ReaderTest, TheLastLineEndsWithItsLineFeedWhateverComesMeanwhile)
{
    Write("a\nb");
    int looks = 0;
    session.files.onCall = [&](const std::string& call) {
        if (call.starts_with("GetSize") && ++looks == 1)
            Write("c\nd\n");
    };
    EXPECT_EQ("bc\n", Line(1));
    session.files.onCall = nullptr;
}

TEST_F(ReaderTest, ReadsLinesWithTheirLineFeeds)
{
    Write("a\nb");
    EXPECT_EQ(2u, reader.GetRowCount());
    EXPECT_EQ(3u, reader.GetLogFileSize());
    EXPECT_EQ("a\n", Line(0));
    EXPECT_EQ("b", Line(1));
    EXPECT_EQ(1u, length);
    EXPECT_EQ(2u, row.time);
    EXPECT_TRUE(reader.ReadLength(1, length));
    EXPECT_EQ(2u, length) << "the last line counts one more than its bytes";
    EXPECT_TRUE(reader.ReadStyle(0, row));
    EXPECT_EQ(1, row.blockBegin);
    EXPECT_EQ("-", Line(2));
    EXPECT_EQ("-", Line(0xFFFFFFFF));
    EXPECT_FALSE(session.files.Exists(session.Path("QmLog.LOG")))
        << "a row that does not exist yet is no error";

    Write("c\n\n"); // the log grows while it is read
    EXPECT_EQ("bc\n", Line(1));
    EXPECT_EQ("\n", Line(2));
    EXPECT_EQ("", Line(3));
}

TEST_F(ReaderTest, AMissingLogIsTriedAtEachCall)
{
    reader.SetFilePath("Main");
    EXPECT_EQ(0u, reader.GetRowCount());
    EXPECT_EQ(0u, reader.GetLogFileSize());
    unsigned long time = 0;
    EXPECT_FALSE(reader.Find(1, true, time, length));
    EXPECT_FALSE(session.files.Exists(session.Path("QmLog.LOG")));
    EXPECT_EQ("-", Line(0));
    EXPECT_EQ("-", Line(0));
    const std::string report = session.Text("QmLog");
    const std::string message = "CQmLogReader::ReadRow().CreateFileRead(Row)\nError 2.\r\n";
    EXPECT_NE(report.find(message), report.rfind(message)) << "once a call";
    Write("a");
    EXPECT_EQ("a", Line(0));

    CQmLogReader unnamed;
    const char* text = nullptr;
    EXPECT_FALSE(unnamed.Read(0, text, length, row));
    EXPECT_EQ(0u, unnamed.GetRowCount());
    EXPECT_EQ(report, session.Text("QmLog")) << "without a name nothing is tried";
}

TEST_F(ReaderTest, ReadsPagesOfRowsAndText)
{
    CQmLogRow rows[4];
    char text[8];
    EXPECT_EQ(0u, reader.ReadRows(0, 4, rows)); // without a name
    EXPECT_EQ(0u, reader.ReadText(0, 8, text));

    Write("a\nbc\nd");
    EXPECT_EQ(2u, reader.ReadRows(1, 4, rows));
    EXPECT_EQ(2u, rows[0].offset);
    EXPECT_EQ(5u, rows[1].offset);
    EXPECT_EQ(0u, reader.ReadRows(3, 4, rows));
    EXPECT_EQ("bc\nd", std::string(text, reader.ReadText(2, 8, text)));
    EXPECT_EQ("bc", std::string(text, reader.ReadText(2, 2, text)));

    // An open file stays when it is deleted; a closed one goes, and is found again when it comes back.
    EXPECT_FALSE(session.files.Delete(session.Path("Main.LOG").c_str()));
    reader.Close();
    EXPECT_TRUE(session.files.Delete(session.Path("Main.LOG").c_str()));
    EXPECT_EQ("-", Line(1));
    session.files.SetContents(session.Path("Main.LOG"), "a\nBC\nd");
    EXPECT_EQ("BC\n", Line(1));
}

TEST_F(ReaderTest, FindEqualsAWalkThroughTheRows)
{
    std::mt19937 random(1);
    for (std::size_t count = 2; count < 40; ++count)
    {
        std::vector<std::uint32_t> times;
        for (std::uint32_t time = 0; times.size() < count;)
            times.push_back(time += static_cast<std::uint32_t>(1 + random() % 3));
        CQmLogReader fresh;
        SetTimes(times);
        fresh.SetFilePath("Main");
        for (std::uint32_t time = 0; time <= times.back() + 2; ++time)
        {
            const auto after = std::lower_bound(times.begin(), times.end(), time);
            const auto before = std::upper_bound(times.begin(), times.end(), time);
            const auto forward = after != times.end() ? after : after - 1;
            const auto backward = before != times.begin() ? before - 1 : before;
            for (const bool ahead : {true, false})
            {
                const auto expected = ahead ? forward : backward;
                unsigned long index = 0;
                unsigned long found = 0;
                ASSERT_TRUE(fresh.Find(time, ahead, found, index));
                ASSERT_EQ(expected - times.begin(), static_cast<std::ptrdiff_t>(index))
                    << time << " of " << count;
                ASSERT_EQ(*expected, found);
            }
        }
    }
}

TEST_F(ReaderTest, FindInOneRowLeavesTheTimeAlone)
{
    SetTimes({7});
    unsigned long found = 4711;
    unsigned long index = 1;
    EXPECT_TRUE(reader.Find(3, false, found, index));
    EXPECT_EQ(0u, index);
    EXPECT_EQ(4711u, found);
}

// Whatever an index says: no crash, no more text than the file has, and no memory for more.
TEST_F(ReaderTest, DamagedIndexesAreReadWithinTheFile)
{
    const unsigned first = FirstSeed();
    const unsigned rounds = Rounds(4000u, 100'000u);
    for (unsigned seed = first; seed < first + rounds; ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        std::mt19937 random(seed);
        std::string text(random() % 200, 'x');
        std::string index(random() % 200, '\0');
        for (char& byte : index)
            byte = static_cast<char>(random() % 3 == 0 ? random() : 0);
        session.files.SetContents(session.Path("Main.LOG"), text);
        session.files.SetContents(session.Path("Main.ROW"), index);
        CQmLogReader damaged;
        damaged.SetFilePath("Main");
        ASSERT_EQ(index.size() / 20, damaged.GetRowCount());
        for (unsigned long at = 0; at <= damaged.GetRowCount(); ++at)
        {
            const char* line = nullptr;
            ASSERT_EQ(at < damaged.GetRowCount(), damaged.Read(at, line, length, row));
            ASSERT_TRUE(at == damaged.GetRowCount() || std::strlen(line) == length);
            ASSERT_TRUE(at == damaged.GetRowCount() || length <= text.size());
            ASSERT_EQ(at < damaged.GetRowCount(), damaged.ReadLength(at, length));
            unsigned long found = 0;
            unsigned long foundAt = 0;
            ASSERT_EQ(damaged.GetRowCount() > 0, damaged.Find(random(), random() % 2 == 0, found, foundAt));
            ASSERT_TRUE(damaged.GetRowCount() == 0 || foundAt < damaged.GetRowCount());
        }
    }
}

TEST_F(ReaderTest, ALengthFromTheIndexTakesNoMemoryBeyondTheFile)
{
    CQmLogRow rows[2];
    rows[1].offset = 0xFFFFFFFF; // a line of 4 GiB, in a file of 3 bytes
    session.files.SetContents(session.Path("Main.ROW"),
                              std::string(reinterpret_cast<char*>(rows), sizeof(rows)));
    session.files.SetContents(session.Path("Main.LOG"), "abc");
    reader.SetFilePath("Main");
    const std::size_t before = session.files.CallCount();
    EXPECT_EQ("abc", Line(0)); // the sanitizer's allocator refuses 4 GiB here
    EXPECT_EQ("", Line(1));
    EXPECT_LT(before, session.files.CallCount());
    EXPECT_TRUE(reader.ReadLength(0, length));
    EXPECT_EQ(0xFFFFFFFFu, length);
}

TEST_F(ReaderTest, ReachesLinesUpTo4GiB)
{
    session.files.SetSize(session.Path("Main.LOG"), 0xFFFFFFFF);
    CQmLogRow last;
    last.offset = 0xFFFFFFFC;
    session.files.SetContents(session.Path("Main.ROW"),
                              std::string(reinterpret_cast<char*>(&last), sizeof(last)));
    reader.SetFilePath("Main");
    EXPECT_EQ(0xFFFFFFFFu, reader.GetLogFileSize());
    EXPECT_EQ(std::string(3, '\0'), Line(0));
    EXPECT_TRUE(reader.ReadLength(0, length));
    EXPECT_EQ(4u, length);
}

} // namespace
