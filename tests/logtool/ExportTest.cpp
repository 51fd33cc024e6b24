#include "LogtoolTest.h"
#include "host/logtool/CountedText.h"
#include "host/logtool/ExportForm.h"
#include "host/logtool/ExportText.h"
#include "tests/support/LongRun.h"
#include "tests/support/Random.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace
{

class LogtoolExportTest : public LogtoolTest
{
protected:
    ~LogtoolExportTest() override { RemoveCursor(); }

    void RemoveCursor() const
    {
        std::filesystem::remove_all(cursorPath);
        std::filesystem::remove_all(cursorPath + ".new");
    }

    std::string Export(const std::string& options)
    {
        return Run("export --session S --machine M " + options);
    }

    // Lines of several logs, blocks among them, each of which begins its line: so rows come in their order.
    std::string RandomScript(Random& random)
    {
        std::string script;
        for (int i = random(12); i > 0; --i)
        {
            const std::string name = random(2) == 0 ? "Main" : "Run";
            std::string& open = m_open[name];
            const std::string text =
                "line" + std::to_string(++m_lines) + std::string(random(30) == 0 ? 70000 : 3, 'x');
            if (random(4) == 0 && open.size() < 3)
            {
                script += name + (random(2) == 0 ? "+" : "!") + text + ' ';
                open += '+';
            }
            else if (random(4) == 0 && !open.empty())
            {
                script += name + "- ";
                open.pop_back();
            }
            else
                script += name + "=" + text + ' ';
        }
        return script;
    }

    void ForgetBlocks() { m_open.clear(); }

    const std::string cursorPath = testing::TempDir() + "logtool_export." + std::to_string(::getpid());

private:
    std::map<std::string, std::string> m_open;
    int m_lines = 0;
};

// Takes as many bytes as it is told to, and may keep its word or not when it is to confirm them.
class Receiver : public logtool::Connection
{
public:
    Receiver(std::string& confirmed, std::size_t room, bool confirms)
        : m_confirmed(confirmed), m_room(room), m_confirms(confirms)
    {
    }

    bool Send(std::string_view bytes, std::string& fault) override
    {
        m_taken += bytes.substr(0, m_room);
        fault = "reset";
        const bool whole = bytes.size() <= m_room;
        m_room -= std::min(m_room, bytes.size());
        return whole;
    }

    bool Finish(std::string& fault) override
    {
        fault = "silent";
        if (m_confirms)
            m_confirmed += m_taken;
        return m_confirms;
    }

private:
    std::string& m_confirmed;
    std::string m_taken;
    std::size_t m_room;
    bool m_confirms;
};

} // namespace

