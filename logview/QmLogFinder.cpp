#include "logview/QmLogFinder.h"

#include "QmLogRow.h"
#include "QmLogTextCtrl.h"

#include <algorithm>
#include <chrono>

using logview::FindProgress;
using logview::FindSearch;
using logview::FoundStretch;

namespace
{

constexpr std::size_t kMostTexts = 20;
constexpr std::size_t kMostSelected = 255; // bytes that are looked for; who selects more wants to copy
constexpr UINT kFindInterval = 10;         // milliseconds; input goes first
constexpr auto kStepTime = std::chrono::milliseconds(12);
constexpr unsigned long kReadBytes = 64 * 1024; // of a line, for the places of its matches

} // namespace

// ---- The bar

void CQmLogFinder::Open()
{
    const std::string selected = m_text.GetSelectionBeginRow() == m_text.GetSelectionEndRow()
                                     ? m_text.GetSelectedText()
                                     : std::string();
    if (!m_bar.Open(m_text))
        return;
    m_isOpen = true;
    LayOut();
    m_bar.SetText(m_entered);
    const std::string line = selected.substr(0, selected.find_first_of("\r\n"));
    m_bar.TakeFocus(line.size() <= kMostSelected ? line : std::string());
    if (!HasMarks())
        Begin();
}

void CQmLogFinder::LayOut()
{
    if (!m_isOpen)
        return;
    CRect client;
    m_text.GetClientRect(client);
    m_text.ShowFindBar(&m_bar, m_bar.GetHeight(client.Width()));
}

void CQmLogFinder::Close()
{
    if (!m_isOpen)
        return;
    m_bar.ShowWindow(SW_HIDE);
    m_text.KillTimer(logview::kFindTimer);
    Forget();
    Redraw();
    m_text.SetFocus();
}

void CQmLogFinder::Forget()
{
    m_isOpen = false;
    m_search.End();
    m_going = Going::Nowhere;
    m_text.ShowFindBar(nullptr, 0);
}

void CQmLogFinder::Redraw()
{
    if (m_text.GetSafeHwnd())
        m_text.Invalidate(FALSE);
}

// ---- The search

void CQmLogFinder::Enter(const std::string& text, logview::FindOptions options)
{
    if (text == m_entered && options == m_options && HasMarks())
        return;
    m_entered = text;
    m_options = options;
    m_text.SetFindText(text.c_str());
    Begin();
}

void CQmLogFinder::Begin()
{
    m_error.clear();
    m_isCancelled = false;
    m_hasMatch = false;
    m_going = Going::Nowhere;
    m_search.End();
    try
    {
        CQmLogRow record;
        const bool hasCaret = m_text.ReadStyle(m_text.GetCaretRow(), record);
        if (!m_entered.empty())
            m_search.Begin(std::make_unique<logview::FindText>(m_entered, m_options),
                           hasCaret ? record.time : 0);
    }
    catch (const textmatch::ExpressionError& error)
    {
        m_error = std::string(error.what()) + ", at byte " + std::to_string(error.Position() + 1);
    }
    if (HasMarks())
        m_text.SetTimer(logview::kFindTimer, kFindInterval, nullptr);
    ShowState();
    Redraw();
}

bool CQmLogFinder::IsSearching() const
{
    return m_search.CurrentState() == FindSearch::State::Searching && !m_isCancelled;
}

bool CQmLogFinder::Cancel()
{
    if (!IsSearching())
        return false;
    m_isCancelled = true;
    m_going = Going::Nowhere;
    m_text.KillTimer(logview::kFindTimer);
    ShowState();
    return true;
}

void CQmLogFinder::Step()
{
    const auto end = std::chrono::steady_clock::now() + kStepTime;
    m_search.Step([end] { return std::chrono::steady_clock::now() < end; });
}

void CQmLogFinder::OnTimer()
{
    Step();
    if (!IsSearching())
        m_text.KillTimer(logview::kFindTimer);
    if (m_going != Going::Nowhere)
        TryGo();
    ShowState();
}

void CQmLogFinder::OnRefresh()
{
    if (!HasMarks() || m_isCancelled)
        return;
    Step();
    if (IsSearching())
        m_text.SetTimer(logview::kFindTimer, kFindInterval, nullptr);
    ShowState();
}

const std::vector<FoundStretch>& CQmLogFinder::MatchesOf(std::string_view line)
{
    m_stretches.clear();
    if (logview::FindText* const text = m_search.Text())
        text->FindAll(line, 0, m_stretches);
    return m_stretches;
}

// ---- From match to match

bool CQmLogFinder::Go(bool forward)
{
    if (m_entered.empty())
    {
        Open();
        return false;
    }
    if (!m_isOpen && m_bar.Open(m_text))
    {
        m_isOpen = true;
        m_bar.SetText(m_entered);
        LayOut();
    }
    if (!HasMarks())
        Begin();
    if (!HasMarks())
        return false;
    Remember();
    if (m_isCancelled)
    {
        m_isCancelled = false;
        m_text.SetTimer(logview::kFindTimer, kFindInterval, nullptr);
    }
    m_going = forward ? Going::Forward : Going::Back;
    Step(); // near matches are known at once
    const bool isFound = TryGo();
    ShowState();
    return isFound;
}

