// Rows of a log in any order, through its pages.
#include "msgservice/session/LogPages.h"
#include "QmLogWriter.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>
#include <random>

namespace
{

class LogPagesTest : public testing::Test, protected MemorySession
{
};

// Forwards, backwards and far away in turns: each row has its own line, whatever was read before it.
TEST_F(LogPagesTest, RowsHaveTheirLinesInAnyOrder)
{
    constexpr unsigned long kRows = 12'000; // several pages of rows and of text
    std::mt19937 random(1);
    CQmLogWriter main;
    main.SetFilePath("Main");
    std::vector<std::string> lines;
    std::string text;
    for (unsigned long row = 0; row < kRows; ++row)
    {
        lines.push_back(std::to_string(row) + std::string(random() % 30, '.') + '\n');
        text += lines.back();
    }
    lines.back().pop_back(); // behind a line feed there would be one row more
    text.pop_back();
    main.Write(text.c_str());

    for (int walk = 0; walk < 50; ++walk)
    {
        msgservice::LogPages pages("Main");
        ASSERT_EQ(kRows, pages.RowCount());
        unsigned long at = walk % 2 == 0 ? kRows : random() % kRows; // it begins at the end, or anywhere
        for (int stretch = 0; stretch < 8; ++stretch)
        {
            const bool isBackward = random() % 2 == 0 || at == kRows;
            for (unsigned left = random() % 5 == 0 ? 4'000 : 3; left > 0; --left)
            {
                if (isBackward ? at == 0 : at + 1 >= kRows)
                    break;
                at += isBackward ? -1 : 1;
                CQmLogRow row;
                std::string_view line;
                ASSERT_TRUE(pages.Read(at, row, line)) << walk << ' ' << at;
                ASSERT_EQ(lines[at], line) << walk << ' ' << at;
            }
            if (random() % 3 == 0)
                at = random() % kRows;
        }
    }
}

} // namespace
