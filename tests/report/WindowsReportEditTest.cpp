// Cells edited in place, by keys and clicks, and what the parent has to say about it.
#include "ReportComboCtrl.h"
#include "qmcommon/QmWindowText.h"
#include "tests/report/ReportFixture.h"
#include "tests/support/Keys.h"
#include "tests/support/NothingLeft.h"

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
            else if (note.code == RVN_EDITTEXT)
                texts += Line("", record.item, record.subitem, record.text);
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

    HWND Combo() const { return ::FindWindowEx(report, nullptr, "COMBOBOX", nullptr); }

    std::string Text() const { return QmGetWindowText(Editor()); }

    CRect Place() { return PlaceOf(Editor(), report); }

    // The parent's own editor, for the next edit.
    void Offer(CEdit& own)
    {
        own.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), &report, 9);
        act = [&own](NMHDR& note) -> LRESULT {
            reinterpret_cast<_NMRVITEMEDIT&>(note).editor = own;
            return 1;
        };
    }

    // A message as the message loop deals with it, and what was posted meanwhile.
    void Post(HWND window, UINT message, WPARAM key)
    {
        ::PostMessage(window, message, key, 1);
        PumpMessages();
    }

    std::string Cell(int item) { return report.GetItemText(item, 0).c_str(); }

    std::string told;  // of beginnings and ends
    std::string texts; // and of changes between them
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
    Offer(own);
    EXPECT_EQ(1, Begin(0, 0, 'x'));
    EXPECT_EQ(own.m_hWnd, ::GetFocus());
    ::SetWindowText(own, "owned");
    report.EndEdit(1, nullptr);
    EXPECT_EQ("owned", Cell(0));
    Post(report, WM_NULL, 0);
    EXPECT_FALSE(::IsWindow(own.m_hWnd)) << "a message closes it";

    CEdit second;
    Offer(second);
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
    constexpr int kEither = -1; // a disabled window loses the focus of its children on some systems
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
        {RVN_BEGINITEMEDIT, [&] { report.SetItemText(0, 0, "new"); }, 1, "x two three"},
        {RVN_BEGINITEMEDIT, [&] { report.SetItemText(0, 0, nullptr); }, 0, " two three"},
        {RVN_BEGINITEMEDIT, [&] { report.InsertItem(0, "one"); }, 0, "one one two"},
        {RVN_BEGINITEMEDIT, [&] { report.ModifyStyle(0, RVS_VERTICALGRID); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.DestroyWindow(); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.DeleteItem(0); }, 1, "two three "},
        {RVN_ENDITEMEDIT, [&] { report.SortItems(0, 0); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.EndEdit(0, nullptr); }, 1, "one two three"},
        {RVN_ENDITEMEDIT, [&] { Begin(1, 0, 'y'); }, 1, "one two three"},
        {RVN_ENDITEMEDIT, [&] { report.SetItemText(0, 0, "new"); }, 1, "x two three"},
        {RVN_ENDITEMEDIT, [&] { report.InsertItem(0, "one"); }, 1, "one one two"},
        {RVN_ENDITEMEDIT, [&] { report.SendMessage(WM_SETFONT); }, 1, "x two three"},
        {RVN_EDITTEXT, [&] { report.DestroyWindow(); }, 0, "one two three"},
        {RVN_EDITTEXT, [&] { report.DeleteItem(0); }, 0, "two three "},
        {RVN_EDITTEXT, [&] { report.EndEdit(1, nullptr); }, 0, "x two three"},
        {RVN_EDITTEXT, [&] { report.EnableWindow(FALSE), report.EnableWindow(TRUE); }, kEither,
         "x two three"},
        {RVN_EDITTEXT, [&] { ::DestroyWindow(Editor()); }, 0, "x two three"},
        {RVN_EDITTEXT, [&] { report.ModifyProperty(RVP_EDITING, 0); }, 1, "x two three"},
        {RVN_CHECKITEMEDIT, [&] { report.DestroyWindow(); }, 1, "x two three"},
        {RVN_CHECKITEMEDIT, [&] { report.DeleteAllItems(); }, 1, "  "},
        {RVN_CHECKITEMEDIT, [&] { ::SetFocus(parent); }, 1, "x two three"},
        {RVN_CHECKITEMEDIT, [&] { Begin(1, 0, 'y'); }, 1, "one two three"},
        {RVN_CHECKITEMEDIT, [&] { report.EndEdit(0, nullptr); }, 1, "one two three"},
    };
    int number = 0;
    for (const auto& [code, does, begins, cells] : cases)
    {
        act = [](NMHDR&) -> LRESULT { return 0; };
        ShowCells();
        report.ModifyProperty(RVP_EDITING, RVED_CHECK | RVED_GROW);
        bool isDone = false;
        act = [&, wanted = code](NMHDR& note) -> LRESULT {
            if (note.code == wanted && !std::exchange(isDone, true))
                does();
            return 0;
        };
        const int hasBegun = Begin(0, 0, 'x');
        EXPECT_TRUE(hasBegun == begins || begins == kEither) << number;
        if (hasBegun)
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

    // Typed, and fetched by the framework's own message loop.
    const std::pair<std::wstring, const char*> typed[] = {{L"\u65E5\u672C!", "\xE6\x97\xA5\xE6\x9C\xAC!"},
                                                          {L"\U0001F600", "\xF0\x9F\x98\x80"},
                                                          {L"!\xE9", "!\xC3\xA9"},
                                                          {L"\u20AC", "\xE2\x82\xAC"}};
    for (const auto& [units, after] : typed)
    {
        ShowCells();
        report.AdjustFocus(0, 0);
        report.SendMessage(WM_KEYDOWN, 'Q');
        for (const wchar_t unit : units)
            ::PostMessageW(::GetFocus(), WM_CHAR, unit, 1);
        static ReportParent* modal = nullptr;
        modal = &parent;
        const UINT_PTR timer =
            ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) { modal->EndModalLoop(0); });
        parent.RunModalLoop();
        ::KillTimer(nullptr, timer);
        Post(Editor(), WM_KEYDOWN, VK_RETURN);
        EXPECT_EQ(after, Cell(0));
    }
}

