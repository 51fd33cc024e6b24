// The colours of dark windows, and how well a text can be read. No window system.
#pragma once

#include "wintypes.h"
#include "zemacore/ZemaApi.h"

namespace VkGrafic
{

// What a colour is for. Each has its counterpart among the system's (WindowColors.h).
enum class UiColor
{
    Window,
    WindowText,
    Highlight,
    HighlightText,
    InactiveHighlight, // of selected rows without the focus
    InactiveHighlightText,
    Face, // of bars, tabs and headers
    FaceText,
    GreyText,
    Link, // a text on a bar that leads somewhere
    Light,
    Edge, // a line between two areas
    FaceHighlight,
    DarkShadow,
    Menu,
    MenuText,
    Notice,
    NoticeText,
    Count
};

// Each text has a contrast of at least 4.5 : 1 with all that it stands on.
QMPLATFORM_API COLORREF DarkColor(UiColor color);

// The ratio of two colours' luminances, 1 to 21, as the Web Content Accessibility Guidelines count it.
QMPLATFORM_API double Contrast(COLORREF a, COLORREF b);

// That colour, or the nearest one between it and white or black that has a contrast of 4.5 : 1.
QMPLATFORM_API COLORREF ReadableColor(COLORREF text, COLORREF background);

} // namespace VkGrafic
