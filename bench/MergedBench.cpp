#include "MergedBench.h"
#include "LogFiles.h"
#include "ShownWindow.h"

#include "QmLogReader.h"
#include "QmLogTextCtrl.h"
#include "logview/LogNames.h"
#include "logview/ReaderRows.h"
#include "logview/ShownRows.h"
#include "logview/merge/MergedRows.h"

#include <random>

namespace bench
{

namespace
{

class Parent : public CWnd
{
public:
    Parent()
    {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 1000, 740, nullptr, nullptr);
    }
    ~Parent() override { DestroyWindow(); }
};

void CloseReaders()
{
    for (int file = 0; file < static_cast<int>(logview::kFileCount); ++file)
        QmLogReaderDefine(logview::GetLogName(file)).Close();
}

// Five logs that take turns, row by row, which is the most that there is to put in order.
void WriteLogs(const TemporaryFolder& folder, unsigned rows)
{
    for (unsigned file = 0; file < logview::kFileCount; ++file)
    {
        LogFiles log(folder.Path(), logview::GetLogName(static_cast<int>(file)));
        log.Add(rows, 1 + file, logview::kFileCount);
        log.Write();
    }
}

void Open(CQmLogTextCtrl& text, Parent& parent, bool merged)
{
    text.SetStartSession(false);
    Check(text.Create(WS_CHILD, CRect(0, 0, 1000, 740), &parent, 1) != FALSE, "the log text window");
    if (merged)
        text.ShowMerged();
}

void MeasureIndex(const Options& options, unsigned rows, Report& report)
{
    logview::ReaderRows source;
    std::vector<CQmLogRow> buffer(3276); // 64 KiB
    const auto read = [&] {
        std::uint64_t sum = 0;
        for (unsigned file = 0; file < logview::kFileCount; ++file)
            for (unsigned long first = 0; first < rows; first += static_cast<unsigned long>(buffer.size()))
                sum += source.ReadRows(file, first, static_cast<unsigned long>(buffer.size()), buffer.data());
        Check(sum == std::uint64_t{rows} * logview::kFileCount, "reading the index files");
    };
    const auto build = [&] {
        logview::MergedRows merged(source);
        merged.Refresh();
        while (merged.Extend(20000))
        {
        }
        Check(merged.Index().IsComplete(), "the index");
    };
    const Comparison comparison({{1, read}, {1, build}}, options.quick ? 3 : 7);
    report.Add({"merged view: its index of " + std::to_string(rows * 5) + " rows", comparison.Time(1) / 1000,
                "ms", "reading the ROW files", comparison.Ratio(1), 1.5});
}

void MeasureScreens(const Options& options, Parent& parent, Report& report)
{
    CQmLogTextCtrl windows[2];
    Open(windows[0], parent, false);
    Open(windows[1], parent, true);
    for (CQmLogTextCtrl& text : windows)
        text.SetFollow(false);
    std::minstd_rand random;
    const auto anywhere = [&](CQmLogTextCtrl& text) {
        return WhenShown(text, 20, [&] {
            text.Focus(static_cast<int>(random() % static_cast<unsigned>(text.GetRowCount())), 0, false);
            text.UpdateWindow();
        });
    };
    const unsigned rounds = options.quick ? 3 : 51;
    const Comparison before({anywhere(windows[0]), anywhere(windows[1])}, rounds);
    report.Add({"merged view: any screen before the index", before.Time(1), "us", "the described view's",
                before.Ratio(1)});
    while (windows[1].GetIndexProgress() < 100)
        windows[1].SendMessage(WM_TIMER, logview::kIndexTimer);
    const Comparison after({anywhere(windows[0]), anywhere(windows[1])}, rounds);
    report.Add({"merged view: any screen", after.Time(1), "us", "the described view's", after.Ratio(1), 1.2});
}

void MeasureFirstScreen(const Options& options, Parent& parent, Report& report)
{
    const auto show = [&](bool merged) {
        return Variant{1, [&parent, merged] {
                           CQmLogTextCtrl text;
                           Open(text, parent, merged);
                           text.ShowWindow(SW_SHOW);
                           text.EnsureVisible(text.GetRowCount() - 1, 0, 1, 0);
                           text.UpdateWindow();
                       }};
    };
    const Comparison comparison({show(false), show(true)}, options.quick ? 3 : 31);
    report.Add({"merged view: the first screen", comparison.Time(1) / 1000, "ms", "the described view's",
                comparison.Ratio(1), 1.2});
}

} // namespace

void MeasureMerged(const Options& options, const TemporaryFolder& folder, Report& report)
{
    const unsigned rows = options.quick ? 200000 : 10000000;
    WriteLogs(folder, rows);
    MeasureIndex(options, rows, report);
    Parent parent;
    MeasureFirstScreen(options, parent, report);
    MeasureScreens(options, parent, report);
    CloseReaders();
}

} // namespace bench
