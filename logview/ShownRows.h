// What a log text window shows, and how often it looks for more.
#pragma once

#include "logview/LogSession.h"
#include "logview/ReaderRows.h"
#include "logview/RowCache.h"
#include "logview/merge/MergedRows.h"
#include "logview/merge/StripState.h"

#include <cstdint>
#include <optional>
#include <string>

namespace logview
{

constexpr std::uintptr_t kRefreshTimer = 9504;
constexpr unsigned kRefreshInterval = 200; // milliseconds
constexpr std::uintptr_t kIndexTimer = 9506;
constexpr unsigned kIndexInterval = 10;

// The logs, what is unfolded of "Main", all rows by number, the rows of the paint in progress, and those that
// a search reads ahead.
struct ShownRows
{
    std::string countersPath; // empty without a log folder
    ReaderRows source;
    LogSession session{source};
    MergedRows merged{source};
    bool showsMerged = false;
    bool keepsIndex = false;           // `merged` was asked for, and follows the logs
    RowId place;                       // the caret's row when the view changed last
    RowId mergedFrom;                  // the caret's row when the merged view came
    int mainRow = 0;                   // and where it was displayed
    std::optional<RowId> duringHeader; // of the block to whose time the merged view is limited
    int pinnedRow = -1;                // whose headers are, at that state of `merged`
    std::uint32_t pinnedChanges = 0;
    std::vector<int> pinnedHeaders;
    StripState strip;            // as it was told last
    bool duringFromMain = false; // and what was shown before
    std::uint32_t duringLogs = 0;
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
