// What the report control looks like, by the pixels that carry a meaning.
#include "tests/report/ReportFixture.h"
#include "tests/report/ReportPicture.h"
#include "tests/support/NothingLeft.h"

#include <algorithm>
#include <fstream>
#include <random>

namespace
{

constexpr int kWidth = ReportPicture::kWidth;
constexpr int kHeight = ReportPicture::kHeight;
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kOdd = RGB(1, 2, 3);

class PaintedReport : public TestReport
{
public:
    using TestReport::DrawCtrl;
    std::string calls;
    std::function<void()> drawing;
    std::function<LRESULT(_NMRVITEMDRAW&)> drawPreview;

    void SetColors(int item, int text, int background)
    {
        _RVITEM change;
        change.item = item;
        change.mask = RVIM_TEXTCOLOR | RVIM_BACKGROUNDCOLOR;
        change.textColor = text;
        change.backgroundColor = background;
        SetItem(&change);
    }

protected:
    void DrawItem(CDC* dc, CRect rect, _RVITEM* item) override
    {
        if (drawing)
            drawing();
        calls += item->state & RVIS_SELECTED ? 'S' : 'I';
        TestReport::DrawItem(dc, rect, item);
    }
    void DrawRow(CDC* dc, CRect row, CRect clip, int number, _RVITEM* item, int odd, int fixed) override
    {
        calls += fixed ? 'F' : odd ? 'o' : 'e';
        TestReport::DrawRow(dc, row, clip, number, item, odd, fixed);
    }
    void DrawBkgnd(CDC* dc, CRect rect, unsigned long color) override
    {
        calls += 'B';
        TestReport::DrawBkgnd(dc, rect, color);
    }
    __int64 OnRvnItemDrawPreviewBypass(_NMREPORTVIEW* notification) override
    {
        return drawPreview ? drawPreview(*reinterpret_cast<_NMRVITEMDRAW*>(notification)) : 0;
    }
};

class ReportPaint : public ReportTestOf<PaintedReport>
{
protected:
    // A control without a header.
    void ShowRows(DWORD style, const Texts& texts = {"1", "2", "3", "4"})
    {
        Show(style | RVS_NOHEADER, texts);
        report.DeleteAllColors();
        report.InsertColor(0, kOdd);
        report.InsertColor(1, kRed);
    }
    void Focus(bool focused) { report.SendMessage(focused ? WM_SETFOCUS : WM_KILLFOCUS); }
    void Paint()
    {
        picture.dc.FillSolidRect(0, 0, kWidth, kHeight, RGB(9, 9, 9));
        report.calls.clear();
        report.DrawCtrl(&picture.dc);
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

    struct Scene
    {
        std::function<void()> prepare;
        std::vector<Spot> spots;
    };
    void ExpectScenes(std::initializer_list<Scene> scenes)
    {
        for (const Scene& scene : scenes)
        {
            SCOPED_TRACE("scene " + std::to_string(&scene - scenes.begin()));
            scene.prepare();
            Paint();
            ExpectSpots(picture, scene.spots);
        }
    }

    ReportPicture picture;
};

CRect RowAt(int row)
{
    return {0, kItemHeight * row, kWidth, kItemHeight * (row + 1)};
}
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
            ShowRows(style);
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
        {show(RVS_ALTERNATEROWS, false), colors(window, kOdd, window, text)},
        {show(RVS_ALTERNATEROWS, true), colors(window, high, high, highText)},
        {show(RVS_FACEBACKGROUND, false), colors(face, face, face, text)},
        {[&] { show(0, true)(), report.SendMessage(WM_KILLFOCUS, reinterpret_cast<WPARAM>(header)); },
         {All(Blank(2), high)}}, // a child has the focus
        {[&] { ShowRows(0), report.SetColors(0, 1, -1); },
         {Some(CellAt(0, 0), kRed), None(CellAt(1, 0), kRed)}},
        {[&] { report.SetColors(0, 7, -1); }, {Some(CellAt(0, 0), 0), None(CellAt(0, 0), kRed)}}, // no such
        {[&] { report.SetColors(0, 1, 1), Select(0, 0), Focus(true); }, {None(RowAt(0), kRed)}},
        {[&] { report.ModifyStyle(0, RVS_KEEPTEXTCOLOR); }, {Some(CellAt(0, 0), kRed)}},
        {[&] { report.SetColors(0, -1, -1); }, {Some(CellAt(0, 0), highText)}},
        {[&] { Focus(false); }, {Some(CellAt(0, 0), text)}},
    });
}

