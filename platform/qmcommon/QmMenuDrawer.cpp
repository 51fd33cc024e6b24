#include "qmcommon/QmMenuDrawer.h"

#include "qmcommon/MenuImage.h"
#include "qmcommon/MenuItemDraw.h"
#include "qmcommon/MenuText.h"
#include "qmcommon/QmIcon.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>

namespace
{

MENUITEMINFOA MakeInfo(UINT mask)
{
    MENUITEMINFOA info = {};
    info.cbSize = sizeof(info);
    info.fMask = mask;
    return info;
}

// Of a menu's edges, and between its items; null for the system's.
void SetBackground(HMENU menu, HBRUSH brush)
{
    MENUINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIM_BACKGROUND;
    info.hbrBack = brush;
    ::SetMenuInfo(menu, &info);
}

// What the system leaves light of a dark menu bar: the line below it, and in part what is right of its items.
void PaintBarRest(HWND hwnd)
{
    MENUBARINFO bar = {};
    bar.cbSize = sizeof(bar);
    RECT window = {};
    RECT last = {};
    const HMENU menu = ::GetMenu(hwnd);
    const int count = ::GetMenuItemCount(menu);
    if (count <= 0 || !::GetMenuBarInfo(hwnd, OBJID_MENU, 0, &bar) || !::GetWindowRect(hwnd, &window) ||
        !::GetMenuItemRect(hwnd, menu, static_cast<UINT>(count - 1), &last))
        return;
    const HBRUSH brush = VkGrafic::WindowColors(hwnd).Brush(VkGrafic::UiColor::Menu);
    const HDC dc = ::GetWindowDC(hwnd);
    RECT rest = {last.right, last.top, bar.rcBar.right, bar.rcBar.bottom};
    RECT line = {bar.rcBar.left, bar.rcBar.bottom, bar.rcBar.right, bar.rcBar.bottom + 1};
    for (RECT* const part : {&rest, &line})
    {
        ::OffsetRect(part, -window.left, -window.top);
        ::FillRect(dc, part, brush);
    }
    ::ReleaseDC(hwnd, dc);
}

std::string GetItemText(HMENU menu, UINT position)
{
    const int length = ::GetMenuStringA(menu, position, nullptr, 0, MF_BYPOSITION);
    if (length <= 0)
        return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(
        static_cast<std::size_t>(::GetMenuStringA(menu, position, text.data(), length + 1, MF_BYPOSITION)));
    return text;
}

// The answer to WM_MENUCHAR: a key that names one item executes it, else it goes from one to the next. The
// system looks for access keys itself only in items that it draws.
LRESULT AnswerMenuChar(HMENU menu, char key)
{
    std::vector<std::string> captions;
    int selected = -1;
    const UINT count = static_cast<UINT>(std::max(::GetMenuItemCount(menu), 0));
    for (UINT position = 0; position < count; ++position)
    {
        captions.push_back(GetItemText(menu, position));
        if ((::GetMenuState(menu, position, MF_BYPOSITION) & MF_HILITE) != 0)
            selected = static_cast<int>(position);
    }
    const qmcommon::AccessItem item = qmcommon::FindAccessItem(captions, selected, key);
    if (item.position < 0)
        return MAKELRESULT(0, MNC_IGNORE);
    return MAKELRESULT(item.position, item.only ? MNC_EXECUTE : MNC_SELECT);
}

} // namespace

struct CQmMenuDrawer::Item
{
    HMENU menu;
    UINT type;      // as it was
    ULONG_PTR data; // as it was
    bool isDark;    // and so is the menu's background
    qmcommon::MenuItem look;
};

CQmMenuDrawer::CQmMenuDrawer() = default;

CQmMenuDrawer::~CQmMenuDrawer()
{
    while (!m_items.empty())
        GiveBackItems(m_items.front()->menu);
}

BOOL CQmMenuDrawer::OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message)
    {
    case WM_INITMENUPOPUP:
        *result = CallWindow(message, wParam, lParam); // the window may yet fill the menu
        if (HIWORD(lParam) == FALSE)
            TakeItems(reinterpret_cast<HMENU>(wParam), false);
        return TRUE;
    case WM_SYSCOLORCHANGE:
        TakeBar();
        return FALSE;
    case WM_NCPAINT:
    case WM_NCACTIVATE:
        *result = CallWindow(message, wParam, lParam);
        if (HasDarkBar())
            PaintBarRest(GetHookedWindow());
        return TRUE;
    case WM_UNINITMENUPOPUP:
        GiveBackItems(reinterpret_cast<HMENU>(wParam));
        return FALSE;
    case WM_MEASUREITEM: {
        MEASUREITEMSTRUCT& measure = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        const Item* const item = measure.CtlType == ODT_MENU ? FindItem(measure.itemData) : nullptr;
        if (!item)
            return FALSE;
        qmcommon::MeasureMenuItem(item->look, measure);
        *result = TRUE;
        return TRUE;
    }
    case WM_DRAWITEM: {
        const DRAWITEMSTRUCT& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        const Item* const item = draw.CtlType == ODT_MENU ? FindItem(draw.itemData) : nullptr;
        if (!item)
            return FALSE;
        qmcommon::DrawMenuItem(item->look, draw, VkGrafic::WindowColors(GetHookedWindow()));
        *result = TRUE;
        return TRUE;
    }
    case WM_MENUCHAR: {
        const HMENU menu = reinterpret_cast<HMENU>(lParam);
        for (const std::unique_ptr<Item>& item : m_items)
        {
            if (item->menu == menu)
            {
                *result = AnswerMenuChar(menu, static_cast<char>(LOWORD(wParam)));
                return TRUE;
            }
        }
        return FALSE;
    }
    default:
        return FALSE;
    }
}

