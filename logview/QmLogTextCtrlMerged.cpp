// The merged view of the log text window.
#include "QmLogTextCtrl.h"

#include "QmLogBrowser.h"
#include "logview/ShownRows.h"
#include "qmcommon/QmWndUpdaterUse.h"

#include <algorithm>
#include <chrono>

using logview::RowId;

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr unsigned CQmLogTextCtrl::kAllLogs;
constexpr unsigned CQmLogTextCtrl::kPlainRows;
constexpr unsigned CQmLogTextCtrl::kNoticeRows;
constexpr unsigned CQmLogTextCtrl::kErrorRows;
constexpr unsigned CQmLogTextCtrl::kDetailRows;
constexpr unsigned CQmLogTextCtrl::kAllRows;

namespace
{

constexpr std::chrono::milliseconds kIndexSlice{12}; // a step of reading the index
constexpr std::uint64_t kIndexRows = 20000; // between looks at the clock; at once, when rows have come

// The classes of rows of kinds, and back.
constexpr unsigned kErrorClasses = 1u << logview::kErrorHeader | 1u << logview::kErrorRow;

unsigned ClassesOf(unsigned kinds)
{
    return ((kinds & CQmLogTextCtrl::kPlainRows) != 0 ? 1u << logview::kPlainRow : 0) |
           ((kinds & CQmLogTextCtrl::kNoticeRows) != 0 ? 1u << logview::kNoticeRow : 0) |
           ((kinds & CQmLogTextCtrl::kErrorRows) != 0 ? kErrorClasses : 0) |
           ((kinds & CQmLogTextCtrl::kDetailRows) != 0 ? 1u << logview::kDetailRow : 0);
}

unsigned KindsOf(unsigned classes)
{
    const auto has = [&](logview::RowClass rowClass) { return (classes >> rowClass & 1) != 0; };
    return (has(logview::kPlainRow) ? CQmLogTextCtrl::kPlainRows : 0) |
           (has(logview::kNoticeRow) ? CQmLogTextCtrl::kNoticeRows : 0) |
           (has(logview::kErrorRow) ? CQmLogTextCtrl::kErrorRows : 0) |
           (has(logview::kDetailRow) ? CQmLogTextCtrl::kDetailRows : 0);
}

RowId PlaceOf(int file, unsigned long fileRow)
{
    return {static_cast<std::uint32_t>(file), static_cast<std::uint32_t>(fileRow)};
}

} // namespace

// ---- The index of the order

// From now on it is read, and follows the logs.
void CQmLogTextCtrl::KeepIndex()
{
    if (m_rows->keepsIndex)
        return;
    m_rows->keepsIndex = true;
    RefreshMerged();
}

void CQmLogTextCtrl::RefreshMerged()
{
    if (!m_rows->keepsIndex)
        return;
    logview::MergedRows& merged = m_rows->merged;
    const bool isShown = m_rows->showsMerged;
    const int row = GetCaretRow();
    const RowId caret = isShown ? merged.Translate(row) : RowId{};
    merged.Refresh();
    if (const auto& range = merged.GetRange(); range && range->last == 0xFFFFFFFF && m_rows->during)
        merged.ShowOnly(merged.FindBlock(m_rows->during->header)); // it may have ended
    if (isShown && merged.IsDisplayed(caret)) // rows may have come late, and before others
        if (const int now = merged.FindRow(caret); now != row)
            MoveRows(row, now - row);
    if (merged.Extend(kIndexRows) && GetSafeHwnd())
        SetTimer(logview::kIndexTimer, logview::kIndexInterval, nullptr);
}

// Input, painting and other timers come in between.
void CQmLogTextCtrl::ReadIndex()
{
    logview::MergedRows& merged = m_rows->merged;
    const int before = merged.RowCount();
    const auto end = std::chrono::steady_clock::now() + kIndexSlice;
    bool goesOn = true;
    while (goesOn && std::chrono::steady_clock::now() < end)
        goesOn = merged.Extend(kIndexRows);
    if (!goesOn)
        KillTimer(logview::kIndexTimer);
    if (m_rows->showsMerged && merged.RowCount() != before && m_follow && !m_followPaused)
        EnsureVisible(GetRowCount() - 1, 0, 1, 0);
    if (!goesOn || merged.RowCount() != before)
        OnRowsChanged(); // error counts of folds are known now, too
}

int CQmLogTextCtrl::GetIndexProgress() const
{
    const logview::MergeIndex& index = m_rows->merged.Index();
    std::uint64_t rows = 0;
    for (unsigned file = 0; file < logview::kFileCount; ++file)
        rows += index.RowsOf(file);
    return rows == 0 ? 100 : static_cast<int>(index.End().Rows() * 100 / rows);
}

