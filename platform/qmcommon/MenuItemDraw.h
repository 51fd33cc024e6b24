// How an item of a menu looks.
#pragma once

#include <string>
#include <windows.h>

namespace VkGrafic
{
class WindowColors;
}

namespace qmcommon
{

struct MenuItem
{
    std::string text;
    bool separator = false;
    bool inBar = false; // of menus, not in a popup menu
    bool radio = false; // a bullet in place of the check mark
    std::string image;  // as QmLoadIcon knows it; empty for none
    int imageSize = 0;  // of the menu's images in pixels; 0 if it has none
};

// Fills in the item's width and height.
void MeasureMenuItem(const MenuItem& item, MEASUREITEMSTRUCT& measure);

// Draws the whole item but for the arrow of a submenu, which the system adds. Where there is a mark, it shows
// in place of the image.
void DrawMenuItem(const MenuItem& item, const DRAWITEMSTRUCT& draw, const VkGrafic::WindowColors& colors);

} // namespace qmcommon
