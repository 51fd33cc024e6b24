// The messages' part of the window: its texts, the user's place in the list, the made-up messages.
#include "logdesk/ErrorCount.h"
#include "logdesk/ListPlace.h"
#include "logdesk/MessageText.h"
#include "logdesk/Traffic.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using logdesk::ListRows;

TEST(MessageText, TellsCountsFiltersAndWork)
{
    const struct
    {
        logdesk::MessageState state;
        const char* text;
        const char* button;
    } cases[] = {
        {{0, 0, 0, false, false, false, 0}, "0 messages", ""},
        {{1, 1, 0, false, true, false, 0}, "1 message", ""},
        {{1234567, 1234567, 0, false, false, false, 0}, "1,234,567 messages", ""},
        {{5, 5, 1000, false, false, false, 0}, "5 messages, 1,000 cleared", ""},
        {{1200, 5000, 0, true, false, false, 0}, "1,200 of 5,000, filtered", "Remove filters"},
        {{1200, 5000, 0, true, true, true, 0.427}, "Sorting 42 %", "Cancel"},
        {{1200, 5000, 0, true, false, true, 0}, "Filtering 0 %", "Cancel"},
        {{1200, 5000, 0, true, false, false, 0, true, 0.999}, "Saving 99 %", "Cancel"},
    };
    for (const auto& [state, text, button] : cases)
    {
        EXPECT_EQ(text, logdesk::MessagesText(state));
        EXPECT_EQ(button, logdesk::MessagesButton(state));
    }
}

TEST(ErrorCount, CountsWhatHasComeSinceItWasCleared)
{
    const auto store = msgservice::MessageStore::Make();
    logdesk::ErrorCount errors;
    const auto take = [&](std::initializer_list<std::uint32_t> levels) {
        for (const std::uint32_t level : levels)
            store->Add({.level = level});
        const auto last = errors.Take(*store, store->Count());
        return logdesk::ErrorsText(errors.Count()) + (last ? " at " + std::to_string(*last) : "");
    };
    EXPECT_EQ("No errors", take({}));
    EXPECT_EQ("1 error at 1", take({3, 4, 0}));
    EXPECT_EQ("1 error", take({2, 6, 255}));
    EXPECT_EQ("3 errors at 8", take({5, 1, 4, 3}));
    errors.Clear();
    EXPECT_EQ("No errors", take({}));
    EXPECT_EQ("1 error at 11", take({3, 5}));
    errors.Restart();
    EXPECT_EQ("4 errors at 11", take({}));
    EXPECT_EQ("1,204 errors", logdesk::ErrorsText(1204));
}

class TaggedMessage : public CCacheMsgData
{
public:
    std::int32_t GetTag() const override { return tag; }
    std::int32_t tag = 0;
};

// Shows the messages with these tags, as ids from 1 on.
class TagService : public ILogMsgService
{
public:
    explicit TagService(std::vector<std::int32_t> tags) : m_tags(std::move(tags)) {}
    ILogMsgData* GetMsg(std::uint32_t id) override
    {
        if (id < 1 || id > m_tags.size())
            return nullptr;
        m_message.tag = m_tags[id - 1];
        return &m_message;
    }
    std::uint32_t FindTag(std::int32_t tag) override
    {
        const auto found = std::find(m_tags.begin(), m_tags.end(), tag);
        return found != m_tags.end() ? static_cast<std::uint32_t>(found - m_tags.begin() + 1) : kNoLogMsgId;
    }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return nullptr; }

private:
    std::vector<std::int32_t> m_tags;
    TaggedMessage m_message;
};

TEST(ListPlace, StaysWithItsMessagesWhenTheViewChanges)
{
    TagService before({1, 2, 3, 4, 5, 6});
    const auto after = [&](const ListRows& rows, std::vector<std::int32_t> tags) {
        TagService service(std::move(tags));
        return logdesk::RowsOf(logdesk::TagsOf(rows, 1, before), 1, service);
    };
    const ListRows none;
    EXPECT_EQ(none, after(none, {1, 2, 3}));
    EXPECT_EQ(none, after({9, 9, 9, 9}, {1, 2, 3})) << "rows that are not there";
    const ListRows rows = {1, 3, 2, 3}; // messages 2; 4; 3 and 4
    EXPECT_EQ((ListRows{4, 2, 2, 3}), after(rows, {6, 5, 4, 3, 2, 1}));
    EXPECT_EQ((ListRows{0, 2, 1, 2}), after(rows, {2, 3, 4}));
    EXPECT_EQ((ListRows{1, 3, 3, 3}), after(rows, {3, 2, 5, 4})) << "no longer together: that with the focus";
    EXPECT_EQ((ListRows{{}, 0, 0, 0}), after(rows, {4, 5}));
    EXPECT_EQ(none, after(rows, {1, 5, 6}));
}

class CountingSink : public msgservice::MessageSink
{
public:
    void Add(const msgservice::MessageFields& message) override
    {
        ++count;
        levels |= 1U << message.level;
        hasLines = hasLines || message.body.find("\r\n") != std::string_view::npos;
        isIndented = isIndented || message.indent > 0;
    }
    int count = 0;
    unsigned levels = 0;
    bool hasLines = false;
    bool isIndented = false;
};

// Brings one message at a time, three in all.
class ShortSource : public msgservice::MessageSource
{
public:
    State Read(msgservice::MessageSink& sink) override
    {
        EXPECT_LT(m_read, 3) << "read after its end";
        sink.Add({});
        return ++m_read < 3 ? State::More : State::Ended;
    }
    std::string TakeNotices() override { return "short"; }

private:
    int m_read = 0;
};

TEST(TrafficSource, BringsItsMessagesBesideThoseOfTheSource)
{
    using State = msgservice::MessageSource::State;
    const logdesk::TrafficSource::Clock::time_point begin;
    logdesk::TrafficSource source(std::make_unique<ShortSource>(), 1000, begin);
    const std::pair<int, int> looks[] = {
        {0, 1}, {250, 250 + 2}, {300, 300 + 3}, {300, 300 + 3}, {2000, 2003}};
    CountingSink sink;
    for (const auto& [milliseconds, count] : looks)
    {
        const State state = source.ReadAt(begin + std::chrono::milliseconds(milliseconds), sink);
        EXPECT_EQ(count, sink.count) << milliseconds;
        EXPECT_EQ(milliseconds < 300 ? State::More : State::Waiting, state) << milliseconds;
    }
    EXPECT_EQ(0b111110u, sink.levels & 0b111110u);
    EXPECT_TRUE(sink.hasLines && sink.isIndented);
    EXPECT_EQ("short", source.TakeNotices());
    EXPECT_EQ(State::More, source.ReadAt(begin + std::chrono::hours(1), sink)) << "not all at once";
}

} // namespace
