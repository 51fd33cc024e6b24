// What the report control looks like, by the pixels that carry a meaning.
#include "tests/report/ReportFixture.h"
#include "tests/support/GuiCounts.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <vector>

namespace
{

constexpr int kWidth = 300;
constexpr int kHeight = 200;
constexpr int kItemHeight = 20;
constexpr COLORREF kRed = RGB(255, 0, 0);

class PaintedReport : public TestReport
{
public:
    using TestReport::DrawCtrl;
    std::string calls;
    std::function<void()> drawing;
    std::function<LRESULT(_NMRVITEMDRAW&)> drawPreview;

    void SetPreview(int item, const char* text, int height)
    {
        structITEM& record = GetItemStruct(item, -1, 0);
        record.previewText = text;
        record.previewHeight = height;
    }
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
        calls += 'I';
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
    ReportPaint()
    {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), kWidth, -kHeight, 1, 32, 0, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        m_dc.CreateCompatibleDC(nullptr);
        m_old = ::SelectObject(m_dc, m_bitmap.GetSafeHandle());
        m_bits = static_cast<const DWORD*>(bits);
    }
    ~ReportPaint() override { ::SelectObject(m_dc, m_old); }

    // A control without a header, with two columns of 50 pixels and some rows.
    void Show(DWORD style, std::initializer_list<const char*> texts = {"1", "2", "3", "4"})
    {
        report.UndefineAllSubItems();
        report.DeleteAllItems();
        Create(style | RVS_NOHEADER);
        report.SetItemHeight(style & RVS_HORIZONTALGRID ? kItemHeight + 1 : kItemHeight);
        Define({"a", "b"});
        Fill(texts);
        report.InsertColor(0, RGB(1, 2, 3));
        report.InsertColor(1, kRed);
    }
    void Focus(bool focused) { report.SendMessage(focused ? WM_SETFOCUS : WM_KILLFOCUS); }

    void Paint()
    {
        m_dc.FillSolidRect(0, 0, kWidth, kHeight, RGB(9, 9, 9));
        report.calls.clear();
        report.DrawCtrl(&m_dc);
        ::GdiFlush();
    }
    COLORREF At(int x, int y) const
    {
        const DWORD pixel = m_bits[y * kWidth + x];
        return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
    }
    int Count(const CRect& rect, COLORREF color) const
    {
        int count = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                count += At(x, y) == color;
        return count;
    }
    std::vector<DWORD> Pixels() const { return {m_bits, m_bits + kWidth * kHeight}; }
    CRect Cell(int row, int column)
    {
        CRect rect;
        EXPECT_EQ(1, report.GetRowRect(row, column, rect, RVRC_WHOLE));
        return rect;
    }
    COLORREF Color(int slot) { return report.GetSystemColor(slot); }

    CDC m_dc;

private:
    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
    const DWORD* m_bits = nullptr;
};

TEST_F(ReportPaint, RowsHaveTheColoursOfTheirState)
{
    const COLORREF odd = RGB(1, 2, 3);
    const struct
    {
        int line;
        DWORD style;
        bool focused;
        COLORREF rows[4]; // 1 and 2 are selected, 2 has the focus, 3 a colour of its own
    } cases[] = {
        {__LINE__, 0, true, {0, 0x10, 0x10, kRed}},
        {__LINE__, 0, false, {0, 0, 0, kRed}},
        {__LINE__, RVS_KEEPSELECTION, false, {0, 0x20, 0x20, kRed}},
        {__LINE__, RVS_ALTERNATEROWS, false, {0, odd, 0, kRed}},
        {__LINE__, RVS_ALTERNATEROWS, true, {0, 0x10, 0x10, kRed}},
        {__LINE__, RVS_FACEBACKGROUND, false, {0x30, 0x30, 0x30, kRed}},
    };
    for (const auto& each : cases)
    {
        Show(each.style);
        report.SetColors(3, -1, 1);
        Select(2, 1);
        Focus(each.focused);
        Paint();
        for (int row = 0; row < 4; ++row)
        {
            const COLORREF expected = each.rows[row] == 0      ? Color(RVSC_WINDOW)
                                      : each.rows[row] == 0x10 ? Color(RVSC_HIGHLIGHT)
                                      : each.rows[row] == 0x20 ? Color(RVSC_INACTIVEHIGHLIGHT)
                                      : each.rows[row] == 0x30 ? Color(RVSC_FACE)
                                                               : each.rows[row];
            EXPECT_EQ(expected, At(70, row * kItemHeight + 5)) << "line " << each.line << " row " << row;
        }
        EXPECT_EQ(each.focused,
                  Count(Cell(2, 0), Color(RVSC_HIGHLIGHTTEXT)) > 0 && At(70, 45) == Color(RVSC_HIGHLIGHT))
            << "line " << each.line;
    }
}

