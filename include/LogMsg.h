// Log messages as the message viewer sees them: their fields, the message, the service that has them, a copy
// of one.
#pragma once

#include "QmLogApi.h"
#include "zemacore/String.h"

#include <cstdint>

// The fields of a message. The numbers are stored in saved view states and filters.
enum ILogMsgDataKind : std::int32_t
{
    kLogMsgNone = -1, // no field; as a subitem, the preview line
    kLogMsgTimestamp = 0,
    kLogMsgLevel = 1,
    kLogMsgTopic = 2,
    kLogMsgBody = 3,
    kLogMsgErrorNumber = 4,
    kLogMsgRuntimeFile = 5,
    kLogMsgLine = 6,
    kLogMsgModule = 7,
    kLogMsgSourceLine = 8,
    kLogMsgRuntimeContext = 9,
    kLogMsgSource = 10,
    kLogMsgWho = 11,
    kLogMsgSourceColumn = 12
};
constexpr std::int32_t kLogMsgKindCount = 13; // without "none"

// The name of a field as users see it: "<Empty>" for none, "Timestamp" for 0 ...; empty for any other number.
QMLOG_API const char* LogMsgDataKindText(std::int32_t kind);

// Ids grow by one from message to message. This one means that there is no message.
constexpr std::uint32_t kNoLogMsgId = 0xFFFFFFFF;

// One message, as a service or a list hands it out. Implemented by whoever has messages.
//
// Texts returned by pointer belong to the message and are valid as long as it lives. They are UTF-8 where
// they are valid UTF-8, else in the system's code page.
class ILogMsgData
{
public:
    // A number of the host's own; the viewer does not read it.
    virtual std::int32_t GetTag() const { return 0; }

    virtual const char* GetTimestamp() const = 0;

    // How deep the message is indented, at most `bound`.
    virtual std::uint32_t GetIndent(std::uint32_t bound) const = 0;

    // 0 to 5: 3 is a warning, 4 and 5 are errors.
    virtual std::uint32_t GetLevel() const = 0;
    virtual const char* GetLevelText() const = 0;

    // May hold several lines, each but the last ended by CR LF.
    virtual const char* GetBody() const = 0;
    virtual const char* GetText() const { return GetBody(); }

    // Another number of the host's own.
    virtual std::int32_t GetExtra() const { return 0; }

    virtual std::int32_t IsValid() const = 0;

    // Each puts its text into the string in place of what is there. No column shows texts 1 and 2.
    virtual void GetSource(ZEMA::String& text) const = 0;
    virtual void GetTopic(ZEMA::String& text) const = 0;
    virtual void GetText1(ZEMA::String& text) const = 0;
    virtual void GetText2(ZEMA::String& text) const = 0;
    virtual void GetWho(ZEMA::String& text) const = 0;

    virtual std::int32_t GetErrorNumber() const = 0;
    virtual std::int32_t GetLine() const = 0; // in the runtime file
    virtual std::int32_t GetSourceLine() const = 0;
    virtual std::int32_t GetSourceColumn() const = 0;
    virtual const char* GetModule() const = 0;
    virtual const char* GetRuntimeFile() const = 0;
    virtual const char* GetRuntimeContext() const = 0;

    // A new message that stays what it is whatever becomes of this one. The caller deletes it. Null if there
    // is none to have.
    virtual ILogMsgData* Clone() const { return nullptr; }

    virtual ~ILogMsgData() = default;

protected:
    ILogMsgData() = default;
    ILogMsgData(const ILogMsgData&) = default;
    ILogMsgData& operator=(const ILogMsgData&) = default;
};

// What messages are sorted by.
struct LogMsgSortKey
{
    ILogMsgDataKind field = kLogMsgNone;
    std::int32_t ascending = 1;
};

enum LogMsgFilterOperator : std::int32_t
{
    kLogMsgContain = 0, // also what an unknown number counts as
    kLogMsgNotContain = 1,
    kLogMsgNotEmpty = 2
};

// Which messages are left in. Without a field it leaves in all.
struct LogMsgFilter
{
    ILogMsgDataKind field = kLogMsgNone;
    LogMsgFilterOperator operation = kLogMsgContain;
    ZEMA::String value;
    std::int32_t matchCase = 0;
};

