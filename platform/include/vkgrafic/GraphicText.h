// Draws 8-bit text of any length and content.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

// Draws into a device context, in its font, colours and background mode; the text alignment is the default
// one (left, top). A CDC converts to the handle taken here.
//
// Text is `length` bytes in the system's ANSI code page, not terminated, and every byte is one character: no
// two are taken for a pair, and none is left out. A tab shows as a blank, a control character or a byte that
// the code page does not define as a middle dot.
class QMPLATFORM_API GraphicText
{
public:
    explicit GraphicText(HDC dc);

    // One line within `rect`, clipped to it. `flags` are those of DrawText: DT_LEFT, DT_CENTER or DT_RIGHT;
    // DT_TOP, DT_VCENTER or DT_BOTTOM; DT_END_ELLIPSIS, which shows the beginning and "..." when the text
    // does not fit. "&" is an ordinary character and DT_SINGLELINE goes without saying; other flags are
    // ignored. The width of the text, no more than that of `rect`.
    int Draw(const char* text, int length, const RECT& rect, UINT flags) const;

    // One line from (x, y), every byte in a cell `cellWidth` pixels wide; only what lies within the clip box
    // is drawn, however long the text is.
    void DrawCells(const char* text, int length, int x, int y, int cellWidth) const;

    // Pixels; 0 for an empty text.
    int GetWidth(const char* text, int length) const;

private:
    int DrawLong(const char* text, int length, const RECT& rect, UINT flags) const;

    HDC m_dc;
};
