#include "zemacore/AppDataManager.h"
#include "zemacore/File.h"
#include "zemacore/MemoryFiles.h"
#include "zemacore/String.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using ZEMA::String;

namespace
{

TEST(String, TakesNullAsTheEmptyText)
{
    String text(nullptr);
    text += nullptr;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_TRUE(text == nullptr);
    EXPECT_STREQ("", text.c_str());
    EXPECT_EQ('\0', text.Last());

    text += "ab";
    text += text.c_str();
    EXPECT_TRUE(text == "abab");
    EXPECT_FALSE(text == nullptr);
    EXPECT_EQ(4u, text.Length());
    EXPECT_EQ('b', text.Last());
}

TEST(String, TrimsWhiteSpaceFromTheEndOnly)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", ""}, {" \t\n\r\v\f", ""}, {" a b\r\n", " a b"}, {"a\xA0", "a\xA0"}, {"a", "a"},
    };
    for (const auto& [text, trimmed] : cases)
    {
        String string(text);
        string.TrimRight();
        EXPECT_STREQ(trimmed, string.c_str());
    }
}

// The path, or "no:" with what is left in the buffer.
std::string MakePath(const char* drive, const char* directory, const char* name, const char* extension)
{
    char path[MAX_PATH];
    std::memset(path, '?', sizeof(path));
    const bool done = ZEMA_makepath(path, drive, directory, name, extension);
    return (done ? "" : "no:") + std::string(path);
}

TEST(MakePath, PutsSeparatorsWhereTheyAreMissing)
{
    EXPECT_EQ("C:\\Logs\\Main.LOG", MakePath("C", "\\Logs", "Main", "LOG"));
    EXPECT_EQ("C:\\Logs\\Main.LOG", MakePath("C:", "\\Logs\\", "Main", ".LOG"));
    EXPECT_EQ("C:/Logs/Main.LOG", MakePath("C:", "/Logs/", "Main", "LOG"));
    EXPECT_EQ("C:Main", MakePath("C:", "", "Main", ""));
    EXPECT_EQ("Logs\\", MakePath(nullptr, "Logs", nullptr, nullptr));
    EXPECT_EQ(".LOG", MakePath("", nullptr, "", "LOG"));
    EXPECT_EQ("", MakePath(nullptr, nullptr, nullptr, nullptr));
    EXPECT_FALSE(ZEMA_makepath(nullptr, "C", "", "Main", "LOG"));
}

TEST(MakePath, RefusesWhatDoesNotFit)
{
    const std::string longest(MAX_PATH - 1, 'n');
    const std::string shorter(MAX_PATH - 5, 'n'); // leaves four characters
    EXPECT_EQ(longest, MakePath("", "", longest.c_str(), ""));
    EXPECT_EQ("no:", MakePath("", "", (longest + "n").c_str(), ""));
    EXPECT_EQ(shorter + ".LOG", MakePath("", "", shorter.c_str(), "LOG"));
    EXPECT_EQ("no:", MakePath("C", "", shorter.c_str(), "LOG"));
    EXPECT_EQ("no:", MakePath("", longest.c_str(), "", "")); // no room for its backslash
    EXPECT_EQ("no:", MakePath("", std::string(100000, 'n').c_str(), "Main", ""));
}

TEST(MakePath, TakesPartsFromItsOwnBuffer)
{
    char path[MAX_PATH] = "Main";
    EXPECT_TRUE(ZEMA_makepath(path, "C", "\\", path, path));
    EXPECT_STREQ("C:\\Main.Main", path);
}

class Access : public IAppDataAccess
{
public:
    DWORD GetLogFolder(char*, DWORD) override { return 0; }
};

// The parts between bars; "no" in front when the path is refused.
std::string Split(const char* path)
{
    AppDataPath parts;
    std::memset(&parts, '?', sizeof(parts));
    const bool done = Access().SplitPath(path, parts);
    const std::string bar = "|";
    return (done ? "" : "no") + bar + parts.drive + bar + parts.directory + bar + parts.name + bar +
           parts.extension + bar;
}

TEST(SplitPath, TakesPathsApart)
{
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\Logs\\Main.LOG", "|C:|\\Logs\\|Main|.LOG|"},
        {"C:/Logs\\a/Main.old.LOG", "|C:|/Logs\\a/|Main.old|.LOG|"},
        {"C:Main", "|C:||Main||"},
        {"C:", "|C:||||"},
        {"\\\\server\\share.d\\Main", "||\\\\server\\share.d\\|Main||"},
        {".LOG", "||||.LOG|"},
        {"Main.", "|||Main|.|"},
        {"\\", "||\\|||"},
        {"", "|||||"},
        {nullptr, "no|||||"},
    };
    for (const auto& [path, parts] : cases)
        EXPECT_EQ(parts, Split(path));
}

TEST(SplitPath, RefusesPathsThatNoPartWouldHold)
{
    const std::string longest(MAX_PATH - 1, 'n');
    EXPECT_EQ("|||" + longest + "||", Split(longest.c_str()));
    EXPECT_EQ("no|||||", Split((longest + "n").c_str()));
}

TEST(File, NoPathIsNullAndARefusalIsInvalid)
{
    ZEMA::MemoryFiles files;
    ZEMA::IFileCalls* const before = ZEMA::SetFileCalls(&files);
    for (const char* const path : {static_cast<const char*>(nullptr), ""})
    {
        EXPECT_EQ(nullptr, ZEMA_CreateFile(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_FALSE(ZEMA_DeleteFile(path));
    }
    EXPECT_EQ(0u, files.CallCount());
    EXPECT_EQ(INVALID_HANDLE_VALUE,
              ZEMA_CreateFile("a", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    const HANDLE file = ZEMA_CreateFile("a", GENERIC_READ, 0, nullptr, OPEN_ALWAYS, 0, nullptr);
    EXPECT_FALSE(ZEMA_DeleteFile("a")); // in use
    files.Close(file);
    EXPECT_TRUE(ZEMA_DeleteFile("a"));
    EXPECT_EQ(&files, ZEMA::SetFileCalls(before));
}

} // namespace
