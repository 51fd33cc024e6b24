#include "QmHandler.h"
#include "qmcommon/QmCommandMenu.h"
#include "qmcommon/QmHookWnd.h"
#include "qmcommon/QmMenuDrawer.h"
#include "qmcommon/QmWndUpdaterUse.h"
#include "tests/support/Commands.h"
#include "tests/support/Keys.h"
#include "tests/support/NothingLeft.h"

#include <gtest/gtest.h>

namespace
{

class CommandWindow : public QmHandler<CWnd>
{
public:
    void Scan(IQmCommand& collector) override { ScanCommands(commands, collector); }

    std::vector<Command> commands;
    std::string characters; // that came through to the window

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CHAR || message == WM_SYSCHAR)
            characters += static_cast<char>(wParam);
        return QmHandler<CWnd>::DefWindowProc(message, wParam, lParam);
    }
};

class HandlerTest : public testing::Test
{
protected:
    HandlerTest()
    {
        wnd = std::make_unique<CommandWindow>();
        wnd->CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr);
        wnd->commands = {{"&Copy", 'C', FCONTROL, true, Write("copy ")},
                         {nullptr, 'H', 0, true, Write("hidden ")},
                         {"-"},
                         {"-"},
                         {"&Follow", VK_SPACE, 0, true, Write("follow "), true},
                         {"Co&mmon", VK_DOWN, FALT, false, Write("off ")},
                         {"-"},
                         {"Close", 'W', 0, true, [this] { wnd.reset(); }},
                         {"-"}};
    }

    std::function<void()> Write(const char* text)
    {
        return [this, text] { done += text; };
    }

    // Whether the key, with a modifier key or 0 held, is consumed before it reaches `target`.
    bool Press(HWND target, UINT key, int modifier)
    {
        const HeldKey held(modifier);
        MSG message = KeyMessage(target, key, modifier);
        return wnd->PreTranslateMessage(&message) != FALSE;
    }

    // The commands executed since the last call.
    std::string TakeDone() { return std::exchange(done, ""); }

    std::unique_ptr<CommandWindow> wnd;
    std::string done;
};

std::string Describe(HMENU menu)
{
    std::string text;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i)
    {
        const UINT position = static_cast<UINT>(i);
        char item[100] = "";
        ::GetMenuString(menu, position, item, sizeof(item), MF_BYPOSITION);
        const UINT state = ::GetMenuState(menu, position, MF_BYPOSITION);
        if ((state & MF_SEPARATOR) != 0)
            text += "-";
        else
            text += item + std::to_string(::GetMenuItemID(menu, i) - kQmFirstCommand);
        if ((state & MF_CHECKED) != 0)
            text += "*";
        if ((state & MF_SEPARATOR) == 0 && (state & MF_GRAYED) != 0)
            text += "!";
        text += (state & MF_OWNERDRAW) != 0 ? "^|" : "|";
    }
    return text;
}

TEST_F(HandlerTest, KeysExecuteCommands)
{
    EXPECT_TRUE(Press(*wnd, 'C', VK_CONTROL));
    EXPECT_TRUE(Press(*wnd, VK_SPACE, 0));
    EXPECT_EQ("copy follow ", TakeDone());
    EXPECT_FALSE(Press(*wnd, 'C', 0));
    EXPECT_FALSE(Press(*wnd, 'C', VK_MENU));
    EXPECT_FALSE(Press(*wnd, VK_DOWN, VK_MENU)) << "disabled";
    EXPECT_FALSE(Press(*wnd, 'H', 0)) << "hidden";

    // The system must not take the Alt of a shortcut for Alt alone, which goes into the menu bar.
    MSG release = {};
    release.hwnd = *wnd;
    release.message = WM_SYSKEYUP;
    release.wParam = VK_MENU;
    EXPECT_FALSE(wnd->PreTranslateMessage(&release));
    wnd->commands[5].enabled = true;
    EXPECT_TRUE(Press(*wnd, VK_DOWN, VK_MENU));
    EXPECT_TRUE(wnd->PreTranslateMessage(&release));
    EXPECT_FALSE(wnd->PreTranslateMessage(&release));
    EXPECT_EQ("off ", TakeDone());

    CWnd label;
    CWnd edit;
    label.Create("STATIC", "", WS_CHILD, CRect(0, 0, 9, 9), wnd.get(), 1);
    edit.Create("EDIT", "", WS_CHILD, CRect(0, 0, 9, 9), wnd.get(), 2);
    EXPECT_TRUE(Press(label, VK_SPACE, 0));
    EXPECT_FALSE(Press(edit, VK_SPACE, 0));
    EXPECT_FALSE(Press(::GetDesktopWindow(), VK_SPACE, 0));
    EXPECT_EQ("follow ", TakeDone());

    // Without pre-translation the key arrives, and its character after it.
    const auto type = [this](UINT key) {
        wnd->SendMessage(WM_KEYDOWN, key);
        wnd->SendMessage(WM_CHAR, key);
    };
    type(VK_SPACE);
    type('A');
    EXPECT_EQ("follow ", TakeDone());
    EXPECT_EQ("A", wnd->characters);
    wnd->SetShortcuts(false);
    EXPECT_FALSE(Press(*wnd, VK_SPACE, 0));
    type(VK_SPACE);
    EXPECT_EQ("", TakeDone());
    EXPECT_EQ("A ", wnd->characters);
    wnd->SetShortcuts(true);

    EXPECT_TRUE(Press(*wnd, 'W', 0)) << "closes the window";
    EXPECT_EQ(nullptr, wnd);
}

