// Messages written to files: the forms, and that a file appears whole or not at all.
#include "logreport/model/Export.h"
#include "logreport/model/CopiedMessages.h"
#include "tests/logreport/FullMessage.h"
#include "tests/support/MemoryFiles.h"

#include <deque>
#include <sstream>

#include <gtest/gtest.h>

namespace
{

using namespace logreport;
using Fields = std::vector<std::int32_t>;

struct Service : ILogMsgService
{
    ILogMsgData* GetMsg(std::uint32_t id) override
    {
        return id >= 1 && id <= messages.size() && id != hole ? &messages[id - 1] : nullptr;
    }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return nullptr; }
    std::deque<FullMessage> messages;
    std::uint32_t hole = 0;
};

class ExportTest : public testing::Test
{
protected:
    ExportTest() : m_calls(SetFileCalls(&files)) {}
    ~ExportTest() override { SetFileCalls(m_calls); }

    // Exports in steps of `step` messages; answers what failed.
    std::string Run(const std::string& path, std::uint32_t first, std::uint32_t last, std::uint32_t step = 2,
                    const Fields& fields = {kLogMsgTopic, kLogMsgBody})
    {
        Export work(service, path, fields, first, last);
        double progress = work.Progress();
        for (bool more = work.Begin(); more && (more = work.Step(step));)
        {
            EXPECT_LT(progress, work.Progress());
            progress = work.Progress();
        }
        if (work.GetFailure().empty())
            EXPECT_EQ(1, work.Progress());
        replaced = work.GetReplacedCount();
        return work.GetFailure();
    }

    ZEMA::MemoryFiles files;
    Service service;
    std::uint64_t replaced = 0;

private:
    ZEMA::IFileCalls* m_calls;
};

TEST_F(ExportTest, WritesEveryFieldInThreeForms)
{
    service.messages.emplace_back("body");
    const Fields all = ExportFields(false, true, {});
    EXPECT_EQ("", Run("a.TXT", 1, 1, 1, all));
    EXPECT_EQ("time\tWarning\ttopic\tbody\t-4\tfile\t6\tmodule\t8\tcontext\tsource\twho\t12\n",
              files.Contents("a.TXT"));
    EXPECT_EQ("", Run("a.csv", 1, 1, 1, all));
    EXPECT_EQ("\xEF\xBB\xBFtime,Warning,topic,body,-4,file,6,module,8,context,source,who,12\r\n",
              files.Contents("a.csv"));
    EXPECT_EQ("", Run("a.xMl", 1, 1, 1, {kLogMsgErrorNumber, kLogMsgBody}));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Messages fields=\"Error_Number Body\">\n"
              "<Message><Error_Number>-4</Error_Number><Body>body</Body></Message>\n</Messages>\n",
              files.Contents("a.xMl"));
    EXPECT_EQ((Fields{kLogMsgBody}), ExportFields(true, true, {1, 2}));
    EXPECT_EQ((Fields{5, 2}), ExportFields(false, false, {5, 2}));
    std::ostringstream stream;
    CQmLogStreamText(service, stream, {kLogMsgWho, 99, kLogMsgNone}).WriteMsg(1);
    EXPECT_EQ("who\t\t\n", stream.str());
}

