#include "LogGrowthBench.h"
#include "LogFiles.h"
#include "ShownWindow.h"

#include "QmLogReader.h"
#include "QmLogTextCtrl.h"
#include "afxcontrolbarutil.h"
#include "logview/LogNames.h"
#include "logview/RowSource.h"
#include "logview/ShownRows.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <numeric>
#include <thread>

namespace bench
{

namespace
{

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr double kLongestWait = 50; // milliseconds

const char* LogOf(unsigned file)
{
    return logview::GetLogName(static_cast<int>(file));
}

void CloseAll()
{
    for (unsigned file = 0; file < logview::kFileCount; ++file)
        QmLogReaderDefine(LogOf(file)).Close();
}

// Five logs that take turns. The first row of "Run" is a header whose block goes on.
void WriteTurns(const std::string& folder, unsigned rows, const CQmLogRow& like)
{
    for (unsigned file = 0; file < logview::kFileCount; ++file)
    {
        LogFiles log(folder, LogOf(file));
        CQmLogRow row = like;
        if (file == 1 && like.blockBegin == 0)
        {
            row.indent = row.blockBegin = 1;
            log.Add(row, 1, 2, logview::kFileCount);
            row.blockBegin = 0;
            log.Add(row, rows - 1, 2 + logview::kFileCount, logview::kFileCount);
        }
        else
            log.Add(row, rows, 1 + file, logview::kFileCount);
        log.Write();
    }
}

class Host : public CWnd
{
public:
    Host()
    {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 1000, 740, nullptr, nullptr);
    }
    ~Host() override { DestroyWindow(); }
};

void Open(CQmLogTextCtrl& text, Host& host, const std::vector<std::uint32_t>& bookmarks)
{
    text.SetStartSession(false);
    text.SetFindInAll(true);
    text.SetBookmarks([&bookmarks]() -> const std::vector<std::uint32_t>& { return bookmarks; });
    Check(text.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 1000, 740), &host, 1) != FALSE,
          "the log text window");
    text.ShowMerged();
    text.SetShowsStrip(true);
    text.UpdateWindow();
}

// Another process, as far as the window can tell: adds 10,000 rows a second to the logs.
class Writer
{
public:
    Writer(const std::string& folder, unsigned rows)
        : m_folder(folder), m_rows(rows), m_thread([this] { Run(); })
    {
    }
    ~Writer()
    {
        m_ends = true;
        m_thread.join();
    }

private:
    struct Log
    {
        std::FILE* rows;
        std::FILE* text;
    };

    std::FILE* Open(const char* name, const char* mode) const
    {
        std::FILE* const file = std::fopen((m_folder + name).c_str(), mode);
        Check(file != nullptr, "opening a log");
        return file;
    }

    void Run()
    {
        constexpr unsigned kTogether = 20; // rows of a log, a hundred times a second
        std::FILE* const counters = Open("Log.DAT", "wb");
        std::vector<Log> logs;
        for (unsigned file = 0; file < logview::kFileCount; ++file)
            logs.push_back({Open((LogOf(file) + std::string(".ROW")).c_str(), "ab"),
                            Open((LogOf(file) + std::string(".LOG")).c_str(), "ab")});
        std::string lines;
        for (unsigned i = 0; i < kTogether; ++i)
            lines += std::string(LogFiles::kLineBytes - 1, 'y') + '\n';
        auto next = SteadyClock::now();
        for (; !m_ends; m_rows += kTogether)
        {
            const std::uint32_t time[2] = {(m_rows + kTogether) * logview::kFileCount, 0};
            std::rewind(counters);
            std::fwrite(time, sizeof(time), 1, counters);
            std::fflush(counters);
            for (unsigned file = 0; file < logview::kFileCount; ++file)
            {
                CQmLogRow rows[kTogether];
                for (unsigned i = 0; i < kTogether; ++i)
                {
                    rows[i].offset = static_cast<std::uint32_t>((m_rows + i) * LogFiles::kLineBytes);
                    rows[i].blockBegin = 0;
                    rows[i].indent = file == 1 ? 1 : 0;
                    rows[i].time = 1 + file + (m_rows + i) * logview::kFileCount;
                }
                std::fwrite(rows, sizeof(rows), 1, logs[file].rows);
                std::fflush(logs[file].rows);
                std::fwrite(lines.data(), lines.size(), 1, logs[file].text);
                std::fflush(logs[file].text);
            }
            next += milliseconds(10);
            std::this_thread::sleep_until(next);
        }
        std::fclose(counters);
        for (const Log& log : logs)
        {
            std::fclose(log.rows);
            std::fclose(log.text);
        }
    }

    std::string m_folder;
    unsigned m_rows;
    std::atomic<bool> m_ends = false;
    std::thread m_thread;
};

