// The log text window and its browser: keys, mouse, timer, commands, clipboard, and what is painted.

#include "LogTextWindow.h"
#include "QmLogTextCtrlEntries.h"
#include "logview/MarginLayout.h"
#include "logview/merge/StripState.h"
#include "qmcommon/QmCommandList.h"
#include "tests/support/NothingLeft.h"
#include "tests/support/Process.h"

#include <numeric>
#include <set>

namespace
{

using LogTextTest = LogTextWindowTest;

// A colour of the system's scheme, put back at the end.
class SystemColor
{
public:
    SystemColor(int index, COLORREF color) : m_index(index), m_old(::GetSysColor(index)) { Set(color); }
    ~SystemColor() { Set(m_old); }
    SystemColor(const SystemColor&) = delete;
    SystemColor& operator=(const SystemColor&) = delete;

    void Set(COLORREF color) { ::SetSysColors(1, &m_index, &color); }

private:
    int m_index;
    COLORREF m_old;
};

TEST_F(LogTextTest, StartsASessionAndShowsWhatAnotherProcessWrites)
{
    QmLogWriterDefine("Main").Write("an earlier session");
    Open();
    EXPECT_TRUE(text.IsSessionStarted());
    EXPECT_EQ(0u, Contents("Main.LOG").find("\nQmLog\nActivated on VK.INI by:"));
    const int header = text.GetRowCount();
    EXPECT_EQ(static_cast<int>(Rows("Main").size()), header) << "shown without waiting for the timer";

    Child writer;
    for (int line = 0; line < 50; ++line)
        ASSERT_EQ("true", writer.Ask("write Main |line " + std::to_string(line)));
    EXPECT_EQ(header, text.GetRowCount());
    Tick();
    EXPECT_EQ(header + 50, text.GetRowCount());
    EXPECT_TRUE(text.IsAtEnd()) << "follows";

    text.SetFollowPauses(true);
    Press(VK_HOME, VK_CONTROL);
    ASSERT_TRUE(text.IsFollowPaused());
    writer.Ask("write Main |more");
    Tick();
    EXPECT_EQ(0, text.GetTopRow());
    Press(VK_END, VK_CONTROL);
    EXPECT_FALSE(text.IsFollowPaused());
    writer.Ask("write Main |and more|and more");
    Tick();
    EXPECT_TRUE(text.IsAtEnd());

    ASSERT_TRUE(text.Reveal(0, static_cast<unsigned long>(text.GetRowCount()) - 3) && text.IsAtEnd());
    const int top = text.GetTopRow();
    writer.Ask("write Main |one more");
    Tick();
    EXPECT_TRUE(text.IsFollowPaused() && text.GetTopRow() == top) << "what was gone to stays in place";
    Press(VK_END, VK_CONTROL);
    EXPECT_FALSE(text.IsFollowPaused());

    // Rows that a writer has taken back are not shown, though no number tells.
    const int rows = text.GetRowCount();
    writer.Finish();
    QmLogReaderDefine("Main").Close();
    SetContents("Main.ROW", Contents("Main.ROW").substr(0, static_cast<std::size_t>(rows - 2) * 20));
    Tick();
    EXPECT_EQ(rows - 2, text.GetRowCount());
    text.SetFindText("DEV VERSION");
    EXPECT_TRUE(text.FindNext() && text.IsFollowPaused()) << "what was found stays in view";

    EXPECT_FALSE(text.Browse(5));
    EXPECT_FALSE(text.Browse(-1));
}

// To wait for another process's writer would hang the program.
TEST_F(LogTextTest, DoesNotWaitForASessionThatCannotBeStarted)
{
    Child writer;
    writer.Ask("write Main |busy");
    Open();
    EXPECT_FALSE(text.IsSessionStarted());
    EXPECT_EQ("|busy", "|" + Contents("Main.LOG").substr(1));
    text.WriteTest();
    EXPECT_EQ("", Contents("SQL.LOG"));
}

TEST_F(LogTextTest, DoesNotWaitForCountersThatCannotBeMade)
{
    SetVariable("QM_LOG_FOLDER", "Z:\\proc\\");
    Open();
    EXPECT_FALSE(text.IsSessionStarted());
    Tick();
    text.UpdateWindow();
    EXPECT_EQ(0, text.GetRowCount());
}

// Names, sizes and times of the folder's files.
std::string Listing(const std::string& folder)
{
    std::string listing;
    WIN32_FIND_DATAA file = {};
    const HANDLE search = ::FindFirstFileA((folder + "*").c_str(), &file);
    for (BOOL found = search != INVALID_HANDLE_VALUE; found; found = ::FindNextFileA(search, &file))
        if (std::string(file.cFileName) != "Profile.ini" && file.cFileName[0] != '.')
            listing += std::string(file.cFileName) + ' ' + std::to_string(file.nFileSizeLow) + ' ' +
                       std::to_string(file.ftLastWriteTime.dwHighDateTime) + ' ' +
                       std::to_string(file.ftLastWriteTime.dwLowDateTime) + '\n';
    ::FindClose(search);
    return listing;
}

TEST_F(LogTextTest, LookingChangesNothingAndWaitsForNobody)
{
    Child writer;
    for (const char* line : {"Main |one", "Run |two|three", "SQL |four", "Main |five|six"})
        ASSERT_EQ("true", writer.Ask(std::string("write ") + line));
    const auto look = [&] {
        Open(false);
        Tick();
        text.UpdateWindow();
        text.Focus(0, 0, false);
        for (const UINT key : {VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR, VK_END, VK_HOME})
            Press(key, VK_CONTROL);
        Press(VK_RETURN);
        for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
            text.Reveal(file, 0);
        Click(WM_LBUTTONDBLCLK, PointIn(1, 1, 7));
        text.SelectAll();
        text.GetSelectedText();
        text.SetFindText("NOWHERE");
        text.FindNext();
        QmLogWriterCloseAll(); // a host's, which closes the counters
        Tick();
        text.UpdateWindow();
        browser.DestroyWindow();
        for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
            QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(file)).Close();
    };
    std::string before = Listing(Path(""));
    look(); // while a process is writing
    EXPECT_EQ(before, Listing(Path("")));
    writer.Finish();

