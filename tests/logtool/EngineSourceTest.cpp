// Messages of a shipped session, from an engine in memory that loses answers and refuses long ones.
#include "LogtoolTest.h"

#include "host/engine/LogTable.h"
#include "host/engineview/EngineSource.h"
#include "host/engineview/RowChoices.h"
#include "host/msgservice/session/ClockText.h"

#include <nlohmann/json.hpp>
#include <regex>

namespace
{

using engine::HttpAnswer;
using engine::HttpError;

class LookingHost : public MemoryHost
{
public:
    struct Row
    {
        std::uint64_t number;
        const char* log;
        std::int64_t time;
        std::uint32_t kind;
        std::string text;
    };

    std::unique_ptr<engine::HttpClient> Connect(const engine::EngineUrl&) override
    {
        return std::make_unique<Client>(*this);
    }

    std::vector<Row> rows;
    std::vector<std::string> machines = {"press"};
    std::size_t mostRows = 100'000; // of an answer
    std::string answer;             // to all queries, in the place of what they ask for
    std::function<void(const std::string& query)> onQuery = [](const std::string&) {};

private:
    class Client : public engine::HttpClient
    {
    public:
        explicit Client(LookingHost& host) : m_host(host) {}

        HttpAnswer Post(const engine::HttpRequest& request) override
        {
            std::string query;
            for (std::size_t i = request.target.rfind("query=") + 6; i < request.target.size(); ++i)
                query +=
                    request.target[i] == '%'
                        ? static_cast<char>(std::stoi(request.target.substr((i += 2) - 1, 2), nullptr, 16))
                        : request.target[i];
            m_host.onQuery(query);
            return {200, "{\"data\":" + (m_host.answer.empty() ? Answer(query).dump() : m_host.answer) + "}"};
        }

    private:
        nlohmann::json Answer(const std::string& query) const
        {
            auto data = nlohmann::json::array();
            std::smatch bounds;
            if (query.starts_with("SELECT DISTINCT machine"))
                for (const std::string& machine : m_host.machines)
                    data.push_back({machine});
            else if (std::regex_search(query, bounds, std::regex("number >= ([0-9]+) LIMIT 1\n")))
            {
                for (const Row& row : m_host.rows)
                    if (row.number >= std::stoull(bounds[1]) && data.empty())
                        data.push_back({row.number});
            }
            else if (std::regex_search(query, bounds, std::regex("min.*BETWEEN ([0-9]+) AND ([0-9]+)")))
            {
                std::uint64_t first = 0, last = 0;
                for (const Row& row : m_host.rows)
                    if (row.number >= std::stoull(bounds[1]) && row.number <= std::stoull(bounds[2]))
                        first = first ? first : row.number, last = row.number;
                data.push_back({first, last});
            }
            else if (std::regex_search(query, bounds, std::regex("BETWEEN ([0-9]+) AND ([0-9]+)")))
            {
                const std::uint64_t from = std::stoull(bounds[1]), to = std::stoull(bounds[2]);
                EXPECT_GT(from + 10'000'000, to) << "the engine reads no more in a second";
                for (const Row& row : m_host.rows)
                    if (row.number >= from && row.number <= to)
                        data.push_back(
                            {row.number, row.log, std::to_string(row.time), 3, row.kind, 0, 0, row.text});
            }
            if (data.size() > m_host.mostRows)
                throw HttpError(HttpError::Reason::TooLong, "too long");
            return data;
        }

        LookingHost& m_host;
    };
};

class EngineSourceTest : public LogtoolTestOn<LookingHost>
{
protected:
    std::string Look(const std::string& options = "")
    {
        return Run("messages --from http://e/t?session=S --fields timestamp,level,topic,body --csv " +
                   options);
    }

    const std::string head = "Timestamp,Level,Topic,Body\r\n";
};

} // namespace

