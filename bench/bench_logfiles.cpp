// What the log files cost: writing, blocks, reading, searching and verifying, each against the bare system
// calls that it cannot do without, and against spdlog.
#include "Bench.h"
#include "BenchFiles.h"
#include "BenchMemory.h"
#include "SpdlogFile.h"

#include "QmLogC.h"
#include "QmLogReader.h"
#include "QmLogTimes.h"
#include "QmLogVerify.h"
#include "QmLogWriter.h"

#include <cstring>
#include <iterator>
#include <random>
#include <utility>

namespace
{

using bench::BareFile;
using bench::CallCounts;
using bench::Check;
using bench::Comparison;
using bench::Variant;

const std::string kLine(80, 'x');
constexpr DWORD kLineBytes = 81; // with the line feed
constexpr DWORD kRowBytes = sizeof(CQmLogRow);

const char* const kBig = "Big"; // the log that is read and searched

// Whether verification finds nothing in the log.
bool IsClean(const std::string& folder)
{
    struct : QmLogVerifyListener
    {
        void OnFinding(const QmLogFinding&) override { isClean = false; }
        bool isClean = true;
    } listener;
    const char* const logs[] = {kBig};
    QmLogVerify(folder.c_str(), logs, 1, listener);
    return listener.isClean;
}

std::string Lines(unsigned count)
{
    std::string text;
    for (unsigned i = 0; i < count; ++i)
        text += kLine + '\n';
    return text;
}

// A variant that does `action` `times` times, for `units` units each time. A quarter of a millisecond is long
// enough for the clock, and short enough that other processes of the machine seldom fall into it: the
// median of many rounds then is that of undisturbed ones.
template <typename Action> Variant Repeat(unsigned times, unsigned units, Action action)
{
    return {times * units, [=] {
                for (unsigned i = 0; i < times; ++i)
                    action();
            }};
}

// A log under its name, closed with this object; the counters are closed by QmLogWriterCloseAll.
class Log : public CQmLogWriter
{
public:
    explicit Log(const char* name) { SetFilePath(name); }
    void Line(const std::string& text) { Check(Write(text.c_str()), "CQmLogWriter::Write"); }
};

class LogFilesBench
{
public:
    explicit LogFilesBench(const bench::Options& options) : m_options(options) {}

    bench::Report Run()
    {
        MakeBigLog();
        MeasureMemory(); // first: what comes later may need more
        MeasureVerification();
        MeasureReads();
        MeasureSearch();
        MeasureSystem();
        MeasureWrites();
        MeasureClock();
        MeasureBlocks();
        CountCalls();
        MeasureOwnTime();
        QmLogWriterCloseAll();
        return m_report;
    }

private:
    unsigned Rounds(unsigned full) const { return m_options.quick ? 3 : full; }
    std::string PathOf(const std::string& file) const { return m_folder.Path() + file; }

    void Inform(const std::string& name, double microseconds, const char* reference = "",
                std::optional<double> ratio = {})
    {
        m_report.Add({name, microseconds, "us", reference, ratio});
    }

    void Judge(const std::string& name, double microseconds, const char* reference, double ratio, double goal)
    {
        m_report.Add({name, microseconds, "us", reference, ratio, goal});
    }

    void MakeBigLog()
    {
        constexpr unsigned kLinesAWrite = 1000;
        const std::string text = Lines(kLinesAWrite);
        {
            Log log(kBig);
            for (unsigned lines = 0; lines < m_rows; lines += kLinesAWrite)
                log.Line(text);
        }
        QmLogWriterCloseAll();
    }

    void MeasureMemory()
    {
        const auto readAll = [this] {
            CQmLogReader reader;
            reader.SetFilePath(kBig);
            for (unsigned row = 0; row < m_rows; ++row)
                ReadLine(reader, row);
        };
        const char* const reference = "growth at its peak";
        m_report.Add({"memory, reading every line", bench::MemoryGrowth(readAll), "KiB", reference});
        m_report.Add({"memory, verification", bench::MemoryGrowth([this] { Verify(); }), "KiB", reference});
    }

    void Verify() { Check(IsClean(m_folder.Path()), "QmLogVerify"); }

    void MeasureVerification()
    {
        const Comparison comparison(
            {
                Repeat(1, 1, [this] { ReadWholeFiles(); }),
                Repeat(1, 1, [this] { Verify(); }),
            },
            Rounds(7));
        m_report.Add({"verification" + m_inRows, comparison.Time(1) / 1000, "ms",
                      "its bytes, read once in 64 KiB", comparison.Ratio(1)});
    }

