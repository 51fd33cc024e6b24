#include "LogtoolTest.h"

#include <random>

TEST_F(LogtoolTest, MergesRandomSessionsAsASortWould)
{
    std::mt19937 random(7);
    const std::string logs[] = {"Main", "Exit", "Load"}; // of one length, as "--numbers" aligns them
    for (int round = 0; round < 20; ++round)
    {
        PlayNew("");
        for (int step = 0; step < 40; ++step)
            Play("'" + logs[random() % 3] + std::vector{":a\n'", ":b\nc\n'", ":part'", ":\n'"}[random() % 4]);

        const int from = static_cast<int>(random() % 20);
        std::set<std::string> sorted; // each line begins with its number
        std::string all = "cat --numbers --to 40 --from " + std::to_string(from);
        for (const std::string& log : logs)
        {
            all += " --log " + log;
            std::istringstream lines(Run("cat --numbers --log " + log));
            for (std::string line; std::getline(lines, line);)
                if (std::stoi(line) >= from && std::stoi(line) <= 40)
                    sorted.insert(line);
        }
        std::istringstream lines(Run(all));
        for (std::string line; std::getline(lines, line); sorted.erase(sorted.begin()))
            ASSERT_TRUE(!sorted.empty() && *sorted.begin() == line) << line;
        EXPECT_TRUE(sorted.empty());
    }
}

TEST_F(LogtoolTest, OnlyATerminalGetsColoursAndNoControlCharacters)
{
    Play("'Main:one\x1b[2J\x85\x7f\xe4\ttab%n\r' 'Main!bad\x07\nrow' Main?look 'Extra:end'");
    EXPECT_EQ("one\x1b[2J\x85\x7f\xe4\ttab%n\r\n  bad\x07\n  row\n    look\nend\n", Run("cat"));
    EXPECT_EQ("    4  Main       look\n    5  Extra  end\n",
              Run("cat --numbers --from 4 --log Main --log Extra"));
    EXPECT_EQ("", Run("cat --from 6")) << "no log has a row that late";
    host.terminal = true;
    EXPECT_EQ("one\\x1b[2J\u2026\\x7f\u00e4\ttab%n\n  \x1b[31mbad\\x07\x1b[0m\n  \x1b[31mrow\x1b[0m\n"
              "    \x1b[33mlook\x1b[0m\nend\n",
              Run("cat"));
    host.colours = false;
    EXPECT_EQ("  bad\\x07\n  row\n", Run("cat --kind 2"));
}

TEST(Printable, IsUtf8AndObeyedByNoTerminal)
{
    const std::pair<const char*, const char*> texts[] = {
        {"\u0416\u65E5 \U0001F600\t~", "\u0416\u65E5 \U0001F600\t~"}, // with bytes from 0x80 to 0x9F
        {"\u0085 \u009F \u00A0", "\\x85 \\x9f \u00A0"},
        {"\xE4 \x85\x81", "\u00E4 \u2026\\x81"}, // in the code page
        {"\x1b\x7f\n", "\\x1b\\x7f\\x0a"},
    };
    for (const auto& [text, shown] : texts)
        EXPECT_EQ(shown, commandline::Printable(text));
}

TEST_F(LogtoolTest, LookingNeitherMakesTheCountersNorWaitsForThem)
{
    Play("'Main:one\ntwo\n'");
    const std::string counters = session.Path("Log.DAT");
    QmLogWriterCloseAll();
    const HANDLE stuck =
        session.files.Create(counters.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS, 0);
    session.files.Lock(stuck, 0, ~0ull); // as a process whose seek failed leaves them
    EXPECT_EQ("    1  Main  one\n    2  Main  two\n", Run("cat --numbers --log Main"));
    EXPECT_EQ("one\ntwo\n", Run("tail"));
    session.files.Close(stuck);
    session.files.Delete(counters.c_str());
    EXPECT_EQ("    1  Main  one\n    2  Main  two\n", Run("cat --numbers --log Main"));
    EXPECT_EQ("one\ntwo\n", Run("tail"));
    EXPECT_FALSE(session.files.Exists(counters));
}

