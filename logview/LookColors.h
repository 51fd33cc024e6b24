// The sets of colours that a log text window offers.
#pragma once

#include "QmLogLook.h"

namespace logview
{

const QmLogColors& ThemeColors(QmLogTheme theme);

// The set that is meant for a window of that colour.
QmLogTheme ThemeFor(std::uint32_t window);

} // namespace logview
