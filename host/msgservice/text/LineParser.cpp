#include "msgservice/text/LineParser.h"

#include "msgservice/text/LevelWords.h"

#include <algorithm>
#include <charconv>

namespace msgservice
{

namespace
{

struct TextPartName
{
    std::string_view name;
    std::string_view MessageFields::*field;
};
constexpr TextPartName kTextParts[] = {
    {"timestamp", &MessageFields::timestamp},
    {"level", &MessageFields::levelText},
    {"topic", &MessageFields::topic},
    {"body", &MessageFields::body},
    {"source", &MessageFields::source},
    {"who", &MessageFields::who},
    {"module", &MessageFields::module},
    {"file", &MessageFields::runtimeFile},
    {"context", &MessageFields::runtimeContext},
    {"text1", &MessageFields::text1},
    {"text2", &MessageFields::text2},
};

std::string_view WithoutBlanksBefore(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    return text;
}

std::string_view WithoutBlanksAfter(std::string_view text)
{
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

// Decimal, or hexadecimal after "0x"; 0 if it is neither or has no room.
std::int32_t NumberOf(std::string_view text)
{
    std::int64_t number = 0;
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(isHexadecimal ? 2 : 0);
    std::from_chars(text.data(), text.data() + text.size(), number, isHexadecimal ? 16 : 10);
    const bool fits = number >= INT32_MIN && number <= (isHexadecimal ? UINT32_MAX : INT32_MAX);
    return fits ? static_cast<std::int32_t>(number) : 0;
}

} // namespace

LineParser::LineParser(const TextFormat& format, const TextFormats& formats, Start start,
                       Expression::Speed speed)
    : m_format(format), m_start(start)
{
    if (format.kind == TextFormat::Kind::Json || format.kind == TextFormat::Kind::Logfmt)
        m_keyed.emplace(format);
    if (format.kind != TextFormat::Kind::Expression)
        return;
    const std::string text = (start == Start::AfterColumn ? "%{column}" : "") + format.expression;
    // Letters beyond ASCII count only if the expression has some.
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
    m_expression.emplace(formats.Expand(text), Expression::Syntax::Expression, Expression::Case::Kept,
                         isAscii ? Expression::Units::Bytes : Expression::Units::Characters,
                         Expression::Where::FromStart, speed);
    FindParts();
}

// One by one: for all of them at once compilers take an instruction that is slow to begin.
void LineParser::Clear(MessageFields& fields)
{
    for (const TextPartName& part : kTextParts)
        fields.*part.field = {};
    fields.time = kNoTime;
    fields.level = kInfoLevel;
    fields.indent = 0;
    fields.errorNumber = 0;
    fields.line = 0;
}

void LineParser::FindParts()
{
    constexpr std::pair<std::string_view, NumberField> kNumberParts[] = {
        {"line", NumberField::Line},         {"error", NumberField::Error},
        {"indent", NumberField::Indent},     {"priority", NumberField::Priority},
        {"severity", NumberField::Severity}, {"status", NumberField::Status}};
    for (const Expression::Part& part : m_expression->Parts())
    {
        for (const TextPartName& text : kTextParts)
            if (part.name == text.name)
                m_texts.push_back({part.number, text.field});
        for (const auto& [name, field] : kNumberParts)
            if (part.name == name)
                m_numbers.push_back({part.number, field});
    }
}

LineParser::Outcome LineParser::Parse(std::string_view line, TimeText& times, MessageFields& fields)
{
    if (m_expression)
    {
        const Expression::Outcome outcome = m_expression->Find(line);
        if (outcome != Expression::Outcome::Found)
            return outcome == Expression::Outcome::GivenUp ? Outcome::GivenUp : Outcome::NoMatch;
        for (const TextPart& part : m_texts)
            if (const std::string_view text = m_expression->Group(part.number); text.data())
                fields.*part.field = text.size() == 1 && text[0] == '-' ? std::string_view() : text;
        for (const NumberPart& part : m_numbers)
            TakeNumber(part.field, m_expression->Group(part.number), fields);
        fields.body = WithoutBlanksBefore(fields.body);
        fields.topic = WithoutBlanksAfter(fields.topic);
    }
    else if (!m_keyed)
        fields.body = line;
    else if (!m_keyed->Parse(line, fields))
        return Outcome::NoMatch;

    const bool isChecked = m_format.trust == TextFormat::Trust::Checked;
    if (!fields.levelText.empty() && !TakeLevel(fields) && isChecked && m_expression)
        return Outcome::NoMatch;
    if (fields.timestamp.empty() || times.Read(fields.timestamp, fields.time))
        return Outcome::Match;
    return isChecked && m_expression ? Outcome::NoMatch : Outcome::Match;
}

void LineParser::TakeNumber(NumberField field, std::string_view text, MessageFields& fields) const
{
    if (!text.data())
        return;
    const std::int32_t number = NumberOf(text);
    switch (field)
    {
    case NumberField::Line:
        fields.line = number;
        break;
    case NumberField::Error:
        fields.errorNumber = number;
        break;
    case NumberField::Indent:
        fields.indent = static_cast<std::uint32_t>(text.size());
        break;
    case NumberField::Priority:
    case NumberField::Severity:
        fields.level = LevelOfSeverity(static_cast<unsigned>(number));
        break;
    case NumberField::Status:
        fields.level = LevelOfStatus(static_cast<unsigned>(number));
        break;
    }
}

bool LineParser::TakeLevel(MessageFields& fields) const
{
    for (const auto& [word, level] : m_format.levels)
        if (word == fields.levelText)
        {
            fields.level = level;
            return true;
        }
    if (FindLevel(fields.levelText, fields.level))
        return true;
    double number = 0;
    const char* end = fields.levelText.data() + fields.levelText.size();
    if (!m_keyed || std::from_chars(fields.levelText.data(), end, number).ptr != end)
        return false;
    fields.level = LevelOfNumber(number);
    return true;
}

} // namespace msgservice
