// Shipping against an engine in memory that loses requests and answers, while logs grow and sessions begin
// anew.
#include "LogtoolTest.h"

#include "host/engine/LogTable.h"
#include "host/logtool/BlockTree.h"
#include "host/logtool/Shipper.h"
#include "host/msgservice/session/LogStream.h"
#include "tests/support/LongRun.h"
#include "tests/support/Random.h"

#include <cstring>
#include <regex>

namespace
{

using engine::HttpAnswer;
using engine::HttpError;
using msgservice::LogEntry;
using msgservice::LogStream;

// "session": "log number": what the table has of a row.
struct EngineRow
{
    std::size_t length = 0;
    std::string text;
    std::uint32_t block = 0, parent = 0;
    int arrivals = 0; // with this length

    bool operator==(const EngineRow& other) const
    {
        return length == other.length && text == other.text && block == other.block && parent == other.parent;
    }
};
using EngineRows = std::map<std::pair<std::uint32_t, std::string>, EngineRow>;

struct MemoryEngine
{
    std::map<std::string, EngineRows> sessions;
    std::function<void(bool done)> fault = [](bool) {}; // called before and after each insertion
    int insertions = 0;
};

// Understands the few statements that shipping uses.
class MemoryClient : public engine::HttpClient
{
public:
    explicit MemoryClient(MemoryEngine& engine) : m_engine(engine) {}

    HttpAnswer Post(const engine::HttpRequest& request) override
    {
        const std::string query = Query(request.target);
        if (query.starts_with("INSERT"))
        {
            m_engine.fault(false);
            Insert(*request.body);
            ++m_engine.insertions;
            m_engine.fault(true);
            return {200, ""};
        }
        const auto found = m_engine.sessions.find(Part(query, "session = '([^']*)'"));
        std::string data;
        if (found != m_engine.sessions.end() && !found->second.empty())
            data = Answer(query, found->second);
        return {200, "{\"data\":[" + data + "]}"};
    }

private:
    static std::string Part(const std::string& query, const char* expression)
    {
        std::smatch match;
        return std::regex_search(query, match, std::regex(expression)) ? match[1].str() : "";
    }

    static std::string Query(const std::string& target)
    {
        std::string query;
        for (std::size_t i = target.rfind("query=") + 6; i < target.size(); ++i)
            query += target[i] == '%'
                         ? static_cast<char>(std::stoi(target.substr((i += 2) - 1, 2), nullptr, 16))
                         : target[i];
        return query;
    }

    static std::string JsonText(const std::string& text)
    {
        return std::regex_replace(std::regex_replace(text, std::regex("[\"\\\\]"), "\\$&"), std::regex("\r"),
                                  "\\r");
    }

    static std::string Answer(const std::string& query, const EngineRows& rows)
    {
        if (query.starts_with("SELECT number"))
            return "[1]";
        if (query.starts_with("SELECT length"))
        {
            const EngineRow& row =
                rows.at({static_cast<std::uint32_t>(std::stoul(Part(query, "number = ([0-9]+)"))),
                         Part(query, "log = '([^']*)'")});
            return "[" + std::to_string(row.length) + ",\"" + JsonText(row.text) + "\"]";
        }
        std::map<std::string, std::pair<std::uint32_t, std::uint32_t>> ends;
        for (const auto& [key, row] : rows)
            ends.try_emplace(key.second, key.first, 0).first->second.second = key.first;
        std::string data;
        for (const auto& [log, end] : ends)
            data += (data.empty() ? "[\"" : ",[\"") + log + "\"," + std::to_string(end.first) + "," +
                    std::to_string(end.second) + "]";
        return data;
    }