TEST_F(ReportPaint, TextsHaveTheirColours)
{
    for (const DWORD style : {DWORD{0}, RVS_KEEPTEXTCOLOR})
    {
        Show(style);
        report.SetColors(0, 1, -1);
        report.SetColors(1, 7, -1); // past the table: black
        Paint();
        EXPECT_LT(0, Count(Cell(0, 0), kRed));
        EXPECT_LT(0, Count(Cell(1, 0), 0));
        Select(0, 0);
        Focus(true);
        Paint();
        EXPECT_EQ(style != 0, Count(Cell(0, 0), kRed) > 0);
    }
    report.SetItemText(0, 0, "a\nb\tc"); // one line, whatever is in it
    report.SetItemText(1, 0, "a b c");
    report.SetColors(0, -1, -1);
    report.SetColors(1, -1, -1);
    Select(3, 3);
    Paint();
    for (int y = 0; y < kItemHeight; ++y)
        for (int x = 0; x < 50; ++x)
            ASSERT_EQ(At(x, y), At(x, y + kItemHeight)) << x << ' ' << y;
}

TEST_F(ReportPaint, GridAndFocusLieBetweenTheRows)
{
    Show(RVS_HORIZONTALGRID | RVS_VERTICALGRID);
    Paint();
    const COLORREF grid = Color(RVSC_GRID);
    const COLORREF window = Color(RVSC_WINDOW);
    const int bottom = 4 * (kItemHeight + 1);
    ASSERT_NE(grid, window);
    for (const int x : {0, 49, 99, kWidth - 1})
        EXPECT_EQ(kItemHeight, Count(CRect(x, 0, x + 1, kItemHeight), grid)) << x;
    EXPECT_EQ(0, Count(CRect(50, 3, 99, kItemHeight - 3), grid));
    EXPECT_EQ(kWidth, Count(CRect(0, kItemHeight, kWidth, kItemHeight + 1), grid));
    EXPECT_EQ(0, Count(CRect(0, bottom, kWidth, kHeight), grid));
    report.ModifyStyle(0, RVS_EXTENDGRID);
    Paint();
    EXPECT_EQ(kWidth, Count(CRect(0, bottom + kItemHeight, kWidth, bottom + kItemHeight + 1), grid));
    EXPECT_EQ(grid, At(49, kHeight - 5));

    Show(RVS_CELLFOCUS);
    Select(1, 1);
    Focus(true);
    const auto border = [&](const CRect& rect) {
        return Count(CRect(rect.left, rect.top, rect.left + 1, rect.bottom), Color(RVSC_HIGHLIGHT)) <
               rect.Height();
    };
    Paint();
    EXPECT_TRUE(border(Cell(1, -1)));
    report.AdjustFocus(1, 1);
    Paint();
    EXPECT_FALSE(border(Cell(1, -1))) << "the cell has it";
    EXPECT_LT(50, Count(Cell(1, 1), window));
    Focus(false);
    Paint();
    EXPECT_EQ(2 * 50 * kItemHeight, Count(Cell(0, 1), window) + Count(Cell(1, 1), window));
}

