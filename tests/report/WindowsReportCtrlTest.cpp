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

TEST_F(ReportTest, KeepsTheOdditiesOfItems)
{
    Define({"a", "b"});
    Fill({"one"});

    // The preview is not what SetItemText writes, though the item changes.
    report.Struct(0).previewText = "preview";
    report.Struct(0).previewTextColor = 3;
    EXPECT_EQ(1, report.SetItemText(0, -1, "x"));
    EXPECT_EQ(3, Read(0, -1).textColor);
    EXPECT_STREQ("preview", text);
    char small[4] = "";
    EXPECT_EQ(3, report.GetItemText(0, -1, small, sizeof(small)));
    EXPECT_STREQ("pre", small);

    report.SetItemText(0, 1, "cut\x07here");
    Read(0, 1);
    EXPECT_STREQ("cut", text);
    report.SetItemText(0, 0, nullptr);
    EXPECT_EQ(0u, Read(0, 0).mask & RVIM_TEXT);

    _RVITEM change;
    change.mask = RVIM_STATE | RVIM_ITEMDATA;
    change.state = 0xFF;
    change.itemData = 0x123456789;
    EXPECT_EQ(1, report.SetItem(&change));
    EXPECT_EQ(RVIS_FOCUSED | RVIS_COLLAPSED | RVIS_EXPANDED, report.Struct(0).state);
    EXPECT_EQ(0x23456789ul, report.GetItemData(0));
}

TEST_F(ReportTest, HandsOutTextsThatFit)
{
    Define({"a"});
    Fill({"text"});
    const std::pair<int, std::string> cases[] = {{-1, "------"},      {0, "------"},
                                                 {1, {"\0-----", 6}}, {2, {"t\0----", 6}},
                                                 {5, {"text\0-", 6}}, {6, {"text\0-", 6}}};
    for (const auto& [size, expected] : cases)
    {
        std::string buffer(6, '-');
        _RVITEM read;
        read.mask = RVIM_TEXT;
        read.text = buffer.data();
        read.textMax = size;
        EXPECT_EQ(1, report.GetItem(&read));
        EXPECT_EQ(expected, buffer) << size;
    }
}

TEST_F(ReportTest, MovesColumnsCellsAndTheSortMarkWithTheirSubItems)
{
    Define({"a", "b"});
    Fill({"1"});
    report.SetItemText(0, 1, "2");
    report.SetItemImage(-1, 1, 5);
    _RVSUBITEM first;
    EXPECT_EQ(0, report.DefineSubItem(0, &first));
    EXPECT_EQ(-1, report.GetColumnFromSubItem(0));
    EXPECT_EQ(2, report.GetSubItemFromColumn(1));
    EXPECT_THROW(report.GetSubItemFromColumn(2), CInvalidArgException*);
    EXPECT_EQ(1, report.ActivateSubItem(0, 1)); // between the two
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
    Create(RVS_CALLBACK);
    Define({"a", "b"});
    report.SetItemCount(2000000000);
    report.load = [&](_RVITEM& item) -> __int64 {
        if (item.item == 13)
            return 1;
        // Whoever asks for another item on the way gets it, and this one is not touched.
        EXPECT_STREQ(item.item == 5 ? "item 6/1" : "",
                     item.item == 5 ? report.GetItemText(6, 1).c_str() : "");
        item.mask = RVIM_TEXT | RVIM_IMAGE | RVIM_TEXTCOLOR;
        item.image = item.item % 100;
        item.textColor = 2;
        std::snprintf(item.text, static_cast<std::size_t>(item.textMax), "item %d/%d", item.item,
                      item.subitem);
        return 0;
    };
    EXPECT_EQ(5, Read(5, 0).image);
    EXPECT_STREQ("item 5/0", text);
    EXPECT_EQ(2, Read(1999999999, -1).textColor); // a preview: the answer's text
    EXPECT_STREQ("item 1999999999/-1", text);
    EXPECT_EQ(0u, Read(13, 0).mask & RVIM_TEXT); // the default item instead
    EXPECT_STREQ("item 5/-1", report.Struct(5).previewText.c_str());

    _RVITEM change;
    EXPECT_EQ(0, report.SetItem(&change));
    EXPECT_EQ(0, report.SortItems(0, 1));
    EXPECT_EQ(-1, report.InsertItem(0));
    Select(10, 3);
    report.SetItemCount(5);
    EXPECT_EQ(4, report.GetCurrentFocus());
    EXPECT_EQ("3 to 5", Selected()); // the next new row is selected

    // The text goes on into a shorter one without a terminator of its own.
    report.load = [](_RVITEM& item) -> __int64 {
        std::memcpy(item.text, "abc", 3);
        return 0;
    };
    EXPECT_STREQ("abc", report.GetItemText(0, 0).c_str());

    report.load = [&](_RVITEM&) -> __int64 {
        report.DestroyWindow();
        return 0;
    };
    EXPECT_STREQ("", report.GetItemText(0, 0).c_str());
    EXPECT_STREQ("", report.GetItemText(0, 0).c_str()); // nobody to ask any more
}

} // namespace