    void Insert(const std::string& bytes)
    {
        std::size_t at = 0;
        const auto number = [&](std::size_t size) {
            std::uint64_t value = 0;
            std::memcpy(&value, bytes.data() + at, size);
            at += size;
            return value;
        };
        const auto text = [&] {
            std::size_t length = 0;
            for (int shift = 0;; shift += 7)
            {
                const std::uint64_t group = number(1);
                length |= (group & 0x7F) << shift;
                if (group < 0x80)
                    break;
            }
            at += length;
            return bytes.substr(at - length, length);
        };
        while (at < bytes.size())
        {
            EXPECT_EQ("pc", text());
            EngineRows& rows = m_engine.sessions[text()];
            const auto rowNumber = static_cast<std::uint32_t>(number(4));
            EngineRow& row = rows[{rowNumber, text()}];
            at += 8 + 1 + 4 + 1; // time, depth, kind, header
            EngineRow sent;
            sent.block = static_cast<std::uint32_t>(number(4));
            sent.parent = static_cast<std::uint32_t>(number(4));
            sent.length = number(4);
            sent.text = text();
            if (sent.length < row.length)
                continue;
            sent.arrivals = sent.length == row.length ? row.arrivals + 1 : 1;
            row = sent;
        }
    }

    MemoryEngine& m_engine;
};

class ShippingHost : public MemoryHost
{
public:
    std::string MachineName() override { return "pc"; }
    std::unique_ptr<engine::HttpClient> Connect(const engine::EngineUrl&) override
    {
        return std::make_unique<MemoryClient>(memory);
    }

    MemoryEngine memory;
};

class ShipTest : public LogtoolTestOn<ShippingHost>
{
protected:
    static constexpr char kShip[] = "ship --to http://h --session S";

    MemoryEngine& Memory() { return host.memory; }

    // What the folder holds, with blocks as the tree of all rows has them.
    EngineRows Folder()
    {
        const std::vector<std::string> logs = host.ListLogs();
        logtool::BlockTree tree(logs.size());
        std::map<std::pair<std::size_t, unsigned long>, std::uint32_t> numbers;
        EngineRows rows;
        LogStream all(logs, LogStream::Content::Rows), texts(logs, LogStream::Content::Text);
        const LogEntry* text = texts.Next();
        while (const LogEntry* const entry = all.Next())
        {
            tree.Add(entry->log, entry->index, entry->row);
            numbers[{entry->log, entry->index}] = entry->row.time;
            if (!text || text->log != entry->log || text->index != entry->index)
                continue;
            const std::uint32_t block = tree.Innermost(entry->log);
            const auto header = [&](std::uint32_t node) {
                return node == logtool::BlockTree::kNone ? 0
                                                         : numbers[{tree.At(node).log, tree.At(node).begin}];
            };
            const std::string_view line =
                text->text.substr(0, text->text.size() - text->text.ends_with('\n'));
            rows[{entry->row.time, logs[entry->log]}] = {
                line.size(), engine::TableText(line), header(block),
                block == logtool::BlockTree::kNone ? 0 : header(tree.At(block).parent), 0};
            text = texts.Next();
        }
        return rows;
    }
};

// The number of rows that were sent more than once as they are.
int Repeated(const EngineRows& rows)
{
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const auto& row) { return row.second.arrivals > 1; }));
}

std::string NameOf(int session)
{
    return session < 2 ? "S" : "S-" + std::to_string(session);
}

// Whether the folder had all rows of the session, and each was at least as long in the end.
bool IsPartOf(const EngineRows& session, const EngineRows& folder)
{
    return std::all_of(session.begin(), session.end(), [&](const auto& row) {
        const auto found = folder.find(row.first);
        return found != folder.end() && found->second.text.starts_with(row.second.text.substr(0, 1)) &&
               row.second.length <= found->second.length;
    });
}

std::string RandomStep(Random& random, int& counter)
{
    const char* const logs[] = {"Main", "Run", "SQL"};
    const char* const acts[] = {":", ":", ":", ":", "=", "=", "+", "!", "-", "-"};
    const char* const texts[] = {"", "a", "\xff", "ä\n", " x\ny\n", "\"q\\\\", "\r\n"};
    const std::string act = acts[random(std::size(acts))];
    return '\'' + std::string(logs[random(3)]) + act +
           (act == "-" ? "" : std::to_string(++counter) + texts[random(7)]) + "' ";
}

} // namespace

