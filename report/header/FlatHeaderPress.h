// A press of the mouse on an item of the flat header.
#pragma once

#include "report/header/EscapeHook.h"
#include "report/header/FlatHeaderCtrl.h"
#include "report/header/HeaderDragWnd.h"

#include <optional>

struct CFlatHeaderCtrl::Press
{
    Press(int pressedItem, CPoint pressPoint) : index(pressedItem), point(pressPoint) {}

    int index;
    CPoint point;
    bool inside = true;     // the mouse is on the item
    bool forbidden = false; // to be dragged
    CPoint grip;            // of the mouse in the dragged window
    CFHDragWnd window;      // exists while dragging
    std::optional<EscapeHook> escape;

    bool IsDrag() const { return window.m_hWnd != nullptr; }
};
