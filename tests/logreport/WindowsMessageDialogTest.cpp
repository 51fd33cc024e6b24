// The dialog that shows one message, driven by its controls and by keys.
#include "QmLogWatch.h"
#include "tests/logreport/LogDialogDriver.h"
#include "tests/logreport/PlainMessages.h"
#include "tests/logreport/TaggedView.h"
#include "tests/support/Keys.h"
#include "tests/support/LogFolder.h"
#include "tests/support/NothingLeft.h"

namespace
{

struct OpeningViewer : CReportCtrlLog
{
    using CReportCtrlLog::OnOpenMessage;
};

struct OpeningWatch : CQmLogWatch
{
    using CQmLogWatch::OnOpenMessage;
};

// A key as the user presses it, through the message loop.
void Press(HWND window, UINT message, WPARAM key)
{
    ::PostMessage(window, message, key, 1);
    PumpMessages();
}

void Close(HWND dialog)
{
    ::SendMessage(dialog, WM_COMMAND, IDOK, 0);
}

void Tick(HWND dialog)
{
    ::SendMessage(dialog, WM_TIMER, 1, 0);
}

int TopLine(HWND dialog)
{
    return static_cast<int>(::SendDlgItemMessage(dialog, 2032, EM_GETFIRSTVISIBLELINE, 0, 0));
}

CRect PlaceIn(HWND dialog, int id)
{
    return PlaceOf(::GetDlgItem(dialog, id), dialog);
}

class MessageDialog : public LogFolderTest
{
protected:
    MessageDialog()
    {
        SetVariable("QM_PROFILE", Path("Profile.ini"));
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        EXPECT_TRUE(opening.Create(WS_CHILD, CRect(0, 0, 100, 100), &parent, 8));
        opening.SetSavesState(false);
        opening.SetLogMsgService(&viewed);
        for (std::int32_t id : {1, 3, 4})
            viewed.view.emplace(id, TaggedMessage(10 + id, "body " + std::to_string(id)));
    }
    ~MessageDialog() override
    {
        opening.SetLogMsgService(nullptr);
        SetVariable("QM_PROFILE", "");
    }

    void Open(std::uint32_t id, const std::function<void(HWND)>& act)
    {
        Driver driver("Log Message", act);
        opening.OnOpenMessage(id);
    }

    static std::string Shown(HWND dialog)
    {
        return Line(TextOf(dialog, 2032), ::IsWindowEnabled(::GetDlgItem(dialog, 2090)) ? "previous" : "-",
                    ::IsWindowEnabled(::GetDlgItem(dialog, 2051)) ? "next" : "-");
    }

