// Texts and regular expressions to be found in lines: PCRE2 with limits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace textmatch
{

// An expression is none. what() is PCRE2's reason.
class ExpressionError : public std::runtime_error
{
public:
    ExpressionError(const std::string& reason, std::size_t position)
        : std::runtime_error(reason), m_position(position)
    {
    }

    // The byte of the expression, counted from 0, where it went wrong.
    std::size_t Position() const { return m_position; }

private:
    std::size_t m_position;
};

// What is looked for, compiled once. One thread at a time.
class Expression
{
public:
    enum class Syntax
    {
        Text, // each character stands for itself
        Expression
    };
    enum class Case
    {
        Kept,
        Ignored
    };
    enum class Units
    {
        Bytes,     // the letters that have a case are the ASCII ones
        Characters // of UTF-8 where the expression and the line are valid UTF-8, else bytes
    };
    enum class Where
    {
        Anywhere,
        FromStart, // a match begins with the line, and a dot matches every byte
        Words      // no letter, digit or underscore touches a text; an expression has "\b" at both ends
    };
    enum class Speed
    {
        Compiled,
        Interpreted // made ten times quicker, matches ten times slower: for a look at a few lines
    };
    enum class Outcome
    {
        NotFound,
        Found,
        GivenUp // it has cost so much that matching gave up: "(a+)+b" can take years on a line
    };

    struct Part
    {
        std::string name;
        int number;
    };

    // Throws ExpressionError.
    Expression(const std::string& text, Syntax syntax, Case letterCase = Case::Kept,
               Units units = Units::Characters, Where where = Where::Anywhere, Speed speed = Speed::Compiled);
    ~Expression();
    Expression(Expression&& other) noexcept;
    Expression& operator=(Expression&& other) noexcept;

    // Gives up earlier: at 10,000,000, which is what it begins with, after about a second.
    void SetLimit(std::uint32_t steps);

    // Looks for it in `line`, which must stay as it is as long as groups are asked for.
    Outcome Find(std::string_view line) const;

    // The same from byte `from` of a text on that is known to be valid UTF-8, where a character begins. What
    // comes before it is looked at: "^" does not match there. For an expression that is valid UTF-8, and
    // Units::Characters.
    Outcome FindInUtf8(std::string_view text, std::size_t from) const;

    // The parts "(?<name>...)". Several may have the same name.
    std::vector<Part> Parts() const;

    // What the part matched in the line found last: a view into that line; null data if it took no part.
    std::string_view Group(int number) const
    {
        const auto index = static_cast<std::size_t>(number);
        if (index >= m_count || m_ends[2 * index] > m_ends[2 * index + 1] ||
            m_ends[2 * index] > m_line.size())
            return {};
        return m_line.substr(m_ends[2 * index], m_ends[2 * index + 1] - m_ends[2 * index]);
    }

private:
    struct Data;

    Outcome Take(std::string_view line, int result) const;

    std::unique_ptr<Data> m_data;
    const std::size_t* m_ends;       // where parts begin and end; PCRE2's, which never moves
    mutable std::string_view m_line; // that was looked at last
    mutable std::size_t m_count = 0; // of its parts, up to the last that took part
};

} // namespace textmatch
