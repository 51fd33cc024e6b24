// What is copied from the log text window: the selection, and excerpts.
#include "LogRows.h"
#include "logview/Excerpt.h"
#include "logview/SelectionText.h"
#include "logview/merge/MergedRows.h"

#include <gtest/gtest.h>

namespace logview
{
namespace
{

template <typename Char> std::basic_string<Char> Whole(TextPieces<Char>& pieces)
{
    std::basic_string<Char> text(pieces.Size(), Char{'?'});
    Char* room = text.data();
    while (pieces.WriteNext(room))
        continue;
    EXPECT_EQ(text.size(), static_cast<std::size_t>(room - text.data()));
    return text;
}

template <typename Copy> std::string CharactersOf(Copy& copy)
{
    const ZEMA::WideString wide = Whole(copy.Characters());
    std::string text;
    ZEMA::FromWide(wide.data(), wide.size(), text);
    return text;
}

TEST(SelectionCopy, CutsTheFirstAndTheLastLine)
{
    const std::string lines[] = {"fi\u00E4st\n", std::string(5000, 'y') + "\u65E5\n", "\xE4\xC3\xA4\n",
                                 "last"};
    const std::string characters[] = {"fi\u00E4st\n", lines[1], "\u00E4\u00C3\u00A4\n", "last"};
    LogRows logs;
    for (const std::string& line : lines)
        logs.Add(0, line);
    LogSession session(logs);
    session.Refresh(0);
    const struct
    {
        Selection selection;
        std::string bytes;
        std::string characters;
    } cases[] = {
        {{0, 2, 3, 2},
         lines[0].substr(2) + lines[1] + lines[2] + "la",
         characters[0].substr(2) + characters[1] + characters[2] + "la"},
        {{0, 1, 0, 4}, "i\u00E4", "i\u00E4"},
        {{1, 4999, 1, 5003}, "y\u65E5", "y\u65E5"},
        {{2, 1, 2, 3}, "\xC3\xA4", "\u00C3\u00A4"}, // in the code page, as the line as a whole tells
        {{3, 0, 9, 99}, "last", "last"},
        {{3, 3, 3, 1}, "", ""},
    };
    for (const auto& [selection, bytes, expected] : cases)
    {
        EXPECT_EQ(bytes, SelectedBytes(logs, session, selection));
        for (const std::size_t most : {bytes.size(), bytes.size() - (bytes.empty() ? 0 : 1)})
        {
            SelectionCopy copy(logs, session, selection, most);
            while (copy.Step())
                continue;
            EXPECT_EQ(most < bytes.size(), copy.IsTooLong()) << expected;
            if (copy.IsTooLong())
                continue;
            EXPECT_EQ(bytes, Whole(copy.Bytes()));
            EXPECT_EQ(expected, CharactersOf(copy));
            EXPECT_EQ(1, copy.Progress());
        }
    }
}

// Many pieces, beginning at any row, of lines of any length.
TEST(SelectionCopy, IsTheSelectionHoweverLong)
{
    LogRows logs;
    for (unsigned i = 0; i < 3000; ++i)
        logs.Add(0, std::string(i % 1000 == 7 ? 3 * TextPieces<char>::kPieceSize : i % 300, 'a' + i % 26) +
                        '\n');
    LogSession session(logs);
    session.Refresh(0);
    const Selection selection = {5, 3, 2990, 40};
    const std::string bytes = SelectedBytes(logs, session, selection);
    EXPECT_EQ(logs.texts[0].substr(logs.rows[0][5].offset + 3,
                                   logs.rows[0][2990].offset + 40 - logs.rows[0][5].offset - 3),
              bytes);
    SelectionCopy copy(logs, session, selection);
    while (copy.Step())
        continue;
    EXPECT_EQ(bytes, CharactersOf(copy));
    EXPECT_EQ(bytes, Whole(copy.Bytes()));
}

// Main:   1 Job, 2 first, 8 done
// SQL:    3 Query, 4 and 5 its rows, 6 Other with 7 in it
class ExcerptTest : public ::testing::Test
{
protected:
    ExcerptTest()
    {
        logs.Add(0, "Job\n", 1, true);
        logs.Add(0, "\tfirst \x01\n", 1);
        logs.Add(3, "Query\n", 2, true);
        logs.Add(3,
                 "gr\xF6\xDF"
                 "er\n",
                 2);
        logs.Add(3, "\n", 2);
        logs.Add(3, "Other\n", 2, true);
        logs.Add(3, "10\n", 2);
        logs.time = 1233;
        logs.Add(0, "done\r\n", 1);
        session.Refresh(0);
        merged.Refresh();
        while (merged.Extend(1000))
            continue;
    }

    std::string Copied(const DisplayedRows& rows, std::vector<RowId> headers, int first, int last)
    {
        Excerpt excerpt(logs, rows, std::move(headers), first, last, 1000);
        while (excerpt.Step())
            continue;
        EXPECT_FALSE(excerpt.IsTooLong());
        std::string text = CharactersOf(excerpt);
        std::erase(text, '\r');
        return text;
    }

    LogRows logs;
    LogSession session{logs};
    MergedRows merged{logs};
};

TEST_F(ExcerptTest, TellsLogNumberDepthAndWhatIsAround)
{
    EXPECT_EQ("  Main    #1       Job\n"
              "  Main    #2        first\n"
              "* SQL     #3         Query\n"
              "* SQL     #4         gr\u00F6\u00DFer\n"
              "* SQL     #5\n"
              "* SQL     #6         Other\n"
              "* SQL     #7         10\n"
              "  Main    #1234    done\n",
              Copied(merged, {}, 0, 99));
    EXPECT_EQ("* Main    #1    Job\n"
              "  SQL     #3      Query\n"
              "  SQL     #4      gr\u00F6\u00DFer\n",
              Copied(merged, {{0, 0}, {3, 0}}, 3, 3));
}

TEST_F(ExcerptTest, SaysWhatIsFolded)
{
    RowChange change;
    ASSERT_TRUE(merged.Fold(5, change));
    ASSERT_TRUE(merged.Fold(2, change));
    EXPECT_EQ("  SQL     #3         Query\n"
              "                       \u2026 2 rows folded\n"
              "  SQL     #6         Other\n"
              "                       \u2026 1 row folded\n"
              "* Main    #1234    done\n",
              Copied(merged, {}, 2, 4));
    EXPECT_EQ("  Main    #2        first\n"
              "                     \u2026 1231 rows folded\n" // as many numbers were taken
              "  Main    #1234    done\n",
              Copied(session, {}, 1, 2));
    ASSERT_TRUE(session.Expand(1, change));
    EXPECT_EQ("  Main    #2     first\n"
              "* SQL     #3      Query\n",
              Copied(session, {}, 1, 2));
}

TEST_F(ExcerptTest, IsRefusedRatherThanCut)
{
    const std::size_t size = std::string("* Main    #1    Job\r\n  SQL     #3      Query\r\n").size();
    for (const std::size_t most : {size, size - 1, std::size_t{5}})
    {
        Excerpt excerpt(logs, merged, {{0, 0}}, 2, 2, most);
        while (excerpt.Step())
            continue;
        EXPECT_EQ(most < size, excerpt.IsTooLong()) << most;
        EXPECT_FALSE(excerpt.Step());
    }
}

} // namespace
} // namespace logview
