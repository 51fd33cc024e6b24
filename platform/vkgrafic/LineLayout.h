// Which part of a text lies where: the arithmetic of GraphicText. Plain integers; no window system.
#pragma once

namespace vkgrafic
{

// Pixels, `end` excluded.
struct Span
{
    int begin;
    int end;
};

// Cells of a line.
struct Part
{
    int first;
    int count;
};

// The cells of a row of `length` cells, `cellWidth` pixels each, from `x` on, that may colour a pixel of
// `clip`. A glyph may reach over into the cells beside its own, so one more is counted at either end.
Part VisibleCells(int x, int length, int cellWidth, Span clip);

// Where in a room something stands.
enum class Align
{
    Begin,
    Middle,
    End
};

// Where something `size` long begins in `room`. What does not fit shows its beginning when in the middle.
int AlignedBegin(Span room, int size, Align align);

} // namespace vkgrafic
