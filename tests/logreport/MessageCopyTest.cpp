// The copy of a message, the one-message cache, names and levels.
#include "LogMsg.h"
#include "LogViewer.h"
#include "QmLogState.h"
#include "logreport/model/LevelMap.h"
#include "logreport/model/MsgCache.h"

#include <cstring>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace
{

// Answers a field of its own to every question and notes the questions.
class AskedMessage : public ILogMsgData
{
public:
    explicit AskedMessage(const std::string& body = "body") : m_body(body) {}

    const char* GetTimestamp() const override { return Note("timestamp"); }
    std::uint32_t GetIndent(std::uint32_t) const override { return Number("indent", 21); }
    std::uint32_t GetLevel() const override { return Number("level", 22); }
    const char* GetLevelText() const override { return Note("level text"); }
    const char* GetBody() const override
    {
        if (failing)
            throw std::runtime_error("body");
        Note("body");
        return m_body.c_str();
    }
    std::int32_t IsValid() const override { return 0; }
    void GetSource(ZEMA::String& text) const override { text = Note("source"); }
    void GetTopic(ZEMA::String& text) const override { text = Note("topic"); }
    void GetText1(ZEMA::String& text) const override { text = Note("text 1"); }
    void GetText2(ZEMA::String& text) const override { text = Note("text 2"); }
    void GetWho(ZEMA::String& text) const override { text = Note("who"); }
    std::int32_t GetErrorNumber() const override { return Number("error number", -23); }
    std::int32_t GetLine() const override { return Number("line", 24); }
    std::int32_t GetSourceLine() const override { return Number("source line", 25); }
    std::int32_t GetSourceColumn() const override { return Number("source column", 26); }
    const char* GetModule() const override { return Note("module"); }
    const char* GetRuntimeFile() const override { return Note("runtime file"); }
    const char* GetRuntimeContext() const override { return nullptr; } // as the empty text

    mutable std::string asked;
    bool failing = false;

private:
    const char* Note(const char* field) const
    {
        asked += std::string(asked.empty() ? "" : ", ") + field;
        return field;
    }
    template <typename Value> Value Number(const char* field, Value value) const
    {
        Note(field);
        return value;
    }

    std::string m_body;
};

TEST(MessageCopy, AsksForEachFieldOnceInTheFixedOrderAndKeepsIt)
{
    const AskedMessage message;
    CCacheMsgData copy;
    EXPECT_EQ(std::string(""), copy.GetBody());
    copy = message;
    EXPECT_EQ(
        "timestamp, indent, level, level text, body, source, topic, text 1, text 2, who, error number, line, "
        "source line, source column, module, runtime file",
        message.asked);

    AskedMessage same; // asked the same questions again, now of the copy
    const ILogMsgData& read = copy;
    EXPECT_STREQ("timestamp", read.GetTimestamp());
    EXPECT_EQ(21u, read.GetIndent(3));
    EXPECT_EQ(22u, read.GetLevel());
    EXPECT_STREQ("level text", read.GetLevelText());
    EXPECT_STREQ("body", read.GetBody());
    EXPECT_STREQ("body", read.GetText());
    EXPECT_EQ(1, read.IsValid());
    const std::pair<void (ILogMsgData::*)(ZEMA::String&) const, const char*> texts[] = {
        {&ILogMsgData::GetSource, "source"},
        {&ILogMsgData::GetTopic, "topic"},
        {&ILogMsgData::GetText1, "text 1"},
        {&ILogMsgData::GetText2, "text 2"},
        {&ILogMsgData::GetWho, "who"}};
    for (const auto& [get, wanted] : texts)
    {
        ZEMA::String text("before");
        (read.*get)(text);
        EXPECT_STREQ(wanted, text.c_str());
    }
    EXPECT_EQ(-23, read.GetErrorNumber());
    EXPECT_EQ(24, read.GetLine());
    EXPECT_EQ(25, read.GetSourceLine());
    EXPECT_EQ(26, read.GetSourceColumn());
    EXPECT_STREQ("module", read.GetModule());
    EXPECT_STREQ("runtime file", read.GetRuntimeFile());
    EXPECT_STREQ("", read.GetRuntimeContext());
    EXPECT_EQ(0, read.GetTag());
    EXPECT_EQ(0, read.GetExtra());
    EXPECT_EQ(nullptr, read.Clone());
}

class CountingList : public ILogMsgList
{
public:
    std::int32_t Add(ILogMsgData*) override { return 0; }
    ILogMsgData* Get(std::uint32_t id) override
    {
        ++asked;
        const auto found = messages.find(id);
        return found != messages.end() ? &found->second : nullptr;
    }

    std::map<std::uint32_t, AskedMessage> messages;
    int asked = 0;
};

class DirectService : public ILogMsgService
{
public:
    ILogMsgData* GetMsg(std::uint32_t id) override { return id == 7 ? &message : nullptr; }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return nullptr; }

    AskedMessage message;
};

