#include "msgservice/view/MessageFilter.h"

#include "textmatch/Expression.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <functional>

namespace msgservice
{

using textmatch::Expression;

namespace
{

// With an ASCII text only ASCII letters are looked for in either case, whatever else a message holds.
Expression::Units UnitsOf(const std::string& text)
{
    return ZEMA::IsAscii(text.data(), text.size()) ? Expression::Units::Bytes : Expression::Units::Characters;
}

} // namespace

class MessageFilter::Condition
{
public:
    explicit Condition(const Filter& filter)
        : m_field(filter.field), m_operation(filter.operation), m_value(filter.value),
          m_search(m_value.begin(), m_value.end())
    {
        if (!filter.matchCase)
            m_anyCase = std::make_unique<Expression>(m_value, Expression::Syntax::Text,
                                                     Expression::Case::Ignored, UnitsOf(m_value));
    }

    std::int32_t Field() const { return m_field; }

    bool Passes(std::string_view text) const
    {
        if (m_operation == kLogMsgNotEmpty)
            return !text.empty();
        return IsIn(text) == (m_operation != kLogMsgNotContain);
    }

private:
    bool IsIn(std::string_view text) const
    {
        if (m_anyCase)
            return m_anyCase->Find(text) == Expression::Outcome::Found;
        return std::search(text.begin(), text.end(), m_search) != text.end() || m_value.empty();
    }

    std::int32_t m_field;
    std::int32_t m_operation;
    std::string m_value;
    std::boyer_moore_horspool_searcher<std::string::const_iterator> m_search; // in m_value
    std::unique_ptr<Expression> m_anyCase;
};

MessageFilter::MessageFilter(const MessageStore& store, const ViewDescription& description)
    : m_store(store), m_leastLevel(description.leastLevel), m_text(store)
{
    for (const Filter& filter : description.filters)
        if (filter.field != kLogMsgNone)
            m_conditions.push_back(std::make_unique<Condition>(filter));
}

MessageFilter::~MessageFilter() = default;

bool MessageFilter::PassesAll() const
{
    return m_leastLevel == 0 && m_conditions.empty();
}

bool MessageFilter::Passes(std::uint32_t message)
{
    if (m_store.LevelAt(message) < m_leastLevel)
        return false;
    if (m_conditions.empty())
        return true;
    const Record record = m_store.At(message);
    return std::all_of(m_conditions.begin(), m_conditions.end(), [&](const auto& condition) {
        return condition->Passes(m_text(record, condition->Field()));
    });
}

} // namespace msgservice
