#include "logtool/Arguments.h"

#include <charconv>
#include <cstddef>
#include <limits>

namespace logtool
{

namespace
{

enum class Value
{
    kNone,
    kOne,
    kMany // the option may be repeated
};

struct Option
{
    const char* name;
    Value value;
};

struct CommandForm
{
    const char* name;
    std::size_t maxOperands;
    std::vector<Option> options;
};

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

const std::vector<CommandForm>& Forms()
{
    static const Option kFolder = {"--folder", Value::kOne};
    static const Option kLog = {"--log", Value::kMany};
    static const Option kNumbers = {"--numbers", Value::kNone};
    static const std::vector<CommandForm> forms = {
        {"help", 1, {}},
        {"write", kAnyNumber, {kFolder, {"--kind", Value::kOne}, {"--block", Value::kOne}}},
        {"cat",
         0,
         {kFolder,
          kLog,
          kNumbers,
          {"--from", Value::kOne},
          {"--to", Value::kOne},
          {"--kind", Value::kOne},
          {"--grep", Value::kOne},
          {"-A", Value::kOne},
          {"-B", Value::kOne}}},
        {"tail",
         0,
         {kFolder,
          kLog,
          kNumbers,
          {"-f", Value::kNone},
          {"-n", Value::kOne},
          {"--after", Value::kOne},
          {"--cursor-file", Value::kOne}}},
        {"tree", 0, {kFolder, kLog, {"--depth", Value::kOne}, {"--errors", Value::kNone}}},
        {"errors", 0, {kFolder, kLog}},
        {"verify", 1, {kFolder}},
    };
    return forms;
}

const CommandForm* FindForm(const std::string& command)
{
    for (const CommandForm& form : Forms())
        if (command == form.name)
            return &form;
    return nullptr;
}

// Whether a value follows option `name`. Throws UsageError when the option may not stand here.
bool TakesValue(const CommandForm& form, const std::string& name, bool given)
{
    const std::string command = form.name;
    for (const Option& option : form.options)
    {
        if (name != option.name)
            continue;
        if (given && option.value != Value::kMany)
            throw UsageError(name, "given twice");
        return option.value != Value::kNone;
    }
    throw UsageError(name, "no option of " + command + ", see logtool help " + command);
}

// A word that begins with a hyphen and is not one: "-" alone is the standard input.
bool LooksLikeOption(const std::string& word)
{
    return word.size() > 1 && word[0] == '-';
}

// Which options there are depends on the command, so it is found first. Only "--folder", which all commands
// share, may stand before it.
std::size_t CommandPosition(const std::vector<std::string>& words)
{
    std::size_t position = 0;
    while (position < words.size() && words[position] == "--folder")
        position += 2;
    if (position >= words.size())
        throw UsageError("command", "missing, see logtool help");
    return position;
}

bool ParseNumber(const std::string& text, std::uint32_t& number)
{
    const char* end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

Arguments::Arguments(const std::vector<std::string>& words)
{
    const std::size_t commandPosition = CommandPosition(words);
    m_command = words[commandPosition];
    if (m_command == "--help" || m_command == "-h")
        m_command = "help";
    const CommandForm* form = FindForm(m_command);
    if (form == nullptr)
        throw UsageError(m_command, "no such command, see logtool help");

    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const std::string& word = words[i];
        if (i == commandPosition)
            continue;
        if (optionsEnded || !LooksLikeOption(word))
            m_operands.push_back(word);
        else if (word == "--")
            optionsEnded = true;
        else
        {
            const bool takesValue = TakesValue(*form, word, Has(word));
            if (takesValue && i + 1 == words.size())
                throw UsageError(word, "needs a value");
            m_values[word].push_back(takesValue ? words[++i] : "");
        }
    }
    if (m_operands.size() > form->maxOperands)
        throw UsageError(m_operands[form->maxOperands], "not expected by " + m_command);
}

std::string Arguments::Text(const std::string& option) const
{
    return Has(option) ? m_values.at(option).front() : "";
}

std::vector<std::string> Arguments::Texts(const std::string& option) const
{
    return Has(option) ? m_values.at(option) : std::vector<std::string>();
}

std::uint32_t Arguments::Number(const std::string& option, std::uint32_t missing) const
{
    if (!Has(option))
        return missing;
    std::uint32_t number = 0;
    if (!ParseNumber(Text(option), number))
        throw UsageError(option, "'" + Text(option) + "' is no number from 0 to 4294967295");
    return number;
}

std::optional<QmLogBlockKind> Arguments::Kind() const
{
    if (!Has("--kind"))
        return std::nullopt;
    static const std::map<std::string, QmLogBlockKind> names = {
        {"plain", kPlainKind}, {"notice", kNoticeKind}, {"error", kErrorKind}, {"detail", kDetailKind}};
    const std::string text = Text("--kind");
    if (const auto name = names.find(text); name != names.end())
        return name->second;
    std::uint32_t number = 0;
    if (!ParseNumber(text, number) || number == kEnclosingKind)
        throw UsageError(
            "--kind", "'" + text + "' is no kind: plain, notice, error, detail or a number below 4294967295");
    return static_cast<QmLogBlockKind>(number);
}

} // namespace logtool
