// Verification: what is damage, what is not, and where.

#include "tests/support/Verify.h"
#include "QmLogWriter.h"
#include "logfiles/Counters.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string_view>
#include <utility>

namespace
{

using Kind = QmLogFindingKind;

// A log folder with a session in it, to be damaged and verified.
struct Folder
{
    // Main: "\nhead\nb\nc\ndd\ntail", rows at 1, 6, 8, 10, 13; SQL: "x\ny\n", rows at 0, 2, 4.
    void WriteSession()
    {
        CQmLogWriter main = WriterOf("Main");
        CQmLogWriter sql = WriterOf("SQL");
        main.BlockBegin(kNoticeKind);
        main.Write("head");
        sql.Write("x\ny\n");
        main.Write("\nb\nc\ndd");
        main.BlockEnd();
        main.Write("tail");
        QmLogWriterCloseAll();
    }

    std::vector<Finding> Verify() const { return FindingsOf("C:\\Logs", {"Main", "Run", "SQL"}); }

    bool IsDamaged() const
    {
        for (const Finding& finding : Verify())
        {
            if (QmLogIsDamage(finding.kind))
                return true;
        }
        return false;
    }

    void Edit(const char* file, const std::function<void(std::string&)>& edit)
    {
        std::string bytes = session.files.Contents(session.Path(file));
        edit(bytes);
        session.files.SetContents(session.Path(file), bytes);
    }

    void EditRow(const char* file, std::size_t index, const std::function<void(CQmLogRow&)>& edit)
    {
        Edit(file, [&](std::string& bytes) {
            CQmLogRow row;
            std::memcpy(&row, bytes.data() + index * sizeof(row), sizeof(row));
            edit(row);
            std::memcpy(bytes.data() + index * sizeof(row), &row, sizeof(row));
        });
    }

    // A row of depth 0 with the next number, after what the index holds.
    void AddRow(const char* file, std::uint32_t offset)
    {
        CQmLogRow row;
        row.offset = offset;
        row.blockBegin = 0;
        logfiles::GlobalTimeTake(1, row.time);
        Edit(file,
             [&](std::string& bytes) { bytes.append(reinterpret_cast<const char*>(&row), sizeof(row)); });
        logfiles::CloseCounters();
    }

    MemorySession session;
};

std::string Describe(const std::vector<Finding>& findings)
{
    std::string text;
    for (const Finding& finding : findings)
        text += finding.file + ": row " + std::to_string(static_cast<int>(finding.row)) + ", kind " +
                std::to_string(static_cast<int>(finding.kind)) + ": " + finding.reason + "\n";
    return text;
}

std::size_t Count(const std::vector<Finding>& findings, Kind kind)
{
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [kind](const Finding& finding) { return finding.kind == kind; }));
}

TEST(Verify, FindsNothingInWhatTheWriterLeaves)
{
    Folder folder;
    EXPECT_TRUE(folder.Verify().empty()) << "an empty folder";
    folder.WriteSession();
    EXPECT_EQ("", Describe(folder.Verify()));
    WriterOf("Run").Write("");
    EXPECT_EQ("", Describe(folder.Verify())) << "a log without text";
    folder.session.files.SetContents("C:\\Logs\\Empty.LOG", "");
    EXPECT_EQ("", Describe(FindingsOf("C:\\Logs", {"Main", "Run", "SQL", "Empty"}))) << "or without anything";
    EXPECT_EQ("", Describe(FindingsOf("C:\\Logs\\", {"Main", "Run", "SQL"})));
}

// ---- Damage to be planted

using Plant = std::function<void(Folder&)>;

Plant Delete(const std::string& file)
{
    return [=](Folder& folder) { folder.session.files.Delete(folder.session.Path(file).c_str()); };
}

Plant Cut(const char* file, std::size_t size) // or extend by zeros
{
    return [=](Folder& folder) { folder.Edit(file, [=](std::string& bytes) { bytes.resize(size); }); };
}

Plant Replace(const char* file, std::size_t at, std::size_t count, const std::string& by)
{
    return
        [=](Folder& folder) { folder.Edit(file, [=](std::string& bytes) { bytes.replace(at, count, by); }); };
}

// The index of "Main" made of its records, named by their digits.
Plant Records(const std::string& digits)
{
    return [=](Folder& folder) {
        folder.Edit("Main.ROW", [=](std::string& bytes) {
            std::string edited;
            for (const char digit : digits)
                edited +=
                    bytes.substr(std::min(bytes.size(), 20 * static_cast<std::size_t>(digit - '0')), 20);
            bytes = edited;
        });
    };
}

