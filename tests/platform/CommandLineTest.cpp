// Words and options of a command line.
#include "qmcommandline/QmCommandLineWorker.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{

// Program and words, then each option asked for: its value, or "-" without it.
std::string Told(const QmCommandLineWorker& line, const std::vector<std::string>& options)
{
    std::string told = line.GetProgram() + ":";
    for (const std::string& word : line.GetWords())
        told += " <" + word + ">";
    for (const std::string& name : options)
    {
        std::string value = "-";
        EXPECT_EQ(line.HasOption(name), line.GetOption(name, value));
        told += " " + name + "=" + value;
    }
    return told;
}

TEST(CommandLine, TellsWordsFromOptions)
{
    const struct
    {
        std::vector<std::string> words;
        std::string told;
    } lines[] = {{{}, ": a=- b=-"},
                 {{"p"}, "p: a=- b=-"},
                 {{"-a"}, "-a: a=- b=-"},
                 {{"p", "one", "", "/a", "two words"}, "p: <one> <> </a> <two words> a=- b=-"},
                 {{"p", "-a", "one", "--b=2"}, "p: <one> a= b=2"},
                 {{"p", "--a=1", "--a=x=y z"}, "p: a=x=y z b=-"},
                 {{"p", "-A", "-ab", "--b="}, "p: a=- b="},
                 {{"p", "-", "---", "---a", "-=b"}, "p: <-> <---> <---a> <-=b> a=- b=-"},
                 {{"p", "-a", "--", "-b", "--", "x"}, "p: <-b> <--> <x> a= b=-"}};
    QmCommandLineWorker line;
    for (const auto& [words, told] : lines)
    {
        line.ReadFromWords(words); // each in place of the one before
        EXPECT_EQ(told, Told(line, {"a", "b"}));
    }
    line.ReadFromProcess();
#ifdef _WIN32
    EXPECT_NE(std::string::npos, line.GetProgram().find("tests_windows"));
#else
    EXPECT_EQ(":", Told(line, {}));
#endif
}

} // namespace