TEST_F(LogtoolExportTest, EachFormatHasEveryFieldAndEscape)
{
    Play("Main:plain 'Main+outer \"x\"' 'Run:a,b' 'Main!in]n\\\\er\t' 'Run:\n\xE4' Main- 'Main:after "
         "\xC3\xA4'");
    const std::pair<const char*, const char*> cases[] = {
        {"jsonl",
         R"({"session":"S","machine":"M","log":"Main","number":2,"time":null,"depth":1,"kind":"plain","header":true,"block":2,"parent":null,"skip":0,"text":"outer \"x\""}
{"session":"S","machine":"M","log":"Run","number":3,"time":null,"depth":0,"kind":"plain","header":false,"block":2,"parent":null,"skip":0,"text":"a,b"}
{"session":"S","machine":"M","log":"Main","number":4,"time":null,"depth":2,"kind":"error","header":true,"block":4,"parent":2,"skip":0,"text":"in]n\\er\t"}
{"session":"S","machine":"M","log":"Run","number":5,"time":null,"depth":0,"kind":"plain","header":false,"block":4,"parent":2,"skip":0,"text":"ä"}
)"},
        {"csv", "session,machine,log,number,time,depth,kind,header,block,parent,skip,text\r\n"
                "S,M,Main,2,,1,plain,true,2,,0,\"outer \"\"x\"\"\"\r\n"
                "S,M,Run,3,,0,plain,false,2,,0,\"a,b\"\r\n"
                "S,M,Main,4,,2,error,true,4,2,0,in]n\\er\t\r\n"
                "S,M,Run,5,,0,plain,false,4,2,0,ä\r\n"},
        {"trace", R"([
{"name":"process_name","ph":"M","pid":1,"tid":0,"args":{"name":"M S"}},
{"name":"thread_name","ph":"M","pid":1,"tid":1,"args":{"name":"Main"}},
{"name":"outer \"x\"","cat":"plain","ph":"B","ts":2,"pid":1,"tid":1,"args":{"number":2,"depth":1}},
{"name":"thread_name","ph":"M","pid":1,"tid":2,"args":{"name":"Run"}},
{"name":"a,b","cat":"plain","ph":"i","s":"t","ts":3,"pid":1,"tid":2,"args":{"number":3,"depth":0}},
{"name":"in]n\\er\t","cat":"error","ph":"B","ts":4,"pid":1,"tid":1,"args":{"number":4,"depth":2}},
{"name":"ä","cat":"plain","ph":"i","s":"t","ts":5,"pid":1,"tid":2,"args":{"number":5,"depth":0}},
{"ph":"E","ts":5,"pid":1,"tid":1},
{"ph":"E","ts":5,"pid":1,"tid":1}
]
)"},
        {"syslog",
         R"(<14>1 - M S - Main [row@32473 session="S" log="Main" number="2" depth="1" kind="plain" header="true" block="2"] outer "x"
<14>1 - M S - Run [row@32473 session="S" log="Run" number="3" depth="0" kind="plain" header="false" block="2"] a,b
<11>1 - M S - Main [row@32473 session="S" log="Main" number="4" depth="2" kind="error" header="true" block="4" parent="2"] in]n\er#011
<14>1 - M S - Run [row@32473 session="S" log="Run" number="5" depth="0" kind="plain" header="false" block="4" parent="2"] )"
         "\xEF\xBB\xBFä\n"},
    };
    for (const auto& [format, expected] : cases)
        EXPECT_EQ(expected, Export(std::string("--from 2 --to 5 --format ") + format)) << format;
    EXPECT_EQ("<14>1 - a_b S_\"] - Run [row@32473 session=\"S \\\"\\]\" log=\"Run\" number=\"3\" depth=\"0\" "
              "kind=\"plain\" header=\"false\" block=\"2\"] a,b\n",
              Run("export --format syslog --log Run --to 4 --machine 'a b' --session 'S \"]'"));
}

// Text in bytes on the left, JSON on the right: escapes at each place of a text that is looked at in steps.
TEST_F(LogtoolExportTest, AnyBytesBecomeJson)
{
    const std::pair<std::string_view, const char*> cases[] = {
        {"", ""},
        {{"\0\x1F\x7F", 3}, "\\u0000\\u001f\x7F"},
        {"\b\f\n\r\t\"\\/", "\\b\\f\\n\\r\\t\\\"\\\\/"},
        {"\xC3\xA4 \xE2\x82\xAC", "\xC3\xA4 \xE2\x82\xAC"},
        {"\"\xE4\x80", "\\\"\xC3\xA4\xE2\x82\xAC"}, // the code page
    };
    for (const auto& [text, json] : cases)
    {
        for (std::size_t before = 0; before < 40; ++before)
        {
            const std::string whole = std::string(before, '.') + std::string(text) + "....................";
            std::string escaped;
            logtool::AppendJson(escaped, whole);
            EXPECT_EQ(std::string(before, '.') + json + "....................", escaped);

            const bool isPlain = text.empty();
            logtool::ExportBuffer buffer;
            for (const std::string& part : {whole, std::string(before, '.') + std::string(text)})
            {
                buffer.Reserve(part.size());
                EXPECT_EQ(isPlain, buffer.PutPlain(part)) << before << json;
            }
            EXPECT_EQ(isPlain ? whole + std::string(before, '.') : "", buffer.Bytes());
        }
    }
}