TEST_F(ReportPaint, TextsHaveTheirPlaceAndFont)
{
    ShowRows(0);
    _RVSUBITEM aligned;
    aligned.width = kColumnWidth;
    const COLORREF text = Color(RVSC_TEXT);
    const CRect left(0, 0, 17, 20), middle(17, 0, 33, 20), right(33, 0, 50, 20);
    const auto align = [&](unsigned format) {
        aligned.format = format;
        report.RedefineSubItem(0, &aligned);
    };
    ExpectScenes({
        {[&] { align(HDF_LEFT); }, {Some(left, text), None(middle, text), None(right, text)}},
        {[&] { align(HDF_CENTER); }, {None(left, text), Some(middle, text), None(right, text)}},
        {[&] { align(HDF_RIGHT); }, {None(left, text), None(middle, text), Some(right, text)}},
    });
    ExpectScenes({
        {[&] { ShowRows(RVS_TREE, {"a long text in a row of a tree"}); }, {None(Blank(0), text)}},
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
        {[&] { ShowRows(RVS_HORIZONTALGRID | RVS_VERTICALGRID); },
         {All(line(0), grid), All(line(49), grid), All(line(99), grid), All(line(kWidth - 1), grid),
          None(CRect(50, 0, 99, 20), grid), All(CRect(0, 20, kWidth, 21), grid),
          None(CRect(0, kBottom, kWidth, kHeight), grid)}},
        {[&] { report.ModifyStyle(0, RVS_EXTENDGRID); },
         {All(CRect(0, kBottom + 20, kWidth, kBottom + kGrid), grid), Some(CRect(49, 195, 50, 196), grid)}},
        {[&] { ShowRows(RVS_HORIZONTALGRID), focusOn(1, -1); }, {All(CRect(0, 41, kWidth, 42), grid)}},
        {[&] { ShowRows(RVS_CELLFOCUS), Select(1, 1), Focus(true); }, {{edge, high, kItemHeight / 2}}},
        {[&] { focusOn(1, 1); }, {All(edge, high), Some(CellAt(1, 1), window)}}, // the cell has it
        {[&] { Focus(false); }, {All(CellAt(0, 1), window), All(CellAt(1, 1), window)}},
        {[&] { report.ModifyProperty(RVP_GRIDSTYLE, 0), ShowRows(RVS_HORIZONTALGRID); },
         {Some(CRect(0, 20, kWidth, 21), grid), Some(CRect(0, 20, kWidth, 21), window)}}, // dots
        {[&] { ShowRows(RVS_FIXEDROW), focusOn(-1, -1); }, {}},
    });
    EXPECT_TRUE(Changes([&] { Focus(false); }));
    focusOn(-1, 1);
    EXPECT_TRUE(Changes([&] { Focus(false); }));
}

TEST_F(ReportPaint, ChecksAndBoxesShowTheirState)
{
    ShowRows(RVS_TREE, {"0", "1", "2", "3", "4", "5", "6", "7", "8"});
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
    ShowRows(0);
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
        {[&] { ShowRows(0, {}); }, {Some(middle, text), None(CRect(0, 22, kWidth, kHeight), text)}},
        {[&] { emptyText("%s%n"); }, {Some(middle, text)}},
        {[&] { emptyText(""); }, {All(all, window)}},
        {[&] { emptyText("none"), ShowRows(0, {""}); }, {All(all, window)}}, // a row is there
        {[&] { ShowRows(RVS_FIXEDROW), report.SetItemText(-1, 0, "fixed"); },
         {All(CRect(150, 0, 151, 1), Color(RVSC_HIGHLIGHTEDGE)),
          All(CRect(150, strip - 1, 151, strip), Color(RVSC_DARKSHADOW)),
          All(CRect(60, 3, 150, strip - 3), Color(RVSC_FACE)), Some(CRect(0, 0, 50, strip), text)}},
        {[&] { ShowRows(0), report.SetItemPreview(1, "the preview", 30, 1); }, {Some(preview, kRed)}},
        {[&] { report.SetItemPreview(1, "the preview", 30); }, {Some(preview, text), None(preview, kRed)}},
    });

    Select(1, 1);
    Focus(true);
    report.drawPreview = [&](_NMRVITEMDRAW& draw) {
        EXPECT_STREQ("the preview", draw.item->text);
        EXPECT_TRUE(draw.item->state & RVIS_SELECTED);
        EXPECT_EQ(preview, CRect(draw.rect));
        return 1;
    };
    Paint();
    EXPECT_EQ(0, picture.Count(preview, text));
    report.drawPreview = nullptr;
    Focus(false);
    ExpectScenes({
        {[&] { report.SetShowReport(FALSE); }, {Some(CRect(0, 0, kWidth, 30), text), None(below, text)}},
        {[&] { report.SetItemPreview(0, "A", 15); }, {Some(CRect(0, 0, kWidth, 15), text), None(all, kRed)}},
    });
}