TEST(MessageCache, AnswersTheListsMessageFirstAndItsCopyFromThenOn)
{
    logreport::MsgCache cache;
    CountingList list;
    DirectService service;
    DirectService otherService;
    list.messages.emplace(1, AskedMessage("one"));
    list.messages.emplace(2, AskedMessage("two"));
    const logreport::MsgOrigin origin{&service, &list};

    EXPECT_EQ(&list.messages.at(1), cache.Find(1, origin));
    const ILogMsgData* const copy = cache.Find(1, origin);
    EXPECT_NE(&list.messages.at(1), copy);
    EXPECT_STREQ("one", copy->GetBody());
    EXPECT_EQ(1, list.asked);

    // The copy answers whatever the viewer's mode; an unknown id leaves it alone.
    EXPECT_EQ(copy, cache.Find(1, {&service, nullptr, true, true}));
    EXPECT_EQ(nullptr, cache.Find(3, origin));
    EXPECT_EQ(copy, cache.Find(1, origin));

    // The same id of another service is another message.
    CountingList otherList;
    otherList.messages.emplace(1, AskedMessage("other"));
    EXPECT_STREQ("other", cache.Find(1, {&otherService, &otherList})->GetBody());
    EXPECT_STREQ("one", cache.Find(1, origin)->GetBody());

    EXPECT_EQ(&list.messages.at(2), cache.Find(2, origin));
    EXPECT_STREQ("two", cache.Find(2, origin)->GetBody());
    list.messages.at(1).failing = true;
    EXPECT_THROW(cache.Find(1, origin), std::runtime_error);
    EXPECT_EQ(&list.messages.at(2), cache.Find(2, origin)) << "the copy is no longer whole";
    EXPECT_STREQ("two", cache.Find(2, origin)->GetBody());
    cache.Flush();
    EXPECT_EQ(&list.messages.at(2), cache.Find(2, origin));
}

TEST(MessageCache, AsksTheServiceInDirectModeAndNobodyWhileMessagesChange)
{
    logreport::MsgCache cache;
    CountingList list;
    DirectService service;
    list.messages.emplace(7, AskedMessage());
    EXPECT_EQ(&service.message, cache.Find(7, {&service, &list, true, false}));
    EXPECT_EQ(&service.message, cache.Find(7, {&service, &list, true, true})) << "it keeps no copy";
    EXPECT_EQ(nullptr, cache.Find(8, {&service, &list, true, false}));
    EXPECT_EQ(nullptr, cache.Find(7, {nullptr, &list, true, false}));
    EXPECT_EQ(nullptr, cache.Find(7, {&service, &list, false, true}));
    EXPECT_EQ(nullptr, cache.Find(7, {&service, nullptr, false, false}));
    EXPECT_EQ(0, list.asked);
}

TEST(MessageFields, HaveTheirNamesAndLevelsTheirImages)
{
    const char* const names[] = {"",       "<Empty>", "Timestamp",     "Level",
                                 "Topic",  "Body",    "Error Number",  "Runtime File",
                                 "Line",   "Module",  "Source Line",   "Runtime Context",
                                 "Source", "Who",     "Source Column", "",
                                 ""};
    for (std::int32_t kind = -2; kind <= 14; ++kind)
        EXPECT_STREQ(names[kind + 2], LogMsgDataKindText(kind)) << kind;

    const std::string wanted = "0- 0- 1- 2w 3e 4e 0- 0-";
    std::string told;
    for (const std::uint32_t level : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 0xFFFFFFFFu})
        told += (told.empty() ? "" : " ") + std::to_string(logreport::LevelImage(level)) +
                (logreport::IsWarning(level) ? "w"
                 : logreport::IsError(level) ? "e"
                                             : "-");
    EXPECT_EQ(wanted, told);
}

// The place of a virtual operation among those of its class, in the order of declaration; compilers for this
// ABI keep it in pointers to members. A destructor has two places in a table, and counts once if it comes
// first.
template <typename Member> std::ptrdiff_t SlotOf(Member member, bool afterDestructor)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof(offset));
    return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) - (afterDestructor ? 1 : 0);
}

