#include "tests/support/MemorySession.h"
#include "zemacore/File.h"
#include "zemacore/String.h"

#include <gtest/gtest.h>

namespace
{

TEST(String, TakesNullAsTheEmptyText)
{
    ZEMA::String text(nullptr);
    text += nullptr;
    EXPECT_STREQ("", text.c_str());
}

TEST(MakePath, PutsSeparatorsWhereTheyAreMissing)
{
    char path[MAX_PATH] = "Main"; // a part may lie in the path itself
    EXPECT_TRUE(ZEMA_makepath(path, "C", "\\Logs", path, path));
    EXPECT_STREQ("C:\\Logs\\Main.Main", path);
    EXPECT_TRUE(ZEMA_makepath(path, "C:", "/Logs/", "Main", ".LOG"));
    EXPECT_STREQ("C:/Logs/Main.LOG", path);
    EXPECT_TRUE(ZEMA_makepath(path, nullptr, "Logs", nullptr, nullptr));
    EXPECT_STREQ("Logs\\", path);
    EXPECT_TRUE(ZEMA_makepath(path, "", nullptr, "", "LOG"));
    EXPECT_STREQ(".LOG", path);
}

TEST(SplitPath, TakesPathsApart)
{
    const std::string longest(MAX_PATH - 1, 'n');
    const std::pair<std::string, std::string> cases[] = {
        {"C:\\Logs\\Main.LOG", "|C:|\\Logs\\|Main|.LOG|"},
        {"C:/Logs\\a/Main.old.LOG", "|C:|/Logs\\a/|Main.old|.LOG|"},
        {"\\\\server\\share.d\\Main", "||\\\\server\\share.d\\|Main||"},
        {"Main.", "|||Main|.|"},
        {"\\", "||\\|||"},
        {longest, "|||" + longest + "||"},
        {longest + "n", "refused|||||"},
    };
    for (const auto& [path, expected] : cases)
    {
        AppDataPath parts;
        std::memset(&parts, '?', sizeof(parts));
        const bool done = MemoryManager().SplitPath(path.c_str(), parts);
        std::string split = done ? "|" : "refused|";
        for (const char* const part : {parts.drive, parts.directory, parts.name, parts.extension})
            split += part + std::string("|");
        EXPECT_EQ(expected, split);
    }
}

} // namespace