    for (const char* lost : {"Run.LOG", "SQL.ROW", "Log.DAT", "Main.LOG", "Main.ROW"})
    {
        ::DeleteFileA(Path(lost).c_str());
        before = Listing(Path(""));
        look();
        EXPECT_EQ(before, Listing(Path(""))) << "without " << lost;
    }
}

// A folder that goes is not made again, and what comes into a new one is shown.
TEST_F(LogTextTest, FollowsAFolderThatGoesAndComes)
{
    const std::string folder = Path("Session\\");
    SetVariable("QM_LOG_FOLDER", folder);
    CQmLogReader& main = QmLogReaderDefine("Main"); // which an earlier test may have defined
    main.SetFilePath("Main");
    Open(false);
    Tick();
    ASSERT_TRUE(::RemoveDirectoryA(folder.c_str()));
    Tick();
    text.UpdateWindow();
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesA(folder.c_str()));
    EXPECT_EQ("true", Child().Ask("write Main |here again"));
    Tick();
    EXPECT_EQ(1, text.GetRowCount());
    main.Close();
    SetVariable("QM_LOG_FOLDER", Path(""));
    main.SetFilePath("Main");
}

TEST_F(LogTextTest, SpaceEnterAndClicksFold)
{
    OpenSample();
    const int rows = text.GetRowCount();
    const int row = FoldedRow();
    ASSERT_LT(row, rows);

    text.Focus(row, 0, false);
    Press(VK_SPACE);
    const int unfolded = text.GetRowCount();
    EXPECT_GT(unfolded, rows);
    EXPECT_EQ(row, text.GetCaretRow());
    EXPECT_NE(0, text.GetRowFile(row + 1)) << "the rows of another log come next";
    Press(VK_SPACE);
    EXPECT_EQ(rows, text.GetRowCount());
    Press(VK_RETURN);
    EXPECT_GT(text.GetRowCount(), unfolded);
    Press(VK_RETURN);
    EXPECT_EQ(rows, text.GetRowCount());
    text.Focus(0, 0, false);
    Press(VK_SPACE); // nothing to fold there
    EXPECT_EQ(rows, text.GetRowCount());

    // The mark straddles the edge between two rows; either half of it belongs to the upper one.
    text.EnsureVisible(row, 0, 2, 0);
    const int height = text.GetRowHeight();
    Click(WM_LBUTTONDOWN, PointIn(row, 4, height - 2));
    EXPECT_EQ(unfolded, text.GetRowCount());
    Click(WM_LBUTTONDOWN, PointIn(row + 1, 4, 2));
    EXPECT_EQ(rows, text.GetRowCount());
    Click(WM_LBUTTONDOWN, PointIn(row, 4, 2)); // the mark of the row above, which has none
    text.Focus(1, 0, false);
    text.EnsureVisible(0, 0, 1, 0);
    Click(WM_LBUTTONDOWN, PointIn(0, 4, 2)); // no row above
    EXPECT_EQ(rows, text.GetRowCount());
    EXPECT_EQ(1, text.GetCaretRow());

    // Far up, where it unfolds out of sight, the caret stays on its text.
    text.Focus(rows - 1, 0, false);
    const unsigned long number = Style(rows - 1).time;
    text.ExpandAll(row);
    EXPECT_EQ(number, Style(text.GetCaretRow()).time);
}