    void ReadWholeFiles()
    {
        static char buffer[64 * 1024];
        for (const char* extension : {".LOG", ".ROW"})
        {
            BareFile file(PathOf(kBig) + extension, BareFile::Role::Scan);
            while (file.ReadNext(buffer, sizeof(buffer)) > 0)
            {
            }
        }
    }

    void MeasureReads()
    {
        BareFile rowFile(PathOf("Big.ROW"), BareFile::Role::Read);
        BareFile logFile(PathOf("Big.LOG"), BareFile::Role::Read);
        CQmLogReader reader;
        reader.SetFilePath(kBig);
        constexpr unsigned kPage = 60;

        const Comparison comparison(
            {
                Repeat(100, 1,
                       [&] {
                           CQmLogRow rows[2];
                           char text[kLineBytes + 1];
                           rowFile.ReadAt(RandomRow() * kRowBytes, rows, sizeof(rows));
                           Check(logFile.ReadAt(rows[0].offset, text, rows[1].offset - rows[0].offset) ==
                                     kLineBytes,
                                 "a bare line");
                       }),
                Repeat(100, 1, [&] { ReadLine(reader, RandomRow()); }),
                Repeat(2, kPage,
                       [&] {
                           const unsigned first = RandomRow() % (m_rows - kPage);
                           for (unsigned row = first; row < first + kPage; ++row)
                               ReadLine(reader, row);
                       }),
            },
            Rounds(1501));
        Inform("a random line, bare calls", comparison.Time(0));
        Judge("Read, a random line", comparison.Time(1), "its two seeks and two reads", comparison.Ratio(1),
              1.15);
        Inform("Read, a page of 60, per line", comparison.Time(2), "a random line's bare calls",
               comparison.Ratio(2));
    }

    static void ReadLine(CQmLogReader& reader, unsigned row)
    {
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow record;
        Check(reader.Read(row, text, length, record) && length == kLineBytes, "CQmLogReader::Read");
    }

    void MeasureSearch()
    {
        BareFile rowFile(PathOf("Big.ROW"), BareFile::Role::Read);
        CQmLogReader reader;
        reader.SetFilePath(kBig);
        const auto timeOf = [&](unsigned row) {
            CQmLogRow rows[2];
            rowFile.ReadAt(row * kRowBytes, rows, sizeof(rows));
            return rows[0].time;
        };

        // The log is the first one of its folder, so row i has the number i + 1.
        const Comparison comparison(
            {
                Repeat(5, 1,
                       [&] {
                           const unsigned time = RandomRow() + 1;
                           unsigned low = 0;
                           unsigned high = m_rows;
                           while (low + 1 < high)
                           {
                               const unsigned middle = low + (high - low) / 2;
                               (time < timeOf(middle) ? high : low) = middle;
                           }
                           Check(timeOf(low) == time, "the bare search");
                       }),
                Repeat(5, 1,
                       [&] {
                           const unsigned time = RandomRow() + 1;
                           unsigned long found = 0;
                           unsigned long row = 0;
                           Check(reader.Find(time, true, found, row) && found == time && row == time - 1,
                                 "CQmLogReader::Find");
                       }),
            },
            Rounds(1501));
        Inform("a search's row reads, bare calls", comparison.Time(0));
        Inform("Find" + m_inRows, comparison.Time(1), "its row reads, bare", comparison.Ratio(1));
    }

    // What the bare calls of the other measures consist of.
    void MeasureSystem()
    {
        BareFile counters(PathOf("Parts.DAT"), BareFile::Role::Counters);
        BareFile append(PathOf("Parts.LOG"), BareFile::Role::Append);
        const std::string line = Lines(1);
        const std::string lines = Lines(100);
        const std::string path = PathOf("Big.ROW");
        std::uint64_t size = 0;

        const Comparison comparison(
            {
                Repeat(20, 1, [&] { counters.CounterCycle(); }),
                Repeat(20, 1,
                       [&] {
                           counters.Lock();
                           counters.Unlock();
                       }),
                Repeat(100, 1, [&] { append.Append(line.data(), kRowBytes); }),
                Repeat(100, 1, [&] { append.Append(line.data(), kLineBytes); }),
                Repeat(20, 1, [&] { append.Append(lines.data(), 100 * kLineBytes); }),
                Repeat(50, 1, [&] { Check(ZEMA::FileCalls().GetSize(path.c_str(), size), "a size"); }),
            },
            Rounds(1001));
        Inform("counter cycle, bare calls", comparison.Time(0));
        Inform("of which lock and unlock", comparison.Time(1), "the cycle", comparison.Ratio(1));
        Inform("append 20 bytes, bare calls", comparison.Time(2));
        Inform("append 81 bytes, bare calls", comparison.Time(3));
        Inform("append 8,100 bytes, bare calls", comparison.Time(4));
        Inform("a file's size by its path", comparison.Time(5));
    }

