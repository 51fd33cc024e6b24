#include "qmflattabctrl/QmFlatTabCtrl.h"
#include "tests/support/Keys.h"

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

    // Whether this page is seen and has the focus, and the other one is hidden.
    bool IsShown(const CWnd& page) const
    {
        return first.IsWindowVisible() == (&page == &first) &&
               second.IsWindowVisible() == (&page == &second) && ::GetFocus() == page.m_hWnd;
    }

    TabParent parent;
    CQmFlatTabCtrl& tabs = parent.tabs;
    CWnd first;
    CWnd second;
};

TEST_F(FlatTabCtrlTest, ShowsThePageOfTheSelectedTab)
{
    EXPECT_FALSE(tabs.AddTab(3, "Gap", &second));
    tabs.SetFocus();
    EXPECT_TRUE(IsShown(first));

    tabs.Refresh(1);
    EXPECT_TRUE(IsShown(second));
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

    second.DestroyWindow(); // the tab stays, without a page
    tabs.SetFocus();
    tabs.Refresh(0);
    EXPECT_TRUE(first.IsWindowVisible());
}

TEST_F(FlatTabCtrlTest, TellsTheParentWhatTheUserSelects)
{
    // Along the strip, from tab to tab and beyond.
    for (int x = 0; x < 300; x += 3)
        tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 195));
    EXPECT_EQ("1 ", parent.told);
    EXPECT_TRUE(IsShown(second));

    const HeldKey held(VK_CONTROL);
    MSG message = KeyMessage(second, VK_TAB);
    EXPECT_TRUE(tabs.PreTranslateMessage(&message));
    EXPECT_EQ("1 0 ", parent.told);
    EXPECT_TRUE(IsShown(first));
}

} // namespace
