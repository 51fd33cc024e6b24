// Finding in all logs: the log text window, its find bar, and what is marked.

#include "LogTextWindow.h"
#include "qmcommon/QmWindowText.h"

namespace
{

constexpr UINT_PTR kFindTimer = 9505; // looks for matches
constexpr int kFindField = 2101;
constexpr int kFindCase = 2103;
constexpr int kFindExpression = 2105;
constexpr int kFindState = 2106;

class LogFindInAllTest : public LogFrameTest
{
protected:
    LogFindInAllTest() : LogFrameTest(900, 300) {}
    ~LogFindInAllTest() override { frame.DestroyWindow(); }

    static void Write(const char* log, const std::string& line)
    {
        ASSERT_TRUE(QmLogWriterDefine(log).WriteLine(line.c_str()));
    }

    void Open()
    {
        text.SetStartSession(false);
        text.SetFindInAll(true);
        ASSERT_TRUE(text.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 900, 300), &frame, 7));
        text.SetFollow(false);
        text.SetFocus();
        text.Focus(0, 0, false);
    }

    HWND Bar() { return ::GetWindow(text, GW_CHILD); }
    HWND Item(int id) { return ::GetDlgItem(Bar(), id); }

    void Type(const std::string& typed)
    {
        QmSetWindowText(Item(kFindField), typed);
        ::SendMessage(Bar(), WM_COMMAND, MAKEWPARAM(kFindField, CBN_EDITCHANGE), 0);
    }

    void Press(UINT key, int modifier = 0)
    {
        const HeldKey held(modifier);
        MSG message = KeyMessage(::GetFocus(), key, modifier);
        if (!CWnd::WalkPreTranslateTree(frame.GetSafeHwnd(), &message))
            ::DispatchMessage(&message);
    }

    // Until the search has come to the end.
    std::string Finish()
    {
        for (int i = 0; i < 1000 && text.IsFinding(); ++i)
            text.SendMessage(WM_TIMER, kFindTimer);
        return QmGetWindowText(Item(kFindState));
    }

    // What is selected, and where.
    std::string Selected()
    {
        unsigned long row = 0;
        text.DefineReader(text.GetCaretRow(), row);
        return std::string(CQmLogTextCtrl::GetFilePath(text.GetRowFile(text.GetCaretRow()))) + " " +
               std::to_string(row) + ": " + text.GetSelectedText();
    }

    CQmLogTextCtrl text;
};

TEST_F(LogFindInAllTest, GoesToMatchesWhereverTheyAreFoldedAway)
{
    Write("Main", "Begin");
    Write("Run", "one job, two Jobs");
    Write("SQL", "select");
    Write("SQL", "Größe of a job");
    Write("Main", "End");
    Open();
    const int folded = text.GetRowCount();
    text.FindInput();
    Type("job");
    EXPECT_EQ("3 found", Finish());
    EXPECT_EQ(folded, text.GetRowCount()) << "typing goes nowhere";

    const char* const places[] = {"Run 0: job", "Run 0: Job", "SQL 1: job", "Run 0: job"};
    for (const char* const place : places)
    {
        Press(VK_F3);
        EXPECT_EQ(place, Selected());
    }
    EXPECT_EQ("1 of 3", Finish());
    Press(VK_F3, VK_SHIFT);
    EXPECT_EQ("SQL 1: job", Selected());
    EXPECT_EQ("3 of 3", Finish());

    ::CheckDlgButton(Bar(), kFindCase, BST_CHECKED);
    ::SendMessage(Bar(), WM_COMMAND, MAKEWPARAM(kFindCase, BN_CLICKED), 0);
    Type("größe");
    EXPECT_EQ("nothing found", Finish());
    Type("Größe");
    Press(VK_RETURN);
    EXPECT_EQ("SQL 1: Größe", Selected());
    EXPECT_EQ("Größe", QmGetWindowText(Item(kFindField))) << "stays as it was typed";
    EXPECT_EQ((std::vector<std::string>{"Größe", "job"}), text.GetFindHistory());

    ::SendMessage(Bar(), WM_COMMAND, MAKEWPARAM(kFindField, CBN_DROPDOWN), 0);
    ::SendMessage(Item(kFindField), CB_SETCURSEL, 1, 0);
    ::SendMessage(Bar(), WM_COMMAND, MAKEWPARAM(kFindField, CBN_SELCHANGE), 0);
    EXPECT_EQ("2 found", Finish()) << "what the list has, with capitals";
}