    void MeasureWrites()
    {
        BareFile counters(PathOf("Bare.DAT"), BareFile::Role::Counters);
        BareFile rowFile(PathOf("Bare.ROW"), BareFile::Role::Append);
        BareFile logFile(PathOf("Bare.LOG"), BareFile::Role::Append);
        Log one("One");
        Log ten("Ten");
        Log hundred("Hundred");
        Log line("Line");
        QmLogCWriter* const cLine = QmLogCWriterDefine("C", QMLOG_C_ENDED);
        bench::SpdlogFile peer(PathOf("Peer.LOG"));
        const CQmLogRow row;
        const std::string texts[] = {Lines(1), Lines(10), Lines(100)};

        const Comparison comparison(
            {
                Repeat(20, 1,
                       [&] {
                           counters.CounterCycle();
                           rowFile.Append(&row, kRowBytes);
                           logFile.Append(texts[0].data(), kLineBytes);
                       }),
                Repeat(20, 1, [&] { one.Line(texts[0]); }),
                Repeat(10, 10, [&] { ten.Line(texts[1]); }),
                Repeat(5, 100, [&] { hundred.Line(texts[2]); }),
                Repeat(100, 1, [&] { peer.Line(kLine); }),
                Repeat(20, 1, [&] { Check(line.WriteLine(kLine.c_str()), "CQmLogWriter::WriteLine"); }),
                Repeat(20, 1, [&] { WriteCLine(cLine); }),
            },
            Rounds(3001));
        const char* const bare = "a line's bare calls";
        const char* const spdlog = "spdlog, flushing each line";
        Inform("a line's bare calls", comparison.Time(0));
        Inform(spdlog, comparison.Time(4));
        Judge("Write, 1 line", comparison.Time(1), bare, comparison.Ratio(1), 1.10);
        Judge("WriteLine", comparison.Time(5), "Write, 1 line", comparison.Ratio(5, 1), 1.05);
        Judge("QmLogCWriteLine", comparison.Time(6), "WriteLine", comparison.Ratio(6, 5), 1.02);
        Judge("Write, 10 lines, per line", comparison.Time(2), bare, comparison.Ratio(2), 0.13);
        Judge("Write, 10 lines, per line", comparison.Time(2), spdlog, comparison.Ratio(2, 4), 1.2);
        Judge("Write, 100 lines, per line", comparison.Time(3), bare, comparison.Ratio(3), 0.03);
        Judge("Write, 100 lines, per line", comparison.Time(3), spdlog, comparison.Ratio(3, 4), 0.25);
    }

    static void WriteCLine(QmLogCWriter* log)
    {
        Check(QmLogCWriteLine(log, kLine.c_str(), QMLOG_C_ENDED) != 0, "QmLogCWriteLine");
    }

    // The same lines with and without the clock.
    void MeasureClock()
    {
        Log off("ClockOff");
        Log on("ClockOn");
        const std::string texts[] = {Lines(1), Lines(10), Lines(100)};
        const auto write = [](unsigned times, unsigned lines, Log& log, bool hasClock,
                              const std::string& text) {
            return Repeat(times, lines, [&log, hasClock, &text] {
                QmLogSetTimes(hasClock);
                log.Line(text);
            });
        };
        const Comparison comparison(
            {
                write(20, 1, off, false, texts[0]),
                write(20, 1, on, true, texts[0]),
                write(10, 10, off, false, texts[1]),
                write(10, 10, on, true, texts[1]),
                write(5, 100, off, false, texts[2]),
                write(5, 100, on, true, texts[2]),
            },
            Rounds(3001));
        QmLogSetTimes(false);
        const char* const reference = "with the clock off";
        Judge("Write, 1 line, clock on", comparison.Time(1), reference, comparison.Ratio(1), 1.05);
        Judge("Write, 10 lines, clock on, per line", comparison.Time(3), reference, comparison.Ratio(3, 2),
              1.05);
        Judge("Write, 100 lines, clock on, per line", comparison.Time(5), reference, comparison.Ratio(5, 4),
              1.05);
    }

