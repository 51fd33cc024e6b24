#include "report/model/CellCodec.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using report::Cell;

const std::string undefinedAtFirst(report::UndefinedField()); // before any test sets the separator

// Each with its separator, which the last one may lack.
std::vector<std::string> Fields(const std::string& bytes)
{
    std::vector<std::string> fields;
    for (std::size_t begin = 0, end = 0; begin < bytes.size(); begin = end)
    {
        end = std::min(bytes.find('\x07', begin), bytes.size() - 1) + 1;
        fields.push_back(bytes.substr(begin, end - begin));
    }
    return fields;
}

// Makes room for field `at`.
void Pad(std::vector<std::string>& fields, std::size_t at)
{
    if (at >= fields.size() && !fields.empty() && fields.back().back() != '\x07')
        fields.back() += '\x07';
    fields.resize(std::max(fields.size(), at), std::string(report::UndefinedField()));
}

// Reads a field by sscanf; `text` keeps the cell's text.
Cell Scan(const std::string& field, std::string& text)
{
    text = field.substr(0, field.find('\x07'));
    long numbers[5] = {-1, -1, -1, -1, -1};
    int end = 0;
    std::sscanf(text.c_str(), "\x01%ld,%ld,%ld,%ld,%ld\x02%n", &numbers[0], &numbers[1], &numbers[2],
                &numbers[3], &numbers[4], &end);
    int n[5];
    for (int i = 0; i < 5; ++i)
        n[i] = numbers[i] < INT_MIN || numbers[i] > INT_MAX ? -1 : static_cast<int>(numbers[i]);
    text.erase(0, static_cast<std::size_t>(end));
    const bool hasText = end > 0 && n[4] >= 0;
    return {n[0], n[1], n[2], n[3], hasText, hasText ? std::string_view(text) : std::string_view()};
}

TEST(CellCodec, AnyBytesAreReadAndChangedFieldByField)
{
    std::vector<std::string> pieces = {std::string(1, '\0'), std::string(600, 'x')};
    std::istringstream further("\x01|\x01-1,2,|1,| +3,|\t-4,|+-5,|99999999999999999999,|-2147483648,|"
                               "6\x02|-1\x02|\x02|\x07");
    for (std::string piece; std::getline(further, piece, '|');)
        pieces.push_back(piece);
    std::mt19937 random(1);
    const auto below = [&](std::size_t end) { return static_cast<std::size_t>(random()) % end; };
    const auto someBytes = [&] {
        std::string bytes;
        for (std::size_t n = below(16); n > 0; --n)
            bytes +=
                below(8) != 0 ? pieces[below(pieces.size())] : std::string(1, static_cast<char>(below(256)));
        return bytes;
    };
    for (int round = 0; round < 5000; ++round)
    {
        std::string bytes = someBytes();
        ZEMA::String cells(bytes.c_str(), bytes.size());
        for (int change = 0; change < 3; ++change)
        {
            std::vector<std::string> fields = Fields(bytes);
            for (std::size_t i = 0; i <= fields.size(); ++i)
            {
                std::string text;
                const Cell expected = Scan(i < fields.size() ? fields[i] : "", text);
                ASSERT_EQ(expected, report::ReadCell(cells, static_cast<int>(i))) << round << " field " << i;
            }

            const std::size_t at = below(6);
            const std::size_t action = below(4);
            if (action == 0)
            {
                if (at < fields.size())
                    fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(at));
                report::RemoveCell(cells, static_cast<int>(at));
            }
            else if (action == 1)
            {
                Pad(fields, at);
                fields.emplace(fields.begin() + static_cast<std::ptrdiff_t>(at), report::UndefinedField());
                report::InsertCell(cells, static_cast<int>(at));
            }
            else
            {
                const std::string text = someBytes();
                Cell cell{static_cast<int>(random()), INT_MIN, 7, -1, true, text};
                if (action == 2)
                    cell = report::ReadCell(cells, static_cast<int>(below(6))); // its text lies in `cells`
                char numbers[80];
                std::snprintf(numbers, sizeof(numbers), "\x01%d,%d,%d,%d,%d\x02", cell.image, cell.extra,
                              cell.check, cell.textColor,
                              cell.hasText ? static_cast<int>(cell.text.size()) : -1);
                Pad(fields, at + 1);
                fields[at] = numbers + std::string(cell.text) + '\x07';
                report::WriteCell(cells, static_cast<int>(at), cell);
            }
            bytes.clear();
            for (const std::string& field : fields)
                bytes += field;
            ASSERT_EQ(bytes, std::string(cells.c_str(), cells.GetLength())) << round;
        }
    }
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
    ZEMA::String cells;
    report::ResetCells(cells, 2);
    report::WriteCell(cells, 1, {-1, -1, -1, -1, true, "\x07"});
    EXPECT_STREQ("\x01-1,-1,-1,-1\x02\xA7\x01-1,-1,-1,-1,1\x02\x07\xA7", cells.c_str());
    EXPECT_EQ((Cell{-1, -1, -1, -1, true, "\x07"}), report::ReadCell(cells, 1));
}

TEST(CellCodec, CellsSortByTextThenCheckThenImage)
{
    const Cell sorted[] = {{1, -1, -1, -1, false, {}}, {9, -1, -1, -1, false, {}}, {1, 0, 0, 0, false, {}},
                           {0, 0, 0, 0, true, "A"},    {0, 0, 0, 0, true, "AB"},   {0, 0, 0, 0, true, "a"},
                           {0, 0, 0, 0, true, "\xE4"}};
    for (std::size_t i = 0; i + 1 < std::size(sorted); ++i)
    {
        EXPECT_LT(report::CompareCells(sorted[i], sorted[i + 1]), 0) << i;
        EXPECT_GT(report::CompareCells(sorted[i + 1], sorted[i]), 0) << i;
    }
    EXPECT_EQ(report::CompareCells({9, 0, 5, 0, false, {}}, {1, 0, 5, 0, false, {}}), 0);
}

} // namespace
