#include "msgservice/session/RowMessage.h"

#include "msgservice/session/ClockText.h"

#include <algorithm>

namespace msgservice
{

namespace
{

struct KindLevel
{
    QmLogBlockKind kind;
    std::uint32_t level;
    const char* name;
};
constexpr KindLevel kKinds[] = {{kDetailKind, kDebugLevel, "Detail"},
                                {kPlainKind, kInfoLevel, "Plain"},
                                {kNoticeKind, kWarningLevel, "Notice"},
                                {kErrorKind, kErrorLevel, "Error"}};

const KindLevel* FindKind(QmLogBlockKind kind)
{
    const auto* const found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                           [&](const KindLevel& entry) { return entry.kind == kind; });
    return found != std::end(kKinds) ? found : nullptr;
}

} // namespace

std::uint32_t LevelOfKind(QmLogBlockKind kind)
{
    const KindLevel* const found = FindKind(kind);
    return found ? found->level : kInfoLevel;
}

std::string NameOfKind(QmLogBlockKind kind)
{
    const KindLevel* const found = FindKind(kind);
    return found ? found->name : std::to_string(static_cast<std::uint32_t>(kind));
}

MessageFields& RowMessage::Make(const Row& row)
{
    m_timestamp = row.time ? LocalTime(*row.time) : std::to_string(row.number);
    m_level = NameOfKind(row.kind);
    m_text = row.text;
    m_text.erase(m_text.find_last_not_of("\r\n") + 1);
    std::replace(m_text.begin(), m_text.end(), '\0', ' ');
    m_fields = {};
    m_fields.timestamp = m_timestamp;
    m_fields.time = row.time ? NanosecondsSince1970(*row.time) : static_cast<Time>(row.number);
    m_fields.level = LevelOfKind(row.kind);
    m_fields.levelText = m_level;
    m_fields.topic = row.log;
    m_fields.body = m_text;
    m_fields.indent = row.depth;
    return m_fields;
}

} // namespace msgservice
