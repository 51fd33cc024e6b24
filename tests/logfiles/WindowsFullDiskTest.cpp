// Writers on a disk that fills up. full_disk_test.sh gives the folder and its limit, and runs the two tests
// one after the other in processes of their own, the second when there is space again.

#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace
{

const std::vector<std::string> kFullLogs = {"Long", "Short"};

// "Long" fills its text, which is refused then, and "Short" its index, which then lacks rows.
const std::string kFullTexts[] = {std::string(3000, 'l') + "\n" + std::string(40, 'm') + "\n",
                                  "1\n2\n3\n4\n5\n6\n7\n"};

class WindowsFullDiskTest : public LogFolderTest
{
protected:
    void SetUp() override
    {
        if (!std::getenv("QM_TEST_FOLDER"))
            GTEST_SKIP() << "full_disk_test.sh runs it";
    }

    // Text goes to its end and its rows stand at its lines, whatever was lost before.
    void ExpectWritingGoesOn()
    {
        const std::string damage = Damage(kFullLogs);
        for (const std::string& log : kFullLogs)
        {
            const std::string before = Contents(log + ".LOG");
            const std::size_t rows = Rows(log).size();
            EXPECT_TRUE(QmLogWriterDefine(log.c_str()).Write("again\nand\n"));
            EXPECT_TRUE(before + "again\nand\n" == Contents(log + ".LOG"));
            ASSERT_EQ(rows + 2, Rows(log).size());
            EXPECT_EQ(before.size() + 6, Rows(log)[rows].offset);
        }
        // Damage may go, as a text that ended before its rows goes on, but none may come.
        std::istringstream damageNow(Damage(kFullLogs));
        for (std::string line; std::getline(damageNow, line);)
            EXPECT_NE(std::string::npos, damage.find(line + "\n")) << line;
    }
};

TEST_F(WindowsFullDiskTest, WritersAnswerFalseAndKeepTheIndexWhole)
{
    constexpr int kFailures = 20;
    int failures[2] = {};
    for (int writes = 0; std::min(failures[0], failures[1]) < kFailures; ++writes)
    {
        ASSERT_LT(writes, 20000) << "the disk does not fill up";
        for (std::size_t i = 0; i < kFullLogs.size(); ++i)
        {
            const std::string text = Contents(kFullLogs[i] + ".LOG");
            const std::string index = Contents(kFullLogs[i] + ".ROW");
            const bool answer = QmLogWriterDefine(kFullLogs[i].c_str()).Write(kFullTexts[i].c_str());
            const std::string newText = Contents(kFullLogs[i] + ".LOG");
            const std::string newIndex = Contents(kFullLogs[i] + ".ROW");
            ASSERT_TRUE(newText.starts_with(text) && newIndex.starts_with(index)) << "what was there changed";
            ASSERT_EQ(0u, newIndex.size() % sizeof(CQmLogRow));
            ASSERT_TRUE(!answer || newText == text + kFullTexts[i]) << "answered true and not there";
            const bool failed = i == 0 ? !answer : newIndex.size() < index.size() + 7 * sizeof(CQmLogRow);
            failures[i] += failed ? 1 : 0;
        }
    }

    // A file that the script put there stands for what else filled the disk; without it there is a limit.
    if (std::filesystem::remove(Path("Filler")))
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
