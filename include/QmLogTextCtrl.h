// The log text window: the five logs of a session as indented, coloured text whose blocks unfold in place.
#pragma once

#include "QmHandler.h"
#include "QmLogApi.h"
#include "QmLogLook.h"
#include "qmcommon/QmMenuDrawer.h"
#include "qmtextctrl/QmTextCtrl.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class CQmLogBrowser;
class CQmLogStrip;
class CQmLogFinder;
class CQmLogReader;
struct CQmLogRow;

namespace logview
{
class MarginLayout;
enum class MarginZone;
struct RowChange;
struct RowId;
struct Selection;
struct ShownRows;
template <typename Char> class TextPieces;
} // namespace logview

// Shows the rows of "Main". A row whose sequence number is not followed by the next one has rows of other
// logs hidden at it: it carries a fold mark and unfolds them beneath itself, and so do they. The shared
// counter is looked at five times a second, and the window follows when it has moved. Looking waits for
// nobody and changes nothing in the log folder.
//
// "Displayed rows" are counted from 0 over everything that is unfolded; "rows" and "numbers" (times) are
// those of the log files. A file index names a log: 0 "Main", 1 "Run", 2 "Source", 3 "SQL", 4 "Service".
// Readers come from QmLogReaderDefine. Operations answer false on failure and report nothing of their own.
// The window's thread only.
class QMLOG_API CQmLogTextCtrl : public QmHandler<CQmTextCtrl>
{
public:
    CQmLogTextCtrl();
    ~CQmLogTextCtrl() override;

    // Before the window is created: whether creating it starts a session, as it does by default. Starting
    // deletes the five logs and the counters of the log folder and writes a header into "Main". Otherwise
    // what lies there is shown and nothing is written.
    void SetStartSession(bool start);

    // False when the session could not be started: the folder cannot be written to, or another process is
    // writing in it. What lies there is shown.
    bool IsSessionStarted() const;

    // Scrolls the last row into view whenever rows are added; on by default.
    void SetFollow(bool follow);
    bool GetFollow() const;

    // Following pauses while the user has gone away from the end, by scrolling, searching or unfolding, or to
    // a row before the last one though the end is in view; off by default.
    void SetFollowPauses(bool pauses);
    bool GetFollowPauses() const;
    bool IsFollowPaused() const;

    // What it looks like; the usual look by default.
    void SetLook(const QmLogLook& look);
    static QmLogColors GetThemeColors(QmLogTheme theme);

    // For the wide margin: how many errors lie behind a folded displayed row; none by default. A row is asked
    // for while it is drawn.
    virtual unsigned CountHiddenErrors(int row);

    // Told whenever the current log changes or grows; null for none. Not owned.
    void SetBrowser(CQmLogBrowser* browser);

    static int GetFilePathCount();
    static const char* GetFilePath(int file); // the log's name; null for any other index
    const char* GetFilePath() const;          // of the current log
    int GetFilePathIndex() const;
    static COLORREF GetFileColor(int file); // the log's colour; black for any other index

    // The log whose row count the refresh reads. The rows shown at the top remain those of "Main": a host
    // that shows another log at the top does so by unfolding.
    void SetFilePath(int file);

    // The refresh: does nothing while the shared counter is what any text window of the process saw last,
    // unless rows that are shown have gone. Where the counter cannot be read, the row count tells. `file` is
    // only checked: false when there is no such log.
    bool Browse(int file);

    // Whether rows of other logs unfold at a displayed row, and whether they are shown.
    bool GetExpanded(int row, bool& expanded);

    // Unfold, with all that lies within; fold; or whichever is due. True when the row is in the state asked
    // for: unfolded already counts, but folding needs something to fold.
    bool Expand(int row);
    bool ExpandAll(int row);
    bool Collapse(int row);
    bool CollapseAll(int row);
    bool Switch(int row);
    bool SwitchAll(int row);

    // ExpandAll ends where it would show rows many times over. How many rows it left folded, or did not look
    // at, because of that; 0 when it unfolded everything, and after any other unfolding or folding.
    int GetLeftFolded() const;

