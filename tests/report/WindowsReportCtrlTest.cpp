#include "ReportCell.h"
#include "ReportHeaderCtrl.h"
#include "tests/report/ReportFixture.h"

#include <cstdio>
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
    Define({"a"});
    Fill({"1", "2"});
    report.SetItemHeight(20);
    report.Struct(1).previewHeight = 30;
    const auto heightOf = [this](int row) {
        int height = 0;
        return report.GetRowHeight(row, height) ? height : -1;
    };
    EXPECT_EQ(50, heightOf(1));
    EXPECT_EQ(20, heightOf(RVI_DEFAULT));
    for (const int row : {-2, 2})
        EXPECT_THROW(heightOf(row), CInvalidArgException*) << row;
    report.SetShowReport(TRUE); // no previews: all rows have one height, and none is looked at
    EXPECT_EQ(20, heightOf(2));

    Create(RVS_CALLBACK);
    report.ModifyProperty(RVP_SHOWPREVIEW, 1);
    report.load = [](_RVITEM& item) -> __int64 { return item.item == 1; };
    report.SetItemCount(2);
    EXPECT_EQ(20, heightOf(0));
    for (const int row : {-2, 1, 2}) // the callback has no item 1
        EXPECT_EQ(-1, heightOf(row)) << row;
}

