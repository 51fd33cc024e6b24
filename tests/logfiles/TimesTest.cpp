// Times of numbers: the writer's clock, and the reader against a plain list.

#include "QmLogTimes.h"
#include "QmLogWriter.h"
#include "logfiles/Counters.h"
#include "logfiles/TimeRecord.h"
#include "tests/support/LongRun.h"
#include "tests/support/MemorySession.h"
#include "tests/support/Random.h"
#include "tests/support/Verify.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <vector>

namespace
{

using logfiles::TimeRecord;

constexpr QmLogTimeValue kStart = 134000000000000000; // in 2025
const std::string kTimePath = "C:\\Logs\\Log.TIM";

std::string RecordOf(std::uint32_t number, QmLogTimeValue time = 0)
{
    TimeRecord record;
    record.number = number;
    record.SetTime(time);
    record.check = record.Check();
    return std::string(reinterpret_cast<const char*>(&record), sizeof(record));
}

// Files whose calls on "Log.TIM" fail from one of them on, and then for so many.
class TimeFaults : public ZEMA::MemoryFiles
{
public:
    HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags) override
    {
        const bool isTimes = path == kTimePath && (access & GENERIC_WRITE) != 0;
        if (isTimes && IsStruck())
            return INVALID_HANDLE_VALUE;
        const HANDLE file = MemoryFiles::Create(path, access, share, disposition, flags);
        m_times = isTimes ? file : m_times;
        return file;
    }
    bool Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position) override
    {
        return !IsStruck(file) && MemoryFiles::Seek(file, distance, origin, position);
    }
    bool Read(HANDLE file, void* data, DWORD size, DWORD& bytes) override
    {
        return !IsStruck(file) && MemoryFiles::Read(file, data, size, bytes);
    }
    // Part of the bytes goes out even so.
    bool Write(HANDLE file, const void* data, DWORD size, DWORD& bytes) override
    {
        return MemoryFiles::Write(file, data, IsStruck(file) ? size / 2 : size, bytes);
    }
    bool SetEnd(HANDLE file) override { return !IsStruck(file) && MemoryFiles::SetEnd(file); }

    int begin = 0; // no call while it is 0
    int end = 0;
    int count = 0;

private:
    bool IsStruck()
    {
        ++count;
        return begin > 0 && count >= begin && count < end;
    }
    bool IsStruck(HANDLE file) { return m_times && file == m_times && IsStruck(); }

    HANDLE m_times = nullptr;
};

class Clocked : public testing::Test
{
protected:
    Clocked()
    {
        ZEMA::SetFileCalls(&files);
        files.now = kStart;
        QmLogSetTimes(true);
    }
    ~Clocked() override
    {
        QmLogSetTimes(false);
        QmLogWriterCloseAll();
        ZEMA::SetFileCalls(&session.files);
    }

    void Pass(int milliseconds) { files.now += milliseconds * kQmLogMillisecond; }

    std::string Bytes(const char* file) const { return files.Contents(std::string("C:\\Logs\\") + file); }

    // "3" for a number taken, "3)" for a block's end after it, each with its milliseconds since the start.
    std::string Samples() const
    {
        CQmLogTimes times;
        times.SetFolder("C:\\Logs");
        std::string text;
        QmLogTimeSample sample;
        for (std::uint64_t i = 0; i < times.GetSampleCount(); ++i)
            if (text += " "; times.ReadSample(i, sample))
                text += std::to_string(sample.number) + (sample.isBlockEnd ? ")" : "") + "@" +
                        std::to_string((sample.time - kStart) / kQmLogMillisecond);
        return text;
    }

    // A session of several lines, blocks and processes. Where the clock is off nothing passes by it.
    void WriteSession()
    {
        for (int process = 0; process < 3; ++process)
        {
            CQmLogWriter main = WriterOf("Main");
            CQmLogWriter sql = WriterOf("SQL");
            main.BlockBegin(kErrorKind);
            main.Write("a\nb\nc");
            Pass(4);
            sql.WriteLine("d");
            Pass(2000);
            sql.Write("e\nf");
            main.BlockEnd();
            Pass(10);
            main.WriteLine("g");
            QmLogWriterCloseAll();
        }
    }

