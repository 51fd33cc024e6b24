#include "vkgrafic/GraphicText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace
{

// Black text on white in memory; tells where it is black.
class GraphicTextTest : public testing::Test
{
protected:
    GraphicTextTest()
    {
        ::SelectObject(m_dc, m_bitmap);
        ::SelectObject(m_dc, ::GetStockObject(ANSI_FIXED_FONT));
        ::SetBkMode(m_dc, TRANSPARENT);
        ::FillRect(m_dc, &m_all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        TEXTMETRICA metrics = {};
        ::GetTextMetricsA(m_dc, &metrics);
        m_charWidth = metrics.tmAveCharWidth;
        m_charHeight = metrics.tmHeight;
    }
    ~GraphicTextTest() override
    {
        ::DeleteDC(m_dc);
        ::DeleteObject(m_bitmap);
    }

    // The smallest rectangle around all black pixels; the bitmap is white again. Empty when there are none.
    RECT TakeInk()
    {
        RECT ink = {};
        for (LONG y = 0; y < m_all.bottom; ++y)
        {
            for (LONG x = 0; x < m_all.right; ++x)
            {
                const RECT pixel = {x, y, x + 1, y + 1};
                if (::GetPixel(m_dc, x, y) == 0)
                    ::UnionRect(&ink, &ink, &pixel);
            }
        }
        ::FillRect(m_dc, &m_all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        return ink;
    }

    RECT Draw(const std::string& text, UINT flags, const RECT& rect)
    {
        GraphicText(m_dc).Draw(text.data(), static_cast<int>(text.size()), rect, flags);
        return TakeInk();
    }

    RECT DrawCells(const std::string& text, int x)
    {
        GraphicText(m_dc).DrawCells(text.data(), static_cast<int>(text.size()), x, 0, m_charWidth);
        return TakeInk();
    }

    RECT m_all = {0, 0, 120, 40};
    HDC m_dc = ::CreateCompatibleDC(nullptr);
    HBITMAP m_bitmap = ::CreateBitmap(120, 40, 1, 32, nullptr);
    int m_charWidth = 0;
    int m_charHeight = 0;
};

TEST_F(GraphicTextTest, ShowsEveryByteInItsCell)
{
    for (int byte = 0; byte < 256; ++byte)
    {
        const bool blank = byte == ' ' || byte == '\t' || byte == 0xA0;
        const std::string text = {' ', static_cast<char>(byte), ' '};
        const RECT ink = DrawCells(text, 0);
        ASSERT_EQ(blank, ::IsRectEmpty(&ink)) << byte;
        EXPECT_TRUE(blank || (ink.left >= m_charWidth && ink.right <= 2 * m_charWidth)) << byte;
        const RECT line = Draw(text, 0, m_all);
        EXPECT_TRUE(::EqualRect(&ink, &line)) << byte;
    }
}

TEST_F(GraphicTextTest, DrawsTheEndOfALongText)
{
    const std::string text = std::string(5000, ' ') + "H";
    const RECT right = Draw(text, DT_RIGHT | DT_BOTTOM, m_all);
    EXPECT_GE(right.left, m_all.right - m_charWidth);
    EXPECT_GT(right.top, m_all.bottom - m_charHeight - 1);
    const RECT cell = DrawCells(text, 20 - 5000 * m_charWidth);
    EXPECT_GE(cell.left, 20);
    EXPECT_LE(cell.right, 20 + m_charWidth);
    EXPECT_EQ(5001 * m_charWidth, GraphicText(m_dc).GetWidth(text.data(), 5001));
}

// What a font that it knows lets it leave out would not have been seen.
TEST_F(GraphicTextTest, DrawsWhatLiesInTheClipBox)
{
    const GraphicFont font(m_dc);
    ::IntersectClipRect(m_dc, 0, 15, 120, 25);
    for (int y = -5; y < 45; ++y)
    {
        RECT ink[2];
        for (const GraphicFont* known : {static_cast<const GraphicFont*>(nullptr), &font})
        {
            GraphicText(m_dc, known).DrawCells("|j_", 3, 5, y, m_charWidth);
            ink[known ? 1 : 0] = TakeInk();
        }
        EXPECT_TRUE(::EqualRect(&ink[0], &ink[1])) << y;
    }
}

// Each alone and all together: none moves another, and none leaves its cells by more than a glyph may.
TEST_F(GraphicTextTest, DrawsCharactersInTheirCells)
{
    ::SelectObject(m_dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const int width = m_charWidth + 4;
    const std::pair<const char*, int> characters[] = {
        {"M", 1}, {"\u0416", 1}, {"e\u0301", 1}, {"\xEF\xBF\xBD", 1}, {"\u65E5", 2}, {"M", 1}};
    const auto drawn = [&](const std::string& text, int x) {
        GraphicText(m_dc).DrawCells(text.data(), static_cast<int>(text.size()), x, 0, width);
    };
    std::string line;
    std::vector<COLORREF> pixels[2];
    for (int way = 0; way < 2; ++way)
    {
        int cell = 0;
        for (const auto& [character, cells] : characters)
        {
            if (way == 0)
                drawn(std::string("\u00A0") + character, (cell - 1) * width);
            line += way == 0 ? character : "";
            cell += cells;
        }
        if (way == 1)
            drawn(line, 0);
        for (int x = 0; x < m_all.right; ++x)
            for (int y = 0; y < m_charHeight; ++y)
                pixels[way].push_back(::GetPixel(m_dc, x, y));
        const RECT ink = TakeInk();
        EXPECT_TRUE(ink.left < width && ink.right > 6 * width && ink.right <= 7 * width) << ink.right;
    }
    EXPECT_TRUE(pixels[0] == pixels[1]);
}

// The stock font has the letters of its code page only.
TEST_F(GraphicTextTest, TakesFromTheDialogsFontWhatAFontLacks)
{
    const GraphicFont font(m_dc);
    const std::pair<const char*, bool> texts[] = {{"plain", true},   {"\u00E4\u20AC", true},
                                                  {"\xE4", true},    {"a\u0416", false},
                                                  {"\u65E5", false}, {"\U0001F600", false}};
    for (const auto& [text, isThere] : texts)
        EXPECT_EQ(isThere, font.Has(m_dc, text, static_cast<int>(std::strlen(text)))) << text;

    const auto ink = [&](const char* text, const GraphicFont* known) {
        GraphicText(m_dc, known).DrawCells(text, static_cast<int>(std::strlen(text)), 20, 0, m_charWidth);
        std::vector<int> black;
        for (int x = 0; x < m_all.right; ++x)
            for (int y = 0; y < m_all.bottom; ++y)
                if (::GetPixel(m_dc, x, y) == 0)
                    black.push_back(x * m_all.bottom + y);
        TakeInk();
        return black;
    };
    EXPECT_EQ(ink("A\u00E4", nullptr), ink("A\u00E4", &font));
    const std::vector<int> own = ink("\u0416", nullptr);
    const std::vector<int> taken = ink("\u0416", &font);
    EXPECT_NE(own, taken);
    {
        TEXTMETRICA metrics = {};
        ::GetTextMetricsA(m_dc, &metrics);
        const int bottom = metrics.tmAscent;
        for (const int pixel : taken)
            EXPECT_LE(pixel % m_all.bottom, bottom) << "the letter stands on the line of the others";
    }
    EXPECT_FALSE(taken.empty());
}

TEST_F(GraphicTextTest, EndsInAnEllipsisOnlyWhenTheTextDoesNotFit)
{
    const RECT rect = {10, 5, 10 + 8 * m_charWidth, 35};
    const auto equal = [&](const std::string& drawn, const std::string& shown, UINT flags) {
        const RECT actual = Draw(drawn, DT_END_ELLIPSIS | DT_VCENTER | flags, rect);
        const RECT expected = Draw(shown, DT_VCENTER | flags, rect);
        return ::EqualRect(&actual, &expected) != FALSE && !::IsRectEmpty(&actual);
    };
    EXPECT_TRUE(equal("H&MMMMMH", "H&MMMMMH", DT_RIGHT));
    for (const UINT flags : {DT_LEFT, DT_CENTER, DT_RIGHT})
        EXPECT_TRUE(equal("HMMMMMMMH", "HMMMM...", flags)) << flags;
    EXPECT_TRUE(equal("HMMMM" + std::string(3000, 'M'), "HMMMM...", DT_CENTER));

    const RECT clipped = Draw(std::string(20, 'M'), 0, rect);
    EXPECT_TRUE(clipped.left >= rect.left && clipped.right <= rect.right);
}

// A text is drawn and measured as a whole: UTF-8, else the system's code page.
TEST_F(GraphicTextTest, DrawsTextOfAnyLanguage)
{
    const auto picture = [&](const std::string& text) {
        std::vector<COLORREF> pixels;
        GraphicText(m_dc).Draw(text.data(), static_cast<int>(text.size()), m_all, 0);
        for (int y = 0; y < m_charHeight; ++y)
            for (int x = 0; x < m_all.right; ++x)
                pixels.push_back(::GetPixel(m_dc, x, y));
        TakeInk();
        return pixels;
    };
    ::SelectObject(m_dc, ::GetStockObject(DEFAULT_GUI_FONT));
    for (const char* const text : {"\u65E5", "\u0416", "\u00E4"})
    {
        EXPECT_NE(picture("?"), picture(text)) << text;
        EXPECT_NE(picture(std::string(std::strlen(text), '?')), picture(text)) << text;
    }
    EXPECT_EQ(picture("\u00E4\u00DF"), picture("\xE4\xDF"));
    EXPECT_EQ(picture("\u00E2\u20AC\u00A6 \u00E4"), picture("\xE2\x80\xA6 \xE4")); // not "\u2026"
}

// What is kept of a font is what the system would answer, control characters included, for text that is
// simple and text that is not.
TEST_F(GraphicTextTest, DrawsTheSameByAFontThatItKnows)
{
    std::vector<std::string> texts = {"",         "\u0416\u03C9\u00E4", "\u65E5\u672C x",
                                      "e\u0301x", "a\U0001F600b",       std::string(2000, 'i')};
    for (int byte = 1; byte < 256; ++byte)
        texts.push_back({static_cast<char>(byte), 'x', static_cast<char>(256 - byte)});
    for (const int stock : {ANSI_FIXED_FONT, DEFAULT_GUI_FONT, SYSTEM_FONT})
    {
        ::SelectObject(m_dc, ::GetStockObject(stock));
        const GraphicFont font(m_dc);
        for (const std::string& text : texts)
        {
            const int length = static_cast<int>(text.size());
            const GraphicText known(m_dc, &font);
            EXPECT_EQ(GraphicText(m_dc).GetWidth(text.data(), length), known.GetWidth(text.data(), length))
                << text;
            for (const LONG width : {120, 20})
            {
                const RECT rect = {0, 0, width, 40};
                const UINT flags = DT_RIGHT | DT_VCENTER | DT_END_ELLIPSIS;
                const int drawn = known.Draw(text.data(), length, rect, flags);
                EXPECT_GE(std::min<int>(width, known.GetWidth(text.data(), length)), drawn) << text;
                const RECT byFont = TakeInk();
                const RECT asked = Draw(text, flags, rect);
                EXPECT_TRUE(::EqualRect(&asked, &byFont))
                    << stock << " " << width << " " << text << " " << asked.left << "-" << asked.right << " "
                    << byFont.left << "-" << byFont.right << " d" << drawn;
            }
        }
    }
}

} // namespace
