// Cells edited in place, by keys and clicks, and what the parent has to say about it.
#include "ReportNotify.h"
#include "qmcommon/QmWindowText.h"
#include "tests/report/ReportFixture.h"

namespace
{

class ReportEdit : public ReportTest
{
protected:
    ReportEdit()
    {
        report.edits = true;
        parent.answer = [this](NMHDR& note) -> LRESULT {
            const auto& record = reinterpret_cast<const _NMRVITEMEDIT&>(note);
            if (note.code == RVN_BEGINITEMEDIT || note.code == RVN_ENDITEMEDIT)
                told += Line(note.code == RVN_BEGINITEMEDIT ? "[begin" : "[end", record.item, record.subitem,
                             record.key, record.text ? record.text : "(none)") +
                        "]";
            return act(note);
        };
    }

    void ShowCells(DWORD style = 0)
    {
        Show(style | WS_VISIBLE | RVS_NOHEADER | RVS_CELLFOCUS, {"one", "two", "three"});
        UseSystem();
        ::SetFocus(report);
    }

    int Begin(int row, int column, unsigned key)
    {
        return static_cast<CReportCtrl&>(report).BeginEdit(row, column, key);
    }

    HWND Editor() const { return ::FindWindowEx(report, nullptr, "EDIT", nullptr); }

    std::string Text() const
    {
        char text[100] = "";
        ::GetWindowText(Editor(), text, sizeof(text));
        return text;
    }

    // A message as the message loop deals with it, and what was posted meanwhile.
    void Post(HWND window, UINT message, WPARAM key)
    {
        ::PostMessage(window, message, key, 1);
        MSG next = {};
        while (::PeekMessage(&next, nullptr, 0, 0, PM_REMOVE))
            if (!CWnd::WalkPreTranslateTree(nullptr, &next))
                ::DispatchMessage(&next);
    }

    std::string Cell(int item) { return report.GetItemText(item, 0).c_str(); }

