// What a tip shows of a cell's text, and where. Plain integers; no window system.
#pragma once

#include "report/model/View.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace report
{

// Measures lines of UTF-8, in pixels, in the font that a cell is painted in.
class TipFont
{
public:
    virtual ~TipFont() = default;
    virtual int Height() = 0; // of a line
    virtual int WidthOf(std::string_view line) = 0;

    // The bytes from the beginning that are no wider; whole characters only.
    virtual std::size_t Fitting(std::string_view line, int width) = 0;
};

// A place on the screen, all of it in the same pixels.
struct TipPlace
{
    Rect editor; // where the text would be edited, from EditorRect
    Rect seen;   // all that is seen of the control
    Rect monitor;
    unsigned format = 0; // of the subitem: its alignment counts
    int dpi = 96;
};

// The lines begin within the frame and its padding. The first one lies where the cell paints its text, unless
// there is no room for it there.
struct Tip
{
    Rect window;
    std::vector<std::string> lines;

    bool operator==(const Tip&) const = default;
};

constexpr int kTipFrame = 1;    // at 96 dots per inch, like the next
constexpr int kTipPaddingX = 3; // between frame and text
constexpr int kTipPaddingY = 1;

// The text as it is painted: in UTF-8, with blanks for control characters. Line feeds stay, and a carriage
// return before one goes; those at the end go, too.
std::string TipText(std::string_view text);

// None for a text that is seen whole in its cell, in one line, and for one of blanks. `text` is from TipText.
// However long it is, no more is measured than the monitor has room for; the last line ends in "..." then.
std::optional<Tip> LayOutTip(std::string_view text, const TipPlace& place, TipFont& font);

} // namespace report