TEST_F(LogTextTest, KeysGoThroughErrorsAndTime)
{
    OpenSample();
    Press(VK_DOWN, VK_MENU);
    const int error = text.GetCaretRow();
    EXPECT_TRUE(Style(error).kind == kErrorKind && Style(error).blockBegin == 1);
    text.Focus(text.GetRowCount() - 1, 0, false);
    Press(VK_UP, VK_MENU);
    EXPECT_EQ(error, text.GetCaretRow());
    text.Focus(1, 0, false);
    Press(VK_UP, VK_MENU); // no error there

    Press(VK_DOWN, VK_CONTROL);
    EXPECT_EQ(2, text.GetCaretRow()) << "the next number is the next row of the same log";
    Press(VK_UP, VK_CONTROL);
    EXPECT_EQ(1, text.GetCaretRow());

    int file = 0;
    unsigned long fileRow = 0;
    unsigned long time = Style(1).time;
    while (text.Find(++time, true, file, fileRow) && file == 0)
    {
    }
    Press(VK_NEXT, VK_CONTROL);
    EXPECT_EQ(static_cast<int>(fileRow), text.GetCaretRow()) << "the row's index in the other log";
}

TEST_F(LogTextTest, OffersItsCommandsInOrder)
{
    OpenSample();
    const auto describe = [](const CQmCommandList& list) {
        std::string description;
        for (const auto& entry : list.GetEntries())
        {
            const char* const caption = entry != nullptr ? entry->GetCaption() : "-";
            description += caption != nullptr ? caption : "(hidden)";
            if (entry != nullptr)
                description += (" " + std::to_string(entry->GetKey())) + " " +
                               std::to_string(entry->GetModifiers()) + (entry->IsChecked() ? " on" : "");
            description += '\n';
        }
        return description;
    };
    const auto offered = [&](int row) {
        text.Focus(row, 0, false);
        CQmCommandList list;
        browser.Scan(list);
        return describe(list);
    };
    const std::string rest = "&Follow Mode 0 0 on\n-\n"
                             "Go to Previous Error 38 16\nGo to Next Error 40 16\n-\n"
                             "&Find... 70 8\nFind &Next 114 0\nFind &Previous 114 4\n-\n"
                             "Select &All 65 8\n&Copy 67 8\n-\n"
                             "Test [DEBUG] 0 0\n";
    text.SetFollow(true);
    const int row = FoldedRow();
    EXPECT_EQ("(hidden) 32 0\n(hidden) 13 0\n" + rest, offered(0));
    EXPECT_EQ("Expand 32 0\nExpand All 13 0\n" + rest, offered(row));
    text.Expand(row);
    EXPECT_EQ("Collapse 32 0\nCollapse All 13 0\n" + rest, offered(row));

    text.SetFilePath(2);
    CQmCommandList files;
    text.ScanFilePath(files);
    EXPECT_EQ("Main 49 16\nRun 50 16\nSource 51 16 on\nSQL 52 16\nService 53 16\n", describe(files));
}

