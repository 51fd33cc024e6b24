// The sets of colours that a log text window offers.
#pragma once

#include "QmLogLook.h"

namespace logview
{

const QmLogColors& ThemeColors(QmLogTheme theme);

// The set that is meant for a window of that colour.
QmLogTheme ThemeFor(std::uint32_t window);

// The ratio of two colours' luminances, 1 to 21, as the Web Content Accessibility Guidelines count it.
double Contrast(std::uint32_t a, std::uint32_t b);

} // namespace logview
