// The header of a report control and its list of hidden subitems, by the messages of the mouse.
#include "ReportSubItemListCtrl.h"
#include "tests/report/ReportFixture.h"
#include "tests/support/NothingLeft.h"

#include <commctrl.h>

namespace
{

class HeaderReport : public TestReport
{
public:
    std::function<bool(UINT)> toldByHeader; // TRUE answers TRUE
    using TestReport::Notify;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        if (!toldByHeader || !toldByHeader(reinterpret_cast<NMHDR*>(lParam)->code))
            return TestReport::OnNotify(wParam, lParam, result);
        *result = TRUE;
        return TRUE;
    }
};

constexpr int kY = 5; // within the header

// Columns a, b and c, 50 pixels each, in a header 300 pixels wide.
class ReportHeader : public ReportTestOf<HeaderReport>
{
protected:
    ReportHeader()
    {
        parent.ShowWindow(SW_SHOW);
        Show(0);
    }

    void Show(DWORD style)
    {
        report.UndefineAllSubItems();
        Create(WS_VISIBLE | style);
        Define({"a", "b", "c"});
        header = ::FindWindowEx(report, nullptr, WC_HEADERA, nullptr);
        parent.codes.clear();
    }

    static void Send(HWND hwnd, UINT message, int x, int y)
    {
        ::SendMessage(hwnd, message, MK_LBUTTON, MAKELPARAM(x, y));
    }
    void Click(int x)
    {
        Send(header, WM_LBUTTONDOWN, x, kY);
        Send(header, WM_LBUTTONUP, x, kY);
    }
    void Drag(int from, int to, int y = kY)
    {
        Send(header, WM_LBUTTONDOWN, from, kY);
        Send(header, WM_MOUSEMOVE, to, y);
        Send(header, WM_LBUTTONUP, to, y);
    }

    // The captions of the columns; of those hidden, in the list.
    std::string Columns()
    {
        std::string columns;
        for (int column = 0; column < report.GetActiveSubItemCount(); ++column)
            columns += static_cast<char>('a' + report.GetSubItemFromColumn(column));
        return columns;
    }
    static std::string Entries(CWnd& list)
    {
        std::string entries;
        char caption[16] = "";
        for (LRESULT i = 0; i < list.SendMessage(LB_GETCOUNT); ++i)
            if (list.SendMessage(LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(caption)) > 0)
                entries += caption;
        return entries;
    }

    static HWND DragWindow() { return ::FindWindow("MFCFHDragWnd", nullptr); }
    static HWND DropWindow() { return ::FindWindow("MFCFHDropWnd", nullptr); }

    // As a user presses it: no window of ours is told.
    static void PressEscape()
    {
        ::keybd_event(VK_ESCAPE, 0, 0, 0);
        ::keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
        MSG message;
        while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessage(&message);
    }

    HWND header = nullptr;
};

TEST_F(ReportHeader, ClickSortsAndTheSecondClickTurns)
{
    Fill({"2", "3", "1"});
    Click(25);
    EXPECT_EQ("1 2 3", Rows());
    Click(25);
    EXPECT_EQ("3 2 1", Rows());
    Click(75);
    Click(25);
    EXPECT_EQ("1 2 3", Rows());
    EXPECT_EQ(std::vector<UINT>(4, RVN_COLUMNCLICK), parent.codes); // a sort mark changes no column

    int subitem = -1;
    parent.answer = [&](NMHDR& told) { return subitem = reinterpret_cast<_NMRVHEADER&>(told).subitem; };
    Click(125); // and is refused
    EXPECT_EQ(2, subitem);
    int ascending = 0;
    EXPECT_TRUE(report.GetSortSettings(&subitem, &ascending) && subitem == 0 && ascending);

    parent.answer = nullptr;
    for (const DWORD style : {RVS_NOHEADERSORT, RVS_CALLBACK})
    {
        Show(style);
        Click(25);
        EXPECT_EQ(std::vector<UINT>{RVN_COLUMNCLICK}, parent.codes);
        EXPECT_EQ(0, report.GetSortSettings(&subitem, &ascending));
    }
    Send(header, WM_LBUTTONDOWN, 25, kY);
    Send(header, WM_MOUSEMOVE, 60, kY); // off the item, and back on the next one
    Send(header, WM_LBUTTONUP, 60, kY);
    EXPECT_EQ(1u, parent.codes.size());
}

