// Finding in all logs of a log text window: the search, its bar, and going from match to match.
#pragma once

#include "logview/QmLogFindBar.h"
#include "logview/ReaderRows.h"
#include "logview/find/FindSearch.h"
#include "logview/find/FindState.h"

#include <string>
#include <vector>

class CQmLogTextCtrl;

namespace logview
{
constexpr std::uintptr_t kFindTimer = 9505;
}

// Belongs to one text window, which it searches in the times between its messages.
class CQmLogFinder
{
public:
    explicit CQmLogFinder(CQmLogTextCtrl& text) : m_text(text) {}

    // Shows the bar with the focus; a selection within a line is what is looked for. Close ends the search.
    void Open();
    void Close();
    void LayOut();

    // The window was made anew; its old one has taken the bar's along.
    void Forget();

    // Begins to look for a text, from the caret on; an empty one ends the search.
    void Enter(const std::string& text, logview::FindOptions options);

    // Goes to the next or the previous match as soon as it is known. False when there is none.
    bool Go(bool forward);

    // Ends a search in progress. False when there is none.
    bool Cancel();

    // Whether it looks on in rows that are there.
    bool IsSearching() const;
    bool IsOpen() const { return m_isOpen; }

    void OnTimer();
    void OnRefresh(); // logs may have been written to

    // The matches of a line that is drawn; none without a search.
    const std::vector<logview::FoundStretch>& MatchesOf(std::string_view line);
    bool HasMarks() const { return m_search.CurrentState() != logview::FindSearch::State::Off; }

    const logview::FindSearch& Search() const { return m_search; }
    const std::string& Text() const { return m_entered; }
    logview::FindOptions Options() const { return m_options; }

    // The last texts that were looked for, newest first.
    const std::vector<std::string>& History() const { return m_history; }
    void SetHistory(const std::vector<std::string>& texts);

    void Redraw();
    logview::FindState State() const;

private:
    enum class Going
    {
        Nowhere,
        Forward,
        Back
    };

    void Begin();
    void Step();
    bool TryGo();
    logview::FindSearch::Answer FindTarget(bool forward, std::size_t& index);
    void Show(std::size_t index);
    std::string ReadLine(std::uint32_t file, std::uint32_t row);
    bool IsAtMatch() const;
    void Remember();
    void ShowState();

    CQmLogTextCtrl& m_text;
    logview::ReaderRows m_source;
    logview::FindSearch m_search{m_source};
    CQmLogFindBar m_bar{*this};
    std::string m_entered;
    logview::FindOptions m_options;
    std::string m_error;
    bool m_isOpen = false;
    bool m_isCancelled = false;
    Going m_going = Going::Nowhere;
    std::vector<std::string> m_history;
    std::vector<logview::FoundStretch> m_stretches;

    // The match that was gone to last, which of its row's it is, and the caret there.
    bool m_hasMatch = false;
    bool m_isShown = false; // else the caret stayed
    logview::FoundMatch m_match;
    std::size_t m_ordinal = 0;
    int m_caretRow = 0;
    int m_caretColumn = 0;
};