void PumpUntil(const std::function<bool()>& isOver)
{
    while (!isOver())
    {
        MSG message = {};
        if (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageA(&message);
        else
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
}

// The longest time, in milliseconds, that a message from another thread waits for its answer while the window
// lives for some time, or, after half a second, until `isDone`.
double LongestWait(HWND window, milliseconds time, const std::function<bool()>& isDone = {})
{
    std::atomic<bool> ends = false;
    std::atomic<bool> isAnswered = false;
    double longest = 0;
    std::thread probe([&] {
        while (!ends)
        {
            const auto begin = SteadyClock::now();
            DWORD_PTR answer = 0;
            ::SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 10000, &answer);
            const std::chrono::duration<double, std::milli> wait = SteadyClock::now() - begin;
            longest = std::max(longest, wait.count());
            ::Sleep(2);
        }
        isAnswered = true;
    });
    const auto begin = SteadyClock::now();
    PumpUntil([&] {
        const auto elapsed = SteadyClock::now() - begin;
        return elapsed >= time || (isDone && elapsed >= milliseconds(500) && isDone());
    });
    ends = true;
    PumpUntil([&] { return isAnswered.load(); });
    probe.join();
    return longest;
}

void MeasureWaits(const Options& options, const TemporaryFolder& folder, Report& report)
{
    const unsigned rows = options.quick ? 20000 : 2000000;
    CQmLogRow plain;
    plain.blockBegin = 0;
    WriteTurns(folder.Path(), rows, plain);
    const milliseconds time(options.quick ? 300 : 4000);
    const std::vector<std::uint32_t> bookmarks = {100, 1000, 10000};
    const Writer writer(folder.Path(), rows);
    Host host;
    CQmLogTextCtrl text;
    Open(text, host, bookmarks);
    const auto add = [&](const char* name, const std::function<bool()>& isDone = {}) {
        report.Add({std::string("longest wait ") + name,
                    LongestWait(text, time, isDone),
                    "ms",
                    "",
                    {},
                    kLongestWait});
    };
    add("while the index is built", [&] { return text.GetIndexProgress() > 99; });
    add("following");
    Check(text.Collapse(1), "folding");
    add("with a fold that goes on");
    text.SetFindText("absent");
    text.FindNext();
    add("while finding", [&] { return !text.IsFinding(); });
    text.SetFindText("yy");
    text.FindNext();
    add("with matches that come");
    text.DestroyWindow();
}

void MeasureStrip(const Options& options, const TemporaryFolder& folder, Report& report)
{
    const unsigned errors = options.quick ? 10000 : 1000000;
    CQmLogRow error;
    error.kind = kErrorKind;
    error.indent = 1;
    WriteTurns(folder.Path(), errors / logview::kFileCount, error);
    std::vector<std::uint32_t> bookmarks(1000);
    for (std::size_t i = 0; i < bookmarks.size(); ++i)
        bookmarks[i] = static_cast<std::uint32_t>(1 + i * (errors / bookmarks.size()));
    Host host;
    CQmLogTextCtrl text;
    Open(text, host, bookmarks);
    while (text.GetIndexProgress() < 100)
        text.SendMessage(WM_TIMER, logview::kIndexTimer);
    text.SetFindText("x");
    text.FindNext();
    text.CancelFind();
    text.SendMessage(WM_TIMER, logview::kRefreshTimer);

    HWND strip = nullptr;
    CRect area;
    for (HWND child = ::GetWindow(text, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (::GetClientRect(child, &area) && area.Height() > 5 * area.Width())
            strip = child;
    Check(strip != nullptr, "the strip");
    ::GetClientRect(strip, &area);
    const auto fill = [&] {
        CClientDC dc(CWnd::FromHandle(strip));
        CMemDC memory(dc, area);
        memory.GetDC().FillSolidRect(area, RGB(255, 255, 255));
    };
    const auto twenty = [](const std::function<void()>& action) {
        return Variant{20, [action] {
                           for (int i = 0; i < 20; ++i)
                               action();
                       }};
    };
    const Comparison comparison({twenty(fill), twenty([strip] { Repaint(strip); })}, options.quick ? 3 : 51);
    report.Add(
        {"strip of " + std::to_string(errors) + " errors", comparison.Time(1) / 1000, "ms", "", {}, 2.0});
    report.Add({"the same", comparison.Time(1), "us", "filling its rectangle", comparison.Ratio(1)});
    text.DestroyWindow();
}

} // namespace

void MeasureGrowth(const Options& options, const TemporaryFolder& folder, Report& report)
{
    CloseAll();
    MeasureStrip(options, folder, report);
    CloseAll();
    MeasureWaits(options, folder, report);
    CloseAll();
}

} // namespace bench