// A picture of two columns, red and green, is repeated behind the rows and goes with them.
TEST_F(ReportPaint, PictureLiesBehindTheRows)
{
    char folder[MAX_PATH] = "";
    ::GetTempPath(sizeof(folder), folder);
    const std::string path = std::string(folder) + "report_paint_test.bmp";
    BITMAPFILEHEADER file = {};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof(file) + sizeof(BITMAPINFOHEADER);
    file.bfSize = file.bfOffBits + 8;
    const BITMAPINFOHEADER info = {sizeof(info), 2, 1, 1, 24, BI_RGB, 8, 0, 0, 0, 0};
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof(file));
    out.write(reinterpret_cast<const char*>(&info), sizeof(info));
    out.write("\0\0\xFF\0\xFF\0\0\0", 8);
    out.close();

    ShowRows(RVS_FIXEDROW);
    EXPECT_EQ(1, report.SetBkImage(path.c_str()));
    EXPECT_TRUE(::DeleteFile(path.c_str()));
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
        {[&] { EXPECT_EQ(1, report.SetBkImage(0u)); },
         {All(CRect(70, kHeight - 9, 90, kHeight), Color(RVSC_WINDOW))}},
    });
    EXPECT_EQ(0, report.SetBkImage("no such file"));
}

TEST_F(ReportPaint, OwnerDrawsItsCells)
{
    ShowRows(0);
    report.SetState(1, RVIS_OWNERDRAWN, RVIS_OWNERDRAWN);
    bool draws = true;
    parent.answer = [&](NMHDR& told) -> LRESULT {
        if (told.code != RVN_ITEMDRAW)
            return 0;
        const auto& draw = reinterpret_cast<_NMRVITEMDRAW&>(told);
        EXPECT_EQ(1, draw.item->item);
        EXPECT_EQ(CellAt(1, draw.item->subitem), CRect(draw.rect));
        ::SetTextColor(draw.dc, kRed);
        return draws;
    };
    const COLORREF text = Color(RVSC_TEXT);
    ExpectScenes({
        {[] {}, {None(CellAt(1, 0), text), Some(CellAt(2, 0), text)}},
        {[&] { draws = false; }, {Some(CellAt(1, 0), text), None(RowAt(1), kRed)}}, // in the colour before
    });
}

TEST_F(ReportPaint, PaintsNoMoreThanTheClipBoxAsksFor)
{
    ShowRows(RVS_FIXEDROW, {"1", "2"});
    Paint();
    EXPECT_EQ("BFIIIeIIIoIII", report.calls);
    ShowRows(0);
    Select(1, 1);
    Focus(true);
    const int saved = picture.dc.SaveDC();
    picture.dc.IntersectClipRect(CellAt(1, 1));
    Paint();
    EXPECT_EQ("BoS", report.calls);
    picture.dc.RestoreDC(saved);
}