TEST_F(HandlerTest, CommandIdsExecuteCommands)
{
    AFX_CMDHANDLERINFO info = {};
    EXPECT_TRUE(wnd->OnCmdMsg(kQmFirstCommand, CN_COMMAND, nullptr, &info));
    EXPECT_FALSE(wnd->OnCmdMsg(kQmFirstCommand + 1, CN_COMMAND, nullptr, nullptr)) << "hidden";
    EXPECT_FALSE(wnd->OnCmdMsg(kQmFirstCommand, BN_CLICKED + 1, nullptr, nullptr));
    EXPECT_FALSE(wnd->OnCmdMsg(kQmFirstCommand - 1, CN_COMMAND, nullptr, nullptr));
    EXPECT_EQ("", TakeDone());
    wnd->SendMessage(WM_COMMAND, kQmFirstCommand);
    EXPECT_EQ("copy ", TakeDone());
    wnd->SendMessage(WM_COMMAND, kQmFirstCommand + 4);
    EXPECT_EQ(nullptr, wnd);
}

// Looks at the open menu, before and after the other hooks and the window.
class OpenMenu : public CQmHookWnd
{
public:
    std::string atStart;
    std::string atEnd;
    std::string drawn; // what shows in each item: mark, caption, shortcut

protected:
    BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        if (message != WM_INITMENUPOPUP && message != WM_UNINITMENUPOPUP && message != WM_DRAWITEM)
            return FALSE;
        *result = CallWindow(message, wParam, lParam);
        if (message == WM_INITMENUPOPUP)
            atStart = Describe(reinterpret_cast<HMENU>(wParam));
        else if (message == WM_UNINITMENUPOPUP)
            atEnd = Describe(reinterpret_cast<HMENU>(wParam));
        else
            LookAt(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }

private:
    void LookAt(const DRAWITEMSTRUCT& draw)
    {
        const COLORREF background =
            ::GetSysColor((draw.itemState & ODS_SELECTED) != 0 ? COLOR_HIGHLIGHT : COLOR_MENU);
        const int middle = (draw.rcItem.left + draw.rcItem.right) / 2;
        std::string columns = "   ";
        for (LONG y = draw.rcItem.top; y < draw.rcItem.bottom; ++y)
        {
            for (LONG x = draw.rcItem.left; x < draw.rcItem.right; ++x)
            {
                if (::GetPixel(draw.hDC, x, y) != background)
                    columns[x < 18 ? 0 : x < middle ? 1 : 2] = x < 18 ? '*' : x < middle ? 'c' : 'k';
            }
        }
        drawn += columns + "|";
    }
};

