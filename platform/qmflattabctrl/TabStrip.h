// Where the tabs of a flat tab control lie. Plain integers; no window system.
#pragma once

#include <vector>

namespace flattab
{

constexpr int kNoTab = -1;

// Pixels; right and bottom excluded.
struct Box
{
    int left;
    int top;
    int right;
    int bottom;
};

// The strip of tabs along the top or bottom edge of a client area; the page has the rest. Tabs that do not
// fit are cut off.
class TabStrip
{
public:
    // Labels are given by their height and widths in pixels; a tab leaves some room around its own.
    TabStrip(int clientWidth, int clientHeight, bool bottom, int labelHeight, std::vector<int> labelWidths);

    Box Strip() const;
    Box Page() const;
    Box Tab(int index) const; // empty for no tab

    // The tab at a point; kNoTab beside the tabs.
    int HitTest(int x, int y) const;

private:
    int m_width;
    int m_height;
    bool m_bottom;
    int m_stripHeight;
    std::vector<int> m_labelWidths;
};

// The tab `step` places after `selected`, around the ends; kNoTab without tabs.
int NextTab(int selected, int step, int count);

} // namespace flattab
