#include "report/ImageCopies.h"

#include <algorithm>
#include <utility>

namespace report
{

namespace
{

constexpr std::uint32_t kColor = 0x00FFFFFF; // of a pixel; above it is its alpha
constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr int kMostImages = 1000; // beyond it a strip of them may be too wide

// No printer, and not mirrored.
bool IsScreen(HDC dc)
{
    return ::GetDeviceCaps(dc, TECHNOLOGY) == DT_RASDISPLAY && ::GetLayout(dc) == 0;
}

} // namespace

void ImageCopies::Forget()
{
    m_dc.DeleteDC(); // before its bitmap
    m_strip.DeleteObject();
    m_states.clear();
    m_isBegun = false;
}

bool ImageCopies::Draw(CDC& dc, CPoint place, int width, CImageList& list, int image)
{
    if (!std::exchange(m_isBegun, true))
        Begin(dc, list);
    if (static_cast<std::size_t>(image) >= m_states.size() || !IsScreen(dc))
        return false;
    State& state = m_states[static_cast<std::size_t>(image)];
    if (state == State::Unknown)
        state = Copy(list, image);
    if (state != State::Copied)
        return false;
    const BLENDFUNCTION byAlpha = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    const int shown = std::min<int>(width, m_size.cx);
    return ::GdiAlphaBlend(dc, place.x, place.y, shown, m_size.cy, m_dc, image * m_size.cx, 0, shown,
                           m_size.cy, byAlpha) != FALSE;
}

// Without states for its images a list draws them all. How many colours there are is asked but once, because
// that takes long.
void ImageCopies::Begin(HDC dc, const CImageList& list)
{
    int cx = 0;
    int cy = 0;
    const int count = list.GetImageCount();
    if (count <= 0 || count > kMostImages || !::ImageList_GetIconSize(list.GetSafeHandle(), &cx, &cy) ||
        ::GetDeviceCaps(dc, BITSPIXEL) < 24)
        return;
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), count * cx, -cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    if (!m_strip.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0)) ||
        !m_dc.CreateCompatibleDC(nullptr))
        return;
    m_dc.SelectObject(&m_strip);
    m_pixels = static_cast<std::uint32_t*>(pixels);
    m_size = CSize(cx, cy);
    m_states.assign(static_cast<std::size_t>(count), State::Unknown);
}

// What looks the same on black as on white is opaque, and what leaves both as they are is transparent.
ImageCopies::State ImageCopies::Copy(CImageList& list, int image)
{
    std::vector<std::uint32_t> onBlack;
    std::vector<std::uint32_t> onWhite;
    DrawFrom(list, image, 0, onBlack);
    DrawFrom(list, image, kColor, onWhite);
    const std::size_t columns = static_cast<std::size_t>(m_size.cx);
    const std::size_t stride = columns * m_states.size();
    for (std::size_t i = 0; i < onBlack.size(); ++i)
    {
        const bool isOpaque = onBlack[i] == onWhite[i];
        if (!isOpaque && (onBlack[i] != 0 || onWhite[i] != kColor))
            return State::Refused;
        m_pixels[i / columns * stride + static_cast<std::size_t>(image) * columns + i % columns] =
            isOpaque ? onBlack[i] | kOpaque : 0;
    }
    return State::Copied;
}

// The image's pixels on a background, row by row.
void ImageCopies::DrawFrom(CImageList& list, int image, std::uint32_t background,
                           std::vector<std::uint32_t>& pixels)
{
    const int left = image * m_size.cx;
    m_dc.FillSolidRect(left, 0, m_size.cx, m_size.cy, static_cast<COLORREF>(background));
    ::ImageList_Draw(list.GetSafeHandle(), image, m_dc, left, 0, ILD_TRANSPARENT);
    ::GdiFlush();
    const std::size_t stride = static_cast<std::size_t>(m_size.cx) * m_states.size();
    for (int y = 0; y < m_size.cy; ++y)
        for (int x = left; x < left + m_size.cx; ++x)
            pixels.push_back(m_pixels[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)] &
                             kColor);
}

} // namespace report
