#include "tests/logview/LogRows.h"

#include "QmLogReader.h"
#include "logview/LineFind.h"
#include "logview/LogNames.h"
#include "logview/MarginZones.h"
#include "logview/ReaderRows.h"
#include "logview/RowCache.h"
#include "logview/SelectionText.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>
#include <random>

namespace logview
{
namespace
{

using Random = std::mt19937;

unsigned Below(Random& random, std::size_t end)
{
    return static_cast<unsigned>(random() % end);
}

void ExpectSame(const LogSession& session, LiteralView& literal)
{
    ASSERT_EQ(literal.Size(), static_cast<std::uint32_t>(session.RowCount()));
    for (std::uint32_t row = 0; row <= literal.Size(); ++row)
    {
        const RowId place = session.Translate(row);
        ASSERT_EQ(literal.Translate(row).file, place.file) << row;
        ASSERT_EQ(literal.Translate(row).row, place.row) << row;
    }
}

// What a page holds is what the rows tell one by one.
void ExpectSamePage(RowSource& source, const LogSession& session, int first)
{
    RowCache cache(source);
    cache.Prepare(session, first, 20);
    for (int row = first; row < std::min(first + 20, session.RowCount()); ++row)
    {
        const CachedRow* const cached = cache.Get(row);
        std::string line;
        bool expanded = false;
        ASSERT_TRUE(cached != nullptr && session.ReadLine(row, line));
        EXPECT_EQ(line, cached->text);
        EXPECT_EQ(session.ColumnCount(row), static_cast<int>(cached->length));
        EXPECT_EQ(session.ReadExpanded(row, expanded), cached->foldable);
        EXPECT_EQ(expanded, cached->expanded);
    }
}

// A text row, a block that begins or one that ends, in any of the logs.
void WriteStep(Random& random)
{
    CQmLogWriter& log = QmLogWriterDefine(GetLogName(static_cast<int>(Below(random, kFileCount))));
    const unsigned step = Below(random, 6);
    if (step == 0)
        log.BlockBegin(static_cast<QmLogBlockKind>(Below(random, 4)));
    else if (step == 1)
        log.BlockEnd();
    else
        log.Write(Below(random, 2) != 0 ? "text\nmore\n" : "rather a long line of text\n");
}

TEST(LogSession, ShowsWhatTheRulesSayInGrowingSessions)
{
    for (unsigned seed = 0; seed < 30; ++seed)
    {
        SCOPED_TRACE(seed);
        Random random(seed);
        MemorySession memory;
        ReaderRows source;
        LogSession session(source);
        LiteralView literal(source);
        for (unsigned step = 0; step < 60; ++step)
        {
            for (unsigned writes = Below(random, 4); writes > 0; --writes)
                WriteStep(random);
            session.Refresh(0);
            literal.Refresh();
            const unsigned at = Below(random, literal.Size() + 1);
            const int row = static_cast<int>(at);
            const int before = session.RowCount();
            RowChange change;
            switch (Below(random, 4))
            {
            case 0:
                EXPECT_EQ(literal.Collapse(at), session.Collapse(row, change));
                break;
            case 1:
                // Nested rests of the session would fill the screen.
                if (literal.Size() < 500)
                    EXPECT_EQ(literal.ExpandAll(at), session.ExpandAll(row, change));
                break;
            default:
                EXPECT_EQ(literal.Expand(at), session.Expand(row, change));
            }
            EXPECT_EQ(before + change.delta, session.RowCount());
            EXPECT_EQ(change.delta != 0 ? row + 1 : 0, change.row);
            ExpectSame(session, literal);
            ExpectSamePage(source, session, row);
            if (testing::Test::HasFailure())
                break;
        }
        for (int file = 0; file < static_cast<int>(kFileCount); ++file)
            QmLogReaderDefine(GetLogName(file)).Close();
    }
}

TEST(LogSession, TakesTheNextNumberThereIsWhereNumbersAreMissing)
{
    LogRows logs;
    logs.AddAll("MRRM");
    logs.time = 10;
    logs.AddAll("QSRM");
    LogSession session(logs);
    session.Refresh(0);
    RowChange change;
    EXPECT_TRUE(session.Expand(1, change)); // 5 is missing: 11 it is, not a stale row of a log that ended
    EXPECT_TRUE(change.delta == 1 && session.Translate(2).file == 3);

    for (unsigned file = 1; file < kFileCount; ++file)
        logs.rows[file].clear();
    EXPECT_FALSE(session.Expand(0, change));
}

// All rows in order of their numbers, without a read a row.
TEST(LogSession, UnfoldsLongSessionsWithFewReads)
{
    LogRows logs;
    logs.AddAll("MO");
    for (int i = 0; i < 20'000; ++i)
        logs.AddAll("RQR");
    logs.AddAll("OM");
    LogSession session(logs);
    session.Refresh(0);
    RowChange change;
    EXPECT_TRUE(session.Expand(0, change) && session.Expand(1, change));
    EXPECT_EQ(40'000, change.delta);
    EXPECT_LT(logs.recordReads, 20u);
    EXPECT_TRUE(session.Collapse(0, change));
    EXPECT_TRUE(session.ExpandAll(0, change));
    ASSERT_EQ(static_cast<int>(logs.time), session.RowCount());
    EXPECT_LT(logs.recordReads, 600u);
    CQmLogRow record;
    for (int row = 0; row < session.RowCount(); ++row)
        ASSERT_TRUE(session.ReadStyle(row, record) && static_cast<int>(record.time) == row + 1) << row;
}

TEST(LogSession, EndsOnAnyBytes)
{
    for (unsigned seed = 0; seed < 60; ++seed)
    {
        Random random(seed);
        LogRows logs;
        for (unsigned file = 0; file < kFileCount; ++file)
        {
            logs.rows[file].resize(Below(random, 60));
            for (CQmLogRow& row : logs.rows[file])
            {
                std::uint32_t words[5];
                for (std::uint32_t& word : words)
                    word = static_cast<std::uint32_t>(random()) >> (seed % 3 == 0 ? 0 : 24);
                std::memcpy(static_cast<void*>(&row), words, sizeof(row));
            }
            logs.texts[file] = std::string(Below(random, 300), 'x');
        }
        LogSession session(logs);
        session.Refresh(0);
        const std::size_t limit = 16 * 5 * 60 + 1024;
        for (int step = 0; step < 20; ++step)
        {
            const int row =
                static_cast<int>(Below(random, static_cast<std::size_t>(session.RowCount()) + 2)) - 1;
            const int before = session.RowCount();
            RowChange change;
            Below(random, 3) == 0 ? session.Collapse(row, change) : session.ExpandAll(row, change);
            EXPECT_LE(change.delta, static_cast<int>(limit));
            EXPECT_EQ(before + change.delta, session.RowCount());
            RowCache(logs).Prepare(session, row, 60);
            int file = 0;
            unsigned long fileRow = 0;
            session.FindNeighbour(static_cast<int>(Below(random, kFileCount)), row, step % 2 == 0, true, file,
                                  fileRow);
            session.FindError(row, step % 2 != 0);
            session.FindBlock(0, std::max(row, 0), file, file);
            SelectedBytes(logs, session, {0, 0, 100, 10});
            session.CountHidden(Below(random, kFileCount));
            if (step % 4 == 0)
                session.Reveal({Below(random, kFileCount), Below(random, 60)});
        }
    }
}

TEST(LogSession, FindsNumbersNeighboursErrorsAndBlocks)
{
    LogRows logs;
    logs.Add(0, "x\n", 0, true);             // 1: M0
    logs.Add(0, "x\n", 1, true, kErrorKind); // 2: M1
    logs.Add(1, "x\n", 2);                   // 3: R0
    logs.Add(0, "x\n", 1);                   // 4: M2
    logs.Add(0, "x\n", 1, true);             // 5: M3
    logs.Add(3, "x\n", 2, true, kErrorKind); // 6: Q0
    logs.Add(0, "x\n", 1);                   // 7: M4
    logs.Add(0, "x\n", 0);                   // 8: M5
    LogSession session(logs);
    session.Refresh(0);
    int file = -1;
    unsigned long row = 0;
    EXPECT_TRUE(session.Find(6, true, file, row) && file == 3 && row == 0); // though a log of one row
    EXPECT_TRUE(session.Find(9, false, file, row) && file == 1);            // the smallest answer
    EXPECT_TRUE(session.FindNeighbour(0, 2, true, false, file, row) && file == 1 && row == 0);
    EXPECT_TRUE(session.FindNeighbour(0, 5, true, true, file, row) && file == 3 && row == 0);
    EXPECT_TRUE(session.FindNeighbour(0, 2, false, true, file, row) && file == 3 && row == 0);
    EXPECT_FALSE(session.FindNeighbour(0, 9, true, true, file, row));

    RowChange change;
    EXPECT_EQ(LogSession::kNoRow, session.FindError(1, true));
    EXPECT_TRUE(session.Expand(3, change));
    EXPECT_EQ(4, session.FindError(1, true));
    EXPECT_EQ(1, session.FindError(4, false));
    EXPECT_EQ(LogSession::kNoRow, session.FindError(1, false));
    logs.Add(0, "x\n", 0, true, kErrorKind); // not displayed before the next refresh
    EXPECT_EQ(LogSession::kNoRow, session.FindError(4, true));
    EXPECT_FALSE(session.Expand(session.RowCount(), change));

    int first = -1;
    int last = -1;
    session.FindBlock(0, 2, first, last);
    EXPECT_TRUE(first == 1 && last == 2); // to the next block of the same depth
    session.FindBlock(0, 4, first, last);
    EXPECT_TRUE(first == 3 && last == 4); // to a row of less depth

    CQmLogRow record;
    for (const int none : {-1, std::numeric_limits<int>::min(), LogSession::kMaxRows})
    {
        std::string line;
        EXPECT_FALSE(session.ReadStyle(none, record) || session.ReadLine(none, line)) << none;
        EXPECT_FALSE(session.ExpandAll(none, change) || session.Collapse(none, change)) << none;
    }
}

// M1 R2 Q3 M4 Q5 and so on: each stretch goes on beyond the rows around it, where the next one begins.
std::string DeepRows(std::size_t count)
{
    std::string letters;
    while (letters.size() < count)
        letters += "MRQMQ";
    return letters.substr(0, count);
}

// Whether a row has a mark, and there is something to unfold: nothing comes after the last number.
bool IsFolded(const LogSession& session, int row, std::uint32_t lastNumber)
{
    bool expanded = false;
    CQmLogRow record;
    return session.ReadExpanded(row, expanded) && !expanded && session.ReadStyle(row, record) &&
           record.time < lastNumber;
}

TEST(LogSession, UnfoldsWhateverNestsWithoutDamageOrTellsOfIt)
{
    LogRows logs;
    logs.AddAll(DeepRows(217));
    LogSession session(logs);
    LiteralView literal(logs);
    session.Refresh(0);
    literal.Refresh();
    RowChange change;
    int deepest = 0;
    for (int row = 0; row < session.RowCount(); ++row)
    {
        EXPECT_EQ(literal.Expand(static_cast<std::uint32_t>(row)), session.Expand(row, change));
        EXPECT_FALSE(IsFolded(session, row, logs.time)) << row;
        int depth = 0;
        session.Translate(row, depth);
        deepest = std::max(deepest, depth);
    }
    EXPECT_TRUE(deepest == 130 && session.RowCount() == 4903);
    ExpectSame(session, literal);

    for (const auto& [count, isAll] : {std::pair{500, false}, {120, true}})
    {
        LogRows other;
        std::string letters = DeepRows(static_cast<std::size_t>(count));
        std::replace(letters.begin(), letters.end(), 'M', 'O'); // all of it unfolds at one row
        other.AddAll('M' + letters + 'M');
        LogSession walked(other);
        walked.Refresh(0);
        const int before = walked.RowCount();
        EXPECT_TRUE(walked.ExpandAll(0, change));
        int folded = 0;
        for (int row = 0; row < walked.RowCount() - before + 1; ++row)
            folded += IsFolded(walked, row, other.time);
        EXPECT_LE(change.delta, 16 * static_cast<int>(other.time) + 1024);
        EXPECT_EQ(isAll, change.leftFolded == 0) << change.leftFolded;
        EXPECT_EQ(isAll, folded == 0);
        EXPECT_LE(folded, change.leftFolded);
    }
}

TEST(LogSession, MarksNoRowThatLiesTooDeepToBeUnfolded)
{
    LogRows logs;
    logs.AddAll(DeepRows(7000));
    LogSession session(logs);
    session.Refresh(0);
    RowChange change;
    int row = 0;
    int depth = 0;
    bool expanded = true;
    for (; depth < CQmLogBranch::kMaxDepth || !session.ReadExpanded(row, expanded) || expanded; ++row)
    {
        if (depth < CQmLogBranch::kMaxDepth)
            session.Expand(row, change);
        session.Translate(row + 1, depth);
        ASSERT_LT(row, 20'000);
    }
    EXPECT_FALSE(session.Expand(row, change));
    EXPECT_TRUE(change.delta == 0 && !session.ExpandAll(row, change) && change.leftFolded == 1);
    int header = row;
    for (int above = CQmLogBranch::kMaxDepth; above == CQmLogBranch::kMaxDepth;)
        session.Translate(--header, above);
    EXPECT_TRUE(session.Collapse(header, change) && session.ExpandAll(header, change));
    EXPECT_TRUE(change.delta > 0 && change.leftFolded > 0);
    RowCache cache(logs);
    cache.Prepare(session, row, 1);
    EXPECT_TRUE(cache.Get(row)->foldable && !cache.Get(row)->marked);
    cache.Prepare(session, session.RowCount() - 3, 2);
    EXPECT_TRUE(cache.Get(session.RowCount() - 3)->marked) << "folded, but not deep";
    logs.rows[3].pop_back();
    session.Refresh(0);
    session.Translate(row, depth);
    EXPECT_EQ(CQmLogBranch::kMaxDepth, depth) << "unfolded anew";
}

TEST(LogSession, GoesWithoutAStackFrameForEachLevel)
{
    CQmLogBranch root;
    for (std::uint32_t level = 200'000; level > 0; --level)
    {
        CQmLogBranch around({0, 0}, 1, level);
        ASSERT_TRUE(around.Insert(0, std::move(root)));
        root = std::move(around);
    }
    int depth = 0;
    root.Translate(100'000, depth);
    EXPECT_EQ(100'000, depth);
}

// "Main" counts so many rows that only a few more can be shown.
TEST(LogSession, UnfoldsAsLongAsThereIsRoom)
{
    class Long : public LogRows
    {
    public:
        unsigned long RowCount(unsigned file) override { return file == 0 ? count : LogRows::RowCount(file); }
        unsigned long count = 0;
    } logs;
    logs.AddAll("MRRRRM");
    for (const auto& [room, added] : {std::pair{4, 4}, {3, 0}})
        for (const bool all : {false, true})
        {
            logs.count = static_cast<unsigned long>(LogSession::kMaxRows - room);
            LogSession session(logs);
            session.Refresh(0);
            RowChange change;
            EXPECT_EQ(added > 0, all ? session.ExpandAll(0, change) : session.Expand(0, change)) << room;
            EXPECT_EQ(added, change.delta) << room;
        }
}

// Otherwise a damaged log, in which a number comes again, would unfold into itself.
TEST(LogSession, UnfoldsWithinABranchOnlyWhatBeganLater)
{
    for (const auto& [header, done] : {std::pair{6u, false}, {7u, false}, {8u, true}})
    {
        CQmLogBranch root;
        root.SetCount(10);
        ASSERT_TRUE(root.Insert(2, CQmLogBranch({1, 0}, 5, 7)));
        EXPECT_EQ(done, root.Insert(4, CQmLogBranch({2, 0}, 3, header))) << header;
        EXPECT_EQ(done ? 18u : 15u, root.GetSize());
        EXPECT_FALSE(CQmLogBranch().Insert(0xFFFFFFFF, CQmLogBranch({1, 0}, 5, 7)))
            << "no row has this place";
    }
}

// Rows as the letters of their logs and their numbers: "M1 R2 ...".
std::string Shown(const LogSession& session)
{
    std::string shown;
    CQmLogRow record;
    for (int row = 0; row < session.RowCount(); ++row)
        shown += session.ReadStyle(row, record)
                     ? "MROQS"[session.Translate(row).file] + std::to_string(record.time) + ' '
                     : "? ";
    return shown;
}

// Writers take rows back and new sessions replace them; what is unfolded never shows what is gone.
TEST(LogSession, UnfoldsAnewWhatWasCut)
{
    const struct
    {
        const char* name;
        int cut[kFileCount]; // rows that go, from the end
        int numbers;         // that the counter goes back by; a new session begins at 1
        const char* then;    // rows that come before the next look
        const char* shown;
    } cases[] = {
        {"nothing", {}, 0, "", "M1 R2 O3 R4 R5 M6 R7 M8 "},
        {"a growing log", {}, 0, "RM", "M1 R2 O3 R4 R5 M6 R7 M8 M11 "},
        {"the end of Main", {1}, 0, "", "M1 R2 O3 R4 R5 M6 "}, // whose last row does not unfold
        {"the end of Main, others there again", {1}, 0, "MM", "M1 R2 O3 R4 R5 M6 R7 M10 M11 "},
        {"unfolded rows", {0, 3}, 0, "", "M1 R2 O3 M6 M8 "},
        {"unfolded rows, later ones in their place", {0, 3}, 0, "RRRM", "M1 R2 O3 M6 M8 M13 "},
        {"the innermost log", {0, 0, 1}, 0, "O", "M1 R2 R4 R5 M6 R7 M8 "},
        {"all", {3, 4, 1, 0, 1}, 0, "", ""},
        {"all, a new session of other rows", {3, 4, 1, 0, 1}, 9, "RMSM", "M2 M4 "},
        {"all, a longer session", {3, 4, 1, 0, 1}, 9, "MMMRRRRMMM", "M1 M2 M3 M8 M9 M10 "},
        {"all, the same rows again", {3, 4, 1, 0, 1}, 9, "MRORRMRMS", "M1 R2 O3 R4 R5 M6 R7 M8 "},
    };
    for (const auto& [name, cut, numbers, then, shown] : cases)
    {
        SCOPED_TRACE(name);
        LogRows logs;
        logs.AddAll("MRORRMRMS");
        LogSession session(logs);
        RowCache cache(logs);
        session.Refresh(0);
        RowChange change;
        ASSERT_TRUE(session.Expand(1, change) && session.ExpandAll(0, change));
        ASSERT_EQ("M1 R2 O3 R4 R5 M6 R7 M8 ", Shown(session));

        for (unsigned file = 0; file < kFileCount; ++file)
            logs.rows[file].resize(logs.rows[file].size() - static_cast<std::size_t>(cut[file]));
        EXPECT_EQ(std::any_of(cut, cut + 3, [](int rows) { return rows > 0; }), session.HasShrunk());
        cache.Prepare(session, 0, 20); // a paint meanwhile
        logs.time -= static_cast<std::uint32_t>(numbers);
        logs.AddAll(then);
        session.Refresh(0);
        EXPECT_EQ(shown, Shown(session));
        EXPECT_FALSE(session.HasShrunk());
    }
}

// Logs of these numbers, in the order of the logs.
LogRows Numbered(const std::vector<std::vector<std::uint32_t>>& numbers)
{
    LogRows logs;
    for (unsigned file = 0; file < numbers.size(); ++file)
        for (const std::uint32_t number : numbers[file])
        {
            logs.time = number - 1;
            logs.Add(file);
        }
    return logs;
}

TEST(LogSession, UnfoldsOfDamagedLogsOnlyWhatCanBelongThere)
{
    const struct
    {
        const char* name;
        std::vector<std::vector<std::uint32_t>> numbers;
        const char* shown;
    } cases[] = {
        {"a search that leads back", {{1, 50}, {7, 8, 9, 5, 20}}, "M1 R7 R8 R9 R20 M50 R5 R20 M50 M50 "},
        {"a number in two logs", {{1, 3}, {}, {2}, {2}}, "M1 O2 M3 "},
        {"a greater one in two logs", {{1, 9}, {}, {4}, {4}}, "M1 O4 M9 M9 "},
    };
    for (const auto& [name, numbers, shown] : cases)
    {
        LogRows logs = Numbered(numbers);
        LogSession session(logs);
        session.Refresh(0);
        RowChange change;
        session.ExpandAll(0, change);
        EXPECT_EQ(shown, Shown(session)) << name;
    }

    // Four logs of rows with one number each: 30 rows unfold 30 rows, which unfold 30 rows each.
    std::vector<std::vector<std::uint32_t>> alike;
    for (std::uint32_t number = 1; number <= 4; ++number)
        alike.emplace_back(30, number);
    LogRows logs = Numbered(alike);
    LogSession session(logs);
    session.Refresh(0);
    RowChange change;
    EXPECT_TRUE(session.ExpandAll(0, change));
    EXPECT_EQ((16 * 120 + 1024) / 30 * 30, change.delta);
}

// "Main" has another second row: what was unfolded ends before the header that had unfolded there.
TEST(LogSession, UnfoldsNothingAgainAtAnotherRow)
{
    LogRows logs = Numbered({{1, 6}, {2, 3, 5}, {4}});
    LogSession session(logs);
    session.Refresh(0);
    RowChange change;
    EXPECT_TRUE(session.ExpandAll(0, change));
    EXPECT_EQ("M1 R2 R3 O4 R5 M6 ", Shown(session));
    logs.rows[0] = Numbered({{1, 3, 9}}).rows[0];
    session.Refresh(0);
    EXPECT_EQ("M1 R2 M3 M9 ", Shown(session));
}

std::vector<RowId> AllShown(const LogSession& session)
{
    std::vector<RowId> rows;
    for (int row = 0; row < session.RowCount(); ++row)
        rows.push_back(session.Translate(row));
    return rows;
}

TEST(LogSession, RevealsAnyRowBetweenTheFirstAndTheLastOfMain)
{
    for (unsigned seed = 0; seed < 40; ++seed)
    {
        SCOPED_TRACE(seed);
        Random random(seed);
        LogRows logs;
        for (int line = 0; line < 40; ++line)
            logs.Add(Below(random, kFileCount));
        LogSession session(logs);
        session.Refresh(0);
        ASSERT_FALSE(logs.rows[0].empty());
        for (std::uint32_t file = 0; file < kFileCount; ++file)
        {
            HiddenRows hidden;
            for (std::uint32_t row = 0; row < logs.rows[file].size(); ++row)
            {
                const bool isBefore = logs.rows[file][row].time < logs.rows[0].front().time;
                const bool isAfter = logs.rows[file][row].time > logs.rows[0].back().time;
                hidden.before += isBefore;
                hidden.after += isAfter;
                const int shown = session.Reveal({file, row});
                ASSERT_EQ(isBefore || isAfter, shown == LogSession::kNoRow) << file << ' ' << row;
                ASSERT_TRUE(shown == LogSession::kNoRow || session.Translate(shown) == (RowId{file, row}));

                // Beside what is unfolded, each row that was displayed still is.
                RowChange change;
                for (int i = 0; i < 6; ++i)
                    session.Expand(
                        static_cast<int>(Below(random, static_cast<std::size_t>(session.RowCount()))),
                        change);
                const std::vector<RowId> before = AllShown(session);
                const RowId wanted = {file, Below(random, logs.rows[file].size())};
                const int again = session.UnfoldTo(wanted);
                std::vector<RowId> after = AllShown(session);
                ASSERT_TRUE(again == LogSession::kNoRow || session.Translate(again) == wanted);
                std::size_t found = 0;
                for (const RowId& each : after)
                    found += found < before.size() && each == before[found];
                ASSERT_EQ(before.size(), found);
            }
            EXPECT_EQ(hidden, session.CountHidden(file));
            EXPECT_EQ(LogSession::kNoRow, session.Reveal({file, 1000}));
        }
    }
    LogRows logs;
    logs.AddAll("RRQ"); // and no Main
    LogSession session(logs);
    session.Refresh(0);
    EXPECT_TRUE(session.CountHidden(1) == (HiddenRows{2, 0}) && session.Reveal({1, 0}) == LogSession::kNoRow);
}

TEST(RowCache, ReadsNeighboursTogetherAndLongLinesInPart)
{
    LogRows logs;
    logs.AddAll(std::string(100, 'M'));
    for (int i = 0; i < 40; ++i)
        logs.AddAll("MR");
    logs.Add(0, std::string(1'000'000, 'y'));
    LogSession session(logs);
    session.Refresh(0);
    RowCache cache(logs);
    cache.Prepare(session, 20, 60);
    EXPECT_TRUE(logs.recordReads == 1 && logs.textReads == 1);

    RowChange change;
    for (int row = 178; row >= 100; --row)
        session.Expand(row, change);
    logs.recordReads = logs.textReads = 0;
    cache.Prepare(session, 110, 60);
    EXPECT_TRUE(logs.recordReads == 2 && logs.textReads == 2); // one a log, however they alternate

    logs.bytesRead = 0;
    cache.Prepare(session, session.RowCount() - 10, 60);
    EXPECT_LT(logs.bytesRead, 3u * RowCache::kLineBytes);
    EXPECT_EQ(1'000'001u, cache.Get(session.RowCount() - 1)->length); // a last line's is one too many
    EXPECT_EQ(nullptr, cache.Get(session.RowCount()));
}

// A writer goes on between the reads of a row and of its text.
TEST(RowCache, ShowsNothingOfRowsThatCameLater)
{
    LogRows logs;
    logs.Add(0, "first\n");
    logs.Add(0, "last\nof a later row");
    LogSession session(logs);
    session.Refresh(0);
    RowCache cache(logs);
    cache.Prepare(session, 0, 2);
    std::string line;
    EXPECT_TRUE(session.ReadLine(1, line) && line == "last\n");
    EXPECT_EQ("last\n", cache.Get(1)->text);
    EXPECT_EQ("first\n", cache.Get(0)->text);
}

TEST(RowCache, KeepsNoPartOfACharacter)
{
    LogRows logs;
    logs.Add(0, std::string(RowCache::kLineBytes - 2, 'x') + "\u65E5\u672C\n");
    logs.Add(0);
    LogSession session(logs);
    session.Refresh(0);
    RowCache cache(logs);
    cache.Prepare(session, 0, 1);
    EXPECT_EQ(std::string(RowCache::kLineBytes - 2, 'x'), cache.Get(0)->text);
}

TEST(LineFind, ComparesCharactersInCapitals)
{
    const struct
    {
        const char* line;
        const char* text;
        int from;
        int place; // -1: none
    } cases[] = {
        {"Some Text", "TEXT", 0, 5},
        {"Some Text", "Text", 0, -1}, // the line's capitals only
        {"text text", "TEXT", 1, 5},
        {"text", "", 4, 4},
        {"text", "", 5, -1},
        {"gr\u00F6\u00DFe", "GR\u00D6\u00DFE", 0, 0},
        {"x gr\xF6\xDF"
         "e",
         "GR\u00D6\u00DFE", 1, 2}, // in the code page, looked for in UTF-8
        {"x gr\u00F6\u00DFe",
         "GR\xD6\xDF"
         "E",
         0, 2},                               // the other way round
        {"gr\u00F6\u00DFe", "\u00F6", 0, -1}, // a small letter
        {"\u00E4 \u00E4", "\u00C4", 1, 3},
        {"\u0416\u0443\u0440\u043D\u0430\u043B", "\u041D", 0, 6},
        {"\u65E5\u5FD7 x", "\u5FD7", 0, 3},
        {"\u65E5\u5FD7 x", "X", 0, 7},
        {"e\u0301x", "\u0301", 0, 0}, // a mark alone: the character that has it
        {"\U00010428", "\U00010400", 0, 0},
        {"plain", "\u00C4", 0, -1},
    };
    for (const auto& [line, text, from, place] : cases)
        EXPECT_EQ(place, FindInLine(line, text, from).value_or(-1)) << line << ' ' << text;
}

TEST(MarginZones, SwitchTheRowWhoseLowerEdgeIsNearest)
{
    const struct
    {
        int column, x, dy, expected;
    } cases[] = {
        {-2, 0, 7, 4}, {-2, 8, 8, 5}, {-2, 9, 8, kNoSwitch}, {-2, -1, 8, kNoSwitch}, {-1, 4, 8, kNoSwitch}};
    for (const auto& [column, x, dy, expected] : cases)
        EXPECT_EQ(expected, SwitchedRow(5, column, x, dy, 15, 8)) << column << ' ' << x << ' ' << dy;
}

} // namespace
} // namespace logview