TEST_F(ReportHeader, DividerChangesTheWidthWhileItIsDragged)
{
    std::vector<int> widths;
    parent.answer = [&](NMHDR& told) {
        const auto& change = reinterpret_cast<_NMREPORTVIEW&>(told);
        EXPECT_EQ(RVN_COLUMNCHANGED, told.code);
        EXPECT_EQ(RVI_NONE, change.item);
        EXPECT_EQ(0, change.subitem);
        EXPECT_EQ(0, reinterpret_cast<_NMRVHEADER&>(told).subitem);
        widths.push_back(report.GetSubItemWidth(change.subitem));
        return 0;
    };
    Send(header, WM_LBUTTONDOWN, 50, kY);
    Send(header, WM_MOUSEMOVE, 150, kY);
    Send(header, WM_MOUSEMOVE, 80, kY);
    Send(header, WM_LBUTTONUP, 80, kY);
    EXPECT_EQ((std::vector<int>{150, 80, 80}), widths);
    report.DeactivateAllSubItems();
    EXPECT_EQ(0, report.ActivateSubItem(0, 0));
    EXPECT_EQ(80, report.GetSubItemWidth(0));
}

TEST_F(ReportHeader, DoubleClickOnADividerFitsTheColumn)
{
    const auto fit = [this] {
        report.SetSubItemWidth(0, 50);
        Send(header, WM_LBUTTONDBLCLK, 50, kY);
        return report.GetSubItemWidth(0);
    };
    EXPECT_EQ(50, fit()); // no items
    Fill({"1", "a long text in this one", "22"});
    CRect rect;
    report.MeasureItem(1, 0, rect, 0);
    EXPECT_NE(50, rect.Width());
    EXPECT_EQ(rect.Width(), fit());
    parent.answer = [](NMHDR& told) { return told.code == RVN_DIVIDERDBLCLICK; };
    EXPECT_EQ(50, fit());
    parent.answer = nullptr;
    _RVSUBITEM fixed;
    fixed.format = RVSF_FIXEDWIDTH;
    report.RedefineSubItem(0, &fixed);
    EXPECT_EQ(50, fit());

    Show(RVS_TREE);
    _TREEITEM* const top = report.InsertTreeItem(nullptr, nullptr, "text");
    _TREEITEM* const child = report.InsertTreeItem(top, nullptr, "text");
    report.Expand(top, RVE_EXPAND);
    report.GetRowCount();
    CRect needed;
    report.MeasureItem(child->item, 0, needed, 0);
    EXPECT_EQ(needed.right + 2 * report.GetItemHeight(), fit()) << "indented";
}

TEST_F(ReportHeader, DragsColumnsToPlacesAndOffTheHeader)
{
    const struct
    {
        DWORD style;
        int from, to, y;
        const char* columns;
    } cases[] = {
        {0, 25, 130, kY, "bca"},
        {0, 125, 5, kY, "cab"},
        {0, 25, 290, kY, "bca"},  // behind the last
        {0, 75, 250, 100, "abc"}, // off the header
        {0, 75, 320, kY, "abc"},
        {RVS_DRAGCOLUMNS, 75, 250, 100, "ac"},
        {RVS_DRAGCOLUMNS, 75, 250, -30, "ac"},
        {RVS_DRAGCOLUMNS, 75, 70, kY, "abc"}, // no drag: its own place
    };
    for (const auto& each : cases)
    {
        Show(each.style);
        Drag(each.from, each.to, each.y);
        EXPECT_EQ(each.columns, Columns()) << &each - cases;
        EXPECT_EQ(nullptr, ::GetCapture());
        Click(25); // the header knows where its columns are now
        int subitem = -1;
        int ascending = 0;
        report.GetSortSettings(&subitem, &ascending);
        EXPECT_EQ(each.columns[0] - 'a', subitem) << &each - cases;
    }
}

TEST_F(ReportHeader, EndsADragThatGoesNowhere)
{
    const std::function<void()> ends[] = {
        [] { PressEscape(); },
        [] { ::ReleaseCapture(); },
        [this] { report.ActivateSubItem(report.DefineSubItem(3, std::make_unique<_RVSUBITEM>().get()), -1); },
        [this] { report.DestroyWindow(); },
    };
    for (const auto& end : ends)
    {
        SCOPED_TRACE(&end - ends);
        Show(RVS_DRAGCOLUMNS);
        Send(header, WM_LBUTTONDOWN, 25, kY);
        Send(header, WM_MOUSEMOVE, 130, kY);
        EXPECT_TRUE(DragWindow() && DropWindow());
        end();
        Send(header, WM_LBUTTONUP, 25, kY);
        EXPECT_FALSE(DragWindow() || DropWindow());
        EXPECT_EQ(report.m_hWnd ? "abc" : "", Columns().substr(0, 3));
    }
}

