// Runs against the built QmPlatform.dll, with real files, environment and profile.
#include "vkservices/IAppRegistry.h"
#include "vkservices/Services.h"
#include "zemacore/AppDataManager.h"
#include "zemacore/FileCalls.h"

#include "FileCallsCases.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{

// Sets a variable of the environment, or removes it when `value` is null, and puts it back at the end.
class EnvironmentGuard
{
public:
    EnvironmentGuard(const char* name, const char* value) : m_name(name)
    {
        char before[4096];
        m_wasSet = ::GetEnvironmentVariableA(name, before, sizeof(before)) != 0;
        m_before = m_wasSet ? before : "";
        ::SetEnvironmentVariableA(name, value);
    }

    EnvironmentGuard(const EnvironmentGuard&) = delete;
    EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

    ~EnvironmentGuard() { ::SetEnvironmentVariableA(m_name, m_wasSet ? m_before.c_str() : nullptr); }

private:
    const char* m_name;
    std::string m_before;
    bool m_wasSet;
};

// A fresh folder, gone after the test.
class FreshFolder
{
public:
    FreshFolder()
    {
        char temp[MAX_PATH];
        ::GetTempPathA(sizeof(temp), temp);
        m_path = temp + ("QmPlatformTest" + std::to_string(::GetCurrentProcessId()));
        std::filesystem::remove_all(m_path);
        std::filesystem::create_directories(m_path);
    }

    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;

    ~FreshFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string operator/(const std::string& name) const { return m_path + "\\" + name; }

private:
    std::string m_path;
};

class WindowsFilesRules : public testing::TestWithParam<file_calls::Case>
{
protected:
    FreshFolder m_folder;
};

TEST_P(WindowsFilesRules, AreTheSystems)
{
    GetParam().check({ZEMA::FileCalls(), m_folder / "Main.LOG"});
}

INSTANTIATE_TEST_SUITE_P(, WindowsFilesRules, testing::ValuesIn(file_calls::Cases()), file_calls::CaseName);

TEST(WindowsFiles, ErrorTextIsTheSystemsWithItsLineEnd)
{
    const std::string text = ZEMA::FileCalls().ErrorText(ERROR_FILE_NOT_FOUND);
    EXPECT_LT(2u, text.size());
    EXPECT_EQ("\r\n", text.substr(text.size() - 2));
    EXPECT_EQ("", ZEMA::FileCalls().ErrorText(0xDEADBEEF));
}

TEST(WindowsFiles, ANullTablePutsTheSystemsBack)
{
    ZEMA::IFileCalls* const own = &ZEMA::FileCalls();
    EXPECT_EQ(own, ZEMA::SetFileCalls(nullptr));
    EXPECT_EQ(own, &ZEMA::FileCalls());
}

class WindowsPlatformTest : public testing::Test
{
protected:
    static std::string LogFolder(DWORD size = MAX_PATH)
    {
        std::string folder(MAX_PATH, '?');
        const DWORD length =
            AppDataManager::LoadAppDataManager()->GetAccess()->GetLogFolder(folder.data(), size);
        EXPECT_EQ(std::strlen(folder.c_str()), length);
        return folder.c_str();
    }

    static IProfileStore& Profile() { return *AppDataManager::LoadAppDataManager()->GetProfileStore(); }

    void WriteIni(const std::string& text) { std::ofstream(m_folder / "Test.ini") << text; }

    std::string ReadIni()
    {
        std::ostringstream text;
        text << std::ifstream(m_folder / "Test.ini").rdbuf();
        return text.str();
    }

    FreshFolder m_folder;
    EnvironmentGuard m_profile{"QM_PROFILE", (m_folder / "Test.ini").c_str()};
};

TEST_F(WindowsPlatformTest, TheLogFolderIsMadeAndEndsWithABackslash)
{
    const std::string folder = m_folder / "a\\b";
    for (const char* const end : {"", "\\", "/"})
    {
        const EnvironmentGuard guard("QM_LOG_FOLDER", (folder + end).c_str());
        EXPECT_EQ(folder + "\\", LogFolder());
        EXPECT_TRUE(std::filesystem::remove(folder)) << "not made for '" << end << "'";
    }
    for (const char* const unset : {static_cast<const char*>(nullptr), ""})
    {
        const EnvironmentGuard guard("QM_LOG_FOLDER", unset);
        const EnvironmentGuard local("LOCALAPPDATA", (m_folder / "Local").c_str());
        EXPECT_EQ(m_folder / "Local\\QmLog\\Logs\\", LogFolder());
        EXPECT_TRUE(std::filesystem::is_directory(m_folder / "Local\\QmLog\\Logs"));
    }
}

TEST_F(WindowsPlatformTest, NoLogFolderIsTheEmptyText)
{
    const std::string folder = m_folder / "logs";
    {
        const EnvironmentGuard guard("QM_LOG_FOLDER", folder.c_str());
        EXPECT_EQ("", LogFolder(static_cast<DWORD>(folder.size() + 1))); // no room for backslash and NUL
        EXPECT_FALSE(std::filesystem::exists(folder));
        EXPECT_EQ(folder + "\\", LogFolder(static_cast<DWORD>(folder.size() + 2)));
    }
    WriteIni("a file stands where the folder should be");
    const EnvironmentGuard guard("QM_LOG_FOLDER", (m_folder / "Test.ini\\logs").c_str());
    EXPECT_EQ("", LogFolder());
    const EnvironmentGuard tooLong("QM_LOG_FOLDER", (m_folder / std::string(3000, 'n')).c_str());
    EXPECT_EQ("", LogFolder());
    const EnvironmentGuard unset("QM_LOG_FOLDER", nullptr);
    const EnvironmentGuard noHome("LOCALAPPDATA", nullptr);
    EXPECT_EQ("", LogFolder());
}

