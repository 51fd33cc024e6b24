// The message viewer's window: what it is made of, what it takes over when, what it asks of its service.
#include "tests/logreport/PlainMessages.h"
#include "tests/support/Keys.h"

#include "ReportHeaderCtrl.h"

namespace
{

using MessageViewer = MessageViewerTest;

TEST_F(MessageViewer, IsMadeAsDescribed)
{
    const int widths[] = {150, 100, 100, 300, 80, 100, 80, 100, 80, 100, 100, 100, 80};
    ASSERT_EQ(13, viewer.GetSubItemCount());
    for (int subitem = 0; subitem < 13; ++subitem)
    {
        _RVSUBITEM definition;
        viewer.GetSubItem(subitem, &definition);
        EXPECT_STREQ(LogMsgDataKindText(subitem), definition.text);
        EXPECT_EQ(widths[subitem], definition.width);
        EXPECT_EQ(16384u, definition.format);
        const int column = subitem == 0 ? 0 : subitem == 1 ? 1 : subitem == 3 ? 2 : -1;
        EXPECT_EQ(column, viewer.GetColumnFromSubItem(subitem));
    }
    const DWORD style = viewer.GetStyle();
    constexpr DWORD kStyles =
        RVS_CALLBACK | RVS_DRAGCOLUMNS | RVS_KEEPSELECTION | WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP;
    EXPECT_EQ(kStyles, style & (kStyles | RVS_HORIZONTALGRID));
    __int64 value = 0;
    EXPECT_EQ(1, viewer.GetProperty(RVP_SHOWPREVIEW, &value));
    EXPECT_EQ(1, value);
    viewer.GetProperty(RVP_EMPTYTEXT, &value);
    EXPECT_STREQ("No Log message", reinterpret_cast<const char*>(value));
    EXPECT_EQ("0 1", Line(viewer.GetShowReport(), viewer.GetHideRow()));
    EXPECT_EQ("1 65536 0", Line(viewer.GetFollow(), viewer.GetMaxLogSize(), viewer.GetMessageOffset()));
    EXPECT_EQ(&viewer, CReportCtrlLog::GetCurrent());
    EXPECT_EQ(&viewer, viewer.GetWnd());

    // What the creator gave stays; a window made again has the same columns, and no service.
    viewer.DestroyWindow();
    EXPECT_EQ(nullptr, CReportCtrlLog::GetCurrent());
    ASSERT_TRUE(
        viewer.Create(WS_CHILD | RVS_SINGLESELECT | RVS_HORIZONTALGRID, CRect(0, 0, 9, 9), &parent, 7));
    EXPECT_EQ(nullptr, viewer.GetLogMsgService());
    EXPECT_EQ("13 3", Line(viewer.GetSubItemCount(), viewer.GetActiveSubItemCount()));
    EXPECT_EQ(DWORD{RVS_SINGLESELECT}, viewer.GetStyle() & (RVS_SINGLESELECT | RVS_HORIZONTALGRID));

    // The other way to make one.
    const HWND window = ::CreateWindowEx(0, "QmReportCtrl", "", WS_CHILD, 0, 0, 100, 100, parent, nullptr,
                                         AfxGetInstanceHandle(), nullptr);
    ASSERT_NE(nullptr, window);
    TestViewer other;
    ASSERT_TRUE(other.SubclassWindow(window));
    EXPECT_EQ(kStyles, other.GetStyle() & kStyles);
    EXPECT_EQ("13 3", Line(other.GetSubItemCount(), other.GetActiveSubItemCount()));
}

TEST_F(MessageViewer, TakesOverTwiceASecondWhatItIsTold)
{
    Add(PlainMessage("one"));
    EXPECT_EQ("0 0 1", Line(viewer.GetItemCount(), viewer.GetMessageOffset(), viewer.GetLastMessage()));
    viewer.SendMessage(WM_TIMER, 9001);
    EXPECT_EQ(0, viewer.GetItemCount()) << "another timer";
    Tick();
    EXPECT_EQ("1 1 one", Line(viewer.GetItemCount(), viewer.GetMessageOffset(), Text(0, kLogMsgBody)));
    Add(PlainMessage("two", 4));
    Add(PlainMessage("three"));
    Tick();
    EXPECT_EQ("3 two 4", Line(viewer.GetItemCount(), Text(1, kLogMsgBody), Text(1, kLogMsgLevel)));
    EXPECT_EQ(3, viewer.GetItemImage(1, kLogMsgLevel));
    EXPECT_EQ("Rows:3", std::string(viewer.GetStatusText().c_str()));
    viewer.SelectMsg(3);
    EXPECT_EQ("Rows:3 | Selected:1 | Current:2", std::string(viewer.GetStatusText().c_str()));
    viewer.SelectMsg(99);
    viewer.SelectMsg(0);
    EXPECT_EQ(2, viewer.GetCurrentFocus()) << "unknown messages leave it where it is";
    EXPECT_THROW(viewer.SetSelection(0, 3), CInvalidArgException*);

    viewer.Clear();
    EXPECT_EQ(3, viewer.GetItemCount());
    Tick();
    EXPECT_EQ(0, viewer.GetItemCount());
    Add(PlainMessage("four"));
    Tick();
    EXPECT_EQ("1 4 four", Line(viewer.GetItemCount(), viewer.GetMessageOffset(), Text(0, kLogMsgBody)));
    viewer.ShowCleared();
    viewer.SetMsgIdRange(1, 2);
    Tick();
    EXPECT_EQ("2 one", Line(viewer.GetItemCount(), Text(0, kLogMsgBody)));
    viewer.SetMsgIdRange(1, 0);
    Tick();
    EXPECT_EQ(0, viewer.GetItemCount());
}

TEST_F(MessageViewer, KeepsClonesOnlyAsLongAsItsListDoes)
{
    viewer.SetLogMsgService(nullptr);
    Add(PlainMessage("before any service"));
    Tick();
    EXPECT_EQ("1 0", Line(viewer.GetItemCount(), service.lists));
    EXPECT_EQ("", Text(0, kLogMsgBody));
    Paint();
    viewer.SetLogMsgService(&service);
    service.makesList = false;
    Add(PlainMessage("no list"));
    service.makesList = true;
    for (const bool takes : {true, false})
    {
        service.takesClones = takes;
        Add(PlainMessage(
            "a message")); // a clone that is kept twice, or by nobody, shows under a leak checker
        EXPECT_EQ(1, service.lists);
    }
    viewer.AddMsg(1, nullptr);
    CCacheMsgData cannotBeCloned;
    viewer.AddMsg(1, &cannotBeCloned);
    PlainService another;
    another.messages.emplace_back("another's");
    viewer.SetLogMsgService(&another);
    EXPECT_EQ(0, service.lists) << "it goes with its service";
    viewer.AddMsg(1, nullptr);
    Tick();
    EXPECT_EQ("1 another's", Line(viewer.GetItemCount(), Text(0, kLogMsgBody)));
    viewer.SetLogMsgService(nullptr);
    EXPECT_EQ(0, another.lists);
}

TEST_F(MessageViewer, TellsTheAttachedViewerFirst)
{
    struct Attached : ILogViewer
    {
        void SetLogMsgService(ILogMsgService*) override {}
        void AddMsg(std::uint32_t id, ILogMsgData* message) override
        {
            told += Line("add", id, message != nullptr, viewer->GetLastMessage()) + ", ";
            EXPECT_EQ(nullptr, viewer->FindCacheMsgData(1)) << "nothing is looked up meanwhile";
        }
        void SetMsgIdRange(std::uint32_t first, std::uint32_t last) override
        {
            told += Line("range", first, last, viewer->GetLastMessage()) + ", ";
        }
        void Present(std::uint32_t) override {}
        CWnd* GetWnd() override { return nullptr; }
        CReportCtrlLog* viewer = nullptr;
        std::string told;
    } attached;
    attached.viewer = &viewer;
    viewer.SetAttachedViewer(&attached);
    Add(PlainMessage("one"));
    viewer.AddMsg(2, nullptr);
    viewer.SetMsgIdRange(1, 7);
    EXPECT_EQ("add 1 1 0, add 2 0 1, range 1 7 2, ", attached.told);
    viewer.SetAttachedViewer(nullptr);
    EXPECT_NE(nullptr, viewer.FindCacheMsgData(1));
}

TEST_F(MessageViewer, AClickOnAHeaderSorts)
{
    viewer.SetShowReport(1);
    CReportHeaderCtrl& header = *viewer.GetHeaderCtrl();
    const auto click = [&](int item) {
        NMHEADER note = {{header, 0, static_cast<UINT>(HDN_ITEMCLICKA)}, item, 0, nullptr};
        viewer.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&note));
    };
    const auto keys = [&] {
        int subitem = 0;
        int ascending = 0;
        const int marked = viewer.GetSortSettings(&subitem, &ascending);
        return Line(service.key.field, service.key.ascending, service.applied) + (marked ? " at " : " not ") +
               (marked ? Line(subitem, ascending) : "");
    };
    const int body = header.GetItemOfColumn(2);
    click(body);
    EXPECT_EQ("3 1 1 at 3 1", keys());
    click(body);
    EXPECT_EQ("3 0 2 at 3 0", keys());
    click(body);
    EXPECT_EQ("3 1 3 at 3 1", keys());
    click(header.GetItemOfColumn(0));
    EXPECT_EQ("0 1 4 at 0 1", keys());
    service.busy = true;
    click(body);
    EXPECT_EQ("0 1 4 at 0 1", keys()) << "while the service is busy";
    service.busy = false;
    parent.takes = true;
    click(body);
    EXPECT_EQ("0 1 4 at 0 1", keys()) << "the parent has cancelled it";
    parent.takes = false;
    viewer.SetShowReport(0);
    click(body);
    EXPECT_EQ("3 1 5 at 3 1", keys()) << "with previews alone as well";

    // The header shows what the service has.
    service.key.field = kLogMsgTopic;
    service.filters[1].field = kLogMsgLevel;
    service.filters[2].field = kLogMsgWho;
    viewer.RefreshHeader();
    EXPECT_EQ("2 1 5 not ", keys()) << "a subitem without a column";
    for (int column = 0; column < 3; ++column)
        EXPECT_EQ(column == 1, header.IsItemFiltered(header.GetItemOfColumn(column)));
    service.key.field = kLogMsgNone;
    service.filters[1].field = kLogMsgNone;
    viewer.RefreshHeader();
    EXPECT_EQ("-1 1 5 not ", keys());
    EXPECT_FALSE(header.IsItemFiltered(header.GetItemOfColumn(1)));
    viewer.SetLogMsgService(nullptr);
    click(body);
}

