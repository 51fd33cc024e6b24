// Storms at the log window, in its browser and without one, while another process writes.
#include "QmLogBrowser.h"
#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "qmcommon/QmCommandList.h"
#include "tests/support/Keys.h"
#include "tests/support/LogFolder.h"
#include "tests/support/Process.h"
#include "tests/support/Storm.h"

namespace
{

// A host's window that may go, or be deleted, wherever it may.
class StormedText : public CQmLogTextCtrl
{
public:
    explicit StormedText(std::function<void()> told) : tell(std::move(told)) {}

protected:
    void OnUserScroll() override
    {
        CQmLogTextCtrl::OnUserScroll();
        const std::function<void()> kept = tell; // this object may go
        kept();
    }
    void OnTextMenu(CPoint point) override
    {
        const HWND window = m_hWnd;
        const std::function<void()> kept = tell; // this object may go
        kept();
        if (::IsWindow(window))
            CQmLogTextCtrl::OnTextMenu(point);
    }

private:
    std::function<void()> tell;
};

class LogStorm : public LogFolderTest
{
protected:
    ~LogStorm() override { CloseReaders(); }

    static void CloseReaders()
    {
        for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
            QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(file)).Close();
        QmLogWriterCloseAll();
    }

    // In every fourth episode the other process writes meanwhile. Otherwise it is waited for, so that the
    // same seed gives the same storm.
    void Run(Storm& random, int steps)
    {
        storm = &random;
        inBrowser = random.OneIn(2);
        isLive = random.OneIn(4);
        frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr,
                       nullptr);
        Open();
        while (random.Next(steps))
        {
            if (!text || !text->m_hWnd)
                Open();
            else if (random.OneIn(4))
                random.Do(acts);
            else
                random.Send(Target());
            if (random.OneIn(5))
                Storm::Pump();
            if (text && text->m_hWnd && !isLive && random.OneIn(20))
                ExpectConsistent();
        }
        Close();
        frame.DestroyWindow();
        writer.reset();
        CloseReaders();
    }

