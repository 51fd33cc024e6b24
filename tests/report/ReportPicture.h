// The pixels that a report control draws.
#pragma once

#include "ReportCtrl.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <string>
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
        m_bits = static_cast<const DWORD*>(bits);
        dc.CreateCompatibleDC(nullptr);
        ::SelectObject(dc, m_bitmap.GetSafeHandle());
    }
    ~ReportPicture() { dc.DeleteDC(); } // before the bitmap

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
    const DWORD* m_bits = nullptr;
};

// So many pixels of a colour there.
struct Spot
{
    CRect rect;
    COLORREF color;
    int count;
};
constexpr int kSome = -1;

inline Spot All(const CRect& rect, COLORREF color)
{
    return {rect, color, rect.Width() * rect.Height()};
}
inline Spot Some(const CRect& rect, COLORREF color)
{
    return {rect, color, kSome};
}
inline Spot None(const CRect& rect, COLORREF color)
{
    return {rect, color, 0};
}

struct Scene
{
    std::function<void()> prepare;
    std::vector<Spot> spots;
};

// Prepares one after the other, paints it by `paint`, and looks for its spots.
inline void ExpectScenes(const ReportPicture& picture, const std::function<void()>& paint,
                         std::initializer_list<Scene> scenes)
{
    for (const Scene& scene : scenes)
    {
        scene.prepare();
        paint();
        for (const Spot& spot : scene.spots)
        {
            const int count = picture.Count(spot.rect, spot.color);
            EXPECT_TRUE(spot.count == kSome ? count > 0 : count == spot.count)
                << "scene " << &scene - scenes.begin() << ", spot " << &spot - scene.spots.data() << ": "
                << count << " and not " << spot.count;
        }
    }
}

// Puts a line of pixels behind the rows, from a file that is gone then. `colors` has four bytes for each.
inline void ShowBitmap(CReportCtrl& report, int width, WORD bits, const std::string& pixels,
                       const std::string& colors = "", DWORD used = 0)
{
    char folder[MAX_PATH] = "";
    ::GetTempPath(sizeof(folder), folder);
    const std::string path = std::string(folder) + "report_picture.bmp";
    BITMAPFILEHEADER file = {};
    file.bfType = 0x4D42;
    file.bfOffBits = static_cast<DWORD>(sizeof(file) + sizeof(BITMAPINFOHEADER) + colors.size());
    file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size());
    const BITMAPINFOHEADER info = {sizeof(info), width, 1, 1, bits, BI_RGB, 0, 0, 0, used, 0};
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof(file));
    out.write(reinterpret_cast<const char*>(&info), sizeof(info));
    out << colors << pixels;
    out.close();
    EXPECT_EQ(1, report.SetBkImage(path.c_str()));
    EXPECT_TRUE(::DeleteFile(path.c_str()));
}