    MemorySession session; // for its manager
    TimeFaults files;
};

TEST_F(Clocked, NotesEveryTenMillisecondsAndTheEdgesOfBlocks)
{
    CQmLogWriter log = WriterOf("Main");
    log.Write("a"); // 1
    Pass(9);
    log.Write("\nb"); // 2, too early
    Pass(1);
    log.Write("\nc\nd"); // 3 and 4, together
    log.BlockBegin(kNoticeKind);
    log.Write("head"); // 5, the first of a block
    Pass(3);
    log.Write("\ne"); // 6
    log.BlockEnd();
    files.now -= 3600 * 1000 * kQmLogMillisecond;
    log.Write("f"); // 7, an hour earlier
    Pass(5);
    log.Write("\ng"); // 8
    EXPECT_EQ(" 1@0 3@10 5@10 6)@13 7@-3599987", Samples());
    QmLogWriterCloseAll();
    log.Write("\nh"); // 9: other processes may have been at work
    EXPECT_EQ(" 1@0 3@10 5@10 6)@13 7@-3599987 9@-3599982", Samples());

    CQmLogTimes times;
    EXPECT_TRUE(times.SetFolder(nullptr));
    EXPECT_EQ(1u, times.GetStepCount());

    // Another session begins: its numbers are others.
    log.Close();
    QmLogWriterCloseAll();
    ZEMA::FileCalls().Delete("C:\\Logs\\Log.DAT");
    log.Write("\n");
    EXPECT_EQ(" 1@-3599982", Samples());
    log.Close();
    QmLogWriterCloseAll();
}

// A time that fails leaves what was noted before, and the next is tried a second later. Whoever opens the
// file goes on behind its last whole record.
TEST_F(Clocked, GoesOnAfterAFailedTimeAndATornOne)
{
    CQmLogWriter log = WriterOf("Main");
    const auto write = [&](int passed) {
        Pass(passed);
        files.SetLastError(7);
        log.Write("a\n");
        EXPECT_EQ(7u, files.LastError());
        return Samples();
    };
    log.Write("a\n"); // 1 and 2
    EXPECT_EQ(" 1@0 3@10 4@20", (write(10), write(10)));
    files.begin = files.count + 1;
    files.end = files.begin + 1;
    EXPECT_EQ(" 1@0 3@10 4@20", write(10)) << "half of it is written, and cut again";
    EXPECT_EQ(" 1@0 3@10 4@20", write(999));
    EXPECT_EQ(" 1@0 3@10 4@20 7@1030", write(1));

    files.ForgetCalls();
    files.SetFault({6, ZEMA::Fault::Fail}); // the counter's write: the next row has the same number
    Pass(10);
    log.Write("a\n");
    EXPECT_EQ("Write", files.Calls()[5]);
    EXPECT_EQ(" 1@0 3@10 4@20 7@1030 8@1050", write(10));

    QmLogWriterCloseAll();
    files.SetContents(kTimePath, Bytes("Log.TIM") + "torn");
    log.Write("\n");
    EXPECT_EQ(" 1@0 3@10 4@20 7@1030 8@1050 9@1050", Samples());
    QmLogWriterCloseAll();
    files.SetContents(kTimePath, RecordOf(10)); // of an earlier session
    log.Write("\n");
    EXPECT_EQ(" 10@1050", Samples());
    log.Close();
    QmLogWriterCloseAll();
}

TEST_F(Clocked, CostsAWriteAndNoOtherCall)
{
    CQmLogWriter log = WriterOf("Main");
    log.Write("a\n");
    const auto calls = [&](bool on, int passed) {
        QmLogSetTimes(on);
        Pass(passed);
        files.ForgetCalls();
        log.Write("b\n");
        return files.Calls();
    };
    const std::vector<std::string> off = calls(false, 0);
    EXPECT_EQ(off, calls(true, 0));
    EXPECT_EQ(off, calls(true, 9));
    std::vector<std::string> noted = calls(true, 10);
    ASSERT_EQ(off.size() + 1, noted.size());
    std::erase(noted, "Write");
    EXPECT_EQ(off.size() - 3, noted.size()) << "of the counters, the rows and the text";
    QmLogSetTimes(false);
    log.Close();
    QmLogWriterCloseAll();
}

