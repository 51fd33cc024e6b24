#include "logview/find/FindSearch.h"
#include "logview/find/BlockForm.h"
#include "logview/find/FindColors.h"
#include "logview/find/FindState.h"
#include "tests/logview/LogRows.h"
#include "vkgrafic/UiColors.h"

#include "tests/support/LongRun.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>
#include <regex>

namespace logview
{

void PrintTo(const FoundMatch& match, std::ostream* out)
{
    *out << '#' << match.number << " of " << match.file << '.' << match.row;
}

namespace
{

constexpr FindOptions kAnyCase = {};
constexpr FindOptions kExpression = {true, false, true};

std::unique_ptr<FindText> Wanted(const std::string& text, FindOptions options = {true, false, false})
{
    return std::make_unique<FindText>(text, options);
}

// As many steps as it takes, each as short as can be.
void LookAtAll(FindSearch& search)
{
    do
        search.Step([] { return false; });
    while (search.CurrentState() == FindSearch::State::Searching);
}

// ---- What is looked for in a line

TEST(FindText, FindsInALineWhatTheOptionsSay)
{
    constexpr FindOptions kCase = {true, false, false};
    constexpr FindOptions kWords = {false, true, false};
    constexpr FindOptions kWordExpression = {true, true, true};
    const struct
    {
        const char* text;
        FindOptions options;
        const char* line;
        std::vector<FoundStretch> expected;
    } cases[] = {
        {"an", kCase, "banana\n", {{1, 3}, {3, 5}}},
        {"aa", kCase, "aaaaa", {{0, 2}, {2, 4}}},
        {"Job", kAnyCase, "job JOB jab", {{0, 3}, {4, 7}}},
        {"Job", kCase, "job Job", {{4, 7}}},
        {"(a)", kAnyCase, "a (A)", {{2, 5}}},
        {"job", kWords, "jobs job_ job. JOB\r\n", {{10, 13}, {15, 18}}},
        {"job", kWords, "Größejob job", {{11, 14}}},
        {"größe", kAnyCase, "Die GRÖSSE, die GRÖßE", {{17, 24}}},
        {"größe",
         kAnyCase,
         "Die Gr\xF6\xDF"
         "e, gr\xF6\xDF"
         "e",
         {{4, 9}, {11, 16}}}, // in the code page
        {"gr\xF6\xDF"
         "e",
         kCase,
         "größe",
         {{0, 7}}}, // typed in the code page
        {"\xC3", kCase, "Ã", {{0, 2}}},
        {"[a-c]+x?", kExpression, "abx cc x", {{0, 3}, {4, 6}}},
        {"x*", kExpression, "axxb", {{1, 3}}},
        {"x*", kExpression, "ab", {{0, 0}}}, // the line matches, and nothing in it can be marked
        {"^$", kExpression, "\r\n", {{0, 0}}},
        {"b$", kExpression, "ab b\r\n", {{3, 4}}},
        {"^a", kExpression, "aa", {{0, 1}}},
        {"\\w+", kExpression, "Größe \xE2\x82\xAC 1", {{0, 7}, {12, 13}}},
        {"jobs?", kWordExpression, "jobs jobx", {{0, 4}}},
    };
    for (const auto& each : cases)
    {
        std::vector<FoundStretch> found;
        EXPECT_TRUE(Wanted(each.text, each.options)->FindAll(each.line, 0, found));
        EXPECT_EQ(each.expected, found) << each.text << " in " << each.line;
    }
}

TEST(FindText, TellsWhereAnExpressionIsWrong)
{
    try
    {
        Wanted("ab[c", kExpression);
        FAIL();
    }
    catch (const textmatch::ExpressionError& error)
    {
        EXPECT_EQ(4u, error.Position());
    }
}

TEST(BlockForm, KnowsATextThatEachMatchHas)
{
    const std::pair<const char*, const char*> cases[] = {
        {"failed", "failed"},   {"order [0-9]+ failed", " failed"},
        {"ab*cd?e", "a"},       {"ab+cd", "ab"},
        {"a|bc", ""},           {"(ab|cd)e", "e"},
        {"(?:abc)?de", "de"},   {"ab{2,13}c", "a"},
        {"a\\.b\\d99", "a.b"},  {"[abc]de[^x]fg\\]hi]j", "fg]hi"},
        {"x\xC3\xA4*yz", "yz"}, {"^abc$", "abc"},
    };
    for (const auto& [expression, text] : cases)
        EXPECT_EQ(text, NeededText(expression)) << expression;
}

// ---- Searches against a plain look at each row

// What the rows of sound logs have, by number.
template <typename Count> std::vector<FoundMatch> LiteralMatches(const LogRows& logs, Count countIn)
{
    std::vector<FoundMatch> matches;
    for (unsigned file = 0; file < kFileCount; ++file)
        for (std::size_t row = 0; row < logs.rows[file].size(); ++row)
        {
            const std::size_t begin = logs.rows[file][row].offset;
            const bool isLast = row + 1 == logs.rows[file].size();
            std::string_view line = std::string_view(logs.texts[file]).substr(begin);
            line = isLast ? LastLine(line) : line.substr(0, logs.rows[file][row + 1].offset - begin);
            for (std::size_t count = line.empty() ? 0 : countIn(line); count > 0; --count)
                matches.push_back({logs.rows[file][row].time, file, static_cast<std::uint32_t>(row)});
        }
    std::sort(matches.begin(), matches.end(),
              [](const FoundMatch& left, const FoundMatch& right) { return left.number < right.number; });
    return matches;
}

std::vector<FoundMatch> MatchesOf(const FindSearch& search)
{
    std::vector<FoundMatch> matches;
    for (std::size_t i = 0; i < search.Matches().Count(); ++i)
        matches.push_back(search.Matches().At(i));
    return matches;
}

// Non-empty matches as the standard library has them; one for a line with empty ones only.
std::size_t CountByRegex(const std::regex& regex, std::string_view line)
{
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    std::size_t count = 0;
    bool any = false;
    const char* at = line.data();
    const char* const end = at + line.size();
    std::cmatch match;
    while (std::regex_search(at, end, match, regex,
                             at == line.data() ? std::regex_constants::match_default
                                               : std::regex_constants::match_prev_avail))
    {
        any = true;
        count += match.length() > 0 ? 1 : 0;
        at = match[0].second + (match.length() > 0 ? 0 : 1);
        if (at > end)
            break;
    }
    return any && count == 0 ? 1 : count;
}

// No looking ahead for what must come: PCRE2 10.42 then takes two letters to be needed where one is.
std::string RandomExpression(Random& random, int depth = 0)
{
    static const char* const kAtoms[] = {"a",   "b",   "ab",  ".",   "[ab]", "[^a]", "\\w",    "\\s",
                                         "\\d", "\\W", "\\.", "\\S", "c",    "1",    "(?:a|c)"};
    static const char* const kPlaces[] = {"^", "$", "\\b", "(?!b)"};
    static const char* const kTimes[] = {"", "", "", "", "*", "+", "?", "{1,2}", "+?"};
    std::string text;
    for (int i = random(3); i >= 0; --i)
    {
        const bool isGroup = depth == 0 && random(4) == 0;
        if (random(5) == 0)
            text += kPlaces[random(std::size(kPlaces))];
        else if (isGroup)
            text += "(" + RandomExpression(random, 1) + "|" + RandomExpression(random, 1) + ")";
        else
            text += std::string(kAtoms[random(std::size(kAtoms))]) + kTimes[random(std::size(kTimes))];
    }
    return text;
}

std::string RandomLine(Random& random)
{
    static const char* const kPieces[] = {"a", "b", "c", "ab", " ", ".", "1", "x", "\t"};
    std::string line;
    for (int i = random(8); i > 0; --i)
        line += kPieces[random(std::size(kPieces))];
    return line + (random(4) == 0 ? "\r\n" : "\n");
}

TEST(FindSearch, FindsWhatTheStandardLibraryDoes)
{
    const unsigned seed = FirstSeed();
    for (unsigned round = 0; round < Rounds(400u, 20000u); ++round)
    {
        SCOPED_TRACE(SeedText(seed + round));
        Random random(seed + round);
        LogRows logs;
        for (int i = random(40); i >= 0; --i)
            logs.Add(static_cast<unsigned>(random(kFileCount)), RandomLine(random));
        const std::string expression = RandomExpression(random);
        const std::regex regex(expression);
        FindSearch search(logs);
        search.Begin(Wanted(expression, kExpression), 0);
        LookAtAll(search);
        EXPECT_EQ(LiteralMatches(logs, [&](std::string_view line) { return CountByRegex(regex, line); }),
                  MatchesOf(search))
            << expression;
        EXPECT_EQ(0u, search.RowsGivenUp());
    }
}

// What looks around, refers back or keeps what it has taken sees other lines in a block, but must not heed
// them.
TEST(FindSearch, FindsInEachLineWhatIsInItAlone)
{
    const char* const expressions[] = {"a\\s*+$",  "a[^x]*+\\b", "(?<!\\s)b",  "a(?!\\s)", "\\Ab",
                                       "a\\z",     "(a|b)\\1",   "(?>a\\W*)$", "[^a]+?b",  "(?s)a.*b",
                                       "(?<=^)b",  "\\Bb",       "b$",         "a[^x]*$",  "(*ANY)b",
                                       "a\\D*\\W", "x\\R?a",     "^\\s*$",     "[^]a]b"};
    for (const char* const expression : expressions)
    {
        LogRows logs;
        for (const char* const line : {"a\n", "b\n", " b\n", "aa\r\n", "ab\n", "x a\r\n", "\n", "a \n", "b"})
            logs.Add(0, line);
        FindSearch search(logs);
        search.Begin(Wanted(expression, kExpression), 0);
        LookAtAll(search);
        FindText alone(expression, kExpression);
        std::vector<FoundStretch> found;
        EXPECT_EQ(LiteralMatches(logs,
                                 [&](std::string_view line) {
                                     found.clear();
                                     alone.FindAll(line, 0, found);
                                     return found.size();
                                 }),
                  MatchesOf(search))
            << expression;
    }
}

// Lines from none to some that fill blocks and slices, in UTF-8, in the code page, and with a text across
// borders.
std::string RandomText(Random& random)
{
    static const char* const kPieces[] = {"needle",
                                          "Needle",
                                          "n\xC3\xA4"
                                          "del",
                                          "n\xE4"
                                          "del",
                                          "needl",
                                          "\xE2\x82\xAC",
                                          "e"};
    std::string line;
    const int size = random(30) == 0 ? 200'000 + random(400'000) : random(200) == 0 ? 5000 : random(60);
    const int kinds = random(2) == 0 ? 2 : static_cast<int>(std::size(kPieces));
    while (static_cast<int>(line.size()) < size)
        line += random(20) == 0 ? std::string(kPieces[random(kinds)])
                                : std::string(static_cast<std::size_t>(random(size) + 1), '-');
    return line + "\n";
}

TEST(FindSearch, FollowsLogsThatGrowAndAreCut)
{
    struct
    {
        const char* text;
        FindOptions options;
    } const wanted[] = {{"needle", {true, false, false}},
                        {"needle", {}},
                        {"n\xC3\xA4"
                         "del",
                         {}},
                        {"needle", {false, true, false}},
                        {"need.e", kExpression},
                        {"n(?=e)eed", kExpression}};
    const unsigned seed = FirstSeed();
    for (unsigned round = 0; round < Rounds(40u, 3000u); ++round)
    {
        SCOPED_TRACE(SeedText(seed + round));
        Random random(seed + round);
        LogRows logs;
        const auto& [text, options] = wanted[round % std::size(wanted)];
        FindSearch search(logs);
        for (int i = random(100); i > 0; --i)
            logs.Add(static_cast<unsigned>(random(kFileCount)), RandomText(random));
        search.Begin(Wanted(text, options), static_cast<std::uint32_t>(random(100)));
        for (int change = 0; change < 6; ++change)
        {
            for (int steps = random(5); steps > 0; --steps)
                search.Step([] { return false; });
            const unsigned file = static_cast<unsigned>(random(kFileCount));
            if (random(6) == 0 && !logs.rows[file].empty())
            {
                const std::size_t rows = static_cast<std::size_t>(random(logs.rows[file].size()));
                logs.texts[file].resize(logs.rows[file][rows].offset);
                logs.rows[file].resize(rows);
            }
            for (int i = random(20); i > 0; --i)
                logs.Add(static_cast<unsigned>(random(kFileCount)), RandomText(random));
        }
        LookAtAll(search);

        FindText line(text, options);
        std::vector<FoundStretch> found;
        const auto expected = LiteralMatches(logs, [&](std::string_view each) {
            found.clear();
            line.FindAll(each, 0, found);
            return found.size();
        });
        EXPECT_EQ(expected, MatchesOf(search)) << text;
        EXPECT_EQ(search.RowsInAll(), search.RowsDone());
    }
}

TEST(FindSearch, FindsTextsAcrossTheSlicesOfALine)
{
    const std::pair<const char*, FindOptions> wanted[] = {
        {"needle", {true, false, false}}, {"needle", {false, true, false}}, {"n[e]edl.", kExpression}};
    for (const auto& [text, options] : wanted)
        for (const std::size_t slice : {4096u, 256u * 1024})
        {
            std::string line(3 * slice, '-');
            std::size_t count = 0;
            for (std::size_t at = 1; at + 20 < line.size(); at += 7, ++count)
                line.replace(at, 6, "needle");
            LogRows logs;
            logs.Add(2, line + "\n");
            logs.Add(2, "needle\n");
            FindSearch search(logs);
            search.Begin(Wanted(text, options), 0);
            LookAtAll(search);
            EXPECT_EQ(count + 1, search.Matches().Count()) << text << ", " << slice;
        }
}

TEST(FindSearch, KeepsTheOrderOfMoreMatchesThanABlockHas)
{
    LogRows logs;
    for (unsigned i = 0; i < 1500; ++i)
        logs.Add(i % 3, std::string(40, 'x') + "\n");
    FindSearch search(logs);
    search.Begin(Wanted("x"), 700);
    LookAtAll(search);
    EXPECT_EQ(LiteralMatches(logs, [](std::string_view) { return 40u; }), MatchesOf(search));
}

TEST(FindSearch, BeginsAgainWhenLogsAreReplaced)
{
    LogRows logs;
    logs.Add(0, "ab\n");
    FindSearch search(logs);
    search.Begin(Wanted("ab"), 0);
    LookAtAll(search);
    logs = LogRows();
    logs.time = 5;
    logs.Add(0, "xy\n");
    logs.Add(0, "ab\n");
    LookAtAll(search);
    EXPECT_EQ((std::vector<FoundMatch>{{7, 0, 1}}), MatchesOf(search));
}

// A writer makes rows before their text, and a line's end comes last.
TEST(FindSearch, LooksAgainAtRowsWhoseTextComesLater)
{
    for (const std::size_t cut : {0, 2, 3, 6, 9, 12, 13, 17, 18})
    {
        LogRows logs;
        logs.Add(0, "ab ab\n");
        logs.Add(0, "x ab\n");
        logs.Add(0, "ab ab ab");
        logs.Add(1, "ab\n");
        const std::string text = logs.texts[0];
        logs.texts[0].resize(cut);
        FindSearch search(logs);
        search.Begin(Wanted("ab"), 2);
        LookAtAll(search);
        logs.texts[0] = text;
        LookAtAll(search);
        EXPECT_EQ((std::vector<FoundMatch>{
                      {1, 0, 0}, {1, 0, 0}, {2, 0, 1}, {3, 0, 2}, {3, 0, 2}, {3, 0, 2}, {4, 1, 0}}),
                  MatchesOf(search))
            << cut;
    }
}

TEST(FindSearch, EndsWhateverTheIndexHolds)
{
    const unsigned seed = FirstSeed();
    for (unsigned round = 0; round < Rounds(100u, 3000u); ++round)
    {
        SCOPED_TRACE(SeedText(seed + round));
        Random random(seed + round);
        LogRows logs;
        for (int i = random(60); i > 0; --i)
            logs.Add(static_cast<unsigned>(random(2)), RandomText(random));
        for (int i = random(20); i > 0; --i)
            for (std::vector<CQmLogRow>& rows : logs.rows)
                if (!rows.empty())
                {
                    CQmLogRow& row = rows[static_cast<std::size_t>(random(rows.size()))];
                    (random(2) == 0 ? row.offset : row.time) =
                        random(2) == 0 ? static_cast<std::uint32_t>(random.engine()) : row.offset / 2;
                }
        FindSearch search(logs);
        search.Begin(Wanted("need.e", kExpression), static_cast<std::uint32_t>(random(60)));
        LookAtAll(search);
        EXPECT_EQ(search.RowsInAll(), search.RowsDone());
        const std::vector<FoundMatch> matches = MatchesOf(search);
        for (std::size_t i = 0; i < matches.size(); ++i)
        {
            EXPECT_LT(matches[i].row, logs.rows[matches[i].file].size());
            EXPECT_TRUE(i == 0 || matches[i - 1].number <= matches[i].number);
        }
    }
}

// ---- Places

TEST(FindSearch, AnswersPlacesAsSoonAsTheyAreKnown)
{
    using Answer = FindSearch::Answer;
    const unsigned seed = FirstSeed();
    for (unsigned round = 0; round < Rounds(100u, 3000u); ++round)
    {
        SCOPED_TRACE(SeedText(seed + round));
        Random random(seed + round);
        LogRows logs;
        for (int i = random(60); i > 0; --i)
            logs.Add(static_cast<unsigned>(random(2)),
                     random(4) == 0 ? "xx\n" : std::string(5000, '-') + "\n");
        const auto all = LiteralMatches(logs, [](std::string_view line) { return line == "xx\n" ? 2u : 0u; });
        FindSearch search(logs);
        search.Begin(Wanted("x"), static_cast<std::uint32_t>(random(70)));
        bool isDone = false;
        while (!isDone)
        {
            search.Step([] { return false; });
            isDone = search.CurrentState() == FindSearch::State::Done;
            for (std::uint32_t number = 0; number < 70; ++number)
            {
                const auto begin = std::partition_point(
                    all.begin(), all.end(), [=](const FoundMatch& each) { return each.number < number; });
                std::size_t index = 0;
                const Answer next = search.FindNext(number, index);
                ASSERT_TRUE(!isDone || next != Answer::Wait);
                if (next == Answer::Found)
                    EXPECT_EQ(begin == all.end() ? all.front() : *begin, search.Matches().At(index));
                const Answer previous = search.FindPrevious(number, index);
                if (previous == Answer::Found)
                    EXPECT_EQ(begin == all.begin() ? all.back() : begin[-1], search.Matches().At(index));
                if (isDone)
                {
                    EXPECT_EQ(all.empty() ? Answer::None : Answer::Found, next);
                    EXPECT_EQ(next, previous);
                }
            }
        }
        const std::vector<std::uint32_t> counts = search.Matches().CountStretches(1, 60, 7);
        for (std::size_t i = 0; i < counts.size(); ++i)
            EXPECT_EQ(std::count_if(all.begin(), all.end(),
                                    [&](const FoundMatch& each) { return (each.number - 1) * 7 / 60 == i; }),
                      counts[i]);
    }
}

TEST(FindSearch, StopsAtItsBound)
{
    LogRows logs;
    logs.Add(0, "x\n");
    logs.Add(1, std::string(FindMatches::kMost + 10, 'x') + "\n");
    FindSearch search(logs);
    search.Begin(Wanted("x"), 2);
    LookAtAll(search);
    EXPECT_EQ(FindSearch::State::Full, search.CurrentState());
    EXPECT_EQ(FindMatches::kMost, search.Matches().Count());
    EXPECT_EQ(2u, search.Matches().At(0).number);
    logs = LogRows();
    LookAtAll(search);
    EXPECT_EQ(FindSearch::State::Done, search.CurrentState()); // the logs were replaced
}

TEST(FindSearch, CountsRowsThatAnExpressionIsGivenUpFor)
{
    LogRows logs;
    logs.Add(0, std::string(40, 'a') + "c\n");
    logs.Add(0, "aa\n");
    logs.Add(0, std::string(20000, 'a') + "c\n");
    FindSearch search(logs);
    search.Begin(Wanted("(a|aa)+$", kExpression), 0);
    LookAtAll(search);
    EXPECT_EQ(2u, search.RowsGivenUp());
    EXPECT_EQ((std::vector<FoundMatch>{{2, 0, 1}}), MatchesOf(search));
}

// ---- What is told and seen

TEST(FindState, TellsHowFarItIsAndWhatWasFound)
{
    using enum FindProgress;
    const std::pair<FindState, const char*> cases[] = {
        {{}, ""},
        {{Searching, 40}, "searching 40 %"},
        {{Searching, 40, 17}, "searching 40 %, 17 found"},
        {{Searching, 40, 17, 3}, "searching 40 %, 3 of 17"},
        {{Cancelled, 5, 1}, "cancelled at 5 %, 1 found"},
        {{Done, 100}, "nothing found"},
        {{Done, 100, 17, 3}, "3 of 17"},
        {{Full, 30, 1000000, 2}, "2 of 1000000+"},
        {{Done, 100, 0, 0, 1}, "nothing found, 1 row is too costly"},
        {{Done, 100, 4, 0, 2}, "4 found, 2 rows are too costly"},
        {{None, 0, 0, 0, 0, "missing )"}, "missing )"},
        {{Done, 100, 17, 3, 0, "", true}, "3 of 17, whose row cannot be shown"},
        {{Done, 100, 17, 0, 0, "", true}, "17 found"},
    };
    for (const auto& [state, text] : cases)
        EXPECT_EQ(text, FindStateText(state));
}

TEST(FindColors, KeepTextsReadableOnMarks)
{
    using VkGrafic::Contrast;
    for (const std::uint32_t window : {0xFFFFFFu, 0xF0F0F0u, 0x000000u, 0x1E1E1Eu, 0x808080u})
    {
        const std::uint32_t mark = MatchBackground(window);
        EXPECT_GE(Contrast(mark, window), 1.2);
        for (const std::uint32_t color : {0x000000u, 0xFFFFFFu, 0x00AEE8u, 0x7F7FE8u, 0x7F7F7Fu, 0xD4D4D4u})
        {
            EXPECT_GE(Contrast(MatchText(color, mark), mark), 4.5);
            if (Contrast(color, mark) >= 4.5)
                EXPECT_EQ(color, MatchText(color, mark));
        }
    }
}

} // namespace
} // namespace logview