TEST_F(ReportPaint, ChecksImagesAndBoxesShowTheirState)
{
    Show(RVS_TREE, {"0", "1", "2", "3", "4", "5", "6", "7", "8"});
    report.ModifyProperty(RVP_CHECKSIZE, 13 | 13 << 16);
    int shapes[9] = {};
    for (int check = 0; check < 9; ++check)
        report.SetItemCheck(check, 1, check);
    Paint();
    for (int check = 0; check < 9; ++check)
    {
        const CRect cell = Cell(check, 1);
        EXPECT_EQ((check & 2) != 0, Count(cell, kRed) > 5) << check;
        shapes[check] = Count(cell, Color(RVSC_WINDOW));
    }
    EXPECT_NE(shapes[0], shapes[1]);
    EXPECT_NE(shapes[0], shapes[4]);
    EXPECT_NE(shapes[4], shapes[5]);
    EXPECT_EQ(shapes[0], shapes[8]);

    _TREEITEM* const item = report.GetItemHandle(0);
    report.InsertTreeItem(item, nullptr, "x");
    const CRect box(0, 0, kItemHeight, kItemHeight); // the indentation of the first level
    const CPoint middle(kItemHeight / 2, kItemHeight / 2);
    for (const bool expanded : {false, true})
    {
        report.Expand(item, expanded ? RVE_EXPAND : RVE_COLLAPSE);
        Paint();
        EXPECT_EQ(Color(RVSC_SHADOW), At(middle.x - 4, middle.y - 4));
        EXPECT_EQ(4 * 8, Count(box, Color(RVSC_SHADOW)));
        EXPECT_EQ(Color(RVSC_TEXT), At(middle.x + 2, middle.y));
        EXPECT_EQ(expanded, At(middle.x, middle.y + 2) == Color(RVSC_WINDOW));
    }
    EXPECT_EQ(0, Count(CRect(0, kItemHeight, 2 * kItemHeight, 2 * kItemHeight), Color(RVSC_SHADOW)));

    CImageList images;
    ASSERT_TRUE(images.Create(8, 8, ILC_COLOR32, 1, 1));
    CBitmap red;
    std::vector<DWORD> pixels(64, 0x00FF0000);
    red.CreateBitmap(8, 8, 1, 32, pixels.data());
    images.Add(&red, static_cast<CBitmap*>(nullptr));
    report.SetImageList(&images, nullptr);
    for (const int image : {0, 1, 70000, -1})
    {
        report.SetItemImage(8, 0, image);
        Paint();
        EXPECT_EQ(image == 0 ? 64 : 0, Count(Cell(report.GetRowFromItem(8), 0), kRed)) << image;
    }
    report.SetItemImage(8, 0, 0);
    const int row = report.GetRowFromItem(8);
    Select(row, row);
    Focus(true);
    for (const __int64 mode : {RVIB_NONE, RVIB_BLEND25, RVIB_BLEND50})
    {
        report.ModifyProperty(RVP_IMAGEMODE, mode);
        Paint();
        EXPECT_EQ(mode == RVIB_NONE, Count(Cell(row, 0), kRed) == 64) << mode;
    }
}

TEST_F(ReportPaint, FixedRowPreviewAndEmptyTextStandApart)
{
    Show(0, {});
    Paint();
    EXPECT_LT(20, Count(CRect(kWidth / 2 - 40, 2, kWidth / 2 + 40, 2 + kItemHeight), Color(RVSC_TEXT)));
    EXPECT_EQ(0, Count(CRect(0, 2 + kItemHeight, kWidth, kHeight), Color(RVSC_TEXT)));
    report.ModifyProperty(RVP_EMPTYTEXT, reinterpret_cast<__int64>("%s%n"));
    Paint();
    report.ModifyProperty(RVP_EMPTYTEXT, reinterpret_cast<__int64>(""));
    Paint();
    EXPECT_EQ(kWidth * kHeight, Count(CRect(0, 0, kWidth, kHeight), Color(RVSC_WINDOW)));

    Show(RVS_FIXEDROW);
    report.SetItemText(-1, 0, "fixed");
    Paint();
    const int strip = kItemHeight + 2 * ::GetSystemMetrics(SM_CYFIXEDFRAME);
    EXPECT_EQ(Color(RVSC_FACE), At(kWidth / 2, strip / 2));
    EXPECT_EQ(Color(RVSC_HIGHLIGHTEDGE), At(kWidth / 2, 0));
    EXPECT_EQ(Color(RVSC_DARKSHADOW), At(kWidth / 2, strip - 1));
    EXPECT_LT(5, Count(CRect(0, 0, 50, strip), Color(RVSC_TEXT)));
    EXPECT_EQ("BFII", report.calls.substr(0, 4));
    EXPECT_EQ("eIIoIIeIIoII", report.calls.substr(4));

    Show(0);
    report.SetPreview(1, "the preview", 30);
    Paint();
    const CRect preview(0, 2 * kItemHeight, kWidth, 2 * kItemHeight + 30);
    EXPECT_LT(20, Count(preview, Color(RVSC_TEXT)));
    report.drawPreview = [&](_NMRVITEMDRAW& draw) {
        EXPECT_EQ(std::string("the preview"), draw.item->text);
        EXPECT_EQ(preview, CRect(draw.rect));
        return 1;
    };
    Paint();
    EXPECT_EQ(0, Count(preview, Color(RVSC_TEXT)));
    report.drawPreview = nullptr;
    report.SetShowReport(FALSE); // previews alone
    Paint();
    EXPECT_LT(20, Count(CRect(0, 0, kWidth, 30), Color(RVSC_TEXT)));
    EXPECT_EQ(0, Count(CRect(0, 30, kWidth, kHeight), Color(RVSC_TEXT)));
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
    const BITMAPINFOHEADER header = {sizeof(header), 2, 1, 1, 24, BI_RGB, 8, 0, 0, 0, 0};
    const unsigned char pixels[8] = {0, 0, 255, 0, 255, 0, 0, 0};
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof(file));
    out.write(reinterpret_cast<const char*>(&header), sizeof(header));
    out.write(reinterpret_cast<const char*>(pixels), sizeof(pixels));
    out.close();

    Show(RVS_FIXEDROW);
    EXPECT_EQ(1, report.SetBkImage(path.c_str()));
    EXPECT_TRUE(::DeleteFile(path.c_str()));
    Select(2, 2);
    Focus(true);
    const COLORREF colors[] = {kRed, RGB(0, 255, 0)};
    for (const int left : {0, 1, 2})
    {
        report.ScrollWindow(SB_HORZ, left);
        Paint();
        for (const int row : {0, 3})
            for (const int x : {70, 71})
                EXPECT_EQ(colors[(x + left) % 2], At(x, Cell(row, -1).top + 3)) << left << ' ' << row;
        EXPECT_EQ(colors[left % 2], At(70, kHeight - 2)) << "below the rows";
        EXPECT_EQ(Color(RVSC_HIGHLIGHT), At(70, Cell(2, -1).top + 3));
        EXPECT_EQ(Color(RVSC_FACE), At(kWidth / 2, 5)) << "the fixed row";
    }
    EXPECT_EQ(1, report.SetBkImage(0u));
    Paint();
    EXPECT_EQ(Color(RVSC_WINDOW), At(70, kHeight - 2));
}

