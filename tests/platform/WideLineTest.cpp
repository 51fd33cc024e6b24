#include "platform/vkgrafic/WideLine.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using vkgrafic::WideLine;

// The text with bars where characters begin; every unit is 10 pixels wide.
WideLine LineOf(const std::string& marked)
{
    WideLine line;
    ZEMA::ToWide(marked.data(), marked.size(), line.text);
    std::erase(line.text, '|');
    line.advances.assign(line.text.size(), 10);
    return line;
}

TEST(WideLine, BreaksBetweenCharactersOnly)
{
    const char* const cases[] = {
        "a|b|c",
        "e\u0301|x|\u00E4",        // marks stay with their letters
        "e\u0301\u0327|x",         // two of them
        "\U0001F600|\U0001F680|x", // beyond 16 bits
        "\U0001F44D\U0001F3FD|x",  // a skin tone
        "\U0001F469\u200D\U0001F680|x",
        "\U0001F1E9\U0001F1EA|\U0001F1EB\U0001F1F7|\U0001F1EC", // flags, and half of one
        "x|\U0001F1E9\U0001F1EA|x",
        "\u0915\u093F|\u0924", // a vowel sign that takes room of its own
        "\u1112\u1161\u11AB|\uD55C",
        "\u65E5|\u672C",
        "\u2764\uFE0F|x",
    };
    for (const std::string marked : cases)
    {
        const WideLine line = LineOf(marked);
        std::string found;
        std::size_t begin = 0;
        for (std::size_t at = 1; at <= line.text.size(); ++at)
        {
            if (!vkgrafic::BeginsCharacter(line.text.data(), line.text.size(), at))
                continue;
            std::string bytes;
            ZEMA::FromWide(line.text.data() + begin, at - begin, bytes);
            found += (begin > 0 ? "|" : "") + bytes;
            begin = at;
            EXPECT_EQ(at, line.Fitting(static_cast<int>(at) * 10)) << marked;
            EXPECT_GT(at, line.Fitting(static_cast<int>(at) * 10 - 1)) << marked;
        }
        EXPECT_EQ(marked, found);
    }
}

TEST(WideLine, EndsInPointsAfterWholeCharacters)
{
    const struct
    {
        const char* text;
        int width;
        const char* expected;
    } cases[] = {{"abcdef", 55, "abcd..."},
                 {"abcdef", 54, "abc..."},
                 {"abce\u0301f", 55, "abc..."},
                 {"abc\U0001F600f", 55, "abc..."},
                 {"ab\U0001F600f", 55, "ab\U0001F600..."},
                 {"abcdef", 15, "..."},
                 {"abcdef", 5, "..."}};
    for (const auto& [text, width, expected] : cases)
    {
        WideLine line = LineOf(text);
        line.CutTo(width, 5);
        std::string cut;
        ZEMA::FromWide(line.text.data(), line.text.size(), cut);
        EXPECT_EQ(expected, cut);
        EXPECT_EQ(static_cast<int>(line.text.size()) * 10 - 15, line.Width()) << text;
    }
    WideLine wide = LineOf("abc");
    wide.advances.assign(3, 0x7FFFFFFF);
    EXPECT_EQ(0x7FFFFFFF, wide.Width());
    EXPECT_EQ(1u, wide.Fitting(0x7FFFFFFF));
}

TEST(WideLine, DrawsPiecesOfWholeCharacters)
{
    const WideLine line = LineOf("ab\U0001F600e\u0301");
    const std::size_t ends[][3] = {{0, 2, 2}, {0, 3, 2}, {0, 4, 4}, {2, 3, 4},
                                   {2, 4, 6}, {4, 1, 5}, {2, 1, 3}};
    for (const auto& [begin, longest, end] : ends)
        EXPECT_EQ(end, vkgrafic::EndOfPiece(line.text.data(), line.text.size(), begin, longest)) << begin;
}

TEST(WideLine, LeavesToTheSystemWhatItShapes)
{
    for (const char16_t unit : u"Aä\u0416\u03C9\u65E5\uD55C\u20AC\u3042")
        EXPECT_TRUE(unit == 0 || vkgrafic::IsSimple(unit)) << static_cast<int>(unit);
    for (const int unit : {0x00AD, 0x0301, 0x05D0, 0x0627, 0x0915, 0x0E01, 0x200B, 0x200D, 0x202E, 0x20D0,
                           0x2CEF, 0x2DE0, 0x302A, 0x3099, 0xA66F, 0xD83D, 0xDE00, 0xFE0F, 0xFEFF})
        EXPECT_FALSE(vkgrafic::IsSimple(static_cast<vkgrafic::WideChar>(unit))) << unit;
    const int shown[][2] = {{0, 0xB7},    {'\t', ' '},  {'\n', 0xB7}, {' ', ' '},      {'~', '~'},
                            {0x7F, 0xB7}, {0x9F, 0xB7}, {0xA0, 0xA0}, {0xD83D, 0xD83D}};
    for (const auto& [unit, visible] : shown)
        EXPECT_EQ(visible, vkgrafic::VisibleUnit(static_cast<vkgrafic::WideChar>(unit))) << unit;
}

} // namespace
