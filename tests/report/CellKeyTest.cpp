// What cells are sorted by: tables of texts, and the order by several keys.
#include "report/sort/CellKey.h"
#include "report/sort/KeyOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <vector>

namespace report
{
namespace
{

// Entries are ascending; '=' separates texts that are equal.
void ExpectOrder(const std::vector<std::string>& entries, const std::function<CellKey(std::string_view)>& key)
{
    std::vector<std::pair<std::size_t, std::string>> texts;
    for (std::size_t i = 0; i < entries.size(); ++i)
    {
        std::istringstream entry(entries[i] + '=');
        for (std::string text; std::getline(entry, text, '=');)
            texts.emplace_back(i, text);
    }
    for (const auto& [place1, text1] : texts)
        for (const auto& [place2, text2] : texts)
            EXPECT_EQ(place1 < place2, key(text1) < key(text2)) << text1 << " with " << text2;
}

CellKey Number(std::string_view text)
{
    return NumberKey(text, '.');
}

TEST(CellKey, OrdersCellsWithoutTextBeforeTexts)
{
    const CellKey keys[] = {KeyWithoutText(-1, -1), KeyWithoutText(-1, 7), KeyWithoutText(0, 3),
                            KeyWithoutText(1, -1),  TextKey(""),           Number("-1")};
    EXPECT_TRUE(std::is_sorted(std::begin(keys), std::end(keys), std::less_equal<>())); // none are equal
    EXPECT_EQ(KeyWithoutText(1, 2).value, KeyWithoutText(1, 3).value);
}

TEST(CellKey, OrdersTextNaturally)
{
    ExpectOrder({"", ".", "0=000", "9=09", "10", "10 b", "99999999999999999999", "100000000000000000000", ":",
                 "File9.9=file09.9", "fILE9.10", "file10", "\xE4"},
                NaturalTextKey);
}

TEST(CellKey, OrdersNumbersThatNoDoubleHolds)
{
    ExpectOrder({"", "x", "-1e99999999999999999999=-1e9223372036854775807=-1e+999999999999999", "-1e400",
                 "-1.25", "-1.2", "-1e-400", "0=-0E1=0e99999999999999999999", "1e-99999999999999999999",
                 "0.001=1e-3=.1E-2= +0.010E-01 ", "1=1.=01", "12,345=12345", "9007199254740992",
                 "9007199254740993=9,007,199,254,740,993.0", "1e400", "2e400=20E0399"},
                Number);
    ExpectOrder({"1,234.5", "1,5", "1.234,4", "1234,5=1.234,5"},
                [](std::string_view text) { return NumberKey(text, ','); });
}

TEST(CellKey, OrdersDatesInTheirForms)
{
    for (const DateOrder order : {DateOrder::MonthFirst, DateOrder::DayFirst})
    {
        const std::string leapDay = order == DateOrder::DayFirst ? "29/2/2024" : "02-29-2024";
        ExpectOrder({"0001-01-01", "2024-02-29= 29.2.2024 =2024/2/29=" + leapDay,
                     "2026-11-21 00:00:00.5Z=2026-11-20T23:59:60.5=2026-11-21 01:00:00,50+01",
                     "2026-11-21 14:05=2026.11.21 14:05:00Z=21.11.2026 14:05:00.000",
                     "2026-11-21 14:05:06.1234567890122", "2026-11-21t14:05:06.1234567890123",
                     "2026-11-21 14:05:06.5=2026-11-21 16:35:06.50 +0230=2026-11-21 09:05:06.5-05:00",
                     "9999-12-31"},
                    [=](std::string_view text) { return DateKey(text, order); });
    }
}

TEST(CellKey, TakesNoDateOrNumberWhereAPartIsWrong)
{
    std::istringstream dates(
        "|2026|2026-11|2026-02-29|2026-13-01|0-0-0|2026-00-10|2026-11/21|21.11.26|13/13/2026|"
        "2026-001-01|20260-01-01|2026-11-21x|2026-11-21 24:00|2026-11-21 1|"
        "2026-11-21 1:60|2026-11-21 1:00:61|2026-11-21 1:00:00.|2026-11-21 1:00 PM|"
        "2026-11-21 1:00+|2026-11-21 1:00+24:00|2026-11-21 1:00+01:|2026-11-21 1:00+01:60|2026-11-21 1:00Z0");
    for (std::string text; std::getline(dates, text, '|');)
    {
        EXPECT_EQ(TextKey(text), DateKey(text, DateOrder::MonthFirst)) << text;
    }
    std::istringstream numbers(
        "|.|,|+|-|+.|--1|+-1|- 1|1-|,123|.,123|12,|1,23|1,2345|1,,234|1234,567|1,234,56|"
        "0,000,|1..2|1.2.3|1.,5|1.234,567|1x|1e|1e+|e1|inf|nan|0x1");
    for (std::string text; std::getline(numbers, text, '|');)
    {
        EXPECT_EQ(TextKey(text), Number(text)) << text;
    }
}

// A column for each key, which is a character or, as '-', none.
TEST(KeyOrder, ComparesBySeveralKeysAndAtLastByNumber)
{
    const std::string cells[] = {"b2x", "a2x", "b1x", "-2y", "a2y", "b2x", "b1-", "-2y", "b1x"};
    constexpr int kItems = std::size(cells);
    int reads = 0;
    KeyOrder order([&](int item, int subitem) {
        ++reads;
        const std::string key = cells[item].substr(static_cast<std::size_t>(subitem), 1);
        return key == "-" ? KeyWithoutText(-1, -1) : TextKey(key);
    });
    order.AddFurtherKey(1, true);
    order.RemoveFurtherKeys();
    order.AddFurtherKey(2, false);
    order.AddFurtherKey(1, true);
    for (const int kept : {kItems, kItems / 2, 0})
        for (const bool ascending : {true, false})
        {
            std::string items = ascending ? "012345678" : "876543210";
            reads = 0;
            order.Begin(kept, ascending);
            std::sort(items.begin(), items.end(), [&](char a, char b) {
                const int result = order.Compare(a - '0', 0, b - '0', 0);
                return ascending ? result < 0 : result > 0;
            });
            EXPECT_EQ(ascending ? "374128056" : "280564137", items);
            EXPECT_GE(reads, kItems) << "nothing is left of the sort before";
            EXPECT_TRUE(kept < kItems || reads <= kItems * 3) << reads;
        }
}

} // namespace
} // namespace report
