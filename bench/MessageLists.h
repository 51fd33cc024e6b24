// What the benchmarks of the message viewer compare: the viewer on a service that costs nothing, and a plain
// report control that is asked for the same texts.
#pragma once

#include "ReportCtrlLog.h"
#include "ReportLists.h"

#include <string>
#include <vector>

namespace bench
{

// Ready texts; the body has one line or up to four.
class ReadyMessage : public ILogMsgData
{
public:
    explicit ReadyMessage(int number);

    const char* GetTimestamp() const override { return m_timestamp.c_str(); }
    std::uint32_t GetIndent(std::uint32_t) const override { return 0; }
    std::uint32_t GetLevel() const override { return m_level; }
    const char* GetLevelText() const override { return "Information"; }
    const char* GetBody() const override { return m_body.c_str(); }
    std::int32_t IsValid() const override { return 1; }
    void GetSource(ZEMA::String&) const override {}
    void GetTopic(ZEMA::String&) const override {}
    void GetText1(ZEMA::String&) const override {}
    void GetText2(ZEMA::String&) const override {}
    void GetWho(ZEMA::String&) const override {}
    std::int32_t GetErrorNumber() const override { return 0; }
    std::int32_t GetLine() const override { return 0; }
    std::int32_t GetSourceLine() const override { return 0; }
    std::int32_t GetSourceColumn() const override { return 0; }
    const char* GetModule() const override { return ""; }
    const char* GetRuntimeFile() const override { return ""; }
    const char* GetRuntimeContext() const override { return ""; }

    int BodyLines() const { return m_lines; }

private:
    std::string m_timestamp;
    std::string m_body;
    int m_lines;
    std::uint32_t m_level;
};

// Its messages are the same thousand again and again.
class ReadyService : public ILogMsgService
{
public:
    ReadyService();

    ReadyMessage& Message(std::uint32_t id) { return m_messages[id % m_messages.size()]; }
    ILogMsgData* GetMsg(std::uint32_t id) override { return &Message(id); }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override;

private:
    std::vector<ReadyMessage> m_messages;
};

// What is shown of messages.
enum class Shown
{
    Lines,
    LinesAndPreviews,
    Previews
};

class LogList : public CReportCtrlLog
{
public:
    // With messages 1 to `count`; it does not follow.
    LogList(Frame& frame, ReadyService& service, int count, Shown shown);
    ~LogList() override;

    // The newest message is `id` from now on.
    void Tell(std::uint32_t id);
    void Tick();
};

// The texts of the same columns, and the bodies as previews, without images and colours.
class PlainList : public CReportCtrl
{
public:
    PlainList(Frame& frame, ReadyService& service, LogList& like);

protected:
    __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification) override;

private:
    ReadyService& m_service;
    int m_lineHeight; // of a preview
};

} // namespace bench
