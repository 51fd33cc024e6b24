// What the log view costs without its window: pages of rows, counting what a header unfolds, and finding a
// displayed row, each against a smaller log or against reading row by row.
#include "Bench.h"
#include "BenchFiles.h"
#include "LogFiles.h"
#include "LogFindBench.h"
#include "LogGrowthBench.h"
#include "LogWindowBench.h"
#include "MergedBench.h"

#include "QmLogReader.h"
#include "logview/LogNames.h"
#include "logview/LogSession.h"
#include "logview/ReaderRows.h"
#include "logview/RowCache.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <utility>
#include <vector>

namespace
{

using bench::Check;
using bench::Comparison;
using bench::LogFiles;
using bench::Variant;
using logview::LogSession;
using logview::RowCache;
using logview::RowChange;

constexpr unsigned kPage = 60;

Variant Repeat(unsigned times, unsigned units, const std::function<void()>& action)
{
    return {times * units, [=] {
                for (unsigned i = 0; i < times; ++i)
                    action();
            }};
}

// One session in the folder at a time.
class LogViewBench
{
public:
    explicit LogViewBench(const bench::Options& options) : m_options(options) {}

    bench::Report Run()
    {
        MeasurePages();
        MeasureCounting();
        MeasureUnfoldingAll();
        MeasureTranslation();
        CloseReaders();
        bench::MeasureFind(m_options, m_folder, m_report);
        bench::MeasureMerged(m_options, m_folder, m_report);
        bench::MeasureGrowth(m_options, m_folder, m_report);
        for (unsigned file = 1; file < logview::kFileCount; ++file)
            LogFiles(m_folder.Path(), logview::GetLogName(static_cast<int>(file))).Write();
        bench::MeasureLogWindow(m_options, m_folder, m_report);
        return m_report;
    }

private:
    unsigned Rounds(unsigned full) const { return m_options.quick ? 3 : full; }

    void Judge(const std::string& name, const Comparison& comparison, const char* reference, double goal)
    {
        m_report.Add({name, comparison.Time(1), "us", reference, comparison.Ratio(1), goal});
    }

    static void CloseReaders()
    {
        for (unsigned file = 0; file < logview::kFileCount; ++file)
            QmLogReaderDefine(logview::GetLogName(static_cast<int>(file))).Close();
    }

    // "Main" is the large log and "Run" the small one; each is shown at the top.
    void MeasurePages()
    {
        const unsigned large = (m_options.quick ? 100u << 20 : 1u << 30) / LogFiles::kLineBytes;
        const unsigned small = (10u << 20) / LogFiles::kLineBytes;
        {
            LogFiles main(m_folder.Path(), "Main");
            main.Add(large, 1);
            main.Write();
            LogFiles run(m_folder.Path(), "Run");
            run.Add(small, large + 1);
            run.Write();
        }
        Swapped swapped;
        LogSession largeSession(m_rows);
        LogSession smallSession(swapped);
        largeSession.Refresh(0);
        smallSession.Refresh(0);
        RowCache largeCache(m_rows);
        RowCache smallCache(swapped);

        CQmLogReader& reader = QmLogReaderDefine(logview::GetLogName(0));
        const Comparison pages({Repeat(2, 1,
                                       [&] {
                                           const unsigned first = Below(large - kPage - 1);
                                           for (unsigned row = first; row < first + kPage; ++row)
                                               ReadRow(reader, row);
                                       }),
                                Repeat(20, 1,
                                       [&] {
                                           const unsigned first = Below(large - kPage - 1);
                                           largeCache.Prepare(largeSession, static_cast<int>(first), kPage);
                                           CheckPage(largeCache, first);
                                       })},
                               Rounds(501));
        Judge("a page of 60 rows, fold marks", pages, "60 times a line and two rows", 0.2);

        const auto lastScreen = [](LogSession& session, RowCache& cache) {
            session.Refresh(0);
            const unsigned first = static_cast<unsigned>(session.RowCount()) - kPage;
            cache.Prepare(session, static_cast<int>(first), kPage);
            CheckPage(cache, first);
        };
        const Comparison screens({Repeat(20, 1, [&] { lastScreen(smallSession, smallCache); }),
                                  Repeat(20, 1, [&] { lastScreen(largeSession, largeCache); })},
                                 Rounds(501));
        Judge(m_options.quick ? "last screen of 100 MB" : "last screen of 1 GB", screens, "the same of 10 MB",
              1.2);
        CloseReaders();
    }

    // "Main" has a header with a short stretch of "Run" after it, and one with a long stretch of "Source".
    void MeasureCounting()
    {
        const unsigned longRows = m_options.quick ? 100000 : 1000000;
        constexpr unsigned kShortRows = 1000;
        LogFiles main(m_folder.Path(), "Main");
        main.Add(1, 1);
        main.Add(1, 2 + kShortRows);
        main.Add(1, 3 + kShortRows + longRows);
        main.Write();
        LogFiles run(m_folder.Path(), "Run");
        run.Add(kShortRows, 2);
        run.Write();
        LogFiles source(m_folder.Path(), "Source");
        source.Add(longRows, 3 + kShortRows);
        source.Write();

        LogSession session(m_rows);
        session.Refresh(0);
        const auto unfold = [&session](int row, unsigned count) {
            RowChange change;
            Check(session.Expand(row, change) && change.delta == static_cast<int>(count), "unfolding");
            Check(session.Collapse(row, change), "folding");
        };
        const Comparison comparison(
            {Repeat(20, 1, [&] { unfold(0, kShortRows); }), Repeat(20, 1, [&] { unfold(1, longRows); })},
            Rounds(301));
        Judge("unfolding " + std::to_string(longRows) + " rows", comparison, "unfolding 1000 rows", 5);
        CloseReaders();
    }