TEST_F(MessageViewer, FollowsUntilTheUserScrollsUp)
{
    const auto add = [this] {
        for (int i = 0; i < 50; ++i)
            Add(PlainMessage("a message"));
        Tick();
        return viewer.IsItemVisible(viewer.GetItemCount() - 1, -1) ? "at the end" : "elsewhere";
    };
    EXPECT_STREQ("at the end", add());
    viewer.SendMessage(WM_VSCROLL, SB_TOP);
    EXPECT_FALSE(viewer.IsFollowPaused());
    EXPECT_STREQ("at the end", add()) << "pausing is off at first";
    viewer.SetFollowPauses(true);
    viewer.SendMessage(WM_VSCROLL, SB_LINEUP);
    EXPECT_TRUE(viewer.IsFollowPaused());
    EXPECT_STREQ("elsewhere", add());
    viewer.SendMessage(WM_VSCROLL, SB_BOTTOM);
    EXPECT_STREQ("at the end", add());
    viewer.SelectMsg(viewer.GetLastMessage());
    EXPECT_FALSE(viewer.IsFollowPaused());
    viewer.SendMessage(WM_KEYDOWN, VK_HOME);
    EXPECT_STREQ("elsewhere", add());
    viewer.SendMessage(WM_KEYDOWN, VK_END);
    EXPECT_STREQ("at the end", add());
    viewer.SelectMsg(3);
    EXPECT_STREQ("elsewhere", add());
    viewer.SetFollow(1);
    EXPECT_STREQ("at the end", add()) << "asked for again";
    viewer.SetWindowPos(nullptr, 0, 0, 300, 60, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_STREQ("at the end", add()) << "a smaller window is no scrolling";
    viewer.SetFollow(0);
    EXPECT_STREQ("elsewhere", add());
}

TEST_F(MessageViewer, ShiftExtendsFromTheMessageThatWasSelectedLast)
{
    for (int number = 0; number < 9; ++number)
        Add(PlainMessage("x"));
    Tick();
    viewer.SendMessage(WM_KEYDOWN, VK_HOME);
    viewer.SelectMsg(6);
    const HeldKey held(VK_SHIFT);
    viewer.SendMessage(WM_KEYDOWN, VK_DOWN);
    int first = 0;
    int last = 0;
    viewer.GetSelectedRows(&first, &last);
    EXPECT_EQ("5 6", Line(first, last));
    viewer.SetSelection(2, 3);
    viewer.SendMessage(WM_KEYDOWN, VK_DOWN);
    viewer.GetSelectedRows(&first, &last);
    EXPECT_EQ("2 4", Line(first, last));
}

TEST_F(MessageViewer, ClicksGoToTheParentAndThenToTheMessage)
{
    Add(PlainMessage("one"));
    Tick();
    Paint();
    CRect row;
    ASSERT_EQ(1, viewer.GetRowRect(0, -1, row, RVRC_WHOLE));
    const auto click = [this, at = MAKELPARAM(30, row.top + 3)](UINT message) {
        viewer.told.clear();
        viewer.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at);
        viewer.SendMessage(WM_LBUTTONUP, 0, at);
        viewer.SendMessage(message, MK_LBUTTON, at);
        return viewer.told;
    };
    EXPECT_EQ("open 1 ", click(WM_LBUTTONDBLCLK));
    viewer.SelectNone();
    viewer.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(30, row.top + 3));
    EXPECT_EQ("Rows:1 | Selected:1", std::string(viewer.GetStatusText().c_str()))
        << "a menu is for a message";
    EXPECT_EQ("menu ", click(WM_RBUTTONDOWN));
    viewer.told.clear();
    viewer.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(viewer.m_hWnd), -1); // by a key
    EXPECT_EQ("menu ", viewer.told);
    parent.takes = true;
    EXPECT_EQ("", click(WM_LBUTTONDBLCLK));
    EXPECT_EQ("", click(WM_RBUTTONDOWN));
    parent.takes = false;
    service.messages.clear();
    EXPECT_EQ("", click(WM_LBUTTONDBLCLK)) << "the service does not have it any more";
    viewer.SetLogMsgService(nullptr);
    EXPECT_EQ("", click(WM_LBUTTONDBLCLK));
}

