// The message service: what it announces, what it bears, what it tells.
#include "tests/msgservice/ToldViewer.h"

#include <condition_variable>
#include <thread>

namespace
{

using namespace msgservice;

// Notes what it is told.
class NotingViewer : public ILogViewer
{
public:
    void SetLogMsgService(ILogMsgService* given) override { service = given; }
    void AddMsg(std::uint32_t id, ILogMsgData* message) override
    {
        Note("add " + std::to_string(id) + (message ? " " + std::string(message->GetBody()) : ""));
    }
    void SetMsgIdRange(std::uint32_t first, std::uint32_t last) override
    {
        Note("range " + std::to_string(first) + " " + std::to_string(last));
    }
    void Present(std::uint32_t) override {}
    CWnd* GetWnd() override { return nullptr; }

    std::string Told() { return std::exchange(m_told, {}); }

    ILogMsgService* service = nullptr;
    std::function<void()> onTold;

private:
    void Note(const std::string& what)
    {
        EXPECT_NE(nullptr, service) << "told although it was removed";
        m_told += (m_told.empty() ? "" : ", ") + what;
        if (onTold)
            onTold();
    }

    std::string m_told;
};

void AddBody(MessageStore& store, std::string_view body, int count = 1)
{
    MessageFields fields;
    fields.body = body;
    for (; count > 0; --count)
        store.Add(fields);
}

void SortByBody(MsgService& service)
{
    const LogMsgSortKey key = {kLogMsgBody, 1};
    service.SetSortKeys(&key, 1);
    service.Apply();
    service.Settle();
}

// Who goes through messages by their ids holds the view meanwhile.
TEST(MsgService, AHeldViewOnlyGrowsAtItsEnd)
{
    MsgService service;
    NotingViewer viewer;
    service.AddViewer(viewer);
    AddBody(*service.Store(), "b");
    AddBody(*service.Store(), "c");
    SortByBody(service);
    viewer.Told();
    service.HoldView(1);
    service.HoldView(1);
    const LogMsgSortKey downwards = {kLogMsgBody, 0};
    service.SetSortKeys(&downwards, 1);
    service.Apply();
    AddBody(*service.Store(), "d");
    AddBody(*service.Store(), "a"); // belongs in front
    const auto publish = [&] {
        for (int i = 0; i < 50; ++i, std::this_thread::sleep_for(std::chrono::milliseconds(1)))
            service.Publish();
    };
    publish();
    EXPECT_EQ("", viewer.Told());
    EXPECT_STREQ("b", service.GetMsg(1)->GetBody());
    service.HoldView(0);
    publish();
    EXPECT_EQ("", viewer.Told()) << "somebody else still holds it";
    service.HoldView(0);
    service.Settle();
    EXPECT_EQ(4u, service.GetMsgCount());
    EXPECT_STREQ("d", service.GetMsg(1)->GetBody());

    const LogMsgSortKey none;
    service.SetSortKeys(&none, 1);
    service.Apply();
    service.Settle();
    viewer.Told();
    service.HoldView(1);
    AddBody(*service.Store(), "e");
    service.Publish();
    EXPECT_EQ("add 5 e", viewer.Told()) << "messages at the end go on";
    service.HoldView(0);
}

TEST(MsgService, AnnouncesArrivalsOneByOneAndNewViewsAsARange)
{
    MsgService service;
    NotingViewer viewer;
    service.AddViewer(viewer);
    EXPECT_EQ("range 1 0", viewer.Told());
    AddBody(*service.Store(), "c");
    AddBody(*service.Store(), "d");
    EXPECT_EQ("", viewer.Told());
    service.Publish();
    EXPECT_EQ("add 1 c, add 2 d", viewer.Told());

    SortByBody(service);
    EXPECT_EQ("range 1 2, add 2", viewer.Told());
    AddBody(*service.Store(), "e");
    service.Publish();
    EXPECT_EQ("add 3 e", viewer.Told()) << "it belongs at the end";
    AddBody(*service.Store(), "a");
    service.Settle();
    EXPECT_EQ("range 1 4, add 4", viewer.Told());
    EXPECT_STREQ("a", service.GetMsg(1)->GetBody());

    AddBody(*service.Store(), "f", 1001);
    service.Settle();
    EXPECT_EQ("range 1 1005, add 1005", viewer.Told()) << "many are put in order by the worker";
    service.ClearBefore(5);
    service.Settle();
    EXPECT_EQ("range 1 1001, add 1001", viewer.Told());
    service.SetStore(MessageStore::Make());
    EXPECT_EQ("range 1 0", viewer.Told());

    const LogMsgSortKey none;
    service.SetSortKeys(&none, 1);
    service.Apply();
    service.Settle();
    AddBody(*service.Store(), "g", 1001);
    viewer.Told();
    service.Publish();
    EXPECT_EQ("add 1001 g", viewer.Told()) << "of many the last stands for all";
    NotingViewer second;
    service.AddViewer(second);
    EXPECT_EQ("range 1 1001, add 1001", second.Told());
    service.RemoveViewer(viewer);
    EXPECT_EQ(nullptr, viewer.service);
    AddBody(*service.Store(), "h");
    service.Publish();
    EXPECT_EQ("", viewer.Told());
    EXPECT_EQ("add 1002 h", second.Told());
}

// Whatever a viewer does when it is told something, all others end up with what the service shows.
TEST(MsgService, BearsWhatViewersDoWhenTheyAreTold)
{
    for (int act = 0; act < 8; ++act)
        for (int moment = 0; moment < 6; ++moment)
        {
            SCOPED_TRACE(std::to_string(act) + " at " + std::to_string(moment));
            MsgService service;
            NotingViewer hostile;
            ToldViewer added;
            ToldViewer viewer;
            const std::function<void()> acts[] = {
                [&] { service.RemoveViewer(hostile); },
                [&] { service.RemoveViewer(viewer); },
                [&] { service.AddViewer(added); },
                [&] { service.SetStore(MessageStore::Make()); },
                [&] { service.Apply(); },
                [&] { service.Publish(); },
                [&] { AddBody(*service.Store(), "b"); },
                [&] {
                    AddBody(*service.Store(), "d");
                    service.Publish();
                },
            };
            int told = 0;
            hostile.onTold = [&] {
                if (told++ == moment)
                    acts[act]();
            };
            service.AddViewer(hostile);
            service.AddViewer(viewer);
            AddBody(*service.Store(), "c", 3);
            service.Publish();
            SortByBody(service);
            AddBody(*service.Store(), "a", 2);
            service.Settle();
            EXPECT_GT(told, moment);
            for (const ToldViewer* const each : {&viewer, &added})
                EXPECT_EQ(each->service ? service.GetMsgCount() : each->count, each->count);
            EXPECT_TRUE(act == 3 || service.GetMsgCount() >= 5);
        }
}

// Answers pieces of two messages, the last of which fails.
class TwoPieces : public MessageSource
{
public:
    State Read(MessageSink& sink) override
    {
        if (m_piece++ == 2)
            throw std::runtime_error("the disk is gone");
        for (const char* const body : {"x", "y"})
        {
            MessageFields fields;
            fields.body = body;
            sink.Add(fields);
        }
        return m_piece == 1 ? State::More : State::Waiting;
    }
    std::string TakeNotices() override { return {}; }

private:
    int m_piece = 0;
};

TEST(MsgService, OpensAFileAndKeepsWhatItShowsIfItCannot)
{
    MsgService service;
    NotingViewer viewer;
    service.AddViewer(viewer);
    AddBody(*service.Store(), "before");
    service.Publish();
    std::unique_ptr<ILogMsgData> clone(service.GetMsg(1)->Clone());

    service.OpenFile("no.log", 0);
    EXPECT_EQ("no.log: files cannot be opened here\n", service.TakeNotices());
    EXPECT_EQ(1u, service.GetMsgCount());
    service.SetOpener([](const std::string& path, bool) -> std::unique_ptr<MessageSource> {
        if (path != "two.log")
            throw std::runtime_error(path + " is not there");
        return std::make_unique<TwoPieces>();
    });
    service.OpenFile("other.log", 0);
    EXPECT_EQ("other.log is not there\n", service.TakeNotices());
    viewer.Told();

    std::mutex mutex;
    std::condition_variable changed;
    int wakes = 0;
    service.SetWake([&] {
        const std::lock_guard lock(mutex);
        ++wakes;
        changed.notify_all();
    });
    service.OpenFile("two.log", 1);
    EXPECT_EQ("range 1 0", viewer.Told());
    ZEMA::String path;
    bool followed = true;
    bool damaged = false;
    bool readOnly = false;
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return wakes >= 3; }); // two pieces and the fault
    }
    service.Settle();
    service.GetFileInfo(path, followed, damaged, readOnly);
    EXPECT_STREQ("two.log", path.c_str());
    EXPECT_TRUE(!followed && damaged && readOnly);
    EXPECT_EQ(4u, service.GetMsgCount());
    EXPECT_EQ("Reading has ended: the disk is gone\n", service.TakeNotices());
    EXPECT_EQ("", service.TakeNotices());
    service.SetWake({});
    EXPECT_STREQ("before", clone->GetBody());
    service.SetStore(MessageStore::Make());
    service.GetFileInfo(path, followed, damaged, readOnly);
    EXPECT_STREQ("", path.c_str()) << "another store is of no file";
    EXPECT_FALSE(followed || damaged || readOnly);
}