TEST_F(ExportTest, HostileTextsStayWhatTheyAre)
{
    struct
    {
        ZEMA::String text;
        const char* csv;
        const char* xml;
        unsigned replaced;
    } const cases[] = {{"a,b", "\"a,b\"", "a,b", 0},
                       {"say \"no\"", "\"say \"\"no\"\"\"", "say &quot;no&quot;", 0},
                       {"\"", "\"\"\"\"", "&quot;", 0},
                       {"a\r\nb\n", "\"a\r\nb\n\"", "a&#13;\nb\n", 0},
                       {"\t", "\t", "\t", 0},
                       {"]]>", "]]>", "]]&gt;", 0},
                       {"<a & b>", "<a & b>", "&lt;a &amp; b&gt;", 0},
                       {"=1+1", "=1+1", "=1+1", 0},
                       {"\x01\x1F", "\x01\x1F", "\xEF\xBF\xBD\xEF\xBF\xBD", 2},
                       {"\xEF\xBF\xBF\xEF\xBF\xBE\xEF\xBC\x81", "\xEF\xBF\xBF\xEF\xBF\xBE\xEF\xBC\x81",
                        "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBC\x81", 2},
                       {"gr\xFC\xDF", "gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F", 0}, // in the code page
                       {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC", "\xC3\xAD\xC2\xA0\xE2\x82\xAC",
                        0}, // a lone surrogate
                       {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F", 0},
                       {"", "", "", 0}};
    for (const auto& each : cases)
    {
        for (const std::size_t size : {0, 15, 16, 33})
        {
            const std::string filler(size, 'x'); // special bytes are looked for 16 at a time
            const std::string csv = each.csv;
            const std::string quote = csv[0] == '"' ? "\"" : "";
            const std::string inner = csv.substr(quote.size(), csv.size() - 2 * quote.size());
            const std::string value = quote + filler + inner + filler + quote;
            const ZEMA::String text = (filler + each.text.c_str() + filler).c_str();
            service.messages.assign(1, FullMessage(text, text));
            EXPECT_EQ("", Run("a.csv", 1, 1));
            EXPECT_EQ("\xEF\xBB\xBF" + value + "," + value + "\r\n", files.Contents("a.csv"));
            EXPECT_EQ("", Run("a.xml", 1, 1, 1, {kLogMsgTopic}));
            EXPECT_NE(std::string::npos,
                      files.Contents("a.xml").find("<Topic>" + filler + each.xml + filler + "</Topic>"))
                << files.Contents("a.xml");
            EXPECT_EQ(each.replaced, replaced);
        }
    }
    service.messages.assign(1, FullMessage("body", ZEMA::String("a\0b", 3)));
    Run("a.xml", 1, 1, 1, {kLogMsgTopic});
    EXPECT_TRUE(files.Contents("a.xml").find("a\xEF\xBF\xBD"
                                             "b") != std::string::npos);
    Run("a.csv", 1, 1, 1, {kLogMsgTopic});
    EXPECT_EQ(std::string("\xEF\xBB\xBF"
                          "a\0b\r\n",
                          8),
              files.Contents("a.csv"));
}

TEST_F(ExportTest, GuardsFormulasIfAsked)
{
    const std::pair<const char*, const char*> cases[] = {{"=1", "'=1"},
                                                         {"@x", "'@x"},
                                                         {"+a", "'+a"},
                                                         {"-", "'-"},
                                                         {"-5", "-5"},
                                                         {"+0.5", "+0.5"},
                                                         {"=1,\"", "\"'=1,\"\"\""},
                                                         {"a=", "a="},
                                                         {"=5", "'=5"},
                                                         {"-5a", "'-5a"}};
    for (const auto& [value, row] : cases)
    {
        std::string text;
        ZEMA::StringOutput output(text);
        CQmCSVWriter writer(output);
        writer.SetGuardsFormulas(true);
        CQmCSVWriter::Row(writer).WriteValue(value, std::string(value).size());
        EXPECT_EQ(row + std::string("\r\n"), text);
    }
    EXPECT_EQ("_1_a__", CQmReportWriterXML::ElementName("1 a-\xFC"));
    EXPECT_EQ("_", CQmReportWriterXML::ElementName(""));
}

TEST_F(ExportTest, WhatIsCopiedIsTextThatCanBePasted)
{
    service.messages.emplace_back("gr\xC3\xBC\xC3\x9F", "gr\xFC\xDF"); // in two encodings
    service.messages.emplace_back("left out");
    service.messages.emplace_back("=1,2", ZEMA::String("a\0b", 3));
    service.hole = 2;
    CopiedMessages copied(service, {kLogMsgTopic, kLogMsgBody}, 1, 3);
    copied.SetGuardsFormulas(true);
    EXPECT_EQ(0, copied.Progress());
    EXPECT_TRUE(copied.Step(2));
    EXPECT_DOUBLE_EQ(2.0 / 3, copied.Progress());
    EXPECT_FALSE(copied.Step(2));
    EXPECT_EQ("gr\xC3\xBC\xC3\x9F\tgr\xC3\xBC\xC3\x9F\na b\t=1,2\n", copied.Text());
    EXPECT_EQ("gr\xC3\xBC\xC3\x9F,gr\xC3\xBC\xC3\x9F\r\na b,\"'=1,2\"\r\n", copied.Table());
    EXPECT_EQ(1, copied.Progress());
    EXPECT_FALSE(CopiedMessages(service, {}, 0xFFFFFFFF, 0xFFFFFFFF).Step(9));

    Export work(service, "a.csv", {kLogMsgBody}, 3, 3);
    work.SetGuardsFormulas(true);
    EXPECT_TRUE(work.Begin());
    EXPECT_FALSE(work.Step(1));
    EXPECT_EQ("\xEF\xBB\xBF\"'=1,2\"\r\n", files.Contents("a.csv"));
}

TEST_F(ExportTest, SkipsWhatIsNotThereAndEndsAtTheLastId)
{
    for (const char* const body : {"1", "2", "3", "4"})
        service.messages.emplace_back(body);
    service.hole = 3;
    EXPECT_EQ("", Run("a.txt", 2, 9, 3, {kLogMsgBody}));
    EXPECT_EQ("2\n4\n", files.Contents("a.txt"));
    EXPECT_EQ("", Run("a.txt", 0xFFFFFFFE, 0xFFFFFFFF, 1));
    EXPECT_EQ("", files.Contents("a.txt"));
    EXPECT_EQ("", Run("a.txt", 2, 1));
    EXPECT_EQ("", files.Contents("a.txt"));
    EXPECT_EQ(std::vector<std::string>{"a.txt"}, files.Paths());
}

// Whichever call fails, the file of before is whole, nothing else is left, and the user is told.
TEST_F(ExportTest, AFileIsReplacedWholeOrNotAtAll)
{
    files.SetContents("a.log", "a log");
    service.messages.assign(3, FullMessage(std::string(100'000, 'x').c_str()));
    EXPECT_EQ("Can't write file \"a.log\": Wrong file extension", Run("a.log", 1, 3));
    EXPECT_EQ("Can't write file \"txt\": Wrong file extension", Run("txt", 1, 3));
    EXPECT_EQ("Can't write file \"\": Wrong file extension", Run("", 1, 3));
    EXPECT_EQ(std::vector<std::string>{"a.log"}, files.Paths());
    EXPECT_EQ("a log", files.Contents("a.log"));

    for (const char* const path : {"a.txt", "a.csv", "a.xml"})
    {
        unsigned long call = 1;
        for (bool isStruck = true; isStruck; ++call)
        {
            files.SetContents(path, "before");
            files.ForgetCalls();
            files.SetFault({call, ZEMA::Fault::Fail, false, 112});
            const std::string told = Run(path, 1, 3);
            files.ClearFault();
            isStruck = files.CallCount() >= call;
            EXPECT_EQ(isStruck, told.starts_with("Can't write file \"" + std::string(path) + "\"")) << told;
            EXPECT_EQ(isStruck, files.Contents(path) == "before");
            const bool isClose = isStruck && files.Calls()[call - 1] == "Close"; // its file cannot go either
            EXPECT_EQ(isClose ? 3u : 2u, files.Paths().size()) << "at call " << call;
            files.CloseAllHandles();
            files.Delete((path + std::string(".~0")).c_str());
        }
        EXPECT_GT(call, 5u);
        EXPECT_GT(files.Contents(path).size(), 300'000u);
        files.Delete(path);
    }

    files.SetFreeSpace(150'000);
    EXPECT_EQ("Can't write file \"a.txt\"\nError 112.", Run("a.txt", 1, 3));
    EXPECT_EQ(std::vector<std::string>{"a.log"}, files.Paths());

    // A name beside that is taken, as by another export; and an export that is given up.
    files.SetFreeSpace(1'000'000);
    files.SetContents("a.txt.~0", "another's");
    EXPECT_EQ("", Run("a.txt", 1, 3));
    {
        Export work(service, "b.txt", {kLogMsgBody}, 1, 3);
        EXPECT_TRUE(work.Begin());
        EXPECT_TRUE(work.Step(1));
        EXPECT_TRUE(files.Exists("b.txt.~0"));
    }
    EXPECT_EQ((std::vector<std::string>{"a.log", "a.txt", "a.txt.~0"}), files.Paths());
}

} // namespace
