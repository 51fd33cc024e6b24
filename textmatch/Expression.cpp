#include "textmatch/Expression.h"

#include <pcre2.h>

#include <algorithm>
#include <array>
#include <new>

// Has a name because a type of the header has members of these types.
namespace textmatch::pcre2
{

template <auto Free> struct Freed
{
    template <typename Object> void operator()(Object* object) const { Free(object); }
};
using Settings = std::unique_ptr<pcre2_compile_context, Freed<pcre2_compile_context_free>>;
using Code = std::unique_ptr<pcre2_code, Freed<pcre2_code_free>>;
using Context = std::unique_ptr<pcre2_match_context, Freed<pcre2_match_context_free>>;
using Stack = std::unique_ptr<pcre2_jit_stack, Freed<pcre2_jit_stack_free>>;
using Groups = std::unique_ptr<pcre2_match_data, Freed<pcre2_match_data_free>>;

} // namespace textmatch::pcre2

namespace textmatch
{

namespace
{

// About a second of a processor's time, and memory that no machine lacks.
constexpr std::uint32_t kMatchLimit = 10'000'000;
constexpr std::uint32_t kLineLimit = 2'000'000; // for one that is tried on each line from its start
constexpr std::uint32_t kHeapLimit = 64 * 1024; // KiB
constexpr std::size_t kJitStack = 1024 * 1024;  // bytes

PCRE2_SPTR UnitsOf(std::string_view text)
{
    return reinterpret_cast<PCRE2_SPTR>(text.data());
}

bool IsEncodingError(int error)
{
    return error <= PCRE2_ERROR_UTF8_ERR1 && error >= PCRE2_ERROR_UTF8_ERR21;
}

std::string ReasonOf(int error)
{
    std::array<PCRE2_UCHAR, 256> text = {};
    pcre2_get_error_message(error, text.data(), text.size());
    return reinterpret_cast<const char*>(text.data());
}

// The text as an expression that matches it where no part of a word touches it.
std::string AsWord(const std::string& text)
{
    std::string expression = "(?<!\\w)";
    for (const char byte : text)
    {
        const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        const bool isPlain = isLetter || (byte >= '0' && byte <= '9') || (byte & 0x80) != 0;
        expression += isPlain ? "" : "\\";
        expression += byte;
    }
    return expression + "(?!\\w)";
}

// Null if the text is not UTF-8 and `options` ask for that.
pcre2::Code Compile(const std::string& text, std::uint32_t options, std::uint32_t extra)
{
    const pcre2::Settings settings(pcre2_compile_context_create(nullptr));
    if (!settings)
        throw std::bad_alloc();
    pcre2_set_compile_extra_options(settings.get(), extra);
    int error = 0;
    std::size_t position = 0;
    pcre2::Code code(pcre2_compile(UnitsOf(text), text.size(), options, &error, &position, settings.get()));
    if (!code && !IsEncodingError(error))
        throw ExpressionError(ReasonOf(error), position);
    return code;
}

// Where machine code cannot be made, matching is slower.
bool MakeMachineCode(const pcre2::Code& code)
{
    return code && pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) == 0;
}

} // namespace

// Compiled twice where characters count, because what a character is depends on the line.
struct Expression::Data
{
    Data(const std::string& text, std::uint32_t options, std::uint32_t extra, Units units, Speed speed)
        : bytes(Compile(text, options, extra)), context(pcre2_match_context_create(nullptr)),
          stack(pcre2_jit_stack_create(32 * 1024, kJitStack, nullptr))
    {
        if (units == Units::Characters)
            utf8 =
                Compile(text, options | PCRE2_UTF | ((options & PCRE2_LITERAL) != 0 ? 0 : PCRE2_UCP), extra);
        groups.reset(pcre2_match_data_create_from_pattern(bytes.get(), nullptr));
        if (!groups || !context)
            throw std::bad_alloc();
        if (speed == Speed::Compiled)
        {
            isMachineCodeUtf8 = MakeMachineCode(utf8);
            isMachineCode = MakeMachineCode(bytes);
        }
        pcre2_set_match_limit(context.get(), (options & PCRE2_ANCHORED) != 0 ? kLineLimit : kMatchLimit);
        pcre2_set_heap_limit(context.get(), kHeapLimit);
        pcre2_jit_stack_assign(context.get(), nullptr, stack.get());
    }

