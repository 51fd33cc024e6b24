#include "logview/find/BlockForm.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace logview
{

namespace
{

bool IsLetterOrDigit(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

bool IsOneOf(char byte, const char* bytes)
{
    return byte != '\0' && std::strchr(bytes, byte);
}

// Copies an expression piece by piece.
class Rewriter
{
public:
    explicit Rewriter(const std::string& expression) : m_text(expression) {}

    // False at a piece that it does not know.
    bool Rewrite()
    {
        m_result = "(?m)";
        while (m_at < m_text.size())
            if (!TakePiece())
                return false;
        return true;
    }

    std::string m_result;

private:
    char At(std::size_t ahead) const { return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\0'; }

    bool Put(const char* piece, std::size_t taken)
    {
        m_result += piece;
        m_at += taken;
        return true;
    }

    bool Copy(std::size_t count)
    {
        m_result.append(m_text, m_at, count);
        m_at += count;
        return true;
    }

    bool TakePiece()
    {
        const char byte = At(0);
        if (static_cast<unsigned char>(byte) < ' ')
            return false;
        if (byte == '\\')
            return TakeEscape();
        if (byte == '[')
            return TakeClass();
        if (byte == '$')
            return Put("(?=\\r?$)", 1);
        if (byte == '(' && (At(1) == '*' || (At(1) == '?' && At(2) != ':')))
            return false;
        if (byte == '(' && At(1) == '?')
            return Copy(3);
        if (IsOneOf(byte, "*+?}") && At(1) == '+')
            return false; // it would keep what it has taken
        return Copy(1);
    }

    // What matches a line feed as well would run on through the lines.
    bool TakeEscape()
    {
        const char escaped = At(1);
        if (escaped == 's')
            return Put("[^\\S\\n]", 2);
        if (escaped == 'W')
            return Put("[^\\w\\n]", 2);
        if (escaped == 'D')
            return Put("[^\\d\\n]", 2);
        if (IsOneOf(escaped, "dwSbBt"))
            return Copy(2);
        const bool isItself = static_cast<unsigned char>(escaped) > ' ' && !IsLetterOrDigit(escaped);
        return isItself && Copy(2);
    }

    bool TakeClass()
    {
        Copy(1);
        if (At(0) == '^')
            Put("^\\n", 1);
        if (At(0) == ']')
            return false; // it would be a member
        while (At(0) != ']')
        {
            const char byte = At(0);
            if (static_cast<unsigned char>(byte) < ' ' || byte == '[')
                return false;
            if (byte != '\\')
                Copy(1);
            else if (IsOneOf(At(1), "dw") || (At(1) > ' ' && !IsLetterOrDigit(At(1))))
                Copy(2);
            else
                return false;
        }
        return Copy(1);
    }

    const std::string& m_text;
    std::size_t m_at = 0;
};

} // namespace

std::optional<std::string> BlockForm(const std::string& expression)
{
    Rewriter rewriter(expression);
    if (!rewriter.Rewrite())
        return std::nullopt;
    return std::move(rewriter.m_result);
}

std::string NeededText(const std::string& expression)
{
    std::string longest;
    std::string text;
    const auto end = [&] {
        longest = text.size() > longest.size() ? text : longest;
        text.clear();
    };
    int depth = 0; // of groups, whose alternatives and repetitions are not looked at
    for (std::size_t at = 0; at < expression.size(); ++at)
    {
        char byte = expression[at];
        if (byte == '|' && depth == 0)
            return {};
        const bool isEscaped = byte == '\\';
        if (isEscaped)
            byte = ++at < expression.size() ? expression[at] : '\0';
        const bool isItself = isEscaped ? !IsLetterOrDigit(byte) : !IsOneOf(byte, "()[]{}.^$*+?|");
        if (isItself && depth == 0 && static_cast<unsigned char>(byte) < 0x80)
        {
            const char next = at + 1 < expression.size() ? expression[at + 1] : '\0';
            const bool isOptional = IsOneOf(next, "*?{");
            if (!isOptional)
                text += byte;
            if (isOptional || next == '+')
                end();
            continue;
        }
        end();
        if (isEscaped)
            continue;
        depth += byte == '(' ? 1 : byte == ')' ? -1 : 0;
        if (byte == '{')
            at = std::min(expression.find('}', at), expression.size());
        if (byte == '[')
            for (++at; at < expression.size() && expression[at] != ']'; ++at)
                at += expression[at] == '\\' ? 1 : 0;
    }
    end();
    return longest;
}

} // namespace logview
