// The log text window: its messages, its session, its rows, refreshing and folding.
#include "QmLogTextCtrl.h"

#include "QmLogBrowser.h"
#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logview/FileLook.h"
#include "logview/LineFind.h"
#include "logview/LogNames.h"
#include "logview/QmLogFinder.h"
#include "logview/QmLogStrip.h"
#include "logview/SessionStart.h"
#include "logview/ShownRows.h"
#include "qmcommon/QmWndUpdaterUse.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(CQmLogTextCtrl, CQmTextCtrl)
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_TIMER()
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_SETCURSOR()
END_MESSAGE_MAP()

namespace
{

// The shared counter as the text windows of this process saw it last. One value for all of them: only the
// first that notices a change refreshes. Deliberate: hosts show one window a process.
int lastSeenTime = 0;

} // namespace

CQmLogTextCtrl::CQmLogTextCtrl() : m_rows(std::make_shared<logview::ShownRows>()) {}

CQmLogTextCtrl::~CQmLogTextCtrl()
{
    DestroyWindow(); // while the rows, which a last paint may ask for, are still there
}

BOOL CQmLogTextCtrl::CreateCommon()
{
    if (m_startSession)
    {
        m_sessionStarted = logview::StartSession();
        lastSeenTime = 0; // the new session may come to the very number that was seen last
    }
    m_rows = std::make_shared<logview::ShownRows>();
    char path[MAX_PATH] = {}; // made once: asking for it makes a folder that is gone
    if (QmLogMakeFilePath(logview::kCountersFile, path))
        m_rows->countersPath = path;
    m_rows->merged.SetFoldsAllLogs(m_foldsAllLogs);
    m_rows->session.Refresh(m_file);
    m_followPaused = false;
    if (m_finder)
        m_finder->Forget();
    if (!CQmTextCtrl::CreateCommon())
        return FALSE;
    m_menuDrawer.Attach(GetSafeHwnd());
    SetTimer(logview::kRefreshTimer, logview::kRefreshInterval, nullptr);
    return TRUE;
}

void CQmLogTextCtrl::SetStartSession(bool start)
{
    m_startSession = start;
}

bool CQmLogTextCtrl::IsSessionStarted() const
{
    return m_sessionStarted;
}

void CQmLogTextCtrl::SetFollow(bool follow)
{
    m_follow = follow;
    m_followPaused = false;
}

bool CQmLogTextCtrl::GetFollow() const
{
    return m_follow;
}

void CQmLogTextCtrl::SetFollowPauses(bool pauses)
{
    m_followPauses = pauses;
    m_followPaused = false;
}

bool CQmLogTextCtrl::GetFollowPauses() const
{
    return m_followPauses;
}

bool CQmLogTextCtrl::IsFollowPaused() const
{
    return m_followPaused;
}

void CQmLogTextCtrl::OnUserScroll()
{
    UpdateFollow();
}

// The view was moved by the user's doing.
void CQmLogTextCtrl::UpdateFollow()
{
    m_followPaused = m_follow && m_followPauses && !IsAtEnd();
}

// The caret was put on a row that the user wants to look at, and that new rows are not to take out of sight.
void CQmLogTextCtrl::UpdateFollowAtCaret()
{
    m_followPaused = m_follow && m_followPauses && (!IsAtEnd() || GetCaretRow() + 1 < GetRowCount());
}

void CQmLogTextCtrl::SetBrowser(CQmLogBrowser* browser)
{
    m_browser = browser;
}

int CQmLogTextCtrl::GetFilePathCount()
{
    return logview::kFileCount;
}

const char* CQmLogTextCtrl::GetFilePath(int file)
{
    return logview::GetLogName(file);
}

const char* CQmLogTextCtrl::GetFilePath() const
{
    return logview::GetLogName(m_file);
}

int CQmLogTextCtrl::GetFilePathIndex() const
{
    return m_file;
}

COLORREF CQmLogTextCtrl::GetFileColor(int file)
{
    return logview::GetLogColor(file);
}

void CQmLogTextCtrl::SetFilePath(int file)
{
    m_file = file;
    if (m_browser)
        m_browser->Refresh();
}

void CQmLogTextCtrl::OnSize(UINT type, int width, int height)
{
    CQmTextCtrl::OnSize(type, width, height);
    if (m_finder)
        m_finder->LayOut(); // in a narrow window the bar has two lines
}