TEST_F(MessageViewer, PresentsThroughItsParent)
{
    struct Presenter : CWnd
    {
        Presenter() { CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 99, 99, nullptr, nullptr); }
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            if (message == ::RegisterWindowMessage("QmPresentMessageId"))
                told = Line(reinterpret_cast<HWND>(wParam) == from, lParam);
            return CWnd::WindowProc(message, wParam, lParam);
        }
        HWND from = nullptr;
        std::string told;
    } presenter;
    TestViewer other;
    ASSERT_TRUE(other.Create(WS_CHILD, CRect(0, 0, 9, 9), &presenter, 1));
    presenter.from = other;
    other.Present(0xFFFFFFFE);
    EXPECT_EQ("1 4294967294", presenter.told);
    TestViewer without;
    without.Present(1);
}

// Whatever a service does while it is asked, the viewer stays in a clear state.
TEST_F(MessageViewer, BearsWhatServicesDo)
{
    const std::pair<const char*, std::function<void()>> acts[] = {
        {"takes itself away", [this] { viewer.SetLogMsgService(nullptr); }},
        {"brings itself again",
         [this] {
             viewer.SetLogMsgService(nullptr);
             viewer.SetLogMsgService(&service);
         }},
        {"tells of a message", [this] { viewer.AddMsg(2, service.Find(2)); }},
        {"tells of a view", [this] { viewer.SetMsgIdRange(1, 1); }},
        {"clears", [this] { viewer.Clear(); }},
        {"ticks", [this] { Tick(); }},
        {"selects", [this] { viewer.SelectMsg(1); }},
        {"asks", [this] { viewer.FindCacheMsgData(2); }},
        {"refreshes", [this] { viewer.RefreshHeader(); }},
        {"destroys the window", [this] { viewer.DestroyWindow(); }}};
    for (const auto& [what, act] : acts)
        for (const char* const when :
             {"add", "list", "get", "keys", "set keys", "filters", "apply", "busy", "create"})
        {
            SCOPED_TRACE(std::string(what) + " at " + when);
            service.moment = [](std::string_view) {};
            viewer.DestroyWindow();
            viewer.SetLogMsgService(nullptr);
            service.messages.clear();
            service.key = {};
            Create();
            service.messages.emplace_back("one", 3);
            service.messages.emplace_back("two", 4);
            int calls = 0;
            bool within = false;
            service.moment = [&, doIt = &act](std::string_view moment) {
                if (moment != when || within)
                    return;
                within = true;
                ++calls;
                (*doIt)();
                within = false;
            };
            viewer.AddMsg(1, service.Find(1));
            viewer.AddMsg(2, service.Find(2));
            Tick(); // messages to a window that is gone do nothing
            if (viewer.m_hWnd)
                Paint();
            NMHEADER note = {{nullptr, 0, static_cast<UINT>(HDN_ITEMCLICKA)}, 0, 0, nullptr};
            viewer.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&note));
            viewer.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(30, 30));
            viewer.AddMsg(3, nullptr);
            Tick();
            EXPECT_TRUE(calls > 0 || (what == std::string("clears") && when == std::string("get")));
            EXPECT_LE(service.lists, 1);
        }
    service.moment = [](std::string_view) {};
}

