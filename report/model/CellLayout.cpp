#include "report/model/CellLayout.h"

namespace report
{

namespace
{

std::int64_t Middle(int begin, int end)
{
    return (std::int64_t{begin} + end) >> 1; // rounded down, left of the client area too
}

} // namespace

Rect CellLayout::Inner(const Rect& cell) const
{
    return {ToInt(std::int64_t{cell.left} + m_view.margin), cell.top,
            ToInt(std::int64_t{cell.right} - m_view.margin), cell.bottom};
}

int CellLayout::ImageWidth(const CellContents& contents) const
{
    return contents.hasImage || contents.keepsImageRoom ? m_view.imageWidth : 0;
}

int CellLayout::CheckWidth(const CellContents& contents, int room) const
{
    const bool isShown = contents.hasCheck ? room > m_view.checkWidth : contents.keepsCheckRoom;
    return isShown ? m_view.checkWidth : 0;
}

int CellLayout::After(int left, int used) const
{
    return used != 0 ? ToInt(std::int64_t{left} + used + m_view.margin) : left;
}

CellParts CellLayout::PartsOf(const Rect& cell, const CellContents& contents) const
{
    CellParts parts;
    Rect room = Inner(cell);
    const auto take = [&](int width) {
        Rect part = room;
        room.left = After(room.left, width);
        part.right = std::min(room.left, room.right);
        return part;
    };
    parts.image = take(ImageWidth(contents));
    parts.check = take(CheckWidth(contents, room.Width()));
    parts.text = room;
    return parts;
}

int CellLayout::ContentsWidth(const CellContents& contents, int textWidth) const
{
    std::int64_t width = m_view.margin;
    if (contents.hasImage)
        width += std::int64_t{m_view.imageWidth} + m_view.margin;
    if (contents.hasCheck)
        width += std::int64_t{m_view.checkWidth} + m_view.margin;
    if (textWidth >= 0)
        width += std::int64_t{m_view.margin} + textWidth;
    return ToInt(width);
}

int CellLayout::Indentation(int level) const
{
    return level > 0 ? ToInt(std::int64_t{level} * m_view.itemHeight) : 0;
}

Rect CellLayout::TreeBoxOf(const Rect& indentedCell) const
{
    return {ToInt(std::int64_t{indentedCell.left} - m_view.itemHeight), indentedCell.top, indentedCell.left,
            indentedCell.bottom};
}

Rect CellLayout::TreeBoxIn(const Rect& room) const
{
    const int size = Scale(kTreeBoxSize, m_view.dpi);
    const int left = ToInt(Middle(room.left, ToInt(std::int64_t{room.left} + room.Height())) - size / 2);
    const int top = ToInt(Middle(room.top, room.bottom) - size / 2);
    return {left, top, ToInt(std::int64_t{left} + size), ToInt(std::int64_t{top} + size)};
}

Rect CellLayout::Centered(const Rect& room, int width, int height)
{
    const int top = ToInt(Middle(room.top, room.bottom) - height / 2 + 1);
    return {room.left, top, ToInt(std::int64_t{room.left} + width), ToInt(std::int64_t{top} + height)};
}

} // namespace report
