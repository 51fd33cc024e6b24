#include "qmflattabctrl/QmFlatTabCtrl.h"

#include "tests/support/GdiObjects.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace
{

class TabParent : public CWnd
{
public:
    std::string told; // the tabs that the user selected
    CQmFlatTabCtrl tabs;

protected:
    BOOL OnNotify(WPARAM id, LPARAM lParam, LRESULT*) override
    {
        const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.code == static_cast<UINT>(TCN_SELCHANGE) && id == 7 && header.hwndFrom == tabs.m_hWnd)
            told += std::to_string(tabs.GetSelectedTab()) + " ";
        return TRUE;
    }
};

class FlatTabCtrlTest : public testing::Test
{
protected:
    FlatTabCtrlTest()
    {
        parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                        nullptr);
        const CRect rect(0, 0, 300, 200);
        tabs.Create(WS_CHILD | WS_VISIBLE, CQmFlatTabCtrl::kTabsAtBottom, rect, &parent, 7);
        for (CWnd* page : {&first, &second})
            page->Create(nullptr, "", WS_CHILD, CRect(0, 0, 0, 0), &parent, 1);
        tabs.AddTab(0, "Main", &first);
        tabs.AddTab(1, "Run", &second);
        tabs.SelectTab(0);
    }

    std::string VisiblePages() const
    {
        return std::string(first.IsWindowVisible() ? "first" : "") +
               (second.IsWindowVisible() ? "second" : "");
    }

    TabParent parent;
    CQmFlatTabCtrl& tabs = parent.tabs;
    CWnd first;
    CWnd second;
};

TEST_F(FlatTabCtrlTest, ShowsThePageOfTheSelectedTab)
{
    EXPECT_FALSE(tabs.AddTab(3, "Gap", &second));
    EXPECT_EQ("first", VisiblePages());
    EXPECT_EQ(tabs.m_hWnd, ::GetParent(first));
    tabs.SetFocus();
    EXPECT_EQ(first.m_hWnd, ::GetFocus());

    tabs.Refresh(1);
    EXPECT_EQ("second", VisiblePages());
    EXPECT_EQ(second.m_hWnd, ::GetFocus());
    tabs.Refresh(2);
    tabs.Refresh(-1);
    EXPECT_EQ(1, tabs.GetSelectedTab());
    EXPECT_EQ("", parent.told);

    tabs.MoveWindow(0, 0, 200, 100);
    CRect page;
    second.GetClientRect(page);
    EXPECT_EQ(200, page.Width());
    EXPECT_GT(page.Height(), 60);
    EXPECT_LT(page.Height(), 100) << "the strip has its place";
}

TEST_F(FlatTabCtrlTest, TellsTheParentWhatTheUserSelects)
{
    // Along the strip, from tab to tab and beyond.
    for (int x = 0; x < 300; x += 3)
        tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 195));
    EXPECT_EQ("1 ", parent.told);
    EXPECT_EQ("second", VisiblePages());
    EXPECT_EQ(second.m_hWnd, ::GetFocus());

    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    ::SetKeyboardState(keys);
    MSG message = {};
    message.hwnd = second;
    message.message = WM_KEYDOWN;
    message.wParam = VK_TAB;
    EXPECT_TRUE(tabs.PreTranslateMessage(&message));
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
    EXPECT_EQ("1 0 ", parent.told);
    EXPECT_EQ("first", VisiblePages());
}

TEST_F(FlatTabCtrlTest, DrawsTheSelectedTabInThePagesColour)
{
    tabs.UpdateWindow();
    const unsigned objects = CountGdiObjects();
    for (int round = 0; round < 5; ++round)
    {
        tabs.SelectTab(round % 2);
        tabs.UpdateWindow();
    }
    EXPECT_EQ(objects, CountGdiObjects());
    CClientDC dc(&tabs);
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), dc.GetPixel(3, 190));
    EXPECT_EQ(::GetSysColor(COLOR_BTNFACE), dc.GetPixel(290, 190));
}

} // namespace