    int MatchBytes(std::string_view line) const
    {
        const auto match = isMachineCode ? pcre2_jit_match : pcre2_match;
        return match(bytes.get(), UnitsOf(line), line.size(), 0, 0, groups.get(), context.get());
    }

    int MatchCharacters(std::string_view line) const
    {
        return pcre2_match(utf8.get(), UnitsOf(line), line.size(), 0, 0, groups.get(), context.get());
    }

    // Without another look at whether the text is UTF-8.
    int MatchUtf8(std::string_view text, std::size_t from) const
    {
        if (isMachineCodeUtf8)
            return pcre2_jit_match(utf8.get(), UnitsOf(text), text.size(), from, 0, groups.get(),
                                   context.get());
        return pcre2_match(utf8.get(), UnitsOf(text), text.size(), from, PCRE2_NO_UTF_CHECK, groups.get(),
                           context.get());
    }

    pcre2::Code bytes;
    pcre2::Code utf8; // null if bytes count, or the expression is not UTF-8
    pcre2::Groups groups;
    pcre2::Context context;
    pcre2::Stack stack;
    bool isMachineCode = false; // the version for bytes
    bool isMachineCodeUtf8 = false;
};

Expression::Expression(const std::string& text, Syntax syntax, Case letterCase, Units units, Where where,
                       Speed speed)
{
    const bool isWord = syntax == Syntax::Text && where == Where::Words;
    std::uint32_t options = syntax == Syntax::Text && !isWord ? PCRE2_LITERAL : PCRE2_NEVER_BACKSLASH_C;
    std::uint32_t extra = 0;
    if (syntax == Syntax::Expression && where == Where::Words)
        extra |= PCRE2_EXTRA_MATCH_WORD;
    if (letterCase == Case::Ignored)
        options |= PCRE2_CASELESS;
    if (where == Where::FromStart)
        options |= PCRE2_ANCHORED;
    if (where == Where::FromStart && syntax == Syntax::Expression)
        options |= PCRE2_DOTALL | PCRE2_DOLLAR_ENDONLY | PCRE2_DUPNAMES;
    m_data = std::make_unique<Data>(isWord ? AsWord(text) : text, options, extra, units, speed);
    m_ends = pcre2_get_ovector_pointer(m_data->groups.get());
}

Expression::~Expression() = default;
Expression::Expression(Expression&& other) noexcept = default;
Expression& Expression::operator=(Expression&& other) noexcept = default;

void Expression::SetLimit(std::uint32_t steps)
{
    pcre2_set_match_limit(m_data->context.get(), steps);
}

Expression::Outcome Expression::Find(std::string_view line) const
{
    if (!line.data())
        line = ""; // machine code takes no null
    int result = m_data->utf8 ? m_data->MatchCharacters(line) : PCRE2_ERROR_UTF8_ERR1;
    if (IsEncodingError(result))
        result = m_data->MatchBytes(line);
    return Take(line, result);
}

Expression::Outcome Expression::FindInUtf8(std::string_view text, std::size_t from) const
{
    if (!text.data())
        text = "";
    return Take(text, m_data->MatchUtf8(text, from));
}

Expression::Outcome Expression::Take(std::string_view line, int result) const
{
    m_line = line;
    m_count = static_cast<std::size_t>(std::max(result, 0));
    if (result >= 0)
        return Outcome::Found;
    return result == PCRE2_ERROR_NOMATCH ? Outcome::NotFound : Outcome::GivenUp;
}

std::vector<Expression::Part> Expression::Parts() const
{
    std::uint32_t count = 0;
    std::uint32_t size = 0; // of an entry: a number of two bytes, and a name that ends with a NUL
    PCRE2_SPTR entry = nullptr;
    pcre2_pattern_info(m_data->bytes.get(), PCRE2_INFO_NAMECOUNT, &count);
    pcre2_pattern_info(m_data->bytes.get(), PCRE2_INFO_NAMEENTRYSIZE, &size);
    pcre2_pattern_info(m_data->bytes.get(), PCRE2_INFO_NAMETABLE, &entry);
    std::vector<Part> parts;
    for (; count > 0; --count, entry += size)
        parts.push_back({reinterpret_cast<const char*>(entry + 2), entry[0] << 8 | entry[1]});
    return parts;
}

} // namespace textmatch