TEST_F(MessageViewer, PutsUpWithWhatIsNotThere)
{
    struct Nothing : CCacheMsgData
    {
        const char* GetTimestamp() const override { return nullptr; }
        const char* GetLevelText() const override { return nullptr; }
        const char* GetBody() const override { return nullptr; }
        const char* GetModule() const override { return nullptr; }
        const char* GetRuntimeFile() const override { return nullptr; }
        const char* GetRuntimeContext() const override { return nullptr; }
        std::uint32_t GetIndent(std::uint32_t) const override { return 0xFFFFFFFF; }
        std::uint32_t GetLevel() const override { return 0xFFFFFFFF; }
    } nothing;
    OneMessageService empty(nothing, 1);
    viewer.SetLogMsgService(&empty);
    viewer.AddMsg(3, &nothing);
    Tick();
    for (const int show : {0, 1})
    {
        viewer.SetShowReport(show);
        Paint();
        for (int row = 0; row < 3; ++row)
            for (int subitem = 0; subitem < 13; ++subitem)
                EXPECT_EQ(subitem == 4 || subitem == 6 || subitem == 8 || subitem == 12 ? row == 0 ? "0" : ""
                                                                                        : "",
                          Text(row, subitem));
    }
    viewer.SetShowReport(0);
    int height = 0;
    EXPECT_TRUE(viewer.GetRowHeight(2, height));
    EXPECT_GT(height, 5) << "a message that is missing has a line";
    viewer.SetLogMsgService(nullptr);
}