// Whatever fails of the clock's own calls, for a moment or for ever, lines and rows are as without it.
TEST_F(Clocked, FailuresCostTimesAndNothingElse)
{
    QmLogSetTimes(false);
    WriteSession();
    const std::vector<std::string> plain = {Bytes("Main.LOG"), Bytes("Main.ROW"), Bytes("SQL.LOG"),
                                            Bytes("SQL.ROW"), Bytes("Log.DAT")};
    EXPECT_FALSE(files.Exists(kTimePath));
    QmLogSetTimes(true);
    int calls = 1;
    for (int first = 0; first <= calls; ++first)
    {
        for (const int length : {1, 2, 3, 1000})
        {
            for (const std::string& path : files.Paths())
                files.Delete(path.c_str());
            files.now = kStart;
            files.begin = first;
            files.end = first + length;
            files.count = 0;
            // What an earlier session has left is cut, or else nothing is added to it.
            files.SetContents(kTimePath, RecordOf(5000) + "torn");
            WriteSession();
            EXPECT_EQ(plain, (std::vector{Bytes("Main.LOG"), Bytes("Main.ROW"), Bytes("SQL.LOG"),
                                          Bytes("SQL.ROW"), Bytes("Log.DAT")}))
                << first << ", " << length;
            EXPECT_EQ(first > 0, files.Exists("C:\\Logs\\QmLog.LOG")) << first << ", " << length;
            if (first == 0)
            {
                calls = files.count;
                EXPECT_EQ(" 1@0 5@2004 5)@2004 6@2014 7@2014 11@4018 11)@4018 12@4028 13@4028 17@6032 "
                          "17)@6032 18@6042",
                          Samples());
            }
            if (length == 1 && files.Exists(kTimePath))
            {
                for (const Finding& finding : FindingsOf("C:\\Logs", {"Main", "SQL"}))
                    EXPECT_FALSE(QmLogIsDamage(finding.kind)) << first << ": " << finding.reason;
            }
        }
    }
}

// What a reader should answer, from all samples in a list.
struct Model
{
    std::vector<std::optional<TimeRecord>> records; // none for a damaged one

    std::string TimeOf(std::uint32_t number) const
    {
        const TimeRecord* before = nullptr;
        const TimeRecord* next = nullptr;
        const TimeRecord* own = nullptr;
        for (const auto& record : records)
        {
            if (!record)
                continue;
            if (record->number < number)
                before = &*record;
            else if (!own && !next && record->number == number && record->event == TimeRecord::Event::Taken)
                own = &*record;
            else if (!next)
                next = &*record;
        }
        const TimeRecord* const first = own ? own : before;
        return !first ? "-"
                      : std::to_string(first->Time()) + (own ? "=" : "~") +
                            (next ? std::to_string(next->number) : "");
    }

    std::string NumberAt(QmLogTimeValue time) const
    {
        for (const auto& record : records)
            if (record && record->Time() >= time && record->event == TimeRecord::Event::Taken)
                return std::to_string(record->number);
        return "-";
    }

    std::string Gap(std::uint32_t number, QmLogTimeValue atLeast, bool forward) const
    {
        std::string found = "-";
        const TimeRecord* last = nullptr;
        for (const auto& record : records)
        {
            if (!record || record->event != TimeRecord::Event::Taken)
                continue;
            const bool isGap = last && record->Time() - last->Time() >= atLeast;
            const bool isWanted = forward ? record->number > number : record->number < number;
            if (isGap && isWanted && (!forward || found == "-"))
                found = std::to_string(last->number) + "-" + std::to_string(record->number);
            last = &*record;
        }
        return found;
    }

    std::string BlockEnd(int depth, std::uint32_t from, std::uint32_t to) const
    {
        for (const auto& record : records)
            if (record && record->number >= from && record->number < to && record->depth == depth - 1 &&
                record->event == TimeRecord::Event::BlockEnd)
                return std::to_string(record->Time());
        return "-";
    }

