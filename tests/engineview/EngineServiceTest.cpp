// A view of a session in an engine that answers late, not at all, or something else than before.
#include "FakeEngine.h"

#include "host/engineview/EngineService.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::chrono_literals;
using engine::HttpError;
using engineview::EngineService;
using engineview::Page;

// What a list is told.
class ToldViewer : public ILogViewer
{
public:
    void SetLogMsgService(ILogMsgService*) override {}
    void AddMsg(std::uint32_t id, ILogMsgData*) override { count = id; }
    void SetMsgIdRange(std::uint32_t first, std::uint32_t last) override
    {
        ++views;
        count = last - first + 1;
    }
    void Present(std::uint32_t) override {}
    CWnd* GetWnd() override { return nullptr; }
    std::uint32_t count = 0;
    int views = 0;
};

class EngineServiceTest : public testing::Test
{
protected:
    void Open()
    {
        engine::EngineUrl url;
        url.host = "e";
        url.port = 1;
        url.session = "S";
        service = std::make_unique<EngineService>(
            url, fake.Connect(), [] {}, 5ms);
        service->SetViewer(&viewer);
    }

    // Publishes until it holds. A minute is more than enough for any machine.
    ::testing::AssertionResult Until(const std::function<bool()>& holds)
    {
        for (const auto end = std::chrono::steady_clock::now() + 60s; std::chrono::steady_clock::now() < end;)
        {
            service->Publish();
            notices += service->TakeNotices();
            if (holds())
                return ::testing::AssertionSuccess();
            std::this_thread::sleep_for(1ms);
        }
        return ::testing::AssertionFailure() << "it never held; notices: " << notices;
    }

    std::string Body(std::uint32_t id)
    {
        const ILogMsgData* const message = service->GetMsg(id);
        return message ? message->GetBody() : "(null)";
    }

    // The rows that are seen, once their pages are here.
    std::string See(std::uint32_t first, std::uint32_t last)
    {
        service->SetSeen(first - 1, last - 1);
        std::string seen;
        EXPECT_TRUE(Until([&] {
            seen.clear();
            bool isHere = true;
            for (std::uint32_t id = first; id <= last; ++id)
            {
                isHere = isHere && Body(id) != "...";
                seen += Body(id) + "|";
            }
            return isHere;
        }));
        return seen;
    }

    void FilterBody(const char* value)
    {
        LogMsgFilter filter;
        filter.field = kLogMsgBody;
        filter.value = value;
        service->SetFilters(&filter, 1);
        service->Apply();
    }

    std::mutex mutex;
    std::vector<std::string> searches;
    std::atomic<bool> waits = false;
    std::atomic<int> begun = 0;
    std::atomic<int> given = 0;
    FakeEngine fake;
    ToldViewer viewer;
    std::string notices;
    std::unique_ptr<EngineService> service;
};

} // namespace

