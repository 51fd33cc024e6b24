// What a log text window shows, and how often it looks for more.
#pragma once

#include "logview/LogSession.h"
#include "logview/ReaderRows.h"
#include "logview/RowCache.h"

#include <cstdint>
#include <string>

namespace logview
{

constexpr std::uintptr_t kRefreshTimer = 9504;
constexpr unsigned kRefreshInterval = 200; // milliseconds

// The logs, what is unfolded of them, the rows of the paint in progress, and those that a search reads ahead.
struct ShownRows
{
    std::string countersPath; // empty without a log folder
    ReaderRows source;
    LogSession session{source};
    RowCache cache{source};
    RowCache searched{source};

    // A row of the paint in progress, else one that is read into `alone`; null if there is none.
    const CachedRow* GetRow(int row, RowCache& alone) const
    {
        if (const CachedRow* const cached = cache.Get(row))
            return cached;
        alone.Prepare(session, row, 1);
        return alone.Get(row);
    }
};

} // namespace logview
