// What a report control paints again when something changes, and what it asks its owner for then.
#include "tests/report/ReportFixture.h"
#include "tests/report/ReportPicture.h"

namespace
{

class ReportRedraw : public ReportTest
{
protected:
    std::vector<DWORD> Shown()
    {
        for (const HWND hwnd :
             {report.m_hWnd, report.m_hWnd, report.m_hWnd, header}) // one may show a scroll bar
            ::UpdateWindow(hwnd);
        picture.Take(report);
        return picture.Pixels();
    }
    // Which rows of the window are to be painted.
    std::string Changed()
    {
        CRect rect;
        ::GetUpdateRect(report, rect, FALSE);
        report.UpdateWindow();
        return std::to_string(rect.top / kItemHeight) + ".." + std::to_string(rect.bottom / kItemHeight);
    }
    int HitAt(int x, int y)
    {
        hit.pt = {x, y};
        report.HitTest(&hit);
        return hit.row;
    }

    ReportPicture picture;
    _RVHITTESTINFO hit = {};
};

TEST_F(ReportRedraw, WhatHasChangedIsPainted)
{
    Show(WS_VISIBLE | RVS_CELLFOCUS | RVS_TREE, Texts(8, "x"));
    report.SetFocus();
    report.ModifyProperty(RVP_KEYS, RVK_COLUMNS);
    const int keys[] = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_SPACE, VK_HOME, VK_END};
    const std::vector<int> both = {VK_CONTROL, VK_SHIFT};
    const WPARAM modifiers[] = {0, 0, MK_SHIFT, MK_CONTROL};
    const std::function<void()> changes[] = {
        [&] { report.SetTreeFocus(report.GetItemHandle(Below(8))); },
        [&] { report.GetTreeFocus(); },
        [&] { report.SetItemState(Below(8), Below(2) ? RVIS_BOLD : 0u, RVIS_BOLD); },
        [&] { report.SetItemPreview(Below(8), "preview", Below(2) * 15); },
        [&] { report.SetItemText(Below(8), Below(3), Below(2) ? "some text" : "x"); },
        [&] { report.SortItems(0, Below(2)); },
        [&] { report.SetSubItemWidth(Below(3), 20 + Below(60)); },
        [&] { report.InsertTreeItem(report.GetItemHandle(Below(2)), nullptr, "x"); },
        [&] { report.Expand(report.GetItemHandle(Below(2)), RVE_TOGGLE); },
        [&] { report.DeleteItem(8); },
        [&] { report.SendMessage(Below(2) ? WM_KILLFOCUS : WM_SETFOCUS); },
        [&] { report.SelectRows(Below(8), Below(8), 1, Below(2), Below(2), 1); },
        [&] { report.SelectNone(); },
        [&] { Key(VK_RIGHT, both); }, // moves the column
        [&] { DragHeader(report.GetSubItemWidth(0), 20 + Below(60)); },
    };
    for (int step = 0; step < 300; ++step)
    {
        const int what = Below(18 + static_cast<int>(std::size(changes)));
        if (what < 9)
            Key(keys[Below(7)]);
        else if (what < 18) // on cells, right of them and below them
            Click(Below(300), Below(200), modifiers[Below(4)]);
        else
            changes[what - 18]();
        const std::vector<DWORD> shown = Shown();
        Redraw();
        ASSERT_TRUE(shown == Shown()) << "step " << step << ": " << what << ", " << State();
    }
}

// After any paint, a change invalidates what it changes, and only that.
TEST_F(ReportRedraw, AsksForPaintsOfWhatChanges)
{
    ShowRows(0, 100);
    report.SendMessage(WM_VSCROLL, SB_BOTTOM);
    report.DeleteItem(99); // a paint that moves the position
    Redraw();
    const auto change = [&](int item) { report.SetItemText(item, 0, "y"); };
    const std::string all = "0..10", none = "0..0";
    Follow(
        {
            {all, [&] { report.ScrollWindow(SB_VERT, 20); }},
            {"2..3", [&] { change(22); }},
            {"2..5", [&] { change(22), change(24); }},
            {none, [&] { change(19), change(30); }},
            {none, [&] { report.SelectRows(23, 23, 1, 0, 0, 0); }},
            {none, [&] { report.SelectRows(21, 24, 1, 0, 0, 1); }}, // painted at once
            {all,
             [&] {
                 for (int item = 20; item < 30; ++item)
                     change(item);
             }},
            {"4..5", [&] { report.RedrawItems(24, RVI_NONE); }},
            {all, [&] { report.RedrawItems(23, 24); }}, // which may be anywhere
            {"3..5", [&] { report.RedrawRows(23, 24, 0); }},
            {none, [&] { report.RedrawRows(23, 24, 1); }},
            {"3..4", [&] { report.SetItemState(23, RVIS_BOLD, RVIS_BOLD); }},
            {all, [&] { report.SetItemPreview(23, "preview", 0); }},
            {all, [&] { report.InsertItem(0, "x"); }},
            {all, [&] { report.DeleteItem(0); }},
            {all, [&] { report.MoveUp(23); }},
            {all, [&] { report.SetItemRowArray(*report.GetItemRowArray()); }},
            {all, [&] { report.InsertColor(0, 1), report.SetColor(0, 2); }},
            {all, [&] { report.SetImageList(nullptr, nullptr); }},
            {all, [&] { report.ModifyProperty(RVP_MARGIN, 2); }},
            {all, [&] { report.SendMessage(WM_SYSCOLORCHANGE); }},
            {all, [&] { report.EnableWindow(FALSE), report.EnableWindow(TRUE); }},
            {none, [&] { report.SetRedraw(0), report.UpdateWindow(), report.InsertItem(0, "x"), change(1); }},
            {all, [&] { report.SetRedraw(1); }},
        },
        [&] { return Changed(); });
}

TEST_F(ReportRedraw, APaintWithinAPaintIsMadeUpFor)
{
    ShowRows(RVS_CALLBACK, 0);
    report.SetItemCount(1);
    Redraw();
    int calls = 0;
    report.moment = [&](std::string_view kind) {
        if (kind == "callback" && calls++ == 0)
            Redraw();
    };
    Redraw();
    EXPECT_EQ("0..10", Changed());
    EXPECT_EQ("0..0", Changed());
}

// A point hits what is seen there: rows above it are not asked for again, until something has changed.
TEST_F(ReportRedraw, PointsHitWhatWasPainted)
{
    ShowRows(RVS_CALLBACK, 0);
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
    asked = 0;
    EXPECT_EQ(9, HitAt(60, 9 * kItemHeight + 3));
    EXPECT_EQ(1, asked) << "the cell";
    report.SetSubItemWidth(0, 70); // and the columns are those of now
    HitAt(60, 3);
    EXPECT_EQ(0, hit.column);
    const auto shift = [&](int rows) { height = rows * kItemHeight; };
    Follow(
        {
            {"9", [&] { report.UpdateWindow(), shift(5); }},
            {"4", [&] { report.RedrawItems(0, RVI_NONE); }},
            {"6", [&] { report.UpdateWindow(), shift(3), report.SetRedraw(0), report.RedrawRows(0, 0, 0); }},
            {"4", [&] { report.SetRedraw(1), report.UpdateWindow(), shift(5), report.SetItemCount(99); }},
        },
        [&] { return Line(HitAt(60, 9 * kItemHeight + 3)); });
    report.ScrollWindow(SB_VERT, 50);
    for (int paint = 0; paint < 2; ++paint, report.UpdateWindow())
        EXPECT_EQ(59, HitAt(60, 9 * kItemHeight + 3)) << paint;
}

} // namespace
