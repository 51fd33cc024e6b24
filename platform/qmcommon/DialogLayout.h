// Where a dialog and its controls go when it is resized. No window system.
#pragma once

#include "wintypes.h"

namespace qmcommon
{

// How a control follows a dialog that has become larger. What the dialog gains in width is shared evenly by
// columns.
struct SizerRule
{
    int id;
    int column;     // counted from 0: the control goes to the right with its column
    int span;       // how many columns it lies in
    unsigned moves; // kSizer flags
};

// Where the control goes whose place was `control` when the dialog had its first size. `gainX` and `gainY`
// are what the client area has gained since then, in pixels; a loss counts as no gain.
RECT PlaceOf(const SizerRule& rule, const RECT& control, int columns, int gainX, int gainY);

// The nearest place to `wanted` that lies within `area`: no smaller than `least`, as far as the area allows.
RECT BringWithin(const RECT& wanted, SIZE least, const RECT& area);

} // namespace qmcommon