// What moves its cell, and the number that its item has then.
TEST_F(ReportEdit, EndsWithWhatMovesCells)
{
    const auto layOut = [&](auto change) { return [&, change] { change(), Post(report, WM_NULL, 0); }; };
    const std::pair<std::function<void()>, int> moves[] = {
        {[&] { report.SendMessage(WM_VSCROLL, SB_BOTTOM); }, 1},
        {[&] { report.SetWindowPos(nullptr, 0, 0, 250, 200, SWP_NOMOVE); }, 1},
        {[&] { report.SortItems(0, 0); }, 1},
        {[&] { report.ModifyStyle(0, RVS_VERTICALGRID); }, 1},
        {[&] { ::SetFocus(parent); }, 1},
        {[&] { report.SendMessage(WM_SETFONT, 0, 0); }, 1},
        {[&] { report.InsertItem(1, "new"); }, 2},
        {[&] { report.DeleteItem(0); }, 0},
        {[&] { report.UndefineSubItem(2); }, 1},
        {layOut([&] { report.SetSubItemWidth(0, 70); }), 1},
        {layOut([&] { report.DeactivateSubItem(0); }), 1},
        {layOut([&] { report.SetItemHeight(30); }), 1},
        {layOut([&] { report.ScrollWindow(SB_HORZ, 10); }), 1},
        {layOut([&] { report.SetItemPreview(0, "preview", 20); }), 1},
    };
    int number = 0;
    for (const auto& [move, item] : moves)
    {
        ShowCells();
        report.SetSubItemWidth(2, 400);
        Post(report, WM_NULL, 0);
        told.clear();
        EXPECT_EQ(1, Begin(1, 0, 'x'));
        move();
        EXPECT_EQ("[begin 1 0 120 two][end 1 0 0 x]", told) << number;
        EXPECT_EQ("x", Cell(item)) << number;
        Post(report, WM_NULL, 0);
        EXPECT_EQ(nullptr, Editor()) << number++;
    }
    ShowCells();
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    report.InsertItem(3, "at the end");
    report.SetItemText(2, 0, "changed");
    Post(report, WM_NULL, 0);
    EXPECT_NE(nullptr, Editor()) << "what leaves its cell where it is does not end it";
}