    std::string Steps() const
    {
        std::string steps;
        const TimeRecord* last = nullptr;
        for (const auto& record : records)
        {
            if (record && last && record->steps > last->steps)
                steps += std::to_string(last->number) + "-" + std::to_string(record->number) + " ";
            last = record ? &*record : last;
        }
        return steps;
    }
};

// Samples with steps of the clock and damaged ones, and part of one at the end.
Model MakeModel(Random& random, int count, std::string& bytes)
{
    Model model;
    TimeRecord record;
    QmLogTimeValue time = kStart;
    const int steps = random(3) == 0 ? 20 : 100000;
    for (int i = 0; i < count; ++i)
    {
        record.event = i > 0 && random(5) == 0 ? TimeRecord::Event::BlockEnd : TimeRecord::Event::Taken;
        record.number +=
            record.event == TimeRecord::Event::Taken ? 1 + random(random(4) == 0 ? 50 : 1) : random(3);
        record.depth = static_cast<std::uint8_t>(random(4));
        if (random(steps) == 0 && i > 0)
        {
            time -= 1 + random(100000);
            ++record.steps;
        }
        else
            time += random(1000);
        record.SetTime(time);
        record.check = record.Check();
        TimeRecord written = record;
        const bool isDamaged = random(40) == 0;
        written.check += isDamaged ? 1 : 0;
        bytes.append(reinterpret_cast<const char*>(&written), sizeof(written));
        model.records.push_back(isDamaged ? std::nullopt : std::optional(record));
    }
    bytes.append(static_cast<std::size_t>(random(20)), 'x');
    return model;
}

TEST_F(Clocked, ReaderAnswersAsAListOfAllSamples)
{
    for (unsigned seed = 0; seed < Rounds(80u, 1000u); ++seed)
    {
        SCOPED_TRACE(seed);
        Random random(seed);
        CQmLogTimes times;
        std::string bytes;
        const int count = seed == 1 ? 60000 : random(seed % 3 == 0 ? 2000 : 30);
        const Model model = MakeModel(random, count, bytes);
        files.SetContents(kTimePath, bytes);
        EXPECT_EQ(count > 0, times.SetFolder("C:\\Logs\\"));
        ASSERT_EQ(static_cast<std::uint64_t>(count), times.GetSampleCount());
        const int last = [&] {
            int highest = 0;
            for (const auto& record : model.records)
                highest = record ? static_cast<int>(record->number) : highest;
            return highest;
        }();
        std::string steps;
        QmLogTimeSample before, after;
        for (std::uint32_t i = 0; times.ReadStep(i, before, after); ++i)
            steps += std::to_string(before.number) + "-" + std::to_string(after.number) + " ";
        EXPECT_EQ(model.Steps(), steps);
        std::uint32_t asked = 0;
        for (int i = 0; i < 60; ++i)
        {
            asked = static_cast<std::uint32_t>(random(2) == 0 ? asked + random(3) : random(last + 3));
            QmLogTime time;
            EXPECT_EQ(model.TimeOf(asked), !times.TimeOf(asked, time)
                                               ? "-"
                                               : std::to_string(time.time) + (time.isExact ? "=" : "~") +
                                                     (time.hasNext ? std::to_string(time.next.number) : ""));
            const QmLogTimeValue at = kStart - 1000 + random(600 * (count + 4));
            std::uint32_t number = 0;
            EXPECT_EQ(model.NumberAt(at), times.NumberAt(at, number) ? std::to_string(number) : "-");
            QmLogTimeGap gap;
            const bool forward = random(2) == 0;
            EXPECT_EQ(model.Gap(asked, 800, forward),
                      times.FindGap(asked, 800, forward, gap)
                          ? std::to_string(gap.before.number) + "-" + std::to_string(gap.after.number)
                          : "-");
            QmLogTimeValue end = 0;
            const int depth = 1 + random(3);
            const std::uint32_t next = asked + static_cast<std::uint32_t>(random(100));
            EXPECT_EQ(model.BlockEnd(depth, asked, next),
                      times.FindBlockEnd(static_cast<std::uint8_t>(depth), asked, next, end)
                          ? std::to_string(end)
                          : "-");
        }
    }
}

