#include "qmcommon/MenuItemDraw.h"

#include "afxwin.h"
#include "qmcommon/MenuText.h"
#include "qmcommon/QmIcon.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/WindowColors.h"
#include "zemacore/WideText.h"

#include <algorithm>

namespace qmcommon
{

using VkGrafic::UiColor;

namespace
{

constexpr UINT kCaptionFlags = DT_SINGLELINE | DT_VCENTER | DT_LEFT;
constexpr UINT kShortcutFlags = DT_SINGLELINE | DT_VCENTER | DT_RIGHT | DT_NOPREFIX;
constexpr int kMargin = 4;       // around a mark, and above and below a text together
constexpr int kColumnGap = 16;   // between caption and shortcut
constexpr int kRightMargin = 16; // room for a submenu's arrow

// The system's menu font.
class MenuFont
{
public:
    MenuFont()
    {
        NONCLIENTMETRICSA metrics = {};
        metrics.cbSize = sizeof(metrics);
        if (::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0))
            m_font = ::CreateFontIndirectA(&metrics.lfMenuFont);
    }
    ~MenuFont() { ::DeleteObject(m_font); }
    MenuFont(const MenuFont&) = delete;
    MenuFont& operator=(const MenuFont&) = delete;

    HFONT Get() const { return m_font; }

private:
    HFONT m_font = nullptr;
};

// The column of marks and images.
int MarkWidth(const MenuItem& item)
{
    return std::max(::GetSystemMetrics(SM_CXMENUCHECK), item.imageSize) + 2 * kMargin;
}

// Wide, because the narrow calls do not know a program whose texts are UTF-8.
void DrawColumn(HDC dc, const std::string& text, RECT& rect, UINT flags)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    ::DrawTextW(dc, wide.c_str(), -1, &rect, flags);
}

SIZE MeasureText(HDC dc, const std::string& text, UINT flags)
{
    RECT rect = {};
    DrawColumn(dc, text, rect, flags | DT_CALCRECT);
    return {rect.right, rect.bottom};
}

void Fill(HDC dc, const RECT& rect, COLORREF color)
{
    ::SetBkColor(dc, color);
    ::ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
}

void DrawSeparator(HDC dc, RECT rect, const VkGrafic::WindowColors& colors)
{
    rect.top = (rect.top + rect.bottom) / 2 - 1;
    if (!colors.IsDark())
    {
        ::DrawEdge(dc, &rect, EDGE_ETCHED, BF_TOP);
        return;
    }
    rect.bottom = rect.top + 1;
    Fill(dc, rect, colors[UiColor::Edge]);
}

// The system draws marks in black on white only: as a bitmap of one bit they take the text's colours.
void DrawMark(HDC dc, const MenuItem& item, const RECT& rect)
{
    const int width = ::GetSystemMetrics(SM_CXMENUCHECK);
    const int height = ::GetSystemMetrics(SM_CYMENUCHECK);
    CBitmap bitmap;
    CDC memory;
    if (!bitmap.CreateBitmap(width, height, 1, 1, nullptr) || !memory.Attach(::CreateCompatibleDC(dc)))
        return;
    const VkGrafic::Selected selected(memory, bitmap);
    RECT mark = {0, 0, width, height};
    ::DrawFrameControl(memory, &mark, DFC_MENU, item.radio ? DFCS_MENUBULLET : DFCS_MENUCHECK);
    ::BitBlt(dc, rect.left + (MarkWidth(item) - width) / 2, (rect.top + rect.bottom - height) / 2, width,
             height, memory, 0, 0, SRCCOPY);
}

// On the menu's background in a selected item as well, where its colours can be told apart.
void DrawImage(HDC dc, const MenuItem& item, const RECT& rect, bool disabled, COLORREF background)
{
    const HICON icon =
        QmLoadIcon(item.image.c_str(), item.imageSize, disabled ? QmIconLook::Disabled : QmIconLook::Normal);
    if (!icon)
        return;
    const RECT column = {rect.left, rect.top, rect.left + MarkWidth(item), rect.bottom};
    Fill(dc, column, background);
    ::DrawIconEx(dc, (column.left + column.right - item.imageSize) / 2,
                 (rect.top + rect.bottom - item.imageSize) / 2, icon, item.imageSize, item.imageSize, 0,
                 nullptr, DI_NORMAL);
    ::DestroyIcon(icon);
}