TEST_F(HandlerTest, ThePopupMenuExecutesWhatIsChosen)
{
    CQmMenuDrawer drawer;
    OpenMenu open;
    ASSERT_TRUE(drawer.Attach(*wnd));
    ASSERT_TRUE(open.Attach(*wnd));
    const auto choose = [this](std::vector<std::pair<UINT, WPARAM>> keys) {
        for (const auto& [message, key] : keys)
            wnd->PostMessage(message, key);
        return CQmCommandDefinePopupMenu(wnd.get()).Show(CPoint(20, 20), wnd.get());
    };
    EXPECT_TRUE(choose({{WM_KEYDOWN, VK_DOWN}, {WM_KEYDOWN, VK_DOWN}, {WM_KEYDOWN, VK_RETURN}}));
    EXPECT_EQ("follow ", TakeDone());
    EXPECT_EQ("&Copy\tCtrl+C0^|-^|&Follow\tSpace2*^|Co&mmon\tAlt+Down3!^|-^|Close\tW4^|", open.atStart);
    EXPECT_EQ("&Copy\tCtrl+C0|-|&Follow\tSpace2*|Co&mmon\tAlt+Down3!|-|Close\tW4|", open.atEnd);
    EXPECT_EQ(" ck|*ck|*ck| ck|*ck| ck|", open.drawn.substr(0, 24));

    ExpectNothingLeft([&] {
        EXPECT_TRUE(choose({{WM_CHAR, 'f'}}));
        EXPECT_EQ("follow ", TakeDone());
    });
    EXPECT_FALSE(choose({{WM_KEYDOWN, VK_ESCAPE}}));
    EXPECT_EQ("", TakeDone());
    EXPECT_TRUE(choose({{WM_KEYDOWN, VK_UP}, {WM_KEYDOWN, VK_RETURN}}));
    EXPECT_EQ(nullptr, wnd) << "closed by its own menu";
    EXPECT_EQ(nullptr, drawer.GetHookedWindow());
}

// What the column of marks and pictures shows of each item that is drawn.
class MarkColumn : public CQmHookWnd
{
public:
    std::string drawn; // "b" for blue, "o" for other colours than the background

protected:
    BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        if (message != WM_DRAWITEM)
            return FALSE;
        *result = CallWindow(message, wParam, lParam);
        const DRAWITEMSTRUCT& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        bool isBlue = false;
        bool isOther = false;
        for (LONG y = draw.rcItem.top; y < draw.rcItem.bottom; ++y)
            for (LONG x = draw.rcItem.left; x < draw.rcItem.left + 22; ++x)
            {
                const COLORREF color = ::GetPixel(draw.hDC, x, y);
                isBlue = isBlue || color == RGB(0x2A, 0x7A, 0xCC);
                isOther = isOther || (color != RGB(0x2A, 0x7A, 0xCC) && color != ::GetSysColor(COLOR_MENU));
            }
        drawn += std::string(isBlue ? "b" : "") + (isOther ? "o|" : "|");
        return TRUE;
    }
};

TEST_F(HandlerTest, MenusShowPictures)
{
    const Command copy = {"Copy", 0, 0, true, [] {}, false, "Copy"};
    const Command find = {"Find", 0, 0, false, [] {}, false, "Find"};
    const Command info = {"Info", 0, 0, true, [] {}, true, "Info"};
    wnd->commands = {copy, find, info, {"Other", 0, 0, true, [] {}, false, "Nothing.ico"}, {"None"}};
    CQmMenuDrawer drawer;
    MarkColumn column;
    ASSERT_TRUE(drawer.Attach(*wnd));
    ASSERT_TRUE(column.Attach(*wnd));
    ExpectNothingLeft([&] {
        column.drawn.clear();
        CQmCommandDefinePopupMenu menu(wnd.get());
        ASSERT_TRUE(::AppendMenu(menu.GetMenu(), MF_STRING, 1, "Foreign"));
        MENUITEMINFO data = {};
        data.cbSize = sizeof(data);
        data.fMask = MIIM_DATA;
        data.dwItemData = 0x1234;
        ASSERT_TRUE(::SetMenuItemInfo(menu.GetMenu(), 1, FALSE, &data));
        wnd->PostMessage(WM_KEYDOWN, VK_ESCAPE);
        EXPECT_FALSE(menu.Show(CPoint(20, 20), wnd.get()));
        EXPECT_EQ("bo|o|o||||", column.drawn) << "a disabled one is grey, and a check goes before a picture";
        ASSERT_TRUE(::GetMenuItemInfo(menu.GetMenu(), 1, FALSE, &data));
        EXPECT_EQ(0x1234u, data.dwItemData);
    });
}