// Hosts make lists of their own of the commands, which bring their keys with them.
TEST_F(LogTextTest, OffersAHostsListInPlaceOfItsOwn)
{
    class List : public IQmHandler
    {
    public:
        explicit List(CQmLogTextCtrl& text) : m_text(text) {}
        void Scan(IQmCommand& collector) override
        {
            collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitch>(&m_text));
        }

    private:
        CQmLogTextCtrl& m_text;
    };
    OpenSample();
    const int rows = text.GetRowCount();
    text.Focus(FoldedRow(), 0, false);
    List list(text);
    text.SetCommands(&list);
    CQmCommandList offered;
    browser.Scan(offered);
    ASSERT_EQ(1u, offered.GetEntries().size());
    EXPECT_STREQ("Expand", offered.GetEntries()[0]->GetCaption());
    Press(VK_RETURN); // is not among them
    EXPECT_EQ(rows, text.GetRowCount());
    Press(VK_SPACE);
    EXPECT_LT(rows, text.GetRowCount());
    text.SetCommands(nullptr);
    Press(VK_RETURN);
    EXPECT_EQ(rows, text.GetRowCount());
}

// Rows that other logs hide can be many times the rows there are.
TEST_F(LogTextTest, TellsHowMuchIsLeftFolded)
{
    Open();
    text.SetFollow(false);
    const int header = text.GetRowCount() - 1;
    for (int i = 0; i < 100; ++i)
        for (const int file : {2, 1, 3, 2, 3})
            QmLogWriterDefine(CQmLogTextCtrl::GetFilePath(file)).Write("\nx");
    QmLogWriterDefine("Main").Write("\nend");
    Tick();
    EXPECT_TRUE(text.ExpandAll(header));
    EXPECT_LT(0, text.GetLeftFolded());
    EXPECT_TRUE(text.Collapse(header));
    EXPECT_EQ(0, text.GetLeftFolded());
    EXPECT_TRUE(text.Expand(header));
    EXPECT_TRUE(text.ExpandAll(text.GetRowCount() - 10));
    EXPECT_EQ(0, text.GetLeftFolded());
}

TEST_F(LogTextTest, DrawsARowByItself)
{
    OpenSample();
    text.UpdateWindow();
    CClientDC dc(&text);
    for (const int row : {3, text.GetRowCount() - 1})
    {
        const CRect white(0, 0, 600, text.GetRowHeight());
        dc.FillSolidRect(white, RGB(255, 255, 255));
        text.DrawRow(dc, text.GetRowLeft(row), 0, row);
        bool isDrawn = false;
        for (int x = text.GetRowLeft(row); x < 200; ++x)
            for (int y = 0; y < text.GetRowHeight(); ++y)
                isDrawn |= dc.GetPixel(x, y) != RGB(255, 255, 255);
        EXPECT_TRUE(isDrawn) << row;
    }
}

TEST_F(LogTextTest, CopiesAndFinds)
{
    OpenSample();
    text.Focus(1, 3, false);
    text.Select(2, 4);
    Press('C', VK_CONTROL);
    EXPECT_EQ("ivated on VK.INI by:\n[QmL", ClipboardText(frame));
    text.Focus(0, 0, false);
    EXPECT_FALSE(text.Copy()) << "nothing is selected";
    EXPECT_EQ("ivated on VK.INI by:\n[QmL", ClipboardText(frame));

    // A double click takes the row, in the margin the block.
    Click(WM_LBUTTONDBLCLK, PointIn(3, text.GetRowLeft(3) + 2, 3));
    EXPECT_EQ("Active=1\n", text.GetSelectedText());
    Click(WM_LBUTTONDBLCLK, PointIn(3, 1, 7));
    EXPECT_EQ("[QmLog]\nActive=1\n", text.GetSelectedText());

    const std::pair<const char*, bool> searches[] = {{"SERVICE SHUTDOWN", true}, {"Service", false}};
    for (const auto& [wanted, isFound] : searches)
    {
        text.Focus(0, 0, false);
        text.SetFindText(wanted);
        EXPECT_EQ(isFound, text.FindNext()) << wanted;
    }
    text.SetFindText("VK");
    ASSERT_TRUE(text.FindNext());
    EXPECT_EQ("VK", text.GetSelectedText());
}