TEST_F(ReportEdit, ScrollsToItsCell)
{
    ShowRows(WS_VISIBLE | RVS_CELLFOCUS, 100);
    UseSystem();
    report.SetSubItemWidth(1, 400);
    report.SetItemText(70, 2, "far");
    report.SetItemState(80, RVIS_READONLY, RVIS_READONLY);
    EXPECT_EQ(0, Begin(80, 0, 1));
    EXPECT_EQ(0, report.GetTopIndex()) << "no reason to go there";
    EXPECT_EQ(1, Begin(70, 2, 'x'));
    CRect client;
    report.GetClientRect(client);
    EXPECT_TRUE(::PtInRect(&client, {Place().left, Place().top}) && Place().right <= client.right);
}

TEST_F(ReportEdit, CopiesOnCAndIsNotWrittenInCallbackMode)
{
    ShowCells();
    EXPECT_EQ(1, Begin(0, 0, VK_END));
    Post(Editor(), WM_SYSCHAR, 'x');
    Post(Editor(), WM_KEYDOWN, 'C');
    EXPECT_EQ("one", Text());
    EXPECT_EQ("one", ClipboardText(report));
    EXPECT_EQ(1, Begin(1, 0, 'x')) << "the one before is ended";
    Post(report, WM_NULL, 0);
    EXPECT_EQ("x", Text());
    told.clear();
    report.DestroyWindow();
    EXPECT_EQ("two", Cell(1));
    EXPECT_EQ("", told) << "nobody is told of an end that was no choice";
}

// With the cells of three rows, of which those of subitem 1 are not to have the focus and (1, 0) and the
// third row are empty: the key that ends an edit of a cell, and the cell that is edited or has the focus
// then.
TEST_F(ReportEdit, GoesOnWhereItsKeyLeads)
{
    const std::tuple<int, int, int, std::vector<int>, const char*> cases[] = {
        {0, 0, VK_TAB, {}, "edits 0 2"},         {0, 2, VK_TAB, {}, "edits 1 2"},
        {1, 2, VK_TAB, {}, "focus 1 2"},         {1, 2, VK_TAB, {VK_SHIFT}, "edits 0 2"},
        {0, 2, VK_TAB, {VK_SHIFT}, "edits 0 0"}, {0, 2, VK_RETURN, {}, "edits 1 2"},
        {0, 0, VK_RETURN, {}, "focus 1 0"},      {1, 2, VK_RETURN, {}, "focus 2 2"},
        {0, 0, VK_ESCAPE, {}, "focus 0 0"},
    };
    for (const auto& [row, column, key, with, after] : cases)
    {
        Show(WS_VISIBLE | RVS_NOHEADER | RVS_CELLFOCUS, {"a", "d", "g"});
        UseSystem();
        Format(1, RVSF_NOCELLFOCUS);
        report.ModifyProperty(RVP_EDITING, RVED_GOON);
        for (const auto& [item, subitem, text] :
             {std::tuple(0, 1, "b"), {0, 2, "c"}, {1, 0, nullptr}, {1, 1, "e"}, {1, 2, "f"}, {2, 0, nullptr}})
            report.SetItemText(item, subitem, text);
        report.AdjustFocus(row, column);
        ASSERT_EQ(1, Begin(row, column, 1)) << row << column;
        Hold(with, true);
        Post(Editor(), WM_KEYDOWN, static_cast<WPARAM>(key));
        Hold(with, false);
        const bool isEdited = Editor() != nullptr;
        EXPECT_EQ(after, Line(isEdited ? "edits" : "focus", report.GetCurrentFocus(),
                              report.GetCurrentFocusColumn()))
            << row << column << ' ' << key;
        EXPECT_EQ(isEdited ? Editor() : report.m_hWnd, ::GetFocus());
    }
}

