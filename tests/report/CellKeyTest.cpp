// Cells in order: tables of texts, and random texts against plain comparisons.
#include "report/CellKey.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>
#include <regex>
#include <tuple>
#include <vector>

namespace report
{
namespace
{

using MakeKey = std::function<CellKey(std::string_view)>;
using Groups = std::vector<std::vector<std::string>>; // ascending; the texts of a group are equal

void ExpectOrder(const Groups& groups, const MakeKey& key)
{
    for (std::size_t i = 0; i < groups.size(); ++i)
        for (std::size_t j = 0; j < groups.size(); ++j)
            for (const std::string& a : groups[i])
                for (const std::string& b : groups[j])
                {
                    EXPECT_TRUE((i <=> j) == (key(a) <=> key(b))) << a << " with " << b;
                }
}

CellKey Number(std::string_view text)
{
    return NumberKey(text, '.');
}

// Texts before numbers, numbers by their values.
std::tuple<bool, double, std::string> PlainNumber(std::string text)
{
    static const std::regex form(R"([+-]?(?=\.?\d)(\d*|\d{1,3}(,\d{3})+)(\.\d*)?)");
    if (!std::regex_match(text, form))
        return {false, 0, text};
    std::erase(text, ',');
    return {true, std::strtod(text.c_str(), nullptr), ""};
}

TEST(CellKey, OrdersTextNaturally)
{
    const Groups groups = {{""},
                           {"."},
                           {"0", "000"},
                           {"9", "09"},
                           {"10"},
                           {"10 b"},
                           {"99999999999999999999"},
                           {"100000000000000000000"},
                           {":"},
                           {"File9.9", "file09.9"},
                           {"fILE9.10"},
                           {"file10"},
                           {"\xE4"}};
    ExpectOrder(groups, NaturalTextKey);
}

TEST(CellKey, OrdersRandomNumbersByValue)
{
    std::mt19937 random(1);
    std::string before;
    for (int i = 0; i < 5000; ++i)
    {
        std::string text(static_cast<std::size_t>(random() % 8), ' ');
        for (char& c : text)
            c = "0019,.-+"[random() % 8];
        EXPECT_EQ(PlainNumber(text) < PlainNumber(before), Number(text) < Number(before))
            << text << " with " << before;
        before = text;
    }
}

TEST(CellKey, OrdersNumbersThatNoDoubleHolds)
{
    const Groups groups = {{"inf"},
                           {"nan"},
                           {"-1e99999999999999999999", "-1e+999999999999999"},
                           {"-1e400"},
                           {"-1e-400"},
                           {"0", "-0E1", "0e99999999999999999999"},
                           {"1e-99999999999999999999"},
                           {"0.001", "1e-3", ".1E-2", " +0.010E-01 "},
                           {"9007199254740992"},
                           {"9007199254740993", "9,007,199,254,740,993.0"},
                           {"1e400"},
                           {"2e400", "20E0399"}};
    ExpectOrder(groups, Number);
    ExpectOrder({{"1,234.5"}, {"1,5"}, {"1.234,4"}, {"1234,5", "1.234,5"}},
                [](std::string_view text) { return NumberKey(text, ','); });
}

TEST(CellKey, OrdersDatesInTheirForms)
{
    for (const DateOrder order : {DateOrder::kMonthFirst, DateOrder::kDayFirst})
    {
        const char* const leapDay = order == DateOrder::kDayFirst ? "29/2/2024" : "02-29-2024";
        const Groups groups = {
            {"0001-01-01"},
            {"2024-02-29", " 29.2.2024 ", "2024/2/29", leapDay},
            {"2026-11-21 00:00:00.5Z", "2026-11-20T23:59:60.5", "2026-11-21 01:00:00,50+01"},
            {"2026-11-21 14:05", "2026.11.21 14:05:00Z", "21.11.2026 14:05:00.000"},
            {"2026-11-21 14:05:06.1234567890122"},
            {"2026-11-21t14:05:06.1234567890123"},
            {"2026-11-21 14:05:06.5", "2026-11-21 16:35:06.50 +0230", "2026-11-21 09:05:06.5-05:00"},
            {"9999-12-31"}};
        ExpectOrder(groups, [=](std::string_view text) { return DateKey(text, order); });
    }
}

TEST(CellKey, TakesNoDateWhereAPartIsWrong)
{
    for (const char* text : {"",
                             "2026",
                             "2026-11",
                             "2026-02-29",
                             "2026-13-01",
                             "0-0-0",
                             "2026-00-10",
                             "2026-11/21",
                             "21.11.26",
                             "13/13/2026",
                             "2026-001-01",
                             "20260-01-01",
                             "2026-11-21x",
                             "2026-11-21 24:00",
                             "2026-11-21 1",
                             "2026-11-21 1:60",
                             "2026-11-21 1:00:61",
                             "2026-11-21 1:00:00.",
                             "2026-11-21 1:00 PM",
                             "2026-11-21 1:00+",
                             "2026-11-21 1:00+24:00",
                             "2026-11-21 1:00+01:",
                             "2026-11-21 1:00Z0"})
    {
        EXPECT_EQ(TextKey(text), DateKey(text, DateOrder::kMonthFirst)) << text;
    }
}

} // namespace
} // namespace report
