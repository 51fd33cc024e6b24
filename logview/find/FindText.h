// What is looked for in the lines of logs.
#pragma once

#include "textmatch/Expression.h"
#include "textmatch/TextSearch.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logview
{

struct FindOptions
{
    bool matchCase = false;
    bool wholeWords = false; // no letter, digit or underscore touches a match
    bool isExpression = false;
    bool operator==(const FindOptions&) const = default;
};

// Bytes of a line.
struct FoundStretch
{
    std::size_t begin = 0;
    std::size_t end = 0;
    bool operator==(const FoundStretch&) const = default;
};

// A text, or an expression as PCRE2 has them. It and the lines are UTF-8 where they are valid UTF-8, else in
// the system's code page: the characters are compared.
class FindText
{
public:
    static constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

    // `given` has at least a character. Throws textmatch::ExpressionError, whose position counts bytes of
    // `given` in UTF-8.
    FindText(const std::string& given, FindOptions options);

    // Adds the matches from byte `from` of a line on, in order and none within another. An empty match counts
    // if the line has no other. The line may end with its line end, which does not belong to it. False when
    // looking for the expression has cost so much that it was given up.
    bool FindAll(std::string_view line, std::size_t from, std::vector<FoundStretch>& found);

    // A place at or before the first match in `lines`, which follow each other and begin with a whole one;
    // kNowhere if there is none. `isUtf8` tells what they are: quick only for those that are.
    std::size_t FindFirst(std::string_view lines, bool isUtf8) const;

    // Whether FindFirst has to know what lines are.
    bool NeedsKind() const { return !m_search; }

    // A longer line is looked at in slices of so many bytes, so that no expression takes long for one.
    std::size_t SliceBytes() const { return m_isExpression ? 4096 : 256 * 1024; }

    // How many bytes of slices are looked at twice: a longer match across two slices is not found.
    static constexpr std::size_t kOverlap = 1024;

private:
    const textmatch::Expression* OverLines() const;
    bool FindExpression(std::string_view text, std::size_t from, std::vector<FoundStretch>& found) const;

    bool m_isExpression;
    std::size_t m_size;                                // of the text
    std::optional<textmatch::TextSearch> m_search;     // for ASCII, which each match has, in all encodings
    std::optional<textmatch::Expression> m_expression; // where bytes alone do not tell
    std::optional<textmatch::Expression> m_block;      // of an expression, over many lines
    std::string m_utf8;                                // of a line in the code page
};

} // namespace logview