    // Folds everything, unfolds what leads to a row of a log, and puts the caret there. False, with
    // everything folded, where nothing leads to the row.
    bool Reveal(int file, unsigned long fileRow);

    // How many rows of a log nothing leads to: those before the first row of "Main", which are all where
    // "Main" has none, and those after its last, which unfolds only when "Main" goes on.
    void GetHiddenRowCounts(int file, unsigned long& before, unsigned long& after);

    // The row of any log for number `time`: the log that has it, else the smallest number that the logs'
    // own searches answer.
    using CQmTextCtrl::Find;
    bool Find(unsigned long time, bool forward, int& file, unsigned long& fileRow);

    // Puts the caret on the neighbour in time of the current log's row at the caret's index: on the displayed
    // row with the index that the neighbour has in its own log. With `otherFile` rows of the current log are
    // passed over.
    bool Move(bool up, bool otherFile);

    // Puts the caret on the next or previous header of an error block; row 0 is never a previous one.
    bool GoToError(bool forward);

    // Whether the find commands look in all rows of all logs, wherever they are folded away, while the window
    // goes on; all matches are marked. Off by default: then they look in displayed rows, as CQmTextCtrl does.
    // FindNext and FindPrevious go to a match as soon as it is known, and answer false only when there is
    // none.
    void SetFindInAll(bool all);
    bool GetFindInAll() const;

    // Of finding in all logs: what was looked for, newest first, at most 20 texts; whether a search is on its
    // way, and ending it (false when there is none); what the find bar tells of it, as "3 of 17".
    void SetFindHistory(const std::vector<std::string>& texts);
    std::vector<std::string> GetFindHistory() const;
    bool IsFinding() const;
    bool CancelFind();
    std::string GetFindStateText() const;

    // How many matches each of `stretches` parts of the numbers from `first` to `last` has, and a count that
    // moves whenever they may have changed.
    std::vector<std::uint32_t> CountFound(std::uint32_t first, std::uint32_t last,
                                          std::size_t stretches) const;
    unsigned GetFoundChanges() const;

    // ---- The merged view: all rows of the logs in the order of their numbers, each once

    static constexpr unsigned kAllLogs = 0x1F;
    static constexpr unsigned kPlainRows = 1; // kinds, for SetShownKinds
    static constexpr unsigned kNoticeRows = 2;
    static constexpr unsigned kErrorRows = 4;
    static constexpr unsigned kDetailRows = 8;
    static constexpr unsigned kAllRows = 0xF;

    // Shows the rows of the chosen logs, a bit for each file index; or "Main" and what unfolds under it, as
    // the window begins. The caret goes to the row that it was on, or to the one before it in time. Here a
    // header unfolds, as it begins, or folds; "Find" and the commands look at the rows that are shown. The
    // place of each row is known at once, but that of rows of chosen kinds only as the records are read,
    // which goes on in the background.
    void ShowMerged(unsigned logs = kAllLogs);
    void ShowMain();
    bool IsMerged() const;
    unsigned GetShownLogs() const;
    void SetShownKinds(unsigned kinds);
    unsigned GetShownKinds() const;
    int GetIndexProgress() const; // per cent of the records read

    // What a fold hides: all that any log wrote in the time of the block, or only what its own log wrote, as
    // by default. Folds that are there stay.
    void SetFoldsAllLogs(bool all);
    bool GetFoldsAllLogs() const;

    // Shows only the time of the innermost block of several rows that a displayed row is in, with the rows of
    // all logs, in the merged view; false if it is in none. LeaveDuring goes back to the view before, and
    // stays at the caret's row.
    bool ShowDuring(int row);
    bool IsDuring() const;
    void LeaveDuring();

    // Puts the caret on a row of any log, and unfolds what hides it. Where nothing leads to it in the view of
    // "Main", the merged view comes. False if there is no such row; the second, if there is no row at all:
    // else it goes to the first row with the number or a greater one.
    bool GoTo(int file, unsigned long fileRow);
    bool GoToNumber(unsigned long number);