TEST_F(LogTextTest, CopiesAndFindsTextOfAnyLanguage)
{
    CQmLogWriter& main = QmLogWriterDefine("Main");
    main.Clear();
    main.Write("\u0416\u0443\u0440\u043D\u0430\u043B \u65E5\u5FD7 Gr\u00F6\u00DFe\n"); // characters of one,
                                                                                       // two and three bytes
    main.Write("\xE4 Gr\xF6\xDF"
               "e\n"); // in the code page
    QmLogWriterCloseAll();
    Open(false);
    text.Focus(0, 0, false);
    for (int i = 0; i < 8; ++i)
        Press(VK_RIGHT);
    EXPECT_EQ(16, text.GetCaretColumn()); // behind the first character of two cells
    Press(VK_DOWN);
    EXPECT_EQ(8, text.GetCaretColumn()) << "the end of a row of eight cells";
    Press(VK_UP);
    EXPECT_EQ(16, text.GetCaretColumn());
    CPoint caret;
    ::GetCaretPos(&caret);
    EXPECT_EQ(text.GetRowLeft(0) + 9 * text.GetColumnWidth(), caret.x);

    text.FindInput();
    const HWND edit = ::GetFocus();
    for (const wchar_t character : {L'g', L'r', L'\u00F6', L'\u00DF', L'e'})
        ::SendMessageW(edit, WM_CHAR, character, 1);
    for (const auto& [row, bytes] : {std::pair(0, "Gr\u00F6\u00DFe"),
                                     {1, "Gr\xF6\xDF"
                                         "e"},
                                     {0, "Gr\u00F6\u00DFe"}})
    {
        ASSERT_TRUE(text.FindNext());
        EXPECT_EQ(row, text.GetCaretRow());
        EXPECT_EQ(bytes, text.GetSelectedText());
    }
    ::SetWindowTextW(edit, L"\u65E5\u5FD7");
    EXPECT_TRUE(text.FindNext());
    EXPECT_EQ("\u65E5\u5FD7", text.GetSelectedText());

    text.Focus(0, 0, false);
    text.Select(1, 5);
    ASSERT_TRUE(text.Copy());
    const std::string first = "\u0416\u0443\u0440\u043D\u0430\u043B \u65E5\u5FD7 Gr\u00F6\u00DFe\n";
    EXPECT_EQ(first + "\u00E4 Gr\u00F6", ClipboardText(frame, CF_UNICODETEXT));
    EXPECT_EQ(first + "\xE4 Gr\xF6", ClipboardText(frame, CF_TEXT)) << "the bytes of the logs";
}

TEST_F(LogTextTest, ColoursTellKindsMarksAndTheCaretRow)
{
    OpenSample();
    const COLORREF captionColor = ::GetSysColor(COLOR_ACTIVECAPTION);
    const std::pair<QmLogBlockKind, COLORREF> kinds[] = {
        {kPlainKind, 0}, {kNoticeKind, 0x00AEE8}, {kErrorKind, 0x7F7FE8}, {kDetailKind, 0x7F7F7F}};
    for (const auto& [kind, color] : kinds)
    {
        int row = 1;
        while (row < text.GetRowCount() && Style(row).kind != kind)
            ++row;
        text.Focus(row, 0, false);
        const int left = text.GetRowLeft(row);
        EXPECT_TRUE(Colors(row, left, left + 200).contains(color)) << "kind " << kind;
        EXPECT_TRUE(Colors(row, 0, 8).contains(captionColor)) << "the caret row's wedge";
        EXPECT_FALSE(Colors(row - 1, 0, 8).contains(captionColor));
    }

    // The square of a header: 4 x 4, left of the text, and none before other rows.
    const auto squareColors = [this](int row) {
        const int left = text.GetRowLeft(row);
        return Colors(row, left - 8, left);
    };
    text.Focus(0, 0, false);
    EXPECT_TRUE(squareColors(2).contains(0x7F7F7F));
    EXPECT_FALSE(squareColors(3).contains(0x7F7F7F));

    // The fold mark's sign: a bar through it while folded. It reaches into the row below.
    const int row = FoldedRow();
    text.Focus(row + 2, 0, false); // away from the mark, and in view
    text.EnsureVisible(row - 1, 0, 3, 0);
    SystemColor scheme(COLOR_3DFACE, RGB(212, 208, 200));
    const COLORREF face = ::GetSysColor(COLOR_3DFACE);
    const auto pixel = [&](int x, int dy) {
        text.UpdateWindow();
        CClientDC dc(&text);
        const CPoint point = PointIn(row, x, dy);
        return dc.GetPixel(static_cast<int>(point.x), static_cast<int>(point.y));
    };
    EXPECT_EQ(face, pixel(4, 17));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), pixel(3, 12));
    text.Expand(row);
    EXPECT_EQ(face, pixel(3, 12));
    text.InvalidateRect(CRect(0, static_cast<int>(PointIn(row + 1, 0, 0).y), 600, 400), FALSE);
    EXPECT_EQ(face, pixel(4, 17)) << "also when only the row below is painted";

    // A face that is nearly the window's colour would not be seen.
    scheme.Set(RGB(245, 245, 245));
    text.Invalidate();
    EXPECT_EQ(::GetSysColor(COLOR_3DSHADOW), pixel(4, 17));
}

