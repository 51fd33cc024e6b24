// Storms: random messages at a window and random operations on it, the same ones for the same seed.
#pragma once

#include "afxwin.h"
#include "tests/support/GuiCounts.h"
#include "tests/support/LongRun.h"
#include "tests/support/Random.h"

#include <csignal>
#include <functional>
#include <iterator>
#include <vector>

// Messages whose parameters are made of the same: see Storm::Make.
struct MessageKind
{
    int weight;
    std::vector<UINT> messages;
    char wParam;
    char lParam;
};

// Left out is what opens a loop of the system's own (WM_SYSCOMMAND, the mouse on a scroll bar) and whatever
// carries an address.
inline const std::vector<MessageKind> kStormMessages = {
    {45, {WM_KEYDOWN, WM_KEYDOWN, WM_KEYDOWN, WM_KEYDOWN, WM_KEYUP}, 'k', 'a'},
    {15, {WM_CHAR, WM_CHAR, WM_CHAR, WM_UNICHAR}, 'c', 'a'},
    {85, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_MOUSEMOVE}, 'b', 'p'},
    {15, {WM_RBUTTONDOWN, WM_RBUTTONDOWN, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_MOUSEHOVER}, 'b', 'p'},
    {2, {WM_CONTEXTMENU}, 'a', 's'},
    {8, {WM_MOUSEWHEEL, WM_MOUSEHWHEEL}, 'n', 's'},
    {16, {WM_VSCROLL, WM_HSCROLL}, 'o', '0'},
    {12, {WM_TIMER}, 't', '0'},
    {20, {WM_PAINT}, '0', '0'},
    {6, {WM_MOUSELEAVE, WM_CANCELMODE, WM_GETFONT}, '0', '0'},
    {3, {WM_SIZE}, 'f', 'z'},
    {6, {WM_SETFOCUS, WM_KILLFOCUS, WM_PALETTECHANGED}, 'w', '0'},
    {3, {WM_CAPTURECHANGED}, '0', 'w'},
    {4, {WM_ENABLE, WM_SETREDRAW}, 'f', '0'},
    {3, {WM_SETFONT}, 'g', 'f'},
    {6, {WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_DISPLAYCHANGE, WM_QUERYNEWPALETTE, WM_NULL}, 'a', 'a'},
    {6, {WM_DPICHANGED_AFTERPARENT, WM_SETTINGCHANGE, WM_GETDLGCODE, WM_COMMAND}, 'a', '0'},
    {3, {WM_SETCURSOR, WM_MOUSEACTIVATE}, 'w', 'a'},
    {1, {WM_NCHITTEST}, '0', 's'},
    {2, {WM_APP}, 'a', 'a'}, // up to the last of the registered ones
};

struct StormAct
{
    int weight;
    const char* name;
    std::function<void()> act;
};

class Storm
{
public:
    explicit Storm(unsigned seed) : m_seed(seed), m_random(seed) { current = this; }
    ~Storm() { current = nullptr; }
    Storm(const Storm&) = delete;
    Storm& operator=(const Storm&) = delete;

    template <typename Limit> int operator()(Limit limit) { return m_random(limit); }
    bool OneIn(int limit) { return m_random(limit) == 0; }
    template <typename T> const T& Of(const std::vector<T>& all)
    {
        return all[static_cast<std::size_t>(m_random(all.size()))];
    }

    // A number that is mostly one of `count`, now and then just outside, and rarely any.
    int Near(int count)
    {
        if (OneIn(100))
            return static_cast<int>(m_random.engine());
        return count > 0 && !OneIn(10) ? m_random(count) : m_random(count + 4) - 3;
    }

