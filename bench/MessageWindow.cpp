// What the message viewer costs: live messages against their service alone, painting against a plain report
// control with the same texts, many messages against few.
#include "BenchFiles.h"
#include "MessageBench.h"
#include "MessageLists.h"
#include "ShownWindow.h"

#include "msgservice/MsgService.h"
#include "qmcommon/QmClipboard.h"

#include <optional>

namespace bench
{

namespace
{

constexpr int kFew = 1000;
constexpr int kMany = 10'000'000;

void HandleMessages()
{
    MSG message = {};
    while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
        ::DispatchMessage(&message);
}

class WindowBench
{
public:
    WindowBench(const Options& options, Report& report) : m_options(options), m_report(report) {}

    void Run()
    {
        MeasureArrivals();
        MeasureTick();
        MeasurePainting("lines", Shown::Lines);
        MeasurePainting("lines and previews", Shown::LinesAndPreviews);
        MeasurePainting("previews", Shown::Previews);
        MeasureRemembered();
        MeasureMany();
        MeasureCopy();
    }

private:
    unsigned Rounds(unsigned full) const { return m_options.quick ? 3 : full; }

    void Judge(const std::string& name, const Comparison& comparison, const std::string& reference,
               std::optional<double> goal)
    {
        m_report.Add({name, comparison.Time(1), "us", reference, comparison.Ratio(1), goal});
    }

    // All messages of a run go through AddMsg one by one, in bursts so small that none is passed over.
    void Arrive(bool isShown)
    {
        constexpr unsigned kBurst = 50;
        msgservice::MsgService service;
        std::optional<CReportCtrlLog> viewer;
        if (isShown)
        {
            viewer.emplace();
            Check(viewer->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &m_frame, 1) != FALSE,
                  "the viewer");
            service.AddViewer(*viewer);
        }
        unsigned count = 0;
        m_messages.ForEach([&](const msgservice::MessageFields& fields) {
            service.Store()->Add(fields);
            if (++count % kBurst != 0)
                return;
            service.Publish();
            HandleMessages();
        });
        service.Settle();
        Check(service.GetMsgCount() == m_messages.Count(), "all messages");
        if (viewer)
        {
            Check(viewer->GetLastMessage() == m_messages.Count(), "the last message");
            service.RemoveViewer(*viewer);
            viewer->SetLogMsgService(nullptr);
        }
    }

    void MeasureArrivals()
    {
        const auto arrive = [this](bool isShown) {
            return Variant{m_messages.Count(), [this, isShown] { Arrive(isShown); }};
        };
        Judge("a message that arrives, window open",
              Comparison({arrive(false), arrive(true)}, Rounds(3), Clock::Processor), "the service alone",
              1.3);
    }

    // A message has arrived at the end, which is kept in sight.
    static Variant Tick(LogList& list)
    {
        return WhenShown(
            list.m_hWnd, 20,
            [&list] {
                list.Tell(list.GetLastMessage() + 1);
                list.Tick();
                ::UpdateWindow(list.m_hWnd);
            },
            [&list] { list.SetFollow(1); });
    }

    void MeasureTick()
    {
        for (const auto& [name, shown] :
             {std::pair("a tick of the timer, lines", Shown::Lines), {"a tick, previews", Shown::Previews}})
        {
            LogList few(m_frame, m_service, kFew, shown);
            LogList many(m_frame, m_service, kMany, shown);
            Judge(name, Comparison({Tick(few), Tick(many)}, Rounds(51)), "1000 messages", 1.2);
        }
    }

    static Variant Painted(CReportCtrl& list)
    {
        return WhenShown(list.m_hWnd, 20, [&list] { Repaint(list.m_hWnd); });
    }