// ---- What is shown

// Puts the caret on a row of the view, `offset` rows below the window's first.
void CQmLogTextCtrl::ShowRows(bool merged, int row, int column, int offset)
{
    m_rows->showsMerged = merged;
    m_rows->cache.Clear();
    m_rows->searched.Clear();
    m_leftFolded = 0;
    OnRowsChanged();
    CRect client;
    GetClientRect(client);
    if (client.IsRectEmpty())
        return; // nothing has a place yet
    EnsureVisible(GetRowCount() - 1, 0, 1, 0);
    EnsureVisible(std::max(row - offset, 0), 0, 1, 0);
    Focus(std::max(row, 0), column, false);
    UpdateFollow();
    if (m_browser)
        m_browser->Refresh();
}

// The caret's row, to be found in another view; in one without rows that of the view before.
RowId CQmLogTextCtrl::TakePlace()
{
    if (GetCaretRow() < GetRowCount())
        m_rows->caret.place = m_rows->Rows().Translate(GetCaretRow());
    return m_rows->caret.place;
}

// Changes what the merged view shows; the caret stays on its row, or goes to the one before it.
template <typename Action> void CQmLogTextCtrl::ChangeMerged(Action action)
{
    const CQmWndUpdaterUse updater(this);
    KeepIndex();
    const int row = GetCaretRow();
    const int offset = row - GetTopRow();
    const RowId caret = TakePlace();
    if (!m_rows->showsMerged)
    {
        m_rows->caret.mainPlace = caret;
        m_rows->caret.mainRow = row;
    }
    action(m_rows->merged);
    ShowRows(true, m_rows->merged.FindRow(caret), GetCaretColumn(), offset);
}

void CQmLogTextCtrl::ShowMerged(unsigned logs)
{
    ChangeMerged([&](logview::MergedRows& merged) {
        m_rows->during.reset();
        merged.ShowOnly(std::nullopt);
        merged.Choose({logs & kAllLogs, merged.GetChoice().classes});
    });
}

// What was unfolded stays so.
void CQmLogTextCtrl::ShowMain()
{
    if (!m_rows->showsMerged)
        return;
    const CQmWndUpdaterUse updater(this);
    logview::LogSession& session = m_rows->session;
    const RowId caret = TakePlace();
    const int offset = GetCaretRow() - GetTopRow();
    m_rows->during.reset();
    m_rows->merged.ShowOnly(std::nullopt);
    m_rows->showsMerged = false;
    if (caret == m_rows->caret.mainPlace)
    {
        const int row = std::min(m_rows->caret.mainRow, session.RowCount() - 1);
        ShowRows(false, row, GetCaretColumn(), offset);
        return;
    }
    int row = session.UnfoldTo(caret);
    if (row == logview::LogSession::kNoRow) // before "Main" begins, or after its end
    {
        unsigned long before = 0;
        unsigned long after = 0;
        GetHiddenRowCounts(static_cast<int>(caret.file), before, after);
        row = caret.row < before ? 0 : session.RowCount() - 1;
    }
    ShowRows(false, row, GetCaretColumn(), offset);
}

bool CQmLogTextCtrl::IsMerged() const
{
    return m_rows->showsMerged;
}

unsigned CQmLogTextCtrl::GetShownLogs() const
{
    return m_rows->merged.GetChoice().logs;
}

void CQmLogTextCtrl::SetShownKinds(unsigned kinds)
{
    ChangeMerged([&](logview::MergedRows& merged) {
        merged.Choose({merged.GetChoice().logs, ClassesOf(kinds)});
    });
}

unsigned CQmLogTextCtrl::GetShownKinds() const
{
    return KindsOf(m_rows->merged.GetChoice().classes);
}

void CQmLogTextCtrl::SetFoldsAllLogs(bool all)
{
    m_foldsAllLogs = all;
    m_rows->merged.SetFoldsAllLogs(all);
    OnRowsChanged(); // other rows have marks
}

bool CQmLogTextCtrl::GetFoldsAllLogs() const
{
    return m_foldsAllLogs;
}

bool CQmLogTextCtrl::ExpandMerged(int row, logview::RowChange& change)
{
    bool expanded = false;
    return m_rows->merged.Unfold(row, change) ||
           (m_rows->merged.ReadExpanded(row, expanded) && expanded); // unfolded already counts
}

// ---- During a block

