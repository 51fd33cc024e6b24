#include "LogWindowBench.h"
#include "BenchMemory.h"
#include "LogFiles.h"
#include "ShownWindow.h"

#include "QmLogReader.h"
#include "QmLogTextCtrl.h"
#include "QmLogTimes.h"
#include "QmLogWriter.h"
#include "logview/ShownRows.h"
#include "msgservice/session/ClockText.h"

#include <algorithm>
#include <commctrl.h>
#include <optional>
#include <string_view>

namespace bench
{

namespace
{

constexpr int kWidth = 1000;
constexpr int kHeight = 740;

// The frame of both windows. It answers the list view's questions from the log's reader, as a host would that
// shows a log in one.
class Frame : public CWnd
{
public:
    Frame()
    {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                 nullptr);
    }

    ~Frame() override { DestroyWindow(); }

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        auto* const info = reinterpret_cast<NMLVDISPINFOA*>(lParam);
        if (info->hdr.code != LVN_GETDISPINFOA)
            return CWnd::OnNotify(wParam, lParam, result);
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        if ((info->item.mask & LVIF_TEXT) != 0 &&
            QmLogReaderDefine("Main").Read(static_cast<unsigned long>(info->item.iItem), text, length, row))
            info->item.pszText = const_cast<char*>(text);
        return TRUE;
    }
};

// The system's list view in owner-data mode, one column as wide as the window.
HWND CreateListView(const Frame& frame, int rows)
{
    INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&controls);
    const HWND list =
        ::CreateWindowA(WC_LISTVIEWA, "", WS_CHILD | LVS_REPORT | LVS_OWNERDATA | LVS_NOCOLUMNHEADER, 0, 0,
                        kWidth, kHeight, frame.m_hWnd, nullptr, AfxGetInstanceHandle(), nullptr);
    Check(list != nullptr, "the list view");
    ::SendMessage(list, WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(ANSI_FIXED_FONT)), FALSE);
    LVCOLUMNA column = {};
    column.mask = LVCF_WIDTH;
    column.cx = kWidth - 40;
    ::SendMessage(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    ::SendMessage(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(rows), 0);
    return list;
}

// Opens the log folder's session and shows its last screen.
void Open(CQmLogTextCtrl& text, Frame& frame)
{
    text.SetStartSession(false);
    Check(text.Create(WS_CHILD, CRect(0, 0, kWidth, kHeight), &frame, 1) != FALSE, "the log text window");
    text.ShowWindow(SW_SHOW);
    text.SetFocus();
    Press(text, VK_END);
    text.EnsureVisible(text.GetRowCount() - 1, 0, 1, 0);
    text.UpdateWindow();
}

void MeasurePainting(const Options& options, Frame& frame, Report& report)
{
    CQmLogTextCtrl text;
    Open(text, frame);
    text.Focus(0, 0, false);
    const HWND list = CreateListView(frame, text.GetRowCount());

    const unsigned rounds = options.quick ? 3 : 51;
    const auto compare = [&](const char* name, std::optional<double> goal, const auto& action) {
        const auto variant = [&action](HWND hwnd) {
            return WhenShown(hwnd, 20, [&action, hwnd] { action(hwnd); });
        };
        const Comparison comparison({variant(list), variant(text)}, rounds);
        report.Add({name, comparison.Time(1), "us", "the list view", comparison.Ratio(1), goal});
    };
    compare("full repaint", 0.6, Repaint);
    compare("page down", 0.9, [](HWND hwnd) { Press(hwnd, VK_NEXT); });
    QmLogLook look;
    look.wideMargin = true;
    text.SetLook(look);
    text.Focus(0, 0, false);
    compare("full repaint, wide margin", std::nullopt, Repaint);
    text.SetLook({});
    ::DestroyWindow(list);

    if (!options.quick)
    {
        text.Focus(0, 0, false);
        const Comparison pages({{1,
                                 [&] {
                                     for (int page = 0; page < 1000; ++page)
                                         Press(text, VK_NEXT);
                                     text.Focus(0, 0, false);
                                 }}},
                               3);
        report.Add({"1000 page downs", pages.Time(0) / 1000, "ms", "", {}, {}});
    }
}

// A page of several scripts against a page of as many cells of ASCII, in a font that has the letters of some.
void MeasureScripts(const Options& options, Frame& frame, Report& report)
{
    constexpr int kRows = 100; // more than a page
    const std::string mixed =
        "Gr\u00F6\u00DFe \u0416\u0443\u0440\u043D\u0430\u043B \u03A9\u03BC\u03AD\u03B3\u03B1 "
        "\u65E5\u5FD7\u6587\u4EF6 \uD55C\uAD6D\uC5B4 \U0001F600 "; // 40 cells
    CQmLogWriter& main = QmLogWriterDefine("Main");
    main.Clear();
    for (int row = 0; row < 2 * kRows; ++row)
        Check(main.WriteLine(row < kRows ? std::string(80, 'x').c_str() : (mixed + mixed).c_str()),
              "writing");
    QmLogWriterCloseAll();

    CFont font;
    LOGFONT description = {};
    description.lfHeight = -13;
    description.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    ::lstrcpyn(description.lfFaceName, "Consolas", LF_FACESIZE);
    font.CreateFontIndirect(&description);
    CQmLogTextCtrl windows[2];
    for (CQmLogTextCtrl& text : windows)
    {
        Open(text, frame);
        text.SetFont(&font);
    }
    windows[0].Focus(0, 0, false);
    const auto variant = [](HWND hwnd) { return WhenShown(hwnd, 20, [hwnd] { Repaint(hwnd); }); };
    const Comparison comparison({variant(windows[0]), variant(windows[1])}, options.quick ? 11 : 51);
    report.Add({"full repaint, several scripts", comparison.Time(1), "us", "as many cells of ASCII",
                comparison.Ratio(1), 1.3});
    QmLogReaderDefine("Main").Close();
    main.Clear();
    QmLogWriterCloseAll();
}