TEST_F(ReportPaint, OwnerDrawsItsCells)
{
    Show(0);
    report.SetState(1, RVIS_OWNERDRAWN, RVIS_OWNERDRAWN);
    bool draws = true;
    parent.answer = [&](NMHDR& header) -> LRESULT {
        if (header.code != RVN_ITEMDRAW)
            return 0;
        const auto& draw = reinterpret_cast<_NMRVITEMDRAW&>(header);
        EXPECT_EQ(1, draw.item->item);
        EXPECT_EQ(Cell(1, draw.item->subitem), CRect(draw.rect));
        return draws;
    };
    Paint();
    EXPECT_EQ(0, Count(Cell(1, 0), Color(RVSC_TEXT)));
    draws = false;
    Paint();
    EXPECT_LT(0, Count(Cell(1, 0), Color(RVSC_TEXT)));
}

TEST_F(ReportPaint, PaintsNoMoreThanTheClipBoxAsksFor)
{
    Show(0);
    report.SetItemCount(4);
    const int saved = m_dc.SaveDC();
    m_dc.IntersectClipRect(CRect(60, kItemHeight, 90, 2 * kItemHeight));
    Paint();
    EXPECT_EQ("BoI", report.calls);
    m_dc.RestoreDC(saved);
}

// Controls of any looks, painted as a whole and then again in parts of any size: nothing may change.
TEST_F(ReportPaint, PartsLookLikeTheWhole)
{
    std::minstd_rand random(7);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const DWORD styles[] = {RVS_HORIZONTALGRID, RVS_VERTICALGRID,  RVS_EXTENDGRID, RVS_TREE,
                            RVS_ALTERNATEROWS,  RVS_KEEPSELECTION, RVS_CELLFOCUS,  RVS_FIXEDROW};
    CImageList images;
    ASSERT_TRUE(images.Create(15, 15, ILC_COLOR32, 1, 1));
    CBitmap picture;
    const std::vector<DWORD> pixels(15 * 15, 0x0000FF00);
    picture.CreateBitmap(15, 15, 1, 32, pixels.data());
    images.Add(&picture, static_cast<CBitmap*>(nullptr));
    for (int round = 0; round < 150; ++round)
    {
        DWORD style = 0;
        for (const DWORD each : styles)
            style |= below(2) ? each : 0;
        Show(style, {"abc", "defg", "hi", "jklmnopqr", "s", "tu"});
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
                report.SetPreview(item, "previewed", 5 + below(30));
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
        const std::vector<DWORD> whole = Pixels();
        for (int part = 0; part < 15; ++part)
        {
            const int x = below(kWidth - 100);
            const int y = below(kHeight);
            const CRect clip(x, y, x + 1 + below(100), y + 1 + below(50));
            const int saved = m_dc.SaveDC();
            m_dc.IntersectClipRect(clip);
            Paint();
            m_dc.RestoreDC(saved);
            const std::vector<DWORD> now = Pixels();
            const auto differs = std::mismatch(whole.begin(), whole.end(), now.begin()).first - whole.begin();
            ASSERT_TRUE(whole == now)
                << "round " << round << ", clip " << clip.left << ' ' << clip.top << ' ' << clip.right << ' '
                << clip.bottom << ", at " << differs % kWidth << ' ' << differs / kWidth << ", style "
                << std::hex << style << std::dec << ", item height " << report.GetItemHeight();
        }
    }
}