// Marks that touch each other are drawn together, and look as if each had been drawn by itself.
TEST_F(LogTextTest, TheStripMarksNumbers)
{
    OpenSample();
    text.ShowMerged();
    text.SetShowsStrip(true);
    std::vector<std::uint32_t> bookmarks;
    text.SetBookmarks([&]() -> const std::vector<std::uint32_t>& { return bookmarks; });
    CQmLogRow first, last;
    ASSERT_TRUE(text.ReadStyle(0, first) && text.ReadStyle(text.GetRowCount() - 1, last));
    std::vector<std::uint32_t> all(last.time - first.time + 1);
    std::iota(all.begin(), all.end(), first.time);
    const std::vector<std::uint32_t> choices[] = {{}, {3}, {1, 2, 7, 8, 9, 30}, all, {last.time}};
    CWnd* const strip = CWnd::FromHandle(::GetWindow(text, GW_CHILD));
    for (const int height : {400, 330, 280, 230, 120}) // marks apart, near, touching
    {
        browser.MoveWindow(CRect(0, 0, 600, height));
        for (const std::vector<std::uint32_t>& choice : choices)
        {
            bookmarks = choice;
            Tick();
            CRect area;
            strip->GetClientRect(area);
            logview::StripState state;
            state.numbers = {first.time, last.time};
            state.height = area.Height();
            std::set<int> expected;
            for (const std::uint32_t number : choice)
                for (int line = 0; line < 3; ++line)
                    expected.insert(std::min(state.RowOf(number) + line, state.height - 1));
            strip->UpdateWindow();
            CClientDC dc(strip);
            std::set<int> marked;
            for (int y = 0; y < state.height; ++y)
                if (dc.GetPixel(2, y) == CQmLogTextCtrl::GetThemeColors(QmLogTheme::Light).mark)
                    marked.insert(y);
            EXPECT_EQ(expected, marked) << height << " " << choice.size();
        }
    }
}

