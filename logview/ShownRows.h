// What a log text window shows, and how often it looks for more.
#pragma once

#include "logview/LogSession.h"
#include "logview/ReaderRows.h"
#include "logview/RowCache.h"
#include "logview/merge/MergedRows.h"
#include "logview/merge/PinnedHeaders.h"
#include "logview/merge/StripMarks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace logview
{

constexpr std::uintptr_t kRefreshTimer = 9504;
constexpr unsigned kRefreshInterval = 200; // milliseconds
constexpr std::uintptr_t kIndexTimer = 9506;
constexpr unsigned kIndexInterval = 10;

// Where the caret was when the view changed last; `mainRow` is where it was displayed in the view of "Main",
// and `mainPlace` the row there, when the merged view came.
struct CaretPlace
{
    RowId place;
    RowId mainPlace;
    int mainRow = 0;
};

// The block to whose time the merged view is limited, and what was shown before.
struct DuringBlock
{
    RowId header;
    bool fromMain = false;
    std::uint32_t logs = 0;
};

// The logs, what is unfolded of "Main", all rows by number, the rows of the paint in progress, and those that
// a search reads ahead.
struct ShownRows
{
    std::string countersPath; // empty without a log folder
    ReaderRows source;
    LogSession session{source};
    MergedRows merged{source};
    bool showsMerged = false;
    bool keepsIndex = false; // `merged` was asked for, and follows the logs
    bool isCopied = false;   // step by step: meanwhile it is not refreshed
    CaretPlace caret;
    std::optional<DuringBlock> during;
    PinnedHeaders pinned{merged};
    Strip strip; // as it was shown last
    RowCache cache{source};
    RowCache searched{source};

    DisplayedRows& Rows()
    {
        if (showsMerged)
            return merged;
        return session;
    }
    const DisplayedRows& Rows() const { return const_cast<ShownRows*>(this)->Rows(); }

    // A row of the paint in progress, else one that is read into `alone`; null if there is none.
    const CachedRow* GetRow(int row, RowCache& alone) const
    {
        if (const CachedRow* const cached = cache.Get(row))
            return cached;
        alone.Prepare(Rows(), row, 1);
        return alone.Get(row);
    }
};

} // namespace logview
