#include "msgservice/view/FieldText.h"

#include "LogMsg.h"

#include <charconv>

namespace msgservice
{

std::optional<SharedText> SharedTextOf(std::int32_t field)
{
    switch (field)
    {
    case kLogMsgLevel:
        return kLevelText;
    case kLogMsgTopic:
        return kTopic;
    case kLogMsgRuntimeFile:
        return kRuntimeFile;
    case kLogMsgModule:
        return kModule;
    case kLogMsgRuntimeContext:
        return kRuntimeContext;
    case kLogMsgSource:
        return kSource;
    case kLogMsgWho:
        return kWho;
    default:
        return {};
    }
}

std::optional<std::int32_t> NumberOf(const Record& record, std::int32_t field)
{
    switch (field)
    {
    case kLogMsgErrorNumber:
        return record.numbers[0];
    case kLogMsgLine:
        return record.numbers[1];
    case kLogMsgSourceLine:
        return record.numbers[2];
    case kLogMsgSourceColumn:
        return record.numbers[3];
    default:
        return {};
    }
}

std::string_view FieldText::operator()(const Record& record, std::int32_t field)
{
    if (field == kLogMsgTimestamp)
        return record.timestamp;
    if (field == kLogMsgBody)
        return record.body;
    if (const auto shared = SharedTextOf(field))
        return m_store.Texts().Text(record.texts[*shared]);
    if (const auto number = NumberOf(record, field))
    {
        char* const end = std::to_chars(m_digits.data(), m_digits.data() + m_digits.size(), *number).ptr;
        return {m_digits.data(), static_cast<std::size_t>(end - m_digits.data())};
    }
    return {};
}

} // namespace msgservice
