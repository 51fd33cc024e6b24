// The five logs of a session as one sequence of rows whose headers unfold.
#pragma once

#include "logview/Branch.h"
#include "logview/DisplayedRows.h"
#include "logview/RecordPages.h"

namespace logview
{

// Rows of a log that nothing leads to: they come before the first row of "Main" (all of them where "Main" has
// none), or after its last, which unfolds only when "Main" goes on.
struct HiddenRows
{
    std::uint32_t before = 0;
    std::uint32_t after = 0;
    bool operator==(const HiddenRows&) const = default;
};

// Whether rows of other logs unfold at `row`, displayed before `next`; `expanded` tells whether they are
// shown. A row that another log's next number follows counts as unfolded, even where it only ends a branch.
bool IsFoldable(const PlacedRow& row, const PlacedRow& next, bool& expanded);

// Rows are "displayed" ones unless a log is named; what lies after the last does not unfold. Nothing is kept
// of the logs but the row count at the top and what is unfolded. Operations answer false where rows cannot be
// read; damaged or growing logs lead to odd rows, but every operation ends, and needs memory only for what it
// unfolds.
class LogSession final : public DisplayedRows
{
public:
    explicit LogSession(RowSource& source) : DisplayedRows(source), m_source(source) {}

    int RowCount() const override;

    // Takes the row count of log `file` for the rows of "Main" at the top. Logs may have been cut: a writer
    // takes back what it could not write whole, and a new session begins them again. Then what is unfolded is
    // unfolded again, as far as its headers are still there.
    void Refresh(int file);

    // Whether log `file` has another row count than the one taken last, and whether any log that is shown has
    // become shorter. Both ask for row counts only.
    bool HasNewCount(int file) const;
    bool HasShrunk() const;

    // The log and row that lie at `row`; a row after the last one continues the log at the top, and one
    // below 0 does not exist.
    RowId Translate(std::int64_t row, int& depth) const override;
    using DisplayedRows::Translate;

    // Whether rows of other logs unfold at a row, and whether they are shown.
    bool IsFoldable(const RowSurroundings& row, bool& expanded) const override;

    // By the numbers up to the row displayed next: one that a killed writer took counts as a row.
    std::uint32_t CountFolded(int row, const PlacedRow& folded) const override;

    // Unfolds the rows of one log that lie after the row: of the log with the next number, up to the number
    // before the header's own log goes on, or to its end when that log does not go on or goes on with the
    // very next number. True also when the row counts as unfolded already. False where so many stretches lie
    // within each other, or rows are displayed, that no more can be.
    bool Expand(int row, RowChange& change);

    // The same with everything that comes to be unfolded. Stretches that go on beyond each other show rows
    // again and again, so that the rows to show can be many times the rows there are, without any damage. The
    // walk follows the numbers through pages of records. It adds at most 16 times the rows of all logs and
    // 1,024, goes through 64 levels for each of these, and reads once for four rows and 1,024 times: there it
    // ends, and `change` tells how many rows it has left.
    bool ExpandAll(int row, RowChange& change);

    // Folds. False when nothing is unfolded there.
    bool Collapse(int row, RowChange& change);

    // Folds everything, unfolds what leads to a row of a log and answers where it is displayed; kNoRow, with
    // everything folded, where nothing leads to it.
    int Reveal(RowId place);

    // The same beside what is unfolded.
    int UnfoldTo(RowId place);

    HiddenRows CountHidden(std::uint32_t file) const;

    // The row of any log for number `time`: of the first log that has it, else the smallest number that
    // the logs' own searches answer, whatever the direction.
    bool Find(unsigned long time, bool forward, int& file, unsigned long& fileRow) const;

    // The neighbour in time of row `row` of log `current`. With `otherFile` rows of that log are passed over.
    bool FindNeighbour(int current, int row, bool up, bool otherFile, int& file,
                       unsigned long& fileRow) const;

    // The next or previous header of an error block; kNoRow when there is none. Row 0 is never a previous
    // one.
    int FindError(int row, bool forward) const;

    // The block around row `row` of log `current`: its header's row and its last one.
    void FindBlock(int current, int row, int& first, int& last) const;

private:
    // A log's last row, as it was when something was unfolded. Logs only grow unless they are cut, which
    // always takes the last row.
    struct LogEnd
    {
        std::uint32_t rows = 0;
        CQmLogRow last;
    };

    // What became of a row that was to be unfolded.
    struct Unfolded
    {
        bool isDone = false;    // or was unfolded before
        bool isBounded = false; // there are rows to unfold, but no more can be shown, or no deeper
        std::uint32_t added = 0;
        int depth = 0; // of the row
    };

    std::uint32_t CountRows(std::uint32_t file) const;
    void RememberEnds();
    bool IsCut() const;
    void Restore();
    std::uint32_t UnfoldAgain(RecordPages& pages, std::int64_t row, RowId header, std::uint32_t number);
    bool ReadFold(RecordPages& pages, std::int64_t row, PlacedRow& header, bool& expanded) const;
    Unfolded Unfold(RecordPages& pages, std::int64_t row, std::uint64_t room);
    bool FindFirst(RecordPages& pages, std::uint32_t number, RowId& found, std::uint32_t& foundNumber) const;

    RowSource& m_source;
    CQmLogBranch m_root;
    int m_countedFile = 0;
    LogEnd m_ends[kFileCount];
};

} // namespace logview
