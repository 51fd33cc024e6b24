#include "report/model/Sizes.h"

#include <algorithm>

namespace report
{

namespace
{

// Pixels at 96 dots per inch
constexpr int kItemHeight = 10;
constexpr int kMargin = 6;
constexpr int kCheckSize = 8;
constexpr int kRoomForText = 5; // above and below it, and for a line of the grid

bool IsSize(int pixels)
{
    return pixels >= 0 && pixels <= Sizes::kMaxSize;
}

} // namespace

void Sizes::SetResolution(int dpi)
{
    m_view.dpi = std::max(1, dpi);
    Update();
}

bool Sizes::SetItemHeight(int height)
{
    if (!IsSize(height))
        return false;
    m_itemHeight = height;
    m_change = 0;
    m_fitsItemHeight = false;
    Update();
    return true;
}

bool Sizes::SetMargin(int margin)
{
    if (!IsSize(margin))
        return false;
    m_margin = margin;
    Update();
    return true;
}

void Sizes::SetCheckSize(int width, int height)
{
    m_checkWidth = width;
    m_checkHeight = height;
    Update();
}

void Sizes::ResetCheckSize()
{
    m_checkWidth.reset();
    m_checkHeight.reset();
    Update();
}

void Sizes::ChangeItemHeight(int by)
{
    m_change += by;
    Update();
}

void Sizes::FitItemHeight(bool fits)
{
    m_fitsItemHeight = fits;
    Update();
}

void Sizes::SetFontHeight(int height)
{
    m_fontHeight = height;
    Update();
}

void Sizes::SetImageSize(int width, int height)
{
    m_view.imageWidth = width;
    m_view.imageHeight = height;
    Update();
}

void Sizes::Update()
{
    const auto scaled = [this](int pixels) { return Scale(pixels, m_view.dpi); };
    m_view.margin = m_margin.value_or(scaled(kMargin));
    m_view.checkWidth = m_checkWidth.value_or(scaled(kCheckSize));
    m_view.checkHeight = m_checkHeight.value_or(scaled(kCheckSize));
    const int height = m_fitsItemHeight ? FittingHeight() : m_itemHeight.value_or(scaled(kItemHeight));
    m_view.itemHeight = std::clamp(height + m_change, 0, kMaxSize);
}

int Sizes::FittingHeight() const
{
    const int text = m_fontHeight + Scale(kRoomForText, m_view.dpi);
    const int others =
        std::max({m_view.imageHeight, m_view.checkHeight, Scale(kTreeBoxSize, m_view.dpi)}) + 2;
    return std::max(text, others);
}

} // namespace report