void CQmLogTextCtrl::OnTimer(UINT_PTR timer)
{
    static_assert(logview::kIndexTimer != logview::kFindTimer, "a window's timers are told by their numbers");
    if (m_rows->isCopied && timer >= logview::kRefreshTimer && timer <= logview::kIndexTimer)
        return; // the rows stay where they are
    if (timer == logview::kRefreshTimer)
    {
        Browse(GetFilePathIndex());
        if (m_finder)
            m_finder->OnRefresh();
        RefreshStrip();
    }
    else if (timer == logview::kFindTimer && m_finder)
        m_finder->OnTimer();
    else if (timer == logview::kIndexTimer)
        ReadIndex();
    else
        CQmTextCtrl::OnTimer(timer);
}

bool CQmLogTextCtrl::Browse(int file)
{
    if (file < 0 || file >= GetFilePathCount())
        return false;
    // Where the counter cannot be read, the rows tell; and rows that a writer has taken back move no counter.
    const std::optional<int> time = logview::AskTime(m_rows->countersPath);
    const bool isWritten = time ? *time != lastSeenTime : m_rows->session.HasNewCount(m_file);
    if (!isWritten && !m_rows->session.HasShrunk() && !(m_rows->keepsIndex && m_rows->merged.HasShrunk()))
        return true;
    lastSeenTime = time.value_or(lastSeenTime);
    RefreshRows();
    return true;
}

void CQmLogTextCtrl::RefreshRows()
{
    const CQmWndUpdaterUse updater(this);
    m_rows->searched.Clear();
    m_rows->session.Refresh(m_file);
    RefreshMerged();
    OnRowsChanged();
    if (m_browser)
        m_browser->Refresh();
    if (m_follow && !m_followPaused)
        EnsureVisible(GetRowCount() - 1, 0, 1, 0);
}

// An operation of the session answered `done` and moved `delta` rows at `row`.
bool CQmLogTextCtrl::Change(bool done, const logview::RowChange& change)
{
    m_leftFolded = change.leftFolded;
    if (change.delta != 0)
    {
        m_rows->searched.Clear();
        // The first row that stays; what went may have reached beyond the last number of a row.
        const std::int64_t behind = std::int64_t{change.row} - std::min(change.delta, 0);
        MoveRows(static_cast<int>(std::min<std::int64_t>(behind, logview::LogSession::kMaxRows)),
                 change.delta);
        OnRowsChanged();
        UpdateFollow();
    }
    return done;
}

bool CQmLogTextCtrl::GetExpanded(int row, bool& expanded)
{
    return m_rows->Rows().ReadExpanded(row, expanded);
}

bool CQmLogTextCtrl::Expand(int row)
{
    logview::RowChange change;
    const bool done = m_rows->showsMerged ? ExpandMerged(row, change) : m_rows->session.Expand(row, change);
    return Change(done, change);
}

bool CQmLogTextCtrl::ExpandAll(int row)
{
    m_reloadPending = false;
    logview::RowChange change;
    const bool done =
        m_rows->showsMerged ? ExpandMerged(row, change) : m_rows->session.ExpandAll(row, change);
    return Change(done, change);
}

int CQmLogTextCtrl::GetLeftFolded() const
{
    return m_leftFolded;
}

bool CQmLogTextCtrl::Collapse(int row)
{
    logview::RowChange change;
    const bool done =
        m_rows->showsMerged ? m_rows->merged.Fold(row, change) : m_rows->session.Collapse(row, change);
    return Change(done, change);
}

bool CQmLogTextCtrl::CollapseAll(int row)
{
    return Collapse(row);
}

bool CQmLogTextCtrl::Switch(int row)
{
    bool expanded = false;
    if (!GetExpanded(row, expanded))
        return false;
    return expanded ? Collapse(row) : Expand(row);
}

bool CQmLogTextCtrl::SwitchAll(int row)
{
    bool expanded = false;
    if (!GetExpanded(row, expanded))
        return false;
    return expanded ? CollapseAll(row) : ExpandAll(row);
}

bool CQmLogTextCtrl::Reveal(int file, unsigned long fileRow)
{
    if (file < 0 || file >= GetFilePathCount())
        return false;
    if (m_rows->showsMerged)
        return GoTo(file, fileRow);
    const int row =
        m_rows->session.Reveal({static_cast<std::uint32_t>(file), static_cast<std::uint32_t>(fileRow)});
    m_leftFolded = 0;
    m_rows->searched.Clear();
    OnRowsChanged();
    if (row == logview::LogSession::kNoRow)
        return false;
    Focus(row, 0, false);
    UpdateFollowAtCaret();
    return true;
}

