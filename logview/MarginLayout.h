// What lies where in the wide margin of a log text window. Plain integers; no window system.
#pragma once

#include <string>

namespace logview
{

// Pixels from the margin's left edge, from begin up to, not including, end; empty where there is no room.
struct MarginBand
{
    int begin = 0;
    int end = 0;

    int Width() const { return end - begin; }
    bool operator==(const MarginBand&) const = default;
};

// Pixels from the row's upper left corner.
struct MarginBox
{
    int left = 0;
    int top = 0;
    int size = 0; // odd, so that its sign has a middle
};

enum class MarginZone
{
    Bookmark,
    Log,
    Fold, // the mark and what surrounds it
    Outside
};

// From left to right: bookmark, stripe, the log's initial, a text, the fold mark's box, the count of errors.
// Sizes grow with the row's height.
class MarginLayout
{
public:
    static constexpr int kInitialColumns = 2;
    static constexpr int kCountColumns = 3;
    static constexpr int kLeastBox = 12; // pixels, where a row is as high

    // All in pixels, but the text's width. Initials and counts have a place in a window where enough is left
    // for the rows' own text, and the margin's text if there is still enough.
    MarginLayout(int rowHeight, int columnWidth, int windowWidth, int textColumns = 0);

    int Width() const { return m_width; }
    MarginBand Bookmark() const { return m_bookmark; }
    MarginBand Stripe() const { return m_stripe; }
    MarginBand Initial() const { return m_initial; }
    MarginBand Text() const { return m_text; }
    MarginBand Count() const { return m_count; }
    MarginBox FoldBox() const { return m_box; }

    // How thick lines are.
    int Line() const { return m_line; }

    MarginZone ZoneAt(int x) const;

private:
    int m_width = 0;
    int m_line = 1;
    MarginBand m_bookmark;
    MarginBand m_stripe;
    MarginBand m_initial;
    MarginBand m_text;
    MarginBand m_fold;
    MarginBand m_count;
    MarginBox m_box;
};

// A log's stripe, so that logs are told apart without colours: it is painted from `begin` to `end` in
// sixteenths of its width, and along it `dash` of `period` sixteenths of a row's height.
struct StripePattern
{
    int begin, end;
    int dash, period;
};

// For any index; those without a log have an empty pattern and an empty initial.
StripePattern StripeOf(int file);
const char* InitialOf(int file); // one or two letters, another for each log

// A count as it fits into kCountColumns: "7", "99+"; empty for none.
std::string CountText(unsigned count);

} // namespace logview
