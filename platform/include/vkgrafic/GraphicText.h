// Draws 8-bit text of any length and content.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

// How wide each byte is in a font, and its glyph: lets GraphicText draw many short texts without asking the
// system about each of them.
class QMPLATFORM_API GraphicFont
{
public:
    GraphicFont() = default;

    // The font that is selected in `dc`.
    explicit GraphicFont(HDC dc);

    // Pixels; 0 for an empty text.
    int GetWidth(const char* text, int length) const;

private:
    friend class GraphicText;

    int m_height = 0;
    int m_widths[256] = {};
    WORD m_glyphs[256] = {}; // 0xFFFF: has to be drawn as a character
};

// Draws into a device context, in its font, colours and background mode; the text alignment is the default
// one (left, top). A CDC converts to the handle taken here.
//
// Text is `length` bytes in the system's ANSI code page, not terminated, and every byte is one character: no
// two are taken for a pair, and none is left out. A tab shows as a blank, a control character or a byte that
// the code page does not define as a middle dot.
class QMPLATFORM_API GraphicText
{
public:
    // `font` is what is selected in `dc`, or null; not owned.
    explicit GraphicText(HDC dc, const GraphicFont* font = nullptr);

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
    bool DrawByFont(const char* text, int length, const RECT& rect, UINT flags, int& width) const;
    int DrawLong(const char* text, int length, const RECT& rect, UINT flags) const;

    HDC m_dc;
    const GraphicFont* m_font;
};
