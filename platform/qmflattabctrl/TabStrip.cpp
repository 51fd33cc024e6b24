#include "qmflattabctrl/TabStrip.h"

#include <algorithm>

namespace flattab
{
namespace
{

constexpr int kMarginX = 8; // either side of a label
constexpr int kMarginY = 3; // above and below it

} // namespace

TabStrip::TabStrip(int clientWidth, int clientHeight, bool bottom, int labelHeight,
                   std::vector<int> labelWidths)
    : m_width(clientWidth), m_height(clientHeight), m_bottom(bottom),
      m_stripHeight(std::min(labelHeight + 2 * kMarginY, clientHeight)), m_labelWidths(std::move(labelWidths))
{
}

Box TabStrip::Strip() const
{
    const int top = m_bottom ? m_height - m_stripHeight : 0;
    return {0, top, m_width, top + m_stripHeight};
}

Box TabStrip::Page() const
{
    if (m_bottom)
        return {0, 0, m_width, m_height - m_stripHeight};
    return {0, m_stripHeight, m_width, m_height};
}

Box TabStrip::Tab(int index) const
{
    if (index < 0 || index >= static_cast<int>(m_labelWidths.size()))
        return {0, 0, 0, 0};
    int left = 0;
    for (int before = 0; before < index; ++before)
        left += m_labelWidths[static_cast<std::size_t>(before)] + 2 * kMarginX;
    const int right = left + m_labelWidths[static_cast<std::size_t>(index)] + 2 * kMarginX;
    const Box strip = Strip();
    return {std::min(left, m_width), strip.top, std::min(right, m_width), strip.bottom};
}

int TabStrip::HitTest(int x, int y) const
{
    for (int index = 0; index < static_cast<int>(m_labelWidths.size()); ++index)
    {
        const Box tab = Tab(index);
        if (x >= tab.left && x < tab.right && y >= tab.top && y < tab.bottom)
            return index;
    }
    return kNoTab;
}

int NextTab(int selected, int step, int count)
{
    if (count <= 0)
        return kNoTab;
    return ((selected + step) % count + count) % count;
}

} // namespace flattab