// A window so large that it is painted in several bands, whose rows are cut by their edges.
TEST_F(ReportPaint, BandsLookLikeOnePicture)
{
    constexpr int kLargeWidth = 1000;
    constexpr int kLargeHeight = 700;
    for (const DWORD style :
         {DWORD{0}, RVS_HORIZONTALGRID | RVS_VERTICALGRID | RVS_EXTENDGRID | RVS_FIXEDROW})
    {
        ShowRows(WS_VISIBLE | RVS_ALTERNATEROWS | style, Texts(70, "text"));
        parent.SetWindowPos(nullptr, 0, 0, kLargeWidth + 50, kLargeHeight + 50, SWP_NOMOVE | SWP_NOZORDER);
        report.SetWindowPos(nullptr, 0, 0, kLargeWidth, kLargeHeight, SWP_NOZORDER);
        report.SetItemHeight(13);
        for (int item = 0; item < 70; item += 3)
            report.SetItemPreview(item, "previewed", 7 + item % 11);
        ReportPicture pictures[] = {ReportPicture(kLargeWidth, kLargeHeight),
                                    ReportPicture(kLargeWidth, kLargeHeight)};
        for (const int isBuffered : {0, 1})
        {
            report.ModifyProperty(RVP_DOUBLEBUFFER, isBuffered);
            Redraw();
            pictures[isBuffered].Take(report);
        }
        EXPECT_GT(pictures[0].Count(CRect(0, 500, kLargeWidth, kLargeHeight), kOdd), 10000);
        EXPECT_TRUE(pictures[0].Pixels() == pictures[1].Pixels()) << style;
    }
}

// Controls of any looks, painted as a whole and then again in parts of any size: nothing may change.
TEST_F(ReportPaint, PartsLookLikeTheWhole)
{
    std::minstd_rand random(7);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const DWORD styles[] = {RVS_HORIZONTALGRID, RVS_VERTICALGRID,  RVS_EXTENDGRID, RVS_TREE,
                            RVS_ALTERNATEROWS,  RVS_KEEPSELECTION, RVS_CELLFOCUS,  RVS_FIXEDROW};
    CImageList images;
    MakeImages(images, 15, {0x0000FF00});
    for (int round = 0; round < 150; ++round)
    {
        DWORD style = 0;
        for (const DWORD each : styles)
            style |= below(2) ? each : 0;
        ShowRows(style, {"abc", "defg", "hi", "jklmnopqr", "s", "tu"});
        report.SetImageList(below(2) ? &images : nullptr, nullptr);
        report.SetItemHeight(3 + below(25));
        report.ModifyProperty(RVP_MARGIN, below(4) * 2);
        report.ModifyProperty(RVP_CHECKSIZE, (5 + below(12)) * 0x10001);
        report.ModifyProperty(RVP_GRIDSTYLE, below(3));
        report.SetSubItemWidth(0, below(120));
        report.SetSubItemWidth(1, below(60));
        for (int item = 0; item < 6; ++item)
        {
            report.SetItemText(item, 1, below(2) ? "text" : nullptr);
            report.SetItemImage(item, below(2), below(2) - 1);
            report.SetItemCheck(item, below(2), below(9) - 1);
            report.SetColors(item, below(3) - 1, below(6) ? -1 : 1);
            if (below(3) == 0)
                report.SetItemPreview(item, "previewed", 5 + below(30));
            if ((style & RVS_TREE) && item > 0 && below(2))
                report.InsertTreeItem(report.GetItemHandle(item - 1), TVI_LAST, "below");
            if ((style & RVS_TREE) && below(2))
                report.Expand(report.GetItemHandle(item), RVE_EXPAND);
        }
        Select(below(report.GetRowCount()), below(report.GetRowCount()));
        report.AdjustFocus(below(report.GetRowCount()), below(3) - 1);
        Focus(below(2) != 0);
        report.ScrollWindow(SB_HORZ, below(40));
        report.ScrollWindow(SB_VERT, below(3));
        Paint();
        const std::vector<DWORD> whole = picture.Pixels();
        for (int part = 0; part < 15; ++part)
        {
            const int x = below(kWidth - 100);
            const int y = below(kHeight);
            const CRect clip(x, y, x + 1 + below(100), y + 1 + below(50));
            const int saved = picture.dc.SaveDC();
            picture.dc.IntersectClipRect(clip);
            Paint();
            picture.dc.RestoreDC(saved);
            const std::vector<DWORD> now = picture.Pixels();
            const auto differs = std::mismatch(whole.begin(), whole.end(), now.begin()).first - whole.begin();
            ASSERT_TRUE(whole == now)
                << "round " << round << ", clip " << Line(clip.left, clip.top, clip.right, clip.bottom)
                << ", at " << differs % kWidth << ' ' << differs / kWidth << ", style " << std::hex << style
                << std::dec << ", item height " << report.GetItemHeight();
        }
    }
}

} // namespace
