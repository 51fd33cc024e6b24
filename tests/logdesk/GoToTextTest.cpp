#include "logdesk/GoToText.h"

#include <gtest/gtest.h>

namespace
{

TEST(GoToText, TakesNumbersRowsOfLogsAndShownRows)
{
    using enum logdesk::GoToTarget::Kind;
    const struct
    {
        const char* text;
        logdesk::GoToTarget target;
    } targets[] = {
        {"18342", {Number, 18342}},
        {" #18342\r\n", {Number, 18342}},
        {"# 7", {Number, 7}},
        {"18,342", {Number, 18342}},
        {"1.234.567", {Number, 1234567}},
        {"12,34,567", {Number, 1234567}},
        {"18\u202F342", {Number, 18342}},
        {"18 342", {Number, 18342}},
        {"4294967295", {Number, 4294967295u}},
        {"0000000000007", {Number, 7}},
        {"SQL 120", {LogRow, 120, "SQL"}},
        {"sql:120", {LogRow, 120, "SQL"}},
        {"main1", {LogRow, 1, "Main"}},
        {"Main 1,204", {LogRow, 1204, "Main"}},
        {"Main # 1,204", {Number, 1204, "Main"}},
        {"  SQL     #18342", {Number, 18342, "SQL"}},
        {"* SQL     #18342      select 5\r\n", {Number, 18342, "SQL"}},
        {"#5 000  000", {Number, 5000}},
        {"#7\t000", {Number, 7}},
        {"row 500", {ShownRow, 500}},
        {" 14:03", {Time, 0, "", "14:03"}},
        {"2026-11-23 4:03:10.5\n", {Time, 0, "", "2026-11-23 4:03:10.5"}},
        {"ROW:5", {ShownRow, 5}},
    };
    const std::vector<std::string> logs = {"Main", "SQL"};
    for (const auto& [text, target] : targets)
    {
        const logdesk::GoToAnswer answer = logdesk::ParseGoTo(text, logs);
        EXPECT_TRUE(answer.target == target && answer.error.empty()) << text << ": " << answer.error;
    }
}

TEST(GoToText, SaysWhyItDoesNotUnderstand)
{
    const std::pair<const char*, const char*> errors[] = {
        {"", "Type a number, a log"},
        {" \t", "Type a number, a log"},
        {"#", "Type a number after \"#\""},
        {"row", "Type a number after \"row\""},
        {"* ", "There is no log \"*\""},
        {"* SQL #5 select", "\"5 select\" is no number"},
        {"SQL 5  000", "\"5  000\" is no number"},
        {"SQL :", "Type a number after \"SQL :\""},
        {"Run 5", "There is no log \"Run\" here, but Main, SQL"},
        {"-5", "There is no log \"-\""},
        {"\xC3 5", "There is no log \"\xC3\""},
        {"0", "Numbers begin with 1"},
        {"Main 000", "Rows are counted from 1"},
        {"4294967296", "4294967296 is more than"},
        {"SQL 99999999999999999999999", "99999999999999999999999 is more than"},
        {"202-11-23", "\"202-11-23\" is no number"},
        {":5x", "\"5x\" is no number"},
        {"5x", "\"5x\" is no number"},
        {"5 SQL", "\"5 SQL\" is no number"},
        {"3.5", "\"3.5\" is no number"},
        {"1,2345", "\"1,2345\" is no number"},
        {"1,,234", "\"1,,234\" is no number"},
        {"12,34", "\"12,34\" is no number"},
        {"1,234,", "\"1,234,\" is no number"},
        {"row 1-5", "\"1-5\" is no number"},
    };
    for (const auto& [text, error] : errors)
    {
        const logdesk::GoToAnswer answer = logdesk::ParseGoTo(text, {"Main", "SQL"});
        EXPECT_TRUE(!answer.target && answer.error.starts_with(error)) << text << ": " << answer.error;
    }
}

} // namespace
