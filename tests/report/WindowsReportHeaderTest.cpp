// The header of a report control and its list of hidden subitems, by the messages of the mouse.
#include "ReportHeaderCtrl.h"
#include "ReportSubItemListCtrl.h"
#include "tests/report/ReportFixture.h"
#include "tests/report/ReportPicture.h"
#include "vkgrafic/WindowColors.h"

namespace
{

// Columns a, b and c, 50 pixels each, in a header 300 pixels wide.
class ReportHeader : public ReportTest
{
protected:
    ReportHeader()
    {
        parent.ShowWindow(SW_SHOW); // active: Escape comes to it
        Show(WS_VISIBLE);
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
        Settle();
    }
};

TEST_F(ReportHeader, ClickSortsAndTheSecondClickTurns)
{
    Fill({"2", "3", "1"});
    UseSystem();
    int told = -1;
    parent.answer = [&](NMHDR& click) {
        EXPECT_EQ(RVN_COLUMNCLICK, click.code); // a sort mark changes no column
        told = reinterpret_cast<_NMRVHEADER&>(click).subitem;
        return parent.takes;
    };
    Follow(
        {
            {"0 a+ 1 2 3", [&] { ClickHeader(25); }},
            {"0 a- 3 2 1", [&] { ClickHeader(25); }},
            {"1 b+ 1 2 3", [&] { ClickHeader(75); }},
            {"0 a+ 1 2 3", [&] { ClickHeader(25); }},
            {"0 a- 3 2 1", [&] { ClickHeader(25, WM_LBUTTONDBLCLK); }},
            {"2 a- 3 2 1", [&] { parent.takes = true, ClickHeader(125); }},
            {"-1 a- 3 2 1", [&] { told = -1, DragHeader(25, 60); }}, // off the item, and back on the next one
            {"1 a- 3 2 1",
             [&] { report.ModifyStyle(0, RVS_NOHEADERSORT), parent.takes = false, ClickHeader(75); }},
            {"2 a- 3 2 1", [&] { DragHeader(25, 130), ClickHeader(75); }}, // b c a now
        },
        [&] { return Line(told, SortMark(), Rows()); });
    Show(WS_VISIBLE | RVS_CALLBACK);
    ClickHeader(125);
    EXPECT_EQ("2 ", Line(told, SortMark()));
}

TEST_F(ReportHeader, DividerChangesTheWidthWhileItIsDragged)
{
    std::string widths;
    parent.answer = [&](NMHDR& told) {
        const auto& change = reinterpret_cast<_NMREPORTVIEW&>(told);
        EXPECT_EQ(Line(RVN_COLUMNCHANGED, "-2 0 0"),
                  Line(told.code, change.item, change.subitem, reinterpret_cast<_NMRVHEADER&>(told).subitem));
        widths += Line(report.GetSubItemWidth(change.subitem)) + ' ';
        return 0;
    };
    MouseOnHeader(WM_LBUTTONDOWN, 50);
    MouseOnHeader(WM_MOUSEMOVE, 150);
    MouseOnHeader(WM_MOUSEMOVE, 80);
    MouseOnHeader(WM_LBUTTONUP, 80);
    MouseOnHeader(WM_LBUTTONDOWN, 80);
    report.DeactivateSubItem(0); // and nothing is dragged any more
    MouseOnHeader(WM_MOUSEMOVE, 120);
    MouseOnHeader(WM_LBUTTONUP, 120);
    report.hides = 1; // a column that is gone when its width could be told
    report.SetSubItemWidth(1, 60);
    EXPECT_EQ("150 80 80 60 50", widths + Line(report.GetSubItemWidth(1), report.GetSubItemWidth(2)));
    report.DeactivateAllSubItems();
    EXPECT_EQ(0, report.ActivateSubItem(0, 0));
    EXPECT_EQ(80, report.GetSubItemWidth(0));

    // Another window's columns are what the user, or the owner, has made of the header's items.
    DragHeader(80, 70);
    HDITEM item = {};
    item.mask = HDI_FORMAT;
    item.fmt = HDF_STRING | HDF_RIGHT;
    EXPECT_TRUE(report.GetHeaderCtrl()->SetItem(0, &item));
    Create();
    report.ActivateSubItem(0, 0);
    EXPECT_TRUE(report.GetHeaderCtrl()->GetItem(0, &item));
    EXPECT_EQ(Line(70, HDF_STRING | HDF_RIGHT), Line(report.GetSubItemWidth(0), item.fmt));
}

TEST_F(ReportHeader, DoubleClickOnADividerFitsTheColumn)
{
    const auto fit = [this] {
        report.SetSubItemWidth(0, 50);
        ClickHeader(50, WM_LBUTTONDBLCLK);
        return report.GetSubItemWidth(0);
    };
    const auto needs = [this](int item) {
        CRect rect;
        report.MeasureItem(item, 0, rect, 0);
        return rect.Width();
    };
    EXPECT_EQ(50, fit()); // no items
    Fill({"1", "a long text in this one", "22"});
    EXPECT_LT(60, needs(1));
    EXPECT_EQ(needs(1), fit());
    parent.takes = true;
    EXPECT_EQ(50, fit());
    parent.takes = false;
    Format(0, RVSF_FIXEDWIDTH);
    EXPECT_EQ(50, fit());

    Show(WS_VISIBLE | RVS_TREE);
    _TREEITEM* const top = report.InsertTreeItem(nullptr, nullptr, "text");
    const int child = report.GetItemIndex(report.InsertTreeItem(top, nullptr, "text"));
    report.Expand(top, RVE_EXPAND);
    report.UpdateWindow();
    EXPECT_EQ(needs(child) + 2 * kItemHeight, fit()) << "indented";

    Show(WS_VISIBLE | RVS_CALLBACK); // where only rows that are seen are asked for
    int last = 0;
    report.load = [&](_RVITEM& item) { return last = std::max(last, item.item), 0; };
    report.SetItemCount(1000);
    fit();
    EXPECT_GT(20, last);
}

TEST_F(ReportHeader, DragsColumnsToPlacesAndOffTheHeader)
{
    const std::tuple<DWORD, int, int, int, std::string> cases[] = {
        {0, 25, 130, kHeaderY, "bca"},
        {0, 125, 5, kHeaderY, "cab"},
        {0, 25, 290, kHeaderY, "bca"}, // after the last
        {0, 75, 250, 100, "abc"},      // off the header
        {0, 75, 320, kHeaderY, "abc"},
        {RVS_DRAGCOLUMNS, 75, 250, 100, "ac"},
        {RVS_DRAGCOLUMNS, 75, 250, -30, "ac"},
        {RVS_DRAGCOLUMNS, 75, 70, kHeaderY, "abc"}, // no drag: its own place
    };
    for (const auto& [style, from, to, y, columns] : cases)
    {
        Show(WS_VISIBLE | style);
        DragHeader(from, to, y);
        EXPECT_EQ(columns, Columns()) << Line(style, from, to, y);
        EXPECT_EQ(nullptr, ::GetCapture());
        EXPECT_EQ(columns != "abc", ::GetUpdateRect(report, nullptr, FALSE) != 0);
        report.refusesDrags = true;
        DragHeader(75, 5);
        EXPECT_EQ(columns, Columns()) << "refused";
        report.refusesDrags = false;
        ClickHeader(25); // the header knows where its columns are now
        EXPECT_EQ(columns.substr(0, 1) + '+', SortMark());
    }
}

TEST_F(ReportHeader, EndsADragThatGoesNowhere)
{
    const std::function<void()> ends[] = {
        [] { PressEscape(); },
        [] { ::ReleaseCapture(); },
        [this] { Define({"d"}); },
        [this] { report.DestroyWindow(); },
    };
    for (const auto& end : ends)
    {
        SCOPED_TRACE(&end - ends);
        Show(WS_VISIBLE | RVS_DRAGCOLUMNS);
        MouseOnHeader(WM_LBUTTONDOWN, 25);
        MouseOnHeader(WM_MOUSEMOVE, 130);
        EXPECT_TRUE(DragWindow() && DropWindow());
        end();
        EXPECT_FALSE(DragWindow() || DropWindow());
        MouseOnHeader(WM_LBUTTONUP, 130);
        EXPECT_EQ(report.m_hWnd ? "abc" : "", Columns().substr(0, 3));
    }
}

TEST_F(ReportHeader, MarksThePlaceOfADropWithTwoArrows)
{
    MouseOnHeader(WM_LBUTTONDOWN, 75);
    MouseOnHeader(WM_MOUSEMOVE, 130);
    const CRect place = PlaceOf(header);
    ReportPicture picture;
    const int h = place.Height() + 20;
    EXPECT_EQ(CRect(CPoint(place.left + 144, place.top - 10), CSize(12, h)), PlaceOf(DropWindow()));
    EXPECT_EQ(CRect(CPoint(place.left + 105, place.top), CSize(50, place.Height())), PlaceOf(DragWindow()));
    EXPECT_EQ(0x88000000 | WS_VISIBLE | WS_CLIPSIBLINGS, ::GetWindowLong(DragWindow(), GWL_STYLE) & ~0u);
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    ASSERT_EQ(COMPLEXREGION, ::GetWindowRgn(DropWindow(), region));
    const std::tuple<int, int, bool> points[] = {
        {4, 0, true},  {3, 0, false},      {1, 4, true},     {10, 4, true},    {11, 4, false},   {6, 8, true},
        {6, 9, false}, {6, h - 11, false}, {6, h - 9, true}, {1, h - 5, true}, {8, h - 1, false}};
    for (const auto& [x, y, inside] : points)
        EXPECT_EQ(inside, ::PtInRegion(region, x, y) != 0) << x << ", " << y - h;
    ::DeleteObject(region);

    MouseOnHeader(WM_MOUSEMOVE, 75); // and back to its own place
    EXPECT_TRUE(DragWindow() && !DropWindow());
    report.ModifyStyle(0, RVS_DRAGCOLUMNS);
    for (const auto& [y, lined] : {std::pair(100, true), {kHeaderY, false}}) // what a drop removes has a line
    {
        MouseOnHeader(WM_MOUSEMOVE, 75, y);
        ::UpdateWindow(DragWindow());
        picture.Take(DragWindow());
        const CRect inside(2, 2, 46, 15);
        EXPECT_EQ(lined, picture.Count(inside, ::GetSysColor(COLOR_GRAYTEXT)) > 20);
        EXPECT_EQ(lined, picture.Count(inside, ::GetSysColor(COLOR_BTNTEXT)) == 0);
    }
    MouseOnHeader(WM_LBUTTONUP, 75);
    EXPECT_EQ("abc", Columns()) << "which changes nothing";
}

class ChoosingList : public CReportSubItemListCtrl
{
public:
    int hidden = -1;

protected:
    bool AcceptSubItem(int subitem) override { return subitem != hidden; }
};

TEST_F(ReportHeader, ExchangesColumnsWithItsList)
{
    auto list = std::make_unique<ChoosingList>();
    Show(WS_VISIBLE | RVS_DRAGCOLUMNS);
    ASSERT_TRUE(list->Create(WS_CHILD | WS_VISIBLE, CRect(0, 100, 300, 200), &report, 9));
    EXPECT_EQ(1, report.SetReportSubItemListCtrl(list.get()));
    const auto pull = [&](int x, int y, bool escape) {
        Send(*list, WM_LBUTTONDOWN, 5, 20); // the second entry
        Send(*list, WM_MOUSEMOVE, x, y - 100);
        EXPECT_EQ(y == kHeaderY, DropWindow() != nullptr);
        if (escape)
            PressEscape();
        Send(*list, WM_LBUTTONUP, x, y - 100);
        EXPECT_EQ(nullptr, DropWindow());
    };
    Follow(
        {
            {"ac b", [&] { DragHeader(75, 20, 120); }},
            {"c ab", [&] { DragHeader(25, 20, 120); }},
            {"c ab", [&] { pull(10, kHeaderY, true); }},
            {"c ab", [&] { pull(10, 50, false); }},
            {"c ab", [&] { Send(*list, WM_LBUTTONDBLCLK, 5, 90); }}, // below the entries
            {"bc a", [&] { UseSystem(), pull(10, kHeaderY, false), usesSystem = false; }},
            {"bca ", [&] { Send(*list, WM_LBUTTONDBLCLK, 5, 5); }},
            {"ba c", [&] { report.DeactivateSubItem(2); }},
            {"a bc", [&] { report.DeactivateSubItem(1); }},
            {"a b", [&] { list->hidden = 2, report.DeactivateSubItem(2), list->Refresh(); }},
            {"a c", [&] { list->hidden = -1, report.UndefineSubItem(1); }},
        },
        [&] { return Line(Columns(), Entries(*list)); });
    EXPECT_EQ(0, list->SendMessage(LB_SETCURSEL, 0));
    report.DeactivateSubItem(0);
    EXPECT_EQ(0, list->SendMessage(LB_GETCURSEL)) << "what is chosen stays";
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

TEST_F(ReportHeader, ShowsTheFixedRowWithPreviewsAlone)
{
    const auto show = [this](int rows, int columns) {
        report.SetShowReport(rows);
        report.SetShowHeader(columns);
        const DWORD style = report.GetStyle();
        return Line(report.GetShowHeader(), (style & RVS_NOHEADER) != 0, (style & RVS_FIXEDROW) != 0);
    };
    report.ModifyStyle(0, RVS_FIXEDROW);
    EXPECT_EQ("1 0 0", show(1, 1));
    EXPECT_EQ("0 1 0", show(1, 0));
    EXPECT_EQ("1 0 1", show(0, 1));
    EXPECT_EQ(300, report.GetHeaderWidth());
}

TEST_F(ReportHeader, ShowsCaptionsMarksAndWhatIsPressed)
{
    const COLORREF text = ::GetSysColor(COLOR_BTNTEXT), dark = ::GetSysColor(COLOR_3DDKSHADOW),
                   high = ::GetSysColor(COLOR_HIGHLIGHT), face = ::GetSysColor(COLOR_BTNFACE);
    CRect client;
    ::GetClientRect(header, client);
    const int middle = (client.bottom - 1 - 4) / 2;
    const CRect left(0, 0, 25, 15), right(25, 0, 49, 15), mark(37, 0, 44, 15), second(24, 0, 33, 15),
        next(50, 0, 75, 15), top(37, middle, 44, middle + 1), bottom(37, middle + 3, 44, middle + 4),
        gap(83, 0, 87, 15), ground(70, 1, 74, client.bottom - 2);
    CReportHeaderCtrl& shown = *report.GetHeaderCtrl();
    ReportPicture picture;
    ExpectScenes(
        picture, [&] { ::UpdateWindow(header), picture.Take(header); },
        {
            {[] {}, {Some(left, text), None(right, text), Some(next, text)}},
            {[&] { report.SortItems(0, 1); }, {{top, dark, 1}, {bottom, dark, 7}, None(second, high)}},
            {[&] { report.SortItems(0, 0); }, {{top, dark, 7}, {bottom, dark, 1}}},
            {[&] { shown.SetItemFiltered(0, true); },
             {{mark, dark, 16}, Some(second, high), None(mark, high)}},
            {[&] { shown.SetItemFiltered(0, false), Format(1, HDF_RIGHT), report.SortItems(1, 1); },
             {None(next, text), Some(CRect(75, 0, 83, 15), text), None(gap, text), All(ground, face)}},
            {[&] { VkGrafic::UseDarkColors(parent, true); },
             {All(ground, VkGrafic::DarkColor(VkGrafic::UiColor::Face)),
              Some(CRect(75, 0, 83, 15), VkGrafic::DarkColor(VkGrafic::UiColor::FaceText))}},
            {[&] { VkGrafic::UseDarkColors(parent, false); }, {All(ground, face)}},
            {[&] { report.ModifyProperty(RVP_KEYS, RVK_COLUMNS), Key(VK_RIGHT, {VK_CONTROL}); },
             {Some(CRect(1, 1, 48, 2), face ^ RGB(255, 255, 255))}}, // dots
            {[&] { MouseOnHeader(WM_LBUTTONDOWN, 75); }, {None(ground, face)}},
            {[&] { MouseOnHeader(WM_MOUSEMOVE, 60, 3); }, {None(ground, face)}},
            {[&] { MouseOnHeader(WM_MOUSEMOVE, 48); }, {All(ground, face)}}, // not on it any more
        });
    MouseOnHeader(WM_LBUTTONUP, 48);
}

TEST_F(ReportHeader, GoesWithTheColumns)
{
    report.SetSubItemWidth(2, 400);
    report.ScrollWindow(SB_HORZ, 70);
    const CRect shown = PlaceOf(header, report);
    EXPECT_EQ("-70 0 300", Line(shown.left, shown.top, shown.right));
    report.ScrollWindow(SB_HORZ, 200);
    MouseOnHeader(WM_LBUTTONDOWN, 498); // on the last divider
    MouseOnHeader(WM_MOUSEMOVE, 220);
    EXPECT_EQ(200, report.GetScrollPos32(SB_HORZ)) << "until the mouse lets it go";
    MouseOnHeader(WM_LBUTTONUP, 220);
    EXPECT_EQ(0, report.GetScrollPos32(SB_HORZ));
    report.SetSubItemWidth(2, 400);
    report.ScrollWindow(SB_HORZ, 70);
    report.ModifyStyle(0, RVS_DRAGCOLUMNS);
    DragHeader(125, 30); // where the header is not seen
    EXPECT_EQ("ab", Columns());
}

TEST_F(ReportHeader, TellsOfARightClickWithItsColumn)
{
    std::vector<int> subitems;
    parent.answer = [&](NMHDR& told) {
        EXPECT_EQ(RVN_HEADERRCLICK, told.code);
        return subitems.push_back(reinterpret_cast<_NMRVHEADER&>(told).subitem), 0;
    };
    report.DeactivateSubItem(0);
    for (const int x : {25, 49, 50, 52, 99, 102, 200}) // some are near a divider
        MouseOnHeader(WM_RBUTTONUP, x);
    EXPECT_EQ((std::vector<int>{1, 1, 2, 2, 2, -1, -1}), subitems);
}

TEST_F(ReportHeader, SaysOverAColumnHowAClickSorts)
{
    const auto tip = [this](int x) {
        MouseOnHeader(WM_MOUSEMOVE, x);
        char said[64] = "";
        TOOLINFO tool = {TTTOOLINFOA_V1_SIZE, 0, header, 0, {}, nullptr, said, 0, nullptr};
        const HWND tips = ::FindWindow(TOOLTIPS_CLASSA, nullptr);
        ::SendMessage(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
        return std::string(said);
    };
    const auto caption = [this](const char* text) {
        report.ModifyProperty(RVP_SORTCAPTION, reinterpret_cast<__int64>(text));
    };
    for (int window = 0; window < 2; ++window, Show(WS_VISIBLE)) // another one says it, too
        EXPECT_EQ("Sort by: a", tip(25));
    EXPECT_EQ("Sort by: c", tip(125));
    EXPECT_EQ("", tip(50)); // a divider
    Follow(
        {
            {"%nb%s&", [&] { caption("%n%s%s&"); }},
            {"b", [&] { caption("%s"); }},
            {"", [&] { MouseOnHeader(WM_LBUTTONDOWN, 50); }}, // drags a divider
            {"", [&] { MouseOnHeader(WM_LBUTTONUP, 50), tip(75), MouseOnHeader(WM_LBUTTONDOWN, 75); }},
            {"", [&] { ::ReleaseCapture(), report.ModifyStyle(0, RVS_NOHEADERSORT); }},
            {"", [&] { report.ModifyStyle(RVS_NOHEADERSORT, RVS_CALLBACK); }},
        },
        [&] { return tip(75); });
}

} // namespace
