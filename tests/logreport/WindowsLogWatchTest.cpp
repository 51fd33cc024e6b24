// The watch window: what it shows and opens.
#include "QmLogWatch.h"
#include "tests/logreport/PlainMessages.h"

namespace
{

class LogWatch : public testing::Test
{
protected:
    struct TestWatch : CQmLogWatch
    {
        void OnOpenMessage(std::uint32_t id) override { opened += std::to_string(id) + " "; }
        std::string opened;
    };

    LogWatch()
    {
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        EXPECT_TRUE(watch.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 20), &parent, 1));
        watch.SetLogMsgService(&service);
    }

    void Add(const std::string& body, std::uint32_t level)
    {
        service.messages.emplace_back(body, level);
        watch.AddMsg(static_cast<std::uint32_t>(service.messages.size()), &service.messages.back());
    }

    std::string Open(UINT message, WPARAM key = 0)
    {
        watch.opened.clear();
        watch.SendMessage(message, key, MAKELPARAM(30, 10));
        return watch.opened;
    }

    // How many pixels differ from the background, left of the text and in it.
    std::string Drawn()
    {
        watch.UpdateWindow();
        picture.Take(watch);
        const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
        const int image = 16 * 16 - picture.Count(CRect(0, 0, 16, 16), face);
        const int text = 284 * 20 - picture.Count(CRect(16, 0, 300, 20), face);
        return Line(image > 0 ? "image" : "", text > 0 ? "text" : "");
    }

    ReportParent parent;
    PlainService service;
    TestWatch watch;
    ReportPicture picture{300, 20};
};

TEST_F(LogWatch, ShowsAndOpensTheLatestError)
{
    EXPECT_EQ("image ", Drawn());
    EXPECT_EQ("", Open(WM_LBUTTONDBLCLK));
    Add("fails\r\nbecause", 4);
    Add("a warning", 3);
    EXPECT_STREQ("fails(...)", watch.GetShownText().c_str());
    EXPECT_EQ("image text", Drawn());
    EXPECT_EQ("1 ", Open(WM_LBUTTONDBLCLK));
    EXPECT_EQ("1 ", Open(WM_KEYDOWN, VK_RETURN));
    EXPECT_EQ("", Open(WM_KEYDOWN, VK_TAB));
    watch.SetMsgIdRange(1, 1);
    EXPECT_EQ(1, watch.GetShownMsg());
    service.messages.clear();
    EXPECT_EQ("", Open(WM_LBUTTONDBLCLK)) << "the service has it no more";
    Add("next", 5);
    EXPECT_EQ("1 ", Open(WM_LBUTTONDBLCLK));
    watch.SetLogMsgService(nullptr);
    EXPECT_STREQ("next", watch.GetShownText().c_str());
    EXPECT_EQ("", Open(WM_LBUTTONDBLCLK));
    PlainService another;
    watch.SetLogMsgService(&another);
    EXPECT_EQ(-1, watch.GetShownMsg());
    watch.SetLogMsgService(&service);
    Add("again", 4);
    watch.Clear();
    EXPECT_EQ("-1 ", Line(watch.GetShownMsg(), watch.GetShownText().c_str()));
    EXPECT_EQ("image ", Drawn());
    EXPECT_EQ("", Open(WM_LBUTTONDBLCLK));
    EXPECT_EQ("-1 1", Line(watch.GetMaxLogSize(), watch.GetWnd() == &watch));
}

// Fed by a list that it is attached to, and made of a window of a dialog.
TEST_F(LogWatch, IsAViewerLikeOthers)
{
    TestViewer list;
    ASSERT_TRUE(list.Create(WS_CHILD, CRect(0, 0, 100, 100), &parent, 2));
    list.SetAttachedViewer(&watch);
    const PlainMessage message("attached", 5);
    list.AddMsg(7, const_cast<PlainMessage*>(&message));
    EXPECT_EQ("7 attached", Line(watch.GetShownMsg(), watch.GetShownText().c_str()));
    TestWatch other;
    ASSERT_TRUE(other.SubclassWindow(::CreateWindowEx(0, "STATIC", "", WS_CHILD | WS_VISIBLE, 0, 40, 300, 20,
                                                      parent, nullptr, nullptr, nullptr)));
    other.AddMsg(7, const_cast<PlainMessage*>(&message));
    other.UpdateWindow();
    picture.Take(other);
    EXPECT_LT(picture.Count(CRect(16, 0, 300, 20), ::GetSysColor(COLOR_BTNFACE)), 284 * 20);
    EXPECT_EQ(::GetSysColor(COLOR_BTNFACE), picture.At(299, 19)) << "painted by the watch";
}

} // namespace
