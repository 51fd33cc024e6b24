// The bands that a paint into memory goes by.
#pragma once

#include "zemacore/ZemaApi.h"

namespace VkGrafic
{

// A picture as large as a window is no longer in the processor's cache when it is copied to the screen.
// docs/performance.md has what bands of other sizes take.
constexpr int kBandPixels = 256 * 1024;

// Where the band ends that begins at `top`, when what is `width` wide is painted down to `bottom`. It has as
// many rows of `rowHeight` as make kBandPixels, at least one, and ends between two rows, so that none is
// drawn twice; at `rowsTop` a row begins. It is below `top` if `bottom` is.
QMPLATFORM_API int EndOfBand(int top, int bottom, int width, int rowsTop, int rowHeight);

} // namespace VkGrafic
