// "logtool messages" on the rows of a session; what text logs are is tested with the service.
#include "host/msgservice/saved/SavedSource.h"
#include "tests/logtool/LogtoolTest.h"

#include <cstdio>

namespace
{

class MessagesTest : public LogtoolTest
{
protected:
    MessagesTest() { Play("Main=start Run!fails,\"so\" Run=a=b Run- Main?later Main=start Main=start"); }
};

TEST_F(MessagesTest, WritesEachForm)
{
    EXPECT_EQ("1  Plain  Main  start\n"
              "2  Error  Run  fails,\"so\"\n"
              "3  Error  Run  a=b\n"
              "4  Notice  Main  later\n"
              "5  Notice  Main  start\n"
              "6  Notice  Main  start\n",
              Run("messages --session"));
    EXPECT_EQ("timestamp,level,topic,body,error-number,runtime-file,line,module,source-line,runtime-context,"
              "source,who,"
              "source-column\r\n"
              "2,Error,Run,\"fails,\"\"so\"\"\",0,,0,,1,,,,0\r\n",
              Run("messages --session --csv --fields all --contain body=so"));
    EXPECT_EQ("topic\tbody\nRun\ta=b\n",
              Run("messages --session --tsv --fields topic,body --contain body=a=b"));
    EXPECT_EQ("{\"source-line\":1,\"level\":\"Error\",\"body\":\"fails,\\\"so\\\"\"}\n",
              Run("messages --session --json --fields source-line,level,body --contain source-line=1 --level "
                  "error"));
    host.terminal = true;
    EXPECT_EQ("\x1b[31mRun\x1b[0m\n\x1b[31mRun\x1b[0m\n",
              Run("messages --session --fields topic --level error"));
}

// The bodies of what is left, in order.
TEST_F(MessagesTest, ChoosesAndSorts)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "start fails,\"so\" a=b later start start"},
        {"--no-duplicates", "start fails,\"so\" a=b later start"},
        {"--sort body", "a=b fails,\"so\" later start start start"},
        {"--sort body --no-duplicates", "a=b fails,\"so\" later start start"}, // one is Plain, two are Notice
        {"--sort level:desc --sort source-line:desc", "a=b fails,\"so\" start start later start"},
        {"--level error", "fails,\"so\" a=b"},
        {"--contain topic=Run --not-contain body==", "fails,\"so\""},
        {"--contain body=START -i --contain level=plain", "start"},
        {"--log Run", "fails,\"so\" a=b"},
        {"--contain body=START", "exit 1"},
    };
    for (const auto& [options, wanted] : cases)
    {
        std::string told = Run(std::string("messages --session --fields body ") + options);
        std::replace(told.begin(), told.end(), '\n', ' ');
        EXPECT_EQ(wanted, told.substr(0, told.find_last_not_of(' ') + 1)) << options;
    }
}

TEST_F(MessagesTest, FollowsAndLeavesOutDuplicatesAcrossPieces)
{
    int looks = 0;
    host.wait = [&] {
        Play(++looks == 1 ? "Main=start Main=start Main=end" : "Main=end");
        return looks <= 2;
    };
    EXPECT_EQ("start\nfails,\"so\"\na=b\nlater\nstart\nend\n",
              Run("messages --session -f --no-duplicates --fields body"));
}

