#include "msgservice/text/KeyedLine.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>

namespace msgservice
{

namespace
{

struct FieldKeys
{
    std::string_view field;
    std::vector<std::string> keys;
};

// The usual keys of a field, in lower case; the first one that a line has counts.
std::vector<FieldKeys> UsualKeys()
{
    return {
        {"timestamp",
         {"@timestamp", "timestamp", "time", "ts", "t.$date", "@t", "t", "datetime", "date", "eventtime",
          "event_time", "asctime", "__realtime_timestamp", "created_at", "timegenerated",
          "receivetimestamp"}},
        {"level",
         {"level", "log.level", "severity", "lvl", "levelname", "loglevel", "log_level", "severitytext",
          "severity_text", "@l", "priority", "s"}},
        {"topic",
         {"logger", "log.logger", "logger_name", "loggername", "component", "name", "target", "category",
          "sourcecontext", "properties.sourcecontext", "module", "subsystem", "c", "syslog_identifier",
          "service.name", "service", "app", "source"}},
        {"body",
         {"msg", "message", "short_message", "@m", "@mt", "renderedmessage", "fields.message", "event",
          "text", "log", "textpayload", "jsonpayload.message", "body", "messagetemplate"}},
        {"who",
         {"thread", "thread_name", "threadname", "process.thread.name", "thread_id", "threadid", "tid", "pid",
          "process.pid", "_pid", "process", "ctx"}},
        {"module", {"host", "host.name", "hostname", "_hostname", "node", "machinename", "instance"}},
        {"file",
         {"file", "filename", "log.origin.file.name", "source.file", "code.filepath", "location.file",
          "pathname", "caller", "code_file"}},
        {"line",
         {"line", "log.origin.file.line", "source.line", "code.lineno", "lineno", "line_number", "linenumber",
          "location.line", "code_line"}},
        {"context",
         {"request_id", "requestid", "req_id", "reqid", "trace_id", "traceid", "trace.id", "correlation_id",
          "correlationid", "span_id"}},
        {"error", {"errno", "error_code", "errorcode", "error.code"}},
        {"detail",
         {"error", "err", "exception", "error.message", "err.message", "exception.message",
          "error.stack_trace", "err.stack", "exception.stacktrace", "stack", "stacktrace", "stack_trace",
          "exc_info", "@x", "full_message"}},
    };
}

void AppendLower(std::string& key, std::string_view text)
{
    for (const char c : text)
        key += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Lines of a body are joined with CR LF, and it has no NUL.
void AppendLines(std::string& body, std::string_view text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.remove_suffix(1);
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        if (text[at] == '\n' && (body.empty() || body.back() != '\r'))
            body += '\r';
        body += text[at] == '\0' ? ' ' : text[at];
    }
}

void AppendLine(std::string& body, std::string_view text)
{
    if (!body.empty() && !text.empty())
        body += "\r\n";
    AppendLines(body, text);
}

// "main.go:12" is a file and a line.
void SplitPlace(MessageFields& fields)
{
    const std::string_view place = fields.runtimeFile;
    const std::size_t colon = place.rfind(':');
    if (colon == std::string_view::npos || colon + 1 == place.size() || fields.line != 0)
        return;
    std::int32_t line = 0;
    if (std::from_chars(place.data() + colon + 1, place.data() + place.size(), line).ptr !=
        place.data() + place.size())
        return;
    fields.line = line;
    fields.runtimeFile = place.substr(0, colon);
}

std::int32_t SmallNumber(std::string_view text)
{
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

// Takes the values of one object; those of objects within have keys as "outer.inner".
class KeyedLine::JsonReader
{
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    explicit JsonReader(KeyedLine& line) : m_line(line) {}

    bool null() { return true; } // tells nothing
    bool boolean(bool value) { return Add(value ? "true" : "false"); }
    bool number_integer(number_integer_t value) { return AddNumber(value); }
    bool number_unsigned(number_unsigned_t value) { return AddNumber(value); }
    bool number_float(number_float_t, const string_t& text) { return Add(text); }
    bool string(string_t& text) { return Add(text); }
    bool binary(binary_t&) { return false; }

    bool start_object(std::size_t)
    {
        if (m_depth > 0)
            m_path += '.';
        m_starts.push_back(m_path.size());
        return ++m_depth <= kDeepest;
    }
    bool key(string_t& text)
    {
        m_path.resize(m_starts.back());
        AppendLower(m_path, text);
        return true;
    }
    bool end_object()
    {
        --m_depth;
        m_path.resize(m_starts.back() - (m_depth > 0 ? 1 : 0));
        m_starts.pop_back();
        return true;
    }
    bool start_array(std::size_t) { return m_depth > 0 && ++m_arrays <= kDeepest; }
    bool end_array()
    {
        --m_arrays;
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) { return false; }

private:
    static constexpr int kDeepest = 64;

    bool Add(std::string_view text)
    {
        if (m_depth == 0)
            return false; // the line is a value that is no object
        Value& value = m_line.NewValue();
        value.key = m_path;
        value.text = text;
        return true;
    }
    template <typename Number> bool AddNumber(Number number)
    {
        std::array<char, 24> text = {};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
        return Add(std::string_view(text.data(), static_cast<std::size_t>(end - text.data())));
    }

    KeyedLine& m_line;
    std::string m_path;
    std::vector<std::size_t> m_starts; // where the keys of each object that is open begin
    int m_depth = 0;
    int m_arrays = 0;
};

KeyedLine::KeyedLine(const TextFormat& format) : m_kind(format.kind)
{
    for (const auto& [name, keys] : format.keys)
        AddKeys(FieldOf(name), keys);
    for (const auto& [name, keys] : UsualKeys())
        AddKeys(FieldOf(name), keys);
}

KeyedLine::Field KeyedLine::FieldOf(std::string_view name)
{
    constexpr std::array<std::string_view, FieldCount> kNames = {"timestamp", "level",   "topic",  "body",
                                                                 "source",    "who",     "module", "file",
                                                                 "line",      "context", "error",  "detail"};
    return static_cast<Field>(std::find(kNames.begin(), kNames.end(), name) - kNames.begin());
}

void KeyedLine::AddKeys(Field field, const std::vector<std::string>& keys)
{
    for (const std::string& name : keys)
    {
        std::string key;
        AppendLower(key, name);
        m_meanings.try_emplace(key, Meaning{field, m_meanings.size()});
    }
}

KeyedLine::Value& KeyedLine::NewValue()
{
    if (m_count == m_values.size())
        m_values.emplace_back();
    return m_values[m_count++];
}

bool KeyedLine::Parse(std::string_view line, MessageFields& fields)
{
    m_count = 0;
    const bool isOurs = m_kind == TextFormat::Kind::Json ? ReadJson(line) : ReadLogfmt(line);
    if (isOurs)
        Assign(line, fields);
    return isOurs;
}

bool KeyedLine::ReadJson(std::string_view line)
{
    const std::size_t first = line.find_first_not_of(" \t\x1e");
    if (first == std::string_view::npos || line[first] != '{')
        return false;
    JsonReader reader(*this);
    return nlohmann::json::sax_parse(line.begin() + static_cast<std::ptrdiff_t>(first), line.end(), &reader);
}

// At least two pairs, one of which says when, how bad or what.
bool KeyedLine::ReadLogfmt(std::string_view line)
{
    while (!line.empty())
        if (!ReadPair(line))
            return false;
    const auto isTelling = [this](const Value& value) {
        const auto meaning = m_meanings.find(value.key);
        return meaning != m_meanings.end() && meaning->second.field <= Body && meaning->second.field != Topic;
    };
    const auto end = m_values.begin() + static_cast<std::ptrdiff_t>(m_count);
    return m_count >= 2 && std::any_of(m_values.begin(), end, isTelling);
}

// key=value, key="a value with \" and \\", or a key alone after the first.
bool KeyedLine::ReadPair(std::string_view& rest)
{
    while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t'))
        rest.remove_prefix(1);
    if (rest.empty())
        return m_count > 0;
    const std::size_t keyLength = std::min(rest.find_first_of("= \t\""), rest.size());
    if (keyLength == 0 || (m_count == 0 && (keyLength == rest.size() || rest[keyLength] != '=')))
        return false;
    Value& value = NewValue();
    value.key.clear();
    value.text.clear();
    AppendLower(value.key, rest.substr(0, keyLength));
    rest.remove_prefix(keyLength);
    if (!rest.starts_with('='))
        return true;
    rest.remove_prefix(1);
    if (!rest.starts_with('"'))
    {
        const std::size_t length = std::min(rest.find_first_of(" \t"), rest.size());
        value.text = rest.substr(0, length);
        rest.remove_prefix(length);
        return true;
    }
    std::size_t at = 1;
    for (; at < rest.size() && rest[at] != '"'; ++at)
    {
        const bool isEscaped = rest[at] == '\\' && at + 1 < rest.size();
        at += isEscaped ? 1 : 0;
        value.text += isEscaped && rest[at] == 'n' ? '\n' : isEscaped && rest[at] == 't' ? '\t' : rest[at];
    }
    rest.remove_prefix(std::min(at + 1, rest.size()));
    return true;
}

void KeyedLine::Assign(std::string_view line, MessageFields& fields)
{
    std::array<std::size_t, FieldCount> best = {};
    std::array<const Value*, FieldCount> chosen = {};
    m_turn ^= 1;
    Texts& texts = m_texts[m_turn];
    texts.body.clear();
    texts.others.clear();
    for (std::size_t index = 0; index < m_count; ++index)
    {
        const Value& value = m_values[index];
        const auto found = m_meanings.find(value.key);
        if (found == m_meanings.end() || found->second.field >= Detail || value.text.empty())
            continue;
        const auto [field, rank] = found->second;
        if (!chosen[field] || rank < best[field])
        {
            chosen[field] = &value;
            best[field] = rank;
        }
    }
    for (std::size_t field = 0; field < Detail; ++field)
    {
        texts.fields[field].clear();
        if (chosen[field])
            Collect(*chosen[field], static_cast<Field>(field), texts);
    }
    if (!chosen[Body])
        texts.body = line;
    for (std::size_t index = 0; index < m_count; ++index)
    {
        const Value& value = m_values[index];
        if (std::find(chosen.begin(), chosen.end(), &value) != chosen.end())
            continue;
        const auto found = m_meanings.find(value.key);
        const bool isDetail = found != m_meanings.end() && found->second.field == Detail;
        if (chosen[Body]) // else all of the line is its body
            Collect(value, isDetail ? Detail : FieldCount, texts);
    }
    fields.timestamp = texts.fields[Timestamp];
    fields.levelText = texts.fields[LevelText];
    fields.topic = texts.fields[Topic];
    fields.source = texts.fields[Source];
    fields.who = texts.fields[Who];
    fields.module = texts.fields[Module];
    fields.runtimeFile = texts.fields[File];
    fields.runtimeContext = texts.fields[Context];
    fields.line = SmallNumber(texts.fields[Line]);
    fields.errorNumber = SmallNumber(texts.fields[Error]);
    fields.body = texts.body;
    fields.text1 = texts.others;
    SplitPlace(fields);
}

void KeyedLine::Collect(const Value& value, Field field, Texts& texts) const
{
    if (field == Body)
        AppendLines(texts.body, value.text);
    else if (field == Detail)
        AppendLine(texts.body, value.text);
    else if (field < Detail)
        AppendLines(texts.fields[field], value.text);
    else
    {
        texts.others += texts.others.empty() ? "" : " ";
        AppendLines(texts.others.append(value.key).append("="), value.text);
    }
}

} // namespace msgservice
