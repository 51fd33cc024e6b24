// What the strip beside the scroll bar shows of the logs, and where a click there leads.
#include "QmLogTextCtrl.h"
#include "logview/QmLogStrip.h"
#include "logview/ShownRows.h"

#include <algorithm>

namespace
{

constexpr int kReach = 3; // of a click, in pixel rows

} // namespace

void CQmLogTextCtrl::SetShowsStrip(bool shows)
{
    SetStrip(nullptr, 0);
    m_strip.reset();
    if (!shows)
        return;
    KeepIndex();
    m_strip = std::make_unique<CQmLogStrip>([this](int row) { GoToStripRow(row); });
    if (m_strip->Create(this))
        SetStrip(m_strip.get(), CQmLogStrip::GetStripWidth(m_hWnd));
    m_rows->strip = {};
}

const std::vector<std::uint32_t>& CQmLogTextCtrl::GetBookmarks() const
{
    static const std::vector<std::uint32_t> none;
    return m_bookmarks ? m_bookmarks() : none;
}

// Tells the strip what has changed since it was told last.
void CQmLogTextCtrl::RefreshStrip()
{
    if (!m_strip)
        return;
    const logview::MergedRows& merged = m_rows->merged;
    const logview::StripState& before = m_rows->strip;
    logview::StripState now;
    now.changes = merged.Changes();
    now.foundChanges = GetFoundChanges();
    now.bookmarks = GetBookmarks();
    now.height = std::max(m_strip->GetHeight(), 0);
    now.window = GetWindowColor();
    now.numbers = now.changes == before.changes ? before.numbers : merged.Numbers();
    const int last = std::min(GetTopRow() + GetPageRows(), GetRowCount()) - 1;
    CQmLogRow record;
    now.viewTop = ReadStyle(GetTopRow(), record) ? now.RowOf(record.time) : 0;
    now.viewBottom = ReadStyle(last, record) ? now.RowOf(record.time) + 1 : 0;
    if (now == before)
        return;

    // Scrolling changes only what is in view.
    QmLogStripMarks marks = m_strip->GetMarks();
    const auto height = static_cast<std::size_t>(now.height);
    const bool isSameScale = now.height == before.height && now.numbers == before.numbers;
    if (!isSameScale || now.changes != before.changes)
        marks.errorLogs = merged.FindErrorParts(now.numbers, height);
    if (!isSameScale || now.foundChanges != before.foundChanges)
        marks.found = CountFound(now.numbers.first, now.numbers.last, height);
    m_rows->strip = now;
    marks.bookmarks.clear();
    for (const std::uint32_t number : now.bookmarks)
        if (number >= now.numbers.first && number <= now.numbers.last)
            marks.bookmarks.push_back(now.RowOf(number));
    marks.viewTop = now.viewTop;
    marks.viewBottom = now.viewBottom;
    marks.window = now.window;
    marks.highContrast = IsHighContrast();
    marks.colors = GetMarginColors();
    m_strip->SetMarks(std::move(marks));
}

int CQmLogTextCtrl::GetPageRows()
{
    CRect client;
    GetClientRect(client);
    return client.Height() / std::max(GetRowHeight(), 1);
}

// To an error or a bookmark within reach, else to the first row with the number there.
void CQmLogTextCtrl::GoToStripRow(int row)
{
    const logview::StripState& strip = m_rows->strip;
    const std::uint32_t begin = strip.NumberAt(row - kReach);
    const std::uint32_t end = strip.NumberAt(row + 1);
    SetFocus();
    const std::optional<logview::RowId> error = m_rows->merged.FindErrorFrom(begin);
    CQmLogRow record;
    if (error && m_rows->source.ReadRows(error->file, error->row, 1, &record) == 1 && record.time < end)
    {
        GoTo(static_cast<int>(error->file), error->row);
        return;
    }
    const std::vector<std::uint32_t>& bookmarks = GetBookmarks();
    const auto bookmark = std::lower_bound(bookmarks.begin(), bookmarks.end(), begin);
    GoToNumber(bookmark != bookmarks.end() && *bookmark < end ? *bookmark : strip.NumberAt(row));
}