    ReportParent parent;
    TaggedView<PlainService> viewed;
    OpeningViewer opening;
};

TEST_F(MessageDialog, ShowsEveryField)
{
    viewed.view.at(3).m_body = "first\nsecond \xC3\xA9";
    Open(3, [](HWND dialog) {
        EXPECT_EQ("373 186", SizeOf(dialog));
        const std::tuple<int, const char*, int, const char*> fields[] = {
            {2053, "Severity:", 2031, "Warning"},
            {2055, "Topic:", 2034, "topic"},
            {2052, "Time stamp:", 2030, "time"},
            {2054, "Source:", 2033, "source"},
            {2043, "Source line:", 2037, "8"},
            {2044, "Source column:", 2038, "12"},
            {2046, "Module:", 2040, "module"},
            {2047, "Runtime file:", 2041, "file"},
            {2048, "Runtime context:", 2042, "context"},
            {2057, "Line:", 2036, "6"},
            {2056, "Error number:", 2035, "-4"},
            {2045, "Who:", 2039, "who"},
            {2092, "", 1, "Close"},
            {2090, "&Previous", 2051, "&Next"},
        };
        for (const auto& [left, leftText, right, rightText] : fields)
            EXPECT_EQ(Line(leftText, rightText), Line(TextOf(dialog, left), TextOf(dialog, right)));
        EXPECT_EQ("Body:", TextOf(dialog, 2058));
        wchar_t body[30] = L"";
        ::GetWindowTextW(::GetDlgItem(dialog, 2032), body, 30);
        EXPECT_EQ(std::wstring(L"first\r\nsecond \x00E9"), body) << "whatever the code page is";
        EXPECT_NE(0, ::SendDlgItemMessage(dialog, 2059, STM_GETICON, 0, 0));
        EXPECT_NE(0, ::GetWindowLong(::GetDlgItem(dialog, 2031), GWL_STYLE) & ES_READONLY);
        Close(dialog);
    });
}

TEST_F(MessageDialog, StepsByButtonsAndKeys)
{
    Open(3, [](HWND dialog) {
        const HWND body = ::GetDlgItem(dialog, 2032);
        EXPECT_EQ("body 3 previous next", Shown(dialog));
        ::SetFocus(::GetDlgItem(dialog, 2051));
        ::SendMessage(dialog, WM_COMMAND, 2051, 0);
        EXPECT_EQ("body 4 previous -", Shown(dialog));
        EXPECT_EQ(body, ::GetFocus()) << "a disabled button keeps no focus";
        const std::tuple<UINT, WPARAM, const char*> keys[] = {
            {WM_SYSKEYDOWN, VK_LEFT, "body 3"}, {WM_SYSKEYDOWN, VK_UP, "body 1"},
            {WM_SYSKEYDOWN, VK_UP, "body 1"},   {WM_SYSKEYDOWN, VK_RIGHT, "body 3"},
            {WM_SYSKEYDOWN, VK_DOWN, "body 4"}, {WM_KEYDOWN, VK_PRIOR, "body 3"},
            {WM_KEYDOWN, VK_NEXT, "body 4"},    {WM_KEYDOWN, VK_LEFT, "body 4"},
        };
        for (const auto& [message, key, shown] : keys)
        {
            Press(body, message, key);
            EXPECT_EQ(shown, TextOf(dialog, 2032)) << &key - &std::get<1>(keys[0]);
        }
        Press(body, WM_KEYDOWN, VK_ESCAPE);
    });
}

TEST_F(MessageDialog, SelectsAllAndCopies)
{
    Open(3, [](HWND dialog) {
        const HWND topic = ::GetDlgItem(dialog, 2034);
        const auto selection = [](HWND field) {
            const LRESULT ends = ::SendMessage(field, EM_GETSEL, 0, 0);
            return Line(LOWORD(ends), HIWORD(ends));
        };
        const auto pressWithControl = [](HWND window, WPARAM key) {
            const HeldKey held(VK_CONTROL);
            MSG message = KeyMessage(window, key);
            if (!CWnd::WalkPreTranslateTree(nullptr, &message))
                ::SendMessage(window, WM_COPY, 0, 0); // as the field does for Ctrl+C
        };
        pressWithControl(::GetFocus(), 'C');
        EXPECT_EQ("body 3", ClipboardText(dialog));
        ::SetFocus(topic);
        pressWithControl(topic, 'A');
        EXPECT_EQ("0 5", selection(topic));
        ::SetFocus(::GetDlgItem(dialog, IDOK));
        pressWithControl(::GetDlgItem(dialog, IDOK), 'A');
        EXPECT_EQ("0 6", selection(::GetDlgItem(dialog, 2032)));
        EXPECT_EQ(::GetDlgItem(dialog, 2032), ::GetFocus());
        Close(dialog);
    });
}

TEST_F(MessageDialog, ALongBodyScrollsAndWraps)
{
    std::string lines;
    for (int line = 0; line < 100; ++line)
        lines += std::string(200, 'x') + "\r\n";
    viewed.view.at(3).m_body = lines.c_str();
    Open(3, [&](HWND dialog) {
        const CRect place = PlaceIn(dialog, 2032);
        Press(::GetDlgItem(dialog, 2032), WM_KEYDOWN, VK_NEXT);
        EXPECT_GT(TopLine(dialog), 0) << "page keys are the body's";
        ::SendDlgItemMessage(dialog, 2032, EM_LINESCROLL, 0, 40 - TopLine(dialog));
        viewed.view.at(3).m_topic = "another";
        Tick(dialog);
        EXPECT_EQ("40 another", Line(TopLine(dialog), TextOf(dialog, 2034)));
        const auto style = [&] { return ::GetWindowLong(::GetDlgItem(dialog, 2032), GWL_STYLE); };
        EXPECT_NE(0, style() & ES_AUTOHSCROLL);
        ::CheckDlgButton(dialog, 2091, BST_CHECKED);
        ::SendMessage(dialog, WM_COMMAND, 2091, 0);
        EXPECT_EQ(0, style() & ES_AUTOHSCROLL);
        EXPECT_GE(TopLine(dialog), 80) << "the same text is at the top, in more lines";
        EXPECT_TRUE(place == PlaceIn(dialog, 2032));
        ::SendMessage(dialog, WM_COMMAND, 2090, 0);
        EXPECT_EQ(0, TopLine(dialog));
        Close(dialog);
    });
    Open(3, [&](HWND dialog) {
        EXPECT_EQ(1u, ::IsDlgButtonChecked(dialog, 2091)) << "remembered";
        EXPECT_GT(::SendDlgItemMessage(dialog, 2032, EM_GETLINECOUNT, 0, 0), 190);
        Close(dialog);
    });
}

TEST_F(MessageDialog, FollowsItsMessageAndOutlivesTheService)
{
    viewed.busy = true;
    opening.OnOpenMessage(3); // would not come back
    viewed.busy = false;
    Open(3, [&](HWND dialog) {
        viewed.view = {{1, {13, "body 3"}}, {2, {14, "body 4"}}};
        Tick(dialog);
        EXPECT_EQ("body 3 - next", Shown(dialog));
        viewed.busy = true;
        Tick(dialog);
        EXPECT_EQ("body 3 - -", Shown(dialog));
        viewed.busy = false;
        viewed.view.erase(1);
        Tick(dialog);
        EXPECT_EQ("No longer in the view", TextOf(dialog, 2092));
        opening.SetLogMsgService(nullptr);
        ::SendMessage(dialog, WM_COMMAND, 2051, 0);
        EXPECT_EQ("body 3 - -", Shown(dialog));
        opening.SetLogMsgService(&viewed);
        Tick(dialog);
        EXPECT_EQ("body 3 - next", Shown(dialog));
        opening.DestroyWindow();
        Tick(dialog);
        EXPECT_EQ("body 3 - -", Shown(dialog));
        Close(dialog);
    });
}

TEST_F(MessageDialog, ResizesAndRemembersItsPlace)
{
    const std::tuple<int, int, int, int, int> gains[] = {
        // id, what its edges gain of 61 more across and 40 more down
        {2053, 0, 0, 0, 0},   {2031, 0, 0, 30, 0},    {2055, 30, 0, 30, 0}, {2034, 30, 0, 61, 0},
        {2032, 0, 0, 61, 40}, {2090, 61, 40, 61, 40}, {1, 61, 40, 61, 40},
    };
    CRect window;
    Open(3, [&](HWND dialog) {
        std::map<int, CRect> before;
        for (const auto& gain : gains)
            before[std::get<0>(gain)] = PlaceIn(dialog, std::get<0>(gain));
        window = PlaceOf(dialog);
        ::SetWindowPos(dialog, nullptr, 20, 30, 10, 10, SWP_NOZORDER);
        const CRect least = PlaceOf(dialog);
        EXPECT_EQ(Line(window.Width(), window.Height()), Line(least.Width(), least.Height()));
        ::SetWindowPos(dialog, nullptr, 20, 30, window.Width() + 61, window.Height() + 40, SWP_NOZORDER);
        for (const auto& [id, left, top, right, bottom] : gains)
        {
            const CRect place = PlaceIn(dialog, id);
            const CRect& old = before[id];
            EXPECT_EQ(Line(left, top, right, bottom),
                      Line(place.left - old.left, place.top - old.top, place.right - old.right,
                           place.bottom - old.bottom))
                << id;
        }
        Close(dialog);
    });
    Open(3, [&](HWND dialog) {
        const CRect again = PlaceOf(dialog);
        EXPECT_EQ(Line(20, 30, window.Width() + 61, window.Height() + 40),
                  Line(again.left, again.top, again.Width(), again.Height()));
        ::SetWindowPos(dialog, nullptr, 5000, 5000, 0, 0, SWP_NOZORDER | SWP_NOSIZE);
        Close(dialog);
    });
    Open(3, [&](HWND dialog) {
        const CRect again = PlaceOf(dialog);
        EXPECT_LE(again.right, ::GetSystemMetrics(SM_CXSCREEN));
        EXPECT_LE(again.bottom, ::GetSystemMetrics(SM_CYSCREEN));
        Close(dialog);
    });
}

TEST_F(MessageDialog, LeavesNothingBehindAndOpensFromTheWatch)
{
    ExpectNothingLeft([this] { Open(3, Close); }, LeakRounds());
    OpeningWatch watch;
    ASSERT_TRUE(watch.Create(WS_CHILD, CRect(0, 0, 100, 20), &parent, 9));
    watch.SetLogMsgService(&viewed);
    Driver driver("Log Message", [](HWND dialog) {
        EXPECT_EQ("body 4 previous -", Shown(dialog));
        Close(dialog);
    });
    watch.OnOpenMessage(4);
}

} // namespace
