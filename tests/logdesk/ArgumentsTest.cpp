#include "logdesk/Arguments.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using logdesk::StepAction;

logdesk::Arguments Parse(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word == "''" ? "" : word);
    return logdesk::ParseArguments(words);
}

TEST(LogDeskArguments, MisuseIsOneLine)
{
    const std::pair<const char*, const char*> cases[] = {
        {"-session", "-session: no option of LogDesk, see LogDesk --help"},
        {"a b", "b: not expected by LogDesk"},
        {"--open", "--open: needs a value"},
        {"--open ''", "'': names no folder or file"},
        {"--open a --open b", "--open: given twice"},
        {"a --folder b", "b: one folder or file is enough"},
        {"''", "'': names no folder or file"},
        {"--start=1", "--start: takes no value"},
        {"--screenshot ''", "--screenshot: names no file"},
        {"--keep 2", "--keep: keeps earlier sessions when a new one begins: give --start as well"},
        {"--start --keep 0", "--keep: '0' is no number from 1 to 1000"},
        {"--start --keep 3x", "--keep: '3x' is no number from 1 to 1000"},
        {"--start --keep 99999999999", "--keep: '99999999999' is no number from 1 to 1000"},
        {"--steps home", "--steps: lead to a picture: give --screenshot as well"},
    };
    for (const auto& [line, message] : cases)
    {
        try
        {
            Parse(line);
            ADD_FAILURE() << line;
        }
        catch (const logdesk::UsageError& error)
        {
            EXPECT_STREQ(message, error.what()) << line;
        }
    }
    for (const char* step :
         {"",          "Home",       "home:1",   "down",         "down:0",         "down:x",
          "follow",    "follow:yes", "size:800", "size:0x600",   "size:800x600x2", "find:",
          "home,,end", "split:100",  "sort",     "sort:nothing", "sort:body:down", "level:2",
          "tab:-1",    "tab:6"})
    {
        EXPECT_THROW(Parse(std::string("--screenshot a.bmp --steps ") + (*step ? step : ",")),
                     logdesk::UsageError)
            << step;
    }
}

TEST(LogDeskArguments, TellFolderKeepingAndSteps)
{
    for (const char* line : {"--help", "/?", "a --help", "-h"})
        EXPECT_TRUE(Parse(line).help) << line;
    EXPECT_TRUE(Parse("--version").version);
    EXPECT_FALSE(Parse("").start) << "nothing is deleted unless asked for";
    for (const char* line : {"c:\\old", "--open c:\\old", "--folder c:\\old"})
    {
        EXPECT_EQ("c:\\old", Parse(line).path) << line;
        EXPECT_FALSE(Parse(line).start) << line;
    }
    EXPECT_TRUE(Parse("--start c:\\logs --keep 3").start);
    EXPECT_EQ(3, Parse("--keep 3 --start c:\\logs").keep);
    EXPECT_EQ("c:\\logs", Parse("--start c:\\logs --keep 3").path);

    const auto steps = Parse("--screenshot a.bmp --steps size:800x600,find:a:b,down:12,follow:off").steps;
    ASSERT_EQ(4u, steps.size());
    EXPECT_EQ(StepAction::Size, steps[0].action);
    EXPECT_EQ(800, steps[0].count);
    EXPECT_EQ(600, steps[0].height);
    EXPECT_EQ("a:b", steps[1].text);
    EXPECT_EQ(12, steps[2].count);
    EXPECT_EQ(StepAction::Follow, steps[3].action);
    EXPECT_EQ(0, steps[3].count);

    const auto more =
        Parse("--screenshot a.bmp --steps sort:error-number,sort:body:desc,level:warning,split:30,tab:0")
            .steps;
    ASSERT_EQ(5u, more.size());
    EXPECT_TRUE(more[0].action == StepAction::Sort && more[0].count == 4 && more[0].height == 0);
    EXPECT_TRUE(more[1].action == StepAction::Sort && more[1].count == 3 && more[1].height == 1);
    EXPECT_TRUE(more[2].action == StepAction::Level && more[2].count == 3);
    EXPECT_TRUE(more[3].action == StepAction::Split && more[3].count == 30);
    EXPECT_TRUE(more[4].action == StepAction::Tab && more[4].count == 0);
}

} // namespace
