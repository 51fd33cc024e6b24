// What a report control answers its owner: sizes, texts, states, columns, colours and notifications.
#include "ReportCell.h"
#include "ReportHeaderCtrl.h"
#include "tests/report/ReportFixture.h"

#include <cstring>

namespace
{

TEST_F(ReportTest, TakesOverAWindowOfADialog)
{
    WNDCLASS found = {};
    ASSERT_TRUE(::GetClassInfo(AfxGetInstanceHandle(), "QmReportCtrl", &found));
    EXPECT_EQ(UINT{CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW}, found.style);
    EXPECT_EQ(reinterpret_cast<HBRUSH>(5), found.hbrBackground);
    const HWND window = ::CreateWindow("QmReportCtrl", "", WS_CHILD | RVS_NOHEADER, 0, 0, 50, 50, parent,
                                       nullptr, AfxGetInstanceHandle(), nullptr);
    TestReport taken;
    ASSERT_TRUE(taken.SubclassWindow(window));
    _RVSUBITEM definition;
    EXPECT_EQ(0, taken.DefineSubItem(0, &definition));
    EXPECT_EQ(0, taken.ActivateSubItem(0, 5)); // beyond the end: the last column
    EXPECT_EQ(200, taken.GetSubItemWidth(0));
}

TEST_F(ReportTest, TellsTheHeightsOfRowsThatThereAre)
{
    const auto heightOf = [this](int row) {
        int height = 0;
        return report.GetRowHeight(row, height) ? height : -1;
    };
    Show(0, {"1", "2"});
    report.load = [](_RVITEM& item) -> __int64 { return item.item != 0; }; // it has only this one
    Follow(
        {
            {"20 20 50", [&] { report.SetItemPreview(1, "preview", 30); }},
            {"21 21 51", [&] { report.ModifyStyle(0, RVS_HORIZONTALGRID); }},
            {"20 20 50", [&] { report.ModifyStyle(RVS_HORIZONTALGRID, 0); }},
            {"20 20 -1",
             [&] { Show(RVS_CALLBACK), report.SetItemCount(2), report.ModifyProperty(RVP_SHOWPREVIEW, 1); }},
        },
        [&] { return Line(heightOf(RVI_DEFAULT), heightOf(0), heightOf(1)); });
    EXPECT_EQ("-1 -1", Line(heightOf(-2), heightOf(2)));
    Show(0, {"1", "2"});
    for (const int row : {-2, 2})
        EXPECT_THROW(heightOf(row), CInvalidArgException*) << row;
    report.SetShowReport(TRUE); // no previews: all rows have one height, and none is looked at
    EXPECT_EQ(20, heightOf(2));
}

TEST_F(ReportTest, TellsWhereRowsAndCellsAre)
{
    Show(RVS_TREE | RVS_NOHEADER, Texts(20, "1"));
    report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child");
    report.Expand(report.GetItemHandle(0), RVE_EXPAND);
    report.ScrollWindow(SB_VERT, 1);
    report.SetWindowPos(nullptr, 0, 0, 300, 190, SWP_NOMOVE);
    EXPECT_EQ("10 9", Line(report.GetVisibleCount(1), report.GetVisibleCount(0)));
    const auto visibleItem = [this](int item) { return report.IsItemVisible(item, 0); };
    EXPECT_EQ("0 1 1 0", Line(visibleItem(0), visibleItem(20), visibleItem(9), visibleItem(12)));

    CRect rect;
    const auto cell = [&](int row, int column) {
        return report.GetRowRect(row, column, rect, RVRC_WHOLE)
                   ? Line(rect.left, rect.top, rect.right, rect.bottom)
                   : "none";
    };
    EXPECT_EQ("0 0 50 20, 50 0 100 20", cell(1, 0) + ", " + cell(1, 1)) << "with its indentation";
    EXPECT_EQ("none, none", cell(1, 3) + ", " + cell(-1, 0));
    const auto width = [&](int bare) { return report.MeasureItem(1, 0, rect, bare), rect.Width(); };
    const int plain = width(0);
    CImageList images;
    images.Create(8, 8, ILC_COLOR32, 0, 1);
    report.SetImageList(&images, nullptr);
    report.SetItemImage(1, 0, 0);
    EXPECT_EQ(plain, width(1));
    EXPECT_LT(plain, width(0));
    report.SetItemState(1, RVIS_BOLD, RVIS_BOLD);
    EXPECT_LT(plain, width(1));
    report.SetTreeFocus(report.GetItemHandle(19));
    EXPECT_EQ(12, report.GetTopIndex()) << "the focus is seen";

    Show(0, {"1", "2"});
    Select(1, 1);
    EXPECT_FALSE(report.HaveRowsMoved());
    EXPECT_EQ(1, report.MoveUp(1));
    EXPECT_EQ("2 1 0 1", Line(Rows(), report.GetCurrentFocus(), report.HaveRowsMoved()));
}

TEST_F(ReportTest, TakesInputOnTheBackgroundOfDialogs)
{
    Show(WS_VISIBLE | RVS_FACEBACKGROUND);
    EXPECT_TRUE(report.IsWindowEnabled());
    Follow(
        {
            {"face", [&] { EXPECT_EQ(1, report.ModifyStyle(0, RVS_NOHEADER)); }}, // another style
            {"window", [&] { EXPECT_EQ(1, report.ModifyStyle(RVS_FACEBACKGROUND, 0)); }},
            {"window", [&] { EXPECT_EQ(0, report.ModifyStyle(RVS_FACEBACKGROUND, 0)); }},
            {"face", [&] { report.EnableWindow(FALSE); }},
            {"face", [&] { EXPECT_EQ(1, report.ModifyStyle(0, RVS_FACEBACKGROUND)); }},
            {"face", [&] { EXPECT_FALSE(report.IsWindowEnabled()), report.EnableWindow(TRUE); }},
        },
        [&] {
            Redraw();
            const COLORREF color = ::GetPixel(CClientDC(&report), 250, 150);
            return color == ::GetSysColor(COLOR_BTNFACE)  ? "face"
                   : color == ::GetSysColor(COLOR_WINDOW) ? "window"
                                                          : "neither";
        });
}

TEST_F(ReportTest, NeedsNoSubclassForStatesAndColumns)
{
    Show(0, {"1", "2"});
    Select(1, 1);
    EXPECT_EQ(1, report.SetItemState(1, ~0u, RVIS_BOLD | RVIS_READONLY | RVIS_OWNERDRAWN | RVIS_COLLAPSED));
    EXPECT_EQ(1, report.SetItemState(1, ~0u, RVIS_EXPANDED));
    EXPECT_EQ(1, report.SetItemState(1, 0, RVIS_READONLY | RVIS_FOCUSED));
    EXPECT_EQ(RVIS_FOCUSED | RVIS_SELECTED | RVIS_BOLD | RVIS_OWNERDRAWN, report.GetItemState(1));
    EXPECT_EQ(1, report.SetItemState(RVI_DEFAULT, RVIS_BOLD, RVIS_BOLD));
    EXPECT_EQ(0, report.SetItemState(-2, 4, 4) + report.SetItemState(2, 4, 4));
    EXPECT_EQ(0u, report.GetItemState(2));

    _RVSUBITEM definition = {
        .format = HDF_RIGHT | RVSF_IMAGE, .header1 = 5, .header2 = -6, .image = 3, .text = "caption"};
    report.RedefineSubItem(1, &definition);
    report.SetSubItemWidth(1, 77);
    _RVSUBITEM read;
    EXPECT_EQ("1 0 0",
              Line(report.GetSubItem(1, &read), report.GetSubItem(-1, &read), report.GetSubItem(3, &read)));
    EXPECT_EQ(Line(HDF_RIGHT | RVSF_IMAGE, 77, 5, -6, 3, "caption"),
              Line(read.format, read.width, read.header1, read.header2, read.image, read.text));
    CReportHeaderCtrl& shown = *report.GetHeaderCtrl();
    HDITEM item = {};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    EXPECT_TRUE(shown.GetItem(1, &item));
    EXPECT_EQ(Line(HDF_STRING | HDF_RIGHT | HDF_IMAGE, 3), Line(item.fmt, item.iImage));
    shown.SetItemFiltered(1, true);
    EXPECT_EQ("0 1", Line(shown.IsItemFiltered(0), shown.IsItemFiltered(1)));
    report.DeactivateSubItem(0);
    EXPECT_EQ("1 0", Line(shown.IsItemFiltered(0), shown.IsItemFiltered(1)));

    char small[4] = "";
    report.SetItemText(0, 1, "caption");
    EXPECT_EQ("3 cap", Line(report.GetItemText(0, 1, small, 4), small));
    EXPECT_STREQ("caption\t\n", report.GetItemString(0).c_str()); // of columns b and c
}

// As a subclass that keeps items by itself needs them.
TEST_F(ReportTest, ReadsCellsThatAnotherHasEncoded)
{
    Show(0, {nullptr});
    ZEMA::String cells;
    CReportCell::Reset(cells, 1);
    char text[] = "a text";
    _RVITEM cell;
    cell.mask = RVIM_TEXT | RVIM_CHECK;
    cell.subitem = 2; // number 1 is added
    cell.text = text;
    cell.check = 1;
    EXPECT_EQ(3, CReportCell::Write(cells, &cell) + CReportCell::Insert(cells, 0) +
                     CReportCell::Remove(cells, 1));
    report.Struct(0).cells = cells;
    EXPECT_EQ("1 a text", Line(report.GetItemCheck(0, 2), report.GetItemText(0, 2).c_str()));

    char small[4] = "";
    cell.mask = RVIM_TEXT;
    cell.text = small;
    cell.textMax = sizeof(small);
    EXPECT_EQ("6 9 a t", Line(CReportCell::Read(cells, &cell), cell.mask, small));
    cell.subitem = -1;
    EXPECT_EQ("-1 0 0 0", Line(CReportCell::Read(cells, &cell), CReportCell::Write(cells, &cell),
                               CReportCell::Insert(cells, -1), CReportCell::Remove(cells, -1)));
}

TEST_F(ReportTest, MakesWhatTheOwnerHasNotSetLarger)
{
    report.dpi = 192;
    Create();
    _RVSUBITEM wide;
    report.ActivateSubItem(report.DefineSubItem(0, &wide), -1);
    EXPECT_EQ("20 400", Line(report.GetItemHeight(), report.GetSubItemWidth(0)));
    report.SetItemHeight(30);
    report.dpi = 96;
    report.SendMessage(WM_DPICHANGED_AFTERPARENT);
    __int64 margin = 0;
    EXPECT_EQ("30 1 6", Line(report.GetItemHeight(), report.GetProperty(RVP_MARGIN, &margin), margin));

    // Whatever the font needs.
    report.ModifyProperty(RVP_FITITEMHEIGHT, 1);
    const int plain = report.GetItemHeight();
    EXPECT_GT(plain, 13);
    CFont font;
    LOGFONT large = {};
    large.lfHeight = 60;
    font.CreateFontIndirect(&large);
    const auto handle = reinterpret_cast<WPARAM>(font.GetSafeHandle());
    report.SendMessage(WM_SETFONT, handle);
    EXPECT_GT(report.GetItemHeight(), plain + 40);
    for (const HWND each : {report.m_hWnd, report.GetHeaderCtrl()->m_hWnd})
        EXPECT_EQ(static_cast<LRESULT>(handle), ::SendMessage(each, WM_GETFONT, 0, 0));
    report.SendMessage(WM_SETFONT);
    EXPECT_EQ(plain, report.GetItemHeight());
}

TEST_F(ReportTest, MovesColumnsCellsAndTheSortMarkWithTheirSubItems)
{
    Show(0, {"1"});
    report.SetItemText(0, 1, "2");
    report.SetItemImage(-1, 1, 5);
    _RVSUBITEM first = {.header1 = 5, .header2 = -6};
    Follow(
        {
            {"bcd 1|2||", [&] { EXPECT_EQ(0, report.DefineSubItem(0, &first)); }},
            {"bacd 1||2||", [&] { EXPECT_EQ(1, report.ActivateSubItem(0, 1)); }}, // between the two
            {"bacdc- 1||2||", [&] { report.SortItems(2, 0); }},
            {"abcb- |2||", [&] { EXPECT_EQ(1, report.UndefineSubItem(1)); }},
        },
        [&] {
            const std::string line = report.GetItemString(0, '|').c_str();
            return Columns() + SortMark() + ' ' + line.substr(0, line.size() - 1) + '|';
        });
    EXPECT_EQ(std::pair(5, -6), report.GetHeaderCtrl()->GetItemValues(2));
    EXPECT_EQ(5, report.GetItemImage(-1, 1)); // the fixed row has moved, too
    EXPECT_THROW(report.GetSubItemFromColumn(3), CInvalidArgException*);
    report.UndefineAllSubItems();
    EXPECT_EQ("", Columns() + SortMark());
}

TEST_F(ReportTest, TellsTheParentWhatTheMaskLetsThrough)
{
    Show(RVS_TREE, {"x"});
    report.SetItemData(0, 77);
    parent.answer = [&](NMHDR& told) {
        const _NMREPORTVIEW& sent = reinterpret_cast<_NMREPORTVIEW&>(told);
        EXPECT_EQ(report.m_hWnd, sent.hdr.hwndFrom);
        EXPECT_EQ(report.GetItemHandle(0), sent.treeItem);
        EXPECT_EQ("7 3 77", Line(sent.hdr.idFrom, sent.subitem, sent.itemData));
        return 5;
    };
    _RVHITTESTINFO hit = {};
    hit.subitem = 3;
    for (UINT k = 0; k < 19; ++k)
    {
        const UINT code = RVN_ITEMDRAWPREVIEW - k;
        report.ModifyProperty(RVP_NOTIFYMASK, 0xFFFFFFFF & ~(std::int64_t{1} << k));
        EXPECT_EQ(0, report.Notify(code, MK_LBUTTON, &hit)) << k;
        report.ModifyProperty(RVP_NOTIFYMASK, std::int64_t{1} << k);
        EXPECT_EQ(5, report.Notify(code, MK_LBUTTON, &hit)) << k;
        EXPECT_EQ(std::vector<UINT>{code}, std::exchange(parent.codes, {}));
    }
    EXPECT_THROW(report.Notify(RVN_KEYDOWN, 1, 0, 0, 0), CInvalidArgException*);
}

TEST_F(ReportTest, AsksForItemsWithoutStoringThem)
{
    Show(WS_VISIBLE | RVS_CALLBACK | RVS_TREE); // which are asked for, and so no tree
    int asked = 0;
    report.load = [&](_RVITEM& item) -> __int64 {
        ++asked;
        item.mask = RVIM_TEXT;
        std::strcpy(item.text, Line(item.item, item.subitem).c_str());
        return 0;
    };
    report.SetItemCount(2000000000);
    EXPECT_LT(0, asked); // painted already
    EXPECT_STREQ("1999999999 1", report.GetItemText(1999999999, 1).c_str());
    _RVHITTESTINFO hit = {};
    hit.pt = {10, 60};
    EXPECT_LT(0, report.HitTest(&hit));
    _RVFINDINFO find = {RVFI_TEXT, "x", 0, 0, 0};
    EXPECT_EQ("0 0 0",
              Line(report.SortItems(0, 1), report.FindItem(&find, 0, 5), report.SetItemState(0, 4, 4)));
    report.load = [&](_RVITEM&) -> __int64 { return report.DestroyWindow(), 0; };
    for (int i = 0; i < 2; ++i) // the second time there is nobody to ask any more
        EXPECT_STREQ("", report.GetItemText(0, 0).c_str());
}

TEST_F(ReportTest, KeepsColours)
{
    EXPECT_EQ(2, report.InsertColor(2, 0x30)); // black before it
    EXPECT_EQ(0, report.InsertColor(0, 0x10));
    EXPECT_EQ("0 0 1 1", Line(report.SetColor(4, 1), report.DeleteColor(4), report.SetColor(1, 0x20),
                              report.DeleteColor(2)));
    EXPECT_EQ(Line(3, 0x10, 0x20, 0x30, 0), Line(report.GetColorCount(), report.GetColor(0),
                                                 report.GetColor(1), report.GetColor(2), report.GetColor(3)));

    INT window = COLOR_WINDOW;
    const COLORREF before = ::GetSysColor(window);
    for (const COLORREF color : {COLORREF{0x123456}, before})
    {
        ::SetSysColors(1, &window, &color);
        report.SendMessage(WM_SYSCOLORCHANGE);
        EXPECT_EQ(color, report.GetSystemColor(RVSC_WINDOW));
    }
}

} // namespace
