// Draws 8-bit text of any language, length and content.
#pragma once

#include "zemacore/ZemaApi.h"

#include <memory>
#include <windows.h>

// How wide characters are in a font, and their glyphs: lets GraphicText draw many short texts without asking
// the system about each of them. Copies share what they know. One thread at a time.
class QMPLATFORM_API GraphicFont
{
public:
    GraphicFont() = default;

    // The font that is selected in `dc`.
    explicit GraphicFont(HDC dc);

    // Whether the font, selected in `dc`, has all characters of a text.
    bool Has(HDC dc, const char* text, int length) const;

    struct Data;

private:
    friend class GraphicText;

    std::shared_ptr<Data> m_data; // null for no font
};

// Draws into a device context, in its font, colours and background mode; the text alignment is the default
// one (left, top). A CDC converts to the handle taken here.
//
// Text is `length` bytes, not terminated: UTF-8 if all of it is, else in the system's code page, as
// zemacore/WideText.h has it. A tab shows as a blank, a control character as a middle dot. A character that
// the font does not have is drawn in one that the system links with it; where there is none, as a box.
class QMPLATFORM_API GraphicText
{
public:
    // `font` is what is selected in `dc`, or null; not owned.
    explicit GraphicText(HDC dc, const GraphicFont* font = nullptr);

    // One line within `rect`, clipped to it. `flags` are those of DrawText: DT_LEFT, DT_CENTER or DT_RIGHT;
    // DT_TOP, DT_VCENTER or DT_BOTTOM; DT_END_ELLIPSIS, which shows the beginning and "..." when the text
    // does not fit, and never a part of a character. "&" is an ordinary character and DT_SINGLELINE goes
    // without saying; other flags are ignored. The width of the text, no more than that of `rect`.
    int Draw(const char* text, int length, const RECT& rect, UINT flags) const;

    // As many lines as there are, broken between words where `rect` is too narrow, with a tab every eight
    // characters; if they do not fit, the last one ends in "...".
    void DrawLines(const char* text, int length, const RECT& rect) const;

    // The lines of the text as they are, none broken, with a tab every eight characters. A line that is wider
    // than `rect` ends in "...".
    void DrawWholeLines(const char* text, int length, const RECT& rect) const;

    // What DrawWholeLines needs, in pixels, where a line has `width` of them at most.
    SIZE MeasureWholeLines(const char* text, int length, int width) const;

    // One line from (x, y) whose characters stand in cells `cellWidth` pixels wide, as VkGrafic::TextCells
    // lays them out. With a GraphicFont a character that the font does not have comes from the dialogs' font,
    // which the system links with those of all scripts. Only what lies within the clip box is drawn, however
    // long the text is.
    void DrawCells(const char* text, int length, int x, int y, int cellWidth) const;

    // Pixels; 0 for an empty text. As wide as Draw draws it.
    int GetWidth(const char* text, int length) const;

    // How many bytes of a text in UTF-8 fit into `width` pixels: whole characters only.
    int GetFitting(const char* text, int length, int width) const;

private:
    HDC m_dc;
    GraphicFont::Data* m_font; // null for none
};
