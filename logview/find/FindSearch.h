// A search through all rows of all logs, in steps.
#pragma once

#include "logview/RecordPages.h"
#include "logview/RowSource.h"
#include "logview/find/FindMatches.h"
#include "logview/find/FindText.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace logview
{

// Looks at the rows in the order of their numbers, from a number on to the end and then from the beginning up
// to it. Afterwards it goes on with the rows that are added to the logs, and it begins again when logs were
// cut or replaced. Matches are told in order: as long as one could come before it, a match waits.
//
// Rows without text have no match. A damaged log's rows count in the order in which they are there; of one
// whose end cannot be trusted 256 KiB are looked at.
class FindSearch
{
public:
    enum class State
    {
        Off,
        Searching,
        Done, // up to the end of the logs as they are
        Full  // it has found FindMatches::kMost, and looks for no more
    };

    explicit FindSearch(RowSource& source) : m_source(source) {}

    // Begins with the row that has `number`, or the next one.
    void Begin(std::unique_ptr<FindText> text, std::uint32_t number);
    void End();

    // Looks at blocks of rows until all are done or `goesOn`, asked after each, answers false. A block takes
    // less than a millisecond, or as long as an expression takes for a slice of a line.
    void Step(const std::function<bool()>& goesOn);

    State CurrentState() const { return m_state; }

    // Rows looked at, and all rows.
    std::uint64_t RowsDone() const;
    std::uint64_t RowsInAll() const;

    enum class Answer
    {
        None,
        Found,
        Wait // as long as the search has not come so far
    };

    // The index of the first match whose number is at least `number`, and of the last one whose number is
    // less, round the end.
    Answer FindNext(std::uint64_t number, std::size_t& index) const;
    Answer FindPrevious(std::uint64_t number, std::size_t& index) const;

    // Rows for which the expression has cost so much that it was given up.
    std::uint64_t RowsGivenUp() const { return m_givenUp; }

    const FindMatches& Matches() const { return m_matches; }

    // Null without a search.
    FindText* Text() { return m_text.get(); }

    // Counts what has changed about the matches since the window looked last.
    unsigned Changes() const { return m_changes; }

private:
    // Rows of a log, and the block of them that is being looked at.
    struct Walk
    {
        std::uint32_t file = 0;
        std::uint32_t first = 0;
        std::uint32_t row = 0; // the next to be looked at
        std::uint32_t end = 0;
        std::uint32_t number = 0;        // that no row from there on falls below
        std::uint32_t most = kMaxNumber; // that none exceeds
        std::uint64_t slice = 0;         // of a long row: bytes that are done
        bool isRowGivenUp = false;       // the long row

        std::vector<CQmLogRow> records; // the one at `record` is that of `row`
        std::size_t record = 0;
        bool isLoaded = false;   // what follows is of the rows from `row` on
        std::uint32_t count = 0; // rows that have their text in `text`
        std::string text;
        bool isUtf8 = false;
        std::size_t at = 0; // bytes of the text that are done

        std::vector<FoundMatch> found; // and not yet told
        std::size_t foundBefore = 0;   // the block

        // The first of the last rows whose text was not there as a whole, and the text's size then.
        bool hasOpenRow = false;
        std::uint32_t openRow = 0;
        std::uint32_t openNumber = 0;
        std::uint32_t openCount = 0; // rows of the log, then
        unsigned long openSize = 0;

        bool IsDone() const { return row >= end; }
        std::size_t RecordsLeft() const { return records.size() - record; }
    };
    struct LogEnd
    {
        std::uint32_t rows = 0;
        CQmLogRow last;
    };

    void Start();
    bool IsComplete() const { return m_state == State::Done || m_state == State::Full; }
    bool IsCut(const std::uint32_t (&counts)[kFileCount]);
    void TakeGrowth(const std::uint32_t (&counts)[kFileCount]);
    void GoBack(Walk& walk);
    Walk* NextWalk();
    void Look(Walk& walk);
    bool Load(Walk& walk);
    void LookAtBlock(Walk& walk);
    bool LookAtSlice(Walk& walk);
    std::size_t LookAtLine(Walk& walk, std::string_view line, std::size_t context, bool isRowEnd);
    void GoBehind(Walk& walk, std::uint32_t rows);
    void Open(Walk& walk, unsigned long size);
    void Keep(Walk& walk, std::uint32_t row, std::uint32_t number, std::size_t count);
    static std::uint64_t EndOfTold(const Walk (&walks)[kFileCount]);
    void Tell(Walk (&walks)[kFileCount], bool after);

    RowSource& m_source;
    std::unique_ptr<FindText> m_text;
    std::uint32_t m_number = 0; // where it was asked to begin
    std::uint32_t m_begin = 0;  // where it did
    State m_state = State::Off;
    Walk m_after[kFileCount];
    Walk m_before[kFileCount];
    LogEnd m_ends[kFileCount];
    FindMatches m_matches;
    std::vector<FoundMatch> m_told;
    std::vector<FoundStretch> m_stretches;
    std::uint64_t m_givenUp = 0;
    unsigned m_changes = 0;
};

} // namespace logview