TEST_F(Clocked, ReaderFollowsAFileThatGrowsIsCutOrReplaced)
{
    CQmLogTimes times;
    EXPECT_FALSE(times.SetFolder(nullptr));
    EXPECT_FALSE(times.Refresh());
    CQmLogWriter log = WriterOf("Main");
    QmLogTime time;
    std::uint32_t number = 0;
    for (std::uint32_t i = 1; i <= 500; ++i)
    {
        log.Write("\n");
        EXPECT_FALSE(times.TimeOf(i, time) && time.isExact) << "as of the last look";
        EXPECT_TRUE(times.Refresh());
        EXPECT_FALSE(times.Refresh());
        ASSERT_TRUE(times.TimeOf(i, time) && time.isExact && time.time == files.now && !time.hasNext);
        EXPECT_EQ(i == 1 ? 0 : 20 * kQmLogMillisecond, time.pause);
        Pass(20);
    }
    files.SetSize(kTimePath, 30); // under its feet
    times.TimeOf(400, time);
    EXPECT_TRUE(times.Refresh());
    EXPECT_TRUE(times.TimeOf(400, time) && !time.isExact && time.time == kStart);

    // Another one of the same length.
    files.SetContents(kTimePath, RecordOf(7));
    EXPECT_TRUE(times.Refresh());
    EXPECT_TRUE(times.NumberAt(0, number) && number == 7);
    log.Close();
    QmLogWriterCloseAll();
}

// Zeros at the end, as a machine that loses its power may leave them, are no reason to read them all.
TEST_F(Clocked, ReaderTakesFewReadsOfAnySize)
{
    CQmLogTimes times;
    std::string bytes;
    Random random(1);
    const Model model = MakeModel(random, 1000, bytes);
    files.SetContents(kTimePath, bytes.substr(0, 20000));
    for (const std::uint64_t size : {20000ull, 8000000000ull})
    {
        files.SetSize(kTimePath, size);
        ASSERT_TRUE(times.SetFolder(nullptr));
        files.ForgetCalls();
        QmLogTime time;
        std::uint32_t number = 0;
        const std::uint32_t asked = model.records[500]->number;
        ASSERT_TRUE(times.TimeOf(asked, time));
        EXPECT_EQ(model.TimeOf(asked).substr(0, 18), std::to_string(time.time));
        EXPECT_TRUE(times.NumberAt(time.time, number));
        EXPECT_GT(4000u, files.CallCount());
    }
}

TEST_F(Clocked, VerificationKnowsTheTimes)
{
    WriteSession();
    EXPECT_TRUE(FindingsOf("C:\\Logs", {"Main", "SQL"}).empty());
    const std::string whole = Bytes("Log.TIM");
    const auto damaged = [&](std::size_t at, const std::string& piece) {
        return whole.substr(0, at) + piece + whole.substr(std::min(whole.size(), at + piece.size()));
    };
    const std::pair<std::string, std::string> cases[] = {
        {whole, ""},
        {damaged(41, "?"), "Log.TIM 2: the time is damaged|"},
        {damaged(41, std::string(40, '\0')), "Log.TIM 2: the time is damaged (3 in all)|"},
        {whole + RecordOf(19), "Log.TIM 12: the time is that of a number above the counter|"},
        {whole + whole.substr(0, 20), "Log.TIM 12: the time has a number that is below the one before|"},
        {whole.substr(0, 45), "note Log.TIM -: the file ends within a time|"},
        {whole + RecordOf(18), "note Log.TIM 12: the clock was set back at number 18|"},
        {RecordOf(1, 9) + RecordOf(2, 8) + RecordOf(2, 8) + RecordOf(3, 9) + RecordOf(4, 7),
         "note Log.TIM 1: the clock was set back at number 2 (2 in all)|"},
    };
    for (const auto& [bytes, expected] : cases)
    {
        files.SetContents(kTimePath, bytes);
        std::string found;
        for (const Finding& finding : FindingsOf("C:\\Logs", {"Main", "SQL"}))
            found += (QmLogIsDamage(finding.kind) ? "" : "note ") + finding.file + " " +
                     (finding.row == QmLogFinding::kNoRow ? "-" : std::to_string(finding.row)) + ": " +
                     finding.reason + "|";
        EXPECT_EQ(expected, found);
    }
}

} // namespace