    // Puts the caret on the next or previous header of an error block of these logs, folded away or not. In
    // the merged view GoToError does so with the logs that are shown.
    bool GoToErrorInLogs(bool forward, unsigned logs = kAllLogs);

    // In the merged view the headers of the blocks that the window's first row lies in stay at its top, the
    // innermost five; a click on one goes to it. Off by default.
    void SetPinsHeaders(bool pins);
    bool GetPinsHeaders() const;

    // The selected text, each line with the line feed it has in the log; and the same into the clipboard, as
    // Unicode and as the bytes that the logs have.
    std::string GetSelectedText();
    bool Copy();

    // Copies the selected rows, or the caret's, as text that one pastes into a mail: first the headers of the
    // blocks that they lie in, then each row with its log and number, as in "  SQL     #18342  ", indented by
    // its depth; rows of other logs than the first one's are marked, and folded rows tell how many they hide.
    bool CopyExcerpt();

    // Whether copying many rows goes on step by step, in a dialog that tells how far it is and gives it up,
    // and more than a clipboard is asked to hold (1 GB) is refused in a message; meanwhile the window paints
    // but shows no new rows. Otherwise it is done at once, and too long a selection is copied up to there,
    // as by default.
    void SetCopiesInSteps(bool steps);
    bool GetCopiesInSteps() const;

    // The record of a displayed row; false when it cannot be read, of which nothing is reported.
    bool ReadStyle(int row, CQmLogRow& record);

    // The log of a displayed row, and the row within it.
    CQmLogReader& DefineReader(int row, unsigned long& fileRow);
    int GetRowFile(int row);

    // Orders branches by position: a < b.
    static bool Translation(int a, int b);

    void Scan(IQmCommand& collector) override;
    virtual void ScanFilePath(IQmCommand& collector);

    // The numbers of the rows that a host has bookmarked, in ascending order; null for none. They are asked
    // for while rows are drawn.
    void SetBookmarks(std::function<const std::vector<std::uint32_t>&()> bookmarks);
    virtual bool IsBookmarked(std::uint32_t number);

    // Told of a click where the wide margin has bookmarks, with the row's number. Null for none, as by
    // default: then the click sets the caret, as elsewhere in the margin.
    void SetBookmarkClick(std::function<void(std::uint32_t number)> click);

    // For the wide margin: a column of `columns` characters after a log's initial, with what `text` answers
    // for a row's number; 0 or null for none. It is asked for while rows are drawn, and needs room beside the
    // text.
    void SetMarginTexts(int columns, std::function<std::string(std::uint32_t number)> text);

    // A strip beside the scroll bar, by number from top to bottom: a lane for each log with its errors,
    // between one for bookmarks and one for what is found in all logs; a click goes there. Off by default,
    // and for a window that exists.
    void SetShowsStrip(bool shows);

    // A host's commands, which come after the window's own in its menu and for its keys; null for none. Not
    // owned.
    void SetMoreCommands(IQmHandler* commands);

    // A host's list in place of the window's own commands, which are in QmLogTextCtrlEntries.h; null for the
    // window's own. Not owned.
    void SetCommands(IQmHandler* commands);

    // Writes a sample session to try the viewer on.
    void WriteTest();

    // CQmTextCtrl
    int GetRowCount() override;
    int GetColumnCount() override;
    int GetRowColumnCount(int row) override;
    int GetRowHeight() override;
    int GetRowLeft(int row) override;
    int GetMarginWidth() override;
    void DrawMargin(CDC& dc, const CRect& margin, int row) override;
    bool GetTipText(int row, std::string& text) override;
    void GetRowCells(int row, VkGrafic::TextCells& cells) override;
    void DrawRow(CDC& dc, int x, int y, int row) override;
    bool Find(int row, int& column, const char* text, bool& found) override;
    void FindInput() override;
    void CloseFind() override;
    bool FindNext() override;
    bool FindPrevious() override;
    void Reload() override;

protected:
    BOOL CreateCommon() override;
    void PrepareRows(int first, int count) override;
    int GetRowsAbove(int row) override;
    void DrawCover(CDC& dc, const CRect& area, int rows) override;
    bool OnCoverClick(int line, CPoint point) override;
    void OnTextMenu(CPoint screenPoint) override;
    void OnUserScroll() override;

    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg BOOL OnSetCursor(CWnd* wnd, UINT hitTest, UINT message);
    DECLARE_MESSAGE_MAP()

private:
    friend class CQmLogFinder;

