#include "report/model/Properties.h"

#include "report/model/CellCodec.h"

namespace report
{

namespace
{

constexpr std::int64_t kLastStyle = 2; // of grids and trees
constexpr std::int64_t kLastColor = 0xFFFFFF;

std::int64_t AddressOf(const ZEMA::String& text)
{
    return reinterpret_cast<std::intptr_t>(text.c_str());
}

bool SetStyle(std::int64_t& style, std::int64_t value)
{
    if (value < 0 || value > kLastStyle)
        return false;
    style = value;
    return true;
}

} // namespace

bool Properties::SetText(ZEMA::String& text, std::int64_t value)
{
    const char* const address = reinterpret_cast<const char*>(static_cast<std::intptr_t>(value));
    if (!address)
        return false;
    text = address;
    return true;
}

bool Properties::Set(std::uint64_t id, std::int64_t value)
{
    switch (id)
    {
    case RVP_MARGIN:
        return value >= 0 && value <= Sizes::kMaxSize && m_sizes.SetMargin(static_cast<int>(value));
    case RVP_CHECKSIZE:
        m_sizes.SetCheckSize(static_cast<int>(value & 0xFFFF), static_cast<int>(value >> 16 & 0xFFFF));
        return true;
    case RVP_EMPTYTEXT:
        return SetText(emptyText, value);
    case RVP_GRIDSTYLE:
        return SetStyle(gridStyle, value);
    case RVP_SORTCAPTION:
        return SetText(sortCaption, value);
    case RVP_NOTIFYMASK:
        notifyMask = static_cast<std::uint32_t>(value);
        return true;
    case RVP_UNUSED:
        return true;
    case RVP_CELLSEPARATOR:
        return SetCellSeparator(static_cast<char>(value));
    case RVP_SHOWPREVIEW:
        m_view.showPreviews = value != 0;
        return true;
    case RVP_DOUBLEBUFFER:
        doubleBuffer = value != 0;
        return true;
    case RVP_TREESTYLE:
        return SetStyle(treeStyle, value);
    case RVP_IMAGEMODE:
        imageMode = value;
        return true;
    case RVP_COLOR:
        color = static_cast<COLORREF>(value);
        return true;
    case RVP_STRINGSEPARATOR:
        stringSeparator = static_cast<char>(value);
        return true;
    case RVP_TREEINDENT:
        return SetText(treeIndent, value);
    case RVP_FITITEMHEIGHT:
        m_sizes.FitItemHeight(value != 0);
        return true;
    case RVP_KEEPIMAGES:
        keepImages = value != 0;
        return true;
    case RVP_INACTIVEHIGHLIGHT:
        if (value < -1 || value > kLastColor)
            return false;
        inactiveHighlight = value;
        return true;
    case RVP_KEYS:
        if (value < 0 || value > RVK_ALL)
            return false;
        keys = static_cast<unsigned>(value);
        return true;
    case RVP_EDITING:
        if (value < 0 || value > RVED_ALL)
            return false;
        editing = static_cast<unsigned>(value);
        return true;
    default:
        return false;
    }
}

bool Properties::Get(std::uint64_t id, std::int64_t& value) const
{
    const auto is = [&value](std::int64_t current) {
        value = current;
        return true;
    };
    switch (id)
    {
    case RVP_MARGIN:
        return is(m_view.margin);
    case RVP_CHECKSIZE:
        return is(std::int64_t{m_view.checkHeight} << 16 | m_view.checkWidth);
    case RVP_EMPTYTEXT:
        return is(AddressOf(emptyText));
    case RVP_GRIDSTYLE:
        return is(gridStyle);
    case RVP_SORTCAPTION:
        return is(AddressOf(sortCaption));
    case RVP_NOTIFYMASK:
        return is(notifyMask);
    case RVP_UNUSED:
        return is(0);
    case RVP_CELLSEPARATOR:
        return is(static_cast<unsigned char>(CellSeparator()));
    case RVP_SHOWPREVIEW:
        return is(m_view.showPreviews);
    case RVP_DOUBLEBUFFER:
        return is(doubleBuffer);
    case RVP_TREESTYLE:
        return is(treeStyle);
    case RVP_IMAGEMODE:
        return is(imageMode);
    case RVP_COLOR:
        return is(color);
    case RVP_STRINGSEPARATOR:
        return is(static_cast<unsigned char>(stringSeparator));
    case RVP_TREEINDENT:
        return is(AddressOf(treeIndent));
    case RVP_FITITEMHEIGHT:
        return is(m_sizes.FitsItemHeight());
    case RVP_KEEPIMAGES:
        return is(keepImages);
    case RVP_INACTIVEHIGHLIGHT:
        return is(inactiveHighlight);
    case RVP_KEYS:
        return is(keys);
    case RVP_EDITING:
        return is(editing);
    default:
        return false;
    }
}

} // namespace report
