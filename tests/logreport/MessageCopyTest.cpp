// The copy of a message, the one-message cache, names and levels.
#include "LogMsg.h"
#include "LogViewer.h"
#include "QmLogState.h"
#include "logreport/model/LevelMap.h"
#include "logreport/model/MsgCache.h"
#include "tests/support/ToldMessage.h"

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

    const ILogMsgData& read = copy;
    EXPECT_EQ(
        "timestamp source topic text 1 text 2 who level text body body module runtime file  -23 24 25 26 0 "
        "1 21 21 22",
        ToldMessage(read));
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

// From the place `first` on, one after the other.
template <typename... Members>
void ExpectSlots(std::ptrdiff_t first, bool afterDestructor, Members... members)
{
    for (const std::ptrdiff_t slot : {SlotOf(members, afterDestructor)...})
        EXPECT_EQ(first++, slot);
}

TEST(MessageInterfaces, KeepTheirSlots)
{
    using Data = ILogMsgData;
    ExpectSlots(0, false, &Data::GetTag, &Data::GetTimestamp, &Data::GetIndent, &Data::GetLevel,
                &Data::GetLevelText, &Data::GetBody, &Data::GetText, &Data::GetExtra, &Data::IsValid,
                &Data::GetSource, &Data::GetTopic, &Data::GetText1, &Data::GetText2, &Data::GetWho,
                &Data::GetErrorNumber, &Data::GetLine, &Data::GetSourceLine, &Data::GetSourceColumn,
                &Data::GetModule, &Data::GetRuntimeFile, &Data::GetRuntimeContext, &Data::Clone);
    using Service = ILogMsgService;
    ExpectSlots(1, true, &Service::GetMsg, &Service::GetSortKeys, &Service::SetSortKeys, &Service::GetFilters,
                &Service::SetFilters, &Service::GetShowDuplicate, &Service::SetShowDuplicate, &Service::Apply,
                &Service::IsBusy, &Service::OpenFile);
    ExpectSlots(14, true, &Service::GetFileInfo, &Service::CreateMsgList);
    ExpectSlots(11, true, &ILogMsgList::Add, &ILogMsgList::Get);
    using Viewer = ILogViewer;
    ExpectSlots(1, true, &Viewer::SetLogMsgService, &Viewer::SetViewerData, &Viewer::GetMaxLogSize,
                &Viewer::OnViewerIdle, &Viewer::AddMsg, &Viewer::SetMsgIdRange, &Viewer::Present,
                &Viewer::IsViewerReady, &Viewer::GetWnd, &Viewer::ReleaseViewerData);
    using State = IConfigState;
    ExpectSlots(1, true, &State::ReadFromProcess, &State::WriteToProcess, &State::ReadFromProfile,
                &State::WriteToProfile, &State::ReadFromCommandLine, &State::Hook6, &State::Hook7,
                &State::Load, &State::LoadFromCommandLine, &State::Save);
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