// What cannot be made, here an expression that is too long, leaves view, keys and filters as they were.
TEST(MsgService, TellsWhenAViewCannotBeMade)
{
    MsgService service;
    AddBody(*service.Store(), "a");
    service.Publish();
    LogMsgFilter filters[3];
    filters[0].field = kLogMsgBody;
    filters[0].value = std::string(100'000, 'a').c_str();
    service.SetFilters(filters, 3);
    service.Apply();
    service.Settle();
    EXPECT_FALSE(service.IsBusy());
    EXPECT_TRUE(service.TakeNotices().starts_with("The view cannot be made: "));
    EXPECT_EQ(1u, service.GetMsgCount());
    service.GetFilters(filters, 3);
    EXPECT_EQ(kLogMsgNone, filters[0].field);
}

TEST(MsgService, ListsOutliveItAndCancellingBringsTheKeysBack)
{
    auto service = std::make_unique<MsgService>();
    AddBody(*service->Store(), "b");
    AddBody(*service->Store(), "a");
    SortByBody(*service);
    const LogMsgSortKey other = {kLogMsgTopic, 0};
    service->SetSortKeys(&other, 1);
    service->Apply();
    EXPECT_TRUE(service->IsBusy());
    service->CancelApply();
    EXPECT_FALSE(service->IsBusy());
    LogMsgSortKey key;
    service->GetSortKeys(&key, 1);
    EXPECT_EQ(kLogMsgBody, key.field);

    std::unique_ptr<ILogMsgList> list(service->CreateMsgList(500, 0));
    EXPECT_EQ(0, list->Add(nullptr));
    service.reset();
    EXPECT_EQ(2u, list->GetCount());
    EXPECT_STREQ("a", list->Get(1)->GetBody());
    EXPECT_STREQ("b", list->Get(2)->GetBody());
    EXPECT_EQ(nullptr, list->Get(0));
    EXPECT_EQ(nullptr, list->Get(3));
    EXPECT_EQ(nullptr, list->Get(kNoLogMsgId));
}

// Two messages that say the same are both shown again as soon as another comes between them.
TEST(MsgService, AMessageBetweenDuplicatesBringsTheSecondBack)
{
    MsgService service;
    const auto add = [&](Time time, std::string_view body) {
        MessageFields fields;
        fields.time = time;
        fields.body = body;
        service.Store()->Add(fields);
    };
    add(1, "x");
    add(3, "x");
    for (Time time = 4; time < 300; ++time)
        add(time, std::to_string(time));
    const LogMsgSortKey key = {kLogMsgTimestamp, 1};
    service.SetSortKeys(&key, 1);
    service.SetShowDuplicate(0);
    service.Apply();
    service.Settle();
    EXPECT_EQ(297u, service.GetMsgCount());
    add(2, "y");
    service.Settle();
    ASSERT_EQ(299u, service.GetMsgCount());
    for (std::uint32_t id = 1; id <= 4; ++id)
        EXPECT_STREQ((std::array{"x", "y", "x", "4"}[id - 1]), service.GetMsg(id)->GetBody());
}

// Work that would never end by itself ends when other work is begun, and when the worker goes.
TEST(ViewWorker, BreaksOffWhatIsNoLongerWanted)
{
    const auto endless = [](Work& work) -> std::unique_ptr<View> {
        for (;;)
            work.Check(1, 2, 0, 1);
    };
    const std::shared_ptr<MessageStore> store = MessageStore::Make();
    std::string fault;
    std::atomic<int> ready = 0;
    ViewWorker worker([&] { ++ready; });
    worker.Start(endless);
    while (worker.Progress() < 0.5)
        std::this_thread::yield();
    EXPECT_TRUE(worker.IsRunning());
    EXPECT_EQ(nullptr, worker.TakeResult(fault));
    worker.Start([&](Work&) { return std::make_unique<View>(store, ViewDescription()); });
    worker.Wait();
    EXPECT_NE(nullptr, worker.TakeResult(fault));
    EXPECT_FALSE(worker.IsRunning());
    worker.Start([](Work&) -> std::unique_ptr<View> { throw std::runtime_error("no room"); });
    worker.Wait();
    EXPECT_EQ(nullptr, worker.TakeResult(fault));
    EXPECT_EQ("no room", fault);
    EXPECT_FALSE(worker.IsRunning());
    worker.Start(endless);
}

} // namespace
