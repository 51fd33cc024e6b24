#include "qmcommon/QmIcon.h"

#include "afxwin.h"
#include "qmcommon/OwnModule.h"
#include "vkgrafic/Display.h"

#include <algorithm>
#include <vector>

namespace
{

constexpr int kLargeFrom = 144;      // dots per inch
constexpr DWORD kDisabledShare = 96; // of 256: how much of a disabled icon covers the background

BITMAPINFO PixelsOf(int size)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size;
    info.bmiHeader.biHeight = -size;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

// An icon without transparency of its own covers what its mask leaves.
DWORD Disabled(DWORD pixel, bool hasAlpha, bool isMasked)
{
    const DWORD alpha = hasAlpha ? pixel >> 24 : isMasked ? 0 : 255;
    const DWORD grey = (GetRValue(pixel) * 11 + GetGValue(pixel) * 59 + GetBValue(pixel) * 30) / 100; // BGR
    return alpha * kDisabledShare / 256 << 24 | grey << 16 | grey << 8 | grey;
}

HICON MakeDisabled(HICON icon, int size)
{
    ICONINFO parts = {};
    if (!::GetIconInfo(icon, &parts))
        return nullptr;
    CBitmap color;
    CBitmap mask;
    color.Attach(parts.hbmColor);
    mask.Attach(parts.hbmMask);
    const CClientDC dc(nullptr);
    BITMAPINFO info = PixelsOf(size);
    const UINT lines = static_cast<UINT>(size);
    std::vector<DWORD> pixels(static_cast<std::size_t>(size) * lines);
    std::vector<DWORD> masked(pixels.size());
    ::GetDIBits(dc, color, 0, lines, pixels.data(), &info, DIB_RGB_COLORS);
    ::GetDIBits(dc, mask, 0, lines, masked.data(), &info, DIB_RGB_COLORS);
    bool hasAlpha = false;
    for (const DWORD pixel : pixels)
        hasAlpha = hasAlpha || pixel >> 24 != 0;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = Disabled(pixels[i], hasAlpha, (masked[i] & 0xFFFFFF) != 0);

    CBitmap grey;
    void* bits = nullptr;
    if (!grey.Attach(::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0)))
        return nullptr;
    std::copy(pixels.begin(), pixels.end(), static_cast<DWORD*>(bits));
    parts.hbmColor = grey;
    return ::CreateIconIndirect(&parts);
}

} // namespace

HICON QmLoadIcon(const char* name, int size, QmIconLook look)
{
    if (!name)
        return nullptr;
    HANDLE loaded = ::LoadImage(AfxGetResourceHandle(), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
    if (!loaded)
        loaded = ::LoadImage(PlatformModule(), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
    const HICON icon = static_cast<HICON>(loaded);
    if (!icon || look == QmIconLook::Normal)
        return icon;
    const HICON disabled = MakeDisabled(icon, size);
    ::DestroyIcon(icon);
    return disabled;
}

int QmIconSize(HWND hwnd)
{
    return VkGrafic::GetResolution(hwnd) >= kLargeFrom ? 32 : 16;
}
