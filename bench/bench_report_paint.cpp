// What the report control's window costs, against the system's list view with the same rows, and large lists
// against small ones.
#include "Bench.h"
#include "BenchFiles.h"
#include "ReportEdits.h"
#include "ReportLists.h"
#include "ScreenCopies.h"
#include "ShownWindow.h"
#include "tests/support/GuiCounts.h"

#include <cstdlib>
#include <random>
#include <string>

namespace
{

using bench::CallbackList;
using bench::Check;
using bench::Comparison;
using bench::kColumns;
using bench::ListView;
using bench::ReportList;
using bench::Variant;

HWND Window(const ListView& view)
{
    return view.Window();
}
HWND Window(const ReportList& list)
{
    return list.m_hWnd;
}

int Count(ListView& view)
{
    return view.Count();
}
int Count(ReportList& list)
{
    return list.GetItemCount();
}

void Show(ListView& view, int row)
{
    view.Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}
void Show(ReportList& list, int row)
{
    list.EnsureVisible(row, -1);
}

void SetState(ListView& view, int row, UINT state)
{
    LVITEMA item = {};
    item.state = state;
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    view.Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void SetCount(ListView& view, int count, DWORD flags = 0)
{
    view.Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), static_cast<LPARAM>(flags));
}
void SetCount(ReportList& list, int count)
{
    list.SetItemCount(count);
}

void SelectAll(ListView& view)
{
    SetState(view, -1, LVIS_SELECTED);
}
void SelectAll(ReportList& list)
{
    list.SelectAll();
}

// Row 0 has the focus, is selected alone, and is at the top.
void GoToFirst(ListView& view)
{
    if (view.Send(LVM_GETSELECTEDCOUNT) > 1)
        SetState(view, -1, 0); // visits every row
    SetState(view, 0, LVIS_SELECTED | LVIS_FOCUSED);
    Show(view, 0);
}
void GoToFirst(ReportList& list)
{
    list.SelectRows(0, 0, 1, 0, 0, 0);
    Show(list, 0);
}