TEST_F(HandlerTest, RedrawingResumesWithTheLastGuard)
{
    const auto suspended = [this] { return (wnd->GetStyle() & WS_VISIBLE) == 0; };
    {
        const CQmWndUpdaterUse outer(wnd.get());
        {
            const CQmWndUpdaterUse inner(wnd.get());
        }
        EXPECT_TRUE(suspended());
    }
    EXPECT_FALSE(suspended());
    EXPECT_FALSE(::GetUpdateRect(*wnd, nullptr, FALSE)) << "redrawn at once";

    wnd->ShowWindow(SW_HIDE);
    {
        const CQmWndUpdaterUse hidden(wnd.get());
    }
    EXPECT_TRUE(suspended()) << "a hidden window stays hidden";
    const CQmWndUpdaterUse none(nullptr);
    const CQmWndUpdaterUse outlives(wnd.get());
    wnd.reset();
}

// Writes its letter for every message it sees.
class Letter : public CQmHookWnd
{
public:
    Letter(char letter, std::string& text) : m_letter(letter), m_text(text) {}

    std::function<void()> act; // then

protected:
    BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*) override
    {
        if (message == WM_APP)
            m_text += m_letter;
        if (message == WM_APP && act)
            act();
        return message == WM_APP && wParam == static_cast<WPARAM>(m_letter);
    }

private:
    char m_letter;
    std::string& m_text;
};

TEST_F(HandlerTest, HooksGoInAnyOrder)
{
    for (const std::string order : {"abc", "acb", "bac", "bca", "cab", "cba"})
    {
        Letter hooks[] = {{'a', done}, {'b', done}, {'c', done}};
        for (Letter& hook : hooks)
            ASSERT_TRUE(hook.Attach(*wnd));
        wnd->SendMessage(WM_APP, 'b');
        EXPECT_EQ("cb", TakeDone());
        std::string left = "cba";
        for (const char letter : order)
        {
            hooks[letter - 'a'].Detach();
            std::erase(left, letter);
            wnd->SendMessage(WM_APP);
            EXPECT_EQ(left, TakeDone()) << order;
        }
    }
}

// The others see the message once, those that come meanwhile see the next one.
TEST_F(HandlerTest, HooksComeAndGoWhileOneSeesAMessage)
{
    for (int acting = 0; acting < 3; ++acting)
    {
        for (int going = 0; going < 3; ++going)
        {
            Letter hooks[] = {{'a', done}, {'b', done}, {'c', done}};
            Letter late('d', done);
            for (Letter& hook : hooks)
                ASSERT_TRUE(hook.Attach(*wnd));
            hooks[acting].act = [&] {
                hooks[going].Detach();
                late.Attach(*wnd);
                hooks[acting].act = nullptr;
            };
            std::string seen = "cba";
            if (going < acting)
                std::erase(seen, static_cast<char>('a' + going));
            wnd->SendMessage(WM_APP);
            EXPECT_EQ(seen, TakeDone()) << acting << going;
            std::string left = "dcba";
            std::erase(left, static_cast<char>('a' + going));
            wnd->SendMessage(WM_APP);
            EXPECT_EQ(left, TakeDone()) << acting << going;
        }
    }
    const auto before = ::GetWindowLongPtr(*wnd, GWLP_WNDPROC);
    Letter hooks[] = {{'a', done}, {'b', done}, {'c', done}};
    for (Letter& hook : hooks)
        ASSERT_TRUE(hook.Attach(*wnd));
    hooks[2].Detach();
    hooks[0].Detach();
    EXPECT_NE(before, ::GetWindowLongPtr(*wnd, GWLP_WNDPROC));
    hooks[1].Detach();
    EXPECT_EQ(before, ::GetWindowLongPtr(*wnd, GWLP_WNDPROC)) << "the window's own again";
    for (Letter& hook : hooks)
        ASSERT_TRUE(hook.Attach(*wnd));
    hooks[1].act = [this] { wnd.reset(); };
    ::SendMessage(*wnd, WM_APP, 0, 0);
    EXPECT_EQ("cb", TakeDone());
    for (const Letter& hook : hooks)
        EXPECT_EQ(nullptr, hook.GetHookedWindow());
    EXPECT_FALSE(hooks[0].Attach(nullptr));
    EXPECT_FALSE(hooks[0].Attach(::GetDesktopWindow())) << "of another thread";
}

} // namespace
