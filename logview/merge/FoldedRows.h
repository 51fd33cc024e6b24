// Which rows of the logs are folded away.
#pragma once

#include "logview/merge/MergeIndex.h"

#include <map>

namespace logview
{

// Folded blocks, by their headers, and the rows that they hide: of each log stretches that do not touch each
// other, however blocks lie within each other.
class FoldedRows
{
public:
    // A block from behind `begin`, its header, to `end`. The points know every log's rows and classes there.
    struct Fold
    {
        std::uint32_t number = 0; // the header's
        bool isEnded = false;     // else the block goes on as its log does
        std::uint32_t logs = 0;   // a bit for each log whose rows it hides
        MergePoint begin;
        MergePoint end;
    };

    bool IsEmpty() const { return m_folds.empty(); }
    const Fold* Get(RowId header) const;
    void Set(RowId header, const Fold& fold);
    bool Remove(RowId header);
    void Clear();

    // Brings folds up to date: `decide(header, fold)` answers whether the fold stays.
    template <typename Decide> void Update(Decide decide)
    {
        for (auto at = m_folds.begin(); at != m_folds.end();)
            at = decide(at->first.Place(), at->second) ? std::next(at) : m_folds.erase(at);
        FindHidden();
    }

    // Unfolds whatever hides a row.
    void Show(RowId place);

    bool IsHidden(RowId place) const;

    // Hidden rows of the classes (a bit each) of a log before its row where it has so many of each.
    std::uint32_t HiddenBefore(unsigned file, const std::uint32_t (&counts)[kRowClasses],
                               std::uint32_t classes) const;

private:
    struct Key
    {
        std::uint32_t file;
        std::uint32_t row;
        RowId Place() const { return {file, row}; }
        auto operator<=>(const Key&) const = default;
    };

    struct Stretch
    {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
        std::uint32_t beginCounts[kRowClasses] = {};
        std::uint32_t endCounts[kRowClasses] = {};
        std::uint32_t hidden[kRowClasses] = {}; // of the log before it
    };

    void FindHidden();
    const Stretch* StretchFrom(unsigned file, std::uint32_t row) const;

    std::map<Key, Fold> m_folds;
    std::vector<Stretch> m_hidden[kFileCount];
};

} // namespace logview