TEST_F(LogFindInAllTest, GoesOnFromTheCaret)
{
    Write("Main", "job, job, job");
    Open();
    text.FindInput();
    Type("job");
    for (const auto& [column, forward, place] : {std::tuple(4, true, "2 of 3"),
                                                 {6, true, "3 of 3"},
                                                 {5, true, "2 of 3"},
                                                 {6, false, "2 of 3"},
                                                 {11, true, "1 of 3"},
                                                 {5, false, "1 of 3"},
                                                 {0, false, "3 of 3"},
                                                 {0, false, "3 of 3"}})
    {
        text.Focus(0, column, false);
        Press(VK_F3, forward ? 0 : VK_SHIFT);
        EXPECT_EQ(place, Finish()) << column;
    }
}

TEST_F(LogFindInAllTest, ShowsRowsThatMainDoesNotLeadToAndTellsWhatIsWrong)
{
    Write("Source", "x before");
    Write("Main", "Begin");
    Write("SQL", "x after");
    Open();
    text.FindInput();
    Type("x");
    EXPECT_EQ("2 found", Finish());
    Press(VK_RETURN);
    EXPECT_EQ("SQL 0: x", Selected());
    EXPECT_EQ("2 of 2", Finish());
    Press(VK_RETURN);
    EXPECT_EQ("Source 0: x", Selected());

    ::CheckDlgButton(Bar(), kFindExpression, BST_CHECKED);
    ::SendMessage(Bar(), WM_COMMAND, MAKEWPARAM(kFindExpression, BN_CLICKED), 0);
    Type("a(b");
    EXPECT_EQ("missing closing parenthesis, at byte 4", Finish());
    Type("");
    EXPECT_EQ("", Finish());
}

TEST_F(LogFindInAllTest, LooksOnWhenLogsGrowUntilItIsClosed)
{
    Write("Main", "x");
    Open();
    text.SetFindText("x");
    EXPECT_TRUE(text.FindNext());
    EXPECT_EQ("1 of 1", Finish());
    EXPECT_TRUE(::IsWindowVisible(Bar()));
    EXPECT_EQ(text.m_hWnd, ::GetFocus());
    Write("Main", "xx");
    text.SendMessage(WM_TIMER, kLogRefreshTimer);
    EXPECT_EQ("1 of 3", Finish());
    EXPECT_EQ((std::vector<std::uint32_t>{1, 2}), text.CountFound(1, 2, 2));
    text.ShowMerged();
    Write("SQL", "x");
    Press(VK_F3, VK_SHIFT); // looks at what the window has not seen yet
    EXPECT_EQ("SQL 0: x", Selected());
    EXPECT_EQ("4 of 4", Finish());
    const unsigned changes = text.GetFoundChanges();
    text.CloseFind();
    EXPECT_NE(changes, text.GetFoundChanges());
    EXPECT_EQ((std::vector<std::uint32_t>{0, 0}), text.CountFound(1, 2, 2));
    EXPECT_FALSE(::IsWindowVisible(Bar()));
}

TEST_F(LogFindInAllTest, IsCancelledByEscAndGoesOn)
{
    std::string lines;
    for (int i = 0; i < 200'000; ++i)
        lines += "a line without it " + std::to_string(i) + "\n";
    ASSERT_TRUE(QmLogWriterDefine("Main").Write((lines + "needle").c_str()));
    Open();
    text.FindInput();
    ::CheckDlgButton(Bar(), kFindExpression, BST_CHECKED);
    Type("n(?!o)eedle"); // line by line
    ASSERT_TRUE(text.IsFinding());
    Press(VK_ESCAPE);
    EXPECT_FALSE(text.IsFinding());
    EXPECT_EQ(0u, Finish().find("cancelled at "));
    EXPECT_TRUE(::IsWindowVisible(Bar()));
    Press(VK_RETURN);
    EXPECT_EQ("1 of 1", Finish());
    Press(VK_ESCAPE);
    EXPECT_FALSE(::IsWindowVisible(Bar()));
}

TEST_F(LogFindInAllTest, MarksAllMatchesInView)
{
    Write("Main", "begin");
    Write("Main", "a needle, a needle");
    Open();
    const auto color = [&](int column) {
        text.UpdateWindow();
        CClientDC dc(&text);
        const int x = text.GetRowLeft(1) + column * text.GetColumnWidth();
        return dc.GetPixel(x + text.GetColumnWidth() - 1, text.GetRowHeight());
    };
    const COLORREF plain = color(2);
    text.FindInput();
    Type("needle");
    Finish();
    for (const auto& [column, isMarked] :
         {std::pair(1, false), {2, true}, {7, true}, {8, false}, {12, true}, {18, false}})
        EXPECT_EQ(isMarked, color(column) != plain) << column;
    text.CloseFind();
    EXPECT_EQ(plain, color(2));
}

} // namespace