void DrawInBar(HDC dc, const MenuItem& item, RECT rect, UINT hidePrefix)
{
    const MenuFont font;
    const VkGrafic::Selected selected(dc, font.Get());
    ::SetBkMode(dc, TRANSPARENT);
    DrawColumn(dc, item.text, rect, DT_SINGLELINE | DT_VCENTER | DT_CENTER | hidePrefix);
}

void DrawTexts(HDC dc, const MenuItem& item, RECT rect, UINT hidePrefix)
{
    const MenuFont font; // deleted only after it is selected no longer
    const VkGrafic::Selected selected(dc, font.Get());
    ::SetBkMode(dc, TRANSPARENT);
    rect.left += MarkWidth(item);
    rect.right -= kRightMargin;
    const MenuText columns = SplitMenuText(item.text);
    DrawColumn(dc, columns.caption, rect, kCaptionFlags | hidePrefix);
    DrawColumn(dc, columns.shortcut, rect, kShortcutFlags);
}

} // namespace

void MeasureMenuItem(const MenuItem& item, MEASUREITEMSTRUCT& measure)
{
    if (item.separator)
    {
        measure.itemWidth = 0;
        measure.itemHeight = static_cast<UINT>(::GetSystemMetrics(SM_CYMENU) / 2);
        return;
    }
    const MenuFont font;
    const CClientDC dc(nullptr);
    const VkGrafic::Selected selected(dc, font.Get());
    const MenuText columns = SplitMenuText(item.text);
    const SIZE caption = MeasureText(dc, columns.caption, kCaptionFlags);
    const SIZE shortcut = MeasureText(dc, columns.shortcut, kShortcutFlags);
    if (item.inBar) // the system adds what lies between two of them
    {
        measure.itemWidth = static_cast<UINT>(caption.cx);
        measure.itemHeight = static_cast<UINT>(::GetSystemMetrics(SM_CYMENU));
        return;
    }

    const int gap = columns.shortcut.empty() ? 0 : kColumnGap;
    const int height =
        std::max({static_cast<int>(caption.cy), ::GetSystemMetrics(SM_CYMENUCHECK), item.imageSize});
    measure.itemWidth = static_cast<UINT>(MarkWidth(item) + caption.cx + gap + shortcut.cx + kRightMargin);
    measure.itemHeight = static_cast<UINT>(height + kMargin);
}

void DrawMenuItem(const MenuItem& item, const DRAWITEMSTRUCT& draw, const VkGrafic::WindowColors& colors)
{
    const VkGrafic::SavedState saved(draw.hDC);
    const bool selected = (draw.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) != 0 && !item.separator;
    const UINT hidePrefix = (draw.itemState & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0;
    const bool disabled = (draw.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    const UiColor foreground = disabled   ? UiColor::GreyText
                               : selected ? UiColor::HighlightText
                                          : UiColor::MenuText;
    Fill(draw.hDC, draw.rcItem, colors[selected ? UiColor::Highlight : UiColor::Menu]);
    ::SetTextColor(draw.hDC, colors[foreground]);
    if (item.separator)
    {
        DrawSeparator(draw.hDC, draw.rcItem, colors);
        return;
    }
    if (item.inBar)
    {
        DrawInBar(draw.hDC, item, draw.rcItem, hidePrefix);
        return;
    }
    if ((draw.itemState & ODS_CHECKED) != 0)
        DrawMark(draw.hDC, item, draw.rcItem);
    else if (!item.image.empty())
        DrawImage(draw.hDC, item, draw.rcItem, disabled, colors[UiColor::Menu]);
    DrawTexts(draw.hDC, item, draw.rcItem, hidePrefix);
}

} // namespace qmcommon