    bool GoToFound(bool forward);
    void ShowFindBar(CWnd* bar, int height);
    bool ShowFound(int file, unsigned long fileRow, int begin, int end);
    int FindShownRow(int file, unsigned long fileRow);
    void DrawLine(CDC& dc, int x, int y, std::string_view text, COLORREF color);
    bool DrawFoundMarks(CDC& dc, int x, int y, std::string_view text, COLORREF color);
    void DrawFoundTexts(CDC& dc, int x, int y, std::string_view text, COLORREF color);

    bool Change(bool done, const logview::RowChange& change);
    void RefreshRows();
    void RefreshMerged();
    void KeepIndex();
    void ReadIndex();
    void ShowRows(bool merged, int row, int column, int offset);
    logview::RowId TakePlace();
    template <typename Action> void ChangeMerged(Action action);
    bool ExpandMerged(int row, logview::RowChange& change);
    bool MoveMerged(bool up, bool otherFile);
    void FindMergedBlock(int row, int& first, int& last);
    void UpdateFollow();
    void UpdateFollowAtCaret();
    void ScanOwn(IQmCommand& collector);
    bool ReadSearched(int row, std::string& line);
    logview::Selection GetSelection() const;
    bool RefuseCopy(const char* reason);
    bool RunCopySteps(const std::function<bool()>& step, const std::function<double()>& progress);
    template <typename CopiedRows> bool Collect(CopiedRows& copied);
    bool PutOnClipboard(logview::TextPieces<wchar_t>& characters, logview::TextPieces<char>* bytes);
    bool ReadIndexTo(logview::RowId place);
    void DrawCaretMark(CDC& dc, int x, int y);
    void DrawFoldMark(CDC& dc, int x, int y, bool atCaret, bool expanded);
    logview::MarginLayout GetMarginLayout();
    const std::vector<std::uint32_t>& GetBookmarks() const;
    void RefreshStrip();
    void GoToStripRow(int row);
    int GetPageRows();
    const QmLogColors& GetMarginColors() const;
    COLORREF GetKindColor(std::uint32_t kind) const;
    int GetSwitchedRow(CPoint point);
    int GetBookmarkRow(CPoint point);
    bool IsInZone(CPoint point, logview::MarginZone zone, int& row);

    QmLogLook m_look;
    QmLogColors m_colors = {}; // of its own, if the look has some
    int m_file = 0;
    int m_leftFolded = 0;
    std::unique_ptr<CQmLogStrip> m_strip;
    bool m_pinsHeaders = false;
    bool m_foldsAllLogs = false;
    std::shared_ptr<logview::ShownRows> m_rows;
    CQmLogBrowser* m_browser = nullptr;
    std::function<const std::vector<std::uint32_t>&()> m_bookmarks;
    std::function<void(std::uint32_t)> m_bookmarkClick;
    int m_marginColumns = 0;
    std::function<std::string(std::uint32_t number)> m_marginText;
    IQmHandler* m_commands = nullptr;
    IQmHandler* m_moreCommands = nullptr;
    bool m_copiesInSteps = false;
    bool m_startSession = true;
    bool m_sessionStarted = false;
    bool m_follow = true;
    bool m_followPauses = false;
    bool m_followPaused = false;
    bool m_reloadPending = true;
    CQmMenuDrawer m_menuDrawer;
    std::unique_ptr<CQmLogFinder> m_finder; // null unless all logs are looked in
    std::vector<CRect> m_marks;             // of the row that is drawn
};