TEST_F(ReportTest, TakesInputOnTheBackgroundOfDialogs)
{
    const auto background = [this] {
        ::RedrawWindow(report, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return ::GetPixel(CClientDC(&report), 250, 150);
    };
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    const COLORREF window = ::GetSysColor(COLOR_WINDOW);
    parent.ShowWindow(SW_SHOWNA);
    Create(WS_VISIBLE | RVS_FACEBACKGROUND);
    EXPECT_TRUE(report.IsWindowEnabled());
    EXPECT_EQ(face, background());
    EXPECT_EQ(1, report.ModifyStyle(0, RVS_NOHEADER));
    EXPECT_EQ(face, background()) << "another style has changed";
    EXPECT_EQ(1, report.ModifyStyle(RVS_FACEBACKGROUND, 0));
    EXPECT_EQ(0, report.ModifyStyle(RVS_FACEBACKGROUND, 0));
    EXPECT_EQ(window, background());
    report.EnableWindow(FALSE);
    EXPECT_EQ(face, background()) << "disabled";
    EXPECT_EQ(1, report.ModifyStyle(RVS_NOHEADER, 0));
    EXPECT_FALSE(report.IsWindowEnabled());
    EXPECT_EQ(1, report.ModifyStyle(0, RVS_FACEBACKGROUND));
    report.EnableWindow(TRUE);
    EXPECT_EQ(face, background());
}

TEST_F(ReportTest, HandsOutTextsThatFit)
{
    Define({"a"});
    Fill({"text"});
    report.SetItemPreview(0, "a preview", 10, 3);
    const struct
    {
        int subitem, size;
        std::string expected;
    } cases[] = {{0, -1, "------"},      {0, 0, "------"},
                 {0, 1, {"\0-----", 6}}, {0, 2, {"t\0----", 6}},
                 {0, 5, {"text\0-", 6}}, {-1, 2, {"a preview\0", 10}}}; // which is not cut
    for (const auto& [subitem, size, expected] : cases)
    {
        std::string buffer(expected.size(), '-');
        _RVITEM read;
        read.subitem = subitem;
        read.mask = RVIM_TEXT;
        read.text = buffer.data();
        read.textMax = size;
        EXPECT_EQ(1, report.GetItem(&read));
        EXPECT_EQ(expected, buffer) << size;
        EXPECT_EQ(subitem < 0 ? 3 : -1, read.textColor);
    }
    char small[4] = "";
    EXPECT_EQ(3, report.GetItemText(0, -1, small, sizeof(small)));
    EXPECT_STREQ("a p", small);
    EXPECT_EQ(1, report.SetItemText(0, -1, "x")); // changes no preview
    EXPECT_STREQ("a preview", report.GetItemText(0, -1).c_str());
    _RVITEM change;
    change.mask = RVIM_ITEMDATA;
    change.itemData = 0x123456789;
    EXPECT_EQ(1, report.SetItem(&change));
    EXPECT_EQ(0x23456789ul, report.GetItemData(0));
}

TEST_F(ReportTest, NeedsNoSubclassForStatesAndPreviews)
{
    Define({"a"});
    Fill({"1", "2"});
    report.SetItemHeight(20);
    Select(1, 1);
    EXPECT_EQ(1, report.SetItemState(1, ~0u, RVIS_BOLD | RVIS_READONLY | RVIS_OWNERDRAWN | RVIS_COLLAPSED));
    EXPECT_EQ(1, report.SetItemState(1, 0, RVIS_READONLY | RVIS_FOCUSED));
    EXPECT_EQ(RVIS_FOCUSED | RVIS_SELECTED | RVIS_BOLD | RVIS_OWNERDRAWN, report.GetItemState(1));
    EXPECT_EQ(1, report.SetItemPreview(1, "below", 30));
    int height = 0;
    EXPECT_TRUE(report.GetRowHeight(1, height) && height == 50);
    EXPECT_EQ(1, report.SetItemPreview(1, nullptr, 0));
    EXPECT_TRUE(report.GetRowHeight(1, height) && height == 20);
    EXPECT_STREQ("", report.GetItemText(1, -1).c_str());
    EXPECT_EQ(1, report.SetItemState(RVI_DEFAULT, RVIS_BOLD, RVIS_BOLD));
    EXPECT_EQ(1, report.SelectNone());
    EXPECT_EQ("0 to -1", Selected());
    EXPECT_EQ(1, report.GetCurrentFocus());

    EXPECT_EQ(0, report.SetItemState(-2, 4, 4) + report.SetItemState(2, 4, 4));
    EXPECT_EQ(0u, report.GetItemState(2));
    Create(RVS_CALLBACK);
    report.SetItemCount(1);
    EXPECT_EQ(0, report.SetItemState(0, 4, 4));
}

TEST_F(ReportTest, ReadsBackWhatItWasGiven)
{
    Define({"a", "b"});
    _RVSUBITEM definition;
    definition.text = "caption";
    definition.format = HDF_RIGHT | RVSF_IMAGE;
    definition.header1 = 5;
    definition.header2 = -6;
    definition.image = 3;
    report.RedefineSubItem(1, &definition);
    report.SetSubItemWidth(1, 77);
    _RVSUBITEM read;
    EXPECT_EQ(1, report.GetSubItem(1, &read));
    EXPECT_STREQ("caption", read.text);
    EXPECT_EQ(std::tuple(HDF_RIGHT | RVSF_IMAGE, 77, 5, -6, 3),
              std::tuple(read.format, read.width, read.header1, read.header2, read.image));
    EXPECT_EQ(0, report.GetSubItem(-1, &read) + report.GetSubItem(2, &read));

    __int64 value = 0;
    EXPECT_EQ(1, report.ModifyProperty(RVP_MARGIN, 9));
    EXPECT_TRUE(report.GetProperty(RVP_MARGIN, &value) && value == 9);
    EXPECT_EQ(0, report.GetProperty(99, &value));
    report.ModifyProperty(RVP_STRINGSEPARATOR, ';');
    Fill({"1"});
    EXPECT_STREQ("1;\n", report.GetItemString(0).c_str());
    report.ModifyProperty(RVP_STRINGSEPARATOR, '\t');
    report.InsertColor(1, RGB(1, 2, 3));
    EXPECT_EQ(2, report.GetColorCount());
    EXPECT_EQ(1, report.SetBkImage(0)); // none

    CReportHeaderCtrl& header = *report.GetHeaderCtrl();
    EXPECT_EQ(std::tuple(1, 1, 1),
              std::tuple(header.GetItemOfColumn(1), header.GetColumn(1), header.GetSubItem(1)));
    header.SetItemFiltered(1, true);
    EXPECT_TRUE(header.IsItemFiltered(1) && !header.IsItemFiltered(0));
}

// As a subclass that keeps items by itself needs them.
TEST_F(ReportTest, ReadsCellsThatAnotherHasEncoded)
{
    Define({"a", "b", "c"});
    Fill({nullptr});
    ZEMA::String cells;
    CReportCell::Reset(cells, 1);
    _RVITEM cell;
    cell.mask = RVIM_TEXT | RVIM_CHECK;
    cell.subitem = 2; // number 1 is added
    cell.text = text;
    cell.check = 1;
    std::strcpy(text, "a text");
    EXPECT_EQ(1, CReportCell::Write(cells, &cell));
    EXPECT_EQ(1, CReportCell::Insert(cells, 0));
    EXPECT_EQ(1, CReportCell::Remove(cells, 1));
    report.Struct(0).cells = cells;
    EXPECT_EQ(1, report.GetItemCheck(0, 2));
    EXPECT_STREQ("a text", report.GetItemText(0, 2).c_str());

    const std::tuple<int, int, const char*, unsigned> reads[] = {
        {2, 6, "a t", RVIM_TEXT | RVIM_CHECK}, {1, -1, "", 0}, {3, -1, "", 0}, {-1, -1, "", 0}};
    for (const auto& [subitem, length, expected, mask] : reads)
    {
        char small[4] = "";
        cell.mask = RVIM_TEXT;
        cell.subitem = subitem;
        cell.text = small;
        cell.textMax = sizeof(small);
        EXPECT_EQ(length, CReportCell::Read(cells, &cell)) << subitem;
        EXPECT_STREQ(expected, small) << subitem;
        EXPECT_EQ(mask, cell.mask) << subitem;
    }
    EXPECT_EQ(0, CReportCell::Write(cells, &cell) + CReportCell::Insert(cells, -1) +
                     CReportCell::Remove(cells, -1));
}

class FineReport : public TestReport
{
public:
    int dpi = 192;
    int GetResolution() override { return dpi; }
};

using ReportResolution = ReportTestOf<FineReport>;

TEST_F(ReportResolution, MakesWhatTheOwnerHasNotSetLarger)
{
    EXPECT_EQ(20, report.GetItemHeight());
    _RVSUBITEM wide;
    report.ActivateSubItem(report.DefineSubItem(0, &wide), -1);
    EXPECT_EQ(400, report.GetSubItemWidth(0));
    report.SetItemHeight(30);
    report.dpi = 96;
    report.SendMessage(WM_DPICHANGED_AFTERPARENT);
    EXPECT_EQ(30, report.GetItemHeight());
    __int64 margin = 0;
    EXPECT_TRUE(report.GetProperty(RVP_MARGIN, &margin) && margin == 6);

    // Whatever the font needs.
    report.ModifyProperty(RVP_FITITEMHEIGHT, 1);
    const int plain = report.GetItemHeight();
    CFont font;
    LOGFONT large = {};
    large.lfHeight = 60;
    font.CreateFontIndirect(&large);
    report.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font.GetSafeHandle()));
    EXPECT_GT(plain, 13);
    EXPECT_GT(report.GetItemHeight(), plain + 40);
}

