// Windows, their objects and their message maps.
#include "afxcmn.h"
#include "tests/support/GuiCounts.h"
#include "tests/support/Line.h"
#include "tests/support/WindowApp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace
{
// Notes what its handlers were given.
class NotingWnd : public CWnd
{
public:
    bool Show(DWORD style = WS_POPUP, CWnd* parent = nullptr)
    {
        return CreateEx(0, nullptr, "noting", style, CRect(0, 0, 100, 50), parent, parent ? 7 : 0) != FALSE;
    }

    std::string notes;

protected:
    template <typename... Values> void Note(const Values&... values) { notes += Line(values...) + "\n"; }

    afx_msg int OnCreate(LPCREATESTRUCT create)
    {
        Note("create", create->lpszName);
        return CWnd::OnCreate(create);
    }
    afx_msg void OnMove(int x, int y) { Note("move", x, y); }
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags) { Note("key", key, repeat, flags); }
    afx_msg void OnLButtonDown(UINT flags, CPoint point) { Note("button", flags, point.x, point.y); }
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint)
    {
        return Note("wheel", flags, delta), delta > 0;
    }
    afx_msg void OnTimer(UINT_PTR timer) { Note("timer", timer); }
    afx_msg void OnSysColorChange()
    {
        Note("colours");
        CWnd::OnSysColorChange();
    }
    afx_msg void OnSettingChange(UINT action, LPCSTR section)
    {
        Note("setting", action, section);
        CWnd::OnSettingChange(action, section);
    }
    afx_msg void OnOpen() { Note("base open"); }
    afx_msg void OnNotifyClick(NMHDR* header, LRESULT* result)
    {
        Note("notify", header->idFrom);
        *result = 5;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(NotingWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_MOVE()
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEWHEEL()
    ON_WM_TIMER()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_SETTINGCHANGE()
    ON_COMMAND(100, &ThisClass::OnOpen)
    ON_COMMAND(101, &ThisClass::OnOpen)
    ON_NOTIFY(NM_CLICK, 9, &ThisClass::OnNotifyClick)
END_MESSAGE_MAP()

// Overrides a line of its base class's map and adds commands.
class DerivedWnd : public NotingWnd
{
protected:
    afx_msg void OnDerivedOpen() { Note("derived open"); }
    afx_msg void OnRange(UINT id) { Note("range", id); }
    afx_msg void OnEditChange() { Note("change"); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DerivedWnd, NotingWnd)
    ON_COMMAND(100, &ThisClass::OnDerivedOpen)
    ON_COMMAND_RANGE(200, 202, &ThisClass::OnRange)
    ON_EN_CHANGE(8, &ThisClass::OnEditChange)
END_MESSAGE_MAP()

TEST(MfcWindow, HandlersGetTheUnpackedMessage)
{
    NotingWnd wnd;
    ASSERT_TRUE(wnd.Show());
    wnd.SendMessage(WM_MOVE, 0, MAKELPARAM(static_cast<WORD>(-3), 4));
    wnd.SendMessage(WM_KEYDOWN, VK_F3, MAKELPARAM(2, 0x103D));
    wnd.SendMessage(WM_LBUTTONDOWN, MK_SHIFT, MAKELPARAM(static_cast<WORD>(-5), 6));
    EXPECT_NE(0, wnd.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 120), 0));
    EXPECT_EQ(0, wnd.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0));
    wnd.SendMessage(WM_TIMER, 77);
    EXPECT_EQ("create noting\nmove 0 0\nmove -3 4\nkey 114 2 4157\nbutton 4 -5 6\nwheel 8 120\n"
              "wheel 0 -120\ntimer 77\n",
              wnd.notes);
}

