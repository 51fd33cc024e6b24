// The text window's searches, and the find bar at its bottom edge.
#include "QmTextCtrlApply.h"
#include "QmTextFindBar.h"

#include <algorithm>

namespace
{

int CharacterCount(const std::string& text)
{
    VkGrafic::TextCells cells;
    cells.Take(text.data(), text.size());
    return static_cast<int>(cells.Characters().empty() ? text.size() : cells.Characters().size() - 1);
}

} // namespace

bool CQmTextCtrl::Find(int, int&, const char*, bool&)
{
    return false;
}

void CQmTextCtrl::SetFindText(const char* text)
{
    m_findText = text ? text : "";
}

const char* CQmTextCtrl::GetFindText() const
{
    return m_findText.c_str();
}

void CQmTextCtrl::FindInput()
{
    if (!m_prepared)
        return;
    if (!m_findBar)
        m_findBar = std::make_unique<CQmTextFindBar>(*this);
    if (!m_findBar->Open())
        return;
    LayOutFindBar();
    LayOutStrip();
    UpdateMetrics();
    m_findBar->TakeFocus(m_findText.c_str());
}

void CQmTextCtrl::CloseFind()
{
    if (!m_prepared || !m_findBar || m_findBar->GetShownHeight() == 0)
        return;
    m_findBar->Close();
    LayOutStrip();
    UpdateMetrics();
    InvalidateText();
    ::SetFocus(m_hWnd);
}

void CQmTextCtrl::SetBar(CWnd* bar, int height)
{
    m_bar = bar;
    m_barHeight = height;
    LayOutFindBar();
    LayOutStrip();
    UpdateMetrics();
    InvalidateText();
}

int CQmTextCtrl::GetBarHeight() const
{
    if (m_bar)
        return m_barHeight;
    return m_findBar ? m_findBar->GetShownHeight() : 0;
}

void CQmTextCtrl::LayOutFindBar()
{
    const int top = GetRowArea().bottom;
    CWnd* const bar = m_bar ? m_bar : m_findBar.get();
    if (bar && GetBarHeight() > 0)
        bar->MoveWindow(0, top, m_client.cx, GetBarHeight());
}

bool CQmTextCtrl::FindNext()
{
    textview::Cell match;
    const bool found = FindForward(match);
    return ShowMatch(found, match);
}

bool CQmTextCtrl::FindPrevious()
{
    textview::Cell match;
    const bool found = FindBackward(match);
    return ShowMatch(found, match);
}

bool CQmTextCtrl::FindForward(textview::Cell& match)
{
    const int rowCount = GetRowCount();
    if (m_findText.empty() || rowCount <= 0)
        return false;
    match = m_view.SelectionEnd();
    // The row it begins in comes a second time, at the end, for what lies before the beginning.
    for (std::int64_t searched = 0; searched <= rowCount; ++searched)
    {
        bool found = false;
        if (Find(match.row, match.column, m_findText.c_str(), found) && found)
            return true;
        match = {match.row + 1 < rowCount ? match.row + 1 : 0, 0};
    }
    return false;
}

bool CQmTextCtrl::FindBackward(textview::Cell& match)
{
    const int rowCount = GetRowCount();
    if (m_findText.empty() || rowCount <= 0)
        return false;
    match = m_view.SelectionBegin();
    int limit = match.column;
    for (std::int64_t searched = 0; searched <= rowCount; ++searched)
    {
        if (FindLastBefore(match.row, limit, match.column))
            return true;
        match.row = match.row > 0 ? match.row - 1 : rowCount - 1;
        limit = textview::TextView::kRowEnd;
    }
    return false;
}

// The last match in `row` that begins before column `limit`. Halves what lies between a match and the columns
// that begin none: a long row has too many matches to go through them all.
bool CQmTextCtrl::FindLastBefore(int row, int limit, int& column)
{
    const auto findFrom = [&](int from) {
        bool found = false;
        column = from;
        return Find(row, column, m_findText.c_str(), found) && found && column < limit;
    };
    if (limit <= 0 || !findFrom(0))
        return false;
    int last = column;
    int end = std::min(limit, GetRowColumnCount(row));
    while (end - last > 1)
    {
        const int middle = last + (end - last) / 2;
        if (findFrom(middle))
            last = column;
        else
            end = middle;
    }
    column = last;
    return true;
}

bool CQmTextCtrl::ShowMatch(bool found, textview::Cell match)
{
    if (m_findBar)
        m_findBar->ShowFound(found || m_findText.empty());
    if (!found)
        return false;
    ApplyUser([&] {
        m_view.Focus(match, false);
        const int end = m_view.ColumnBehind(match, CharacterCount(m_findText));
        m_view.Select({match.row, end});
        m_view.EnsureVisible(match, 1, end - match.column);
    });
    return true;
}