TEST_F(EngineServiceTest, RowsStandAtTheirNumbersAndComeInPages)
{
    for (std::uint32_t number = 1001; number <= 21'000; ++number)
        if (number != 5003)
            fake.Add(number, "row " + std::to_string(number), number % 1000 == 0 ? 2 : 0);
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 20'000; }));
    EXPECT_EQ("...", Body(20'000));
    EXPECT_EQ("(null)", Body(0));
    EXPECT_EQ("(null)", Body(20'001));
    EXPECT_EQ("row 20999|row 21000|", See(19'999, 20'000));
    EXPECT_EQ("Error", std::string(service->GetMsg(20'000)->GetLevelText()));
    EXPECT_EQ("row 5002|(no row has this number)|row 5004|", See(4002, 4004));
    EXPECT_EQ(nullptr, service->RowOf(4003));
    EXPECT_EQ(5004u, service->RowOf(4004)->number);
    EXPECT_EQ(4004u, service->FindTag(5004));
    EXPECT_EQ(kNoLogMsgId, service->FindTag(1000));
    EXPECT_EQ(kNoLogMsgId, service->FindTag(21'001));

    // Pages around what is seen, more of them where the user goes.
    See(10'001, 10'050);
    const auto isHere = [&](std::uint32_t page) {
        return std::string_view(Body(page * Page::kRows + 1)) != "...";
    };
    EXPECT_TRUE(Until([&] { return isHere(104) && isHere(99); }));
    EXPECT_FALSE(isHere(105) || isHere(98));
    See(8001, 8050);
    EXPECT_TRUE(Until([&] { return isHere(76) && isHere(81); }));
    EXPECT_FALSE(isHere(75) || isHere(82));
}

TEST_F(EngineServiceTest, NewRowsComeToTheEndAndLateOnesToTheirPlace)
{
    Open();
    ASSERT_TRUE(Until([&] { return viewer.views > 0; }));
    EXPECT_EQ(0u, viewer.count);
    fake.Add(5, "five");
    ASSERT_TRUE(Until([&] { return viewer.count == 1; }));
    EXPECT_EQ("five|", See(1, 1));
    fake.Add(7, "seven");
    ASSERT_TRUE(Until([&] { return viewer.count == 3; }));
    EXPECT_EQ("five|(no row has this number)|seven|", See(1, 3));
    {
        const std::lock_guard lock(fake.mutex);
        engine::ShippedRow late = fake.rows[0];
        late.number = 6;
        late.text = "six";
        fake.rows.insert(fake.rows.begin() + 1, late);
    }
    EXPECT_TRUE(Until([&] { return Body(2) == "six"; }));
    EXPECT_EQ(1, viewer.views);

    // While nothing comes one short question is asked now and then.
    fake.SetOnQuery([this](const std::string& query, const auto&) {
        const std::lock_guard lock(mutex);
        searches.push_back(query);
    });
    const int before = fake.asked;
    ASSERT_TRUE(Until([&] { return fake.asked > before + 4; }));
    const std::lock_guard lock(mutex);
    for (const std::string& query : searches)
        EXPECT_NE(std::string::npos, query.find("number >= 8 LIMIT 1")) << query;
}

TEST_F(EngineServiceTest, FoundRowsComeStretchByStretchAndGrow)
{
    for (std::uint32_t number = 1; number <= 250'000; number += 5)
        fake.Add(number, number % 10 == 1 ? "odd" : "even");
    fake.SetPasses([](const engine::ShippedRow& row) { return row.text == "odd"; });
    fake.SetOnQuery([this](const std::string& query, const auto&) {
        const std::lock_guard lock(mutex);
        if (query.find("groupArray") != std::string::npos ||
            query.find("AND number IN (") != std::string::npos)
            searches.push_back(query);
    });
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 249'996; }));
    service->SetShowDuplicate(0);
    FilterBody("odd");
    EXPECT_TRUE(service->IsBusy());
    const auto count = [&] {
        const std::lock_guard lock(mutex);
        return searches.size();
    };
    while (count() < 2) // what both find is taken at once
        std::this_thread::sleep_for(1ms);
    for (const int before = fake.asked; fake.asked < before + 3;)
        std::this_thread::sleep_for(1ms);
    ASSERT_TRUE(Until([&] { return service->GetState().searchedTo == 249'996; }));
    EXPECT_FALSE(service->IsBusy());
    EXPECT_EQ(25'000u, viewer.count);
    EXPECT_EQ(25'000u, service->GetState().found);
    EXPECT_EQ("odd|odd|", See(12'000, 12'001));
    EXPECT_EQ(119'991, service->GetMsg(12'000)->GetTag());
    EXPECT_EQ(12'000u, service->FindTag(119'991));
    EXPECT_EQ(kNoLogMsgId, service->FindTag(119'996));
    {
        const std::lock_guard lock(mutex);
        ASSERT_LE(2u, searches.size()); // from one number to the next, none twice
        EXPECT_NE(std::string::npos, searches[0].find("BETWEEN 1 AND 100000"));
        EXPECT_NE(std::string::npos, searches[0].find("toUInt64(0)"));
        EXPECT_NE(std::string::npos, searches[1].find("BETWEEN 100001 AND "));
        EXPECT_NE(std::string::npos, searches[1].find("toUInt64(7)")); // the hash of the row before
        EXPECT_NE(std::string::npos,
                  searches.back().find("AND number IN (")); // a page asks for its rows alone
    }
    fake.Add(250'001, "odd");
    EXPECT_TRUE(Until([&] { return viewer.count == 25'001; }));
    EXPECT_TRUE(service->IsFiltered());
    EXPECT_FALSE(service->IsSorted());
}

TEST_F(EngineServiceTest, SortedRowsStayUntilTheyAreSortedAgain)
{
    for (std::uint32_t number = 1; number <= 300; ++number)
        fake.Add(number, "row " + std::to_string(number));
    fake.isReversed = true;
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 300; }));
    const LogMsgSortKey key = {kLogMsgBody, 0};
    service->SetSortKeys(&key, 1);
    int before = fake.asked;
    service->SetSeen(100, 150);
    while (fake.asked < before + 2)
        std::this_thread::sleep_for(1ms);
    before = fake.asked;
    service->Apply();
    while (fake.asked < before + 4) // pages of the view before are here, and so are the numbers of this one
        std::this_thread::sleep_for(1ms);
    ASSERT_TRUE(Until([&] { return !service->IsBusy(); }));
    EXPECT_NE("row 101", Body(101));
    EXPECT_EQ("row 300|row 299|", See(1, 2));
    EXPECT_EQ("row 101|row 100|", See(200, 201));
    fake.Add(301, "row 301");
    EXPECT_TRUE(Until([&] { return service->GetState().isOld; }));
    EXPECT_EQ(300u, viewer.count);
    service->Refresh();
    EXPECT_TRUE(Until([&] { return viewer.count == 301; }));
    EXPECT_FALSE(service->GetState().isOld);
}

// The view before stays, with its description.
TEST_F(EngineServiceTest, AViewThatCannotBeHadIsGivenUp)
{
    for (std::uint32_t number = 1; number <= 10; ++number)
        fake.Add(number, "row " + std::to_string(number));
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 10; }));
    waits = true;
    fake.SetOnQuery([this](const std::string& query, const engine::IsCancelled& isCancelled) {
        while (waits && !isCancelled() && query.find("groupArray") != std::string::npos)
            std::this_thread::sleep_for(1ms);
    });
    FilterBody("x");
    service->CancelApply();
    EXPECT_FALSE(service->IsBusy());
    LogMsgFilter filter;
    service->GetFilters(&filter, 1);
    EXPECT_EQ(kLogMsgNone, filter.field);
    EXPECT_TRUE(Until([&] { return viewer.views == 2; })); // shown anew
    EXPECT_EQ(10u, viewer.count);

    // An older question gives way at once.
    FilterBody("x");
    fake.SetPasses([](const engine::ShippedRow& row) { return row.number > 4; });
    FilterBody("y");
    waits = false;
    ASSERT_TRUE(Until([&] { return !service->IsBusy(); }));
    EXPECT_TRUE(Until([&] { return viewer.count == 6; }));

    fake.SetOnQuery([](const std::string& query, const auto&) {
        if (query.find("groupArray") != std::string::npos)
            throw engine::EngineError(engine::EngineError::Remedy::TryAgain, "Code: 241, memory", 241);
    });
    FilterBody("z");
    EXPECT_TRUE(Until([&] { return !service->IsBusy(); }));
    EXPECT_NE(std::string::npos, notices.find("memory\n")) << notices;
    service->GetFilters(&filter, 1);
    EXPECT_STREQ("y", filter.value.c_str());
    fake.SetOnQuery([](const auto&, const auto&) {});
    ASSERT_TRUE(Until([&] { return viewer.count == 6; }));
    fake.Add(11, "row 11");
    EXPECT_TRUE(Until([&] { return viewer.count == 7; }));
}

TEST_F(EngineServiceTest, OldRequestsAreDropped)
{
    for (std::uint32_t number = 1; number <= 50'000; ++number)
        fake.Add(number, "row " + std::to_string(number));
    waits = true;
    fake.SetOnQuery([this](const std::string& query, const engine::IsCancelled& isCancelled) {
        if (query.find("BETWEEN 1 AND 100 ") == std::string::npos)
            return;
        ++begun;
        while (waits && !isCancelled())
            std::this_thread::sleep_for(1ms);
        given += waits ? 1 : 0;
    });
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 50'000; }));
    ASSERT_TRUE(Until([&] { return begun == 1; })); // the first page is asked for, and hangs
    EXPECT_EQ("row 40001|", See(40'001, 40'001));
    EXPECT_TRUE(Until([&] { return given == 1; }));
    service->SetSeen(0, 0);
    ASSERT_TRUE(Until([&] { return begun == 2; }));
    service->Refresh(); // the same page of another view
    EXPECT_TRUE(Until([&] { return given == 2; }));
    waits = false;
    EXPECT_EQ("row 1|", See(1, 1));
}

TEST_F(EngineServiceTest, ALostServerIsToldOnceAndComesBack)
{
    fake.Add(1, "one");
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 1; }));
    fake.SetOnQuery(
        [](const std::string&, const auto&) { throw HttpError(HttpError::Reason::Unreachable, "gone"); });
    EXPECT_TRUE(Until([&] { return service->GetState().isLost; }));
    const int before = fake.asked;
    EXPECT_TRUE(Until([&] { return fake.asked > before + 5; }));
    fake.SetOnQuery([](const std::string&, const auto&) {});
    fake.Add(2, "two");
    EXPECT_TRUE(Until([&] { return viewer.count == 2; }));
    EXPECT_EQ("one|two|", See(1, 2));
    EXPECT_TRUE(Until([&] { return !service->GetState().isLost; }));
    EXPECT_EQ("http://e:1: gone, trying again\nhttp://e:1: the server answers again\n", notices);
}

// A copy goes through rows that are not here.
TEST_F(EngineServiceTest, HeldViewsWaitForTheirPagesAndTellWhatIsMissing)
{
    for (std::uint32_t number = 1; number <= 5000; ++number)
        if (number != 17)
            fake.Add(number, "row " + std::to_string(number));
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 5000; }));
    service->HoldView(1);
    fake.Add(5001, "later");
    std::string wrong;
    for (std::uint32_t id = 1; id <= 5000; ++id)
        if (Body(id) != (id == 17 ? "(null)" : "row " + std::to_string(id)))
            wrong += std::to_string(id) + " ";
    EXPECT_EQ("", wrong);
    EXPECT_EQ(5000u, viewer.count);
    service->HoldView(0);
    EXPECT_TRUE(Until([&] { return viewer.count == 5001; }));
    EXPECT_EQ("", notices);

    service->Refresh();
    ASSERT_TRUE(Until([&] { return viewer.views == 2; }));
    fake.SetOnQuery(
        [](const std::string&, const auto&) { throw HttpError(HttpError::Reason::Unreachable, "gone"); });
    service->HoldView(1);
    for (std::uint32_t id = 2001; id <= 2300; ++id)
        EXPECT_EQ("(null)", Body(id));
    service->HoldView(0);
    EXPECT_TRUE(Until([&] { return notices.find("300 rows are missing") != std::string::npos; }));
}

TEST_F(EngineServiceTest, ABlockBoundsTheView)
{
    for (std::uint32_t number = 1; number <= 30'000; ++number)
    {
        fake.Add(number, "row " + std::to_string(number));
        engine::ShippedRow& row = fake.rows.back();
        row.depth = number >= 50 && number < 25'000 ? 1 : 0;
        row.block = row.depth == 1 ? 50 : 0;
        row.header = number == 50;
        row.log = number == 90 ? "Run" : "Main"; // has no block of its own, so it is in the other log's
    }
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 30'000; }));
    See(1, 90);
    std::optional<engine::RowReader::Span> block;
    bool isTold = false;
    const auto found = [&](const std::optional<engine::RowReader::Span>& span, const std::string&) {
        block = span;
        isTold = true;
    };
    const auto ask = [&](std::uint32_t id) {
        service->Ask([row = *service->RowOf(id)](engine::RowReader& reader) { return reader.ReadBlock(row); },
                     found);
    };
    waits = true;
    fake.SetOnQuery([this](const std::string& query, const engine::IsCancelled& isCancelled) {
        const bool isHeader = query.find("BETWEEN 50 AND 50 ") != std::string::npos;
        begun += isHeader ? 1 : 0;
        while (isHeader && waits && !isCancelled())
            std::this_thread::sleep_for(1ms);
    });
    ask(90);
    ASSERT_TRUE(Until([&] { return begun == 1; }));
    service->Apply(); // another view gives up what is asked, but not for good
    ASSERT_TRUE(Until([&] { return begun == 2; }));
    waits = false;
    ASSERT_TRUE(Until([&] { return isTold; }));
    ASSERT_TRUE(block.has_value());
    EXPECT_EQ(50u, block->first);
    EXPECT_EQ(24'999u, block->last);
    service->SetBounds(block);
    service->Apply();
    ASSERT_TRUE(Until([&] { return viewer.count == 24'950; }));
    EXPECT_EQ("row 24998|row 24999|", See(24'949, 24'950));
    isTold = false;
    service->SetBounds({});
    service->Apply();
    ASSERT_TRUE(Until([&] { return viewer.count == 30'000; }));
    See(1, 90);
    ask(1);
    ASSERT_TRUE(Until([&] { return isTold; }));
    EXPECT_FALSE(block);
}

// More rows than a view has, and pages whose texts are too long for an answer.
TEST_F(EngineServiceTest, SizesAtTheirLimits)
{
    constexpr std::uint32_t kLast = 1'000'500;
    for (std::uint32_t number = 1; number <= kLast; ++number)
        fake.Add(number, "x");
    fake.Add(0xFFFFFFFF, "y");
    Open();
    ASSERT_TRUE(Until([&] { return viewer.count == 0x7FFFFFFE; })); // the newest
    EXPECT_TRUE(service->GetState().isCutOff);
    fake.SetOnQuery([](const std::string& query, const auto&) {
        if (query.find("block, text FROM") < query.find("(SELECT"))
            throw HttpError(HttpError::Reason::TooLong, "too long");
    });
    service->Refresh();
    ASSERT_TRUE(Until([&] { return viewer.views == 2; }));
    EXPECT_EQ("y|", See(0x7FFFFFFE, 0x7FFFFFFE));
    FilterBody("x");
    EXPECT_TRUE(Until([&] { return service->GetState().isCutOff && !service->IsBusy(); }));
    EXPECT_EQ(1'000'000u, viewer.count);
    EXPECT_EQ(1'000'000, service->GetMsg(1'000'000)->GetTag());
    fake.SetPasses([](const engine::ShippedRow& row) { return row.number % 2 == 0; });
    FilterBody("even");
    ASSERT_TRUE(Until([&] { return service->GetState().searchedTo == 0xFFFFFFFF && !service->IsBusy(); }));
    EXPECT_FALSE(service->GetState().isCutOff);
    EXPECT_EQ(500'250u, viewer.count);
}
