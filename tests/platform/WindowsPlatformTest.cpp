// The environment, the profile and the registry as the built QmPlatform.dll gives them.

#include "tests/support/LogFolder.h"
#include "vkservices/IAppRegistry.h"
#include "vkservices/Services.h"
#include "zemacore/AppDataManager.h"

#include <cstring>
#include <filesystem>

namespace
{

class WindowsPlatformTest : public LogFolderTest
{
protected:
    std::string LogFolder(std::size_t size = MAX_PATH)
    {
        char folder[MAX_PATH] = "?";
        const DWORD length = manager.GetAccess()->GetLogFolder(folder, static_cast<DWORD>(size));
        EXPECT_EQ(std::strlen(folder), length);
        return folder;
    }

    IAppDataManager& manager = *AppDataManager::LoadAppDataManager();
    IProfileStore& profile = *manager.GetProfileStore();
};

TEST_F(WindowsPlatformTest, TheLogFolderIsMadeAndEndsWithABackslash)
{
    const std::string folder = Path("a\\b");
    for (const char* const end : {"", "\\", "/"})
    {
        SetVariable("QM_LOG_FOLDER", folder + end);
        EXPECT_EQ("", LogFolder(folder.size() + 1)) << "no room for the NUL";
        EXPECT_FALSE(std::filesystem::exists(folder));
        EXPECT_EQ(folder + "\\", LogFolder(folder.size() + 2));
        EXPECT_TRUE(std::filesystem::remove(folder)) << "not made for '" << end << "'";
    }
    SetVariable("QM_LOG_FOLDER", "");
    SetVariable("LOCALAPPDATA", Path("Local"));
    EXPECT_EQ(Path("Local\\QmLog\\Logs\\"), LogFolder());
    EXPECT_TRUE(std::filesystem::exists(Path("Local\\QmLog\\Logs")));
    SetVariable("LOCALAPPDATA", "");
    EXPECT_EQ("", LogFolder());

    SetContents("Taken", "mine");
    for (const std::string& refused : {Path("Taken"), Path("Taken\\logs"), Path(std::string(3000, 'n'))})
    {
        SetVariable("QM_LOG_FOLDER", refused);
        EXPECT_EQ("", LogFolder()) << refused;
    }
    EXPECT_EQ("mine", Contents("Taken"));
}

TEST_F(WindowsPlatformTest, ProfileNumbersAreReadInEveryNotation)
{
    struct
    {
        const char* text;
        int integer;
        COLORREF color;
    } const cases[] = {
        {"+7", 7, 7},
        {"0X00fF8000", 0xFF8000, 0xFF8000},
        {"0xFFFFFFFF", -1, 0xFFFFFFFF},
        {"-2147483648", -2147483647 - 1, 99},
        {"4294967296", 99, 99},
        {"0x-1", 99, 99},
        {"12 apples", 99, 99},
    };
    for (const auto& [text, integer, color] : cases)
    {
        SetContents("Profile.ini", std::string("[View]\nKey=") + text + "\n");
        EXPECT_EQ(integer, profile.GetInteger("View", "Key", 99)) << text;
        EXPECT_EQ(color, profile.GetColor("View", "Key", 99)) << text;
    }
}

TEST_F(WindowsPlatformTest, ProfileValuesAreKeptAndRemoved)
{
    // The first write makes the folder; reading and removing do not.
    SetVariable("QM_PROFILE", "");
    SetVariable("APPDATA", Path("Data"));
    EXPECT_EQ(5, profile.GetInteger("View", "Width", 5));
    EXPECT_TRUE(profile.RemoveKey("View", "Width"));
    EXPECT_FALSE(std::filesystem::exists(Path("Data")));
    EXPECT_TRUE(profile.SetInteger("View", "Width", -12));
    EXPECT_NE("", Contents("Data\\QmLog\\Profile.ini"));
    EXPECT_EQ(-12, profile.GetInteger("View", "Width", 5));

    // Another file from now on. Without a folder it lies in the current one, not among the system's.
    ::SetCurrentDirectoryA(Path("").c_str());
    SetVariable("QM_PROFILE", "Other.ini");
    EXPECT_EQ(5, profile.GetInteger("View", "Width", 5));
    EXPECT_TRUE(profile.SetInteger("View", "Width", 1));
    EXPECT_TRUE(profile.SetColor("View", "Back", RGB(0x12, 0x34, 0xAB)));
    ::SetCurrentDirectoryA("C:\\"); // a folder in use is not removed
    SetVariable("QM_PROFILE", Path("Other.ini"));
    EXPECT_NE(std::string::npos, Contents("Other.ini").find("Back=0x00AB3412"));
    EXPECT_EQ(RGB(0x12, 0x34, 0xAB), profile.GetColor("View", "Back", 0));

    // Without the key the system would take these for the whole section.
    EXPECT_FALSE(profile.RemoveKey("View", nullptr));
    EXPECT_EQ(0, profile.GetInteger("View", nullptr, 0));
    EXPECT_TRUE(profile.RemoveKey("View", "Back"));
    EXPECT_EQ(7u, profile.GetColor("View", "Back", 7));
    EXPECT_EQ(1, profile.GetInteger("View", "Width", 0));

    char text[6] = "old";
    EXPECT_EQ(0u, profile.GetText("View", "Path", text, sizeof(text)));
    EXPECT_STREQ("", text);
    EXPECT_TRUE(profile.SetText("View", "Path", "C:\\a b.log"));
    EXPECT_EQ(10u, profile.GetText("View", "Path", text, sizeof(text)));
    EXPECT_STREQ("C:\\a ", text);
    EXPECT_FALSE(profile.SetText("View", "Path", nullptr));
    EXPECT_EQ(10u, profile.GetText("View", "Path", nullptr, 0));
}

TEST_F(WindowsPlatformTest, TheEnvironmentComesBeforeTheRegistrySection)
{
    auto* const registry = dynamic_cast<IAppRegistry*>(
        VkServices::Services::get_service_registry()->get_service("ServiceId_AppRegistry"));
    ASSERT_NE(nullptr, registry);

    const std::string longText(5000, 'x'); // far longer than one guess at a buffer
    SetContents("Profile.ini", "[Registry]\nRun.Output.Path=C:\\Ini\nLong=" + longText + "\nEmpty=\n");
    const auto value = [registry](const char* key) {
        ZEMA::String text("left over");
        return registry->GetString(key, text) ? text.c_str() : "no value" + std::string(text.c_str());
    };
    SetVariable("QM_RUN_OUTPUT_PATH", "");
    EXPECT_EQ("C:\\Ini", value("Run.Output.Path"));
    SetVariable("QM_RUN_OUTPUT_PATH", "D:\\Env");
    EXPECT_EQ("D:\\Env", value("Run.Output.Path"));
    EXPECT_EQ(longText, value("Long"));
    EXPECT_EQ("", value("Empty"));
    EXPECT_EQ("no value", value("Missing"));
    EXPECT_EQ("no value", value(nullptr));
}

} // namespace