template <typename Field>
Plant Set(const char* file, std::size_t row, Field CQmLogRow::*field, std::type_identity_t<Field> value)
{
    return
        [=](Folder& folder) { folder.EditRow(file, row, [=](CQmLogRow& record) { record.*field = value; }); };
}

TEST(Verify, NamesEachKindOfDamage)
{
    constexpr unsigned long kNoRow = QmLogFinding::kNoRow;
    constexpr auto kOffset = &CQmLogRow::offset;
    constexpr auto kTime = &CQmLogRow::time;
    const struct
    {
        const char* name;
        Plant plant;
        Kind kind;
        const char* file;
        unsigned long row;
    } cases[] = {
        {"text removed", Delete("Main.LOG"), Kind::IndexWithoutText, "Main.LOG", kNoRow},
        {"index removed", Delete("Main.ROW"), Kind::TextWithoutIndex, "Main.ROW", kNoRow},
        {"index emptied", Cut("SQL.ROW", 0), Kind::TextWithoutIndex, "SQL.ROW", kNoRow},
        {"index cut within a record", Cut("Main.ROW", 93), Kind::IndexCut, "Main.ROW", 4},
        {"last record removed", Cut("SQL.ROW", 40), Kind::LineWithoutRow, "SQL.ROW", 2},
        {"record removed", Replace("Main.ROW", 20, 20, ""), Kind::LineWithoutRow, "Main.ROW", 1},
        {"first record removed", Replace("SQL.ROW", 0, 20, ""), Kind::LineWithoutRow, "SQL.ROW", 0},
        {"text cut", Cut("Main.LOG", 4), Kind::TextCut, "Main.LOG", kNoRow},
        {"record doubled", Records("011234"), Kind::NumberNotAscending, "Main.ROW", 1},
        {"records exchanged", Records("01324"), Kind::NumberNotAscending, "Main.ROW", 2},
        {"offset too low", Set("Main.ROW", 3, kOffset, 1), Kind::OffsetNotAscending, "Main.ROW", 3},
        {"two offsets alike, within a line",
         [](Folder& folder) {
             Set("Main.ROW", 2, kOffset, 11)(folder);
             Set("Main.ROW", 3, kOffset, 11)(folder);
         },
         Kind::OffsetNotAscending, "Main.ROW", 3},
        {"offset within a line", Set("Main.ROW", 3, kOffset, 11), Kind::OffsetNotAtLine, "Main.ROW", 3},
        {"last offset within a line", Set("Main.ROW", 4, kOffset, 14), Kind::OffsetNotAtLine, "Main.ROW", 4},
        {"offset behind", Set("Main.ROW", 4, kOffset, 0x80000000), Kind::OffsetNotAtLine, "Main.ROW", 4},
        {"line feed written over", Replace("Main.LOG", 7, 1, " "), Kind::OffsetNotAtLine, "Main.ROW", 2},
        {"byte removed from the text", Replace("Main.LOG", 2, 1, ""), Kind::OffsetNotAtLine, "Main.ROW", 1},
        {"line feed put into the text", Replace("Main.LOG", 3, 1, "\n"), Kind::LineWithoutRow, "Main.ROW", 1},
        {"text appended by hand", Replace("SQL.LOG", 4, 0, "z\n"), Kind::LineWithoutRow, "SQL.ROW", 3},
        {"number zero", Set("Main.ROW", 1, kTime, 0), Kind::NumberZero, "Main.ROW", 1},
        {"number too low", Set("Main.ROW", 4, kTime, 2), Kind::NumberNotAscending, "Main.ROW", 4},
        {"number too high", Set("Main.ROW", 1, kTime, 8), Kind::NumberNotAscending, "Main.ROW", 1},
        {"number of another log", Set("SQL.ROW", 2, kTime, 5), Kind::NumberNotUnique, "SQL.ROW", 2},
        {"number above the counter", Set("Main.ROW", 4, kTime, 9), Kind::NumberAboveCounter, "Main.ROW", 4},
        {"counter set back", Replace("Log.DAT", 0, 1, "\7"), Kind::NumberAboveCounter, "Main.ROW", 4},
        {"block mark", Set("Main.ROW", 2, &CQmLogRow::blockBegin, 2), Kind::BlockMarkInvalid, "Main.ROW", 2},
        {"kind", Set("SQL.ROW", 0, &CQmLogRow::kind, kEnclosingKind), Kind::KindInvalid, "SQL.ROW", 0},
        {"counters removed", Delete("Log.DAT"), Kind::CountersMissing, "Log.DAT", kNoRow},
        {"counters cut", Cut("Log.DAT", 5), Kind::CountersSize, "Log.DAT", kNoRow},
        {"counters too long", Cut("Log.DAT", 9), Kind::CountersSize, "Log.DAT", kNoRow},
        {"index kept from others",
         [](Folder& folder) {
             folder.session.files.Create("C:\\Logs\\Main.ROW", GENERIC_READ, 0, OPEN_EXISTING, 0);
         },
         Kind::FileUnreadable, "Main.ROW", kNoRow},
    };
    for (const auto& c : cases)
    {
        Folder folder;
        folder.WriteSession();
        c.plant(folder);
        const std::vector<Finding> findings = folder.Verify();
        const bool named = std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
            return finding.kind == c.kind && finding.file == c.file && finding.row == c.row &&
                   QmLogIsDamage(c.kind);
        });
        EXPECT_TRUE(named) << c.name << ":\n" << Describe(findings);
        if (c.kind == Kind::NumberNotAscending)
            EXPECT_EQ(1u, Count(findings, c.kind)) << c.name << ":\n" << Describe(findings);
        EXPECT_LE(findings.size(), 8u) << c.name << ": one fault is told in few words\n"
                                       << Describe(findings);
    }
}