TEST_F(EngineSourceTest, RowsAreMessagesAndTheFilterHasTheLastWord)
{
    host.rows = {{3, "Main", 0, 0, "a"},
                 {7, "SQL", 0, 2, std::string("it's\0x\r\n", 8)},
                 {4'294'967'295, "Run", 0, 9, "last"}};
    const std::string all = Look();
    EXPECT_NE(std::string::npos, all.find("3,Plain,Main,a\r\n")) << all;
    EXPECT_NE(std::string::npos, all.find("7,Error,SQL,it's x\r\n")) << all;
    EXPECT_NE(std::string::npos, all.find("4294967295,9,Run,last\r\n")) << all;
    EXPECT_EQ(std::string::npos, all.find("exit")) << all;
    host.rows.pop_back(); // hundreds of stretches before it
    const std::string chosen = Look("--contain 'body=s x' --level error");
    EXPECT_NE(std::string::npos, chosen.find("7,Error")) << chosen;
    EXPECT_EQ(std::string::npos, chosen.find("Plain")) << chosen;
    const std::string sorted = Look("--sort topic:desc --no-duplicates");
    EXPECT_LT(sorted.find("SQL"), sorted.find("Main")) << sorted;
}

TEST_F(EngineSourceTest, ARowHasItsTimeAndDepth)
{
    struct Sink : msgservice::MessageSink
    {
        void Add(const msgservice::MessageFields& message) override
        {
            EXPECT_EQ(2'000'000'000, message.time); // nanoseconds
            EXPECT_EQ(msgservice::LocalTime(engine::kStartOf1970 + 20'000'000), message.timestamp);
            EXPECT_EQ(3u, message.indent);
            ++count;
        }
        int count = 0;
    } sink;
    host.rows = {{1, "Main", 20'000'000, 0, "x"}};
    std::string query;
    host.onQuery = [&](const std::string& asked) { query = asked; };
    const engine::EngineUrl url = engine::ParseEngineUrl("http://e/?session=S");
    engineview::EngineSource source(url, host.Connect(url), engineview::EngineSource::Until::Now, {});
    source.Read(sink);
    EXPECT_EQ(1, sink.count);
    EXPECT_NE(std::string::npos, query.find("FROM `log_rows` WHERE machine = 'press'")) << query;
}

TEST_F(EngineSourceTest, ASessionsEndsAreFoundWhereverTheyAre)
{
    const engine::EngineUrl url = engine::ParseEngineUrl("http://e/t?session=S&machine=m");
    engine::RowReader reader(url, host.Connect(url));
    const std::uint64_t numbers[] = {1, 1'000'001, 17'000'000, 4'294'967'295};
    for (std::size_t first = 0; first < std::size(numbers); ++first)
    {
        host.rows.clear();
        for (std::size_t last = first; last < std::size(numbers); ++last)
        {
            host.rows.push_back({numbers[last], "Main", 0, 0, ""});
            for (const std::uint64_t from : {std::uint64_t{0}, numbers[first], numbers[last] + 1})
            {
                const auto span = reader.ReadSpan(from);
                ASSERT_EQ(from <= numbers[last], span.has_value()) << first << last << ' ' << from;
                if (span)
                    EXPECT_EQ(std::pair(numbers[first], numbers[last]),
                              (std::pair<std::uint64_t, std::uint64_t>(span->first, span->last)));
            }
        }
    }
    host.onQuery = [&](const std::string& query) {
        host.answer = query.starts_with("SELECT min") ? "[]" : "";
    };
    EXPECT_THROW(reader.ReadSpan(0), engine::EngineError);
}

TEST_F(EngineSourceTest, TextsThatAreTooLongForAPageAreCut)
{
    host.rows = {{1, "Main", 0, 0, "a"}, {2, "Main", 0, 0, "b"}};
    host.onQuery = [&](const std::string& query) {
        const char* const cut =
            "if(lengthUTF8(text) > 1000, concat(substringUTF8(text, 1, 1000), ' ...'), text)";
        host.mostRows = query.find(cut) == std::string::npos ? 0 : 2;
    };
    const engine::EngineUrl url = engine::ParseEngineUrl("http://e/t?session=S&machine=m");
    engine::RowChoice choice;
    choice.to = 9;
    EXPECT_EQ(2u, engine::RowReader(url, host.Connect(url)).ReadPage(choice, {}).size());
}

// Each row once, whatever the lengths of stretches and answers.
TEST_F(EngineSourceTest, LongSessionsComeInStretches)
{
    host.machines = {}; // not asked for: the address names one
    std::string wanted;
    for (std::uint64_t number = 1; number < 60'000; number += number < 12'000 ? 1 : 20)
    {
        host.rows.push_back({number, "Main", 0, 0, "x"});
        wanted += std::to_string(number) + "\n";
    }
    for (const std::size_t most : {100'000, 999, 1})
    {
        host.mostRows = most;
        if (most == 1)
        {
            host.rows.resize(100);
            wanted.resize(wanted.find("101\n"));
        }
        const std::string found = Run("messages --from http://e/t?session=S&machine=m --fields timestamp");
        EXPECT_TRUE(found == wanted) << most << ' ' << found.size() << ' ' << wanted.size();
    }
    host.mostRows = 0; // of the answers with the last number, too
    host.onQuery = [&](const std::string& query) {
        host.mostRows = query.find(" text FROM ") == std::string::npos;
    };
    host.rows.resize(2);
    const std::string found = Run("messages --from http://e/t?session=S&machine=m");
    EXPECT_NE(std::string::npos, found.find("number 1 is left out: too long")) << found;
    EXPECT_NE(std::string::npos, found.find("number 2 is left out: too long")) << found;
    EXPECT_NE(std::string::npos, found.find("exit 1")) << found;
}

TEST_F(EngineSourceTest, ALostServerIsToldOnceAndComesBack)
{
    host.rows = {{1, "Main", 0, 0, "one"}};
    int looks = 0;
    host.wait = [&] {
        ++looks;
        host.onQuery = [looks](const std::string&) {
            if (looks == 2 || looks == 3)
                throw HttpError(HttpError::Reason::Unreachable, "gone");
        };
        host.rows.push_back(
            {static_cast<std::uint64_t>(looks) + 1, "Main", 0, 0, "row" + std::to_string(looks)});
        return looks < 6;
    };
    const std::string all = Look("-f");
    std::size_t at = 0;
    for (const char* const words : {"one", "row1", "row2", "row3", "row4", "row5"})
        EXPECT_NE(std::string::npos, at = all.find(words, at)) << words << all;
    const std::string told = host.messages.str();
    EXPECT_EQ(
        "logtool: http://e:8123: gone, trying again\nlogtool: http://e:8123: the server answers again\n",
        told);
}

TEST_F(EngineSourceTest, SessionsAreListedWithTheirAddresses)
{
    std::string asked;
    host.onQuery = [&](const std::string& query) { asked = query; };
    const std::int64_t time = *msgservice::ReadLocalTime("2026-11-23 14:03:10.5", 0) - engine::kStartOf1970;
    host.answer =
        R"([["press","A","9","0"],["press","B & \"C\"","12000",")" + std::to_string(time) + R"("]])";
    EXPECT_EQ("                             9 rows  \"http://e:8123/d.t?session=A&machine=press&x=1\"\n"
              "2026-11-23 14:03:10.500  12000 rows  "
              "\"http://e:8123/d.t?session=B%20%26%20%22C%22&machine=press&x=1\"\n",
              Run("sessions --from http://u@e/d.t?machine=it's&x=1"));
    EXPECT_NE(std::string::npos, asked.find("FROM `d`.`t` WHERE machine = 'it\\'s' GROUP BY")) << asked;
    host.answer = "[]";
    EXPECT_EQ("logtool: there is no session\nexit 1", Run("sessions --from http://e/"));
    EXPECT_EQ(std::string::npos, asked.find("WHERE")) << asked;
}

TEST_F(EngineSourceTest, WhatCannotBeReadIsSaid)
{
    const auto refuses = [&](const std::string& command, const std::string& words) {
        const std::string told = Run(command);
        EXPECT_NE(std::string::npos, told.find(words)) << told;
        EXPECT_NE(std::string::npos, told.find("exit ")) << told;
    };
    refuses("messages --from http://e/t", "names no session");
    refuses("sessions --from http://e/t?session=S", "names a session already");
    refuses("sessions", "--from");
    refuses("messages --from http://e/t?session=S --session", "--from");
    refuses("messages --from http://e/t?session=S file.log", "--from");
    host.machines = {"a", "b"};
    refuses("messages --from http://e/t?session=S", "a and b among them");
    host.machines = {};
    refuses("messages --from http://e/t?session=S", "there is no session S");
    host.onQuery = [](const std::string&) { throw HttpError(HttpError::Reason::Unreachable, "gone"); };
    refuses("messages --from http://e/t?session=S", "http://e:8123: gone\n");

    host.rows = {{1, "Main", 0, 0, "x"}};
    int asked = 0;
    host.onQuery = [&](const std::string& query) {
        if (query.find("BETWEEN") != std::string::npos)
            throw HttpError(++asked == 1 ? HttpError::Reason::Unreachable : HttpError::Reason::Untrusted,
                            "gone");
    };
    host.wait = [&] { return asked < 3; };
    refuses("messages -f --from http://e/t?session=S&machine=m",
            "logtool: http://e:8123: gone, trying again\nlogtool: http://e:8123: gone\nexit ");

    host.onQuery = [](const std::string&) {};
    const std::pair<const char*, const char*> answers[] = {{"[[\"x\"]]", "answers no number: x"},
                                                           {"[[5,1]]", "answers other columns"}};
    for (const auto& [answer, words] : answers)
    {
        host.answer = answer;
        refuses("messages --from http://e/t?session=S&machine=m", words);
    }
}

// What the engine leaves out, beside its stretch.
TEST(EngineConditions, LeaveOutOnlyWhatNoFilterTakes)
{
    const auto contain = static_cast<std::int32_t>(kLogMsgContain);
    const auto notContain = static_cast<std::int32_t>(kLogMsgNotContain);
    const struct
    {
        msgservice::Filter filter;
        std::uint32_t level;
        const char* where;
    } cases[] = {
        {{}, 0, ""},
        {{kLogMsgBody, contain, "a'b\\", true}, 0, " WHERE position(text, 'a\\'b\\\\') > 0"},
        {{kLogMsgBody, notContain, "a b", true}, 0, " WHERE position(text, 'a b') = 0"},
        {{kLogMsgTopic, contain, "Sql", false}, 0, " WHERE positionCaseInsensitive(log, 'Sql') > 0"},
        {{kLogMsgBody, contain, "a b", true}, 0, ""},
        {{kLogMsgBody, contain, "", true}, 0, ""},
        {{kLogMsgBody, contain, "\r", true}, 0, ""},
        {{kLogMsgBody, notContain, "\r", true}, 0, ""},
        {{kLogMsgBody, static_cast<std::int32_t>(kLogMsgNotEmpty), "x", true}, 0, ""},
        {{kLogMsgBody, notContain, "\xC3\xB6", false}, 0, ""},
        {{kLogMsgBody, contain, "\xC3\xB6", true}, 0, " WHERE position(text, '\xC3\xB6') > 0"},
        {{kLogMsgTimestamp, contain, "1", true}, 0, ""},
        {{}, 1, ""},
        {{}, 2, " WHERE kind NOT IN (3)"},
        {{}, 3, " WHERE kind IN (1, 2)"},
        {{kLogMsgBody, contain, "x", true}, 4, " WHERE position(text, 'x') > 0 AND kind IN (2)"},
        {{}, 5, " WHERE 0"},
    };
    for (const auto& each : cases)
    {
        msgservice::ViewDescription description;
        description.filters = {each.filter};
        description.leastLevel = each.level;
        engine::RowChoice choice;
        choice.from = 5;
        choice.to = 9;
        choice.conditions = engineview::ConditionsFor(description);
        const std::string columns = "SELECT number, log, time, depth, kind, header, block, text FROM ";
        EXPECT_EQ(columns + "(" + columns +
                      "`t` WHERE machine = '\\'m' AND session = 's' AND number BETWEEN 5 AND 9 "
                      "ORDER BY number, log, length DESC LIMIT 1 BY number, log)" +
                      std::string(each.where) + " ORDER BY number, log",
                  RowsSql({"t", "'m", "s"}, choice, {}, {}));
    }
}

// Whose rows are asked for, and the bounds.
TEST(EngineQueries, AreForOneSessionAndEndWhereTheyShould)
{
    const engine::ShippedRows rows = {"d.t", "'m", "s'"};
    const std::string of = " FROM `d`.`t` WHERE machine = '\\'m' AND session = 's\\'' AND ";
    const std::string within = of + "number BETWEEN 5 AND 9";
    const std::pair<std::string, std::string> cases[] = {
        {"SELECT DISTINCT machine FROM `d`.`t` WHERE session = 's\\'' ORDER BY machine LIMIT 2",
         MachinesSql(rows)},
        {"SELECT number" + of + "number >= 5 LIMIT 1", SomeSql(rows, 5)},
        {"SELECT min(number), max(number)" + within, SpanSql(rows, 5, 9)},
        {"SELECT min(number)" + within + " AND kind = 2", NearestSql(rows, 5, 9, 2, true)},
        {"SELECT max(number)" + within + " AND kind = 2", NearestSql(rows, 5, 9, 2, false)},
        {"SELECT min(number)" + of + "time >= -7", TimeSql(rows, -7)},
        {"SELECT min(number)" + within +
             " AND ((log = '\\'l' AND depth < 3) OR (header != 0 AND depth <= 3))",
         BlockEndSql(rows, 5, 9, "'l", 3)},
    };
    for (const auto& [expected, sql] : cases)
        EXPECT_EQ(expected, sql);
}
