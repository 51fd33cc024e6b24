// The rows of a session as messages.
#include "msgservice/session/SessionSource.h"
#include "QmLogTimes.h"
#include "QmLogWriter.h"
#include "msgservice/session/ClockText.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>

namespace
{

using namespace msgservice;

class MessageLines : public MessageSink
{
public:
    void Add(const MessageFields& message) override
    {
        lines += std::string(message.timestamp) + " " + std::to_string(message.time) + " " +
                 std::to_string(message.level) + std::string(message.levelText) + " " +
                 std::string(message.topic) + ":" + std::to_string(message.sourceLine) + " " +
                 std::string(message.indent, '.') + std::string(message.body) + "\n";
    }

    std::string lines;
};

class SessionSourceTest : public testing::Test, protected MemorySession
{
protected:
    SessionSourceTest()
    {
        m_main.SetFilePath("Main");
        m_run.SetFilePath("Run");
    }

    // All that the source has at the moment, and the state that it ends with.
    std::string Read(SessionSource& source)
    {
        MessageLines sink;
        MessageSource::State state = MessageSource::State::More;
        while (state == MessageSource::State::More)
            state = source.Read(sink);
        return sink.lines + (state == MessageSource::State::Ended ? "ended\n" : "");
    }

    CQmLogWriter m_main;
    CQmLogWriter m_run;
};

// A writer may turn its clock on between two looks, and a row may come while others are read.
TEST_F(SessionSourceTest, ARowHasItsTimeWhereTheWriterHadAClock)
{
    SessionSource source({"Main"}, SessionSource::Until::Forever);
    m_main.Write("one\n");
    files.now = *ReadLocalTime("2026-11-23 14:03:10.5", 0);
    const std::string time = std::to_string(NanosecondsSince1970(files.now));
    EXPECT_EQ("1 1 2Plain Main:1 one\n", Read(source));
    QmLogSetTimes(true);
    m_main.Write("two\nthree\n");
    const std::string later = std::to_string(NanosecondsSince1970(files.now + 600000000));
    bool isLate = true; // the last one comes after the look at the times
    files.onCall = [&](const std::string& call) {
        if (isLate && call.ends_with("Main.ROW"))
        {
            isLate = false;
            files.now += 600000000;
            m_main.Write("four\n");
        }
    };
    const std::string lines = Read(source) + Read(source);
    files.onCall = nullptr;
    QmLogSetTimes(false);
    EXPECT_EQ("2 2 2Plain Main:2 two\n2026-11-23 14:03:10.500 " + time +
                  " 2Plain Main:3 three\n2026-11-23 14:03:10.500 " + time + " 2Plain Main:4 four\n",
              lines);
    m_main.Write("five");
    EXPECT_EQ("2026-11-23 14:04:10.500 " + later + " 2Plain Main:5 five\n", Read(source) + Read(source));
}

TEST_F(SessionSourceTest, ARowIsAMessageThatLeadsBackToIt)
{
    m_main.WriteLine("one");
    m_run.BlockBegin(kErrorKind);
    m_run.WriteLine("two");
    m_run.BlockBegin(kDetailKind);
    m_run.WriteLine("three\r");
    m_run.BlockBegin(static_cast<QmLogBlockKind>(77));
    m_main.WriteLine("four");
    m_run.WriteLine("five");
    m_run.BlockBegin(kNoticeKind);
    m_run.Write("six"); // without its end
    SessionSource source({"Main", "Run"}, SessionSource::Until::Now);
    EXPECT_EQ("1 1 2Plain Main:1 one\n"
              "2 2 4Error Run:1 .two\n"
              "3 3 1Detail Run:2 ..three\n"
              "4 4 277 Run:3 ...five\n"
              "5 5 2Plain Main:2 four\n"
              "6 6 3Notice Run:4 ....six\n"
              "ended\n",
              Read(source));
}

TEST_F(SessionSourceTest, FollowsWhatIsWrittenAndANewSession)
{
    SessionSource source({"Main", "Run"}, SessionSource::Until::Forever);
    EXPECT_EQ("", Read(source));
    m_main.Write("one\ntwo");
    EXPECT_EQ("1 1 2Plain Main:1 one\n", Read(source)) << "the second line may go on";
    EXPECT_EQ("2 2 2Plain Main:2 two\n", Read(source)) << "it has not";
    EXPECT_EQ("", Read(source));
    m_main.Write(" and more\n");
    m_run.Write("three\n");
    EXPECT_EQ("2 2 2Plain Main:2  and more\n4 4 2Plain Run:1 three\n", Read(source));
    EXPECT_EQ("", source.TakeNotices());

    for (const char* const name : {"Main.LOG", "Run.LOG"})
        files.SetContents(Path(name), "");
    files.SetContents(Path("Main.ROW"), "");
    files.SetContents(Path("Run.ROW"), "");
    files.SetContents(Path("Log.DAT"), "");
    EXPECT_EQ("", Read(source));
    EXPECT_EQ("A new session has begun in the log folder\n", source.TakeNotices());
}

// A long log's rows lie in pages.
TEST_F(SessionSourceTest, OneRowMoreIsOneMessageMore)
{
    SessionSource source({"Main"}, SessionSource::Until::Forever);
    std::string text = "line";
    for (int line = 2; line <= 10000; ++line)
        text += "\nline";
    m_main.Write(text.c_str());
    Read(source);
    Read(source); // the last line has not gone on
    for (const char* const number : {"10001", "10002"})
    {
        m_main.Write((std::string("\n") + number).c_str());
        const std::string lines = Read(source) + Read(source);
        EXPECT_EQ(std::string(number) + " " + number + " 2Plain Main:" + number + " " + number + "\n", lines);
    }
}

// Whatever is written, taken back and written again: as "log:row" of each message, and as messages of rows.
TEST_F(SessionSourceTest, MessagesAndRowsLeadToEachOther)
{
    const auto store = MessageStore::Make();
    const auto rows = std::make_shared<SessionRows>(store);
    std::optional<std::vector<std::string>> logs = {{"Main"}};
    SessionSource source({}, SessionSource::Until::Forever);
    source.SetRows(rows);
    source.SetFindLogs([&] { return logs; });
    const auto told = [&] {
        for (int look = 0; look < 3; ++look) // the first two hold lines back that may go on
            source.Read(*store);
        std::string text;
        for (std::uint32_t message = 0; message < store->Count(); ++message)
        {
            const auto row = rows->RowOf(message);
            text += row ? row->log + ":" + std::to_string(row->index) + " " : "- ";
        }
        for (std::uint32_t row = 0; row < 3; ++row)
            for (const char* const log : {"main", "Run"})
                text += std::to_string(static_cast<int>(rows->MessageOf(log, row).value_or(-1U))) + " ";
        return text;
    };
    m_main.Write("one\ntwo");
    EXPECT_EQ("Main:0 Main:1 0 -1 1 -1 -1 -1 ", told());
    m_main.Write(" and more\n");
    m_run.Write("three\n");
    EXPECT_EQ("Main:0 Main:1 Main:1 0 -1 1 -1 -1 -1 ", told()) << "the first part, and no log unasked for";
    logs.reset();
    told();
    EXPECT_EQ("Main:0 Main:1 Main:1 0 -1 1 -1 -1 -1 ", told()) << "no folder";
    logs = {{"Main", "Run"}};
    EXPECT_EQ("Main:0 Main:1 Main:1 Run:0 0 3 1 -1 -1 -1 ", told());

    store->Add({});
    EXPECT_EQ("Main:0 Main:1 Main:1 Run:0 - 0 3 1 -1 -1 -1 ", told()) << "what is no row has none";
    m_run.Close();
    files.SetContents(Path("Run.ROW"), "");
    files.SetContents(Path("Run.LOG"), "");
    EXPECT_EQ("Main:0 Main:1 Main:1 Run:0 - 0 3 1 -1 -1 -1 ", told()) << "taken back";
    m_run.Write("four\n");
    EXPECT_EQ("Main:0 Main:1 Main:1 - - Run:0 0 5 1 -1 -1 -1 ", told()) << "and written again";

    for (const char* const name : {"Main.LOG", "Run.LOG", "Main.ROW", "Run.ROW", "Log.DAT"})
        files.SetContents(Path(name), "");
    EXPECT_EQ("- - - - - - -1 -1 -1 -1 -1 -1 ", told()) << "a new session";
}

// A long session comes piece by piece, and nothing twice.
TEST_F(SessionSourceTest, ALongSessionComesInPieces)
{
    std::string text;
    for (int i = 0; i < 60'000; ++i)
        text += std::to_string(i) + "\n";
    m_main.Write(text.c_str());
    SessionSource source({"Main"}, SessionSource::Until::Now);
    MessageLines sink;
    int pieces = 1;
    for (; source.Read(sink) == MessageSource::State::More; ++pieces)
        EXPECT_FALSE(sink.lines.empty());
    EXPECT_EQ(2, pieces);
    EXPECT_EQ(60'000, std::count(sink.lines.begin(), sink.lines.end(), '\n'));
    EXPECT_TRUE(sink.lines.ends_with("60000 60000 2Plain Main:60000 59999\n"));
}

} // namespace