TEST_F(ReportHeader, MarksThePlaceOfADropWithTwoArrows)
{
    Send(header, WM_LBUTTONDOWN, 25, kY);
    Send(header, WM_MOUSEMOVE, 130, kY);
    CRect place;
    ::GetWindowRect(header, place);
    const int h = place.Height() + 20;
    CRect mark;
    ::GetWindowRect(DropWindow(), mark);
    EXPECT_EQ(CRect(CPoint(place.left + 144, place.top - 10), CSize(12, h)), mark);
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    ASSERT_EQ(COMPLEXREGION, ::GetWindowRgn(DropWindow(), region));
    const std::tuple<int, int, bool> points[] = {{4, 0, true},      {3, 0, false},    {1, 4, true},
                                                 {0, 4, false},     {6, 8, true},     {6, 9, false},
                                                 {6, h / 2, false}, {6, h - 9, true}, {6, h - 11, false},
                                                 {1, h - 5, true},  {4, h - 1, true}, {8, h - 1, false}};
    for (const auto& [x, y, inside] : points)
        EXPECT_EQ(inside, ::PtInRegion(region, x, y) != 0) << x << ", " << y - h;
    ::DeleteObject(region);

    EXPECT_EQ(0x88000000 | WS_VISIBLE | WS_CLIPSIBLINGS, ::GetWindowLong(DragWindow(), GWL_STYLE) & ~0u);
    ::GetWindowRect(DragWindow(), mark);
    EXPECT_EQ(CRect(CPoint(place.left + 105, place.top), CSize(50, place.Height())), mark);
    for (const DWORD style : {DWORD{0}, RVS_DRAGCOLUMNS}) // and back to its own place
    {
        report.ModifyStyle(0, style);
        Send(header, WM_LBUTTONDOWN, 25, kY);
        Send(header, WM_MOUSEMOVE, 130, kY);
        Send(header, WM_MOUSEMOVE, 25, kY);
        EXPECT_TRUE(DragWindow() && !DropWindow());
        Send(header, WM_LBUTTONUP, 25, kY);
        EXPECT_EQ("abc", Columns()) << "which changes nothing";
    }
}

TEST_F(ReportHeader, ExchangesColumnsWithItsList)
{
    auto list = std::make_unique<CReportSubItemListCtrl>();
    Show(RVS_DRAGCOLUMNS);
    ASSERT_TRUE(list->Create(WS_CHILD | WS_VISIBLE, CRect(0, 100, 300, 200), &report, 9));
    EXPECT_EQ(1, report.SetReportSubItemListCtrl(list.get()));
    Drag(75, 20, 120);
    Drag(25, 20, 120);
    EXPECT_EQ("c", Columns());
    EXPECT_EQ("ab", Entries(*list));

    const auto drag = [&](int x, int y, bool escape) {
        Send(*list, WM_LBUTTONDOWN, 5, 20); // the second entry
        Send(*list, WM_MOUSEMOVE, x, y - 100);
        EXPECT_EQ(y == kY, DropWindow() != nullptr);
        if (escape)
            PressEscape();
        Send(*list, WM_LBUTTONUP, x, y - 100);
        EXPECT_EQ(nullptr, DropWindow());
    };
    drag(10, kY, true);
    drag(10, 50, false);
    EXPECT_EQ("c", Columns());
    drag(10, kY, false);
    EXPECT_EQ("bc", Columns());
    EXPECT_EQ("a", Entries(*list));
    Send(*list, WM_LBUTTONDBLCLK, 5, 5);
    EXPECT_EQ("bca", Columns());
    EXPECT_EQ("", Entries(*list));

    report.UndefineSubItem(1);
    report.DeactivateSubItem(1);
    EXPECT_EQ("c", Entries(*list));
    {
        TestReport other;
        other.SetReportSubItemListCtrl(list.get());
        EXPECT_EQ(nullptr, report.GetReportSubItemListCtrl());
        EXPECT_EQ("", Entries(*list));
    }
    EXPECT_EQ(nullptr, list->GetReportCtrl());
    report.SetReportSubItemListCtrl(list.get());
    list.reset();
    EXPECT_EQ(nullptr, report.GetReportSubItemListCtrl());
}

