// How controls follow a dialog that is resized.
#pragma once

// Combined by "or".
constexpr unsigned kSizerWider = 1;    // takes what its columns gain
constexpr unsigned kSizerHigher = 2;   // takes all that the dialog gains
constexpr unsigned kSizerToRight = 4;  // keeps its distance to the right edge, in whatever column
constexpr unsigned kSizerToBottom = 8; // keeps its distance to the bottom edge
