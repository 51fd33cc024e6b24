// Finding in the message viewer, by keys and by the controls of its window.
#include "tests/logreport/LogDialogDriver.h"
#include "tests/logreport/PlainMessages.h"
#include "tests/support/Keys.h"
#include "tests/support/NothingLeft.h"

namespace
{

// Its controls.
constexpr int kText = 9611;
constexpr int kPlace = 9612;
constexpr int kCase = 9613;
constexpr int kWord = 9614;
constexpr int kExpression = 9615;
constexpr int kUp = 9616;
constexpr int kDown = 9617;
constexpr int kState = 9618;

class LogFind : public MessageViewerTest
{
protected:
    LogFind()
    {
        for (const char* const body : {"one cat", "two", "three CAT", "concatenate", "na\xC3\xAFve (cat"})
            service.messages.emplace_back(body);
        Announce();
    }
    void Announce()
    {
        viewer.AddMsg(static_cast<std::uint32_t>(service.messages.size()), nullptr);
        Tick();
    }

    static HWND Window() { return ::FindWindow("#32770", "Find"); }
    static std::string State() { return TextOf(Window(), kState); }
    static bool IsOn(int id) { return ::IsWindowEnabled(::GetDlgItem(Window(), id)) != FALSE; }

    // As a program's message loop would.
    static void Key(HWND to, WPARAM key)
    {
        MSG message = KeyMessage(to, key);
        if (!CWnd::WalkPreTranslateTree(nullptr, &message))
            ::SendMessage(to, WM_KEYDOWN, key, 1);
    }