void CQmLogTextCtrl::GetHiddenRowCounts(int file, unsigned long& before, unsigned long& after)
{
    logview::HiddenRows hidden;
    if (file >= 0 && file < GetFilePathCount())
        hidden = m_rows->session.CountHidden(static_cast<std::uint32_t>(file));
    before = hidden.before;
    after = hidden.after;
}

bool CQmLogTextCtrl::Find(unsigned long time, bool forward, int& file, unsigned long& fileRow)
{
    return m_rows->session.Find(time, forward, file, fileRow);
}

bool CQmLogTextCtrl::Move(bool up, bool otherFile)
{
    int file = 0;
    unsigned long fileRow = 0;
    if (m_rows->showsMerged)
        return MoveMerged(up, otherFile);
    if (!m_rows->session.FindNeighbour(m_file, GetCaretRow(), up, otherFile, file, fileRow))
        return false;
    Browse(file);
    Focus(static_cast<int>(fileRow), 0, !up);
    UpdateFollowAtCaret();
    return true;
}

bool CQmLogTextCtrl::GoToError(bool forward)
{
    if (m_rows->showsMerged)
        return GoToErrorInLogs(forward, GetShownLogs());
    const int row = m_rows->session.FindError(GetCaretRow(), forward);
    if (row == logview::LogSession::kNoRow)
        return false;
    Focus(row, 0, false);
    UpdateFollowAtCaret();
    return true;
}

void CQmLogTextCtrl::SetBookmarks(std::function<const std::vector<std::uint32_t>&()> bookmarks)
{
    m_bookmarks = std::move(bookmarks);
    if (GetSafeHwnd())
        Invalidate();
}

void CQmLogTextCtrl::SetBookmarkClick(std::function<void(std::uint32_t number)> click)
{
    m_bookmarkClick = std::move(click);
}

bool CQmLogTextCtrl::IsBookmarked(std::uint32_t number)
{
    const std::vector<std::uint32_t>& bookmarks = GetBookmarks();
    return std::binary_search(bookmarks.begin(), bookmarks.end(), number);
}

CQmLogReader& CQmLogTextCtrl::DefineReader(int row, unsigned long& fileRow)
{
    const logview::RowId place = m_rows->Rows().Translate(row);
    fileRow = place.row;
    return QmLogReaderDefine(GetFilePath(static_cast<int>(place.file)));
}

bool CQmLogTextCtrl::ReadStyle(int row, CQmLogRow& record)
{
    return m_rows->Rows().ReadStyle(row, record);
}

int CQmLogTextCtrl::GetRowFile(int row)
{
    return static_cast<int>(m_rows->Rows().Translate(row).file);
}

bool CQmLogTextCtrl::Translation(int a, int b)
{
    return a < b;
}

int CQmLogTextCtrl::GetRowCount()
{
    return m_rows->Rows().RowCount();
}

int CQmLogTextCtrl::GetColumnCount()
{
    return 256;
}

int CQmLogTextCtrl::GetRowColumnCount(int row)
{
    if (const logview::CachedRow* const cached = m_rows->cache.Get(row))
        return static_cast<int>(std::min<std::uint32_t>(cached->length, logview::LogSession::kMaxRows));
    return m_rows->Rows().ColumnCount(row);
}

void CQmLogTextCtrl::GetRowCells(int row, VkGrafic::TextCells& cells)
{
    logview::RowCache alone(m_rows->source);
    if (const logview::CachedRow* const cached = m_rows->GetRow(row, alone))
        cells.Take(cached->text.data(), cached->text.size());
}

// The line of a row that a search looks at, which goes on with its neighbours: they are read along.
bool CQmLogTextCtrl::ReadSearched(int row, std::string& line)
{
    constexpr int kTogether = 256;
    logview::RowCache& searched = m_rows->searched;
    if (!searched.Get(row))
        searched.Prepare(m_rows->Rows(), row - row % kTogether, kTogether);
    const logview::CachedRow* const cached = searched.Get(row);
    if (!cached || !cached->readable)
        return false;
    if (cached->length > logview::RowCache::kLineBytes) // of which only a part was read
        return m_rows->Rows().ReadLine(row, line);
    line = cached->text;
    return true;
}

bool CQmLogTextCtrl::Find(int row, int& column, const char* text, bool& found)
{
    // Only the line is put into capitals. Deliberate; the find bar passes capitals.
    found = false;
    std::string line;
    if (!ReadSearched(row, line))
        return false;
    const std::optional<int> place = text ? logview::FindInLine(line, text, column) : std::nullopt;
    found = place.has_value();
    column = place.value_or(column);
    return true;
}

void CQmLogTextCtrl::Reload()
{
    if (m_reloadPending)
        CQmTextCtrl::Reload();
}