TEST_F(ShipTest, RowsArriveOnceHoweverOftenSenderEngineAndSessionEnd)
{
    const unsigned firstSeed = FirstSeed();
    long long lost = 0, repeated = 0, rows = 0;
    for (unsigned seed = firstSeed; seed < firstSeed + Rounds(3u, 60u); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        Random random(seed);
        Memory().sessions.clear();
        int counter = 0;
        std::vector<EngineRows> folders; // as they were when another session began
        PlayNew("Main:begin ");
        const auto play = [&] {
            std::string script;
            for (int i = random(6); i >= 0; --i)
                script += RandomStep(random, counter);
            if (random(12) > 0)
                return Play(script);
            folders.push_back(Folder());
            PlayNew("'Main:session " + std::to_string(++counter) + "\n' " + script);
        };
        for (int step = 0; step < 10; ++step)
        {
            play();
            Memory().fault = [&](bool) {
                if (random(4) == 0 && ++lost > 0)
                    throw HttpError(HttpError::Reason::Unreachable, "cut");
            };
            int looks = random(12);
            host.wait = [&] {
                if (random(3) == 0)
                    play();
                return --looks > 0; // Ctrl+C ends pauses and following
            };
            Run(kShip + std::string(random(2) == 0 ? " --follow" : ""));
        }
        Memory().fault = [](bool) {};
        Run(kShip);
        const std::string last = NameOf(static_cast<int>(Memory().sessions.size()));
        ASSERT_EQ(Folder(), Memory().sessions[last]);
        for (const auto& session : Memory().sessions)
        {
            rows += static_cast<long long>(session.second.size());
            repeated += Repeated(session.second);
            const auto isWhole = [&](const EngineRows& folder) { return IsPartOf(session.second, folder); };
            EXPECT_TRUE(session.first == last || std::any_of(folders.begin(), folders.end(), isWhole))
                << session.first;
        }
    }
    if (IsLongRun())
        Figure("rows", rows), Figure("answers lost", lost), Figure("rows sent again", repeated);
}

TEST_F(ShipTest, SendsOnlyWhatIsNewAndSaysWhereItGoesOn)
{
    Play("'Main:a\nb' 'Run:c\n'");
    EXPECT_EQ("logtool: session S of machine pc is new\nlogtool: 3 rows shipped\n", Run(kShip));
    Play("'Main: more\nd\n' 'New+e\n'");
    EXPECT_EQ("logtool: session S of machine pc goes on after number 3\nlogtool: 3 rows shipped\n",
              Run(kShip));
    EXPECT_EQ("logtool: session S of machine pc goes on after number 7\nlogtool: 0 rows shipped\n",
              Run(kShip));
    EXPECT_EQ(Folder(), Memory().sessions["S"]);
    EXPECT_EQ(0, Repeated(Memory().sessions["S"]));
}

// What is shipped first, what the folder holds afterwards, and the name under which that goes.
TEST_F(ShipTest, ASessionIsKnownByItsRows)
{
    const struct
    {
        const char *before, *after, *session;
    } cases[] = {
        {"'Main:a\nb\n'", "'Main:a\nb\nc\n'", "S"},
        {"Main:a", "Main:ab", "S"},                    // the line has grown
        {"Main:a\xc3", "Main:a\xc3\xa4", "S"},         // in the middle of a character
        {"'Main:a\nb\n'", "Main:a", "S-2"},            // its numbers are lower
        {"'Main:a\nb\n'", "'Main:a\nc\nd\n'", "S-2"},  // the last row is another one
        {"'Main:a\nb\n'", "'Main:aa\nb\nc\n'", "S-2"}, // the first one is
        {"'Main:\xc3\xa4 1\n'", "'Main:\xc3\xa4 2\nb\n'", "S-2"},
        {"'Main:a\n' Run:b", "'Main:a\nb\n'", "S-2"}, // a log is missing
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.after);
        Memory().sessions.clear();
        PlayNew(c.before);
        Run(kShip);
        PlayNew(c.after);
        Run(kShip);
        EXPECT_EQ(Folder(), Memory().sessions[c.session]);
    }
    Memory().sessions.clear();
    for (int session = 1; session <= 9; ++session)
    {
        PlayNew("Main:session" + std::to_string(session));
        Run(kShip);
        EXPECT_EQ(Folder(), Memory().sessions[NameOf(session)]);
    }
}