// What a viewer keeps of the messages it was told of. A host that makes its own implements Add and Get; the
// viewer calls no other operation and deletes the list when it goes.
class ILogMsgList
{
public:
    virtual ~ILogMsgList() = default;

    // How many messages the list has, and for how many it has room without taking memory.
    virtual std::uint32_t GetCount() const { return 0; }
    virtual std::uint32_t GetCapacity() const { return 0; }
    virtual void Reserve(std::uint32_t) {}

    // The ids of the first and the last message; kNoLogMsgId if there is none.
    virtual std::uint32_t GetFirstId() const { return kNoLogMsgId; }
    virtual std::uint32_t GetLastId() const { return kNoLogMsgId; }

    virtual bool Contains(std::uint32_t id) { return Get(id) != nullptr; }
    virtual bool IsEmpty() const { return GetCount() == 0; }

    // Drops messages: the one with the id, those before it, all.
    virtual void Remove(std::uint32_t) {}
    virtual void RemoveBefore(std::uint32_t) {}
    virtual void RemoveAll() {}

    // Takes a clone of the newest message. Answers 1 if the list owns it from now on, 0 if the caller is to
    // delete it.
    virtual std::int32_t Add(ILogMsgData* message) = 0;

    // The message, which stays the list's; null if it has none with this id.
    virtual ILogMsgData* Get(std::uint32_t id) = 0;

protected:
    ILogMsgList() = default;
    ILogMsgList(const ILogMsgList&) = default;
    ILogMsgList& operator=(const ILogMsgList&) = default;
};

// The host's messages. A viewer gets it by ILogViewer::SetLogMsgService and does not own it.
//
// To write a service of your own, implement GetMsg and CreateMsgList:
// - Number the messages to be seen without gaps, in the order in which they are to be seen, and answer for
//   them by GetMsg. What it answers belongs to the service and has to live at least until the messages
//   change.
// - For each new message at the end call the viewer's AddMsg(id, message). When the view becomes another one,
//   call SetMsgIdRange(first, last), and after it AddMsg(last, null) if there are messages: the viewer asks
//   for its list in AddMsg only. A last id below the first tells that there are none. Begin with one of the
//   two.
// - CreateMsgList makes the list of a viewer, from which it draws. The list may take clones of messages by
//   Add, or know the messages by itself and refuse them.
// - Sorting, filtering and leaving out duplicates are the service's work: viewers and their dialogs read and
//   write the descriptions and call Apply. A service that needs time for it answers true from IsBusy until
//   it has announced the new view; viewers send no request meanwhile. A service that does none of this leaves
//   these operations as they are here: they answer that nothing is sorted or filtered.
// - All calls in both directions are made on the thread of the viewer's window.
class ILogMsgService
{
public:
    virtual ~ILogMsgService() = default;

    // The message, which stays the service's; null for an unknown id.
    virtual ILogMsgData* GetMsg(std::uint32_t id) = 0;

    // The first `count` sort keys, 1 or 3, the most important first. To set one leaves the others as they
    // are.
    virtual void GetSortKeys(LogMsgSortKey* /*keys*/, std::int32_t /*count*/) {}
    virtual void SetSortKeys(const LogMsgSortKey* /*keys*/, std::int32_t /*count*/) {}

    // Three filters; a message is left in if all of them leave it in.
    virtual void GetFilters(LogMsgFilter* /*filters*/, std::int32_t /*count*/) {}
    virtual void SetFilters(const LogMsgFilter* /*filters*/, std::int32_t /*count*/) {}

    // 0 leaves out a message that says the same as the one before it.
    virtual void GetShowDuplicate(std::int32_t& show) { show = 1; }
    virtual void SetShowDuplicate(std::int32_t /*show*/) {}

    // Sorts and filters again after the descriptions have changed.
    virtual void Apply() {}

    // True while the service can take no requests.
    virtual bool IsBusy() { return false; }

    // Shows the messages of another file. What cannot be read is the service's to tell.
    virtual void OpenFile(const char* /*path*/, std::int32_t /*readOnly*/) {}