bool CQmMenuDrawer::HasDarkBar() const
{
    const auto isInBar = [](const std::unique_ptr<Item>& item) { return item->look.inBar; };
    return std::any_of(m_items.begin(), m_items.end(), isInBar);
}

// The system draws the bar, unless it is to be dark.
void CQmMenuDrawer::TakeBar()
{
    const HWND hwnd = GetHookedWindow();
    const bool hasBar = (::GetWindowLong(hwnd, GWL_STYLE) & WS_CHILD) == 0 && ::GetMenu(hwnd);
    if (!hasBar)
        return;
    if (VkGrafic::WindowColors(hwnd).IsDark())
        TakeItems(::GetMenu(hwnd), true);
    else
        GiveBackItems(::GetMenu(hwnd));
    ::DrawMenuBar(hwnd);
}

void CQmMenuDrawer::TakeItems(HMENU menu, bool isBar)
{
    GiveBackItems(menu); // an end that was not reported
    const VkGrafic::WindowColors colors(GetHookedWindow());
    if (colors.IsDark())
        SetBackground(menu, colors.Brush(VkGrafic::UiColor::Menu));
    const UINT count = static_cast<UINT>(std::max(::GetMenuItemCount(menu), 0));
    for (UINT position = 0; position < count; ++position)
    {
        MENUITEMINFOA info = MakeInfo(MIIM_FTYPE | MIIM_DATA | MIIM_BITMAP);
        if (!::GetMenuItemInfoA(menu, position, TRUE, &info))
            continue;
        if ((info.fType & (MFT_OWNERDRAW | MFT_BITMAP)) != 0 || info.hbmpItem)
            continue;
        const char* const image = qmcommon::ImageOf(info.dwItemData);
        const qmcommon::MenuItem look = {GetItemText(menu, position), (info.fType & MFT_SEPARATOR) != 0,
                                         isBar, (info.fType & MFT_RADIOCHECK) != 0, image ? image : ""};
        auto item = std::make_unique<Item>(Item{menu, info.fType, info.dwItemData, colors.IsDark(), look});
        info.fMask = MIIM_FTYPE | MIIM_DATA; // the text stays
        info.fType |= MFT_OWNERDRAW;
        info.dwItemData = reinterpret_cast<ULONG_PTR>(item.get());
        if (::SetMenuItemInfoA(menu, position, TRUE, &info))
            m_items.push_back(std::move(item));
    }
    AlignCaptions(menu);
}

// They begin in one line: beside the images if there are any.
void CQmMenuDrawer::AlignCaptions(HMENU menu)
{
    const auto isOf = [menu](const std::unique_ptr<Item>& item) { return item->menu == menu; };
    const auto hasImage = [&](const std::unique_ptr<Item>& item) {
        return isOf(item) && !item->look.image.empty();
    };
    if (std::none_of(m_items.begin(), m_items.end(), hasImage))
        return;
    for (const std::unique_ptr<Item>& item : m_items)
        if (isOf(item))
            item->look.imageSize = QmIconSize(GetHookedWindow());
}

void CQmMenuDrawer::GiveBackItems(HMENU menu)
{
    const auto isOf = [menu](const std::unique_ptr<Item>& item) { return item->menu == menu; };
    const auto first = std::find_if(m_items.begin(), m_items.end(), isOf);
    if (first == m_items.end())
        return;
    if ((*first)->isDark)
        SetBackground(menu, nullptr);
    const UINT count = static_cast<UINT>(std::max(::GetMenuItemCount(menu), 0));
    for (UINT position = 0; position < count; ++position)
    {
        MENUITEMINFOA info = MakeInfo(MIIM_DATA);
        const Item* const item =
            ::GetMenuItemInfoA(menu, position, TRUE, &info) ? FindItem(info.dwItemData) : nullptr;
        if (!item)
            continue;
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        info.fType = item->type;
        info.dwItemData = item->data;
        ::SetMenuItemInfoA(menu, position, TRUE, &info);
    }
    std::erase_if(m_items, isOf);
}

// The record that an item's data points to; null for data of others.
const CQmMenuDrawer::Item* CQmMenuDrawer::FindItem(ULONG_PTR data) const
{
    for (const std::unique_ptr<Item>& item : m_items)
    {
        if (reinterpret_cast<ULONG_PTR>(item.get()) == data)
            return item.get();
    }
    return nullptr;
}
