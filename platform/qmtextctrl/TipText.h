// The lines of a text window's tip, and its place. Plain integers; no window system.
#pragma once

#include "vkgrafic/TextCells.h"

#include <string>
#include <vector>

namespace textview
{

// Bytes of a text, from begin up to, not including, end.
struct TipLine
{
    int begin = 0;
    int end = 0;

    bool operator==(const TipLine& other) const { return begin == other.begin && end == other.end; }
};

// Breaks a text that `cells` has laid out into lines of at most `width` cells: behind a blank or a comma if
// there is one in the second half of a line, else wherever it is full, and at line feeds. A text of more than
// `mostLines` is cut. Sizes below 1 count as 1, but a character is never parted.
std::vector<TipLine> BreakTip(const std::string& text, const VkGrafic::TextCells& cells, int width,
                              int mostLines);

// From begin up to, not including, end.
struct Span
{
    int begin = 0;
    int end = 0;

    bool operator==(const Span& other) const { return begin == other.begin && end == other.end; }
};

// Where a tip of `size` goes along one axis of the screen: at `wanted`, brought within `screen`.
Span PlaceTipAcross(int wanted, int size, Span screen);

// Below the row that it is for, or above it where there is more room; cut to that room.
Span PlaceTipDown(Span row, int size, Span screen);

} // namespace textview
