#include "tests/support/LogFolder.h"

#include "QmLogWriter.h"
#include "tests/support/Verify.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <windows.h>

LogFolderTest::LogFolderTest()
{
    char text[MAX_PATH] = {};
    m_owned = ::GetEnvironmentVariableA("QM_TEST_FOLDER", text, MAX_PATH) == 0;
    m_folder = text;
    if (m_owned)
    {
        m_folder = (std::filesystem::temp_directory_path() / "qmlog-").string() +
                   std::to_string(::GetCurrentProcessId()) + "\\";
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    SetVariable("QM_LOG_FOLDER", m_folder);
    SetVariable("QM_PROFILE", Path("Profile.ini"));
}

LogFolderTest::~LogFolderTest()
{
    QmLogWriterCloseAll();
    std::error_code ignored;
    if (m_owned)
        std::filesystem::remove_all(m_folder, ignored);
}

void LogFolderTest::SetVariable(const char* name, const std::string& value)
{
    ::SetEnvironmentVariableA(name, value.c_str());
}

std::string LogFolderTest::Contents(const std::string& file) const
{
    std::ifstream stream(Path(file), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void LogFolderTest::SetContents(const std::string& file, const std::string& bytes) const
{
    std::ofstream stream(Path(file), std::ios::binary);
    EXPECT_TRUE(stream << bytes << std::flush) << file;
}

std::vector<CQmLogRow> LogFolderTest::Rows(const std::string& log) const
{
    const std::string bytes = Contents(log + ".ROW");
    std::vector<CQmLogRow> rows(bytes.size() / sizeof(CQmLogRow));
    bytes.copy(reinterpret_cast<char*>(rows.data()), rows.size() * sizeof(CQmLogRow));
    return rows;
}

std::string LogFolderTest::Damage(const std::vector<std::string>& logs) const
{
    std::string damage;
    for (const Finding& finding : FindingsOf(m_folder, logs))
    {
        if (QmLogIsDamage(finding.kind))
            damage += finding.file + " row " + std::to_string(finding.row) + ": " + finding.reason + "\n";
    }
    return damage;
}