// A window that is shown, in a parent that is.
class ReportWindow : public ReportPaint
{
protected:
    void ShowWindows(DWORD style)
    {
        Show(style | WS_VISIBLE);
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        report.UpdateWindow();
    }
};

TEST_F(ReportWindow, PutsUpWithWhateverHappensWhileItPaints)
{
    ShowWindows(0);
    int rest = 0;
    const std::function<void()> acts[] = {
        [&] { report.SendMessage(WM_PAINT); },
        [&] { report.RedrawRows(-1, 100, 1); },
        [&] { report.DeleteAllItems(); },
        [&] { report.UndefineSubItem(0); },
        [&] { report.ModifyStyle(0, RVS_TREE); },
        [&] { report.SetWindowPos(nullptr, 0, 0, 50, 1, SWP_NOMOVE); },
        [&] { report.SendMessage(WM_SETFONT); },
        [&] { report.DestroyWindow(); },
    };
    for (const auto& act : acts)
    {
        report.drawing = nullptr;
        ShowWindows(0);
        rest = 1;
        report.drawing = [&] {
            if (rest-- == 1)
                act();
        };
        report.RedrawWindow();
        EXPECT_GT(1, rest) << &act - acts;
    }
}

// After any paint, a change invalidates what it changes, and only that.
TEST_F(ReportWindow, AsksForPaintsOfWhatChanges)
{
    ShowWindows(0);
    for (int item = 4; item < 100; ++item)
        Fill({"x"});
    report.SendMessage(WM_VSCROLL, SB_BOTTOM);
    report.DeleteItem(99); // a paint that moves the position
    report.RedrawWindow();
    report.drawing = [&] { report.SendMessage(WM_PAINT); }; // and one within another
    report.RedrawWindow();
    report.drawing = nullptr;
    report.UpdateWindow();
    const auto changed = [&] {
        CRect rect;
        ::GetUpdateRect(report, rect, FALSE);
        report.UpdateWindow();
        return std::to_string(rect.top / kItemHeight) + ".." + std::to_string(rect.bottom / kItemHeight);
    };
    report.ScrollWindow(SB_VERT, 20);
    EXPECT_EQ("0..10", changed());
    report.SetItemText(22, 0, "y");
    EXPECT_EQ("2..3", changed());
    report.SetItemText(19, 0, "y");
    report.SetItemText(30, 0, "y");
    EXPECT_EQ("0..0", changed());
    report.SelectRows(23, 23, 1, 0, 0, 0);
    report.SendMessage(WM_KEYDOWN, VK_DOWN);
    report.SelectRows(21, 24, 1, 0, 0, 1); // painted at once
    EXPECT_EQ("0..0", changed());
    for (int item = 20; item < 30; ++item)
        report.SetItemText(item, 0, "z");
    EXPECT_EQ("0..10", changed());
}

// With previews alone and rows that have none there is nothing to see, and so little to ask for.
TEST_F(ReportWindow, AsksForFewRowsThatHaveNoHeight)
{
    ShowWindows(RVS_CALLBACK);
    int asked = 0;
    report.load = [&](_RVITEM& item) {
        ++asked;
        item.mask = 0;
        return 0;
    };
    report.SetShowReport(FALSE);
    report.SetItemCount(1000000);
    report.UpdateWindow();
    const auto asks = [&](const auto& act) {
        asked = 0;
        act();
        report.UpdateWindow();
        return asked;
    };
    EXPECT_GE(2010, asks([&] { report.RedrawWindow(); }));
    EXPECT_GE(5020, asks([&] { report.SendMessage(WM_VSCROLL, SB_PAGEDOWN); }));
    EXPECT_LT(500, report.GetTopIndex());
}

