#include "qmcommon/MenuItemDraw.h"

#include "afxwin.h"
#include "qmcommon/MenuText.h"
#include "vkgrafic/DrawingGuards.h"

#include <algorithm>

namespace qmcommon
{
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

int MarkWidth()
{
    return ::GetSystemMetrics(SM_CXMENUCHECK) + 2 * kMargin;
}

SIZE MeasureText(HDC dc, const std::string& text, UINT flags)
{
    RECT rect = {};
    ::DrawTextA(dc, text.c_str(), -1, &rect, flags | DT_CALCRECT);
    return {rect.right, rect.bottom};
}

void DrawSeparator(HDC dc, RECT rect)
{
    rect.top = (rect.top + rect.bottom) / 2 - 1;
    ::DrawEdge(dc, &rect, EDGE_ETCHED, BF_TOP);
}

// The system draws marks in black on white only: as a bitmap of one bit they take the text's colours.
void DrawMark(HDC dc, const RECT& item, bool radio)
{
    const int width = ::GetSystemMetrics(SM_CXMENUCHECK);
    const int height = ::GetSystemMetrics(SM_CYMENUCHECK);
    CBitmap bitmap;
    CDC memory;
    if (!bitmap.CreateBitmap(width, height, 1, 1, nullptr) || !memory.Attach(::CreateCompatibleDC(dc)))
        return;
    const VkGrafic::Selected selected(memory, bitmap);
    RECT mark = {0, 0, width, height};
    ::DrawFrameControl(memory, &mark, DFC_MENU, radio ? DFCS_MENUBULLET : DFCS_MENUCHECK);
    ::BitBlt(dc, item.left + kMargin, (item.top + item.bottom - height) / 2, width, height, memory, 0, 0,
             SRCCOPY);
}

} // namespace

void MeasureMenuItem(const std::string& text, bool separator, MEASUREITEMSTRUCT& measure)
{
    if (separator)
    {
        measure.itemWidth = 0;
        measure.itemHeight = static_cast<UINT>(::GetSystemMetrics(SM_CYMENU) / 2);
        return;
    }
    const MenuFont font;
    const CClientDC dc(nullptr);
    const VkGrafic::Selected selected(dc, font.Get());
    const MenuText columns = SplitMenuText(text);
    const SIZE caption = MeasureText(dc, columns.caption, kCaptionFlags);
    const SIZE shortcut = MeasureText(dc, columns.shortcut, kShortcutFlags);

    const int gap = columns.shortcut.empty() ? 0 : kColumnGap;
    const int height = std::max(static_cast<int>(caption.cy), ::GetSystemMetrics(SM_CYMENUCHECK));
    measure.itemWidth = static_cast<UINT>(MarkWidth() + caption.cx + gap + shortcut.cx + kRightMargin);
    measure.itemHeight = static_cast<UINT>(height + kMargin);
}

void DrawMenuItem(const std::string& text, bool separator, bool radio, const DRAWITEMSTRUCT& draw)
{
    const MenuFont font; // deleted only after it is selected no longer
    const VkGrafic::SavedState saved(draw.hDC);
    const bool selected = (draw.itemState & ODS_SELECTED) != 0 && !separator;
    const bool disabled = (draw.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    const int background = selected ? COLOR_HIGHLIGHT : COLOR_MENU;
    const int foreground = disabled ? COLOR_GRAYTEXT : selected ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT;
    ::FillRect(draw.hDC, &draw.rcItem, ::GetSysColorBrush(background));
    ::SetBkColor(draw.hDC, ::GetSysColor(background));
    ::SetTextColor(draw.hDC, ::GetSysColor(foreground));
    if (separator)
    {
        DrawSeparator(draw.hDC, draw.rcItem);
    }
    else
    {
        if ((draw.itemState & ODS_CHECKED) != 0)
            DrawMark(draw.hDC, draw.rcItem, radio);
        ::SetBkMode(draw.hDC, TRANSPARENT);
        ::SelectObject(draw.hDC, font.Get());
        RECT rect = draw.rcItem;
        rect.left += MarkWidth();
        rect.right -= kRightMargin;
        const MenuText columns = SplitMenuText(text);
        const UINT hidePrefix = (draw.itemState & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0;
        ::DrawTextA(draw.hDC, columns.caption.c_str(), -1, &rect, kCaptionFlags | hidePrefix);
        ::DrawTextA(draw.hDC, columns.shortcut.c_str(), -1, &rect, kShortcutFlags);
    }
}

} // namespace qmcommon
