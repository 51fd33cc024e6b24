#include "tests/support/LogFolder.h"

#include "QmLogVerify.h"
#include "QmLogWriter.h"

#include <cstring>
#include <filesystem>
#include <windows.h>

namespace
{

std::string Listing(const std::string& folder, const std::vector<std::string>& logs, bool damageOnly)
{
    std::string listing;
    for (const QmLogFinding& finding : QmLogVerify(folder, logs))
    {
        if (!damageOnly || QmLogIsDamage(finding.kind))
            listing += finding.file + " row " + std::to_string(finding.row) + ": " + finding.reason + "\n";
    }
    return listing;
}

} // namespace

LogFolderTest::LogFolderTest()
{
    char text[MAX_PATH] = {};
    if (::GetEnvironmentVariableA("QM_TEST_FOLDER", text, MAX_PATH) != 0)
    {
        m_folder = text;
        m_owned = false;
    }
    else
    {
        ::GetTempPathA(MAX_PATH, text);
        const auto& info = *testing::UnitTest::GetInstance()->current_test_info();
        m_folder =
            std::string(text) + "qmlog-" + std::to_string(::GetCurrentProcessId()) + "-" + info.name() + "\\";
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    SetLogFolder(m_folder);
    ::SetEnvironmentVariableA("QM_PROFILE", Path("Profile.ini").c_str());
}

LogFolderTest::~LogFolderTest()
{
    QmLogWriterCloseAll();
    std::error_code ignored;
    if (m_owned)
        std::filesystem::remove_all(m_folder, ignored);
}

void LogFolderTest::SetLogFolder(const std::string& folder)
{
    ::SetEnvironmentVariableA("QM_LOG_FOLDER", folder.c_str());
}

std::string LogFolderTest::Contents(const std::string& file) const
{
    std::string bytes;
    const HANDLE handle = ::CreateFileA(Path(file).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return bytes;
    DWORD done = 0;
    bytes.resize(::GetFileSize(handle, nullptr));
    ::ReadFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
    ::CloseHandle(handle);
    bytes.resize(done);
    return bytes;
}

void LogFolderTest::SetContents(const std::string& file, const std::string& bytes) const
{
    const HANDLE handle =
        ::CreateFileA(Path(file).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD done = 0;
    EXPECT_TRUE(::WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr)) << file;
    ::CloseHandle(handle);
}

std::vector<CQmLogRow> LogFolderTest::Rows(const std::string& log) const
{
    const std::string bytes = Contents(log + ".ROW");
    std::vector<CQmLogRow> rows(bytes.size() / sizeof(CQmLogRow));
    if (!rows.empty())
        std::memcpy(rows.data(), bytes.data(), rows.size() * sizeof(CQmLogRow));
    return rows;
}

std::string LogFolderTest::Findings(const std::vector<std::string>& logs) const
{
    return Listing(m_folder, logs, false);
}

std::string LogFolderTest::Damage(const std::vector<std::string>& logs) const
{
    return Listing(m_folder, logs, true);
}

void LogFolderTest::RemoveFiles() const
{
    QmLogWriterCloseAll();
    for (const auto& entry : std::filesystem::directory_iterator(m_folder))
        std::filesystem::remove_all(entry.path());
}