    // "Main" has two headers. After them "Run" and "Source" take turns, so that every row of "Run" unfolds
    // too.
    void MeasureUnfoldingAll()
    {
        constexpr unsigned kFew = 10000;
        const unsigned many = m_options.quick ? 100000 : 1000000;
        LogFiles main(m_folder.Path(), "Main");
        main.Add(1, 1);
        main.Add(1, 2 + 2 * kFew);
        main.Add(1, 3 + 2 * (kFew + many));
        main.Write();
        for (const auto& [name, number] : {std::pair("Run", 2u), std::pair("Source", 3u)})
        {
            LogFiles log(m_folder.Path(), name);
            log.Add(kFew, number, 2);
            log.Add(many, number + 1 + 2 * kFew, 2);
            log.Write();
        }

        LogSession session(m_rows);
        session.Refresh(0);
        const auto unfold = [&session](int row, unsigned count) {
            RowChange change;
            Check(session.ExpandAll(row, change) && change.delta == static_cast<int>(2 * count), "unfolding");
            Check(session.Collapse(row, change), "folding");
        };
        const Comparison comparison(
            {Repeat(1, kFew, [&] { unfold(0, kFew); }), Repeat(1, many, [&] { unfold(1, many); })},
            Rounds(5));
        Judge("unfolding all, per header of " + std::to_string(many), comparison, "of 10000", 2);
        CloseReaders();
    }

    // "Main" and "Run" take turns: every row of "Main" is a header.
    void MeasureTranslation()
    {
        constexpr int kMany = 10000;
        LogFiles main(m_folder.Path(), "Main");
        main.Add(kMany + 1, 1, 2);
        main.Write();
        LogFiles run(m_folder.Path(), "Run");
        run.Add(kMany, 2, 2);
        run.Write();

        LogSession few(m_rows);
        LogSession many(m_rows);
        for (const auto& [session, branches] : {std::pair(&few, 10), std::pair(&many, kMany)})
        {
            session->Refresh(0);
            RowChange change;
            for (int i = 0; i < branches; ++i)
                Check(session->Expand(2 * i, change) && change.delta == 1, "unfolding");
        }
        unsigned sum = 0;
        const auto translate = [&](LogSession& session) {
            sum += session.Translate(Below(static_cast<unsigned>(session.RowCount()))).row;
        };
        const Comparison comparison(
            {Repeat(1000, 1, [&] { translate(few); }), Repeat(1000, 1, [&] { translate(many); })},
            Rounds(301));
        Check(sum != 0, "translating");
        m_report.Add({"a displayed row, 10000 branches", comparison.Time(1) * 1000, "ns", "10 branches",
                      comparison.Ratio(1)});
    }

    static void ReadRow(CQmLogReader& reader, unsigned row)
    {
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow record;
        Check(reader.Read(row, text, length, record) && reader.ReadStyle(row, record) &&
                  reader.ReadStyle(row + 1, record),
              "CQmLogReader::Read");
    }

    static void CheckPage(const RowCache& cache, unsigned first)
    {
        for (unsigned row = first; row < first + kPage; ++row)
        {
            const logview::CachedRow* const cached = cache.Get(static_cast<int>(row));
            Check(cached && cached->text.size() == LogFiles::kLineBytes && !cached->foldable, "a page");
        }
    }

    unsigned Below(unsigned end) { return static_cast<unsigned>(m_random() % end); }

    // Shows "Run" where the view expects "Main".
    class Swapped : public logview::RowSource
    {
    public:
        unsigned long RowCount(unsigned file) override { return m_rows.RowCount(file + 1); }
        unsigned long ReadRows(unsigned file, unsigned long first, unsigned long count,
                               CQmLogRow* rows) override
        {
            return m_rows.ReadRows(file + 1, first, count, rows);
        }
        unsigned long TextSize(unsigned file) override { return m_rows.TextSize(file + 1); }
        unsigned long ReadText(unsigned file, unsigned long offset, unsigned long size, char* text) override
        {
            return m_rows.ReadText(file + 1, offset, size, text);
        }
        bool Find(unsigned file, unsigned long time, bool forward, unsigned long& foundTime,
                  unsigned long& row) override
        {
            return m_rows.Find(file + 1, time, forward, foundTime, row);
        }

    private:
        logview::ReaderRows m_rows;
    };

    bench::Options m_options;
    bench::TemporaryFolder m_folder;
    logview::ReaderRows m_rows;
    bench::Report m_report;
    std::minstd_rand m_random;
};

} // namespace

int main(int count, char** arguments)
{
    const bench::Options options = bench::ParseOptions(count, arguments);
    const bench::Report report = LogViewBench(options).Run();
    report.Print(options);
    return options.quick || report.AllMet() ? 0 : 1;
}