TEST(Verify, NamesTheNumbersThatNoRowHas)
{
    // How many numbers are lost before each row, and at the end.
    const std::pair<std::vector<std::uint32_t>, const char*> cases[] = {
        {{0, 1}, "10 (1 in all)"},
        {{1, 0}, "9 (1 in all)"},
        {{2, 1, 0}, "9 to 10, 12 (3 in all)"},
        {{1, 1, 1, 1, 1}, "9, 11, 13, 15, 17 (5 in all)"},
        {{1, 1, 1, 1, 1, 2}, "9, 11, 13, 15, 17, ... (7 in all)"},
    };
    for (const auto& [lost, expected] : cases)
    {
        Folder folder;
        folder.WriteSession(); // with the numbers up to 8
        std::uint32_t first = 0;
        for (std::size_t i = 0; i < lost.size(); ++i)
        {
            if (lost[i] > 0)
                logfiles::GlobalTimeTake(lost[i], first);
            if (i + 1 < lost.size())
                EXPECT_TRUE(WriterOf("SQL").Write("z\n"));
        }
        QmLogWriterCloseAll();
        const std::vector<Finding> findings = folder.Verify();
        ASSERT_EQ(1u, findings.size()) << Describe(findings);
        EXPECT_EQ(std::string("no row has the number ") + expected, findings[0].reason);
    }
}

TEST(Verify, TellsLeftoversFromDamage)
{
    Folder folder;
    folder.WriteSession();
    CQmLogWriter sql = WriterOf("SQL");
    EXPECT_TRUE(sql.Write("z")); // "x\ny\nz", 5 bytes with rows at 0, 2 and 4
    const auto goOn = [&](const char* text) {
        EXPECT_TRUE(sql.Write(text));
        sql.Close();
        logfiles::CloseCounters();
    };
    goOn("");

    // A disk on which the rows find room, but not their text: they are taken back.
    folder.session.files.SetFreeSpace(2 * sizeof(CQmLogRow));
    EXPECT_FALSE(sql.Write("more text\n\n"));
    folder.session.files.SetFreeSpace(0xFFFFFFFFFFFFFFFF);
    goOn("");
    EXPECT_EQ(1u, folder.Verify().size()) << Describe(folder.Verify());
    EXPECT_EQ(1u, Count(folder.Verify(), Kind::NumberWithoutRow));

    // A killed writer leaves rows without their text, which the next writer takes away.
    folder.AddRow("SQL.ROW", 15);
    folder.AddRow("SQL.ROW", 16);
    EXPECT_EQ(2u, Count(folder.Verify(), Kind::RowBeforeText)) << Describe(folder.Verify());
    EXPECT_FALSE(folder.IsDamaged());
    goOn("\n");
    EXPECT_EQ(0u, Count(folder.Verify(), Kind::RowBeforeText));
    EXPECT_EQ(1u, folder.Verify().size()) << Describe(folder.Verify());

    // A row at the very place of the next one shows nothing.
    folder.AddRow("SQL.ROW", 6);
    EXPECT_EQ(1u, Count(folder.Verify(), Kind::RowWithoutText)) << Describe(folder.Verify());
    EXPECT_FALSE(folder.IsDamaged());

    // A killed writer leaves part of a record, and numbers it had taken.
    folder.Edit("SQL.ROW", [](std::string& bytes) { bytes += "unfinished"; });
    std::uint32_t first = 0;
    logfiles::GlobalTimeTake(3, first);
    EXPECT_EQ(1u, Count(folder.Verify(), Kind::RecordUnfinished));
    EXPECT_EQ(1u, Count(folder.Verify(), Kind::NumberWithoutRow));
    EXPECT_FALSE(folder.IsDamaged()) << Describe(folder.Verify());
    goOn("");
}