    std::string told;
    std::function<LRESULT(NMHDR&)> act = [](NMHDR&) -> LRESULT { return 0; };
};

TEST_F(ReportEdit, IsBegunAndEndedByKeys)
{
    // What begins it, the editor's text then, what ends it; what is in the cell, what the parent is told.
    const std::tuple<unsigned, const char*, WPARAM, const char*, const char*> cases[] = {
        {'x', "x", VK_RETURN, "x", "[begin 0 0 120 one][end 0 0 13 x]"},
        {8, "on", VK_TAB, "on", "[begin 0 0 8 one][end 0 0 9 on]"},
        {'x', "x", VK_ESCAPE, "one", "[begin 0 0 120 one][end 0 0 27 x]"},
        {1, "one", VK_RETURN, "one", "[begin 0 0 1 one][end 0 0 13 one]"},
    };
    for (const auto& [key, text, end, cell, notes] : cases)
    {
        ShowCells();
        told.clear();
        EXPECT_EQ(1, Begin(0, 0, key));
        EXPECT_EQ(text, Text());
        EXPECT_EQ(Editor(), ::GetFocus());
        Post(Editor(), WM_KEYDOWN, end);
        EXPECT_EQ(cell, Cell(0));
        EXPECT_EQ(notes, told);
        EXPECT_EQ(report.m_hWnd, ::GetFocus());
        EXPECT_EQ(nullptr, Editor());
    }
}

TEST_F(ReportEdit, IsRefusedWhereThereIsNothingToEdit)
{
    ShowCells();
    report.SetItemState(1, RVIS_READONLY, RVIS_READONLY);
    report.SetItemText(2, 0, nullptr);
    const std::pair<int, int> cells[] = {{-2, 0}, {-1, 0}, {0, -1}, {0, 1}, {1, 0}, {2, 0}, {3, 0}, {0, 3}};
    for (const auto& [row, column] : cells)
        EXPECT_EQ(0, Begin(row, column, 1)) << row << ' ' << column;
    report.SetSubItemWidth(0, 11);
    EXPECT_EQ(0, Begin(0, 0, 1)) << "too narrow";
    EXPECT_EQ(nullptr, Editor());
}

TEST_F(ReportEdit, TheParentMayDealWithIt)
{
    ShowCells();
    act = [](NMHDR&) -> LRESULT { return 1; };
    EXPECT_EQ(0, Begin(0, 0, 'x')) << "without an editor";
    EXPECT_EQ(report.m_hWnd, ::GetFocus());

    CEdit own;
    own.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), &report, 9);
    act = [&own](NMHDR& note) -> LRESULT {
        reinterpret_cast<_NMRVITEMEDIT&>(note).editor = own;
        return 1;
    };
    EXPECT_EQ(1, Begin(0, 0, 'x'));
    EXPECT_EQ(own.m_hWnd, ::GetFocus());
    ::SetWindowText(own, "owned");
    report.EndEdit(1, nullptr);
    EXPECT_EQ("owned", Cell(0));
    Post(report, WM_NULL, 0);
    EXPECT_FALSE(::IsWindow(own.m_hWnd)) << "a message closes it";

    CEdit second;
    second.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), &report, 9);
    act = [&second](NMHDR& note) -> LRESULT {
        reinterpret_cast<_NMRVITEMEDIT&>(note).editor = second;
        return 1;
    };
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    ::SetWindowText(second, "second");
    report.SendMessage(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ("second", Cell(1)) << "what moves cells ends it, too";
    report.SetItemText(1, 0, "two");
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    second.DestroyWindow();
    Post(report, WM_NULL, 0);

    // What ends an edit of the control's is the parent's to undo.
    act = [](NMHDR& note) -> LRESULT { return note.code == RVN_ENDITEMEDIT; };
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    Post(Editor(), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ("two", Cell(1));
    EXPECT_EQ(nullptr, Editor());
}

// What the parent does in the midst of it; whether an edit begins, and what is in the cells afterwards.
TEST_F(ReportEdit, BearsWhatTheParentDoesMeanwhile)
{
    struct
    {
        UINT code;
        std::function<void()> act;
        int begins;
        const char* cells;
    } const cases[] = {
        {RVN_BEGINITEMEDIT, [&] { report.DestroyWindow(); }, 0, "one two three"},
        {RVN_BEGINITEMEDIT, [&] { report.DeleteItem(0); }, 0, "two three "},
        {RVN_BEGINITEMEDIT, [&] { report.DeleteAllItems(); }, 0, "  "},
        {RVN_BEGINITEMEDIT, [&] { report.DeactivateSubItem(0); }, 0, "one two three"},
        {RVN_BEGINITEMEDIT, [&] { report.UndefineAllSubItems(); }, 0, "  "},
        {RVN_BEGINITEMEDIT, [&] { report.SetItemText(0, 0, "new"); }, 0, "new two three"},
        {RVN_BEGINITEMEDIT, [&] { report.ModifyStyle(0, RVS_VERTICALGRID); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.DestroyWindow(); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.DeleteItem(0); }, 1, "two three "},
        {RVN_ENDITEMEDIT, [&] { report.SortItems(0, 0); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.EndEdit(0, nullptr); }, 1, "one two three"},
        {RVN_ENDITEMEDIT, [&] { Begin(1, 0, 'y'); }, 1, "one two three"},
        {RVN_ENDITEMEDIT, [&] { report.SetItemText(0, 0, "new"); }, 1, "new two three"},
    };
    int number = 0;
    for (const auto& [code, does, begins, cells] : cases)
    {
        act = [](NMHDR&) -> LRESULT { return 0; };
        ShowCells();
        bool isDone = false;
        act = [&, wanted = code](NMHDR& note) -> LRESULT {
            if (note.code == wanted && !std::exchange(isDone, true))
                does();
            return 0;
        };
        EXPECT_EQ(begins, Begin(0, 0, 'x')) << number;
        if (begins)
            Post(Editor(), WM_KEYDOWN, VK_RETURN);
        EXPECT_EQ(cells, Cell(0) + " " + Cell(1) + " " + Cell(2)) << number;
        ++number;
    }
}

TEST_F(ReportEdit, TakesTextsInAnyLanguage)
{
    // The cell's text, the bytes that are typed over it; the cell's text afterwards.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"one", "\xE9", "\xC3\xA9"}, // in the code page
        {"one", "\x07", "one"},
        {"gr\xFC\xDF", nullptr, "gr\xFC\xDF"}, // unchanged, and so not written back
        {"\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80", nullptr, "\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80"},
        {"two\r\nlines\t", nullptr, "two\r\nlines\t"},
    };
    ASSERT_NE(65001u, ::GetACP());
    for (const auto& [text, typed, after] : cases)
    {
        ShowCells();
        report.SetItemText(0, 0, text);
        EXPECT_EQ(1, Begin(0, 0, typed ? static_cast<unsigned char>(*typed) : 1)) << text;
        Post(Editor(), WM_KEYDOWN, VK_RETURN);
        EXPECT_EQ(after, Cell(0));
    }
    ShowCells();
    EXPECT_EQ(1, Begin(0, 0, VK_END));
    QmSetWindowText(Editor(), "\xE6\x97\xA5"); // as from the clipboard
    report.SendMessage(WM_CHAR, 0xE9);         // a byte that comes late
    Post(Editor(), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ("\xC3\xA9\xE6\x97\xA5", Cell(0));
}

TEST_F(ReportEdit, EndsWithWhatMovesCells)
{
    const std::function<void()> moves[] = {
        [&] { report.SendMessage(WM_VSCROLL, SB_BOTTOM); },
        [&] { report.SetWindowPos(nullptr, 0, 0, 250, 200, SWP_NOMOVE); }, [&] { report.SortItems(0, 0); },
        [&] { report.ModifyStyle(0, RVS_VERTICALGRID); }, [&] { ::SetFocus(parent); }};
    for (const auto& move : moves)
    {
        ShowCells();
        told.clear();
        EXPECT_EQ(1, Begin(1, 0, 'x'));
        move();
        EXPECT_EQ("[begin 1 0 120 two][end 1 0 0 x]", told);
        EXPECT_EQ("x", Cell(1));
        Post(report, WM_NULL, 0);
        EXPECT_EQ(nullptr, Editor());
    }
    ShowCells();
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    report.DeleteItem(0);
    Post(Editor(), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ("two three", Cell(0) + " " + Cell(1)) << "another item has the number now";
}

TEST_F(ReportEdit, CopiesOnCAndIsNotWrittenInCallbackMode)
{
    ShowCells();
    EXPECT_EQ(1, Begin(0, 0, VK_END));
    Post(Editor(), WM_SYSCHAR, 'x');
    Post(Editor(), WM_KEYDOWN, 'C');
    EXPECT_EQ("one", Text());
    ASSERT_TRUE(::OpenClipboard(report));
    const auto* const copied = static_cast<const char*>(::GlobalLock(::GetClipboardData(CF_TEXT)));
    EXPECT_STREQ("one", copied);
    ::CloseClipboard();
    EXPECT_EQ(1, Begin(1, 0, 'x')) << "the one before is ended";
    Post(report, WM_NULL, 0);
    EXPECT_EQ("x", Text());
    told.clear();
    report.DestroyWindow();
    EXPECT_EQ("two", Cell(1));
    EXPECT_EQ("", told) << "nobody is told of an end that was no choice";
}

} // namespace