private:
    void Open()
    {
        Close();
        const bool isNew = !writer || storm->OneIn(4);
        if (isNew)
            writer.reset(); // killed, whatever it is doing
        if (inBrowser)
        {
            browser = std::make_unique<CQmLogBrowser>();
            text = &browser->GetTextCtrl();
        }
        else
        {
            own = std::make_unique<StormedText>([this] { MayVanish(); });
            text = own.get();
        }
        text->SetStartSession(isNew);
        ASSERT_TRUE(browser ? browser->Create(WS_CHILD | WS_VISIBLE, Rect(), &frame, 7)
                            : text->Create(WS_CHILD | WS_VISIBLE, Rect(), &frame, 7));
        EXPECT_EQ(isNew, text->IsSessionStarted());
        showsMain = true;
        if (isNew)
            writer = std::make_unique<Child>();
    }

    void MayVanish()
    {
        if (!storm->OneIn(100))
            return;
        storm->OneIn(2) ? void(text->DestroyWindow()) : Close();
    }

    void Close()
    {
        text = nullptr;
        browser.reset();
        own.reset();
    }

    CRect Rect() { return CRect(0, 0, (*storm)(600), (*storm)(400)); }

    // Mostly the text window, else its browser or one of the children.
    HWND Target()
    {
        const HWND focus = ::GetFocus();
        if (storm->OneIn(3) && ::IsChild(frame, focus))
            return focus;
        if (browser && storm->OneIn(10))
            return storm->OneIn(2) ? browser->m_hWnd : ::GetParent(*text);
        return text->m_hWnd;
    }

    void Write()
    {
        static const std::vector<const char*> lines = {"write Main |a line",
                                                       "write Main |two|lines",
                                                       "write Main  and more",
                                                       "write Run |run",
                                                       "write Source |x",
                                                       "write SQL |SELECT|FROM|WHERE",
                                                       "write Service |service\xC3\xA4",
                                                       "block Main",
                                                       "block Main",
                                                       "block SQL",
                                                       "end Main",
                                                       "end Main",
                                                       "end SQL",
                                                       "close"};
        QmLogWriterCloseAll(); // or the other would wait
        const int count = 1 + (*storm)(8);
        for (int i = 0; i < count; ++i)
            writer->Send(storm->Of(lines));
        for (int i = 0; i < count && !isLive; ++i)
            writer->Answer();
    }

    // As the message loop deals with a key.
    void Press(WPARAM key, int modifier)
    {
        const HeldKey held(modifier);
        MSG message = KeyMessage(*text, key, modifier);
        if (!CWnd::WalkPreTranslateTree(frame, &message) && modifier != VK_MENU)
            ::DispatchMessage(&message);
    }

    int Row() { return storm->Near(text->GetRowCount()); }
    int Number(int limit) { return storm->Near(limit); }
    bool Flag() { return storm->OneIn(2); }

    HWND Outer() const { return browser ? browser->m_hWnd : text->m_hWnd; }

    void Ask()
    {
        bool expanded = false;
        CQmLogRow record;
        unsigned long rows[2] = {};
        int log = 0;
        CQmCommandList list;
        text->GetExpanded(Row(), expanded);
        text->ReadStyle(Row(), record);
        text->GetHiddenRowCounts(Number(5), rows[0], rows[1]);
        text->Find(static_cast<unsigned long>(Number(100)), Flag(), log, rows[0]);
        Flag() ? text->Scan(list) : text->ScanFilePath(list);
    }

    // Brings the window up to date first.
    void ExpectConsistent()
    {
        text->SendMessage(WM_TIMER, 9504);
        const int rows = text->GetRowCount();
        EXPECT_TRUE(text->GetTopRow() >= 0 && text->GetTopRow() < std::max(rows, 1)) << text->GetTopRow();
        const std::pair<int, int> begin(text->GetSelectionBeginRow(), text->GetSelectionBeginColumn());
        const std::pair<int, int> end(text->GetSelectionEndRow(), text->GetSelectionEndColumn());
        const std::pair<int, int> caret(text->GetCaretRow(), text->GetCaretColumn());
        EXPECT_TRUE(caret == begin || caret == end);
        EXPECT_LE(begin, end);
        for (const auto& [row, column] : {begin, end})
        {
            EXPECT_TRUE(row >= 0 && row < std::max(rows, 1)) << row << " of " << rows;
            EXPECT_TRUE(column >= 0 && (rows == 0 || column <= text->GetRowColumnCount(row))) << column;
        }

        // Each row is one of its log's. Where another log's count is that of the rows at the top, none need
        // be.
        if (!showsMain)
            return;
        std::vector<std::size_t> counts;
        for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
            counts.push_back(RowsIn(file));
        for (int row = 0; row < rows && !HasFailure(); ++row)
        {
            unsigned long fileRow = 0;
            text->DefineReader(row, fileRow);
            const int file = text->GetRowFile(row);
            EXPECT_LT(fileRow, counts.at(static_cast<std::size_t>(file))) << row << " of log " << file;
        }

        // With everything folded it is "Main".
        const std::size_t all = counts[0];
        if (all == 0 || !storm->OneIn(4))
            return;
        const int chosen = (*storm)(all);
        EXPECT_TRUE(text->Reveal(0, static_cast<unsigned long>(chosen)));
        EXPECT_EQ(all, static_cast<std::size_t>(text->GetRowCount()));
        EXPECT_EQ(chosen, text->GetCaretRow());
    }

    std::size_t RowsIn(int file) const
    {
        const std::string name = Path(CQmLogTextCtrl::GetFilePath(file) + std::string(".ROW"));
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        ::GetFileAttributesExA(name.c_str(), GetFileExInfoStandard, &data);
        return data.nFileSizeLow / sizeof(CQmLogRow);
    }

    const std::vector<const char*> finds = {"", "A", "RUN", "SELECT"};
    Storm* storm = nullptr;
    bool inBrowser = false;
    bool isLive = false;
    bool showsMain = true; // since the window was made
    CWnd frame;
    std::unique_ptr<CQmLogBrowser> browser;
    std::unique_ptr<StormedText> own;
    CQmLogTextCtrl* text = nullptr; // of either
    std::unique_ptr<Child> writer;
    const std::vector<StormAct> acts = {
        {12, "write", [this] { Write(); }},
        {12, "tick", [this] { text->SendMessage(WM_TIMER, 9504); }},
        {12, "paint", [this] { text->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }},
        {1, "test", [this] { text->WriteTest(); }},
        {12, "expand", [this] { text->Expand(Row()); }},
        {4, "expand all", [this] { text->ExpandAll(Row()); }},
        {4, "collapse", [this] { text->Collapse(Row()); }},
        {4, "switch", [this] { Flag() ? text->Switch(Row()) : text->SwitchAll(Row()); }},
        {4, "reveal", [this] { text->Reveal(Number(5), static_cast<unsigned long>(Number(30))); }},
        {4, "move", [this] { text->Move(Flag(), Flag()); }},
        {4, "error", [this] { text->GoToError(Flag()); }},
        {2, "follow", [this] { text->SetFollow(Flag()); }},
        {2, "follow pauses", [this] { text->SetFollowPauses(Flag()); }},
        {4, "focus", [this] { text->Focus(Row(), Number(20), Flag()); }},
        {4, "select", [this] { text->Select(Row(), Number(20)); }},
        {4, "select all", [this] { text->SelectAll(); }},
        {4, "ensure visible", [this] { text->EnsureVisible(Row(), Number(300), Number(30), Number(30)); }},
        {4, "selected", [this] { text->GetSelectedText(); }},
        {1, "copy", [this] { Flag() ? text->Copy() : text->CopyExcerpt(); }},
        {4, "find text", [this] { text->SetFindText(storm->Of(finds)); }},
        {4, "find", [this] { Flag() ? text->FindNext() : text->FindPrevious(); }},
        {2, "find bar", [this] { text->FindInput(); }},
        {2, "no find bar", [this] { text->CloseFind(); }},
        {4, "type",
         [this] { ::SendMessageW(::GetFocus(), WM_CHAR, static_cast<WPARAM>(' ' + (*storm)(300)), 1); }},
        {4, "ask", [this] { Ask(); }},
        {1, "log", [this] { showsMain = false, text->SetFilePath((*storm)(5)); }},
        {4, "browse", [this] { text->Browse(Number(5)); }},
        {4, "alt",
         [this] {
             Press(storm->Of(std::vector<WPARAM>{VK_UP, VK_DOWN, '1', '3', '5'}), VK_MENU);
         }},
        {4, "control",
         [this] {
             Press(storm->Of(std::vector<WPARAM>{'A', 'C', 'F', VK_NEXT}), VK_CONTROL);
         }},
        {4, "key",
         [this] {
             Press(storm->Of(std::vector<WPARAM>{VK_SPACE, VK_RETURN, VK_F3}), 0);
         }},
        {4, "size",
         [this] { ::SetWindowPos(Outer(), nullptr, 0, 0, (*storm)(600), (*storm)(400), SWP_NOZORDER); }},
        {4, "redraw", [this] { text->SendMessage(WM_SETREDRAW, TRUE); }},
        {4, "enable", [this] { text->EnableWindow(!storm->OneIn(3)); }},
        {4, "show", [this] { text->ShowWindow(storm->OneIn(4) ? SW_HIDE : SW_SHOW); }},
        {4, "set focus", [this] { ::SetFocus(storm->OneIn(3) ? frame.m_hWnd : text->m_hWnd); }},
        {4, "reload", [this] { Flag() ? text->Reload() : text->OnRowsChanged(); }},
        {6, "drag", [this] { storm->Drag(Target()); }},
        {1, "open", [this] { Open(); }},
        {1, "close", [this] { text->SendMessage(WM_CLOSE); }},
        {1, "destroy", [this] { ::DestroyWindow(Outer()); }},
    };
};

TEST_F(LogStorm, LeavesAWindowThatCanBeUsed)
{
    RunStorm(2000, 200000, [this](Storm& random, int steps) { Run(random, steps); });
}

} // namespace
