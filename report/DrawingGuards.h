// The state of a device context, changed for as long as a guard lives.
#pragma once

#include "afxwin.h"
#include "vkgrafic/DrawingGuards.h"

namespace report
{

using VkGrafic::SavedState;
using VkGrafic::Selected;

// Keeps what is drawn within its room, if it is larger.
class Clipped
{
public:
    Clipped(HDC dc, const CRect& room, const CRect& drawn) : m_dc(dc)
    {
        CRect both;
        both.UnionRect(room, drawn);
        if (both == room)
            return;
        m_saved = ::SaveDC(dc);
        ::IntersectClipRect(dc, room.left, room.top, room.right, room.bottom);
    }
    ~Clipped()
    {
        if (m_saved != 0)
            ::RestoreDC(m_dc, m_saved);
    }
    Clipped(const Clipped&) = delete;
    Clipped& operator=(const Clipped&) = delete;

private:
    HDC m_dc;
    int m_saved = 0;
};

// Has a device context show the colours of a palette; null for none.
class Realized
{
public:
    Realized(HDC dc, HPALETTE palette) : m_dc(dc)
    {
        if (!palette)
            return;
        m_old = ::SelectPalette(dc, palette, FALSE);
        ::RealizePalette(dc);
    }
    ~Realized()
    {
        if (m_old)
            ::SelectPalette(m_dc, m_old, FALSE);
    }
    Realized(const Realized&) = delete;
    Realized& operator=(const Realized&) = delete;

private:
    HDC m_dc;
    HPALETTE m_old = nullptr;
};

} // namespace report
