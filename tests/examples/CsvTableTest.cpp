// The table behind the example that edits CSV files.
#include "examples/report/CsvTable.h"
#include "examples/common/CsvText.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace
{

using Texts = std::vector<std::string>;

std::string Shown(const CsvTable& table)
{
    std::string shown;
    for (int row = 0; row < table.RowCount(); ++row)
        for (const std::string& text : table.Texts(row))
            shown += "[" + text + "]";
    return shown;
}

TEST(CsvTable, ReadsOddFilesAndGivesTheirBytesBack)
{
    const struct
    {
        std::string bytes;
        const char* shown;
    } cases[] = {
        {"a,b\n1,2\n", "[1][2]"},
        {"\xEF\xBB\xBF\r\n\na;b\r\n 1 ;\" 2\"\n", "[ 1 ][ 2]"},             // mark, empty lines, blanks
        {"a\tb\rx\ty", "[x][y]"},                                           // no line end at the end
        {"a,b\n\"1,\"\"x\"\"\",\"2\r\n3\"\r\n", "[1,\"x\"][2\r\n3]"},       // quotes
        {"a,b\n1\"2\",\"3\"4\"\n", "[1\"2\"][34\"]"},                       // quotes in the wrong places
        {"\"a;\n;\",b,c\n\n1\n1,2,3,4\n", "[][][][][1][][][][1][2][3][4]"}, // short, empty, long rows
        {"a\n\n\n", "[][]"},
        {"a,b", ""},
        {"a,b\n\"\",\"\"\"\"\n", "[][\"]"},
        {std::string("a,b\n\0\x07,\xE4\n", 8), nullptr}, // bytes of other programs
    };
    for (const auto& [bytes, shown] : cases)
    {
        const CsvTable table(bytes);
        EXPECT_EQ(bytes, table.Bytes());
        if (shown)
        {
            EXPECT_EQ(shown, Shown(table)) << bytes;
        }
    }
    for (const std::string bytes : {"", "\n\n", "\xEF\xBB\xBF", "\xFF\xFE\x61", "a,b\n1,\"2\n3,4\n"})
        EXPECT_THROW(CsvTable{bytes}, std::runtime_error) << bytes;
    EXPECT_THROW(CsvTable("a\n" + std::string(1000, ',')), std::runtime_error);
}

TEST(CsvTable, AnEditChangesNoOtherByte)
{
    const struct
    {
        const char* bytes;
        int column;
        const char* text;
        const char* edited;
    } cases[] = {
        {"\"a\", b ,c\r\n", 1, "x", "\"a\",x,c\r\n"},
        {"\"a\n\",b\n", 1, "", "\"a\n\",\n"},
        {"a,b", 1, "c;d", "a,c;d"},
        {"a,b\n", 0, "1,2", "\"1,2\",b\n"},
        {"a,b\n", 0, "\"", "\"\"\"\",b\n"},
        {"a,b\n", 0, " x", "\" x\",b\n"},
        {"a,b\n", 0, "x\ny", "\"x\ny\",b\n"},
        {"\"a\",b\n", 0, "a", "\"a\",b\n"}, // not changed, and its quotes stay
        {"a\r\n", 2, "x", "a,,x\r\n"},
        {"\n", 1, "x", ",x\n"},
        {"a\n", 2, "", "a\n"},
    };
    for (const auto& [bytes, column, text, edited] : cases)
    {
        CsvTable table(std::string("1,2,3\n") + bytes);
        table.SetText(0, column, text);
        EXPECT_EQ(edited, table.Row(0));
        EXPECT_EQ(table.IsChanged(), table.CanUndo());
        table.Undo();
        EXPECT_EQ(bytes, table.Row(0));
    }
}

// The whole file, field by field as it is in there.
struct Model
{
    std::vector<Texts> rows; // each with its line end as its last text

    std::string Bytes(char separator) const
    {
        std::string bytes;
        for (const Texts& row : rows)
            for (std::size_t i = 0; i < row.size(); ++i)
                bytes += (i == 0 || i + 1 == row.size() ? "" : std::string(1, separator)) + row[i];
        return bytes;
    }
};

std::string ModelField(const std::string& text)
{
    if (text.find_first_of(";\"\n") == std::string::npos && !text.starts_with(' ') && !text.ends_with(' '))
        return text;
    std::string field = text;
    for (std::size_t at = 0; (at = field.find('"', at)) != std::string::npos; at += 2)
        field.insert(at, 1, '"');
    return '"' + field + '"';
}

TEST(CsvTable, RandomChangesAndUndoMatchAPlainModel)
{
    const Texts fields = {"", "a", "\"b;\"", " c ", "\"\"\"\n\"", "x\"y"};
    const Texts texts = {"", "a", "b;c", " d", "\"", "e\nf", "g"};
    const Texts ends = {"\n", "\r\n", "\r"};
    for (unsigned seed = 0; seed < 30; ++seed)
    {
        Random random(seed);
        Model now = {{{"one", "two", "three", "\r\n"}}};
        for (int row = random(9); row > 0; --row)
            now.rows.push_back({fields[random(6)], fields[random(6)], fields[random(6)], ends[random(3)]});
        CsvTable table(now.Bytes(';'));
        std::vector<Model> states = {now};
        std::size_t at = 0;
        std::size_t saved = 0;
        const auto change = [&] {
            states.resize(++at);
            states.push_back(now);
            if (saved >= at)
                saved = states.max_size();
        };
        for (int step = 0; step < 80; ++step)
        {
            const int rows = table.RowCount();
            const int row = rows > 0 ? random(rows) : -1;
            const int action = random(12);
            if (action < 4 && row >= 0)
            {
                const std::string text = texts[random(7)];
                const int column = random(3);
                std::string& field = now.rows[row + 1][column];
                if (csv::FieldText(field) == text)
                    continue;
                field = ModelField(text);
                table.SetText(row, column, text);
                change();
            }
            else if (action < 6)
            {
                now.rows.insert(now.rows.begin() + row + 2, Texts{"", "", "", "\r\n"});
                table.InsertRow(row + 1, 0);
                change();
            }
            else if (action < 7 && row >= 0)
            {
                std::vector<int> gone = {row, (row + 1) % rows, (row + 3) % rows};
                gone.resize(std::min<std::size_t>(rows < 4 ? 1 : 3, 1 + random(3)));
                table.DeleteRows(gone, 0);
                std::sort(gone.rbegin(), gone.rend());
                for (const int each : gone)
                    now.rows.erase(now.rows.begin() + each + 1);
                change();
            }
            else if (action < 9 && table.Undo())
                now = states[--at];
            else if (action < 11 && table.Redo())
                now = states[++at];
            else if (action == 11)
            {
                table.SetSaved();
                saved = at;
            }
            ASSERT_EQ(now.Bytes(';'), table.Bytes()) << "seed " << seed << ", step " << step;
            ASSERT_EQ(at != saved, table.IsChanged());
            ASSERT_EQ(Shown(CsvTable(table.Bytes())), Shown(table));
        }
    }
}

// A view in an order of its own is followed by the identity of its rows.
TEST(CsvTable, AnOrderOfRowsFollowsInsertingAndDeleting)
{
    CsvTable table("n\n0\n1\n2\n3\n4\n");
    std::vector<int> order = {4, 2, 0, 1, 3};
    const auto follow = [&](const CsvTable::Change& change) {
        order = OrderAfter(change, order);
        std::string shown;
        for (const int row : order)
            shown += table.Texts(row)[0] + ".";
        return shown;
    };
    EXPECT_EQ("4.1.3.", follow(table.DeleteRows({2, 0}, 1)));
    EXPECT_EQ("4.1..3.", follow(table.InsertRow(1, 2)));
    EXPECT_EQ("4.1.3.", follow(*table.Undo()));
    EXPECT_EQ("4.2.0.1.3.", follow(*table.Undo()));
    EXPECT_EQ("4.1.3.", follow(*table.Redo()));
    std::swap(order[0], order[2]); // sorted in between
    EXPECT_EQ("3.2.0.1.4.", follow(*table.Undo()));
    table.SetText(4, 0, "x");
    EXPECT_EQ("3.2.0.1.4.", follow(*table.Undo()));
    EXPECT_EQ("", follow(table.DeleteRows(order, 0)));
    EXPECT_EQ("3.2.0.1.4.", follow(*table.Undo()));
}

// A file that does not end its last row still does not after rows were inserted there, unless it would lose
// one.
TEST(CsvTable, TheLastRowKeepsItsMissingLineEnd)
{
    CsvTable table("a,b\n1,2");
    table.InsertRow(1, 0);
    EXPECT_EQ("a,b\n1,2\n,", table.Bytes());
    table.Undo();
    EXPECT_EQ("a,b\n1,2", table.Bytes());
    CsvTable one("a");
    one.InsertRow(0, 0);
    EXPECT_EQ("a\r\n\r\n", one.Bytes());
    EXPECT_EQ(1, CsvTable(one.Bytes()).RowCount());
    CsvTable emptied("a\nb");
    emptied.SetText(0, 0, "");
    EXPECT_EQ("a\n\n", emptied.Bytes());
}

} // namespace