// What a form keeps of the rows before makes no difference to a form that has only been told its state.
TEST_F(LogtoolExportTest, FormsWriteARowWhateverCameBefore)
{
    using logtool::ExportForm;
    using logtool::ExportSource;
    const std::function<std::unique_ptr<ExportForm>(const ExportSource&)> forms[] = {
        logtool::MakeJsonForm, logtool::MakeCsvForm, logtool::MakeTraceForm,
        [](const ExportSource& source) { return MakeSyslogForm(source, logtool::Framing::OctetCounting); }};
    const std::string names[] = {"Main", "Run", "SQL"};
    const std::vector<sessionwalk::EndedBlock> none;
    for (const auto& make : forms)
    {
        Random random(1);
        ExportSource source = {"M", "S"};
        const std::unique_ptr<ExportForm> form = make(source);
        sessionwalk::WalkedRow row;
        row.ended = &none;
        for (int i = 0; i < 3'000; ++i)
        {
            logtool::ExportBuffer expected;
            logtool::ExportBuffer written;
            if (random(100) == 0)
            {
                ++source.ordinal;
                source.machine += 'x';
                form->SetSource(source, written);
                EXPECT_EQ(make(source)->State(), form->State());
                written.Clear();
            }
            row.log = static_cast<std::size_t>(random(3));
            row.name = &names[row.log];
            row.number += static_cast<std::uint32_t>(random(9));
            switch (random(8)) // most often one field is another
            {
            case 0:
                row.depth = static_cast<std::uint8_t>(random(3));
                break;
            case 1:
                row.kind = static_cast<QmLogBlockKind>(random(5));
                break;
            case 2:
                row.isHeader = !row.isHeader;
                break;
            case 3:
                row.block = random(2) == 0 ? sessionwalk::kNoBlock : row.number;
                break;
            case 4:
                row.parent = random(2) == 0 ? sessionwalk::kNoBlock : row.number;
                break;
            case 5:
                row.skip = static_cast<std::size_t>(random(2));
                break;
            case 6:
                row.time.reset();
                if (random(3) > 0)
                    row.time = 133'485'408'000'000'000 + random(25);
                break;
            }
            row.text = random(4) == 0 ? "a \"text\"" : "a text";
            const std::unique_ptr<ExportForm> fresh = make(source);
            fresh->Resume(form->State());
            fresh->Row(row, expected);
            form->Row(row, written);
            ASSERT_EQ(expected.Bytes(), written.Bytes()) << i;
        }
    }
}

// Steps up and down, over each number of digits.
TEST_F(LogtoolExportTest, CountedNumbersAreWrittenAsNumbers)
{
    Random random(1);
    logtool::CountedText counted;
    EXPECT_FALSE(counted.CanCount(0));
    std::uint64_t number = 0;
    for (int i = 0; i < 20'000; ++i)
    {
        const std::uint64_t step = random(3) == 0 ? number / 3 + 1 : static_cast<std::uint64_t>(random(12));
        number =
            random(4) == 0 ? number - std::min(number, step) : (number + step) % 1'000'000'000'000'000'000;
        if (!counted.CanCount(number))
        {
            logtool::ExportBuffer& text = counted.Begin();
            text.Append("9:");
            counted.AppendNumber(number);
            text.Append(".9");
        }
        logtool::ExportBuffer buffer;
        buffer.Reserve(counted.Size());
        counted.PutTo(buffer, number);
        ASSERT_EQ("9:" + std::to_string(number) + ".9", buffer.Bytes());
    }
}

TEST_F(LogtoolExportTest, TimesAreUtc)
{
    const std::pair<std::int64_t, const char*> cases[] = {
        {0, "1601-01-01T00:00:00.0000000Z"},
        {116'444'736'000'000'000, "1970-01-01T00:00:00.0000000Z"},
        {125'963'424'000'000'000 - 1, "2000-02-29T23:59:59.9999999Z"},
        {125'963'424'000'000'000, "2000-03-01T00:00:00.0000000Z"},
        {133'485'408'001'234'567, "2024-01-01T00:00:00.1234567Z"},
    };
    for (const auto& [time, text] : cases)
        EXPECT_EQ(text, logtool::UtcText(time, 7));
    EXPECT_EQ("2024-01-01T00:00:00.123456Z", logtool::UtcText(133'485'408'001'234'567, 6));
}

TEST_F(LogtoolExportTest, RowsHaveTheTimesThatTheirWritersNoted)
{
    QmLogSetTimes(true);
    Play("Main:one");
    QmLogSetTimes(false);
    CQmLogTimes times;
    QmLogTime time;
    ASSERT_TRUE(times.SetFolder(nullptr) && times.TimeOf(1, time));
    const std::string row = "S,M,Main,1," + logtool::UtcText(time.time, 7) + ",0,plain,false,,,0,one\r\n";
    EXPECT_TRUE(Export("--format csv").ends_with(row));
    EXPECT_TRUE(Export("--format csv --cursor-file " + cursorPath).ends_with(row));
}

// A block ends when its writer has noted it, not when the next row comes; a clock that is set back makes no
// event earlier.
TEST_F(LogtoolExportTest, TracesAndSyslogHaveTheClocksTimes)
{
    Play("Main+outer 'Main!inner' 'Run:a' Main- Main- 'Main:after' 'Main=back'");
    constexpr std::int64_t kBegin = 133'485'408'000'000'000; // 2024
    constexpr std::int64_t kMs = 10'000;
    std::string times;
    const auto note = [&](std::uint32_t number, std::int64_t time, int steps, int event, int depth) {
        const std::uint64_t value = static_cast<std::uint64_t>(kBegin + time);
        const std::uint32_t words[] = {number, static_cast<std::uint32_t>(value),
                                       static_cast<std::uint32_t>(value >> 32),
                                       static_cast<std::uint32_t>(steps | event << 16 | depth << 24)};
        std::uint32_t check = 0x811C9DC5;
        for (const std::uint32_t word : words)
            check = (check ^ word) * 0x01000193;
        times.append(reinterpret_cast<const char*>(words), sizeof(words));
        times.append(reinterpret_cast<const char*>(&check), sizeof(check));
    };
    note(1, 0, 0, 1, 1);
    note(2, 1 * kMs + 5, 0, 1, 2);
    note(3, 3 * kMs, 0, 2, 1); // inner
    note(3, 4 * kMs, 0, 2, 0); // outer
    note(4, 3'600'000 * kMs, 0, 1, 0);
    note(5, -7 * kMs, 1, 1, 0);
    session.files.SetContents(session.Path("Log.TIM"), times);
    const std::string trace = R"([
{"name":"process_name","ph":"M","pid":1,"tid":0,"args":{"name":"M S"}},
{"name":"thread_name","ph":"M","pid":1,"tid":1,"args":{"name":"Main"}},
{"name":"outer","cat":"plain","ph":"B","ts":1704067200000000,"pid":1,"tid":1,"args":{"number":1,"depth":1}},
{"name":"inner","cat":"error","ph":"B","ts":1704067200001000.5,"pid":1,"tid":1,"args":{"number":2,"depth":2}},
{"name":"thread_name","ph":"M","pid":1,"tid":2,"args":{"name":"Run"}},
{"name":"a","cat":"plain","ph":"i","s":"t","ts":1704067200001000.5,"pid":1,"tid":2,"args":{"number":3,"depth":0}},
{"ph":"E","ts":1704067200003000,"pid":1,"tid":1},
{"ph":"E","ts":1704067200004000,"pid":1,"tid":1},
{"name":"after","cat":"plain","ph":"i","s":"t","ts":1704070800000000,"pid":1,"tid":1,"args":{"number":4,"depth":0}},
{"name":"back","cat":"plain","ph":"i","s":"t","ts":1704070800000000,"pid":1,"tid":1,"args":{"number":5,"depth":0}}
]
)";
    EXPECT_EQ(trace, Export("--format trace"));
    EXPECT_EQ(trace.substr(0, trace.size() - 3), Export("--format trace --cursor-file " + cursorPath));
    const std::string syslog = Export("--format syslog");
    EXPECT_NE(std::string::npos, syslog.find("<11>1 2024-01-01T00:00:00.001000Z M S - Main [row@32473"))
        << syslog;
    EXPECT_NE(std::string::npos, syslog.find("<14>1 2023-12-31T23:59:59.993000Z M S - Main [row@32473"))
        << syslog;
}

// Killed within a write, or before the cursor was saved, as often as not, while the session grows.
TEST_F(LogtoolExportTest, AKilledExportLosesNothingAndWritesNothingTwice)
{
    const unsigned first = FirstSeed();
    const int kills = Rounds(20, 300);
    const std::string file = session.Path("rows.out");
    unsigned seed = first;
    for (const std::string format : {"jsonl", "csv", "trace", "syslog"})
    {
        SCOPED_TRACE(SeedText(++seed) + ", " + format);
        Random random(seed);
        RemoveCursor();
        ForgetBlocks();
        PlayNew("Main:begin");
        const std::string command =
            "--format " + format + " --output " + file + " --cursor-file " + cursorPath;
        for (int done = 0; done < kills;)
        {
            Play(RandomScript(random));
            const bool savesCursor = random(3) > 0;
            int writes = 1 + random(3);
            if (!savesCursor)
                std::filesystem::create_directory(cursorPath + ".new");
            session.files.onCall = [&](const std::string& call) {
                if (savesCursor && call.starts_with("Write") && --writes == 0)
                    session.files.SetFault({session.files.CallCount() + 1, ZEMA::Fault::Kill});
            };
            const std::string told = Export(command);
            done += told.empty() ? 0 : 1;
            session.files.onCall = nullptr;
            session.files.ClearFault();
            std::filesystem::remove(cursorPath + ".new");
        }
        EXPECT_EQ("", Export(command));
        EXPECT_EQ(Export("--format " + format), session.files.Contents(file));
    }
}

TEST_F(LogtoolExportTest, ANewSessionGoesOnUnderAnotherName)
{
    const std::string command =
        "--format csv --output " + session.Path("rows.out") + " --cursor-file " + cursorPath;
    const std::string head = "session,machine,log,number,time,depth,kind,header,block,parent,skip,text\r\n";
    Play("Main:one Main=two");
    EXPECT_EQ("", Export(command + " --from 2"));
    // The new session is longer than the old one was, and its row 2 is another.
    const std::string exported = session.files.Contents(session.Path("rows.out"));
    PlayNew("Main:new Main=other Main=third");
    session.files.SetContents(session.Path("rows.out"), exported + std::string(1000, 'k')); // by a killed one
    EXPECT_EQ("logtool: a new session has begun in C:\\Logs\\\n", Export(command + " --from 2"));
    EXPECT_EQ("", Export(command));
    Play("'Main: grows'"); // a line that was told already
    EXPECT_EQ("", Export(command));
    EXPECT_EQ(head + "S,M,Main,2,,0,plain,false,,,0,two\r\n"
                     "S#2,M,Main,1,,0,plain,false,,,0,new\r\n"
                     "S#2,M,Main,2,,0,plain,false,,,0,other\r\n"
                     "S#2,M,Main,3,,0,plain,false,,,0,third\r\n"
                     "S#2,M,Main,3,,0,plain,false,,,5, grows\r\n",
              session.files.Contents(session.Path("rows.out")));
    session.files.SetContents(session.Path("rows.out"), "x");
    EXPECT_EQ("logtool: C:\\Logs\\rows.out: is shorter than its cursor says: begin again, without both "
              "files\nexit 2",
              Export(command));
}

// What receivers have confirmed is each message once, whatever connections do. A line that is not finished
// may come after those of other logs.
TEST_F(LogtoolExportTest, AReceiverThatFailsGetsEveryMessage)
{
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + Rounds(10u, 300u); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        Random random(seed);
        std::string confirmed;
        int looks = 40;
        ForgetBlocks();
        PlayNew("Main:begin");
        host.connect = [&]() -> std::unique_ptr<logtool::Connection> {
            if (looks > 0 && random(4) == 0)
                return nullptr;
            const bool whole = looks <= 0 || random(3) > 0;
            return std::make_unique<Receiver>(confirmed, whole ? 1 << 30 : random(3000),
                                              looks <= 0 || random(3) > 0);
        };
        host.wait = [&] {
            if (--looks > 0)
                Play(RandomScript(random));
            return looks > -100;
        };
        const std::string told = Export("--format syslog --to-tcp receiver:514 --follow");
        EXPECT_NE(std::string::npos, told.find("; trying again\n"));
        std::multiset<std::string> expected, received;
        std::istringstream lines(Export("--format syslog"));
        for (std::string line; std::getline(lines, line);)
            expected.insert(line);
        std::istringstream messages(confirmed);
        for (std::size_t size = 0; messages >> size && messages.get() == ' ';)
        {
            std::string message(size, '\0');
            messages.read(message.data(), static_cast<std::streamsize>(size));
            received.insert(message);
        }
        ASSERT_EQ(expected, received);
    }
}
