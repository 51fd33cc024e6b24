#include "report/CellCodec.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace
{

using report::Cell;

const std::string undefinedAtFirst(report::UndefinedField()); // before any test sets the separator

ZEMA::String Text(const std::string& text)
{
    return {text.c_str(), text.size()};
}

Cell CellOf(int image, int extra, int check, int textColor, std::string_view text)
{
    return {image, extra, check, textColor, true, text};
}

// Reading as it is described: field by field, with sscanf.
Cell ReadAsDescribed(const std::string& cells, int field, std::string& text)
{
    std::size_t begin = 0;
    for (; field > 0; --field)
    {
        begin = cells.find('\x07', begin) + 1;
        if (begin == 0)
            return {};
    }
    text = cells.substr(begin, cells.find('\x07', begin) - begin);
    long numbers[5] = {-1, -1, -1, -1, -1};
    int end = 0;
    std::sscanf(text.c_str(), "\x01%ld,%ld,%ld,%ld,%ld\x02%n", &numbers[0], &numbers[1], &numbers[2],
                &numbers[3], &numbers[4], &end);
    for (long& number : numbers)
        number = number < INT_MIN || number > INT_MAX ? -1 : number;
    const auto number = [&](int i) { return static_cast<int>(numbers[i]); };
    Cell cell{number(0), number(1), number(2), number(3), false, {}};
    if (end > 0 && numbers[4] >= 0)
        cell = CellOf(number(0), number(1), number(2), number(3),
                      std::string_view(text).substr(static_cast<std::size_t>(end)));
    return cell;
}

TEST(CellCodec, AnyBytesReadAsDescribed)
{
    const std::string pieces[] = {
        "\x01",         "\x01-1,2,", "1,",     " +3,", "\t-4,", "+-5,", "99999999999999999999,",
        "-2147483648,", "6\x02",     "-1\x02", "\x02", "\x07",  "text", std::string(1, '\0')};
    std::mt19937 random(1);
    const auto below = [&](std::size_t end) { return random() % end; };
    for (int round = 0; round < 40000; ++round)
    {
        std::string bytes;
        for (std::size_t n = below(16); n > 0; --n)
            bytes += below(8) != 0 ? pieces[below(std::size(pieces))]
                                   : std::string(1, static_cast<char>(below(256)));
        const ZEMA::String cells = Text(bytes);
        for (int field = 0; field < 3; ++field)
        {
            std::string text;
            const Cell expected = ReadAsDescribed(bytes, field, text);
            ASSERT_EQ(expected, report::ReadCell(cells, field)) << testing::PrintToString(bytes) << field;
        }
    }
}

TEST(CellCodec, FieldsChangeLikeAnArrayOfCells)
{
    std::mt19937 random(2);
    const auto below = [&](unsigned end) { return static_cast<unsigned>(random()) % end; };
    const auto number = [&] {
        return below(3) == 0 ? static_cast<int>(random()) : static_cast<int>(below(9)) - 1;
    };
    const std::string texts(70000, 'x');
    ZEMA::String cells;
    std::vector<Cell> model;
    for (int round = 0; round < 20000; ++round)
    {
        const unsigned at = below(8);
        const unsigned action = below(4);
        if (action == 0 && at < model.size())
        {
            model.erase(model.begin() + at);
            report::RemoveCell(cells, static_cast<int>(at));
        }
        else if (action == 1 && model.size() < 8)
        {
            model.resize(std::max<std::size_t>(model.size(), at));
            model.insert(model.begin() + at, Cell());
            report::InsertCell(cells, static_cast<int>(at));
        }
        else if (action > 1)
        {
            model.resize(std::max<std::size_t>(model.size(), at + 1));
            const std::size_t length = below(200) == 0 ? texts.size() : below(40);
            model[at] =
                CellOf(number(), number(), number(), number(), std::string_view(texts).substr(0, length));
            if (below(4) == 0)
                model[at].hasText = false, model[at].text = {};
            report::WriteCell(cells, static_cast<int>(at), model[at]);
        }
        for (std::size_t i = 0; i <= model.size(); ++i)
            ASSERT_EQ(i < model.size() ? model[i] : Cell(), report::ReadCell(cells, static_cast<int>(i)))
                << round;
    }
}

TEST(CellCodec, ATextIsCutAtASeparatorAndBreaksItsField)
{
    ZEMA::String cells;
    report::WriteCell(cells, 0,
                      CellOf(1, 2, 3, 4,
                             "cut\x07\x01"
                             "5,rest"));
    EXPECT_EQ(CellOf(1, 2, 3, 4, "cut"), report::ReadCell(cells, 0));
    EXPECT_EQ((Cell{5, -1, -1, -1, false, {}}), report::ReadCell(cells, 1));

    Cell cell = report::ReadCell(cells, 0); // its text lies in the string that changes
    cell.check = 30000;
    report::WriteCell(cells, 1, cell);
    EXPECT_EQ(CellOf(1, 2, 30000, 4, "cut"), report::ReadCell(cells, 1));

    ZEMA::String open = Text("\x01"
                             "1,1,1,1,4\x02open"); // ends without a separator
    report::WriteCell(open, 2, CellOf(1, 2, 3, 4, ""));
    EXPECT_EQ(CellOf(1, 1, 1, 1, "open"), report::ReadCell(open, 0));
    EXPECT_EQ(Cell(), report::ReadCell(open, 1));
    EXPECT_TRUE(report::ReadCell(open, 2).hasText);
}

TEST(CellCodec, TheUndefinedFieldLosesANumberWithTheSeparator)
{
    EXPECT_EQ("\x01-1,-1,-1,-1,-1\x02\x07", undefinedAtFirst);
    struct Restore
    {
        ~Restore() { report::SetCellSeparator('\x07'); }
    } const restore;
    for (const char byte : {'\0', '\x01', '\x02', ',', '-', '0', '9'})
        EXPECT_FALSE(report::SetCellSeparator(byte)) << int{byte};
    EXPECT_EQ('\x07', report::CellSeparator());

    EXPECT_TRUE(report::SetCellSeparator('\xA7'));
    EXPECT_EQ("\x01-1,-1,-1,-1\x02\xA7", report::UndefinedField());
    ZEMA::String cells;
    report::ResetCells(cells, 2);
    report::WriteCell(cells, 1, CellOf(-1, -1, -1, -1, "\x07"));
    EXPECT_EQ(Cell(), report::ReadCell(cells, 0));
    EXPECT_EQ(CellOf(-1, -1, -1, -1, "\x07"), report::ReadCell(cells, 1));
}

TEST(CellCodec, CellsSortByTextThenCheckThenImage)
{
    const Cell sorted[] = {{9, -1, -1, -1, false, {}},
                           CellOf(0, 0, 0, 0, "A"),
                           CellOf(0, 0, 0, 0, "AB"),
                           CellOf(0, 0, 0, 0, "a"),
                           CellOf(0, 0, 0, 0, "\xE4")};
    for (std::size_t i = 0; i + 1 < std::size(sorted); ++i)
        EXPECT_LT(report::CompareCells(sorted[i], sorted[i + 1]), 0) << i;
    EXPECT_LT(report::CompareCells({9, 0, -1, 0, false, {}}, {1, 0, 0, 0, false, {}}), 0);
    EXPECT_GT(report::CompareCells({9, 0, -1, 0, false, {}}, {1, 0, -1, 0, false, {}}), 0);
    EXPECT_EQ(report::CompareCells({9, 0, 5, 0, false, {}}, {1, 0, 5, 0, false, {}}), 0);
}

} // namespace