TEST_F(ReportTest, MovesColumnsCellsAndTheSortMarkWithTheirSubItems)
{
    Define({"a", "b"});
    Fill({"1"});
    report.SetItemText(0, 1, "2");
    report.SetItemImage(-1, 1, 5);
    _RVSUBITEM first;
    first.header1 = 5;
    first.header2 = -6;
    EXPECT_EQ(0, report.DefineSubItem(0, &first));
    EXPECT_EQ(-1, report.GetColumnFromSubItem(0));
    EXPECT_EQ(2, report.GetSubItemFromColumn(1));
    EXPECT_THROW(report.GetSubItemFromColumn(2), CInvalidArgException*);
    EXPECT_EQ(1, report.ActivateSubItem(0, 1)); // between the two
    EXPECT_EQ(std::pair(5, -6), report.GetHeaderCtrl()->GetItemValues(2));
    EXPECT_STREQ("1\t\t2\n", report.GetItemString(0, '\t').c_str());

    EXPECT_EQ(1, report.SortItems(2, 0));
    EXPECT_EQ(1, report.UndefineSubItem(1));
    int subitem = 0;
    int ascending = 1;
    EXPECT_EQ(1, report.GetSortSettings(&subitem, &ascending));
    EXPECT_EQ(1, subitem);
    EXPECT_EQ(0, ascending);
    EXPECT_STREQ("|2\n", report.GetItemString(0, '|').c_str());
    EXPECT_EQ(5, report.GetItemImage(-1, 1)); // the fixed row has moved, too
    report.UndefineAllSubItems();
    EXPECT_EQ(0, report.GetActiveSubItemCount());
    EXPECT_EQ(0, report.GetSortSettings(&subitem, &ascending));
    EXPECT_EQ(-1, subitem);
}