// Its marks stay at the window's left edge when the text is scrolled across, and clicks meet what is drawn.
TEST_F(LogTextTest, TheWideMarginShowsWhatClicksMeet)
{
    OpenSample();
    const int usualLeft = text.GetRowLeft(0);
    QmLogColors colors = CQmLogTextCtrl::GetThemeColors(QmLogTheme::Dark);
    QmLogLook look;
    look.wideMargin = true;
    look.colors = &colors;
    text.SetLook(look);
    colors = {}; // it has a copy
    colors = CQmLogTextCtrl::GetThemeColors(QmLogTheme::Dark);
    const logview::MarginLayout layout(text.GetRowHeight(), text.GetColumnWidth(), 600);
    const logview::MarginBox box = layout.FoldBox();
    EXPECT_LT(text.GetRowLeft(0), usualLeft);

    const int row = FoldedRow();
    text.Expand(row);
    text.Focus(row + 3, 0, false);
    text.EnsureVisible(row, 0, 4, 0);
    text.SendMessage(WM_HSCROLL, SB_PAGERIGHT);
    ASSERT_LT(0, text.GetScrollPos(SB_HORZ));
    const auto zone = [&](int of, logview::MarginBand band) { return Colors(of, band.begin, band.end); };
    for (const int of : {row, row + 1})
    {
        EXPECT_TRUE(zone(of, layout.Stripe()).contains(colors.logs[text.GetRowFile(of)]));
        EXPECT_FALSE(zone(of, layout.Initial()).contains(colors.kinds[0])) << "no scrolled text";
        EXPECT_EQ((std::set<COLORREF>{colors.window}), zone(of, layout.Bookmark()));
    }
    ASSERT_NE(text.GetRowFile(row), text.GetRowFile(row + 1));
    EXPECT_TRUE(zone(row, {box.left, box.left + box.size}).contains(colors.mark));
    EXPECT_TRUE(zone(row + 3, layout.Bookmark()).contains(colors.caretMargin)) << "the caret's row";

    const int unfolded = text.GetRowCount();
    const int middle = text.GetRowHeight() / 2;
    Click(WM_LBUTTONDOWN, PointIn(row, layout.Stripe().begin, middle));
    EXPECT_EQ(row, text.GetCaretRow()) << "beside the mark a click goes to the row";
    EXPECT_EQ(unfolded, text.GetRowCount());
    Click(WM_LBUTTONDOWN, PointIn(row, box.left, middle));
    EXPECT_GT(unfolded, text.GetRowCount());
    Click(WM_LBUTTONDBLCLK, PointIn(row, box.left + box.size - 1, middle));
    EXPECT_EQ(unfolded, text.GetRowCount()) << "the second of two quick clicks is one";
    EXPECT_EQ(text.GetSelectionBeginRow(), text.GetSelectionEndRow());

    std::vector<std::uint32_t> clicked;
    text.SetBookmarkClick([&](std::uint32_t number) { clicked.push_back(number); });
    for (const UINT click : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK})
        Click(click, PointIn(row + 1, layout.Bookmark().end - 1, middle));
    Click(WM_LBUTTONDOWN, PointIn(row + 2, layout.Stripe().begin, middle));
    EXPECT_EQ(std::vector<std::uint32_t>(2, Style(row + 1).time), clicked);
    EXPECT_EQ(row + 2, text.GetCaretRow());

    const int narrow = text.GetMarginWidth();
    std::set<std::uint32_t> asked;
    text.SetMarginTexts(4, [&](std::uint32_t number) {
        asked.insert(number);
        return number == Style(row).time ? "12:3" : "";
    });
    const logview::MarginLayout wide(text.GetRowHeight(), text.GetColumnWidth(), 600, 4);
    EXPECT_EQ(wide.Width(), text.GetMarginWidth());
    EXPECT_TRUE(zone(row, wide.Text()).contains(colors.kinds[kDetailKind]));
    EXPECT_FALSE(zone(row + 1, wide.Text()).contains(colors.kinds[kDetailKind]));
    for (int shown = 0; shown < text.GetRowCount(); ++shown)
        EXPECT_EQ(shown >= text.GetTopRow() && PointIn(shown, 0, 0).y < 400,
                  asked.contains(Style(shown).time))
            << shown;
    for (const int columns : {4, -1, 0})
    {
        text.SetMarginTexts(columns, nullptr);
        EXPECT_FALSE(zone(row, wide.Text()).contains(colors.kinds[kDetailKind])) << columns;
        EXPECT_EQ(narrow, text.GetMarginWidth()) << columns;
    }

    text.SetLook({});
    EXPECT_EQ(usualLeft, text.GetRowLeft(0));
    EXPECT_EQ(0, text.GetMarginWidth());
}

TEST_F(LogTextTest, TipsHaveTheLinesOfWhateverIsShown)
{
    OpenSample();
    text.ExpandAll(FoldedRow());
    for (const bool isMerged : {false, true})
    {
        if (isMerged)
            text.ShowMerged();
        std::string tip;
        for (int row = 0; row < text.GetRowCount(); ++row)
        {
            text.Focus(row, 0, false);
            text.Select(row, 0x7FFFFFFF);
            std::string line = text.GetSelectedText();
            while (!line.empty() && line.back() == '\n')
                line.pop_back();
            ASSERT_TRUE(text.GetTipText(row, tip));
            EXPECT_EQ(line, tip) << isMerged << " " << row;
        }
        EXPECT_FALSE(text.GetTipText(text.GetRowCount() + 5, tip));
    }
}