// Whatever the parent does when it is told.
TEST_F(ReportHeader, LivesThroughWhatNotificationsDo)
{
    const std::function<void()> actions[] = {
        [this] { report.DestroyWindow(); },
        [this] { report.UndefineAllSubItems(); },
        [this] { report.DeactivateSubItem(0); },
        [this] { Show(RVS_DRAGCOLUMNS); },
    };
    const struct
    {
        std::function<void()> act;
        UINT told; // 0: whatever the parent is told
    } steps[] = {
        {[this] { Click(25); }, 0},
        {[this] { Send(header, WM_LBUTTONDBLCLK, 50, kY); }, 0},
        {[this] { Drag(50, 80); }, 0},
        {[this] { report.SetSubItemWidth(0, 70); }, 0},
        {[this] { Drag(25, 130); }, HDN_BEGINDRAG},
        {[this] { Drag(25, 130); }, HDN_ENDDRAG},
    };
    for (const auto& action : actions)
    {
        for (const auto& step : steps)
        {
            SCOPED_TRACE(testing::Message() << &action - actions << ", step " << &step - steps);
            Show(RVS_DRAGCOLUMNS);
            Fill({"1", "2"});
            bool done = false;
            const auto once = [&] {
                if (!std::exchange(done, true))
                    action();
                return false;
            };
            if (step.told)
                report.toldByHeader = [&](UINT code) { return code == step.told && once(); };
            else
                parent.answer = [&](NMHDR&) { return once(); };
            step.act();
            EXPECT_TRUE(done);
            parent.answer = nullptr;
            report.toldByHeader = nullptr;
            EXPECT_FALSE(DragWindow() || DropWindow());
        }
    }
    Show(0);
    report.toldByHeader = [](UINT code) { return code == HDN_BEGINDRAG; };
    Drag(25, 130);
    EXPECT_EQ("abc", Columns());
}

TEST_F(ReportHeader, LeavesNothingBehind)
{
    ExpectNothingLeft([this] {
        Send(header, WM_LBUTTONDOWN, 25, kY);
        for (const int x : {70, 130, 200, 130})
        {
            Send(header, WM_MOUSEMOVE, x, x == 200 ? 100 : kY);
            ::RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            ::UpdateWindow(DragWindow());
        }
        Send(header, WM_LBUTTONUP, 130, kY);
    });
    EXPECT_EQ("bca", Columns());
}

TEST_F(ReportHeader, ShowsTheFixedRowWithPreviewsAlone)
{
    const auto styles = [this] { return report.GetStyle() & (RVS_NOHEADER | RVS_FIXEDROW); };
    Show(RVS_FIXEDROW);
    report.SetShowHeader(0);
    EXPECT_EQ(RVS_NOHEADER, styles());
    EXPECT_EQ(0, report.GetShowHeader());
    report.SetShowReport(0);
    report.SetShowHeader(1);
    EXPECT_EQ(RVS_FIXEDROW, styles());
    report.SetShowReport(1);
    report.SetShowHeader(1);
    EXPECT_EQ(0u, styles());
    EXPECT_EQ(300, report.GetHeaderWidth());
}

TEST_F(ReportHeader, TellsOfARightClickWithItsColumn)
{
    std::vector<int> subitems;
    parent.answer = [&](NMHDR& told) {
        EXPECT_EQ(RVN_HEADERRCLICK, told.code);
        subitems.push_back(reinterpret_cast<_NMRVHEADER&>(told).subitem);
        return 0;
    };
    report.DeactivateSubItem(0);
    for (const int x : {25, 49, 50, 52, 99, 102, 200}) // some are near a divider
        Send(header, WM_RBUTTONUP, x, kY);
    EXPECT_EQ((std::vector<int>{1, 1, 2, 2, 2, -1, -1}), subitems);
}

TEST_F(ReportHeader, SaysOverAColumnHowAClickSorts)
{
    const auto tip = [this](int x) {
        Send(header, WM_MOUSEMOVE, x, kY);
        char said[64] = "";
        TOOLINFO tool = {TTTOOLINFOA_V1_SIZE, 0, header, 0, {}, nullptr, said, 0, nullptr};
        const HWND tips = ::FindWindow(TOOLTIPS_CLASSA, nullptr);
        ::SendMessage(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
        return std::string(said);
    };
    EXPECT_EQ("Sort by: a", tip(25));
    EXPECT_EQ("Sort by: c", tip(125));
    EXPECT_EQ("", tip(50)); // a divider
    report.ModifyProperty(RVP_SORTCAPTION, reinterpret_cast<__int64>("%n%s%s&"));
    EXPECT_EQ("%nb%s&", tip(75));
    report.ModifyStyle(0, RVS_NOHEADERSORT);
    EXPECT_EQ("", tip(75));
}

} // namespace