    // Maps what ILogMsgData::GetTag answers to the message's present id; kNoLogMsgId if it is not in the
    // view.
    virtual std::uint32_t FindTag(std::int32_t) { return kNoLogMsgId; }

    // Leaves out the messages that arrived before the one with this tag, in this view and all later ones; 0
    // takes all back in. The new view is announced as after Apply.
    virtual void ClearBefore(std::int32_t) {}

    // How many messages the view has.
    virtual std::uint32_t GetMsgCount() { return 0; }

    // The file that is shown: its path (empty if there is none), whether it is being followed, whether some
    // of it could not be read, and whether it is open for reading only.
    virtual void GetFileInfo(ZEMA::String& path, bool& followed, bool& damaged, bool& readOnly)
    {
        path = "";
        followed = damaged = readOnly = false;
    }

    // A list for one viewer, which deletes it; null if the service makes none. The viewer passes 500 and 0.
    // `reserve`  how many messages to make room for at first; no limit
    // `flags`    0
    virtual ILogMsgList* CreateMsgList(std::int32_t reserve, std::int32_t flags) = 0;

    // Not 0 while an action, such as an export, goes through the messages by their ids: no other view is
    // announced meanwhile, and messages come at the end only. Each call with 1 is followed by one with 0.
    virtual void HoldView(std::int32_t /*hold*/) {}

    // The first id from `id` on, `end` at most, of a message that may hold the text in one of its fields,
    // byte by byte, or with `matchCase` 0 with ASCII letters in either case. A search looks at no message
    // before it. By default `id`: nothing is known. It pays for a service that has its texts at hand, and one
    // that overrides it answers for all that its messages show.
    virtual std::uint32_t SkipWithout(const char* /*text*/, std::int32_t /*matchCase*/, std::uint32_t id,
                                      std::uint32_t /*end*/)
    {
        return id;
    }

protected:
    ILogMsgService() = default;
    ILogMsgService(const ILogMsgService&) = default;
    ILogMsgService& operator=(const ILogMsgService&) = default;
};

// The copy of one message. It cannot be cloned. A host whose messages are texts of its own can derive them
// from it and fill the fields.
class QMLOG_API CCacheMsgData : public ILogMsgData
{
public:
    CCacheMsgData();
    CCacheMsgData(const CCacheMsgData&) = default;
    CCacheMsgData& operator=(const CCacheMsgData&) = default;
    ~CCacheMsgData() override;

    // Copies every field. An exception, of the message's or for want of memory, leaves part of them copied.
    CCacheMsgData& operator=(const ILogMsgData& message);

    const char* GetTimestamp() const override;
    std::uint32_t GetIndent(std::uint32_t bound) const override; // as copied, whatever the bound
    std::uint32_t GetLevel() const override;
    const char* GetLevelText() const override;
    const char* GetBody() const override;
    std::int32_t IsValid() const override; // 1
    void GetSource(ZEMA::String& text) const override;
    void GetTopic(ZEMA::String& text) const override;
    void GetText1(ZEMA::String& text) const override;
    void GetText2(ZEMA::String& text) const override;
    void GetWho(ZEMA::String& text) const override;
    std::int32_t GetErrorNumber() const override;
    std::int32_t GetLine() const override;
    std::int32_t GetSourceLine() const override;
    std::int32_t GetSourceColumn() const override;
    const char* GetModule() const override;
    const char* GetRuntimeFile() const override;
    const char* GetRuntimeContext() const override;

protected:
    ZEMA::String m_timestamp;
    std::uint32_t m_indent = 0;
    std::uint32_t m_level = 0;
    ZEMA::String m_levelText;
    ZEMA::String m_body;
    ZEMA::String m_source;
    ZEMA::String m_topic;
    ZEMA::String m_text1;
    ZEMA::String m_text2;
    ZEMA::String m_who;
    std::int32_t m_errorNumber = 0;
    std::int32_t m_line = 0;
    std::int32_t m_sourceLine = 0;
    std::int32_t m_sourceColumn = 0;
    ZEMA::String m_module;
    ZEMA::String m_runtimeFile;
    ZEMA::String m_runtimeContext;
};