TEST_F(ReportTest, TellsTheParentWhatTheMaskLetsThrough)
{
    parent.answer = [](NMHDR& header) { return header.code == RVN_KEYDOWN ? 5 : 0; };
    const std::int64_t all = 0xFFFFFFFF;
    for (UINT k = 0; k < 19; ++k)
    {
        const UINT code = RVN_ITEMDRAWPREVIEW - k;
        parent.codes.clear();
        report.ModifyProperty(RVP_NOTIFYMASK, all & ~(std::int64_t{1} << k));
        EXPECT_EQ(0, report.Notify(code, -1, 0, 0, 0));
        report.ModifyProperty(RVP_NOTIFYMASK, std::int64_t{1} << k);
        EXPECT_EQ(code == RVN_KEYDOWN ? 5 : 0, report.Notify(code, -1, 0, 0, 0));
        EXPECT_EQ(std::vector<UINT>{code}, parent.codes);
    }

    // What is sent: the sender, and the item's tree item and data.
    report.ModifyProperty(RVP_NOTIFYMASK, all);
    report.ModifyStyle(0, RVS_TREE);
    Define({"a"});
    _TREEITEM* const item = report.InsertTreeItem(nullptr, nullptr, "x");
    report.SetItemData(0, 77);
    _RVHITTESTINFO hit = {};
    hit.subitem = 3;
    parent.answer = [&](NMHDR& header) {
        const _NMREPORTVIEW& sent = reinterpret_cast<_NMREPORTVIEW&>(header);
        EXPECT_EQ(report.m_hWnd, sent.hdr.hwndFrom);
        EXPECT_EQ(7u, sent.hdr.idFrom);
        EXPECT_EQ(item, sent.treeItem);
        EXPECT_EQ(3, sent.subitem);
        EXPECT_EQ(77, sent.itemData);
        return 1;
    };
    EXPECT_EQ(1, report.Notify(RVN_ITEMCLICK, MK_LBUTTON, &hit));
    EXPECT_THROW(report.Notify(RVN_KEYDOWN, 1, 0, 0, 0), CInvalidArgException*);
}

TEST_F(ReportTest, AsksForItemsWithoutStoringThem)
{
    Create(RVS_CALLBACK | RVS_TREE); // which are asked for, and so no tree
    Define({"a", "b"});
    parent.ShowWindow(SW_SHOWNA);
    report.ShowWindow(SW_SHOWNA);
    int asked = 0;
    report.load = [&](_RVITEM& item) -> __int64 {
        ++asked;
        item.mask = RVIM_TEXT;
        std::snprintf(item.text, static_cast<std::size_t>(item.textMax), "item %d/%d", item.item,
                      item.subitem);
        return 0;
    };
    report.SetItemCount(2000000000);
    EXPECT_LT(0, asked); // painted already
    Read(1999999999, 1);
    EXPECT_STREQ("item 1999999999/1", text);
    _RVHITTESTINFO hit = {};
    hit.pt = {10, 60};
    EXPECT_LT(0, report.HitTest(&hit));
    EXPECT_EQ(0, report.SortItems(0, 1));

    report.load = [&](_RVITEM&) -> __int64 {
        report.DestroyWindow();
        return 0;
    };
    EXPECT_STREQ("", report.GetItemText(0, 0).c_str());
    EXPECT_STREQ("", report.GetItemText(0, 0).c_str()); // nobody to ask any more
}

} // namespace
