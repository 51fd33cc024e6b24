// How one item of the flat header looks.
#pragma once

#include "afxwin.h"

#include <commctrl.h>
#include <string>

namespace VkGrafic
{
class WindowColors;
}

enum class HeaderLook
{
    Plain,
    Pressed,
    Removed, // the item will go when the mouse lets go of it
};

struct HeaderFace
{
    std::string caption;
    int format = 0;              // HDF flags: alignment, image and sort mark
    HIMAGELIST images = nullptr; // of the header; not owned
    int image = 0;
    bool filtered = false;
    bool marked = false; // keys change this column
    int dpi = 96;        // dots per inch, by which margins and marks grow
    HeaderLook look = HeaderLook::Plain;
};

// In the font of `dc`, which is otherwise left as it was. Marks stand at the right
// end, the image at the left; what is left between them is the caption's.
void DrawHeaderFace(CDC& dc, const CRect& rect, const HeaderFace& face, const VkGrafic::WindowColors& colors);

// Where no item is.
void DrawHeaderGround(CDC& dc, const CRect& rect, const VkGrafic::WindowColors& colors);