TEST_F(WindowsPlatformTest, ProfileNumbersAreReadInEveryNotation)
{
    struct
    {
        const char* text;
        int integer;
        COLORREF color;
    } const cases[] = {
        {"42", 42, 42},
        {"-7", -7, 99},
        {"+7", 7, 7},
        {"0x00FF8000", 0xFF8000, 0xFF8000},
        {"0XfF", 255, 255},
        {"0xFFFFFFFF", -1, 0xFFFFFFFF},
        {"-2147483648", -2147483647 - 1, 99},
        {"4294967296", 99, 99},
        {"99999999999999999999", 99, 99},
        {"", 99, 99},
        {"0x", 99, 99},
        {"0x-1", 99, 99},
        {"+-1", 99, 99},
        {"12 apples", 99, 99},
        {"red", 99, 99},
    };
    for (const auto& [text, integer, color] : cases)
    {
        WriteIni(std::string("[View]\nKey=") + text + "\n");
        EXPECT_EQ(integer, Profile().GetInteger("View", "Key", 99)) << text;
        EXPECT_EQ(color, Profile().GetColor("View", "Key", 99)) << text;
    }
    EXPECT_EQ(99, Profile().GetInteger("View", "Missing", 99));
    EXPECT_EQ(99, Profile().GetInteger("Missing", "Key", 99));
}

TEST_F(WindowsPlatformTest, ProfileValuesAreKeptAndRemoved)
{
    // The first write makes the folder; reading and removing do not.
    const EnvironmentGuard unset("QM_PROFILE", nullptr);
    const EnvironmentGuard data("APPDATA", (m_folder / "Data").c_str());
    EXPECT_EQ(5, Profile().GetInteger("View", "Width", 5));
    EXPECT_TRUE(Profile().RemoveKey("View", "Width"));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "Data"));
    EXPECT_TRUE(Profile().SetInteger("View", "Width", -12));
    EXPECT_TRUE(std::filesystem::exists(m_folder / "Data\\QmLog\\Profile.ini"));
    EXPECT_EQ(-12, Profile().GetInteger("View", "Width", 5));

    const EnvironmentGuard set("QM_PROFILE", (m_folder / "Test.ini").c_str());
    EXPECT_EQ(5, Profile().GetInteger("View", "Width", 5)); // the other file from now on
    EXPECT_TRUE(Profile().SetColor("View", "Back", RGB(0x12, 0x34, 0xAB)));
    EXPECT_TRUE(Profile().SetInteger("View", "Width", 1));
    EXPECT_NE(std::string::npos, ReadIni().find("Back=0x00AB3412"));
    EXPECT_EQ(RGB(0x12, 0x34, 0xAB), Profile().GetColor("View", "Back", 0));

    // Without the key the system would take these for the whole section.
    EXPECT_FALSE(Profile().RemoveKey("View", nullptr));
    EXPECT_FALSE(Profile().SetInteger(nullptr, "Back", 1));
    EXPECT_EQ(0, Profile().GetInteger("View", nullptr, 0));
    EXPECT_TRUE(Profile().RemoveKey("View", "Back"));
    EXPECT_TRUE(Profile().RemoveKey("View", "Back"));
    EXPECT_EQ(7u, Profile().GetColor("View", "Back", 7));
    EXPECT_EQ(1, Profile().GetInteger("View", "Width", 0));
}

TEST_F(WindowsPlatformTest, ARelativeProfileLiesInTheCurrentFolder)
{
    char before[MAX_PATH];
    ::GetCurrentDirectoryA(sizeof(before), before);
    ::SetCurrentDirectoryA((m_folder / "").c_str());
    {
        const EnvironmentGuard relative("QM_PROFILE", "Test.ini");
        EXPECT_TRUE(Profile().SetInteger("View", "Width", 3));
    }
    ::SetCurrentDirectoryA(before);
    EXPECT_NE(std::string::npos, ReadIni().find("Width=3"));
}

TEST_F(WindowsPlatformTest, TheEnvironmentComesBeforeTheRegistrySection)
{
    auto* const registry = dynamic_cast<IAppRegistry*>(
        VkServices::Services::get_service_registry()->get_service("ServiceId_AppRegistry"));
    ASSERT_NE(nullptr, registry);
    EXPECT_EQ(nullptr, VkServices::Services::get_service_registry()->get_service("ServiceId_Other"));
    EXPECT_EQ(nullptr, VkServices::Services::get_service_registry()->get_service(nullptr));

    const std::string longText(5000, 'x'); // far longer than one guess at a buffer
    WriteIni("[Registry]\nRun.Output.Path=C:\\Ini\nLong=" + longText + "\nEmpty=\n");
    struct
    {
        const char* key;
        const char* environment;
        const char* value; // null: there is none
    } const cases[] = {
        {"Run.Output.Path", "D:\\Env", "D:\\Env"},
        {"Run.Output.Path", "", "C:\\Ini"},
        {"Run.Output.Path", nullptr, "C:\\Ini"},
        {"Long", "D:\\Env", longText.c_str()},
        {"Empty", nullptr, ""},
        {"Missing", nullptr, nullptr},
        {nullptr, nullptr, nullptr},
    };
    for (const auto& [key, environment, expected] : cases)
    {
        const EnvironmentGuard guard("QM_RUN_OUTPUT_PATH", environment);
        ZEMA::String value("left over");
        EXPECT_EQ(expected != nullptr, registry->GetString(key, value)) << (key ? key : "null");
        EXPECT_STREQ(expected ? expected : "", value.c_str());
    }
}

} // namespace
