// Formats of text logs: the table, what a user adds, detection, time stamps and words.
#include "FormatSamples.h"
#include "msgservice/text/FormatDetector.h"
#include "msgservice/text/LevelWords.h"

#include <chrono>
#include <gtest/gtest.h>
#include <set>

namespace msgservice
{

namespace
{

Time TimeAt(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0,
            int nanoseconds = 0)
{
    const std::chrono::sys_days days(std::chrono::year(year) / static_cast<int>(month) /
                                     static_cast<int>(day));
    const std::int64_t seconds =
        days.time_since_epoch().count() * 86'400LL + hour * 3600 + minute * 60 + second;
    return seconds * 1'000'000'000 + nanoseconds;
}

const Time kReference = TimeAt(2024, 3, 1, 12);

std::string FieldsOf(const MessageFields& fields)
{
    std::string others;
    const auto add = [&others](const std::string& name, std::string_view text) {
        if (!text.empty())
            others.append(others.empty() ? "" : " ").append(name).append("=").append(text);
    };
    std::string file(fields.runtimeFile);
    file += fields.line != 0 ? ":" + std::to_string(fields.line) : "";
    add("who", fields.who);
    add("module", fields.module);
    add("file", file);
    add("context", fields.runtimeContext);
    add("text1", fields.text1);
    add("error", fields.errorNumber != 0 ? std::to_string(fields.errorNumber) : "");
    std::string text(fields.timestamp);
    text += " | " + std::to_string(fields.level);
    text.append(fields.levelText.empty() ? "" : " ").append(fields.levelText);
    text.append(" | ").append(fields.topic).append(" | ").append(others).append(" | ").append(fields.body);
    return text;
}

Detection DetectLines(FormatDetector& detector, const std::vector<std::string_view>& lines)
{
    return detector.Detect(lines, nullptr, kReference);
}

// The format of the line by itself, and its fields.
std::string Told(FormatDetector& detector, std::string_view line)
{
    Detection detection = DetectLines(detector, {line});
    const FormatChoice& choice = detection.choices.front();
    MessageFields fields;
    EXPECT_EQ(LineParser::Outcome::Match, detector.Parser(choice).Parse(line, detection.times, fields))
        << line;
    return choice.format->name + ": " + FieldsOf(fields);
}

// "name name ..." of the formats chosen for these lines.
std::string Chosen(const std::vector<std::string_view>& lines)
{
    static const TextFormats formats;
    static FormatDetector detector(formats);
    std::string names;
    for (const FormatChoice& choice : DetectLines(detector, lines).choices)
        names += (names.empty() ? "" : " ") + choice.format->name;
    return names;
}

} // namespace

TEST(TextFormat, EachIsDetectedInOneLineAndTellsItApart)
{
    const TextFormats formats;
    FormatDetector detector(formats);
    std::set<std::string> met;
    for (const FormatSample& sample : kFormatSamples)
    {
        EXPECT_EQ(std::string(sample.format) + ": " + sample.fields, Told(detector, sample.line));
        met.insert(sample.format);
    }
    for (const TextFormat& format : formats.All())
        EXPECT_TRUE(met.contains(format.name)) << format.name << " has no sample";
}

TEST(TextFormat, AUsersFileAddsAndReplaces)
{
    TextFormats formats;
    EXPECT_EQ("", formats.Add(R"json({"pieces": {"id": "#\\d+"}, "formats": [
        {"name": "shop", "expression": "(?<timestamp>%{time}) (?<context>%{id}) (?<level>\\w+) (?<body>.*)",
         "levels": {"KO": "error", "OK": 1}},
        {"name": "wörter", "expression": "(?<topic>[äöü]+): (?<body>.*)"},
        {"name": "json", "kind": "json", "keys": {"topic": "svc", "body": ["what"]}}]})json"));
    FormatDetector detector(formats);
    EXPECT_EQ("shop: 2023-10-09 03:04:05 | 4 KO |  | context=#7 | late",
              Told(detector, "2023-10-09 03:04:05 #7 KO late"));
    EXPECT_EQ("shop: 2023-10-09 03:04:05 | 2 HUH |  | context=#7 | late",
              Told(detector, "2023-10-09 03:04:05 #7 HUH late"));
    EXPECT_EQ("wörter:  | 2 | öä |  | x", Told(detector, "öä: x"));
    EXPECT_EQ("json:  | 2 | orders | text1=msg=y | late",
              Told(detector, R"json({"SVC":"orders","what":"late","msg":"y"})json"));
    EXPECT_EQ(TextFormats().All().size() + 2, formats.All().size());
    EXPECT_EQ("shop", formats.All().front().name);
}