    static void Check(int id, bool isOn)
    {
        ::SendDlgItemMessage(Window(), id, BM_SETCHECK, isOn, 0);
        ::SendMessage(Window(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
    }

    void Enter(const wchar_t* text)
    {
        ::SetWindowTextW(::GetDlgItem(Window(), kText), text);
        ::SendMessage(Window(), WM_COMMAND, MAKEWPARAM(kText, CBN_EDITCHANGE), 0);
        Search();
    }

    // Until nothing is left to do.
    void Search()
    {
        for (int i = 0; i < 50; ++i)
            viewer.SendMessage(WM_TIMER, 9001);
    }

    std::string Next()
    {
        ::SendMessage(Window(), WM_COMMAND, IDOK, 0);
        return Arrived();
    }

    std::string Arrived()
    {
        Search();
        int first = -1;
        int last = -1;
        viewer.GetSelectedRows(&first, &last);
        EXPECT_EQ(0, service.holds);
        return Line(viewer.GetCurrentFocus(), first, last) + " " + State();
    }
};

TEST_F(LogFind, GoesFromMessageToMessage)
{
    viewer.SetFocus();
    Key(viewer, VK_F3);
    ASSERT_TRUE(Window()) << "nothing was found before";
    EXPECT_FALSE(IsOn(IDOK)) << "nothing to find";
    Enter(L"cat");
    EXPECT_TRUE(IsOn(IDOK));
    EXPECT_EQ("4 found", State());
    EXPECT_EQ("0 0 0 1 of 4", Next());
    EXPECT_EQ("2 2 2 2 of 4", Next());
    EXPECT_EQ(1, service.mostHolds) << "the view is held";
    Key(Window(), VK_RETURN);
    EXPECT_EQ("3 3 3 3 of 4", Arrived());
    Key(::GetDlgItem(Window(), kCase), VK_F3);
    EXPECT_EQ("4 4 4 4 of 4", Arrived());
    EXPECT_EQ("0 0 0 Wrapped at the end. 1 of 4", Next());
    ::CheckRadioButton(Window(), kUp, kDown, kUp);
    EXPECT_EQ("4 4 4 Wrapped at the beginning. 4 of 4", Next());
    EXPECT_EQ("3 3 3 3 of 4", Next());
    Check(kCase, true);
    Search();
    EXPECT_EQ("2 of 3", State()) << "each row that is looked at has its number";
    Check(kWord, true);
    EXPECT_EQ("0 0 0 1 of 2", Next());
    Check(kWord, false);
    Check(kExpression, true);
    Enter(L"t(e");
    EXPECT_EQ("At character 4: missing closing parenthesis", State());
    EXPECT_FALSE(IsOn(IDOK));
    Enter(L"t(e|h)");
    EXPECT_EQ("3 3 3 Wrapped at the beginning. 2 of 2", Next());
    Check(kExpression, false);
    Enter(L"na\xEFve");
    EXPECT_EQ("4 4 4 Wrapped at the beginning. 1 of 1", Next());
    Enter(L"nowhere");
    EXPECT_EQ("4 4 4 Not found", Next());
    EXPECT_EQ(4, ::SendDlgItemMessage(Window(), kText, CB_GETCOUNT, 0, 0)) << "texts that were found";

    Key(::GetDlgItem(Window(), kText), VK_ESCAPE);
    EXPECT_FALSE(Window());
    EXPECT_EQ(viewer.m_hWnd, ::GetFocus());
    viewer.SetSelection(0, 0);
    viewer.OpenFind("cat");
    ::SendMessage(Window(), WM_COMMAND, IDCANCEL, 0);
    Key(viewer, VK_F3);
    EXPECT_EQ("0 0 0 ", Arrived()) << "in the same case, as before";
    Key(viewer, VK_F3);
    EXPECT_EQ("3 3 3 ", Arrived());
    const HeldKey shift(VK_SHIFT);
    Key(viewer, VK_F3);
    EXPECT_EQ("0 0 0 ", Arrived());
}

TEST_F(LogFind, LooksWhereTheUserLooks)
{
    viewer.OpenFind("10:00");
    Search();
    EXPECT_EQ("Not found", State()) << "the bodies alone are shown";
    viewer.SetShowReport(1);
    Search();
    EXPECT_EQ("5 found", State());
    const auto look = [&](int place) {
        ::SendDlgItemMessage(Window(), kPlace, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
        ::SendMessage(Window(), WM_COMMAND, MAKEWPARAM(kPlace, CBN_SELCHANGE), 0);
        Search();
        return State();
    };
    EXPECT_EQ("Not found", look(1 + kLogMsgBody));
    EXPECT_EQ("5 found", look(1 + kLogMsgTimestamp));
    EXPECT_EQ("Not found", look(1 + kLogMsgSourceColumn));
    Enter(L"0");
    EXPECT_EQ("5 found", State());
}

TEST_F(LogFind, FollowsTheView)
{
    viewer.OpenFind("cat");
    Search();
    service.messages.emplace_back("a fifth cat");
    Announce();
    EXPECT_EQ("0 0 0 1 of 5", Next());
    service.messages.pop_front();
    viewer.SetMsgIdRange(1, 5);
    Announce();
    Search();
    EXPECT_EQ("4 found", State()) << "row 0 is another message";
    service.busy = true;
    Search();
    EXPECT_FALSE(IsOn(IDOK));
    EXPECT_EQ("No messages can be found at the moment.", State());
    service.busy = false;
    viewer.Clear();
    Tick();
    EXPECT_EQ("-1 0 0 Not found", Next()) << "no row is left";
    viewer.ShowCleared();
    Announce();
    Search();
    EXPECT_EQ("4 found", State());
    ::SendMessage(Window(), WM_COMMAND, IDOK, 0);
    EXPECT_EQ(1, service.holds) << "a jump has begun";
    viewer.SetLogMsgService(nullptr);
    EXPECT_EQ(0, service.holds);
    Search();
    EXPECT_FALSE(IsOn(IDOK));
}

TEST_F(LogFind, SurvivesWhatHappensMeanwhile)
{
    const auto open = [this] {
        viewer.OpenFind("cat");
        ::SendMessage(Window(), WM_COMMAND, IDOK, 0);
    };
    open();
    EXPECT_EQ(1, service.holds);
    ::SendMessage(Window(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(0, service.holds) << "closed in the midst of a jump";
    open();
    TestViewer other;
    ASSERT_TRUE(other.Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 8));
    other.OpenFind("dog");
    EXPECT_EQ("dog", TextOf(Window(), kText));
    other.DestroyWindow();
    EXPECT_EQ("cat", TextOf(Window(), kText));
    int asked = 0;
    service.moment = [&](std::string_view moment) {
        if (moment == "get" && ++asked == 3)
            viewer.DestroyWindow();
    };
    Search();
    EXPECT_FALSE(Window());
    EXPECT_EQ(0, service.holds);
    service.moment = [](std::string_view) {};
    auto mortal = std::make_unique<TestViewer>();
    ASSERT_TRUE(mortal->Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 8));
    mortal->SetLogMsgService(&service);
    mortal->AddMsg(4, nullptr);
    mortal->TakeOver();
    mortal->OpenFind("cat");
    service.moment = [&](std::string_view moment) {
        if (moment == "get")
            mortal.reset();
    };
    ::SendMessage(*mortal, WM_TIMER, 9001, 0);
    EXPECT_FALSE(mortal || Window());
    service.moment = [](std::string_view) {};
}

TEST_F(LogFind, LeavesNothingBehind)
{
    ExpectNothingLeft(
        [this] {
            viewer.OpenFind("cat");
            Next();
            ::SendMessage(Window(), WM_COMMAND, IDCANCEL, 0);
        },
        LeakRounds());
}

} // namespace