bool CQmLogFinder::TryGo()
{
    std::size_t index = 0;
    const FindSearch::Answer answer = FindTarget(m_going == Going::Forward, index);
    if (answer == FindSearch::Answer::Wait)
        return true;
    m_going = Going::Nowhere;
    if (answer == FindSearch::Answer::None)
        return false;
    Show(index);
    return true;
}

bool CQmLogFinder::IsAtMatch() const
{
    return m_hasMatch && m_caretRow == m_text.GetCaretRow() && m_caretColumn == m_text.GetCaretColumn();
}

// From the match that was gone to last, or from the caret.
FindSearch::Answer CQmLogFinder::FindTarget(bool forward, std::size_t& index)
{
    const logview::FindMatches& matches = m_search.Matches();
    logview::FoundMatch from = m_match;
    std::ptrdiff_t ordinal = static_cast<std::ptrdiff_t>(m_ordinal);
    if (!IsAtMatch())
    {
        const int caret = m_text.GetCaretRow();
        CQmLogRow record;
        if (!m_text.ReadStyle(caret, record))
            return m_search.FindNext(0, index);
        unsigned long row = 0;
        m_text.DefineReader(caret, row);
        from = {record.time, static_cast<std::uint32_t>(m_text.GetRowFile(caret)),
                static_cast<std::uint32_t>(row)};
        const auto column = static_cast<std::size_t>(std::max(m_text.GetCaretColumn(), 0));
        const std::vector<FoundStretch>& found = MatchesOf(ReadLine(from.file, from.row));
        ordinal = std::count_if(found.begin(), found.end(),
                                [=](const FoundStretch& match) { return match.begin < column; });
        ordinal -= forward ? 1 : 0;
    }
    const std::size_t first = matches.IndexOf(from.number, from.file, from.row);
    const std::ptrdiff_t wanted = ordinal + (forward ? 1 : -1);
    if (first < matches.Count() && wanted >= 0)
    {
        index = first + static_cast<std::size_t>(wanted);
        if (index < matches.Count() && matches.At(index).file == from.file &&
            matches.At(index).row == from.row)
            return FindSearch::Answer::Found;
    }
    return forward ? m_search.FindNext(std::uint64_t{from.number} + 1, index)
                   : m_search.FindPrevious(from.number, index);
}

void CQmLogFinder::Show(std::size_t index)
{
    const logview::FindMatches& matches = m_search.Matches();
    m_match = matches.At(index);
    m_ordinal = index - matches.IndexOf(m_match.number, m_match.file, m_match.row);
    const std::string line = ReadLine(m_match.file, m_match.row);
    const std::vector<FoundStretch>& found = MatchesOf(line);
    const FoundStretch place =
        m_ordinal < found.size() ? found[m_ordinal] : FoundStretch{line.size(), line.size()};
    m_isShown = m_text.ShowFound(static_cast<int>(m_match.file), m_match.row, static_cast<int>(place.begin),
                                 static_cast<int>(place.end));
    m_hasMatch = true;
    m_caretRow = m_text.GetCaretRow();
    m_caretColumn = m_text.GetCaretColumn();
}

std::string CQmLogFinder::ReadLine(std::uint32_t file, std::uint32_t row)
{
    CQmLogRow records[2];
    const unsigned long count = m_source.ReadRows(file, row, 2, records);
    if (count == 0)
        return {};
    const std::uint64_t end = count > 1 ? records[1].offset : m_source.TextSize(file);
    std::string line(std::min<std::uint64_t>(logview::LineLength(records[0].offset, end), kReadBytes), '\0');
    line.resize(
        m_source.ReadText(file, records[0].offset, static_cast<unsigned long>(line.size()), line.data()));
    return count > 1 ? line : std::string(logview::LastLine(line));
}

// ---- What was looked for, and what came of it

void CQmLogFinder::Remember()
{
    std::erase(m_history, m_entered);
    m_history.insert(m_history.begin(), m_entered);
    m_history.resize(std::min(m_history.size(), kMostTexts));
}

void CQmLogFinder::SetHistory(const std::vector<std::string>& texts)
{
    m_history.assign(texts.begin(),
                     texts.begin() + static_cast<std::ptrdiff_t>(std::min(texts.size(), kMostTexts)));
}

logview::FindState CQmLogFinder::State() const
{
    logview::FindState state;
    state.error = m_error;
    if (!HasMarks())
        return state;
    const logview::FindMatches& matches = m_search.Matches();
    state.progress = m_search.CurrentState() == FindSearch::State::Full   ? FindProgress::Full
                     : m_search.CurrentState() == FindSearch::State::Done ? FindProgress::Done
                     : m_isCancelled                                      ? FindProgress::Cancelled
                                                                          : FindProgress::Searching;
    state.percent =
        static_cast<unsigned>(100 * m_search.RowsDone() / std::max<std::uint64_t>(m_search.RowsInAll(), 1));
    state.count = matches.Count();
    const std::size_t first =
        IsAtMatch() ? matches.IndexOf(m_match.number, m_match.file, m_match.row) : matches.Count();
    state.place = first < matches.Count() ? first + m_ordinal + 1 : 0;
    state.isHidden = !m_isShown;
    state.rowsGivenUp = m_search.RowsGivenUp();
    return state;
}

void CQmLogFinder::ShowState()
{
    m_bar.ShowState(logview::FindStateText(State()));
}
