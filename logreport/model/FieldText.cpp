#include "logreport/model/FieldText.h"

namespace logreport
{

namespace
{

std::string_view OrEmpty(const char* text)
{
    return text ? text : "";
}

} // namespace

std::string_view FieldText::Of(const ILogMsgData& message, std::int32_t field)
{
    switch (field)
    {
    case kLogMsgTimestamp:
        return OrEmpty(message.GetTimestamp());
    case kLogMsgLevel:
        return OrEmpty(message.GetLevelText());
    case kLogMsgTopic:
        message.GetTopic(m_text);
        break;
    case kLogMsgBody:
        return OrEmpty(message.GetBody());
    case kLogMsgErrorNumber:
        return Number(message.GetErrorNumber());
    case kLogMsgRuntimeFile:
        return OrEmpty(message.GetRuntimeFile());
    case kLogMsgLine:
        return Number(message.GetLine());
    case kLogMsgModule:
        return OrEmpty(message.GetModule());
    case kLogMsgSourceLine:
        return Number(message.GetSourceLine());
    case kLogMsgRuntimeContext:
        return OrEmpty(message.GetRuntimeContext());
    case kLogMsgSource:
        message.GetSource(m_text);
        break;
    case kLogMsgWho:
        message.GetWho(m_text);
        break;
    case kLogMsgSourceColumn:
        return Number(message.GetSourceColumn());
    default:
        return "";
    }
    return {m_text.c_str(), m_text.GetLength()};
}

std::string_view FieldText::Number(std::int32_t number)
{
    m_number = std::to_string(number);
    return m_number;
}

} // namespace logreport
