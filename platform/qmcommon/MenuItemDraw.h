// How an item of a popup menu looks.
#pragma once

#include <string>
#include <windows.h>

namespace qmcommon
{

// Fills in the item's width and height.
void MeasureMenuItem(const std::string& text, bool separator, MEASUREITEMSTRUCT& measure);

// Draws the whole item but for the arrow of a submenu, which the system adds. `radio` chooses a bullet in
// place of the check mark.
void DrawMenuItem(const std::string& text, bool separator, bool radio, const DRAWITEMSTRUCT& draw);

} // namespace qmcommon