// Rows that one write cannot explain stay: they tell of a text that was cut. When text grows under them, they
// show its lines twice and in slices.
TEST(Verify, RowsThatPointIntoLaterTextAreDamage)
{
    Folder folder;
    folder.WriteSession();
    folder.AddRow("SQL.ROW", 9);
    std::uint32_t first = 0;
    logfiles::GlobalTimeTake(1, first); // for another log
    folder.AddRow("SQL.ROW", 12);
    EXPECT_EQ(1u, Count(folder.Verify(), Kind::TextCut)) << Describe(folder.Verify());
    QmLogWriterCloseAll();
    EXPECT_TRUE(WriterOf("SQL").Write("a\nlonger text\n"));
    EXPECT_EQ(7u, folder.session.files.Contents("C:\\Logs\\SQL.ROW").size() / sizeof(CQmLogRow));
    EXPECT_EQ(2u, Count(folder.Verify(), Kind::OffsetNotAtLine)) << Describe(folder.Verify());
    EXPECT_TRUE(folder.IsDamaged());
}

// A writer goes on between the looks at the text and at the index of a log.
TEST(Verify, AWriterThatGoesOnMeanwhileIsNotDamage)
{
    Folder folder;
    CQmLogWriter main = WriterOf("Main");
    CQmLogWriter sql = WriterOf("SQL");
    main.Write("a\n");
    int looks = 0;
    folder.session.files.onCall = [&](const std::string& call) {
        if (!call.starts_with("GetSize") || !call.ends_with("Main.ROW") || ++looks > 1)
            return;
        main.BlockBegin(kErrorKind);
        sql.Write("x\n");
        main.Write("b\nc\n");
    };
    EXPECT_EQ("", Describe(folder.Verify()));
    EXPECT_EQ("a\n\nb\nc\n", folder.session.Text("Main")) << "the writer went on";
    folder.session.files.onCall = nullptr;
}

// The next writer cuts the rows that a killed one left, at any moment of the verification.
TEST(Verify, AnIndexThatIsCutMeanwhileIsNotDamage)
{
    for (const std::string text : {"x", "x\ny\n"}) // of no row and of two
    {
        unsigned long calls = 1;
        for (unsigned long moment = 1; moment <= calls; ++moment)
        {
            Folder folder;
            folder.WriteSession();
            folder.AddRow("SQL.ROW", 9);
            folder.AddRow("SQL.ROW", 12);
            calls = 0;
            folder.session.files.onCall = [&](const std::string&) {
                if (++calls != moment)
                    return;
                WriterOf("SQL").Write(text.c_str());
                logfiles::CloseCounters();
            };
            const std::vector<Finding> findings = folder.Verify();
            folder.session.files.onCall = nullptr;
            for (const Finding& finding : findings)
                EXPECT_FALSE(QmLogIsDamage(finding.kind)) << Describe(findings) << "at call " << moment;
            EXPECT_EQ(text == "x" ? 60u : 100u, folder.session.files.Contents("C:\\Logs\\SQL.ROW").size());
        }
        EXPECT_GT(calls, 10u);
    }
}

