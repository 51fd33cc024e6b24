#include "LogMsg.h"

#include <array>
#include <limits>

const char* LogMsgDataKindText(std::int32_t kind)
{
    static constexpr std::array<const char*, 1 + kLogMsgKindCount> kTexts = {
        "<Empty>", "Timestamp", "Level",       "Topic",           "Body",   "Error Number", "Runtime File",
        "Line",    "Module",    "Source Line", "Runtime Context", "Source", "Who",          "Source Column"};
    return kind >= kLogMsgNone && kind < kLogMsgKindCount ? kTexts[static_cast<std::size_t>(kind + 1)] : "";
}

CCacheMsgData::CCacheMsgData() = default;
CCacheMsgData::~CCacheMsgData() = default;

// Hosts may rely on the order of the calls.
CCacheMsgData& CCacheMsgData::operator=(const ILogMsgData& message)
{
    m_timestamp = message.GetTimestamp();
    m_indent = message.GetIndent(std::numeric_limits<std::uint32_t>::max());
    m_level = message.GetLevel();
    m_levelText = message.GetLevelText();
    m_body = message.GetBody();

    ZEMA::String text;
    message.GetSource(text);
    m_source = text;
    message.GetTopic(text);
    m_topic = text;
    message.GetText1(text);
    m_text1 = text;
    message.GetText2(text);
    m_text2 = text;
    message.GetWho(text);
    m_who = text;

    m_errorNumber = message.GetErrorNumber();
    m_line = message.GetLine();
    m_sourceLine = message.GetSourceLine();
    m_sourceColumn = message.GetSourceColumn();
    m_module = message.GetModule();
    m_runtimeFile = message.GetRuntimeFile();
    m_runtimeContext = message.GetRuntimeContext();
    return *this;
}

const char* CCacheMsgData::GetTimestamp() const
{
    return m_timestamp.c_str();
}

std::uint32_t CCacheMsgData::GetIndent(std::uint32_t) const
{
    return m_indent;
}

std::uint32_t CCacheMsgData::GetLevel() const
{
    return m_level;
}

const char* CCacheMsgData::GetLevelText() const
{
    return m_levelText.c_str();
}

const char* CCacheMsgData::GetBody() const
{
    return m_body.c_str();
}

std::int32_t CCacheMsgData::IsValid() const
{
    return 1;
}

void CCacheMsgData::GetSource(ZEMA::String& text) const
{
    text = m_source;
}

void CCacheMsgData::GetTopic(ZEMA::String& text) const
{
    text = m_topic;
}

void CCacheMsgData::GetText1(ZEMA::String& text) const
{
    text = m_text1;
}

void CCacheMsgData::GetText2(ZEMA::String& text) const
{
    text = m_text2;
}

void CCacheMsgData::GetWho(ZEMA::String& text) const
{
    text = m_who;
}

std::int32_t CCacheMsgData::GetErrorNumber() const
{
    return m_errorNumber;
}

std::int32_t CCacheMsgData::GetLine() const
{
    return m_line;
}

std::int32_t CCacheMsgData::GetSourceLine() const
{
    return m_sourceLine;
}

std::int32_t CCacheMsgData::GetSourceColumn() const
{
    return m_sourceColumn;
}

const char* CCacheMsgData::GetModule() const
{
    return m_module.c_str();
}

const char* CCacheMsgData::GetRuntimeFile() const
{
    return m_runtimeFile.c_str();
}

const char* CCacheMsgData::GetRuntimeContext() const
{
    return m_runtimeContext.c_str();
}
