// What the report control looks like, by the pixels that carry a meaning.
#include "tests/report/ReportFixture.h"
#include "tests/report/ReportPicture.h"
#include "vkgrafic/WindowColors.h"

namespace
{

constexpr int kWidth = ReportPicture::kWidth;
constexpr int kHeight = ReportPicture::kHeight;
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kOdd = RGB(1, 2, 3);

class ReportPaint : public ReportTest
{
protected:
    // A control without a header.
    void Begin(DWORD style, const Texts& texts = {"1", "2", "3", "4"})
    {
        Show(style | RVS_NOHEADER, texts);
        report.DeleteAllColors();
        report.InsertColor(0, kOdd);
        report.InsertColor(1, kRed);
    }
    void Focus(bool focused)
    {
        report.SendMessage(focused ? WM_SETFOCUS : WM_KILLFOCUS, reinterpret_cast<WPARAM>(parent.m_hWnd));
    }
    void Paint()
    {
        picture.dc.FillSolidRect(0, 0, kWidth, kHeight, RGB(9, 9, 9));
        report.DrawCtrl(&picture.dc);
    }
    void PaintPart(const CRect& clip)
    {
        const int saved = picture.dc.SaveDC();
        picture.dc.IntersectClipRect(clip);
        Paint();
        picture.dc.RestoreDC(saved);
    }
    // Whether a paint looks different after it.
    bool Changes(const std::function<void()>& act)
    {
        Paint();
        const std::vector<DWORD> before = picture.Pixels();
        act();
        Paint();
        return picture.Pixels() != before;
    }
    COLORREF Color(int slot) { return report.GetSystemColor(slot); }
    // Images of one colour each.
    static void MakeImages(CImageList& list, int size, std::initializer_list<DWORD> colors)
    {
        ASSERT_TRUE(list.Create(size, size, ILC_COLOR32, 1, 1));
        for (const DWORD color : colors)
        {
            const std::vector<DWORD> pixels(static_cast<std::size_t>(size * size), color);
            CBitmap bitmap;
            bitmap.CreateBitmap(size, size, 1, 32, pixels.data());
            list.Add(&bitmap, static_cast<CBitmap*>(nullptr));
        }
    }

    void ExpectScenes(std::initializer_list<Scene> scenes)
    {
        ::ExpectScenes(
            picture, [this] { Paint(); }, scenes);
    }

