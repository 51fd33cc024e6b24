// The size of things in a report control, and what is scrolled where. All coordinates are pixels of the
// client area.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace report
{

// A sum of sizes that may go beyond the range of int.
constexpr int ToInt(std::int64_t number)
{
    return static_cast<int>(
        std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// Right and bottom edges lie outside.
struct Rect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return ToInt(std::int64_t{right} - left); }
    int Height() const { return ToInt(std::int64_t{bottom} - top); }
    bool Contains(int x, int y) const { return left <= x && x < right && top <= y && y < bottom; }
    bool operator==(const Rect&) const = default;
};

// So many pixels at 96 dots per inch are how many at another resolution; a half counts as one.
constexpr int Scale(int pixels, int dpi)
{
    return ToInt((std::int64_t{pixels} * dpi + 48) / 96);
}

constexpr int kTreeBoxSize = 9; // at 96 dots per inch

struct View
{
    int dpi = 96;        // dots per inch
    int itemHeight = 10; // of a row's line, and a level of indentation
    int margin = 6;      // left and right of a cell's contents, and between them
    int imageWidth = 0;
    int imageHeight = 0;
    int checkWidth = 8;
    int checkHeight = 8;
    int fixedFrame = 0;       // above and below the line of the fixed row
    bool showLines = true;    // else rows are their previews alone
    bool showPreviews = true; // below the lines
    int previewWidth = 0;     // of the widest preview, as far as the owner has told

    // Areas, from LayOut
    Rect header;
    Rect fixedRow;
    Rect report;

    int topRow = 0; // the first row shown
    int left = 0;   // pixels scrolled

    int LineHeight() const { return showLines ? itemHeight : 0; }
};

// Divides the client area among header, fixed row and rows. Each begins below the one before, and the rows
// have what is left.
void LayOut(View& view, int width, int height, int headerHeight, bool hasFixedRow);

} // namespace report