TEST(TextFormat, ErrorsInAUsersFileAreToldAndTheRestCounts)
{
    const std::pair<const char*, const char*> cases[] = {
        {"{\n \"formats\": [", "It is not JSON: line 2, byte 16.\n"},
        {"[]", "It is not an object with \"formats\".\n"},
        {"{}", "It has no list \"formats\".\n"},
        {R"({"formats": [1]})", "Format 1: it is not an object.\n"},
        {R"({"formats": [{"name": "a"}]})", "Format 1 (\"a\"): it has no expression.\n"},
        {R"({"formats": [{"expression": "x"}]})", "Format 1: it has no name.\n"},
        {R"({"formats": [{"name": "a", "expression": "(x"}]})",
         "Format 1 (\"a\"): \"expression\", at character 3: missing closing parenthesis.\n"},
        {R"({"formats": [{"name": "a", "expression": "%{no}"}]})",
         "Format 1 (\"a\"): there is no piece %{no}.\n"},
        {R"({"formats": [{"name": "a", "kind": "xml"}]})",
         "Format 1 (\"a\"): \"kind\" is \"xml\", which is none of expression, json and logfmt.\n"},
        {R"({"formats": [{"name": "a", "expression": "x", "levels": {"X": "bad"}}]})",
         "Format 1 (\"a\"): the level of \"X\" is no number from 0 to 5 and no word for a level.\n"},
        {R"({"formats": [{"name": "a", "kind": "json", "keys": {"topic": 1}}]})",
         "Format 1 (\"a\"): the keys of \"topic\" are no texts.\n"},
        {R"({"pieces": {"p": 1}, "formats": []})", "Piece \"p\": it is not a text.\n"},
        {R"({"pieces": {"p": "%{p}"}, "formats": [{"name": "a", "expression": "%{p}"}]})",
         "Format 1 (\"a\"): there is no piece %{p}.\n"},
    };
    for (const auto& [text, errors] : cases)
        EXPECT_EQ(errors, TextFormats().Add(text)) << text;
    TextFormats formats;
    formats.Add(R"({"formats": [{"name": "a"}, {"name": "good", "expression": "x"}]})");
    EXPECT_TRUE(formats.Find("good"));
}

TEST(TextFormat, DetectionTakesWhatTellsTheMostApart)
{
    // With a stack trace, and a line without a topic.
    EXPECT_EQ("level-topic level time",
              Chosen({"2023-10-09 03:04:05 INFO shop.Orders: late", "java.lang.Exception: no",
                      "\tat x.y(Z.java:1)", "\tat x.z(Z.java:2)", "2023-10-09 03:04:05 ERROR it failed"}));
    // A word and a colon are a topic only if they come again.
    std::vector<std::string> texts;
    for (int line = 0; line < 40; ++line)
        texts.push_back("2023-10-09 03:04:05 word" + std::to_string(line) + ": text");
    EXPECT_EQ("time", Chosen({texts.begin(), texts.end()}));
    // Two formats in one log.
    EXPECT_EQ("bracket-topic-level level-bracket-topic time",
              Chosen({"2023-10-09 03:04:05 [a.b] INFO: x", "2023-10-09 03:04:05 [c.d] INFO: x",
                      "2023-10-09 03:04:05 WARN [e] x"}));
    // Lines in front, and text in which a date occurs once.
    EXPECT_EQ("level time", Chosen({"=== begins ===", "version 7", "2023-10-09 03:04:05 INFO x",
                                    "2023-10-09 03:04:06 INFO y"}));
    EXPECT_EQ("none",
              Chosen({"Dear all,", "we meet on", "2023-10-09 10:00 at the gate.", "Error: none", "Bye"}));
    EXPECT_EQ("none", Chosen({}));
}

TEST(TextFormat, DetectionExplainsItself)
{
    const TextFormats formats;
    FormatDetector detector(formats);
    const std::string told =
        DetectLines(detector, {"01.02. 03:04:05 INFO a.b: c", "13.02. 03:04:05 INFO a.b: d"}).explanation;
    for (const char* sentence :
         {"Looked at 2 lines.\n", "level-topic (time LEVEL topic: text) was chosen", "  topic: a.b\n",
          "  body: c\n", "taken as UTC", "the first one is taken to be in 2024",
          "The numbers of a date are read as day, month, year.\n"})
        EXPECT_NE(std::string::npos, told.find(sentence)) << sentence << " in\n" << told;
    const Detection forced = detector.Detect(std::vector<std::string_view>{"2023-10-09 03:04:05 INFO x"},
                                             formats.Find("time"), kReference);
    EXPECT_EQ("time", forced.choices.front().format->name);
    EXPECT_EQ(1U, forced.choices.size());
}

TEST(TextFormat, AnExpressionThatExplodesGivesUp)
{
    TextFormats formats;
    formats.Add(R"({"formats": [{"name": "bad", "expression": "(?:a|aa)+(?<body>b)$"}]})");
    LineParser parser(*formats.Find("bad"), formats);
    TimeText times(0);
    MessageFields fields;
    EXPECT_EQ(LineParser::Outcome::GivenUp, parser.Parse(std::string(60, 'a') + "c b", times, fields));
    EXPECT_EQ(LineParser::Outcome::Match, parser.Parse("aab", times, fields));
}

TEST(TimeText, ReadsTheUsualLayouts)
{
    const Time day = TimeAt(2023, 10, 9);
    const Time time = TimeAt(2023, 10, 9, 3, 4, 5);
    constexpr int kMilli = 1'000'000;
    const std::pair<Time, std::vector<const char*>> cases[] = {
        {day, {"2023-10-09"}},
        {day + (3 * 60 + 4) * 60'000'000'000, {"2023-10-09 03:04"}},
        {time, {"2023-10-09 03:04:05", "2023-10-09T03:04:05Z", "2023/10/9 3:04:05", "2023-Oct-09 03:04:05"}},
        {time,
         {"20231009T030405Z", "20231009030405", "231009 030405", "231009 03:04:05", "23/10/09 03:04:05"}},
        {time, {"Mon Oct  9 03:04:05 2023", "Mon Oct  9 03:04:05 UTC 2023", "Mon, 09 Oct 2023 03:04:05 GMT"}},
        {time,
         {"Oct 9, 2023 3:04:05 AM", "9 Oct 2023 03:04:05", "09.10.2023 03:04:05", "10/09/2023 03:04:05"}},
        {time, {"Oct  9 03:04:05", "9.10. 03:04:05", "10/09-03:04:05", "1696820645"}},
        {time + 678 * kMilli,
         {"2023-10-09 03:04:05,678", "2023.10.09-03.04.05:678", "09-Oct-2023 03:04:05.678",
          "10-09 03:04:05.678", "1009/030405.678", "1696820645.678", "1696820645678"}},
        {time + 678'901'234 - 7'200'000'000'000, {"2023-10-09T03:04:05.678901234+02:00"}},
        {time + 500 * kMilli + 12'600'000'000'000, {"2023-10-09 03:04:05.5 -0330"}},
        {time + 10'800'000'000'000, {"2023-10-09 03:04:05-03"}},
        {time - 7'200'000'000'000, {"2023-10-09 03:04:05 CEST", "09/Oct/2023:03:04:05 +0200"}},
        {time + 678'901'000,
         {"2023-10-09-03.04.05.678901", "Mon Oct 09 03:04:05.678901 2023", "1009 03:04:05.678901",
          "1696820645678901"}},
        {time + 78 * kMilli, {"20231009-3:4:5:78"}},
        {time + 12 * 3600'000'000'000, {"October 9, 2023 3:04:05 PM"}},
        {time - 3 * 3600'000'000'000, {"Oct  9 2023 12:04:05 AM"}},
        {time + 678'901'234, {"1696820645678901234"}},
        {12'345'678'000, {"12.345678"}},
        {TimeAt(2024, 3, 1, 3, 4, 5, 678 * kMilli), {"03:04:05.678"}},
        {TimeAt(2024, 2, 29, 23, 59, 59), {"23:59:59"}},
        {TimeAt(2261, 12, 31, 23, 59, 59), {"9999-12-31 00:00:00"}},
        {TimeAt(1678, 1, 1), {"0001-01-01 00:00:00"}},
    };
    for (const auto& [expected, texts] : cases)
        for (const char* text : texts)
        {
            TimeText times(kReference);
            for (int twice = 0; twice < 2; ++twice) // the second time by what is remembered of the first
            {
                Time read = kNoTime;
                EXPECT_TRUE(times.Read(text, read)) << text;
                EXPECT_EQ(expected, read) << text;
            }
        }
    for (const char* text :
         {"", "x", "2023-13-09 03:04:05", "2023-02-29 03:04:05", "2023-10-09 24:04:05", "2023-10-09 03:60:05",
          "2023-10-09 03:04:05 1", "123", "99999999999999999999", "Foo 9 03:04:05", "31/31/2023 03:04:05",
          "2023-10-09 03:04:05.678 ?", "Feb 30 03:04:05", "9300000000000000000", "1:2:x", "-5"})
        if (Time read = 0; true)
            EXPECT_FALSE(TimeText(kReference).Read(text, read)) << text;
}

TEST(TimeText, SettlesWhatIsLeftOut)
{
    const auto yearsOf = [](const std::vector<const char*>& texts) {
        TimeText times(kReference);
        std::string years;
        for (const char* text : texts)
        {
            Time time = 0;
            EXPECT_TRUE(times.Read(text, time)) << text;
            years += std::to_string(1970 + static_cast<int>(static_cast<double>(time) / 31'556'952e9)) + " ";
        }
        return years;
    };
    EXPECT_EQ("2023 2023 2024 2023 2024 ", yearsOf({"Mar 20 10:00:00", "Dec 20 10:00:00", "Jan 20 10:00:00",
                                                    "Dec 20 10:00:01", "Jan 20 10:00:02"}));
    EXPECT_EQ("2024 2024 ",
              yearsOf({"Mar  2 10:00:00", "Feb 20 10:00:00"})); // a day later at most, and no step back
    EXPECT_EQ("2024 ", yearsOf({"Feb 29 10:00:00"}));

    TimeText times(kReference);
    Time first = 0;
    Time second = 0;
    ASSERT_TRUE(times.Read("23:59:59", first) && times.Read("00:00:01", second)); // another day begins
    EXPECT_EQ(2'000'000'000, second - first);

    const auto readAfter = [](const char* learned, const char* text) {
        TimeText log(kReference);
        log.Learn(learned);
        Time time = kNoTime;
        log.Read(text, time);
        return time;
    };
    EXPECT_EQ(TimeAt(2023, 3, 4), readAfter("", "04.03.2023 00:00:00"));
    EXPECT_EQ(TimeAt(2023, 4, 3), readAfter("04.13.2023 00:00:00", "04.03.2023 00:00:00"));
    EXPECT_EQ(TimeAt(2023, 3, 4), readAfter("13/04/2023 00:00:00", "04/03/2023 00:00:00"));
    EXPECT_EQ(TimeAt(2005, 4, 3), readAfter("", "05/04/03 00:00:00"));
    EXPECT_EQ(TimeAt(2003, 4, 5), readAfter("31/05/03 00:00:00", "05/04/03 00:00:00"));
}

TEST(LevelWords, AnyCaseAndTheUsualSpellings)
{
    const std::vector<const char*> words[] = {
        {"TRACE", "finest"},  {"Debug", "debug2", "V"},   {"INFO", "Informational", "notice"},
        {"Warn", "WRN", "w"}, {"ERROR", "err", "SEVERE"}, {"fatal", "crit", "EMERG", "panic"}};
    std::uint32_t level = 0;
    for (std::uint32_t expected = 0; expected < 6; ++expected)
        for (const char* word : words[expected])
            EXPECT_TRUE(FindLevel(word, level) && level == expected) << word;
    level = 99;
    for (const char* word : {"informatio", "", "x", "information overflow", "1"})
        EXPECT_TRUE(!FindLevel(word, level) && level == 99) << word;
    const std::pair<double, std::uint32_t> numbers[] = {{0, 5},  {3, 4},  {4, 3},  {7, 1},   {8, 2}, {10, 0},
                                                        {30, 2}, {50, 4}, {60, 5}, {100, 2}, {-1, 2}};
    for (const auto& [number, expected] : numbers)
        EXPECT_EQ(expected, LevelOfNumber(number)) << number;
}

} // namespace msgservice