    ReportPicture picture;
};

CRect CellAt(int row, int column)
{
    return {kColumnWidth * column, kItemHeight * row, kColumnWidth * (column + 1), kItemHeight * (row + 1)};
}
CRect Blank(int row) // of a row, where it has no text
{
    return {60, kItemHeight * row + 2, 140, kItemHeight * row + 18};
}

TEST_F(ReportPaint, RowsAndTextsHaveTheColoursOfTheirState)
{
    const COLORREF window = Color(RVSC_WINDOW), high = Color(RVSC_HIGHLIGHT), face = Color(RVSC_FACE),
                   inactive = Color(RVSC_INACTIVEHIGHLIGHT), text = Color(RVSC_TEXT),
                   highText = Color(RVSC_HIGHLIGHTTEXT);
    const auto show = [&](DWORD style, bool focused) {
        return [=, this] {
            Begin(style);
            report.SetColors(3, -1, 1);
            Select(2, 1);
            Focus(focused);
        };
    };
    const auto colors = [&](COLORREF row0, COLORREF row1, COLORREF row2, COLORREF selectedText) {
        return std::vector<Spot>{All(Blank(0), row0),      All(Blank(1), row1),
                                 All(Blank(2), row2),      All(Blank(3), kRed),
                                 Some(CellAt(0, 0), text), Some(CellAt(2, 0), selectedText)};
    };
    ExpectScenes({
        {show(0, true), colors(window, high, high, highText)},
        {show(0, false), colors(window, window, window, text)},
        {show(RVS_KEEPSELECTION, false), colors(window, inactive, inactive, text)},
        {[&] { report.ModifyProperty(RVP_INACTIVEHIGHLIGHT, kRed); }, colors(window, kRed, kRed, text)},
        {[&] { report.ModifyProperty(RVP_INACTIVEHIGHLIGHT, -1); }, colors(window, inactive, inactive, text)},
        {show(RVS_ALTERNATEROWS, false), colors(window, kOdd, window, text)},
        {show(RVS_ALTERNATEROWS, true), colors(window, high, high, highText)},
        {show(RVS_FACEBACKGROUND, false), colors(face, face, face, text)},
        {[&] { show(0, true)(), report.SendMessage(WM_KILLFOCUS, reinterpret_cast<WPARAM>(header)); },
         {All(Blank(2), high)}}, // a child has the focus
        {[&] { Begin(0), report.SetColors(0, 1, -1); }, {Some(CellAt(0, 0), kRed), None(CellAt(1, 0), kRed)}},
        {[&] { report.SetColors(0, 7, -1); }, {Some(CellAt(0, 0), 0), None(CellAt(0, 0), kRed)}}, // no such
        {[&] { report.SetColors(0, 1, 1), Select(0, 0), Focus(true); }, {None(CellAt(0, 0), kRed)}},
        {[&] { report.ModifyStyle(0, RVS_KEEPTEXTCOLOR); }, {Some(CellAt(0, 0), kRed)}},
        {[&] { report.SetColors(0, -1, -1); }, {Some(CellAt(0, 0), highText)}},
        {[&] { Focus(false); }, {Some(CellAt(0, 0), text)}},
    });
}

TEST_F(ReportPaint, IsDarkWithinADarkFrameAndAsBeforeAfterwards)
{
    using VkGrafic::UiColor;
    const auto use = [&](bool dark) { return [&, dark] { VkGrafic::UseDarkColors(parent, dark); }; };
    const auto dark = [](UiColor color) { return VkGrafic::DarkColor(color); };
    const auto red = [&](UiColor ground) { return VkGrafic::ReadableColor(kRed, dark(ground)); };
    const COLORREF window = Color(RVSC_WINDOW);
    Begin(0);
    report.SetColors(0, 1, -1);
    report.InsertColor(2, RGB(255, 250, 230));
    report.SetColors(1, -1, 2); // the owner's light ground, and no colour for its text
    const auto paint = [this] { Paint(); };
    ::ExpectScenes(picture, paint,
                   {{[] {}, {All(Blank(3), window), Some(CellAt(0, 0), kRed)}},
                    {use(true),
                     {All(Blank(3), dark(UiColor::Window)), Some(CellAt(0, 0), red(UiColor::Window)),
                      Some(CellAt(3, 0), dark(UiColor::WindowText)), All(Blank(1), RGB(255, 250, 230)),
                      None(CellAt(1, 0), dark(UiColor::WindowText))}},
                    {use(false), {All(Blank(3), window), Some(CellAt(0, 0), kRed)}}});
    ReportParent other;
    use(true)();
    EXPECT_FALSE(VkGrafic::WindowColors(other).IsDark());
}

TEST_F(ReportPaint, TextsHaveTheirPlaceAndFont)
{
    Begin(0);
    const COLORREF text = Color(RVSC_TEXT);
    const CRect left(0, 0, 17, 20), middle(17, 0, 33, 20), right(33, 0, 50, 20);
    ExpectScenes({
        {[&] { Format(0, HDF_LEFT); }, {Some(left, text), None(middle, text), None(right, text)}},
        {[&] { Format(0, HDF_CENTER); }, {None(left, text), Some(middle, text), None(right, text)}},
        {[&] { Format(0, HDF_RIGHT); }, {None(left, text), None(middle, text), Some(right, text)}},
        {[&] { Begin(RVS_TREE, {"a long text in a row of a tree"}); }, {None(Blank(0), text)}},
        {[&] { report.SetTreeSubItem(report.GetItemHandle(0), 0); },
         {Some(Blank(0), text)}}, // in all columns
    });
    EXPECT_TRUE(Changes([&] { report.SetItemState(0, RVIS_BOLD, RVIS_BOLD); }));
    EXPECT_TRUE(Changes([&] { report.SetItemText(0, 0, "a b c"); }));
    EXPECT_FALSE(Changes([&] { report.SetItemText(0, 0, "a\nb\tc"); })) << "one line, whatever is in it";
}

TEST_F(ReportPaint, GridAndFocusLieBetweenTheRows)
{
    constexpr int kGrid = kItemHeight + 1;
    constexpr int kBottom = 4 * kGrid;
    const COLORREF grid = Color(RVSC_GRID), window = Color(RVSC_WINDOW), high = Color(RVSC_HIGHLIGHT);
    ASSERT_NE(grid, window);
    const auto focusOn = [&](int row, int column) { report.AdjustFocus(row, column), Focus(true); };
    const auto line = [](int x) { return CRect(x, 0, x + 1, kItemHeight); };
    const CRect edge(0, kItemHeight, 1, 2 * kItemHeight); // of the second row
    ExpectScenes({
        {[&] { Begin(RVS_HORIZONTALGRID | RVS_VERTICALGRID); },
         {All(line(0), grid), All(line(49), grid), All(line(kWidth - 1), grid),
          None(CRect(50, 0, 99, 20), grid), All(CRect(0, 20, kWidth, 21), grid),
          None(CRect(0, kBottom, kWidth, kHeight), grid)}},
        {[&] { report.ModifyStyle(0, RVS_EXTENDGRID); },
         {All(CRect(0, kBottom + 20, kWidth, kBottom + kGrid), grid), Some(CRect(49, 195, 50, 196), grid)}},
        {[&] { Begin(RVS_HORIZONTALGRID), focusOn(1, -1); }, {All(CRect(0, 41, kWidth, 42), grid)}},
        {[&] { Begin(RVS_CELLFOCUS), Select(1, 1), Focus(true); }, {{edge, high, kItemHeight / 2}}},
        {[&] { focusOn(1, 1); }, {All(edge, high), Some(CellAt(1, 1), window)}}, // the cell has it
        {[&] { Focus(false); }, {All(CellAt(0, 1), window), All(CellAt(1, 1), window)}},
        {[&] { report.ModifyProperty(RVP_GRIDSTYLE, 0), Begin(RVS_HORIZONTALGRID); },
         {Some(CRect(0, 20, kWidth, 21), grid), Some(CRect(0, 20, kWidth, 21), window)}}, // dots
        {[&] { Begin(RVS_FIXEDROW), focusOn(-1, -1); }, {}},
    });
    EXPECT_TRUE(Changes([&] { Focus(false); }));
    focusOn(-1, 1);
    EXPECT_TRUE(Changes([&] { Focus(false); }));
}

TEST_F(ReportPaint, ChecksAndBoxesShowTheirState)
{
    Begin(RVS_TREE, {"0", "1", "2", "3", "4", "5", "6", "7", "8"});
    report.ModifyProperty(RVP_CHECKSIZE, 13 | 13 << 16);
    for (int check = 0; check < 9; ++check)
        report.SetItemCheck(check, 1, check);
    Paint();
    std::map<std::vector<COLORREF>, int> shapes; // and the state that looks so
    int reds[9] = {};
    for (int check = 0; check < 9; ++check)
    {
        const CRect cell = CellAt(check, 1);
        std::vector<COLORREF> pixels;
        for (int at = 0; at < cell.Width() * cell.Height(); ++at)
            pixels.push_back(picture.At(cell.left + at % cell.Width(), cell.top + at / cell.Width()));
        reds[check] = picture.Count(CRect(cell.left, cell.top, cell.left + 10, cell.bottom), kRed);
        EXPECT_EQ((check & 2) != 0, reds[check] > 5) << check;
        EXPECT_EQ(check == 7 ? 6 : check % 8, shapes.emplace(pixels, check).first->second)
            << "each looks different";
    }
    EXPECT_LT(reds[6], reds[2]) << "the cross of a radio button lies more to the right";

    _TREEITEM* const item = report.GetItemHandle(0);
    report.InsertTreeItem(item, nullptr, "x");
    const CRect indent(0, 0, kItemHeight, kItemHeight); // of the first level, with the box in its middle
    const CRect sign(8, 8, 12, 12);
    const COLORREF shadow = Color(RVSC_SHADOW), text = Color(RVSC_TEXT);
    ExpectScenes({
        {[&] { report.Expand(item, RVE_COLLAPSE); },
         {{indent, shadow, 32}, All(CRect(6, 6, 15, 7), shadow), {indent, text, 9}, {sign, text, 7}}},
        {[&] { report.Expand(item, RVE_EXPAND); },
         {{indent, shadow, 32}, {indent, text, 5}, {sign, text, 4}}},
        {[] {}, {None(CRect(0, kItemHeight, 2 * kItemHeight, 2 * kItemHeight), shadow)}}, // a child's
    });
}

TEST_F(ReportPaint, ImagesAreThoseOfTheirLists)
{
    CImageList images;
    CImageList checks;
    MakeImages(images, 8, {0x00FF0000});
    MakeImages(checks, 10, {0x0000FF00, 0x00FF0000});
    Begin(0);
    const auto image = [&](int number) { return [&, number] { report.SetItemImage(1, 0, number); }; };
    const auto blend = [&](int mode) { return [&, mode] { report.ModifyProperty(RVP_IMAGEMODE, mode); }; };
    const CRect cell = CellAt(1, 0), half(0, 0, kWidth, 10);
    ExpectScenes({
        {[&] { report.SetImageList(&images, &checks), report.SetItemImage(1, 0, 0); }, {{cell, kRed, 64}}},
        {image(1), {None(cell, kRed)}},
        {image(70000), {None(cell, kRed)}},
        {image(-1), {None(cell, kRed)}},
        {[&] { report.SetItemImage(1, 0, 0), Select(1, 1), Focus(true); }, {{cell, kRed, 64}}},
        {blend(RVIB_BLEND25), {{cell, kRed, 16}}},
        {blend(RVIB_BLEND50), {{cell, kRed, 32}}},
        {[&] { report.SetItemImage(1, 0, -1), report.SetItemCheck(1, 1, 1); }, {{CellAt(1, 1), kRed, 100}}},
        {[&] { Focus(false), report.SetItemHeight(6); },
         {{CRect(50, 6, 100, 12), kRed, 60}, {half, kRed, 40}}}, // cut
        {[&] { report.SetItemHeight(20), report.SetImageList(nullptr, nullptr); }, {None(cell, kRed)}},
    });
    __int64 size = 0;
    EXPECT_TRUE(report.GetProperty(RVP_CHECKSIZE, &size) && size == (8 | 8 << 16)) << "that of drawn boxes";
}

// Opaque, cut out, with alpha; in a cell or on its edge.
TEST_F(ReportPaint, CopiesLookLikeTheImages)
{
    std::vector<DWORD> pixels;
    for (DWORD i = 0; i < 16 * 8; ++i)
        pixels.push_back(i % 5 == 0 ? 0x00FF00FF : i % 5 == 1 ? 0x80400000 : 0xFF000000 | i);
    CBitmap bitmap, other;
    bitmap.CreateBitmap(16, 8, 1, 32, pixels.data());
    other.CreateBitmap(8, 8, 1, 32, std::vector<DWORD>(64, 0xFFFF0000).data());
    for (const UINT flags : {UINT{ILC_COLOR24 | ILC_MASK}, UINT{ILC_COLOR32}})
    {
        CImageList images;
        ASSERT_TRUE(images.Create(8, 8, flags, 2, 1));
        images.Add(&bitmap, RGB(255, 0, 255));
        Begin(RVS_ALTERNATEROWS);
        for (int item = 0; item < 4; ++item)
            report.SetItemImage(item, 0, item - 1);
        const auto look = [&](int keep, bool again = true) {
            report.ModifyProperty(RVP_KEEPIMAGES, keep);
            if (again)
                report.SetImageList(&images, nullptr);
            Paint();
            std::vector<DWORD> shown = picture.Pixels();
            for (DWORD& pixel : shown)
                pixel &= 0xFFFFFF; // its colour
            return shown;
        };
        const std::function<void()> steps[] = {
            [] {}, [&] { Select(1, 1), Focus(true); }, [&] { report.SetSubItemWidth(0, 17); },
            [&] { report.SetItemHeight(5); }, [&] { report.ModifyProperty(RVP_IMAGEMODE, RVIB_BLEND50); }};
        for (const auto& step : steps)
        {
            step();
            EXPECT_TRUE(look(0) == look(1)) << "step " << &step - steps << " with " << flags;
        }
        report.ModifyProperty(RVP_IMAGEMODE, RVIB_NONE);
        const std::vector<DWORD> before = look(1);
        ::ImageList_Replace(images.GetSafeHandle(), 0, other, nullptr);
        EXPECT_TRUE(flags == ILC_COLOR32 || before == look(1, false)) << "the former's are drawn by the list";
        EXPECT_TRUE(before != look(1));
    }
}

TEST_F(ReportPaint, FixedRowPreviewAndEmptyTextStandApart)
{
    const int strip = kItemHeight + 2 * ::GetSystemMetrics(SM_CYFIXEDFRAME);
    const COLORREF text = Color(RVSC_TEXT), window = Color(RVSC_WINDOW);
    const CRect all(0, 0, kWidth, kHeight), middle(110, 2, 190, 22), below(0, 30, kWidth, kHeight);
    const CRect preview(0, 2 * kItemHeight, kWidth, 2 * kItemHeight + 30);
    const auto emptyText = [&](const char* empty) {
        report.ModifyProperty(RVP_EMPTYTEXT, reinterpret_cast<__int64>(empty));
    };
    ExpectScenes({
        {[&] { Begin(0, {}); }, {Some(middle, text), None(CRect(0, 22, kWidth, kHeight), text)}},
        {[&] { emptyText("%s%n"); }, {Some(middle, text)}},
        {[&] { emptyText(""); }, {All(all, window)}},
        {[&] { emptyText("none"), Begin(0, {""}); }, {All(all, window)}}, // a row is there
        {[&] { Begin(RVS_FIXEDROW), report.SetItemText(-1, 0, "fixed"); },
         {All(CRect(150, 0, 151, 1), Color(RVSC_HIGHLIGHTEDGE)),
          All(CRect(150, strip - 1, 151, strip), Color(RVSC_DARKSHADOW)),
          All(CRect(60, 3, 150, strip - 3), Color(RVSC_FACE)), Some(CRect(0, 0, 50, strip), text)}},
        {[&] { Begin(0), report.SetItemPreview(1, "the preview", 30, 1); }, {Some(preview, kRed)}},
        {[&] { report.SetItemPreview(1, "the preview", 30); }, {Some(preview, text), None(preview, kRed)}},
    });

    bool draws = true;
    report.drawPreview = [&](_NMRVITEMDRAW& draw) {
        EXPECT_STREQ("the preview", draw.item->text); // selected when it is drawn here
        EXPECT_EQ(draws, (draw.item->state & RVIS_SELECTED) != 0);
        EXPECT_EQ(preview, CRect(draw.rect));
        return draws;
    };
    ExpectScenes({
        {[&] { Select(1, 1), Focus(true); }, {None(preview, text)}},
        {[&] { draws = false, Focus(false); }, {Some(preview, text)}},
    });
    report.drawPreview = [](_NMRVITEMDRAW&) { return 0; };
    ExpectScenes({
        {[&] { report.SetShowReport(FALSE); }, {Some(CRect(0, 0, kWidth, 30), text), None(below, text)}},
        {[&] { report.SetItemPreview(0, "A", 15); }, {Some(CRect(0, 0, kWidth, 15), text), None(all, kRed)}},
    });
}

// A picture of two columns, red and green, is repeated behind the rows and goes with them.
TEST_F(ReportPaint, PictureLiesBehindTheRows)
{
    Begin(RVS_FIXEDROW);
    ShowBitmap(report, 2, 24, {'\0', '\0', '\xFF', '\0', '\xFF', '\0', '\0', '\0'});
    Select(2, 2);
    Focus(true);
    const COLORREF green = RGB(0, 255, 0);
    const int top = report.GetVisibleCount(0) ? kItemHeight + 2 * ::GetSystemMetrics(SM_CYFIXEDFRAME) : 0;
    const auto scroll = [&](int left) { return [=, this] { report.ScrollWindow(SB_HORZ, left); }; };
    const auto spots = [&](COLORREF even, COLORREF odd) {
        const CRect column(70, top + 2, 71, top + 18), next(71, top + 62, 72, top + 78);
        return std::vector<Spot>{All(column, even), All(next, odd),
                                 All(CRect(70, kHeight - 9, 71, kHeight), even), // below the rows
                                 All(CRect(70, top + 43, 90, top + 57), Color(RVSC_HIGHLIGHT)),
                                 All(CRect(150, 4, 200, 20), Color(RVSC_FACE))}; // of the fixed row
    };
    ExpectScenes({
        {scroll(0), spots(kRed, green)},
        {scroll(1), spots(green, kRed)},
        {scroll(2), spots(kRed, green)},
        {[&] {
             report.SetSubItemWidth(0, 51), report.ModifyStyle(0, RVS_CELLFOCUS), report.AdjustFocus(2, 1);
         },
         {All(CRect(50, top + 43, 51, top + 57), Color(RVSC_HIGHLIGHT)), // the cell's picture ends with it
          All(CRect(52, top + 43, 53, top + 57), kRed)}},
        {[&] { EXPECT_EQ(1, report.SetBkImage(0u)); },
         {All(CRect(70, kHeight - 9, 90, kHeight), Color(RVSC_WINDOW))}},
    });
    EXPECT_EQ(0, report.SetBkImage("no such file"));
}

TEST_F(ReportPaint, OwnerDrawsItsCells)
{
    Begin(0);
    report.SetState(1, RVIS_OWNERDRAWN, RVIS_OWNERDRAWN);
    parent.takes = true;
    parent.answer = [&](NMHDR& told) {
        const auto& draw = reinterpret_cast<_NMRVITEMDRAW&>(told);
        EXPECT_EQ(Line(RVN_ITEMDRAW, 1), Line(told.code, draw.item->item));
        EXPECT_EQ(CellAt(1, draw.item->subitem), CRect(draw.rect));
        ::SetTextColor(draw.dc, kRed);
        return parent.takes;
    };
    const COLORREF text = Color(RVSC_TEXT);
    ExpectScenes({
        {[] {}, {None(CellAt(1, 0), text), Some(CellAt(2, 0), text)}},
        {[&] { parent.takes = false; },
         {Some(CellAt(1, 0), text), None(CellAt(1, 0), kRed)}}, // in the colour before
    });
}

TEST_F(ReportPaint, PaintsNoMoreThanTheClipBoxAsksFor)
{
    Begin(RVS_FIXEDROW, {"1", "2"});
    std::string calls;
    report.moment = [&](std::string_view kind) { calls += kind == "record" ? "" : std::string(kind) + ", "; };
    Paint();
    EXPECT_EQ(
        "background, row fixed, item, item, item, row even, item, item, item, row odd, item, item, item, ",
        calls);
    Begin(0);
    Select(1, 1);
    Focus(true);
    calls.clear();
    PaintPart(CellAt(1, 1));
    EXPECT_EQ("background, row odd, item selected, ", calls);
}

// A window so large that it is painted in several bands, whose rows are cut by their edges.
TEST_F(ReportPaint, BandsLookLikeOnePicture)
{
    const CSize size(1000, 700);
    for (const DWORD style :
         {DWORD{0}, RVS_HORIZONTALGRID | RVS_VERTICALGRID | RVS_EXTENDGRID | RVS_FIXEDROW})
    {
        Begin(WS_VISIBLE | RVS_ALTERNATEROWS | style, Texts(70, "text"));
        for (const HWND each : {parent.m_hWnd, report.m_hWnd})
            ::SetWindowPos(each, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        report.SetItemHeight(13);
        for (int item = 0; item < 70; item += 3)
            report.SetItemPreview(item, "previewed", 7 + item % 11);
        ReportPicture pictures[] = {ReportPicture(size.cx, size.cy), ReportPicture(size.cx, size.cy)};
        for (const int isBuffered : {0, 1})
        {
            report.ModifyProperty(RVP_DOUBLEBUFFER, isBuffered);
            Redraw();
            pictures[isBuffered].Take(report);
        }
        EXPECT_GT(pictures[0].Count(CRect(0, 500, size.cx, 690), kOdd), 10000);
        EXPECT_TRUE(pictures[0].Pixels() == pictures[1].Pixels()) << style;
    }
}

// Controls of any looks, painted as a whole and then again in parts of any size: nothing may change.
TEST_F(ReportPaint, PartsLookLikeTheWhole)
{
    const DWORD styles[] = {RVS_HORIZONTALGRID, RVS_VERTICALGRID,  RVS_EXTENDGRID, RVS_TREE,
                            RVS_ALTERNATEROWS,  RVS_KEEPSELECTION, RVS_CELLFOCUS,  RVS_FIXEDROW};
    CImageList images;
    MakeImages(images, 15, {0x0000FF00});
    for (int round = 0; round < 60; ++round)
    {
        DWORD style = 0;
        for (const DWORD each : styles)
            style |= Below(2) ? each : 0;
        Begin(style, {"abc", "defg", "hi", "jklmnopqr", "s", "tu"});
        report.SetImageList(Below(2) ? &images : nullptr, nullptr);
        report.SetItemHeight(3 + Below(25));
        report.ModifyProperty(RVP_MARGIN, Below(4) * 2);
        report.ModifyProperty(RVP_CHECKSIZE, (5 + Below(12)) * 0x10001);
        report.ModifyProperty(RVP_GRIDSTYLE, Below(3));
        report.SetSubItemWidth(0, Below(120));
        report.SetSubItemWidth(1, Below(60));
        for (int item = 0; item < 6; ++item)
        {
            report.SetItemText(item, 1, Below(2) ? "text" : nullptr);
            report.SetItemImage(item, Below(2), Below(2) - 1);
            report.SetItemCheck(item, Below(2), Below(9) - 1);
            report.SetColors(item, Below(3) - 1, Below(6) ? -1 : 1);
            if (Below(3) == 0)
                report.SetItemPreview(item, "previewed", 5 + Below(30));
            if ((style & RVS_TREE) && item > 0 && Below(2))
                report.InsertTreeItem(report.GetItemHandle(item - 1), TVI_LAST, "below");
            if ((style & RVS_TREE) && Below(2))
                report.Expand(report.GetItemHandle(item), RVE_EXPAND);
        }
        Select(Below(report.GetRowCount()), Below(report.GetRowCount()));
        report.AdjustFocus(Below(report.GetRowCount()), Below(3) - 1);
        Focus(Below(2) != 0);
        report.ScrollWindow(SB_HORZ, Below(40));
        report.ScrollWindow(SB_VERT, Below(3));
        Paint();
        const std::vector<DWORD> whole = picture.Pixels();
        for (int part = 0; part < 15; ++part)
        {
            const int x = Below(kWidth - 100);
            const int y = Below(kHeight);
            const CRect clip(x, y, x + 1 + Below(100), y + 1 + Below(50));
            PaintPart(clip);
            ASSERT_TRUE(whole == picture.Pixels())
                << Line("round", round, "style", style, "clip", x, y, clip.Width(), clip.Height());
        }
    }
}

} // namespace
