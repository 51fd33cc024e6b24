#include "logview/merge/FoldedRows.h"

#include <algorithm>
#include <numeric>

namespace logview
{

const FoldedRows::Fold* FoldedRows::Get(RowId header) const
{
    const auto found = m_folds.find({header.file, header.row});
    return found == m_folds.end() ? nullptr : &found->second;
}

void FoldedRows::Set(RowId header, const Fold& fold)
{
    m_folds[{header.file, header.row}] = fold;
    FindHidden();
}

bool FoldedRows::Remove(RowId header)
{
    const bool isThere = m_folds.erase({header.file, header.row}) > 0;
    if (isThere)
        FindHidden();
    return isThere;
}

void FoldedRows::Clear()
{
    m_folds.clear();
    FindHidden();
}

void FoldedRows::Show(RowId place)
{
    Update([&](RowId, const Fold& fold) {
        return (fold.logs >> place.file & 1) == 0 || place.row < fold.begin.RowsOf(place.file) ||
               place.row >= fold.end.RowsOf(place.file);
    });
}

bool FoldedRows::IsHidden(RowId place) const
{
    const Stretch* const stretch = StretchFrom(place.file, place.row);
    return stretch && place.row < stretch->end;
}

std::uint32_t FoldedRows::HiddenBefore(unsigned file, const std::uint32_t (&counts)[kRowClasses],
                                       std::uint32_t classes) const
{
    const std::uint32_t row = std::accumulate(std::begin(counts), std::end(counts), 0u);
    const Stretch* const stretch = StretchFrom(file, row);
    if (!stretch)
        return 0;
    const auto& reached = row < stretch->end ? counts : stretch->endCounts;
    std::uint32_t hidden = 0;
    for (unsigned i = 0; i < kRowClasses; ++i)
        if ((classes >> i & 1) != 0)
            hidden += stretch->hidden[i] + reached[i] - stretch->beginCounts[i];
    return hidden;
}

// The last stretch that begins at or before a row.
const FoldedRows::Stretch* FoldedRows::StretchFrom(unsigned file, std::uint32_t row) const
{
    const std::vector<Stretch>& hidden = m_hidden[file];
    const auto next =
        std::upper_bound(hidden.begin(), hidden.end(), row,
                         [](std::uint32_t at, const Stretch& stretch) { return at < stretch.begin; });
    return next == hidden.begin() ? nullptr : &next[-1];
}

void FoldedRows::FindHidden()
{
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        std::vector<Stretch>& hidden = m_hidden[file];
        hidden.clear();
        for (const auto& [header, fold] : m_folds)
        {
            Stretch stretch;
            stretch.begin = fold.begin.RowsOf(file);
            stretch.end = fold.end.RowsOf(file);
            if ((fold.logs >> file & 1) == 0 || stretch.begin >= stretch.end)
                continue;
            std::copy_n(fold.begin.counts[file], kRowClasses, stretch.beginCounts);
            std::copy_n(fold.end.counts[file], kRowClasses, stretch.endCounts);
            hidden.push_back(stretch);
        }
        std::sort(hidden.begin(), hidden.end(),
                  [](const Stretch& a, const Stretch& b) { return a.begin < b.begin; });

        std::size_t last = 0;
        for (std::size_t i = 1; i < hidden.size(); ++i)
        {
            Stretch& before = hidden[last];
            if (hidden[i].begin > before.end)
            {
                Stretch& next = hidden[++last] = hidden[i];
                for (unsigned k = 0; k < kRowClasses; ++k)
                    next.hidden[k] = before.hidden[k] + before.endCounts[k] - before.beginCounts[k];
            }
            else if (hidden[i].end > before.end)
            {
                before.end = hidden[i].end;
                std::copy_n(hidden[i].endCounts, kRowClasses, before.endCounts);
            }
        }
        if (!hidden.empty())
            hidden.resize(last + 1);
    }
}

} // namespace logview
