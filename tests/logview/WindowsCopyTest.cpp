// Copying from the log text window: excerpts, and a million rows.

#include "LogTextWindow.h"
#include "tests/logreport/LogDialogDriver.h"

#include <cstring>
#include <memory>

namespace
{

// Paints for longer than a copy goes on without its dialog: so the dialog comes, however quick the machine
// is.
class SlowWindow : public CWnd
{
public:
    explicit SlowWindow(CWnd& parent)
    {
        CWnd::Create(AfxRegisterWndClass(0), "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 9, 9), &parent, 8);
    }

protected:
    void OnPaint()
    {
        CPaintDC dc(this);
        ::Sleep(400);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SlowWindow, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

class LogCopyTest : public LogFrameTest
{
protected:
    LogCopyTest() : LogFrameTest(600, 400) {}
    ~LogCopyTest() override { frame.DestroyWindow(); }

    void Open()
    {
        text = std::make_unique<CQmLogTextCtrl>();
        text->SetStartSession(false);
        ASSERT_TRUE(text->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 600, 400), &frame, 7));
        text->SetFollow(false);
    }

    // What lies on the clipboard, without carriage returns.
    std::string Copied()
    {
        std::string copied = ClipboardText(frame, CF_UNICODETEXT);
        std::erase(copied, '\r');
        return copied;
    }

    std::unique_ptr<CQmLogTextCtrl> text;
};

TEST_F(LogCopyTest, ExcerptsHaveTheHeadersAroundTheFirstRow)
{
    CQmLogWriter& log = QmLogWriterDefine("Main");
    log.BlockBegin(kPlainKind);
    log.Write("Job");
    log.BlockBegin(kPlainKind);
    log.Write("Load");
    QmLogWriterDefine("SQL").Write("select");
    log.Write("\nrows");
    log.BlockEnd();
    log.BlockEnd();
    log.Write("End");
    Open();
    ASSERT_EQ(4, text->GetRowCount());

    text->Focus(1, 2, false); // the caret's row, which is folded
    EXPECT_TRUE(text->CopyExcerpt());
    const std::string load = "  Main    #1    Job\n"
                             "  Main    #2      Load\n"
                             "                    \u2026 1 row folded\n";
    EXPECT_EQ(load, Copied());
    text->Select(3, 0); // up to the beginning of a row
    EXPECT_TRUE(text->CopyExcerpt());
    EXPECT_EQ(load + "  Main    #4      rows\n", Copied());

    text->ShowMerged();
    text->Focus(2, 0, false);
    text->Select(4, 1);
    EXPECT_TRUE(text->CopyExcerpt());
    EXPECT_EQ("* Main    #1    Job\n"
              "* Main    #2      Load\n"
              "  SQL     #3  select\n"
              "* Main    #4      rows\n"
              "* Main    #5  End\n",
              Copied());
}

TEST_F(LogCopyTest, AMillionRowsAreCopiedInStepsOrNotAtAll)
{
    constexpr std::uint32_t kRows = 1'000'000;
    std::string records(kRows * sizeof(CQmLogRow), '\0');
    std::string lines;
    for (std::uint32_t i = 0; i < kRows; ++i)
    {
        CQmLogRow record;
        record.offset = static_cast<std::uint32_t>(lines.size());
        record.time = i + 1;
        std::memcpy(&records[i * sizeof(record)], &record, sizeof(record));
        lines += "row " + std::to_string(i) + (i + 1 < kRows ? "\n" : "");
    }
    SetContents("Main.ROW", records);
    SetContents("Main.LOG", lines);
    Open();
    text->SetCopiesInSteps(true);
    text->SelectAll();
    EXPECT_TRUE(text->Copy()); // with a dialog only where the machine is slow
    EXPECT_TRUE(lines == Copied());
    EXPECT_TRUE(lines == ClipboardText(frame, CF_TEXT));
    {
        const SlowWindow slow(frame);
        const Driver driver("Copy", [&](HWND dialog) {
            EXPECT_FALSE(frame.IsWindowEnabled());
            QmLogWriterDefine("Main").Write("\nmore");
            text->SendMessage(WM_TIMER, kLogRefreshTimer);
            EXPECT_EQ(static_cast<int>(kRows), text->GetRowCount()) << "rows stay where they are";
            ::SendMessage(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        EXPECT_FALSE(text->CopyExcerpt());
    }
    EXPECT_TRUE(lines == Copied()) << "given up";
    text->SendMessage(WM_TIMER, kLogRefreshTimer);
    EXPECT_LT(static_cast<int>(kRows), text->GetRowCount());
    {
        const SlowWindow slow(frame);
        const Driver driver("Copy", [this](HWND) { text.reset(); });
        EXPECT_FALSE(text->CopyExcerpt()) << "the window has gone";
    }
}

} // namespace
