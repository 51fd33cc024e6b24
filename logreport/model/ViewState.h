// The layout of a message viewer as plain values, and its section of the user's profile.
#pragma once

#include "QmLogState.h"
#include "wintypes.h"

#include <cstdint>
#include <vector>

namespace logreport
{

struct ViewState
{
    std::vector<CQmLogStateColumn> columns; // from left to right
    std::int32_t follow = 1;
    std::int32_t header = 1;
    std::int32_t report = 0;
    COLORREF warning = RGB(200, 200, 0);
    COLORREF error = RGB(250, 0, 0);
};

// What is missing in the profile stays as it is in `state`; if there is no profile, each value read is 0.
void ReadFromProfile(ViewState& state);

// Does nothing if there is no profile.
void WriteToProfile(const ViewState& state);

constexpr std::int32_t kOwnWidth = -1; // as wide as the viewer has the column by itself

// Those of the columns that a viewer can show, each field once: a profile may have been edited, and whatever
// is in it must leave the user something to see. A width that is out of all reason is kOwnWidth, and so are
// all if none of the columns would be seen.
std::vector<CQmLogStateColumn> ShowableColumns(const std::vector<CQmLogStateColumn>& columns);

} // namespace logreport