// Ten rows in Main: "r1" with number 1 to "r10" with number 10; r4 and r8 are alike.
TEST_F(LogtoolTest, FiltersWithContext)
{
    for (int i = 1; i <= 10; ++i)
        Play("'Main:r" + std::to_string(i) + (i % 4 == 0 ? " hit\n'" : "\n'"));

    const std::pair<const char*, const char*> cases[] = {
        {"cat --grep hit", "r4 hit\nr8 hit\n"},
        {"cat --grep hit -A 1", "r4 hit\nr5\n--\nr8 hit\nr9\n"},
        {"cat --grep hit -B 1", "r3\nr4 hit\n--\nr7\nr8 hit\n"},
        {"cat --grep hit -A 1 -B 2", "r2\nr3\nr4 hit\nr5\nr6\nr7\nr8 hit\nr9\n"}, // they touch
        {"cat --grep hit -B 2 --from 4", "r4 hit\n--\nr6\nr7\nr8 hit\n"},
        {"cat --from 10 --to 10", "r10\n"},
        {"cat --kind plain --to 2", "r1\nr2\n"},
        {"cat --log main --log Main --to 1", "r1\n"},
        {"cat --log Run", "logtool: no rows in C:\\Logs\\\n"}, // it may come
    };
    for (const auto& [command, expected] : cases)
        EXPECT_EQ(expected, Run(command)) << command;
}

// A row in UTF-8, one in Latin-1, one that ends with CR LF.
TEST_F(LogtoolTest, FindsTextsAndExpressions)
{
    Play("'Main:Gr\xC3\xB6\xC3\x9F"
         "e 10\ngr\xF6\xDF"
         "e 20\nplain (a+b)\r\n'");
    const std::string utf8 = "Gr\xC3\xB6\xC3\x9F"
                             "e 10\n",
                      latin = "gr\xF6\xDF"
                              "e 20\n",
                      plain = "plain (a+b)\r\n";
    const std::pair<std::string, std::string> cases[] = {
        {"cat --grep (a+b)", plain},
        {"cat --grep (A+B) -i", plain},
        {"cat --grep Plain", "exit 1"},
        {"cat --grep GR -i", utf8 + latin},
        {"cat --grep gr\xC3\x96 -i", utf8 + latin},
        {"cat --grep gr\xC3\xB6", latin},
        {"cat --grep Gr\xF6", utf8},
        {"cat --grep gr..e -E -i", utf8 + latin}, // a character is what it is in its row
        {"cat --grep ^gr..e -E", latin},
        {"cat --grep \\)$ -E", plain},
        {"cat --grep \\d\\d$ -E -v", plain},
        {"cat --grep a -v", utf8 + latin},
        {"cat --grep a -v -c", "2\n"},
        {"cat --grep 'b{2}' -E -c", "0\nexit 1"},
        {"cat --kind 2 -c", "0\n"},
        {"cat --grep \xDF", utf8 + latin}, // no UTF-8
        {"cat --grep .\xDF -E", utf8 + latin},
        {"cat --grep a( -E", "logtool: --grep: 'a(', at character 3: missing closing parenthesis\nexit 2"},
        {"cat -c -v", "logtool: -v: says how to --grep, which is missing\nexit 2"},
    };
    for (const auto& [command, expected] : cases)
        EXPECT_EQ(expected, Run(command)) << command;

    Play("'Main:" + std::string(40, 'a') + "\n'");
    EXPECT_EQ("logtool: --grep: gave up on 1 row, which the expression takes too long for\nexit 2",
              Run("cat --grep (a+)+[bc] -E --from 4"));
}

TEST_F(LogtoolTest, RowsThatCannotBeReadAreSkippedAndTold)
{
    Play("'Main:a\nb\nc\n' 'Run:fine\n'");
    std::string rows = session.files.Contents(session.Path("Main.ROW"));
    rows[20 + 3] = '\x70'; // row 1 lies far after the end of the text
    session.files.SetContents(session.Path("Main.ROW"), rows);
    EXPECT_EQ("a\nb\nc\nc\nfine\nlogtool: C:\\Logs\\: 1 row cannot be read, see logtool verify\nexit 1",
              Run("cat"));
    session.files.Delete(session.Path("Main.LOG").c_str());
    EXPECT_EQ("fine\nlogtool: C:\\Logs\\: 4 rows cannot be read, see logtool verify\nexit 1", Run("cat"));
}