    // A block changes the depth twice and gives its header line a row.
    void MeasureBlocks()
    {
        BareFile counters(PathOf("BareBlock.DAT"), BareFile::Role::Counters);
        BareFile rowFile(PathOf("BareBlock.ROW"), BareFile::Role::Append);
        BareFile logFile(PathOf("BareBlock.LOG"), BareFile::Role::Append);
        Log log("Block");
        const CQmLogRow row;

        const Comparison comparison(
            {
                Repeat(7, 1,
                       [&] {
                           counters.CounterCycle();
                           counters.CounterCycle();
                           rowFile.Append(&row, kRowBytes);
                           logFile.Append("\n", 1);
                           counters.CounterCycle();
                       }),
                Repeat(7, 1, [&] { Check(log.BlockBegin(kDetailKind) && log.BlockEnd(), "a block"); }),
            },
            Rounds(2001));
        Inform("a block's bare calls", comparison.Time(0));
        Judge("BlockBegin and BlockEnd", comparison.Time(1), "a block's bare calls", comparison.Ratio(1),
              1.10);
    }

    void CountCalls()
    {
        QmLogWriterCloseAll();
        bench::CountingFiles files;
        {
            Log log("Counted");
            log.Line(Lines(1)); // opens the files
            const auto count = [&](const std::string& text) {
                files.Take();
                log.Line(text);
                return files.Take();
            };
            AddCounts("Write, 1 line", count(Lines(1)), 2);
            AddCounts("Write, 100 lines", count(Lines(100)), 2);
            AddCounts("Write, no line feed", count(kLine), 0);
            files.Take();
            Check(log.BlockBegin(kDetailKind) && log.BlockEnd(), "a block");
            AddCounts("BlockBegin and BlockEnd", files.Take(), 6);

            CQmLogReader reader;
            reader.SetFilePath(kBig);
            ReadLine(reader, 0);
            files.Take();
            ReadLine(reader, m_rows / 2);
            AddCounts("Read", files.Take());
            unsigned long found = 0;
            unsigned long row = 0;
            Check(reader.Find(m_rows / 3, true, found, row), "CQmLogReader::Find");
            AddCounts("Find" + m_inRows, files.Take());

            // The other logs have numbers too, which this one lacks.
            IsClean(m_folder.Path());
            AddCounts("verification" + m_inRows, files.Take());
        }
        QmLogWriterCloseAll();
    }

    void AddCounts(const std::string& operation, const CallCounts& counts, unsigned lockGoal)
    {
        m_report.Add(
            {operation, static_cast<double>(counts.locks), "requests", "lock and unlock", {}, lockGoal});
        AddCounts(operation, counts);
    }

    void AddCounts(const std::string& operation, const CallCounts& counts)
    {
        m_report.Add({operation, static_cast<double>(counts.All()), "calls", "system calls in all"});
    }

    // The library's own part, with a system that takes no time.
    void MeasureOwnTime()
    {
        QmLogWriterCloseAll();
        bench::IdleFiles files(kLineBytes);
        {
            Log log("Idle");
            QmLogCWriter* const cLog = QmLogCWriterDefine("C", QMLOG_C_ENDED);
            CQmLogReader reader;
            reader.SetFilePath("Idle");
            const std::string texts[] = {Lines(1), Lines(10), Lines(100)};
            const Comparison comparison(
                {
                    Repeat(1000, 1, [&] { log.Line(texts[0]); }),
                    Repeat(200, 10, [&] { log.Line(texts[1]); }),
                    Repeat(20, 100, [&] { log.Line(texts[2]); }),
                    Repeat(1000, 1, [&] { ReadLine(reader, 7); }),
                    Repeat(1000, 1,
                           [&] {
                               Check(QmLogCWrite(cLog, texts[0].c_str(), QMLOG_C_ENDED) != 0, "QmLogCWrite");
                           }),
                },
                Rounds(301));
            QmLogCWriterClose(cLog);
            const char* const names[] = {"Write, 1 line", "Write, 10 lines, per line",
                                         "Write, 100 lines, per line", "Read", "QmLogCWrite, 1 line"};
            for (std::size_t i = 0; i < std::size(names); ++i)
                m_report.Add({names[i], comparison.Time(i) * 1000, "ns", "without the system's time"});
        }
        QmLogWriterCloseAll();
    }

    unsigned RandomRow() { return static_cast<unsigned>(m_random() % m_rows); }

    bench::Options m_options;
    unsigned m_rows = m_options.quick ? 20000 : 1000000;
    std::string m_inRows = ", " + std::to_string(m_rows) + " rows";
    bench::TemporaryFolder m_folder;
    bench::Report m_report;
    std::minstd_rand m_random;
};

} // namespace

int main(int count, char** arguments)
{
    const bench::Options options = bench::ParseOptions(count, arguments);
    const bench::Report report = LogFilesBench(options).Run();
    report.Print(options);
    return options.quick || report.AllMet() ? 0 : 1;
}
