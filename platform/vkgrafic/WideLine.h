// UTF-16 text as it is measured and cut: the arithmetic of GraphicText. No window system.
#pragma once

#include "zemacore/WideText.h"

#include <vector>

namespace vkgrafic
{

using ZEMA::WideChar;

// Whether a font's glyph for this unit and its width are all there is to know: the system shapes nothing,
// puts no mark on it, and keeps its direction.
bool IsSimple(WideChar unit);

// How a unit is shown: a tab as a blank, any other control character as a middle dot.
WideChar VisibleUnit(WideChar unit);

// Whether a character as its reader sees it begins at `at`: not between surrogates, nor before a mark, after
// a joiner, or within a flag. True at both ends.
bool BeginsCharacter(const WideChar* text, std::size_t length, std::size_t at);

// The end of a piece of text that has at most `longest` units from `begin` on and breaks no character. If one
// character is longer, it is broken.
std::size_t EndOfPiece(const WideChar* text, std::size_t length, std::size_t begin, std::size_t longest);

// A line of text and how far each unit moves on. What gives advances is the system, a font or a test.
struct WideLine
{
    ZEMA::WideString text;
    std::vector<int> advances; // of the units that have been measured, from the first on

    // Pixels, of all that has been measured.
    int Width() const;

    // How many units fit into `width` pixels, whole characters only.
    std::size_t Fitting(int width) const;

    // Keeps what leaves room for three points, each `pointWidth` pixels wide, within `width`, and puts them
    // after it.
    void CutTo(int width, int pointWidth);
};

} // namespace vkgrafic