TEST_F(LogtoolTest, LinesBehindTheLastRowAreMissed)
{
    Play("'Main:a\nb\nc\nd'");
    const std::string rows = session.files.Contents(session.Path("Main.ROW"));
    session.files.SetContents(session.Path("Main.ROW"), rows.substr(0, 2 * 20));
    EXPECT_EQ("a\nb\nlogtool: C:\\Logs\\: 2 rows cannot be read, see logtool verify\nexit 1", Run("cat"));
}

// Of many rows some are as long as several pages, and in every second round some offsets are damaged.
TEST_F(LogtoolTest, PagesHoldWhatSingleRowsHold)
{
    std::mt19937 random(5);
    for (int round = 0; round < 6; ++round)
    {
        std::string text;
        for (int lines = 0; lines < 5000; ++lines)
        {
            for (std::size_t left = random() % 1000 == 0 ? random() % 200000 : random() % 30; left > 0;
                 --left)
                text += "abc"[random() % 3];
            text += '\n';
        }
        PlayNew("'Main:" + text + "'");
        std::string rows = session.files.Contents(session.Path("Main.ROW"));
        for (int damages = round % 2 * 5; damages > 0; --damages)
            rows[random() % (rows.size() / 20) * 20 + random() % 3] = static_cast<char>(random());
        session.files.SetContents(session.Path("Main.ROW"), rows);

        const std::string wanted = round < 3 ? "abcabca" : "abc";
        std::string all;
        std::string found;
        CQmLogReader reader;
        reader.SetFilePath("Main");
        const char* line = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        for (unsigned long index = 0; reader.Read(index, line, length, row); ++index)
        {
            const auto add = [&](std::string& lines) {
                lines += (lines.empty() || lines.ends_with('\n') || length == 0 ? "" : "\n");
                lines.append(line, length);
            };
            add(all);
            if (std::string_view(line, length).find(wanted) != std::string_view::npos)
                add(found);
        }
        all += all.ends_with('\n') ? "" : "\n";
        found += found.ends_with('\n') ? "" : "\n";
        Run("cat");
        EXPECT_TRUE(all == host.output.str()) << "round " << round;
        Run("cat --grep " + wanted);
        EXPECT_TRUE(found == host.output.str()) << "round " << round;
        EXPECT_GT(found.size(), 200u);
    }
}

// A page of text ends before, at and after the end of a line; the rows after it are known already. Lines
// are indented by no, some and very many blanks, and the output's pieces end somewhere within them.
TEST_F(LogtoolTest, PagesAndPiecesEndAnywhereInALine)
{
    for (const std::size_t length : {65528, 65529, 65530, 65531})
    {
        PlayNew("'Main:" + std::string(length, 'x') + "\nsecond\nthird\n'");
        EXPECT_TRUE(session.Text("Main") == Run("cat")) << length;
    }
    PlayNew("'Main:x" + std::string(1500, '\n') + "'");
    std::string rows = session.files.Contents(session.Path("Main.ROW"));
    std::string expected = "x\n";
    for (std::size_t row = 1; row < 1500; ++row)
    {
        rows[20 * row + offsetof(CQmLogRow, indent)] = static_cast<char>(row % 40);
        expected += std::string(2 * (row % 40), ' ') + '\n';
    }
    session.files.SetContents(session.Path("Main.ROW"), rows);
    EXPECT_EQ(expected, Run("cat"));
}

TEST_F(LogtoolTest, NoDamageOfTheIndexStopsACommand)
{
    std::mt19937 random(11);
    Play("'Main:a\nb\n' 'Main!caption\ntext' 'Run:a\nb\nc\n'");
    const std::string whole = session.files.Contents(session.Path("Main.ROW"));
    for (int round = 0; round < 100; ++round)
    {
        std::string rows = whole;
        for (int i = 0; i < 4; ++i)
            rows[random() % rows.size()] = static_cast<char>(random());
        rows.resize(rows.size() - random() % 30);
        session.files.SetContents(session.Path("Main.ROW"), rows);
        for (const char* command : {"cat", "tail", "tree", "errors", "verify"})
            EXPECT_FALSE(Run(command).ends_with("exit 2")) << command;
    }
}
