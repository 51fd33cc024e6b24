#include "msgservice/store/MessageStore.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace msgservice
{

namespace
{

constexpr std::uint32_t kMostMessages = 0xFFFFFFFE; // so that each has an id from 1 on

char* PutText(char* to, std::string_view text)
{
    if (!text.empty())
        std::memcpy(to, text.data(), text.size());
    to[text.size()] = '\0';
    return to + text.size() + 1;
}

} // namespace

std::uint32_t MessageStore::SharedNumber(std::size_t field, std::string_view text)
{
    LastText& last = m_last[field];
    if (text != last.text)
    {
        last.number = m_texts.Add(text);
        last.text = m_texts.Text(last.number);
    }
    return last.number;
}

void MessageStore::Add(const MessageFields& message)
{
    const std::lock_guard lock(m_adding);
    if (m_records.Count() >= kMostMessages)
        throw std::length_error("There are as many messages as numbers for them");

    const std::array<std::string_view, kSharedTexts> shared = {
        message.levelText,   message.topic,          message.source, message.who,  message.module,
        message.runtimeFile, message.runtimeContext, message.text1,  message.text2};
    Record record;
    for (std::size_t i = 0; i < shared.size(); ++i)
        record.texts[i] = SharedNumber(i, shared[i]);
    record.numbers = {message.errorNumber, message.line, message.sourceLine, message.sourceColumn};
    record.time = message.time;
    record.level = message.level;
    record.indent = message.indent;
    record.countsSourceLine = message.countsSourceLine;
    record.timestamp = message.timestamp;
    record.body = message.body;

    const RecordHead head = EncodeHead(record);
    char* const bytes = m_arena.Take(head.size + record.timestamp.size() + record.body.size() + 2);
    std::memcpy(bytes, head.bytes.data(), head.size);
    const char* const end = PutText(PutText(bytes + head.size, record.timestamp), record.body);
    m_records.MakeRoom(); // so that all are appended or none; a break too many does no harm
    if (bytes != m_end)
        m_breaks.Append(m_records.Count());
    m_levels.Append(static_cast<std::uint8_t>(std::min<std::uint32_t>(message.level, 0xFF)));
    m_records.Append(bytes);
    m_end = end;
}

std::uint32_t MessageStore::PieceEnd(std::uint32_t index) const
{
    const std::uint32_t count = Count();
    std::uint32_t low = 0;
    std::uint32_t high = m_breaks.Count();
    while (low < high)
    {
        const std::uint32_t middle = low + (high - low) / 2;
        (m_breaks[middle] > index ? high : low) = m_breaks[middle] > index ? middle : middle + 1;
    }
    return low < m_breaks.Count() ? std::min(m_breaks[low], count) : count;
}

MessageFields FieldsOf(const MessageStore& store, std::uint32_t index)
{
    const Record record = store.At(index);
    const auto text = [&](SharedText field) { return store.Texts().Text(record.texts[field]); };
    MessageFields fields;
    fields.timestamp = record.timestamp;
    fields.levelText = text(kLevelText);
    fields.topic = text(kTopic);
    fields.body = record.body;
    fields.source = text(kSource);
    fields.who = text(kWho);
    fields.module = text(kModule);
    fields.runtimeFile = text(kRuntimeFile);
    fields.runtimeContext = text(kRuntimeContext);
    fields.text1 = text(kText1);
    fields.text2 = text(kText2);
    fields.time = record.time;
    fields.level = record.level;
    fields.indent = record.indent;
    fields.errorNumber = record.numbers[0];
    fields.line = record.numbers[1];
    fields.sourceLine = record.numbers[2];
    fields.sourceColumn = record.numbers[3];
    fields.countsSourceLine = record.countsSourceLine;
    return fields;
}

} // namespace msgservice
