// Writers on a disk that fills up. full_disk_test.sh gives the folder and its limit, and runs the two tests
// one after the other in processes of their own, the second when there is space again.

#include "QmLogReader.h"
#include "QmLogVerify.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"

#include <algorithm>
#include <sstream>
#include <windows.h>

namespace
{

const std::vector<std::string> kLogs = {"Long", "Short"};

// "Short" fills its index and "Long" its text.
const std::string kTexts[] = {std::string(3000, 'l') + "\n" + std::string(40, 'm') + "\n",
                              "1\n2\n3\n4\n5\n6\n7\n"};

class WindowsFullDiskTest : public LogFolderTest
{
protected:
    WindowsFullDiskTest()
    {
        for (std::size_t i = 0; i < kLogs.size(); ++i)
            m_writers[i].SetFilePath(kLogs[i].c_str());
    }

    std::size_t RowFileSize(std::size_t i) const { return Contents(kLogs[i] + ".ROW").size(); }

    // Text goes to its end and its rows stand at its lines, whatever was lost before.
    void ExpectWritingGoesOn()
    {
        const std::string damage = Damage(kLogs);
        for (std::size_t i = 0; i < kLogs.size(); ++i)
        {
            SCOPED_TRACE(kLogs[i]);
            const std::string before = Contents(kLogs[i] + ".LOG");
            const std::size_t rows = Rows(kLogs[i]).size();
            EXPECT_TRUE(m_writers[i].Write("again\nand\n"));
            EXPECT_TRUE(before + "again\nand\n" == Contents(kLogs[i] + ".LOG"));
            ASSERT_EQ((rows + 2) * sizeof(CQmLogRow), RowFileSize(i));
            EXPECT_EQ(before.size() + 6, Rows(kLogs[i])[rows].offset);
        }

        // Damage may go, as a text that ended before its rows goes on, but none may come.
        std::istringstream damageNow(Damage(kLogs));
        for (std::string line; std::getline(damageNow, line);)
            EXPECT_NE(std::string::npos, damage.find(line + "\n")) << line;
    }

    CQmLogWriter m_writers[2];
};

TEST_F(WindowsFullDiskTest, WritersAnswerFalseAndKeepTheIndexWhole)
{
    constexpr int kFailures = 20;
    std::vector<std::size_t> soundRows(2, SIZE_MAX); // before the first failure
    int failures[2] = {};
    int refused[2] = {};
    std::string written[2];
    for (int writes = 0; (failures[0] < kFailures || failures[1] < kFailures) && !HasFailure(); ++writes)
    {
        ASSERT_LT(writes, 20000) << "the disk does not fill up";
        for (std::size_t i = 0; i < kLogs.size(); ++i)
        {
            if (failures[i] == kFailures)
                continue;
            const std::size_t rows = Rows(kLogs[i]).size();
            const std::size_t feeds = i == 0 ? 2 : 7;
            const bool answer = m_writers[i].Write(kTexts[i].c_str());
            const std::string text = Contents(kLogs[i] + ".LOG");
            ASSERT_EQ(0u, RowFileSize(i) % sizeof(CQmLogRow));
            ASSERT_TRUE(text.starts_with(written[i])) << "text was changed";
            ASSERT_TRUE(!answer || text == written[i] + kTexts[i]) << "answered true and not there";
            written[i] = text;
            refused[i] += answer ? 0 : 1;
            if (answer && RowFileSize(i) / sizeof(CQmLogRow) == rows + feeds + (rows == 0 ? 1 : 0))
                continue;
            ++failures[i];
            soundRows[i] = std::min(soundRows[i], rows);
        }
    }
    EXPECT_GT(refused[0], 0);

    for (const QmLogFinding& finding : QmLogVerify(Path(""), kLogs))
    {
        const std::size_t i = finding.file.starts_with("Long") ? 0 : 1;
        EXPECT_TRUE(!QmLogIsDamage(finding.kind) || finding.row >= soundRows[i])
            << finding.file << " row " << finding.row << ": " << finding.reason;
    }

    // A file that the script put there stands for what else filled the disk; without it there is a limit.
    if (::DeleteFileA(Path("Filler").c_str()))
        ExpectWritingGoesOn();
    else
    {
        EXPECT_NE(std::string::npos, Contents("QmLog.LOG").find("CQmLogWriter::Write().WriteFile()"));
        EXPECT_NE(std::string::npos, Contents("QmLog.LOG").find("CQmLogWriter::WriteRow().WriteFile()"));
    }
}

TEST_F(WindowsFullDiskTest, WritingGoesOnOnceThereIsSpace)
{
    ASSERT_FALSE(Rows("Long").empty()) << "the other test comes first";
    ExpectWritingGoesOn();
}

} // namespace