    // The viewer draws images and colours as well.
    void MeasurePainting(const std::string& what, Shown shown)
    {
        LogList list(m_frame, m_service, kFew, shown);
        PlainList plain(m_frame, m_service, list);
        const std::string rows = std::to_string(list.GetVisibleCount(1));
        Check(plain.GetVisibleCount(1) == list.GetVisibleCount(1), "as many rows in both windows");
        Judge("repaint " + rows + " rows, " + what, Comparison({Painted(plain), Painted(list)}, Rounds(51)),
              "a plain control", 1.3);
    }

    // Texts are measured at the first repaint only, or at each.
    void MeasureRemembered()
    {
        LogList list(m_frame, m_service, kFew, Shown::Previews);
        const Variant anew = WhenShown(list.m_hWnd, 20, [&list] {
            list.FlushCacheMsgData();
            Repaint(list.m_hWnd);
        });
        Judge("repaint previews that are remembered", Comparison({anew, Painted(list)}, Rounds(51)),
              "measured each time", {});
    }

    void MeasureMany()
    {
        LogList few(m_frame, m_service, 10 * kFew, Shown::Previews);
        LogList many(m_frame, m_service, kMany, Shown::Previews);
        const auto compare = [&](const std::string& name, const auto& action) {
            const auto on = [&action](LogList& list) {
                return WhenShown(
                    list.m_hWnd, 10, [&] { action(list); }, [&] { list.EnsureVisible(0, 0); });
            };
            Judge(name + ", 10 million", Comparison({on(few), on(many)}, Rounds(31)), "10000 messages", 1.2);
        };
        const auto scroll = [](LogList& list, WPARAM code) {
            ::SendMessage(list.m_hWnd, WM_VSCROLL, code, 0);
            ::UpdateWindow(list.m_hWnd);
        };
        compare("page down, previews", [scroll](LogList& list) { scroll(list, SB_PAGEDOWN); });
        compare("end and back, previews", [scroll](LogList& list) {
            scroll(list, SB_BOTTOM);
            scroll(list, SB_TOP);
        });
        compare("show the last and the first, previews", [](LogList& list) {
            for (const int row : {list.GetItemCount() - 1, 0})
            {
                list.EnsureVisible(row, TRUE);
                ::UpdateWindow(list.m_hWnd);
            }
        });
    }

    void MeasureCopy()
    {
        const std::uint32_t count = m_options.quick ? 10'000 : 100'000;
        msgservice::MsgService service(Messages(count).Stored());
        service.Settle();
        CReportCtrlLog viewer;
        Check(viewer.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &m_frame, 1) != FALSE,
              "the viewer");
        viewer.SetSavesState(false);
        viewer.SetUseAllFields(true);
        viewer.SetHideRow(0);
        service.AddViewer(viewer);
        viewer.TakeOver();
        viewer.SelectAll();
        Check(viewer.CopyMessages(), "the clipboard");
        const std::size_t size = ClipboardSize();
        const std::string bytes(size, 'x');
        const auto put = [&] {
            Check(QmSetClipboard(m_frame.m_hWnd, CF_PRIVATEFIRST, bytes.data(), size), "the clipboard");
        };
        const auto copy = [&] { Check(viewer.CopyMessages(), "the clipboard"); };
        Judge("copy a message of " + std::to_string(count),
              Comparison({{count, put}, {count, copy}}, Rounds(5)), "giving the clipboard its bytes alone",
              {});
        service.RemoveViewer(viewer);
    }

    // The bytes of what the clipboard was given.
    std::size_t ClipboardSize()
    {
        std::size_t size = 0;
        Check(::OpenClipboard(m_frame.m_hWnd) != FALSE, "the clipboard");
        for (const UINT format : {UINT{CF_UNICODETEXT}, ::RegisterClipboardFormat("CSV")})
            size += ::GlobalSize(::GetClipboardData(format));
        ::CloseClipboard();
        return size;
    }

    Options m_options;
    Report& m_report;
    Messages m_messages{m_options.quick ? 20'000u : 1'000'000u};
    Frame m_frame;
    ReadyService m_service;
};

} // namespace

void MeasureWindow(const Options& options, Report& report)
{
    WindowBench(options, report).Run();
}

} // namespace bench
