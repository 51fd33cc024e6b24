#include "zemacore/WideText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using ZEMA::TextKind;

std::string Bytes(const ZEMA::WideString& wide)
{
    std::string text;
    ZEMA::FromWide(wide.data(), wide.size(), text);
    return text;
}

ZEMA::WideString Wide(const std::string& text)
{
    ZEMA::WideString wide(3, 'x'); // which goes
    ZEMA::ToWide(text.data(), text.size(), wide);
    return wide;
}

ZEMA::WideString Units(const std::u16string& units)
{
    return {units.begin(), units.end()};
}

// Each text stands alone, after ASCII of every alignment, and before some: what it is decides for all of it.
TEST(WideText, IsUtf8OrCodePageAsAWhole)
{
    using namespace std::string_literals;
    const struct
    {
        std::string text;
        TextKind kind;
        std::u16string wide;
    } cases[] = {
        {"", TextKind::Ascii, u""},
        {"plain\0text\x7F"s, TextKind::Ascii, u"plain\0text\x7F"s},
        {"\xC2\x80 \xDF\xBF", TextKind::Utf8, u"\u0080 \u07FF"},
        {"\xE0\xA0\x80 \xEF\xBF\xBF", TextKind::Utf8, u"\u0800 \uFFFF"},
        {"\xED\x9F\xBF \xEE\x80\x80", TextKind::Utf8, u"\uD7FF \uE000"}, // around the surrogates
        {"\xF0\x90\x80\x80 \xF4\x8F\xBF\xBF", TextKind::Utf8, u"\U00010000 \U0010FFFF"},
        {"\xC3\xA4\0\xE6\x97\xA5"s, TextKind::Utf8, u"ä\0日"s},
        {"\xC0\x80", TextKind::CodePage, u"\u00C0\u20AC"},                               // a NUL too long
        {"\xC1\xBF", TextKind::CodePage, u"\u00C1\u00BF"},                               // too long
        {"\xE0\x9F\xBF", TextKind::CodePage, u"\u00E0\u0178\u00BF"},                     // too long
        {"\xF0\x8A\xBF\xBF", TextKind::CodePage, u"\u00F0\u0160\u00BF\u00BF"},           // too long
        {"\xED\xA0\x80", TextKind::CodePage, u"\u00ED\u00A0\u20AC"},                     // a surrogate
        {"\xED\xBF\xBF", TextKind::CodePage, u"\u00ED\u00BF\u00BF"},                     // the last one
        {"\xF4\x93\x80\x80", TextKind::CodePage, u"\u00F4\u201C\u20AC\u20AC"},           // beyond U+10FFFF
        {"\xF8\xA2\xA2\xA2\xA2", TextKind::CodePage, u"\u00F8\u00A2\u00A2\u00A2\u00A2"}, // five bytes
        {"\xFE", TextKind::CodePage, u"\u00FE"},
        {"\x80", TextKind::CodePage, u"\u20AC"},           // nothing begins so
        {"\xC3", TextKind::CodePage, u"\u00C3"},           // cut off
        {"\xC3\xE4", TextKind::CodePage, u"\u00C3\u00E4"}, // not followed by the rest
        {"\xE6\x97", TextKind::CodePage, u"\u00E6\u2014"},
        {"\xF0\xA0\x80", TextKind::CodePage, u"\u00F0\u00A0\u20AC"},
        {"\xC3\xA4 \xE4", TextKind::CodePage, u"\u00C3\u00A4 \u00E4"}, // both: not one is UTF-8
        {"\xE4\0\xC3\xA4"s, TextKind::CodePage, u"\u00E4\0\u00C3\u00A4"s},
    };
    for (const auto& [text, kind, wide] : cases)
        for (std::size_t before = 0; before < 18; ++before)
        {
            const std::string ascii(before, 'a');
            const std::string whole = ascii + text + ascii;
            const std::u16string expected(before, 'a');
            EXPECT_EQ(kind, ZEMA::GetTextKind(whole.data(), whole.size())) << before << text;
            EXPECT_EQ(kind == TextKind::Ascii, ZEMA::IsAscii(whole.data(), whole.size())) << before << text;
            EXPECT_TRUE(Units(expected + wide + expected) == Wide(whole)) << before << text;
            EXPECT_TRUE(Wide(Bytes(Units(wide))) == Units(wide)) << "and back: " << text;
            EXPECT_EQ(kind != TextKind::CodePage, text == Bytes(Units(wide))) << text;
        }
    for (const std::string cut :
         {"\xC3\xA4", "\xE6\x97\xA5", "\xF0\x9F\x98\x80"}) // what follows is not the text's
        EXPECT_EQ(TextKind::CodePage, ZEMA::GetTextKind(cut.data(), cut.size() - 1)) << cut;
}

TEST(WideText, GivesSurrogatesWithoutTheirHalfAsTheReplacement)
{
    const char16_t cases[][3] = {
        {u'a', 0xD800, u'b'}, {u'a', 0xDBFF, 0}, {0xDC00, 0xD800, u'b'}, {0xDFFF, 0xDFFF, 0}};
    const char* const expected[] = {"a\xEF\xBF\xBD"
                                    "b",
                                    "a\xEF\xBF\xBD",
                                    "\xEF\xBF\xBD\xEF\xBF\xBD"
                                    "b",
                                    "\xEF\xBF\xBD\xEF\xBF\xBD"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(expected[i], Bytes(Units(std::u16string(cases[i], cases[i][2] ? 3 : 2))));
    std::string half;
    ZEMA::FromWide(Units(u"\U0001F600").data(), 1, half); // what follows is not the text's
    EXPECT_EQ("\xEF\xBF\xBD", half);
}

} // namespace