// Wherever a writer is killed, nothing is damaged; the next one goes on, and still nothing is.
TEST(Verify, FindsNoDamageAfterAKillAtAnyCall)
{
    const auto write = [](bool& finished) {
        CQmLogWriter main = WriterOf("Main");
        CQmLogWriter sql = WriterOf("SQL");
        main.BlockBegin(kErrorKind);
        main.Write("caption");
        sql.Write("one\ntwo\n\nthree\n");
        main.Write("\ntext\nof many\nlines");
        main.BlockEnd();
        main.Write("");
        main.Write("end");
        finished = true;
        QmLogWriterCloseAll();
    };
    int kills = 0;
    for (bool finished = false; !finished; ++kills)
    {
        Folder folder;
        folder.WriteSession();
        folder.session.files.ForgetCalls();
        folder.session.files.SetFault({static_cast<unsigned long>(kills + 1), ZEMA::Fault::Kill});
        EXPECT_NO_THROW(try { write(finished); } catch (const ZEMA::ProcessKilled&){});
        folder.session.files.ClearFault();
        folder.session.files.CloseAllHandles();
        logfiles::CloseCounters();
        EXPECT_FALSE(folder.IsDamaged()) << "killed in call " << kills + 1 << "\n"
                                         << Describe(folder.Verify());

        bool secondFinished = false;
        write(secondFinished);
        EXPECT_FALSE(folder.IsDamaged()) << "after call " << kills + 1 << "\n" << Describe(folder.Verify());
    }
    EXPECT_GT(kills, 60);
}

// Each empty text first of all has a row of its own.
TEST(Verify, TakesRowsOfEmptyTextsForNoDamage)
{
    for (const char* const text : {"\n\n", "\nline", "line\n", ""})
        for (int empty = 1; empty < 4; ++empty)
        {
            Folder folder;
            CQmLogWriter log = WriterOf("Main");
            for (int i = 0; i < empty; ++i)
                log.Write("");
            log.Write(text);
            log.Close();
            EXPECT_FALSE(folder.IsDamaged()) << empty << text;
            folder.EditRow("Main.ROW", 0, [](CQmLogRow& row) { row.offset = 1000; });
            EXPECT_TRUE(folder.IsDamaged()) << empty << text;
        }
}

TEST(Verify, EndsOnAnyBytes)
{
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round)
    {
        Folder folder;
        folder.WriteSession();
        for (const char* file : {"Main.LOG", "Main.ROW", "SQL.ROW", "Log.DAT"})
        {
            folder.Edit(file, [&](std::string& bytes) {
                if (random() % 3 == 0)
                    bytes.resize(random() % (bytes.size() + 30), '\n');
                for (unsigned i = random() % 4; i > 0 && !bytes.empty(); --i)
                    bytes[random() % bytes.size()] = static_cast<char>(random() % 3 == 0 ? '\n' : random());
            });
        }
        for (const Finding& finding : folder.Verify())
            ASSERT_FALSE(finding.reason.empty() || finding.file.empty());
    }
}

TEST(Verify, CountsWhatIsTooMuchToTell)
{
    Folder folder;
    CQmLogWriter log = WriterOf("Main");
    log.Write(std::string(5000, '\n').c_str());
    folder.Edit("Main.ROW", [](std::string& bytes) { bytes.assign(bytes.size(), '\1'); });
    const std::vector<Finding> findings = folder.Verify();
    EXPECT_LT(findings.size(), 1010u);
    EXPECT_EQ(1u, Count(findings, Kind::MoreDamage));
}

// An index of zeros: each row is a finding, and the first hundred thousand say all that there is to say.
TEST(Verify, GivesUpALogOfNothingButFindings)
{
    Folder folder;
    folder.WriteSession();
    folder.session.files.SetSize("C:\\Logs\\Run.LOG", 100);
    folder.session.files.SetSize("C:\\Logs\\Run.ROW", 20 * 110000);
    const std::vector<Finding> findings = folder.Verify();
    ASSERT_EQ(1001u, findings.size()) << "nothing is told of numbers that the rest may have";
    EXPECT_EQ(Kind::MoreDamage, findings.back().kind);
    EXPECT_EQ("100000 more findings like these, and the rest of the log was not checked",
              findings.back().reason);
}

TEST(Verify, TellsHowFarItIsAndEndsWhenToldTo)
{
    Folder folder;
    folder.WriteSession();
    folder.session.files.SetSize("C:\\Logs\\SQL.LOG", 100 << 20);
    std::vector<int> told;
    const auto verify = [&](std::size_t last) {
        told.clear();
        return FindingsOf("C:\\Logs", {"Main", "SQL"}, [&](int percent) {
            told.push_back(percent);
            return told.size() < last;
        });
    };
    verify(1000);
    EXPECT_TRUE(told.size() > 20 && told.back() > 90 && std::is_sorted(told.begin(), told.end()));
    EXPECT_TRUE(verify(3).empty()) << "what was not read is no finding";
    EXPECT_EQ((std::vector<int>{4, 8, 12}), told);
}

} // namespace