// A point hits what is seen there: rows above it are not asked for again, until something has changed.
TEST_F(ReportWindow, PointsHitWhatWasPainted)
{
    ShowWindows(RVS_CALLBACK);
    int asked = 0;
    int height = 0; // of the first row's preview
    report.load = [&](_RVITEM& item) {
        ++asked;
        item.previewHeight = item.item == 0 ? height : 0;
        item.mask = RVIM_PREVIEWHEIGHT;
        return 0;
    };
    report.SetItemCount(100);
    report.UpdateWindow();
    const auto rowAt = [&](int y) {
        asked = 0;
        _RVHITTESTINFO hit = {};
        hit.pt = {60, y};
        report.HitTest(&hit);
        return hit.row;
    };
    EXPECT_EQ(9, rowAt(9 * kItemHeight + 3));
    EXPECT_EQ(1, asked) << "the cell";
    report.SetSubItemWidth(0, 70); // and the columns are those of now
    _RVHITTESTINFO hit = {};
    hit.pt = {60, 3};
    report.HitTest(&hit);
    EXPECT_EQ(0, hit.column);
    const std::function<void()> changes[] = {[&] { report.RedrawItems(0, RVI_NONE); },
                                             [&] { report.SetRedraw(0), report.RedrawRows(0, 0, 0); },
                                             [&] { report.SetRedraw(1), report.SetItemCount(99); }};
    for (const auto& change : changes)
    {
        height = 0;
        report.SetRedraw(1);
        report.UpdateWindow();
        height = 5 * kItemHeight;
        change();
        EXPECT_EQ(4, rowAt(9 * kItemHeight + 3)) << &change - changes;
    }
    report.ScrollWindow(SB_VERT, 50);
    EXPECT_EQ(59, rowAt(9 * kItemHeight + 3));
    report.UpdateWindow();
    EXPECT_EQ(59, rowAt(9 * kItemHeight + 3));
}

TEST_F(ReportWindow, LeavesNothingBehindHoweverOftenItPaints)
{
    ShowWindows(RVS_HORIZONTALGRID | RVS_TREE | RVS_ALTERNATEROWS | RVS_FIXEDROW);
    report.SetItemCheck(1, 1, 3);
    report.SetState(2, RVIS_BOLD, RVIS_BOLD);
    const auto rounds = [&](int count) {
        for (int i = 0; i < count; ++i)
        {
            report.ModifyStyle(i % 2 ? RVS_VERTICALGRID : 0, i % 2 ? 0 : RVS_VERTICALGRID);
            report.SetColor(0, static_cast<COLORREF>(i));
            report.SendMessage(WM_SYSCOLORCHANGE);
            report.SendMessage(WM_SETFONT, 0, TRUE);
            report.RedrawWindow();
        }
    };
    rounds(20);
    const int before = GdiObjectCount();
    rounds(200);
    EXPECT_EQ(before, GdiObjectCount());
}

TEST_F(ReportWindow, StandsAnySizeOfWindowColumnAndList)
{
    ShowWindows(RVS_CALLBACK | RVS_HORIZONTALGRID | RVS_VERTICALGRID | RVS_EXTENDGRID);
    report.load = [](_RVITEM& item) {
        ::snprintf(item.text, static_cast<std::size_t>(item.textMax), "%d", item.item);
        item.treeLevel = item.item % 5;
        item.mask |= RVIM_TREELEVEL;
        return 0;
    };
    report.SetItemCount(INT_MAX);
    report.SetSubItemWidth(0, 30000);
    report.SetSubItemWidth(1, INT_MAX);
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {3000, 2000}, {300, 200}})
    {
        report.SetWindowPos(nullptr, 0, 0, width, height, SWP_NOMOVE);
        EXPECT_EQ(1, report.EnsureVisible(INT_MAX - 1, 1));
        report.RedrawWindow();
        report.SendMessage(WM_VSCROLL, SB_BOTTOM);
        report.SendMessage(WM_HSCROLL, SB_PAGERIGHT);
        report.SendMessage(WM_KEYDOWN, VK_END);
        report.RedrawWindow();
        EXPECT_EQ(INT_MAX - 1, report.GetCurrentFocus());
        report.SelectAll();
        report.SendMessage(WM_VSCROLL, SB_TOP);
        report.SetItemHeight(0);
        report.RedrawWindow();
        report.SetItemHeight(kItemHeight);
    }
    EXPECT_EQ(0, report.SetSubItemWidth(1, -1));
}

} // namespace