// Damaged rows, lines of megabytes and bytes of any value are drawn or skipped.
TEST_F(LogTextTest, ShowsDamagedLogs)
{
    std::string line(3 << 20, 'x');
    for (int code = 0; code < 256; ++code)
        line[static_cast<std::size_t>(code)] = static_cast<char>(code);
    SetContents("Main.LOG", line);
    std::string records;
    for (const std::uint32_t offset : {0u, 10u, 3u << 20, 0xFFFFFFFFu, 5u})
    {
        CQmLogRow record;
        record.offset = offset;
        record.indent = 255;
        record.time = offset;
        records.append(reinterpret_cast<const char*>(&record), sizeof(record));
    }
    SetContents("Main.ROW", records + "part");
    Open(false);
    EXPECT_EQ(5, text.GetRowCount());
    text.UpdateWindow();
    Press(VK_END);
    for (int row = 0; row < 5; ++row)
        text.ExpandAll(row);
    text.SelectAll();
    EXPECT_LE(text.GetSelectedText().size(), std::size_t{5} * line.size());
    text.UpdateWindow();
}

TEST_F(LogTextTest, TheBrowserHasOneTabAndNeedsBothChildren)
{
    Open();
    EXPECT_EQ(0, text.GetFilePathIndex());
    text.SetFilePath(3); // has no tab
    browser.Refresh();
    text.SetFilePath(0);
    EXPECT_TRUE(text.IsWindowVisible());
    CRect before;
    text.GetWindowRect(&before);
    browser.MoveWindow(0, 0, 300, 200);
    CRect after;
    text.GetWindowRect(&after);
    EXPECT_EQ(300, before.Width() - after.Width());

    // Windows deny the creation of one child after the other.
    static int allowed = 0;
    const auto deny = [](int code, WPARAM, LPARAM) -> LRESULT {
        return code == HCBT_CREATEWND && allowed-- == 0;
    };
    for (int children = 1; children <= 2; ++children)
    {
        CQmLogBrowser other;
        other.GetTextCtrl().SetStartSession(false);
        allowed = children;
        const HHOOK hook = ::SetWindowsHookEx(WH_CBT, deny, nullptr, ::GetCurrentThreadId());
        EXPECT_FALSE(other.Create(WS_CHILD, CRect(0, 0, 10, 10), &frame, 8)) << children;
        ::UnhookWindowsHookEx(hook);
        EXPECT_EQ(nullptr, other.GetSafeHwnd());
    }
}

// A host's window that goes while the window refreshes.
class Vanishing : public CQmLogTextCtrl
{
public:
    void OnRowsChanged() override
    {
        CQmLogTextCtrl::OnRowsChanged();
        if (vanish)
            DestroyWindow();
    }
    bool vanish = false;
};

TEST_F(LogTextTest, MayBeDestroyedInItsTimerAndInACommand)
{
    Vanishing first;
    CQmLogTextCtrl second; // two in one process
    ASSERT_TRUE(first.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 300), &frame, 1));
    second.SetStartSession(false);
    ASSERT_TRUE(second.Create(WS_CHILD | WS_VISIBLE, CRect(300, 0, 600, 300), &frame, 2));
    second.WriteTest();
    first.vanish = true;
    first.SendMessage(WM_TIMER, kLogRefreshTimer);
    EXPECT_EQ(nullptr, first.GetSafeHwnd());
    second.UpdateWindow();

    first.vanish = false;
    ASSERT_TRUE(first.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 300), &frame, 1));
    first.WriteTest();
    first.SendMessage(WM_TIMER, kLogRefreshTimer);
    int row = 0;
    while (row < first.GetRowCount() && !first.Expand(row))
        ++row;
    first.vanish = true;
    EXPECT_TRUE(first.Collapse(row));
    EXPECT_EQ(nullptr, first.GetSafeHwnd());
}

TEST_F(LogTextTest, OpeningAndClosingLeavesNothing)
{
    ExpectNothingLeft([this] {
        CQmLogBrowser other;
        other.GetTextCtrl().SetStartSession(false);
        ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), &frame, 8));
        other.GetTextCtrl().UpdateWindow();
        other.DestroyWindow();
    });
    EXPECT_EQ(nullptr, ::GetWindow(frame.GetSafeHwnd(), GW_CHILD));
}

} // namespace
