#include "logdesk/NumberText.h"

#include <gtest/gtest.h>

namespace
{

TEST(NumberText, GroupsDigitsAsTheSystemDoes)
{
    const struct
    {
        std::uint64_t number;
        const char* separator;
        const char* sizes;
        const char* text;
    } cases[] = {
        {0, ",", "3;0", "0"},
        {999, ",", "3;0", "999"},
        {1000, ",", "3;0", "1,000"},
        {1234567, "\u202F", "3;0", "1\u202F234\u202F567"},
        {123456789, ",", "3;2;0", "12,34,56,789"}, // as in India
        {123456789, ".", "3", "123456.789"},
        {123456789, ".", "3;", "123456.789"},
        {123456789, ".", "0", "123456789"},
        {123456789, ".", "", "123456789"},
        {123456789, ".", "x;-3;99999999999999999999", "123456789"},
        {123456789, "", "3;0", "123456789"},
        {18446744073709551615u, ",", "3;0", "18,446,744,073,709,551,615"},
    };
    for (const auto& [number, separator, sizes, text] : cases)
        EXPECT_EQ(text, logdesk::GroupedText(number, {separator, sizes})) << sizes;

    logdesk::SetDigitGrouping({"'", "3;0"});
    EXPECT_EQ("1 row", logdesk::CountText(1, "row"));
    EXPECT_EQ("1'204 rows", logdesk::CountText(1204, "row"));
    logdesk::SetDigitGrouping({});
}

} // namespace