TEST_F(MessageViewer, TwoOfThemShowTwoServices)
{
    PlainService others;
    others.messages.emplace_back("others");
    TestViewer second;
    ASSERT_TRUE(second.Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 8));
    second.SetLogMsgService(&others);
    Add(PlainMessage("mine"));
    second.AddMsg(1, nullptr);
    Tick();
    second.SendMessage(WM_TIMER, 9000);
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ("mine others", Line(Text(0, kLogMsgBody), second.GetItemText(0, kLogMsgBody).c_str()));
    second.SetLogMsgService(nullptr);
    second.DestroyWindow();
    EXPECT_EQ(nullptr, CReportCtrlLog::GetCurrent()) << "the last one that was made is gone";
}

TEST_F(MessageViewer, DirectModeAsksTheServiceAlone)
{
    TestViewer direct;
    direct.SetDirectMode(true);
    ASSERT_TRUE(direct.Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 8));
    EXPECT_EQ(&viewer, CReportCtrlLog::GetCurrent());
    direct.SetLogMsgService(&service);
    service.messages.emplace_back("one");
    service.messages.emplace_back("two");
    direct.SetItemCount(3);
    EXPECT_STREQ("one", direct.GetItemText(1, kLogMsgBody).c_str()) << "row 1 is id 1";
    EXPECT_EQ("0 0", Line(service.lists, service.asked));
    service.messages[0] = PlainMessage("changed");
    EXPECT_STREQ("changed", direct.GetItemText(1, kLogMsgBody).c_str());
}

} // namespace
