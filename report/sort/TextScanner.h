// Reads a text from its front, for what takes numbers and dates apart.
#pragma once

#include <algorithm>
#include <string_view>

namespace report
{

class TextScanner
{
public:
    // Blanks around the text do not count.
    explicit TextScanner(std::string_view text) : m_rest(text)
    {
        m_rest.remove_suffix(m_rest.size() - (m_rest.find_last_not_of(' ') + 1));
        TakeAllOf(" ");
    }

    bool AtEnd() const { return m_rest.empty(); }
    std::string_view Rest() const { return m_rest; }

    // As many of these characters as there are.
    std::string_view TakeAllOf(std::string_view characters)
    {
        const std::size_t count = std::min(m_rest.find_first_not_of(characters), m_rest.size());
        const std::string_view taken = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return taken;
    }

    std::string_view TakeDigits() { return TakeAllOf("0123456789"); }

    // The next character when it is one of these, else NUL.
    char TakeOneOf(std::string_view characters)
    {
        if (m_rest.empty() || characters.find(m_rest.front()) == std::string_view::npos)
            return '\0';
        const char taken = m_rest.front();
        m_rest.remove_prefix(1);
        return taken;
    }

private:
    std::string_view m_rest;
};

} // namespace report
