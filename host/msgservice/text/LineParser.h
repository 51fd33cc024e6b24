// Lines of a text log in one format.
#pragma once

#include "msgservice/Message.h"
#include "msgservice/text/KeyedLine.h"
#include "msgservice/text/TextFormat.h"
#include "msgservice/text/TimeText.h"
#include "textmatch/Expression.h"

#include <optional>
#include <string_view>
#include <vector>

namespace msgservice
{

using textmatch::Expression;

// A format, ready to be used. One thread at a time.
class LineParser
{
public:
    enum class Start
    {
        AsWritten,
        AfterColumn // something stands before the time stamp in each line
    };
    enum class Outcome
    {
        NoMatch,
        Match,
        GivenUp // the expression costs too much on this line: it is taken as one that does not match
    };

    // `format` must outlive the parser. Throws textmatch::ExpressionError.
    LineParser(const TextFormat& format, const TextFormats& formats, Start start = Start::AsWritten,
               Expression::Speed speed = Expression::Speed::Compiled);

    // Makes all that a parser fills as in new fields.
    static void Clear(MessageFields& fields);

    // Fills `fields`, which are as new, from a line without line end. Their texts are views into the line and
    // into memory of the parser, which it keeps until the line after the next that matches.
    Outcome Parse(std::string_view line, TimeText& times, MessageFields& fields);

    // Whether AfterColumn makes a difference for this format.
    static bool CanFollowColumn(const TextFormat& format)
    {
        return format.expression.starts_with("%{stamp}");
    }

    const TextFormat& Format() const { return m_format; }
    Start From() const { return m_start; }

private:
    struct TextPart
    {
        int number;
        std::string_view MessageFields::*field;
    };
    enum class NumberField
    {
        Line,
        Error,
        Indent,
        Priority,
        Severity,
        Status
    };
    struct NumberPart
    {
        int number;
        NumberField field;
    };

    void FindParts();
    void TakeNumber(NumberField field, std::string_view text, MessageFields& fields) const;
    bool TakeLevel(MessageFields& fields) const;

    const TextFormat& m_format;
    Start m_start;
    std::optional<Expression> m_expression;
    std::optional<KeyedLine> m_keyed;
    std::vector<TextPart> m_texts;
    std::vector<NumberPart> m_numbers;
};

} // namespace msgservice
