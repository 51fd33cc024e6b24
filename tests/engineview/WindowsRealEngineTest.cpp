// A view of a session in a real engine shows what the service over messages in memory shows.
// tests/engine/ship_test.py starts the server and names it in QM_ENGINE_URL; without one there is nothing to
// look at.
#include "host/engine/LogTable.h"
#include "host/engineview/EngineService.h"
#include "host/msgservice/MsgService.h"

#include <gtest/gtest.h>
#include <random>

namespace
{

using engineview::EngineService;

struct MadeRow
{
    engine::ShippedRow row;
    std::vector<std::string> earlier; // what its text was when it arrived before
};

// Texts whose order is the same in each language.
std::vector<MadeRow> MakeRows(std::mt19937& random, std::uint32_t count)
{
    const char* const logs[] = {"Main", "SQL", "Run"};
    const char* const words[] = {
        "alpha", "Alpha", "beta", "beta beta", "Gamma", "it's \\ `x` %s", "gr\xC3\xB6\xC3\x9F", ""};
    std::vector<MadeRow> rows;
    for (std::uint32_t number = 1; number <= count; ++number)
    {
        MadeRow made;
        made.row.number = number;
        made.row.log = logs[random() % 3];
        made.row.time = random() % 2 ? 17'600'000'000'000'000 + random() % 1000 * 10'000'000 : 0;
        made.row.depth = random() % 3;
        made.row.kind = random() % 5 == 4 ? 9 : random() % 4;
        made.row.text = words[random() % std::size(words)];
        if (random() % 10 == 0 && made.row.text.size() > 2)
            made.earlier = {made.row.text.substr(0, 2), made.row.text};
        rows.push_back(made);
    }
    return rows;
}

void Insert(engine::Engine& engine, const std::vector<MadeRow>& rows)
{
    engine::RowBatch final;
    engine::RowBatch early;
    final.Begin("m", "S");
    early.Begin("m", "S");
    for (const auto& [row, earlier] : rows)
    {
        const auto add = [&row](engine::RowBatch& batch, const std::string& text) {
            batch.Add({row.number, row.log, row.time, static_cast<std::uint8_t>(row.depth), row.kind, false,
                       0, 0, text});
        };
        add(final, row.text);
        for (const std::string& text : earlier)
            add(early, text);
    }
    engine.Insert("views", engine::kRowColumns, final.Bytes());
    engine.Insert("views", engine::kRowColumns, early.Bytes());
}

std::string RandomDescription(std::mt19937& random, ILogMsgService& one, ILogMsgService& other)
{
    const std::int32_t fields[] = {kLogMsgLevel, kLogMsgTopic, kLogMsgBody, kLogMsgWho, kLogMsgLine};
    const char* const values[] = {"a", "ALPHA", "r", "Error", "it's \\", "\xC3\x96", "9", "0", ""};
    LogMsgFilter filters[3];
    LogMsgSortKey keys[3];
    std::string told;
    for (int i = 0; i < 3; ++i)
    {
        if (random() % 3 == 0)
            filters[i] = {static_cast<ILogMsgDataKind>(fields[random() % std::size(fields)]),
                          static_cast<LogMsgFilterOperator>(random() % 3),
                          values[random() % std::size(values)], static_cast<std::int32_t>(random() % 2)};
        const bool isSorted = random() % 4 == 0;
        if (isSorted)
            keys[i] = {static_cast<ILogMsgDataKind>(random() % 5), static_cast<std::int32_t>(random() % 2)};
        told += "filter " + std::to_string(filters[i].field) + " " + std::to_string(filters[i].operation) +
                " '" + filters[i].value.c_str() + "' " + std::to_string(filters[i].matchCase) + ", key " +
                std::to_string(keys[i].field) + " " + std::to_string(keys[i].ascending) + "; ";
    }
    const std::int32_t duplicates = random() % 3 != 0;
    for (ILogMsgService* const service : {&one, &other})
    {
        service->SetFilters(filters, 3);
        service->SetSortKeys(keys, 3);
        service->SetShowDuplicate(duplicates);
    }
    return told + (duplicates ? "" : "no duplicates ");
}

} // namespace

TEST(WindowsRealEngineTest, ShowsWhatTheServiceInMemoryShows)
{
    const char* const address = std::getenv("QM_ENGINE_URL");
    if (!address)
        GTEST_SKIP() << "QM_ENGINE_URL names no engine";
    const char* const seed = std::getenv("QM_TEST_SEED");
    std::mt19937 random(seed ? static_cast<unsigned>(std::atoi(seed)) : 1);
    const engine::EngineUrl url = engine::ParseEngineUrl(std::string(address) + "/views?session=S&machine=m");
    engine::Engine engine(url, engine::MakeHttpClient(url, [] { return false; }));
    engine.Do(engine::CreateTableSql("views"));
    const std::vector<MadeRow> rows = MakeRows(random, 2000);
    Insert(engine, rows);

    auto store = msgservice::MessageStore::Make();
    msgservice::RowMessage maker;
    for (const MadeRow& made : rows)
        store->Add(maker.Make(engineview::MessageRow(made.row)));
    msgservice::MsgService expected(store);
    EngineService service(
        url,
        [&url](engine::IsCancelled isCancelled) {
            return engine::MakeHttpClient(url, std::move(isCancelled));
        },
        [] {}, std::chrono::milliseconds(20));
    const auto publish = [&] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        EngineService::State state;
        do
        {
            service.Publish();
            state = service.GetState();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        } while (std::chrono::steady_clock::now() < end &&
                 (state.isBusy || !state.span || !service.IsHere() ||
                  (state.searchedTo != 0 && state.searchedTo != 2000)));
    };
    publish();
    EXPECT_EQ(2000u, service.GetMsgCount());
    for (int round = 0; round < 60; ++round)
    {
        const std::string told = RandomDescription(random, service, expected);
        const std::uint32_t level = random() % 3 == 0 ? random() % 6 : 0;
        service.SetLeastLevel(level);
        expected.SetLeastLevel(level);
        service.Apply();
        expected.Apply();
        expected.Settle();
        publish();
        service.SetSeen(0, 99);
        publish();
        const std::string about = told + "level " + std::to_string(level) + " " + service.TakeNotices();
        ASSERT_EQ(expected.GetMsgCount(), service.GetMsgCount()) << about;
        for (std::uint32_t id = 1; id <= expected.GetMsgCount(); ++id)
        {
            ASSERT_EQ(expected.GetMsg(id)->GetTag(), service.GetMsg(id)->GetTag()) << id << ": " << about;
            if (id > 100)
                continue;
            ASSERT_STREQ(expected.GetMsg(id)->GetBody(), service.GetMsg(id)->GetBody())
                << id << ": " << about;
        }
    }
    engine.Do("DROP TABLE views");
}