TEST_F(ReportEdit, ARefusedTextStaysInItsEditor)
{
    ShowCells();
    report.ModifyProperty(RVP_EDITING, RVED_CHECK);
    act = [](NMHDR& note) -> LRESULT {
        auto& check = reinterpret_cast<NMRVEDITCHECK&>(note);
        if (note.code != RVN_CHECKITEMEDIT || *check.text != 'x')
            return 0;
        check.reason = "no x here";
        return 1;
    };
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    const HWND editor = Editor();
    told.clear();
    const auto tip = [] { return ::IsWindowVisible(::FindWindow(TOOLTIPS_CLASS, nullptr)) != 0; };
    for (const auto& end : {std::function<void()>([&] { Post(editor, WM_KEYDOWN, VK_RETURN); }),
                            {[&] { ::SetFocus(parent), Post(report, WM_NULL, 0); }},
                            {[&] { report.SendMessage(WM_VSCROLL, SB_BOTTOM), Post(report, WM_NULL, 0); }},
                            {[&] { EXPECT_EQ(0, report.SortItems(0, 1)), Post(report, WM_NULL, 0); }},
                            {[&] { EXPECT_EQ(0, Begin(2, 0, 'y')), Post(report, WM_NULL, 0); }}})
    {
        end();
        EXPECT_EQ(editor, ::GetFocus());
        EXPECT_TRUE(tip());
    }
    EXPECT_EQ("", told);
    Post(editor, WM_CHAR, 'y');
    EXPECT_FALSE(tip());
    Post(editor, WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ("[end 1 0 27 xy]", told) << "Esc cancels without a question";
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    report.DeleteItem(0);
    EXPECT_EQ("two", Cell(0)) << "where it cannot stay, it is dropped";
    Post(report, WM_NULL, 0);
    EXPECT_EQ(1, Begin(0, 0, 'y'));
    Post(Editor(), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ("y", Cell(0));
}

TEST_F(ReportEdit, TellsOfEachChangeOfItsText)
{
    ShowCells();
    report.ModifyProperty(RVP_EDITING, RVED_GROW | RVED_TYPEC);
    act = [](NMHDR& note) -> LRESULT {
        auto& record = reinterpret_cast<_NMRVITEMEDIT&>(note);
        const bool isShort = note.code == RVN_EDITTEXT && std::string_view(record.text) == "xc";
        if (isShort)
            record.text = "completed";
        return isShort;
    };
    EXPECT_EQ(1, Begin(1, 0, 'x'));
    MSG key = {Editor(), WM_KEYDOWN, 'C', 1, 0, {}};
    EXPECT_FALSE(CWnd::WalkPreTranslateTree(nullptr, &key)) << "the letter can be typed";
    Post(Editor(), WM_CHAR, 'c');
    EXPECT_EQ(" 1 0 x 1 0 xc", texts);
    EXPECT_EQ("completed", Text());
    DWORD first = 0;
    ::SendMessage(Editor(), EM_GETSEL, reinterpret_cast<WPARAM>(&first), 0);
    EXPECT_EQ(9u, first);
    QmSetWindowText(Editor(), "a\ab"); // as from the clipboard
    EXPECT_EQ("ab", Text());
    const int before = Place().Width();
    QmSetWindowText(Editor(), "");
    for (const char character : std::string("eleven more"))
        Post(Editor(), WM_CHAR, static_cast<WPARAM>(character));
    EXPECT_LT(before, Place().Width());
    const auto begin = static_cast<short>(LOWORD(::SendMessage(Editor(), EM_POSFROMCHAR, 0, 0)));
    EXPECT_LE(0, begin) << "what was scrolled out of sight is seen again";
    const CClientDC dc(&report);
    EXPECT_FALSE(::PtVisible(dc, Place().left + 1, Place().top + 1)) << "no paint hides it";
    QmSetWindowText(Editor(), std::string(1000, 'w'));
    EXPECT_EQ(300 - 6, Place().Width()) << "up to the edge";
    std::string longText;
    while (longText.size() < 65536)
        longText += "\xE6\x97\xA5";
    QmSetWindowText(Editor(), "x" + longText);
    Post(Editor(), WM_KEYDOWN, VK_RETURN);
    EXPECT_EQ("x" + longText.substr(0, 65532), Cell(1)) << "no part of a character";
}

TEST_F(ReportEdit, ChoosesFromAList)
{
    const char* const choices[] = {"one", "gr\xC3\xB6n", "ONE"};
    // The key that begins, whether the second choice is picked, the key that ends; what is in the cell then,
    // and the key that the parent is told.
    const std::tuple<unsigned, bool, WPARAM, const char*, const char*> cases[] = {
        {1, true, VK_RETURN, "gr\xC3\xB6n", "13"}, {1, true, VK_TAB, "gr\xC3\xB6n", "9"},
        {1, true, VK_ESCAPE, "two", "27"},         {'x', false, VK_RETURN, "x", "13"},
        {8, false, VK_RETURN, "tw", "13"},         {1, false, VK_RETURN, "two", "13"},
    };
    for (const auto& [key, picks, end, cell, ended] : cases)
    {
        ShowCells();
        report.SetSubItemChoices(0, choices, 3);
        Format(0, 1);                                                  // as another definition of the subitem
        report.DefineSubItem(0, std::make_unique<_RVSUBITEM>().get()); // they move with their subitem
        told.clear();
        EXPECT_EQ(1, Begin(1, 0, key));
        ASSERT_NE(nullptr, Combo());
        EXPECT_TRUE(::IsChild(Combo(), ::GetFocus()));
        if (picks)
            ::SendMessage(Combo(), CB_SETCURSEL, 1, 0);
        Post(::GetFocus(), WM_KEYDOWN, end);
        EXPECT_STREQ(cell, report.GetItemText(1, 1).c_str());
        EXPECT_NE(std::string::npos, told.find(Line("[end 1 1", ended))) << told;
        EXPECT_EQ(nullptr, Combo());
    }
    report.SetItemText(1, 1, "one");
    EXPECT_EQ(1, Begin(1, 0, 1));
    texts.clear();
    Post(::GetFocus(), WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(" 1 1 gr\xC3\xB6n", texts) << "what is picked is told, too";
    Post(::GetFocus(), WM_KEYDOWN, VK_ESCAPE);

    report.SetItemText(1, 1, "One");
    EXPECT_EQ(1, Begin(1, 0, 1));
    EXPECT_EQ("One", QmGetWindowText(Combo())) << "not the choice that differs in its capitals";
    Post(::GetFocus(), WM_SYSKEYDOWN, VK_DOWN);
    EXPECT_TRUE(::SendMessage(Combo(), CB_GETDROPPEDSTATE, 0, 0));
    ::SetFocus(parent);
    Post(report, WM_NULL, 0);
    EXPECT_EQ(nullptr, Combo()) << "the lost focus accepts";

    // The parent's own, of the choices alone.
    act = [this](NMHDR& note) -> LRESULT {
        if (note.code != RVN_BEGINITEMEDIT)
            return 0;
        auto& record = reinterpret_cast<_NMRVITEMEDIT&>(note);
        auto* const combo = new CReportComboCtrl;
        EXPECT_TRUE(combo->Create(&report, record.rect, CBS_DROPDOWNLIST));
        for (const char* const choice : {"red", "green"})
            combo->AddChoice(choice);
        combo->SetText("green");
        record.editor = *combo;
        return 1;
    };
    EXPECT_EQ(1, Begin(2, 0, 1));
    EXPECT_EQ(Combo(), ::GetFocus());
    Post(Combo(), WM_KEYDOWN, VK_UP);
    Post(Combo(), WM_KEYDOWN, VK_RETURN);
    EXPECT_STREQ("red", report.GetItemText(2, 1).c_str());
}

TEST_F(ReportEdit, LeavesNothingBehind)
{
    ShowCells();
    const char* const choices[] = {"one", "two"};
    ExpectNothingLeft(
        [&] {
            for (const int count : {0, 2})
            {
                report.SetSubItemChoices(0, choices, count);
                EXPECT_EQ(1, Begin(1, 0, 'x'));
                Post(::GetFocus(), WM_KEYDOWN, VK_ESCAPE);
            }
        },
        5 * LeakRounds());
}

} // namespace
