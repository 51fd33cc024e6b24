#include "tests/support/MemorySession.h"
#include "zemacore/File.h"
#include "zemacore/String.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

TEST(String, TakesNullAsTheEmptyText)
{
    ZEMA::String text(nullptr);
    text += nullptr;
    EXPECT_STREQ("", text.c_str());
}

// Beyond the end counts as the end; else as the standard string, NULs among the bytes.
TEST(String, ChangesInPlace)
{
    const std::string start("ab\0ba", 5);
    const std::string added("\0x", 2);
    constexpr std::size_t places[] = {0, 1, 2, 5, 6, ZEMA::String::npos};
    for (const std::size_t at : places)
        for (const std::size_t count : places)
        {
            ZEMA::String text("a longer one");
            text.assign(start.data(), start.size());
            text.deleteAt(at, count);
            text.insertAt(at, added.data(), added.size());

            std::string expected = start;
            expected.erase(std::min(at, expected.size()), count);
            expected.insert(std::min(at, expected.size()), added);
            EXPECT_EQ(expected, std::string(text.c_str(), text.GetLength())) << at << " " << count;
            for (const char byte : {'a', 'x', '\0', '?'})
                EXPECT_EQ(expected.find(byte, at), text.find(byte, at)) << at << " " << count << " " << byte;
        }
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
