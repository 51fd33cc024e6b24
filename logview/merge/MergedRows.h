// All rows of a session's logs in the order of their numbers.
#pragma once

#include "logview/DisplayedRows.h"
#include "logview/merge/FoldedRows.h"
#include "logview/merge/MergeIndex.h"

#include <functional>
#include <optional>
#include <vector>

namespace logview
{

// Which rows are shown: a bit for each log, and for each class of rows.
struct RowChoice
{
    std::uint32_t logs = (1u << kFileCount) - 1;
    std::uint32_t classes = (1u << kRowClasses) - 1;
    bool operator==(const RowChoice&) const = default;
};

// Numbers from `first` to `last`.
struct NumberRange
{
    std::uint32_t first = 0;
    std::uint32_t last = 0xFFFFFFFF;
    bool operator==(const NumberRange&) const = default;
};

// Every row of the chosen logs once. A header's block folds: the rows that its log wrote inside it, or all
// rows of that time, are hidden. An index of the order is read step by step (Refresh, Extend). What it does
// not cover yet is searched for by number, which logs without damage allow; only some classes of rows, where
// others are left out, are counted and shown no further than it reaches.
//
// A block is what its header's log wrote until that has a row of lower depth, or any log a header of the
// same or a lower one: depth counts over all logs.
class MergedRows final : public DisplayedRows
{
public:
    explicit MergedRows(RowSource& source, std::uint32_t stretchNumbers = MergeIndex::kStretchNumbers);

    // Whether a log has fewer rows than it had; asks for row counts only.
    bool HasShrunk() const;

    // Takes the logs' ends; folds whose headers have gone are dropped.
    void Refresh();

    // Reads on for `rows` rows of the index or somewhat more; false when all is read.
    bool Extend(std::uint64_t rows);
    const MergeIndex& Index() const { return m_index; }

    // Another number whenever rows may be displayed elsewhere than before.
    std::uint32_t Changes() const { return m_changes; }

    // Shows other rows. Folds are kept.
    void Choose(const RowChoice& choice);
    const RowChoice& GetChoice() const { return m_choice; }
    void ShowOnly(const std::optional<NumberRange>& range);
    const std::optional<NumberRange>& GetRange() const { return m_range; }

    int RowCount() const override;
    RowId Translate(std::int64_t row, int& depth) const override;
    using DisplayedRows::Translate;
    bool IsFoldable(const RowSurroundings& row, bool& expanded) const override;
    std::uint32_t CountFolded(int row, const PlacedRow& folded) const override;

    // Where a row is displayed; where it is hidden, the row before it, or kNoRow.
    int FindRow(RowId place) const;
    bool IsDisplayed(RowId place) const;

    // The first displayed row with `number` or a greater one; the row count where all are smaller.
    int FindNumber(std::uint32_t number) const;

    // Whether folding hides all rows of a block's time, or only those of its own log, as at first.
    void SetFoldsAllLogs(bool all) { m_foldsAllLogs = all; }
    bool GetFoldsAllLogs() const { return m_foldsAllLogs; }

    // Folds a displayed header, or unfolds it.
    bool Fold(int row, RowChange& change);
    bool Unfold(int row, RowChange& change);

    // Unfolds what hides a row, chooses its log and class, and leaves a range that it is outside of. Answers
    // where it is displayed; kNoRow if there is no such row.
    int Reveal(RowId place);

    // The next or previous header of an error after a place, of these logs (a bit each), shown or not.
    std::optional<RowId> FindError(RowId place, bool forward, std::uint32_t logs) const;

    // The first header of an error of any log with `number` or a greater one.
    std::optional<PlacedRow> FindErrorFrom(std::uint32_t number) const;

    // Headers of errors that a folded header hides.
    std::uint32_t CountFoldedErrors(RowId header) const;

    // Headers of errors of any log with these numbers.
    std::uint32_t CountErrors(const NumberRange& range) const;

    // The smallest and the greatest number, as logs without damage have them; {0, 0} without rows.
    NumberRange Numbers() const;

    // Which logs (a bit each) have headers of errors in each of `parts` equal parts of a range of numbers. A
    // part may be told by its neighbour where an index point has more numbers than a part.
    std::vector<std::uint8_t> FindErrorParts(const NumberRange& range, std::size_t parts) const;

    // The headers of the blocks that are open at a row, the outermost first. A header is in its own block.
    std::vector<RowId> FindPath(RowId place) const;

    // From a header's number to the last one of its block.
    NumberRange FindBlock(RowId header) const;

private:
    using Measure = std::function<std::uint64_t(const MergePoint& point)>;

    // Rows next to each other in the order.
    struct Stretch
    {
        MergePoint begin;
        MergePoint end;
    };
    struct ShownStretch
    {
        std::uint64_t first = 0; // shown rows before it
        std::vector<PlacedRow> rows;
    };

    struct BlockEnd
    {
        MergePoint point;
        bool isEnded = false;
        std::uint32_t number = 0; // of the row that ends the block
    };

    void UpdateFolds();
    void FindShown();

    MergePoint LogEnds() const;
    std::uint64_t ShownBefore(const MergePoint& point) const;
    MergePoint SearchedPoint(std::uint32_t number, const Stretch& within) const;
    Stretch Locate(std::uint64_t target, const Measure& measure) const;
    void Merge(const Stretch& stretch, std::vector<PlacedRow>& rows) const;
    bool Read(RowId place, CQmLogRow& record) const;
    template <typename IsReached> MergePoint PointWithin(const Stretch& stretch, IsReached isReached) const;
    MergePoint PointBefore(RowId place) const;
    MergePoint PointBefore(std::uint32_t number) const;

    bool IsChosen(const PlacedRow& row) const;
    const ShownStretch& LoadShown(std::uint64_t row) const;
    std::optional<PlacedRow> FindErrorAt(std::uint64_t index, std::uint32_t logs) const;
    bool MakeFold(RowId header, bool allLogs, FoldedRows::Fold& fold) const;
    bool FindBlockEnd(const PlacedRow& header, BlockEnd& end) const;

    MergeIndex m_index;
    RowChoice m_choice;
    std::optional<NumberRange> m_range;
    FoldedRows m_folds;
    bool m_foldsAllLogs = false;
    std::uint32_t m_changes = 0;
    std::uint64_t m_firstShown = 0; // of the range, counted over all that are shown
    std::uint64_t m_endShown = 0;
    mutable std::vector<ShownStretch> m_loaded; // the last few
};

} // namespace logview