    // False after the last step and after a failure.
    bool Next(int steps)
    {
        MSG message = {};
        while (::PeekMessage(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) // what a menu has left
        {
        }
        return ++m_step < steps && !testing::Test::HasFailure();
    }

    // The seed, and what was done last.
    void Tell() const
    {
        std::printf("storm: QM_TEST_SEED=%u, step %d\n", m_seed, m_step);
        for (unsigned i = m_notes; i < m_notes + std::size(m_noted); ++i)
        {
            const Noted& noted = m_noted[i % std::size(m_noted)];
            std::printf("%8d %s %x to %p, %llx %llx\n", noted.step, noted.name, noted.message,
                        static_cast<void*>(noted.hwnd), noted.wParam, noted.lParam);
        }
        std::fflush(stdout);
    }

    void Do(const std::vector<StormAct>& acts)
    {
        const StormAct& chosen = Weighed(acts);
        Note({m_step, chosen.name, nullptr, 0, 0, 0});
        chosen.act();
    }

    // Sends a random message.
    void Send(HWND hwnd)
    {
        const MessageKind& kind = Weighed(kStormMessages);
        const UINT chosen = Of(kind.messages);
        const UINT message = chosen == WM_APP ? WM_APP + static_cast<UINT>(m_random(0x8000)) : chosen;
        const auto wParam = static_cast<WPARAM>(Make(kind.wParam, hwnd));
        const LPARAM lParam = Make(kind.lParam, hwnd);
        HoldKeys(kind.wParam == 'b' && wParam & MK_LBUTTON);
        Note({m_step, "message", hwnd, message, wParam, lParam});
        ++messageCount;
        (OneIn(2) ? ::SendMessageW : ::SendMessageA)(hwnd, message, wParam, lParam);
        if (message == WM_SETREDRAW && !OneIn(3))
            ::SendMessage(hwnd, WM_SETREDRAW, TRUE, 0);
    }

    // Presses the button in a window, goes somewhere, and mostly lets go.
    void Drag(HWND hwnd)
    {
        HoldKeys(true);
        ::SendMessage(hwnd, OneIn(4) ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON, Make('p', hwnd));
        for (int moves = m_random(4); moves > 0; --moves)
            ::SendMessage(hwnd, WM_MOUSEMOVE, MK_LBUTTON, Make('p', hwnd));
        if (!OneIn(5))
            ::SendMessage(hwnd, WM_LBUTTONUP, 0, Make('p', hwnd));
    }

    // Deals with what was posted, but not with what comes by the clock or from the user's mouse.
    static void Pump()
    {
        MSG message = {};
        for (const auto& [first, last] :
             {std::pair(WM_PAINT, WM_PAINT), {WM_COMMAND, WM_COMMAND}, {WM_USER, 0xFFFF}})
            for (int left = 50;
                 left > 0 && ::PeekMessage(&message, nullptr, UINT(first), UINT(last), PM_REMOVE); --left)
                ::DispatchMessage(&message);
    }

    // A menu that opens during a storm gets random keys, and ends.
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam)
    {
        char name[10] = "";
        if (code == HCBT_CREATEWND && current &&
            ::GetClassNameA(reinterpret_cast<HWND>(wParam), name, sizeof(name)) &&
            std::string(name) == "#32768")
            for (int left = 12; left > 0; --left)
                ::PostMessage(nullptr, WM_KEYDOWN,
                              left < 5            ? VK_ESCAPE
                              : current->OneIn(6) ? VK_RETURN
                                                  : VK_DOWN,
                              1);
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline Storm* current = nullptr; // for whoever ends the process in the midst of it
    static inline int messageCount = 0;     // of all storms of a test

private:
    struct Noted
    {
        int step = 0;
        const char* name = "-";
        HWND hwnd = nullptr;
        UINT message = 0;
        WPARAM wParam = 0;
        LPARAM lParam = 0;
    };

    void Note(const Noted& noted) { m_noted[m_notes++ % std::size(m_noted)] = noted; }

    template <typename All> auto Weighed(const std::vector<All>& all) -> const All&
    {
        int place = 0;
        for (const All& each : all)
            place += each.weight;
        place = m_random(place);
        auto each = all.begin();
        for (; place >= each->weight; ++each)
            place -= each->weight;
        return *each;
    }

    LPARAM Make(char what, HWND hwnd)
    {
        static const std::vector<int> keys = {
            VK_UP,    VK_DOWN, VK_LEFT,   VK_RIGHT, VK_PRIOR,  VK_NEXT, VK_HOME,     VK_END, VK_RETURN,
            VK_SPACE, VK_TAB,  VK_ESCAPE, VK_BACK,  VK_DELETE, VK_ADD,  VK_SUBTRACT, VK_F2,  VK_MULTIPLY,
            VK_F3,    'A',     'C',       'F',      'V',       'X',     'Z',         '1',    VK_INSERT};
        const auto any = static_cast<LPARAM>(m_random.engine());
        POINT point = {};
        RECT client = {};
        switch (what)
        {
        case 'a': // anything
            return OneIn(2) ? m_random(4) - 1 : any;
        case 'f': // a flag
            return m_random(2);
        case 'k': // a key, none that opens a menu
            return OneIn(20) ? m_random(VK_LWIN) & ~VK_MENU : Of(keys);
        case 'c': // a character
            return OneIn(10) ? m_random(0x10000) : 8 + m_random(120);
        case 'b': // mouse buttons
            return m_random(0x80) & (OneIn(3) ? 0x7F : MK_LBUTTON);
        case 'p': // a point of the client area or of the screen, in the window or around it
        case 's':
            ::GetClientRect(hwnd, &client);
            point = {m_random((OneIn(3) ? 20 : client.right) + 40) - 20, m_random(client.bottom + 40) - 20};
            if (what == 's')
                ::ClientToScreen(hwnd, &point);
            return OneIn(40) ? any : OneIn(40) ? -1 : MAKELPARAM(point.x, point.y);
        case 'o': // where to scroll
            return MAKELONG(OneIn(30) ? any : m_random(9), m_random(OneIn(4) ? 0x10000 : 50));
        case 'n': // a turn of the wheel
            return MAKELONG(m_random(0x10) & (MK_SHIFT | MK_CONTROL),
                            OneIn(10) ? any : (m_random(9) - 4) * 60);
        case 'z': // a size
            return OneIn(10) ? any & 0x7FFF7FFF : MAKELPARAM(m_random(400), m_random(300));
        case 't': // a timer, often one of ours
            return Of(std::vector{1, 2, 3, 9000, 9504, 9505, m_random(0x10000)});
        case 'g': // a font, or none
            return OneIn(5) ? m_random(3)
                            : reinterpret_cast<LPARAM>(::GetStockObject(OEM_FIXED_FONT + m_random(4)));
        case 'w': // a window, or none
            return OneIn(4) ? m_random(0x10000) : OneIn(2) ? 0 : reinterpret_cast<LPARAM>(::GetParent(hwnd));
        default:
            return 0;
        }
    }

    void HoldKeys(bool hasButton)
    {
        BYTE keys[256] = {};
        for (const auto& [key, chance] : {std::pair(VK_SHIFT, 4), {VK_CONTROL, 4}, {VK_MENU, 20}})
            keys[key] = OneIn(chance) ? BYTE{0x80} : BYTE{0};
        keys[VK_LBUTTON] = hasButton ? BYTE{0x80} : BYTE{0};
        ::SetKeyboardState(keys);
    }

    unsigned m_seed;
    int m_step = 0;
    Random m_random;
    Noted m_noted[12];
    unsigned m_notes = 0;
};

// But for device contexts and their regions: the system keeps as many as were ever open at a time.
inline int KeptObjectCount()
{
    int count = 0;
    ForEachGdiObject([&count](HGDIOBJ object) {
        const DWORD type = ::GetObjectType(object);
        count += type != 0 && type != OBJ_DC && type != OBJ_REGION;
    });
    return count;
}

// Runs a storm in episodes of a thousand steps, each with a seed and windows of its own. What fails, or ends
// the process, tells the episode's seed. The test fails, too, if the later episodes leave something behind.
template <typename Episode> void RunStorm(int steps, int longSteps, Episode episode)
{
    constexpr int kSteps = 1000;
    const unsigned seed = FirstSeed();
    const int episodes = Rounds(steps, longSteps) / kSteps;
    static const auto tell = [] {
        if (Storm::current)
            Storm::current->Tell();
    };
    std::signal(SIGABRT, [](int) { tell(); });
    ::SetUnhandledExceptionFilter(
        [](EXCEPTION_POINTERS*) -> LONG { return tell(), EXCEPTION_CONTINUE_SEARCH; });
    const HHOOK hook = ::SetWindowsHookEx(WH_CBT, &Storm::OnHook, nullptr, ::GetCurrentThreadId());
    Storm::messageCount = 0;
    int objects = 0;
    int windows = 0;
    int blocks = 0;
    for (int i = 0; i < episodes && !testing::Test::HasFailure(); ++i)
    {
        Storm storm(seed + static_cast<unsigned>(i));
        episode(storm, kSteps);
        Storm::Pump();
        CWnd::DeleteTempMap();
        CDC::DeleteTempMap();
        CGdiObject::DeleteTempMap();
        CMenu::DeleteTempMap();
        if (testing::Test::HasFailure())
            tell();
        if (i != episodes / 3)
            continue;
        objects = KeptObjectCount();
        windows = WindowCount();
        blocks = HeapBlockCount();
    }
    ::UnhookWindowsHookEx(hook);
    if (testing::Test::HasFailure())
        return;
    EXPECT_LT(KeptObjectCount() - objects, 15 + episodes / 4) << "drawing objects, of " << objects;
    EXPECT_EQ(windows, WindowCount());
    EXPECT_LT(HeapBlockCount() - blocks, 20 + episodes / 4) << "blocks of memory, of " << blocks;
    Figure("messages", Storm::messageCount);
}