TEST(MfcWindow, CommandsReachTheMostDerivedHandler)
{
    DerivedWnd wnd;
    ASSERT_TRUE(wnd.Show());
    wnd.notes.clear();
    for (const WPARAM id : std::initializer_list<WPARAM>{100, 101, 199, 200, 202, 203})
        wnd.SendMessage(WM_COMMAND, id);
    const auto control = reinterpret_cast<LPARAM>(wnd.m_hWnd);
    wnd.SendMessage(WM_COMMAND, MAKEWPARAM(8, EN_CHANGE), control);
    wnd.SendMessage(WM_COMMAND, MAKEWPARAM(8, EN_UPDATE), control); // nobody's
    NMHDR click = {wnd.m_hWnd, 9, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(5, wnd.SendMessage(WM_NOTIFY, 9, reinterpret_cast<LPARAM>(&click)));
    EXPECT_EQ("derived open\nbase open\nrange 200\nrange 202\nchange\nnotify 9\n", wnd.notes);

    AFX_CMDHANDLERINFO info = {};
    EXPECT_TRUE(wnd.OnCmdMsg(101, CN_COMMAND, nullptr, &info)); // looked up and not called
    EXPECT_EQ(&wnd, info.pTarget);
    EXPECT_FALSE(wnd.OnCmdMsg(102, CN_COMMAND, nullptr, nullptr));
    EXPECT_EQ(6, std::count(wnd.notes.begin(), wnd.notes.end(), '\n'));
}

TEST(MfcWindow, HandlesFindTheirObjects)
{
    NotingWnd wnd;
    ASSERT_TRUE(wnd.Show());
    const HWND hwnd = wnd;
    EXPECT_EQ(&wnd, CWnd::FromHandle(hwnd));

    const HWND plain = ::CreateWindow("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    CWnd* const temporary = CWnd::FromHandle(plain);
    EXPECT_EQ(temporary, CWnd::FromHandle(plain));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(plain));
    EXPECT_EQ(nullptr, CWnd::FromHandle(nullptr));
    EXPECT_EQ(CWnd::FromHandle(reinterpret_cast<HWND>(0x8000004E)),
              CWnd::FromHandle(reinterpret_cast<HWND>(~0x7FFFFFB1LL))); // one handle in two forms

    CWnd::DeleteTempMap();
    EXPECT_TRUE(::IsWindow(plain));
    EXPECT_EQ(&wnd, CWnd::FromHandlePermanent(hwnd));
    ::DestroyWindow(plain);
}

// Ends in various ways while it deals with a message; counts its objects.
class EndingWnd : public CWnd
{
public:
    EndingWnd() { ++count; }
    ~EndingWnd() override { --count; }

    static inline int count = 0;

protected:
    LRESULT OnEnd(WPARAM, LPARAM)
    {
        DestroyWindow();
        return 3;
    }
    void OnEndCommand() { DestroyWindow(); }
    void PostNcDestroy() override { delete this; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(EndingWnd, CWnd)
    ON_MESSAGE(WM_APP, &ThisClass::OnEnd)
    ON_COMMAND(1, &ThisClass::OnEndCommand)
END_MESSAGE_MAP()

TEST(MfcWindow, AnObjectMayEndWithinItsHandler)
{
    const int windows = WindowCount();
    const auto create = [](LPCSTR className) {
        auto* const wnd = new EndingWnd; // deletes itself, also when it cannot be created
        return wnd->CreateEx(0, className, "", WS_POPUP, CRect(), nullptr, 0) ? wnd : nullptr;
    };
    EXPECT_EQ(nullptr, create("no such class"));
    EXPECT_EQ(0, EndingWnd::count);
    EndingWnd* const twice = create(nullptr);
    EXPECT_FALSE(twice->CreateEx(0, nullptr, "", WS_POPUP, CRect(), nullptr, 0));
    EXPECT_EQ(1, EndingWnd::count) << "its first window lives on";
    EXPECT_EQ(3, twice->SendMessage(WM_APP));
    EXPECT_EQ(0, create(nullptr)->SendMessage(WM_COMMAND, 1));
    EXPECT_EQ(0, create("EDIT")->SendMessage(WM_CLOSE));
    EXPECT_EQ(0, EndingWnd::count);
    EXPECT_EQ(windows, WindowCount());
}

TEST(MfcWindow, AWindowEndsWithItsObject)
{
    HWND hwnd = nullptr;
    HWND childHwnd = nullptr;
    NotingWnd child; // outlives its window
    {
        NotingWnd wnd;
        ASSERT_TRUE(wnd.Show() && child.Show(WS_CHILD, &wnd));
        EXPECT_EQ(7, child.GetDlgCtrlID());
        hwnd = wnd;
        childHwnd = child;
    }
    EXPECT_FALSE(::IsWindow(hwnd));
    EXPECT_FALSE(::IsWindow(childHwnd));
    EXPECT_EQ(nullptr, child.m_hWnd);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(childHwnd));
    EXPECT_TRUE(child.Show()); // and can have another one
}

TEST(MfcWindow, SubclassingSeesMessagesFirstAndUnsubclassingEndsThat)
{
    const HWND edit = ::CreateWindow("EDIT", "abc", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const auto procedure = ::GetWindowLongPtr(edit, GWLP_WNDPROC);
    NotingWnd wnd;
    ASSERT_TRUE(wnd.SubclassWindow(edit));
    wnd.SendMessage(WM_TIMER, 1);
    CString text;
    wnd.GetWindowText(text); // the edit control goes on below
    EXPECT_EQ(CString("abc"), text);
    EXPECT_EQ(edit, wnd.UnsubclassWindow());
    ::SendMessage(edit, WM_TIMER, 2, 0);
    EXPECT_EQ("timer 1\n", wnd.notes);
    EXPECT_EQ(procedure, ::GetWindowLongPtr(edit, GWLP_WNDPROC));
    ::DestroyWindow(edit);
}

class ThrowingWnd : public NotingWnd
{
public:
    bool failCreate = false;

protected:
    LRESULT OnThrow(WPARAM memory, LPARAM)
    {
        if (memory)
            throw std::bad_alloc();
        AfxThrowInvalidArgException();
    }
    int OnCreate(LPCREATESTRUCT)
    {
        if (failCreate)
            AfxThrowResourceException();
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ThrowingWnd, NotingWnd)
    ON_WM_CREATE()
    ON_MESSAGE(WM_APP, &ThisClass::OnThrow)
END_MESSAGE_MAP()

// Counts its reports.
class ToldException : public CUserException
{
public:
    using CUserException::CUserException;
    int ReportError(UINT) override { return ++reports; }
    int reports = 0;
};

TEST(MfcWindow, AnExceptionEndsTheMessageAndNothingElse)
{
    ToldException told(FALSE);
    const MSG message = {nullptr, WM_CREATE, 0, 0, 0, {}};
    EXPECT_EQ(-1, CWinApp().ProcessWndProcException(&told, &message));
    EXPECT_EQ(0, told.reports) << "the user knows";

    const SilentApp app;
    ThrowingWnd wnd;
    ASSERT_TRUE(wnd.Show());
    EXPECT_EQ(0, wnd.SendMessage(WM_APP, 0));
    EXPECT_EQ(0, wnd.SendMessage(WM_APP, 1));
    wnd.SendMessage(WM_TIMER, 1);
    EXPECT_EQ("move 0 0\ntimer 1\n", wnd.notes);

    wnd.DestroyWindow();
    wnd.failCreate = true;
    EXPECT_FALSE(wnd.Show());
    EXPECT_EQ(nullptr, wnd.m_hWnd);
}

TEST(MfcWindow, ATopLevelWindowTellsTheWindowsWithinItOfSettings)
{
    NotingWnd top;
    CWnd middle;
    NotingWnd child;
    ASSERT_TRUE(top.Show() && middle.Create(nullptr, "", WS_CHILD, CRect(), &top, 1));
    ASSERT_TRUE(child.Show(WS_CHILD, &middle));
    child.notes.clear();
    top.SendMessage(WM_SYSCOLORCHANGE);
    top.SendMessage(WM_SETTINGCHANGE, 3, reinterpret_cast<LPARAM>("x"));
    EXPECT_EQ("colours\nsetting 3 x\n", child.notes);
}

class TranslatingWnd : public NotingWnd
{
public:
    BOOL PreTranslateMessage(MSG*) override
    {
        notes += "seen\n";
        if (fail)
            throw std::bad_alloc();
        return consume;
    }
    BOOL consume = FALSE;
    bool fail = false;
};

TEST(MfcWindow, MessagesArePreTranslatedFromTheirWindowUpwards)
{
    TranslatingWnd top;
    TranslatingWnd middle;
    TranslatingWnd child;
    ASSERT_TRUE(top.Show() && middle.Show(WS_CHILD, &top) && child.Show(WS_CHILD, &middle));
    const auto walk = [&](HWND stop, BOOL consumed) {
        top.notes = middle.notes = child.notes = "";
        MSG message = {child, WM_KEYDOWN, VK_F3, 0, 0, {}};
        EXPECT_EQ(consumed, CWnd::WalkPreTranslateTree(stop, &message));
        return child.notes + "|" + middle.notes + "|" + top.notes;
    };
    EXPECT_EQ("seen\n|seen\n|seen\n", walk(nullptr, FALSE));
    EXPECT_EQ("seen\n|seen\n|", walk(middle, FALSE));
    middle.consume = TRUE;
    EXPECT_EQ("seen\n|seen\n|", walk(top, TRUE));
    middle.fail = true;
    const SilentApp app;
    MSG message = {child, WM_KEYDOWN, VK_F3, 0, 0, {}};
    EXPECT_TRUE(AfxPreTranslateMessage(&message)) << "an exception ends with the message";
}
} // namespace
