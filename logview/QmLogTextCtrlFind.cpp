// Finding in all logs, as the log text window has it by option.
#include "QmLogTextCtrl.h"
#include "logview/QmLogFinder.h"
#include "logview/ShownRows.h"
#include "logview/find/FindColors.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"

#include <algorithm>

void CQmLogTextCtrl::SetFindInAll(bool all)
{
    if (all == GetFindInAll())
        return;
    CloseFind();
    m_finder = all ? std::make_unique<CQmLogFinder>(*this) : nullptr;
}

bool CQmLogTextCtrl::GetFindInAll() const
{
    return m_finder != nullptr;
}

void CQmLogTextCtrl::SetFindHistory(const std::vector<std::string>& texts)
{
    if (m_finder)
        m_finder->SetHistory(texts);
}

std::vector<std::string> CQmLogTextCtrl::GetFindHistory() const
{
    return m_finder ? m_finder->History() : std::vector<std::string>();
}

bool CQmLogTextCtrl::IsFinding() const
{
    return m_finder && m_finder->IsSearching();
}

bool CQmLogTextCtrl::CancelFind()
{
    return m_finder && m_finder->Cancel();
}

std::string CQmLogTextCtrl::GetFindStateText() const
{
    return m_finder ? logview::FindStateText(m_finder->State()) : std::string();
}

std::vector<std::uint32_t> CQmLogTextCtrl::CountFound(std::uint32_t first, std::uint32_t last,
                                                      std::size_t stretches) const
{
    return m_finder ? m_finder->Search().Matches().CountStretches(first, last, stretches)
                    : std::vector<std::uint32_t>(stretches);
}

unsigned CQmLogTextCtrl::GetFoundChanges() const
{
    return m_finder ? m_finder->Search().Changes() : 0;
}

void CQmLogTextCtrl::FindInput()
{
    if (m_finder && GetSafeHwnd())
        m_finder->Open();
    else
        CQmTextCtrl::FindInput();
}

void CQmLogTextCtrl::CloseFind()
{
    if (m_finder)
        m_finder->Close();
    else
        CQmTextCtrl::CloseFind();
}

bool CQmLogTextCtrl::FindNext()
{
    return m_finder ? GoToFound(true) : CQmTextCtrl::FindNext();
}

bool CQmLogTextCtrl::FindPrevious()
{
    return m_finder ? GoToFound(false) : CQmTextCtrl::FindPrevious();
}

// What a host has set counts like what is typed.
bool CQmLogTextCtrl::GoToFound(bool forward)
{
    if (GetFindText() != m_finder->Text())
        m_finder->Enter(GetFindText(), m_finder->Options());
    return m_finder->Go(forward);
}

void CQmLogTextCtrl::ShowFindBar(CWnd* bar, int height)
{
    SetBar(bar, height);
}

// The one place from where a match is shown.
bool CQmLogTextCtrl::ShowFound(int file, unsigned long fileRow, int begin, int end)
{
    int row = FindShownRow(file, fileRow);
    if (row < 0)
    {
        if (!GoTo(file, fileRow))
        {
            RefreshRows(); // the search may have come to rows that are newer
            if (!GoTo(file, fileRow))
                return false;
        }
        row = GetCaretRow();
    }
    FocusInContext(row, begin, end - begin);
    Select(row, end);
    UpdateFollow();
    return true;
}

// Where a row is displayed on the screen; -1 if it is not.
int CQmLogTextCtrl::FindShownRow(int file, unsigned long fileRow)
{
    CRect client;
    GetClientRect(client);
    const int last = std::min(GetTopRow() + client.Height() / std::max(GetRowHeight(), 1), GetRowCount() - 1);
    for (int row = GetTopRow(); row <= last; ++row)
    {
        const logview::RowId place = m_rows->Rows().Translate(row);
        if (static_cast<int>(place.file) == file && place.row == fileRow)
            return row;
    }
    return -1;
}

// The backgrounds of a line's matches. True when the text of some would not be readable there in its own
// colour.
bool CQmLogTextCtrl::DrawFoundMarks(CDC& dc, int x, int y, std::string_view text, COLORREF color)
{
    m_marks.clear();
    if (!m_finder || !m_finder->HasMarks() || IsDrawingSelection())
        return false;
    const std::vector<logview::FoundStretch>& found = m_finder->MatchesOf(text);
    if (found.empty())
        return false;
    VkGrafic::TextCells cells;
    cells.Take(text.data(), text.size());
    const COLORREF background = logview::MatchBackground(GetWindowColor());
    const VkGrafic::Selected brush(dc, ::GetStockObject(DC_BRUSH));
    ::SetDCBrushColor(dc, background);
    for (const logview::FoundStretch& match : found)
    {
        const int left = x + cells.CellOf(static_cast<int>(match.begin)) * GetColumnWidth();
        const int right = x + cells.CellOf(static_cast<int>(match.end)) * GetColumnWidth();
        m_marks.emplace_back(left, y, right, y + GetRowHeight());
        ::PatBlt(dc, left, y, right - left, GetRowHeight(), PATCOPY);
    }
    return logview::MatchText(color, background) != color;
}

// The line once more in the matches, in a colour that is readable there.
void CQmLogTextCtrl::DrawFoundTexts(CDC& dc, int x, int y, std::string_view text, COLORREF color)
{
    dc.SetTextColor(logview::MatchText(color, logview::MatchBackground(GetWindowColor())));
    for (const CRect& mark : m_marks)
    {
        const VkGrafic::SavedState saved(dc);
        dc.IntersectClipRect(mark);
        dc.FillSolidRect(mark, logview::MatchBackground(GetWindowColor()));
        dc.SetBkMode(TRANSPARENT);
        GraphicText(dc.GetSafeHdc(), &GetGraphicFont())
            .DrawCells(text.data(), static_cast<int>(text.size()), x, y + 1, GetColumnWidth());
    }
}
