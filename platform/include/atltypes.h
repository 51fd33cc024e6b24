// Points, sizes and rectangles with operators. They are the system's records and nothing more.
#pragma once

#include "wintypes.h"

class CSize : public SIZE
{
public:
    CSize() : SIZE{} {}
    CSize(int width, int height)
    {
        cx = width;
        cy = height;
    }
    CSize(const SIZE& size) : SIZE(size) {}

    friend bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }
};

class CPoint : public POINT
{
public:
    CPoint() : POINT{} {}
    CPoint(int left, int top)
    {
        x = left;
        y = top;
    }
    CPoint(const POINT& point) : POINT(point) {}

    // The point of a message: x in the low word and y in the high word, both signed.
    explicit CPoint(LPARAM words)
        : CPoint(static_cast<short>(LOWORD(words)), static_cast<short>(HIWORD(words)))
    {
    }

    friend CPoint operator+(const CPoint& a, const SIZE& b) { return {a.x + b.cx, a.y + b.cy}; }
    friend CPoint operator-(const CPoint& a, const SIZE& b) { return {a.x - b.cx, a.y - b.cy}; }
    friend CPoint operator+(const CPoint& a, const POINT& b) { return {a.x + b.x, a.y + b.y}; }
    friend CSize operator-(const CPoint& a, const POINT& b) { return {a.x - b.x, a.y - b.y}; }
    friend bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
};

// The right and bottom edges lie outside.
class CRect : public RECT
{
public:
    CRect() : RECT{} {}
    CRect(int l, int t, int r, int b)
    {
        left = l;
        top = t;
        right = r;
        bottom = b;
    }
    CRect(const RECT& rect) : RECT(rect) {}
    CRect(const POINT& point, const SIZE& size)
        : CRect(point.x, point.y, point.x + size.cx, point.y + size.cy)
    {
    }

    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return {Width(), Height()}; }

    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
    BOOL PtInRect(POINT point) const { return ::PtInRect(this, point); }
    BOOL IntersectRect(LPCRECT a, LPCRECT b) { return ::IntersectRect(this, a, b); }
    BOOL UnionRect(LPCRECT a, LPCRECT b) { return ::UnionRect(this, a, b); } // empty ones count as none

    friend bool operator==(const CRect& a, const CRect& b) { return ::EqualRect(&a, &b); }
};