bool CQmLogTextCtrl::ShowDuring(int row)
{
    KeepIndex();
    const RowId place = m_rows->Rows().Translate(row);
    std::vector<RowId> path = m_rows->merged.FindPath(place);
    const auto isOneRow = [](const logview::NumberRange& block) { return block.first == block.last; };
    while (!path.empty() && isOneRow(m_rows->merged.FindBlock(path.back())))
        path.pop_back();
    if (path.empty())
        return false;
    logview::DuringBlock during = {path.back(), !m_rows->showsMerged, GetShownLogs()};
    if (m_rows->during)
        during = {path.back(), m_rows->during->fromMain, m_rows->during->logs};
    ChangeMerged([&](logview::MergedRows& merged) {
        m_rows->during = during;
        merged.Choose({kAllLogs, merged.GetChoice().classes});
        merged.ShowOnly(merged.FindBlock(during.header));
    });
    return true;
}

bool CQmLogTextCtrl::IsDuring() const
{
    return m_rows->during.has_value();
}

void CQmLogTextCtrl::LeaveDuring()
{
    if (!IsDuring())
        return;
    const logview::DuringBlock before = *m_rows->during;
    ShowMerged(before.logs);
    if (before.fromMain)
        ShowMain();
}

// ---- Getting about

bool CQmLogTextCtrl::GoTo(int file, unsigned long fileRow)
{
    if (file < 0 || file >= GetFilePathCount())
        return false;
    if (!m_rows->showsMerged && Reveal(file, fileRow))
        return true;
    KeepIndex();
    logview::MergedRows& merged = m_rows->merged;
    if ((GetShownLogs() >> file & 1) == 0)
        merged.Choose({kAllLogs, merged.GetChoice().classes});
    const int row = merged.Reveal(PlaceOf(file, fileRow));
    if (row == logview::DisplayedRows::kNoRow)
        return false;
    if (!merged.GetRange())
        m_rows->during.reset();
    if (m_rows->showsMerged)
    {
        m_rows->searched.Clear();
        OnRowsChanged();
        FocusInContext(row, 0, 1);
        UpdateFollow();
        return true;
    }
    const CQmWndUpdaterUse updater(this);
    ShowRows(true, row, 0, 0);
    FocusInContext(row, 0, 1);
    return true;
}

bool CQmLogTextCtrl::GoToNumber(unsigned long number)
{
    int file = 0;
    unsigned long fileRow = 0;
    return m_rows->session.Find(number, true, file, fileRow) && GoTo(file, fileRow);
}

bool CQmLogTextCtrl::GoToErrorInLogs(bool forward, unsigned logs)
{
    KeepIndex();
    const std::optional<RowId> error =
        m_rows->merged.FindError(m_rows->Rows().Translate(GetCaretRow()), forward, logs);
    return error && GoTo(static_cast<int>(error->file), error->row);
}

bool CQmLogTextCtrl::MoveMerged(bool up, bool otherFile)
{
    const RowId caret = m_rows->merged.Translate(GetCaretRow());
    int file = 0;
    unsigned long fileRow = 0;
    return m_rows->session.FindNeighbour(static_cast<int>(caret.file), static_cast<int>(caret.row), up,
                                         otherFile, file, fileRow) &&
           GoTo(file, fileRow);
}

// The displayed rows of the block that a row is in; the row alone where it is in none.
void CQmLogTextCtrl::FindMergedBlock(int row, int& first, int& last)
{
    const logview::MergedRows& merged = m_rows->merged;
    first = last = row;
    const std::vector<RowId> path = merged.FindPath(merged.Translate(row));
    if (path.empty())
        return;
    const logview::NumberRange block = merged.FindBlock(path.back());
    first = merged.FindNumber(block.first);
    last = (block.last == 0xFFFFFFFF ? merged.RowCount() : merged.FindNumber(block.last + 1)) - 1;
}

unsigned CQmLogTextCtrl::CountHiddenErrors(int row)
{
    const logview::MergedRows& merged = m_rows->merged;
    if (!m_rows->keepsIndex || row < 0 || row >= GetRowCount())
        return 0;
    const RowId place = m_rows->Rows().Translate(row);
    if (m_rows->showsMerged)
        return merged.CountFoldedErrors(place);
    bool expanded = false;
    CQmLogRow record;
    if (!m_rows->session.ReadExpanded(row, expanded) || expanded || !ReadStyle(row, record) ||
        record.time == 0xFFFFFFFF)
        return 0;
    CQmLogRow next;
    const bool goesOn = m_rows->source.ReadRows(place.file, place.row + 1, 1, &next) == 1;
    const std::uint32_t last = goesOn && next.time > record.time ? next.time - 1 : 0xFFFFFFFF;
    return merged.CountErrors({record.time + 1, last});
}
