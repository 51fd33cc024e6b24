// The pixels that a report control draws.
#pragma once

#include "afxwin.h"

#include <gtest/gtest.h>
#include <vector>

class ReportPicture
{
public:
    static constexpr int kWidth = 300;
    static constexpr int kHeight = 200;

    explicit ReportPicture(int width = kWidth, int height = kHeight) : m_width(width), m_height(height)
    {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), m_width, -m_height, 1, 32, 0, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        dc.CreateCompatibleDC(nullptr);
        m_old = ::SelectObject(dc, m_bitmap.GetSafeHandle());
        m_bits = static_cast<const DWORD*>(bits);
    }
    ~ReportPicture() { ::SelectObject(dc, m_old); }
    ReportPicture(const ReportPicture&) = delete;
    ReportPicture& operator=(const ReportPicture&) = delete;

    // What a window shows.
    void Take(HWND hwnd)
    {
        const HDC shown = ::GetDC(hwnd);
        EXPECT_TRUE(::BitBlt(dc, 0, 0, m_width, m_height, shown, 0, 0, SRCCOPY));
        ::ReleaseDC(hwnd, shown);
    }

    COLORREF At(int x, int y) const
    {
        const DWORD pixel = m_bits[y * m_width + x];
        return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
    }
    int Count(const CRect& rect, COLORREF color) const
    {
        ::GdiFlush();
        int count = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                count += At(x, y) == color;
        return count;
    }
    std::vector<DWORD> Pixels() const
    {
        ::GdiFlush();
        return {m_bits, m_bits + m_width * m_height};
    }

    CDC dc;

private:
    int m_width;
    int m_height;
    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
    const DWORD* m_bits = nullptr;
};

// So many pixels of a colour there.
struct Spot
{
    static constexpr int kSome = -1;

    CRect rect;
    COLORREF color;
    int count;
};

inline Spot All(const CRect& rect, COLORREF color)
{
    return {rect, color, rect.Width() * rect.Height()};
}

inline Spot Some(const CRect& rect, COLORREF color)
{
    return {rect, color, Spot::kSome};
}

inline Spot None(const CRect& rect, COLORREF color)
{
    return {rect, color, 0};
}

inline void ExpectSpots(const ReportPicture& picture, const std::vector<Spot>& spots)
{
    for (const Spot& spot : spots)
    {
        const int count = picture.Count(spot.rect, spot.color);
        EXPECT_TRUE(spot.count == Spot::kSome ? count > 0 : count == spot.count)
            << "spot " << &spot - spots.data() << ": " << count << " and not " << spot.count;
    }
}
