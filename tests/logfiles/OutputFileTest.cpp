// The run output file.

#include "QmLogOutputFile.h"
#include "tests/support/MemorySession.h"
#include "vkservices/IAppRegistry.h"

#include <gtest/gtest.h>

namespace
{

// A service registry that knows the application registry, or another service under its name.
class Services : public VkServices::IServiceRegistry, public IAppRegistry
{
public:
    Services() { VkServices::Services::set_service_registry(this); }
    ~Services() override { VkServices::Services::set_service_registry(nullptr); }

    VkServices::IService* get_service(const char* id) override
    {
        EXPECT_STREQ("ServiceId_AppRegistry", id);
        return service;
    }
    bool GetString(const char* key, ZEMA::String& value) override
    {
        EXPECT_STREQ("Run.Output.Path", key);
        value = folder;
        return true;
    }

    const char* folder = "C:\\out";
    VkServices::IService* service = this;
};

TEST(OutputFile, BeginsEachOpeningWithALine)
{
    MemorySession session;
    Services services;
    for (int run = 0; run < 2; ++run)
    {
        QmLogOutputFile file("ignored");
        file.SetName("result");
        file.Write("%d%%", 5);
        file.SetName("too late");
        file.WriteLine("line %s", "one");
        file.WriteDirect("a\0b", 3);
    }
    const std::string expected("\n----------5%\nline onea\0b", 25);
    EXPECT_EQ(expected + expected, session.files.Contents("C:\\out\\result.TXT"));
    EXPECT_EQ(1u, session.files.Paths().size());
    EXPECT_EQ(0u, session.files.OpenHandles());
}

TEST(OutputFile, PathsFromTheRegistry)
{
    const std::string deep(250, 'd');
    struct
    {
        std::string folder;
        const char* path; // empty: nothing is created
    } const cases[] = {
        {"C:\\out\\ \t\r\n", "C:\\out\\x.TXT"},
        {"C:/out/", "C:/out/x.TXT"},
        {"\\\\host\\share", "\\\\host\\share\\x.TXT"},
        {"", ""},
        {" \t ", ""},
        {deep, "fits"},
        {deep + "01234", ""},
        {deep + deep, ""},
    };
    for (const auto& [folder, path] : cases)
    {
        MemorySession session;
        Services services;
        services.folder = folder.c_str();
        QmLogOutputFile file("x");
        file.WriteLine("text");
        file.Write("%s", "text");
        file.WriteDirect("text", 4);
        ASSERT_EQ(*path != '\0' ? 1u : 0u, session.files.Paths().size()) << folder;
        if (*path == 'C' || *path == '\\')
        {
            EXPECT_TRUE(session.files.Exists(path)) << session.files.Paths()[0];
        }
    }
}

TEST(OutputFile, WritesNothingWithoutItsServicesAndDoesNotTryAgain)
{
    MemorySession session;
    QmLogOutputFile noRegistry("x");
    noRegistry.Write("text");

    class Other : public VkServices::IService
    {
    } other;
    Services services;
    for (VkServices::IService* wrong :
         {static_cast<VkServices::IService*>(nullptr), static_cast<VkServices::IService*>(&other)})
    {
        services.service = wrong;
        QmLogOutputFile file("x");
        file.Write("text");
        services.service = &services;
        file.Write("text");
    }
    noRegistry.Write("text");

    session.files.SetFault({1, ZEMA::Fault::Fail});
    QmLogOutputFile refused("x");
    refused.Write("text");
    session.files.ClearFault();
    refused.Write("text");
    EXPECT_TRUE(session.files.Paths().empty());

    QmLogOutputFile works("x");
    works.Write("text");
    EXPECT_EQ(1u, session.files.Paths().size());
}

TEST(OutputFile, FormatsUpTo4095Characters)
{
    MemorySession session;
    Services services;
    QmLogOutputFile file("x");
    file.Write("%4095s", "");
    file.WriteLine("%4095s", "");
    EXPECT_EQ(11u + 4095 + 1 + 4095, session.files.Contents("C:\\out\\x.TXT").size());
    EXPECT_DEATH(file.Write("%4096s", ""), "range error");
    EXPECT_DEATH(file.WriteLine("%4096s", ""), "range error");
    const wchar_t unencodable[] = {static_cast<wchar_t>(0xDC00), 0};
    EXPECT_DEATH(file.Write("%ls", unencodable), "format error");
}

} // namespace
