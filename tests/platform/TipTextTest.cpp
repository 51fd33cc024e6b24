#include "platform/qmtextctrl/TipText.h"

#include <gtest/gtest.h>

#include <random>

using namespace textview;

namespace
{

std::vector<std::string> Broken(const std::string& text, int width, int mostLines = 100)
{
    VkGrafic::TextCells cells;
    cells.Take(text.data(), text.size());
    std::vector<std::string> lines;
    for (const TipLine& line : BreakTip(text, cells, width, mostLines))
        lines.push_back(text.substr(static_cast<std::size_t>(line.begin),
                                    static_cast<std::size_t>(line.end - line.begin)));
    return lines;
}

TEST(TipText, BreaksWhereAReaderWould)
{
    struct Case
    {
        const char* text;
        int width;
        std::vector<std::string> lines;
    };
    const Case cases[] = {
        {"", 10, {}},
        {"short", 10, {"short"}},
        {"exactly te", 10, {"exactly te"}},
        {"one two three", 10, {"one two ", "three"}},
        {"a bcdefghijklm", 10, {"a bcdefghi", "jklm"}}, // a blank too early
        {"a,b,c,d,e,f,g", 8, {"a,b,c,d,", "e,f,g"}},
        {"one\n\ntwo\n", 10, {"one", "", "two"}},
        {"\u65E5\u5FD7\u65E5", 5, {"\u65E5\u5FD7", "\u65E5"}}, // two cells each
        {"\u65E5\u5FD7", 1, {"\u65E5", "\u5FD7"}},             // wider than the line
        {"ab", 0, {"a", "b"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.lines, Broken(c.text, c.width)) << c.text;
    EXPECT_EQ((std::vector<std::string>{"abc", "def"}), Broken("abcdefghi", 3, 2)) << "no more lines";
}

TEST(TipText, LosesNothingOfAnyText)
{
    std::mt19937 random(3);
    const char* const pieces[] = {"a", " ", ",", "\u00E4", "\u65E5", "e\u0301", "\U0001F600", "\n"};
    for (int round = 0; round < 500; ++round)
    {
        std::string text;
        for (unsigned count = random() % 60; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        const int width = 2 + static_cast<int>(random() % 20);
        std::string joined;
        for (const std::string& line : Broken(text, width))
        {
            joined += line;
            VkGrafic::TextCells cells;
            cells.Take(line.data(), line.size());
            EXPECT_LE(cells.CellOf(static_cast<int>(line.size())), width) << line;
        }
        text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
        EXPECT_EQ(text, joined);
    }
}

TEST(TipText, StaysOnItsScreenAndOffItsRow)
{
    const Span screen = {100, 1100};
    const Span across[][2] = {// wanted and size: the place
                              {{200, 300}, {200, 500}},
                              {{50, 300}, {100, 400}},
                              {{1000, 300}, {800, 1100}},
                              {{500, 5000}, {100, 1100}}};
    for (const auto& [asked, place] : across)
        EXPECT_EQ(place, PlaceTipAcross(asked.begin, asked.end, screen)) << asked.begin;

    struct Case
    {
        Span row;
        int size;
        Span place;
    };
    const Case down[] = {{{200, 216}, 100, {216, 316}},    // below
                         {{1000, 1016}, 84, {1016, 1100}}, // just below
                         {{1000, 1016}, 85, {915, 1000}},  // above
                         {{400, 416}, 2000, {416, 1100}},  // cut to the larger part
                         {{900, 916}, 2000, {100, 900}},   {{1090, 1106}, 50, {1040, 1090}}};
    for (const Case& c : down)
        EXPECT_EQ(c.place, PlaceTipDown(c.row, c.size, screen)) << c.row.begin;
}

} // namespace