// The rows' times in the wide margin, as LogDesk shows them, against the wide margin alone.
void MeasureTimes(const Options& options, const TemporaryFolder& folder, Frame& frame, Report& report)
{
    constexpr int kRows = 100; // more than a page
    constexpr int kColumns = 14;
    CQmLogWriter& main = QmLogWriterDefine("Main");
    QmLogSetTimes(true);
    for (int row = 0; row < kRows; ++row, ::Sleep(5))
        Check(main.WriteLine(std::string(LogFiles::kLineBytes - 1, 'x').c_str()), "writing");
    QmLogSetTimes(false);
    QmLogWriterCloseAll();

    CQmLogTimes times;
    Check(times.SetFolder(nullptr), "reading the times");
    QmLogLook look;
    look.wideMargin = true;
    CQmLogTextCtrl windows[2];
    for (CQmLogTextCtrl& text : windows)
    {
        Open(text, frame);
        text.SetLook(look);
        text.Focus(0, 0, false);
    }
    windows[1].SetMarginTexts(kColumns, [&times](std::uint32_t number) {
        QmLogTime time;
        Check(times.TimeOf(number, time), "the time of a row");
        return msgservice::LocalTime(time.time).substr(10);
    });
    const auto variant = [](HWND hwnd) { return WhenShown(hwnd, 20, [hwnd] { Repaint(hwnd); }); };
    const Comparison comparison({variant(windows[0]), variant(windows[1])}, options.quick ? 11 : 51);
    report.Add({"full repaint, times of the rows",
                comparison.Time(1),
                "us",
                "the wide margin alone",
                comparison.Ratio(1),
                {}});
    for (CQmLogTextCtrl& text : windows)
        text.DestroyWindow();
    QmLogReaderDefine("Main").Close();
    main.Clear();
    QmLogWriterCloseAll();
    ::DeleteFileA((folder.Path() + "Log.TIM").c_str());
}

// What a page of one log and a look at the shared counter ask of the file system.
void MeasureCalls(Frame& frame, Report& report)
{
    CountingFiles files;
    {
        CQmLogTextCtrl text;
        Open(text, frame);
        const auto tick = [&text] { text.SendMessage(WM_TIMER, logview::kRefreshTimer); };
        tick();

        files.Take();
        Repaint(text);
        report.Add({"full repaint, file reads", static_cast<double>(files.Take().reads), "", "", {}, 2.0});
        tick();
        const CallCounts idle = files.Take();
        // A look under the lock takes two requests and two other calls. One that neither waits for a writer
        // nor holds the file open for the next session to meet opens and closes it in their place.
        report.Add({"idle tick, lock requests", static_cast<double>(idle.locks), "", "", {}, 0.0});
        report.Add({"idle tick, calls in all", static_cast<double>(idle.All()), "", "", {}, 4.0});
    }
    QmLogReaderDefine("Main").Close();
    QmLogWriterCloseAll(); // the counters
}

// A text that is nowhere, against reading the lines and searching them.
void MeasureSearch(const Options& options, Frame& frame, Report& report)
{
    CQmLogTextCtrl text;
    Open(text, frame);
    const unsigned rows = std::min(options.quick ? 2000u : 50000u, static_cast<unsigned>(text.GetRowCount()));
    const std::string absent = "ABSENT";
    const Comparison comparison(
        {{rows,
          [&] {
              CQmLogReader& reader = QmLogReaderDefine("Main");
              const char* line = nullptr;
              unsigned long length = 0;
              CQmLogRow row;
              for (unsigned i = 0; i < rows; ++i)
                  Check(reader.Read(i, line, length, row) &&
                            std::string_view(line, length).find(absent) == std::string_view::npos,
                        "reading");
          }},
         {rows,
          [&] {
              bool found = false;
              for (unsigned i = 0; i < rows; ++i)
              {
                  int column = 0;
                  Check(text.Find(static_cast<int>(i), column, absent.c_str(), found) && !found, "searching");
              }
          }}},
        options.quick ? 3 : 11);
    report.Add({"search, per row", comparison.Time(1), "us", "reading the lines one by one",
                comparison.Ratio(1), 1.0});
}

} // namespace

void MeasureLogWindow(const Options& options, const TemporaryFolder& folder, Report& report)
{
    Frame frame;
    MeasureScripts(options, frame, report);
    MeasureTimes(options, folder, frame, report);
    const auto write = [&folder](unsigned bytes) {
        QmLogReaderDefine("Main").Close();
        LogFiles log(folder.Path(), "Main");
        log.Add(bytes / LogFiles::kLineBytes, 1);
        log.Write();
    };
    write(10u << 20);
    MeasurePainting(options, frame, report);
    MeasureSearch(options, frame, report);
    MeasureCalls(frame, report);

    // After a first window, which brings in what the system keeps.
    write(options.quick ? 100u << 20 : 1u << 30);
    CQmLogTextCtrl text;
    const double before = PrivateBytes(); // the peak was higher while the log was made
    Open(text, frame);
    const double growth = (PrivateBytes() - before) / (1 << 20);
    report.Add(
        {options.quick ? "memory with 100 MB shown" : "memory with 1 GB shown", growth, "MB", "", {}, 2.0});
    text.DestroyWindow();
    QmLogReaderDefine("Main").Close();
}

} // namespace bench
