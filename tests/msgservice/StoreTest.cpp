// The store against the plain messages that were put into it.
#include "msgservice/store/StoredMessage.h"
#include "tests/support/FailingMemory.h"
#include "tests/support/ToldMessage.h"

#include <deque>
#include <limits>
#include <random>
#include <thread>

#include <gtest/gtest.h>

namespace
{

using namespace msgservice;

// Texts that outlive the views of the message.
struct OwnedMessage
{
    std::deque<std::string> texts;
    MessageFields fields;
};

constexpr std::string_view MessageFields::*kTextFields[] = {
    &MessageFields::timestamp, &MessageFields::levelText,   &MessageFields::topic,
    &MessageFields::body,      &MessageFields::source,      &MessageFields::who,
    &MessageFields::module,    &MessageFields::runtimeFile, &MessageFields::runtimeContext,
    &MessageFields::text1,     &MessageFields::text2};
constexpr std::int32_t MessageFields::*kNumberFields[] = {&MessageFields::errorNumber, &MessageFields::line,
                                                          &MessageFields::sourceLine,
                                                          &MessageFields::sourceColumn};

std::unique_ptr<OwnedMessage> RandomMessage(std::mt19937& random)
{
    auto message = std::make_unique<OwnedMessage>();
    const auto below = [&](std::uint32_t bound) { return static_cast<std::uint32_t>(random() % bound); };
    const std::int32_t edges[] = {0, 1, -1, 63, 64, -64, -65, INT32_MAX, INT32_MIN};
    for (const auto field : kTextFields)
    {
        const std::size_t length = below(20) == 0 ? below(3'000'000) % (1u << below(22)) : below(12);
        message->texts.emplace_back(length, static_cast<char>('a' + below(3)));
        message->fields.*field = message->texts.back();
    }
    for (const auto field : kNumberFields)
        message->fields.*field = below(3) == 0 ? static_cast<std::int32_t>(random()) : edges[below(9)];
    message->fields.level = below(4) == 0 ? below(0xFFFFFFFF) : below(6);
    message->fields.indent = below(3) == 0 ? below(0xFFFFFFFF) : below(3);
    const Time times[] = {kNoTime, 0, -1, std::numeric_limits<Time>::max(), kNoTime + 1};
    message->fields.time = times[below(5)];
    message->fields.countsSourceLine = below(2) == 0;
    return message;
}

void ExpectSame(const MessageFields& wanted, const MessageFields& got)
{
    for (const auto field : kTextFields)
    {
        EXPECT_TRUE(wanted.*field == got.*field); // not EXPECT_EQ, which would print megabytes
        EXPECT_EQ('\0', (got.*field).data()[(got.*field).size()]);
    }
    for (const auto field : kNumberFields)
        EXPECT_EQ(wanted.*field, got.*field);
    EXPECT_EQ(wanted.level, got.level);
    EXPECT_EQ(wanted.indent, got.indent);
    EXPECT_EQ(wanted.time, got.time);
    EXPECT_EQ(wanted.countsSourceLine, got.countsSourceLine);
}

TEST(MessageStore, GivesBackEveryFieldOfEveryMessage)
{
    std::mt19937 random(5);
    const auto store = MessageStore::Make();
    std::vector<std::unique_ptr<OwnedMessage>> added;
    for (int i = 0; i < 1500; ++i)
    {
        added.push_back(RandomMessage(random));
        store->Add(added.back()->fields);
    }
    ASSERT_EQ(added.size(), store->Count());
    for (std::uint32_t i = 0; i < store->Count(); ++i)
    {
        const MessageFields& fields = added[i]->fields;
        const char* const bytes = store->BytesAt(i);
        ExpectSame(fields, FieldsOf(*store, i));
        EXPECT_EQ(fields.time, DecodeTime(bytes));
        EXPECT_EQ(fields.level, DecodeLevel(bytes));
        EXPECT_TRUE(fields.levelText == store->Texts().Text(DecodeText(bytes, kLevelText)));
        EXPECT_TRUE(fields.module == store->Texts().Text(DecodeText(bytes, kModule)));
        EXPECT_TRUE(fields.text2 == store->Texts().Text(DecodeText(bytes, kText2)));
        const std::string_view body = DecodeTexts(bytes).body;
        const bool hasNext = i + 1 < store->Count() && store->BytesAt(i + 1) == body.data() + body.size() + 1;
        EXPECT_EQ(hasNext ? store->PieceEnd(i + 1) : i + 1, store->PieceEnd(i));
    }
}

// What a viewer is handed says the same, and a clone says it after the store's owner has let go of it.
TEST(MessageStore, AMessageTellsItsFieldsAndItsCloneOutlivesTheOwner)
{
    const std::string_view texts[] = {"10:00",  "WARN", "topic",   "a\r\nb", "source", "who",
                                      "module", "file", "context", "one",    "two"};
    MessageFields fields;
    for (std::size_t i = 0; i < std::size(texts); ++i)
        fields.*kTextFields[i] = texts[i];
    for (int i = 0; i < 4; ++i)
        fields.*kNumberFields[i] = i - 4;
    fields.level = 3;
    fields.indent = 70000;
    auto store = MessageStore::Make();
    store->Add({});
    store->Add(fields);

    std::unique_ptr<ILogMsgData> clone(StoredMessage(*store, 1).Clone());
    store.reset();
    std::unique_ptr<ILogMsgData> again(clone->Clone());
    clone.reset();

    EXPECT_EQ("10:00 source topic one two who WARN a\r\nb a\r\nb module file context -4 -3 -2 -1 2 1 65535 "
              "70000 3",
              ToldMessage(*again));
}

TEST(MessageStore, AnotherThreadReadsWhatItSeesCounted)
{
    const auto store = MessageStore::Make();
    constexpr std::uint32_t kCount = 20000;
    std::thread adding([&] {
        for (std::uint32_t i = 0; i < kCount; ++i)
        {
            const std::string number = std::to_string(i);
            MessageFields fields;
            fields.body = number;
            fields.topic = number;
            store->Add(fields);
        }
    });
    for (std::uint32_t count = 0; count < kCount;)
    {
        count = store->Count();
        if (count == 0)
            continue;
        const MessageFields last = FieldsOf(*store, count - 1);
        EXPECT_EQ(std::to_string(count - 1), last.body);
        EXPECT_EQ(last.body, last.topic);
    }
    adding.join();
}

// Between two pieces of the store's memory a message takes none of the heap.
TEST(MessageStore, AMessageOfKnownTextsTakesNoHeapMemory)
{
    const auto store = MessageStore::Make();
    MessageFields fields;
    fields.timestamp = "2026-11-22 10:00:00";
    fields.topic = "topic";
    fields.levelText = "INFO";
    fields.body = "a body that is too long for a short string's own room";
    store->Add(fields);
    {
        const FailingMemory failing(0);
        for (int i = 0; i < 200; ++i)
            store->Add(fields);
    }
    EXPECT_EQ(201u, store->Count());
}

TEST(MessageStore, WithoutMemoryAMessageIsNotAdded)
{
    const std::string large(3'000'000, 'x');
    ExpectAllOrNothing(
        [] {
            auto store = MessageStore::Make();
            store->Add({});
            return store;
        },
        [&](MessageStore& store) {
            MessageFields fields;
            fields.topic = "new topic";
            fields.who = "new";
            fields.body = large;
            try
            {
                store.Add(fields);
                return FieldsOf(store, store.Count() - 1).topic == fields.topic;
            }
            catch (const std::bad_alloc&)
            {
                return false;
            }
        },
        [](const MessageStore& store) { return std::to_string(store.Count()); });
}

} // namespace
