// Pictures of windows.
#pragma once

#include <afxwin.h>
#include <vkgrafic/DrawingGuards.h>

#include <fstream>
#include <string>

// Writes a window with its frame as a bitmap. False when the picture or the file cannot be made.
inline bool WritePicture(CWnd& wnd, const std::string& path)
{
    wnd.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
    CRect rect;
    wnd.GetWindowRect(rect);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof(info);
    info.biWidth = rect.Width();
    info.biHeight = rect.Height();
    info.biPlanes = 1;
    info.biBitCount = 32;

    CDC memory;
    CBitmap bitmap;
    void* bits = nullptr;
    if (!memory.CreateCompatibleDC(nullptr) ||
        !bitmap.Attach(::CreateDIBSection(memory, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits,
                                          nullptr, 0)))
        return false;
    const VkGrafic::Selected selected(memory, bitmap.GetSafeHandle());
    CWindowDC window(&wnd);
    const bool isDrawn =
        memory.BitBlt(0, 0, rect.Width(), rect.Height(), &window, 0, 0, SRCCOPY) && ::GdiFlush();

    BITMAPFILEHEADER header = {};
    header.bfType = 0x4D42; // "BM"
    header.bfOffBits = sizeof(header) + sizeof(info);
    header.bfSize = header.bfOffBits + static_cast<DWORD>(4 * rect.Width() * rect.Height());
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&header), sizeof(header));
    file.write(reinterpret_cast<const char*>(&info), sizeof(info));
    file.write(static_cast<const char*>(bits), header.bfSize - header.bfOffBits);
    return isDrawn && file.flush();
}