int RowAt(ListView& view, POINT point)
{
    LVHITTESTINFO hit = {};
    hit.pt = point;
    return static_cast<int>(view.Send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}
int RowAt(ReportList& list, POINT point)
{
    _RVHITTESTINFO hit = {};
    hit.pt = point;
    return list.HitTest(&hit);
}

void Update(HWND hwnd)
{
    ::UpdateWindow(hwnd);
}

void Scroll(HWND hwnd, WPARAM code)
{
    ::SendMessage(hwnd, WM_VSCROLL, code, 0);
    ::UpdateWindow(hwnd);
}

class PaintBench
{
public:
    explicit PaintBench(const bench::Options& options) : m_options(options) {}

    bench::Report Run()
    {
        MakeAlike();
        MeasureRepaint();
        MeasureScrolling();
        MeasureAppend();
        MeasureSize();
        MeasureInput();
        MeasureEdits();
        MeasureManyAsked();
        MeasureManyStored();
        MeasureCounts();
        return m_report;
    }

private:
    unsigned Rounds(unsigned full) const { return m_options.quick ? 3 : full; }
    unsigned Times(unsigned full) const { return m_options.quick ? full / 10 : full; }

    // The list view in the control's font, with its highlights; the control with the list view's rows.
    void MakeAlike()
    {
        m_view.Send(WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)), FALSE);
        m_view.Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
        SetCount(m_view, kRows);
        RECT row = {LVIR_BOUNDS, 0, 0, 0};
        Check(m_view.Send(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row)) != 0, "a row's height");
        m_rowHeight = row.bottom - row.top;
        m_list.SetItemHeight(m_rowHeight);
        const int viewRows = static_cast<int>(m_view.Send(LVM_GETCOUNTPERPAGE));
        Check(std::abs(m_list.GetVisibleCount(0) - viewRows) <= 1, "as many rows in both windows");
    }

    template <typename List, typename Action> static Variant On(List& list, unsigned times, Action action)
    {
        return bench::WhenShown(
            Window(list), times, [&list, action] { action(list); }, [&list] { GoToFirst(list); });
    }

    void Judge(const std::string& name, const Comparison& comparison, std::optional<double> goal,
               const char* reference = "the list view")
    {
        m_report.Add({name, comparison.Time(1), "us", reference, comparison.Ratio(1), goal});
    }

    // An action of the list view and the control; each is `steps` of what is measured.
    template <typename Action>
    void Compare(const char* name, unsigned rounds, unsigned times, Action action,
                 std::optional<double> goal = {}, unsigned steps = 1)
    {
        Variant view = On(m_view, times, action);
        Variant list = On(m_list, times, action);
        view.units *= steps;
        list.units *= steps;
        Judge(name, Comparison({view, list}, Rounds(rounds)), goal);
    }

    void MeasureRepaint()
    {
        ReportList stored(m_frame);
        stored.SetItemHeight(m_rowHeight);
        stored.Fill(1000);
        const auto repaint = [](auto& list) { bench::Repaint(Window(list)); };
        const Comparison comparison(
            {On(m_view, 20, repaint), On(m_list, 20, repaint), On(stored, 20, repaint)}, Rounds(51));
        const std::string cells =
            std::to_string(m_list.GetVisibleCount(1)) + " x " + std::to_string(kColumns) + " cells";
        Judge("repaint " + cells, comparison, 0.5);
        m_report.Add({"repaint " + cells + ", stored", comparison.Time(2), "us", "the list view",
                      comparison.Ratio(2), 0.5});
        MeasureMixedScripts(stored);
    }

    void MeasureMixedScripts(ReportList& plain)
    {
        ReportList mixed(m_frame);
        mixed.SetItemHeight(m_rowHeight);
        mixed.Fill(1000);
        for (int item = 0; item < mixed.GetItemCount(); ++item)
            for (int subitem = 0; subitem < kColumns; ++subitem)
                mixed.SetItemText(item, subitem, bench::MakeMixedText(item, subitem).c_str());
        const auto repaint = [](auto& list) { bench::Repaint(Window(list)); };
        Judge("repaint, mixed scripts",
              Comparison({On(plain, 20, repaint), On(mixed, 20, repaint)}, Rounds(51)), 1.3, "ASCII");
    }

    void MeasureScrolling()
    {
        Compare(
            "page down", 11, Times(100), [](auto& list) { Scroll(Window(list), SB_PAGEDOWN); }, 0.9);
        const auto show = [](auto& list, int row) {
            Show(list, row);
            Update(Window(list));
        };
        const auto endAndBack = [show](auto& list) {
            show(list, Count(list) - 1);
            show(list, 0);
        };
        Compare("ensure the last, or first, row", 21, Times(10), endAndBack, {}, 2);
    }

    // A row that comes in at the end, and is shown.
    void MeasureAppend()
    {
        const auto append = [this](auto& list, auto... flags) {
            return bench::WhenShown(
                Window(list), Times(20),
                [&list, flags...] {
                    const int count = Count(list);
                    SetCount(list, count + 1, flags...);
                    Show(list, count);
                    Update(Window(list));
                },
                [&list] { Show(list, Count(list) - 1); });
        };
        const Comparison comparison({append(m_view), append(m_list), append(m_view, LVSICF_NOINVALIDATEALL)},
                                    Rounds(21));
        Judge("append a row and show it", comparison, 0.5);
        m_report.Add({"append a row and show it",
                      comparison.Time(1),
                      "us",
                      "only new rows invalidated",
                      comparison.Ratio(1, 2),
                      {}});
    }

    void MeasureSize()
    {
        const auto size = [](auto& list) {
            for (const int less : {100, 0})
            {
                ::SetWindowPos(Window(list), nullptr, 0, 0, bench::kWidth - less, bench::kHeight - less,
                               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
                Update(Window(list));
            }
        };
        Compare("resize", 21, Times(10), size, {}, 2);
    }

    // The list view looks at all rows whenever the selection changes.
    void MeasureInput()
    {
        constexpr int kFewRows = 2000;
        SetCount(m_view, kFewRows);
        SetCount(m_list, kFewRows);
        const auto selectAll = [](auto& list) {
            SelectAll(list);
            Update(Window(list));
        };
        Compare("select all 2000 rows", 21, 1, selectAll);
        Compare("key Down in 2000 rows", 11, Times(100),
                [](auto& list) { bench::Press(Window(list), VK_DOWN); });

        const auto hit = [this](auto& list) {
            const POINT point = {static_cast<LONG>(m_random() % 900),
                                 40 + static_cast<LONG>(m_random() % 600)};
            Check(RowAt(list, point) >= 0, "a hit");
        };
        Compare("hit test", 51, 1000, hit, 2.0);
        MeasureTips();
    }

    // The mouse on its way from cell to cell, or anywhere at each move; no tip comes to show.
    void MeasureTips()
    {
        m_list.ModifyStyle(0, RVS_TIPS);
        int step = 0;
        const auto onTheWay = [&step] {
            ++step;
            return POINT{step * 7 % 900, 40 + step % 600};
        };
        const auto anywhere = [this] {
            return POINT{static_cast<LONG>(m_random() % 900), 40 + static_cast<LONG>(m_random() % 600)};
        };
        const auto compare = [this](const char* name, const auto& next, std::optional<double> goal) {
            const auto hit = [next](ReportList& list) { RowAt(list, next()); };
            const auto move = [next](ReportList& list) {
                const POINT point = next();
                list.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
            };
            Judge(name, Comparison({On(m_list, 1000, hit), On(m_list, 1000, move)}, Rounds(51)), goal,
                  "HitTest");
        };
        compare("mouse move, tips on", onTheWay, 1.5);
        compare("mouse move to another cell, tips on", anywhere, {});
        m_list.ModifyStyle(RVS_TIPS, 0);
    }

    void MeasureEdits()
    {
        ReportList stored(m_frame);
        stored.SetItemHeight(m_rowHeight);
        stored.Fill(1000);
        const Variant measure =
            On(stored, 1, [this](ReportList& list) { m_report.Add(bench::MeasureEdit(list, m_options)); });
        measure.prepare();
        measure.run();
    }

    // The same number of rows is shown of a large list as of a small one.
    void CompareSizes(const std::string& kind, ReportList& small, ReportList& large)
    {
        small.SetItemHeight(m_rowHeight);
        large.SetItemHeight(m_rowHeight);
        const auto inTheMiddle = [](ReportList& list) {
            return bench::WhenShown(
                list.m_hWnd, 10, [&list] { bench::Repaint(list.m_hWnd); },
                [&list] { Show(list, list.GetItemCount() / 2); });
        };
        Judge("repaint, " + kind, Comparison({inTheMiddle(small), inTheMiddle(large)}, Rounds(101)), 1.05,
              "1000 rows");
        const auto compare = [&](const std::string& name, const auto& action) {
            Judge(name + ", " + kind,
                  Comparison({On(small, Times(10), action), On(large, Times(10), action)}, Rounds(31)), 1.2,
                  "1000 rows");
        };
        compare("page down", [](ReportList& list) { Scroll(list.m_hWnd, SB_PAGEDOWN); });
        compare("end and back", [](ReportList& list) {
            Scroll(list.m_hWnd, SB_BOTTOM);
            Scroll(list.m_hWnd, SB_TOP);
        });
    }

    void MeasureManyAsked()
    {
        CallbackList small(m_frame, 1000);
        CallbackList large(m_frame, 10000000);
        CompareSizes("10 million asked for", small, large);
    }

    void MeasureManyStored()
    {
        const int many = m_options.quick ? 10000 : 1000000;
        ReportList small(m_frame);
        ReportList large(m_frame);
        small.Fill(1000);
        large.Fill(many);
        CompareSizes(m_options.quick ? "10000 stored" : "1 million stored", small, large);
    }

    void MeasureCounts()
    {
        const unsigned times = Times(10000);
        const Variant repaints = On(m_list, times, [](auto& list) { bench::Repaint(list.m_hWnd); });
        repaints.prepare();
        const double copied = bench::CountCopiedPixels([this] { bench::Repaint(m_list.m_hWnd); });
        RECT client = {};
        RECT header = {};
        ::GetClientRect(m_list.m_hWnd, &client);
        ::GetClientRect(::GetWindow(m_list.m_hWnd, GW_CHILD), &header);
        const double shown = static_cast<double>(client.right) * (client.bottom - header.bottom);
        m_report.Add({"copies of a pixel to the screen, a repaint", copied / shown, "", "", {}, 1.0});
        const int objects = GdiObjectCount();
        const int windows = WindowCount();
        repaints.run();
        const std::string name = std::to_string(times) + " repaints, ";
        m_report.Add(
            {name + "GDI objects", static_cast<double>(GdiObjectCount() - objects), "", "", {}, 0.0});
        m_report.Add({name + "windows", static_cast<double>(WindowCount() - windows), "", "", {}, 0.0});
    }

    static constexpr int kRows = 100000;

    bench::Options m_options;
    bench::Frame m_frame;
    ListView m_view{m_frame, LVS_OWNERDATA};
    CallbackList m_list{m_frame, kRows};
    int m_rowHeight = 0;
    bench::Report m_report;
    std::minstd_rand m_random;
};

} // namespace

int main(int count, char** arguments)
{
    const bench::Options options = bench::ParseOptions(count, arguments);
    const bench::Report report = PaintBench(options).Run();
    report.Print(options);
    return options.quick || report.AllMet() ? 0 : 1;
}
