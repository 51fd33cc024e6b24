#include "logtool/MessageOutput.h"

#include "LogMsg.h"
#include "commandline/Printable.h"
#include "logtool/ExportText.h"
#include "logtool/MessageFields.h"
#include "msgservice/text/JsonText.h"

#include <ostream>

namespace logtool
{

namespace
{

constexpr std::size_t kPiece = 64 * 1024;
constexpr std::size_t kLevelWidth = 5; // of the usual words
constexpr char kContinued[] = "    ";  // before further lines of a text

std::string_view ColourOf(std::uint32_t level)
{
    return level >= 4 ? "\x1b[31m" : level == 3 ? "\x1b[33m" : level < 2 ? "\x1b[90m" : "";
}

void PutTsv(std::string& to, std::string_view value)
{
    for (const char character : value)
        switch (character)
        {
        case '\t':
            to += "\\t";
            break;
        case '\r':
            to += "\\r";
            break;
        case '\n':
            to += "\\n";
            break;
        case '\\':
            to += "\\\\";
            break;
        default:
            to += character;
        }
}

} // namespace

MessageOutput::MessageOutput(std::ostream& output, Form form, std::vector<std::int32_t> fields, Style style)
    : m_output(output), m_form(form), m_fields(std::move(fields)), m_style(style)
{
    for (const std::int32_t field : m_fields)
        m_names.push_back(FieldName(field));
}

void MessageOutput::Head()
{
    if (m_form == Form::Csv || m_form == Form::Tsv)
        for (std::size_t i = 0; i < m_names.size(); ++i)
            PutSeparated(i, m_names[i]);
}

void MessageOutput::Message(const msgservice::MessageStore& store, std::uint32_t index)
{
    const msgservice::Record record = store.At(index);
    msgservice::FieldText text(store);
    if (m_form == Form::Text)
        PutText(record, text);
    else if (m_form == Form::Json)
        PutJson(record, text);
    else
        for (std::size_t i = 0; i < m_fields.size(); ++i)
            PutSeparated(i, text(record, m_fields[i]));
    if (m_buffer.size() >= kPiece)
        Flush();
}

// A value of CSV or TSV, and what separates it from the next.
void MessageOutput::PutSeparated(std::size_t position, std::string_view value)
{
    const bool last = position + 1 == m_fields.size();
    if (m_form == Form::Csv)
    {
        AppendCsv(m_buffer, value);
        m_buffer += last ? "\r\n" : ",";
    }
    else
    {
        PutTsv(m_buffer, value);
        m_buffer += last ? '\n' : '\t';
    }
}

// Fields without text are left out, but for the level: where messages have one, it keeps its column.
void MessageOutput::PutText(const msgservice::Record& record, msgservice::FieldText& text)
{
    const std::string_view colour = m_style.colours ? ColourOf(record.level) : "";
    m_buffer += colour;
    bool first = true;
    for (const std::int32_t field : m_fields)
    {
        const std::string_view value = text(record, field);
        m_hasLevels = m_hasLevels || (field == kLogMsgLevel && !value.empty());
        const std::size_t width = field == kLogMsgLevel && m_hasLevels ? kLevelWidth : 0;
        if (value.empty() && width == 0)
            continue;
        m_buffer += first ? "" : "  ";
        first = false;
        PutLines(value);
        m_buffer.append(value.size() < width ? width - value.size() : 0, ' ');
    }
    m_buffer += colour.empty() ? "\n" : "\x1b[0m\n";
}

// Further lines are indented.
void MessageOutput::PutLines(std::string_view text)
{
    for (std::size_t begin = 0; begin < text.size();)
    {
        const std::size_t end = std::min(text.find("\r\n", begin), text.size());
        const std::string_view line = text.substr(begin, end - begin);
        m_buffer += begin > 0 ? kContinued : "";
        m_buffer += m_style.terminal ? commandline::Printable(line) : std::string(line);
        m_buffer += end < text.size() ? "\n" : "";
        begin = end + 2;
    }
}

void MessageOutput::PutJson(const msgservice::Record& record, msgservice::FieldText& text)
{
    for (std::size_t i = 0; i < m_fields.size(); ++i)
    {
        m_buffer += i > 0 ? "," : "{";
        msgservice::AppendJsonText(m_names[i], m_buffer);
        m_buffer += ':';
        if (const auto number = msgservice::NumberOf(record, m_fields[i]))
            m_buffer += std::to_string(*number);
        else
        {
            std::string converted;
            msgservice::AppendJsonText(Utf8Text(text(record, m_fields[i]), converted), m_buffer);
        }
    }
    m_buffer += "}\n";
}

void MessageOutput::Flush()
{
    m_output.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    m_buffer.clear();
}

} // namespace logtool