TEST_F(ShipTest, ASessionThatBeginsWhileFollowedWritesOverNothing)
{
    PlayNew("'Main:a\nb\n'");
    const EngineRows before = Folder();
    int looks = 0;
    host.wait = [&] {
        if (looks == 0)
            PlayNew("'Main:x\ny\nz\n'");
        return ++looks < 3;
    };
    Run(kShip + std::string(" --follow"));
    EXPECT_EQ(before, Memory().sessions["S"]);
    EXPECT_EQ(Folder(), Memory().sessions["S-2"]);
}

TEST_F(ShipTest, BatchesAreBoundedByRowsAndBytes)
{
    std::string many, wide;
    for (int i = 0; i < 60'000; ++i)
        many += "x\n";
    for (int i = 0; i < 10; ++i)
        wide += std::string(1 << 20, 'y') + '\n';
    Play("'Main:" + many + "' 'Run:" + wide + '\'');
    Run(kShip);
    EXPECT_EQ(1 + 2, Memory().insertions); // the last 10,000 rows of Main with the first ones of Run
    EXPECT_EQ(Folder(), Memory().sessions["S"]);
}

// The first try is followed by a pause of a half to a whole second, the next by up to two, and so on to a
// minute.
TEST_F(ShipTest, PausesGrowBetweenTriesAndErrorsThatStayEndIt)
{
    Play("Main:a");
    int looks = 0;
    std::vector<int> pauses;
    Memory().fault = [&](bool) {
        if (looks > 0)
            pauses.push_back(std::exchange(looks, 0));
        if (pauses.size() < 9)
            throw HttpError(HttpError::Reason::Unreachable, "cut");
    };
    host.wait = [&] { return ++looks > 0; };
    EXPECT_NE(std::string::npos, Run(kShip).find("http://h:8123: cut, trying again in"));
    ASSERT_EQ(9u, pauses.size());
    const int most[] = {5, 10, 20, 40, 80, 160, 300, 300, 300};
    for (std::size_t i = 0; i < pauses.size(); ++i)
        EXPECT_TRUE(pauses[i] <= most[i] && pauses[i] >= most[i] / 2) << i << ": " << pauses[i];

    Play("'Main:\nb'");
    Memory().fault = [](bool) { throw HttpError(HttpError::Reason::Untrusted, "no trust"); };
    EXPECT_NE(std::string::npos, Run(kShip).find("logtool: http://h:8123: no trust\nexit 2"));
    Memory().fault = [](bool) { throw HttpError(HttpError::Reason::Cancelled, "given up"); };
    EXPECT_NE(std::string::npos, Run(kShip).find("0 rows shipped, not all of the session\nexit 1"));
}

TEST_F(ShipTest, NamesKeepFoldersOfOneNameApart)
{
    EXPECT_EQ("Logs", logtool::SessionName("C:\\a\\Logs\\").substr(0, 4));
    EXPECT_NE(logtool::SessionName("C:\\a\\Logs\\"), logtool::SessionName("C:\\b\\Logs\\"));
    EXPECT_EQ(logtool::SessionName("C:\\a\\Logs\\").substr(4),
              logtool::SessionName("C:\\A\\logs\\").substr(4));
}
