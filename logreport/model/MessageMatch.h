// Whether a message holds a text.
#pragma once

#include "logreport/model/FieldText.h"
#include "textmatch/Expression.h"
#include "textmatch/TextSearch.h"

#include <optional>
#include <string>
#include <vector>

namespace logreport
{

// What is looked for.
struct FindWish
{
    std::string text;
    std::vector<std::int32_t> fields; // ILogMsgDataKind; one of them has to hold it
    bool matchesCase = false;
    bool isWholeWord = false;
    bool isExpression = false;

    bool operator==(const FindWish&) const = default;
};

// Whether messages hold what is wanted.
class MessageMatch
{
public:
    enum class Outcome
    {
        No,
        Yes,
        GivenUp // an expression costs too much on this message
    };

    // Throws textmatch::ExpressionError.
    explicit MessageMatch(const FindWish& wish);

    Outcome operator()(const ILogMsgData& message);

    // The first id from `id` on, `end` at most, of a message that has to be looked at.
    std::uint32_t Skip(ILogMsgService& service, std::uint32_t id, std::uint32_t end) const;

    std::size_t LastSize() const { return m_size; } // bytes of the message that was looked at last

private:
    std::string_view AsUtf8(std::string_view text);
    Outcome Look(std::string_view text);

    FindWish m_wish;
    bool m_isAscii; // a text, and no expression
    std::string m_utf8;
    std::optional<textmatch::TextSearch> m_search; // what each text that matches holds
    std::optional<textmatch::Expression> m_expression;
    FieldText m_text;
    std::size_t m_size = 0;
};

} // namespace logreport
