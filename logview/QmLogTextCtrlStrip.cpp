// What the strip beside the scroll bar shows of the logs, and where a click there leads.
#include "QmLogTextCtrl.h"
#include "logview/QmLogStrip.h"
#include "logview/ShownRows.h"

#include <algorithm>

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
    m_rows->strip.Reset();
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
    logview::StripState now;
    now.changes = merged.Changes();
    now.foundChanges = GetFoundChanges();
    now.bookmarks = GetBookmarks();
    now.height = std::max(m_strip->GetHeight(), 0);
    now.window = GetWindowColor();
    const logview::StripState& before = m_rows->strip.GetState();
    now.numbers = now.changes == before.changes ? before.numbers : merged.Numbers();
    const int last = std::min(GetTopRow() + GetPageRows(), GetRowCount()) - 1;
    CQmLogRow record;
    now.viewTop = ReadStyle(GetTopRow(), record) ? now.RowOf(record.time) : 0;
    now.viewBottom = ReadStyle(last, record) ? now.RowOf(record.time) + 1 : 0;
    const auto countFound = [this](const logview::NumberRange& numbers, std::size_t parts) {
        return CountFound(numbers.first, numbers.last, parts);
    };
    if (!m_rows->strip.Update(merged, now, countFound))
        return;

    QmLogStripLook look;
    look.viewTop = now.viewTop;
    look.viewBottom = now.viewBottom;
    look.window = now.window;
    look.highContrast = IsHighContrast();
    look.colors = GetMarginColors();
    m_strip->Show(m_rows->strip.GetMarks(), look);
}

int CQmLogTextCtrl::GetPageRows()
{
    CRect client;
    GetClientRect(client);
    return client.Height() / std::max(GetRowHeight(), 1);
}

void CQmLogTextCtrl::GoToStripRow(int row)
{
    SetFocus();
    const logview::Strip::Target target = m_rows->strip.GetTarget(m_rows->merged, row);
    if (target.error)
        GoTo(static_cast<int>(target.error->file), target.error->row);
    else
        GoToNumber(target.number);
}