// Files and standard input as text, one after the other, each with its name.
TEST_F(MessagesTest, ReadsTextsAndExplainsThem)
{
    host.inputs["-"] = {"2026-11-22 10:00:00 WARN [net] a\n  at b\n2026-11-22 ", "10:00:01 INFO [db] c\n"};
    EXPECT_EQ("2026-11-22 10:00:00  WARN   net  a\n      at b\n2026-11-22 10:00:01  INFO   db  c\n",
              Run("messages"));

    session.files.SetContents("a.log", "10:00 is no date\nx\n");
    session.files.SetContents("b.log",
                              "{\"time\":\"2026-11-22T10:00:00Z\",\"level\":\"error\",\"msg\":\"d\"}\n");
    EXPECT_EQ("a.log  10:00 is no date\na.log  x\nb.log  2026-11-22T10:00:00Z  error  d\n"
              "logtool: 'none.log' can",
              Run("messages a.log b.log none.log").substr(0, 94));
    EXPECT_EQ("{\"time\":\"2026-11-22T10:00:00Z\",\"level\":\"error\",\"msg\":\"d\"}\n",
              Run("messages b.log --format none"));
    const std::string told = Run("messages b.log --explain");
    EXPECT_EQ(0u, told.find("b.log:\n")) << told;
    EXPECT_NE(std::string::npos, told.find("json (JSON Lines) was chosen")) << told;
    EXPECT_NE(std::string::npos, told.find("\nFormats:\n")) << told;

    host.formats = "{\"formats\": [{\"name\": \"own\", \"expression\": \"(?<topic>\\\\w+)/(?<body>.*)\"}]}";
    session.files.SetContents("c.log", "net/up\nnet/down\n");
    EXPECT_EQ("net  up\nnet  down\n", Run("messages c.log"));
    EXPECT_EQ("net/up\nnet/down\n", Run("messages c.log --format none"));
    EXPECT_EQ("net  up\nnet  down\n", Run("messages c.log --format own"));
    host.formats = "{";
    EXPECT_TRUE(Run("messages c.log").find("logtool: It is not JSON") != std::string::npos);
}

// The file of a log with its index is read by its rows, as long as it is alone.
TEST_F(MessagesTest, ReadsALogByItsRows)
{
    const std::string path = session.Path("Run.log");
    EXPECT_EQ("2  Error  Run  fails,\"so\"\n3  Error  Run  a=b\n", Run("messages " + path));
    EXPECT_EQ("C:\\Logs\\", host.folder);
    EXPECT_EQ("fails,\"so\"\na=b\nfails,\"so\"\na=b\n", Run("messages --fields body " + path + " " + path));
}

// A name typed wrongly must not cost the file that was saved before.
TEST_F(MessagesTest, SavesOnlyIfThereIsSomethingToRead)
{
    const std::string saved = testing::TempDir() + "MessagesTest.zemalog";
    std::remove(saved.c_str());
    EXPECT_EQ("logtool: 6 messages saved in " + saved + "\n", Run("messages --session --save " + saved));
    EXPECT_TRUE(Run("messages none.log --save " + saved).ends_with("exit 1"));
    EXPECT_EQ(
        "A saved file of 6 messages",
        msgservice::SavedSource(saved, msgservice::SavedSource::AtEnd::Stop).Explanation().substr(0, 26));
    std::remove(saved.c_str());
    EXPECT_EQ("logtool: standard input: cannot be opened: Error 2.\nexit 1", Run("messages"));
}

// What is worth knowing of a log that is followed is no fault.
TEST_F(MessagesTest, FollowsALogThatIsCut)
{
    session.files.SetContents("a.log", "2026-11-22 10:00:00 INFO [net] one\n");
    int looks = 0;
    host.wait = [&] {
        if (++looks == 3)
            session.files.SetContents("a.log", "2026-11-22 10:00:00 INFO x\n");
        return looks < 6;
    };
    EXPECT_EQ("one\nx\nlogtool: 'a.log' has become shorter and is read again.\n",
              Run("messages -f a.log --fields body"));
}

TEST_F(MessagesTest, SaysWhatCannotBe)
{
    const std::pair<const char*, const char*> cases[] = {
        {"--fields body,bodi", "logtool: --fields: 'bodi' is no field: timestamp, level"},
        {"--contain body", "logtool: --contain: 'body' is not FIELD=TEXT"},
        {"--sort body:up", "logtool: --sort: 'up' is no direction"},
        {"--level loud", "logtool: --level: 'loud' is no level"},
        {"--format none-such", "logtool: --format: 'none-such' is no format"},
        {"--csv --json", "logtool: --csv, --tsv, --json, --save: give one of them"},
        {"-f --sort body", "logtool: -f: cannot be sorted"},
        {"--log None", "logtool: None: no such log in"},
    };
    for (const auto& [options, wanted] : cases)
    {
        const std::string told = Run(std::string("messages --session ") + options);
        EXPECT_EQ(0u, told.find(wanted)) << told;
        EXPECT_TRUE(told.ends_with("exit 2")) << told;
    }
    EXPECT_TRUE(Run("messages --session a.log").starts_with("logtool: --session: reads the log folder"));
    EXPECT_TRUE(Run("messages --log Main").starts_with("logtool: --log: names a log of --session"));
}

} // namespace
