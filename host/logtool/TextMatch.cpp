#include "logtool/TextMatch.h"

#include "logtool/Command.h"

#include <pcre2.h>

#include <array>

namespace logtool
{

template <auto Free> struct Freed
{
    template <typename Object> void operator()(Object* object) const { Free(object); }
};
using Code = std::unique_ptr<pcre2_code, Freed<pcre2_code_free>>;
using Context = std::unique_ptr<pcre2_match_context, Freed<pcre2_match_context_free>>;
using Stack = std::unique_ptr<pcre2_jit_stack, Freed<pcre2_jit_stack_free>>;
using Data = std::unique_ptr<pcre2_match_data, Freed<pcre2_match_data_free>>;

namespace
{

// About a second of a processor's time, and memory that no machine lacks.
constexpr std::uint32_t kMatchLimit = 10'000'000;
constexpr std::uint32_t kHeapLimit = 64 * 1024; // KiB
constexpr std::size_t kJitStack = 1024 * 1024;  // bytes

PCRE2_SPTR Units(std::string_view text)
{
    return reinterpret_cast<PCRE2_SPTR>(text.data());
}

bool IsEncodingError(int error)
{
    return error <= PCRE2_ERROR_UTF8_ERR1 && error >= PCRE2_ERROR_UTF8_ERR21;
}

std::string ErrorText(int error)
{
    std::array<PCRE2_UCHAR, 256> text = {};
    pcre2_get_error_message(error, text.data(), text.size());
    return reinterpret_cast<const char*>(text.data());
}

// Null when the text is not UTF-8 and `options` ask for that.
Code Compile(const std::string& text, std::uint32_t options)
{
    int error = 0;
    std::size_t position = 0;
    Code code(pcre2_compile(Units(text), text.size(), options, &error, &position, nullptr));
    if (!code && !IsEncodingError(error))
        throw UsageError("--grep", "'" + text + "', at character " + std::to_string(position + 1) + ": " +
                                       ErrorText(error));
    if (code)
        pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE); // where it cannot be, matching is slower
    return code;
}

std::string_view WithoutLineEnd(std::string_view row)
{
    if (row.ends_with('\n'))
        row.remove_suffix(1);
    if (row.ends_with('\r'))
        row.remove_suffix(1);
    return row;
}

} // namespace

// Compiled twice, because what a character is depends on the row.
struct TextMatch::Expression
{
    Expression(const std::string& text, std::uint32_t options)
        : utf8(Compile(text, options | PCRE2_UTF | ((options & PCRE2_LITERAL) != 0 ? 0 : PCRE2_UCP))),
          bytes(Compile(text, options)), data(pcre2_match_data_create(1, nullptr)),
          context(pcre2_match_context_create(nullptr)),
          stack(pcre2_jit_stack_create(32 * 1024, kJitStack, nullptr))
    {
        if (!data || !context)
            throw std::bad_alloc();
        pcre2_set_match_limit(context.get(), kMatchLimit);
        pcre2_set_heap_limit(context.get(), kHeapLimit);
        pcre2_jit_stack_assign(context.get(), nullptr, stack.get());
    }

    int Match(const Code& code, std::string_view row) const
    {
        return pcre2_match(code.get(), Units(row), row.size(), 0, 0, data.get(), context.get());
    }

    Code utf8; // null for an expression that is not UTF-8
    Code bytes;
    Data data;
    Context context;
    Stack stack;
};

TextMatch::TextMatch(const std::string& text, Syntax syntax, Case letterCase)
{
    const bool expression = syntax == Syntax::Expression;
    const bool anyCase = letterCase == Case::Ignored;
    if (!expression && !anyCase)
        m_text = text;
    else
        m_expression = std::make_unique<Expression>(
            text, (expression ? PCRE2_NEVER_BACKSLASH_C : PCRE2_LITERAL) | (anyCase ? PCRE2_CASELESS : 0));
}

TextMatch::~TextMatch() = default;

bool TextMatch::operator()(std::string_view row)
{
    if (!m_expression)
        return row.find(m_text) != std::string_view::npos;
    row = WithoutLineEnd(row);
    int result = m_expression->utf8 ? m_expression->Match(m_expression->utf8, row) : PCRE2_ERROR_UTF8_ERR1;
    if (IsEncodingError(result))
        result = m_expression->Match(m_expression->bytes, row);
    if (result < 0 && result != PCRE2_ERROR_NOMATCH)
        ++m_givenUp;
    return result >= 0;
}

} // namespace logtool