TEST(MessageInterfaces, KeepTheirSlots)
{
    using Data = ILogMsgData;
    const std::ptrdiff_t data[] = {SlotOf(&Data::GetTag, false),
                                   SlotOf(&Data::GetTimestamp, false),
                                   SlotOf(&Data::GetIndent, false),
                                   SlotOf(&Data::GetLevel, false),
                                   SlotOf(&Data::GetLevelText, false),
                                   SlotOf(&Data::GetBody, false),
                                   SlotOf(&Data::GetText, false),
                                   SlotOf(&Data::GetExtra, false),
                                   SlotOf(&Data::IsValid, false),
                                   SlotOf(&Data::GetSource, false),
                                   SlotOf(&Data::GetTopic, false),
                                   SlotOf(&Data::GetText1, false),
                                   SlotOf(&Data::GetText2, false),
                                   SlotOf(&Data::GetWho, false),
                                   SlotOf(&Data::GetErrorNumber, false),
                                   SlotOf(&Data::GetLine, false),
                                   SlotOf(&Data::GetSourceLine, false),
                                   SlotOf(&Data::GetSourceColumn, false),
                                   SlotOf(&Data::GetModule, false),
                                   SlotOf(&Data::GetRuntimeFile, false),
                                   SlotOf(&Data::GetRuntimeContext, false),
                                   SlotOf(&Data::Clone, false)};
    for (std::ptrdiff_t slot = 0; slot < std::ssize(data); ++slot)
        EXPECT_EQ(slot, data[slot]);

    using Service = ILogMsgService;
    const std::ptrdiff_t service[] = {
        SlotOf(&Service::GetMsg, true),           SlotOf(&Service::GetSortKeys, true),
        SlotOf(&Service::SetSortKeys, true),      SlotOf(&Service::GetFilters, true),
        SlotOf(&Service::SetFilters, true),       SlotOf(&Service::GetShowDuplicate, true),
        SlotOf(&Service::SetShowDuplicate, true), SlotOf(&Service::Apply, true),
        SlotOf(&Service::IsBusy, true),           SlotOf(&Service::OpenFile, true)};
    for (std::ptrdiff_t slot = 0; slot < std::ssize(service); ++slot)
        EXPECT_EQ(slot + 1, service[slot]);
    EXPECT_EQ(14, SlotOf(&Service::GetFileInfo, true));
    EXPECT_EQ(15, SlotOf(&Service::CreateMsgList, true));
    EXPECT_EQ(11, SlotOf(&ILogMsgList::Add, true));
    EXPECT_EQ(12, SlotOf(&ILogMsgList::Get, true));

    using Viewer = ILogViewer;
    const std::ptrdiff_t viewer[] = {
        SlotOf(&Viewer::SetLogMsgService, true), SlotOf(&Viewer::SetViewerData, true),
        SlotOf(&Viewer::GetMaxLogSize, true),    SlotOf(&Viewer::OnViewerIdle, true),
        SlotOf(&Viewer::AddMsg, true),           SlotOf(&Viewer::SetMsgIdRange, true),
        SlotOf(&Viewer::Present, true),          SlotOf(&Viewer::IsViewerReady, true),
        SlotOf(&Viewer::GetWnd, true),           SlotOf(&Viewer::ReleaseViewerData, true)};
    for (std::ptrdiff_t slot = 0; slot < std::ssize(viewer); ++slot)
        EXPECT_EQ(slot + 1, viewer[slot]);

    using State = IConfigState;
    const std::ptrdiff_t state[] = {SlotOf(&State::ReadFromProcess, true),
                                    SlotOf(&State::WriteToProcess, true),
                                    SlotOf(&State::ReadFromProfile, true),
                                    SlotOf(&State::WriteToProfile, true),
                                    SlotOf(&State::ReadFromCommandLine, true),
                                    SlotOf(&State::Hook6, true),
                                    SlotOf(&State::Hook7, true),
                                    SlotOf(&State::Load, true),
                                    SlotOf(&State::LoadFromCommandLine, true),
                                    SlotOf(&State::Save, true)};
    for (std::ptrdiff_t slot = 0; slot < std::ssize(state); ++slot)
        EXPECT_EQ(slot + 1, state[slot]);
}

// What a viewer's host gets without doing anything.
class PlainViewer : public ILogViewer
{
public:
    void SetLogMsgService(ILogMsgService*) override {}
    void AddMsg(std::uint32_t, ILogMsgData*) override {}
    void SetMsgIdRange(std::uint32_t, std::uint32_t) override {}
    void Present(std::uint32_t) override {}
    CWnd* GetWnd() override { return nullptr; }
};

TEST(MessageInterfaces, LeaveToHostsWhatTheyNeedNot)
{
    struct Released : ILogViewerData
    {
        void Release() override { ++times; }
        int times = 0;
    } data;
    PlainViewer viewer;
    viewer.ReleaseViewerData();
    viewer.SetViewerData(&data);
    viewer.ReleaseViewerData();
    viewer.ReleaseViewerData();
    EXPECT_EQ(1, data.times);
    EXPECT_EQ(-1, viewer.GetMaxLogSize());
    EXPECT_TRUE(viewer.IsViewerReady());
    EXPECT_EQ(&logreport::MsgCache::Shared(), &logreport::MsgCache::Shared());
}

} // namespace
