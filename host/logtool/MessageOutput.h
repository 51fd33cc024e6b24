// Messages as text for people, CSV, TSV or JSON.
#pragma once

#include "msgservice/view/FieldText.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace logtool
{

// Output is collected and goes to the stream in large pieces, the last one with Flush.
class MessageOutput
{
public:
    enum class Form
    {
        Text, // a message on a line, its fields two blanks apart; further lines of a text are indented
        Csv,  // RFC 4180: lines end with CR LF, the first one names the fields
        Tsv,  // the first line names the fields; "\t", "\r", "\n" and "\\" stand for what a text may not hold
        Json  // an object on a line (JSON Lines); texts that are not UTF-8 become it
    };
    struct Style
    {
        bool terminal = false; // make control characters harmless
        bool colours = false;  // for Form::Text
    };

    // `fields` are ILogMsgDataKind.
    MessageOutput(std::ostream& output, Form form, std::vector<std::int32_t> fields, Style style);

    // Once, before the messages: the line that names the fields.
    void Head();

    void Message(const msgservice::MessageStore& store, std::uint32_t index);
    void Flush();

private:
    void PutText(const msgservice::Record& record, msgservice::FieldText& text);
    void PutLines(std::string_view text);
    void PutSeparated(std::size_t position, std::string_view value);
    void PutJson(const msgservice::Record& record, msgservice::FieldText& text);

    std::ostream& m_output;
    Form m_form;
    std::vector<std::int32_t> m_fields;
    std::vector<std::string> m_names;
    Style m_style;
    bool m_hasLevels = false; // of the messages so far
    std::string m_buffer;
};

} // namespace logtool
