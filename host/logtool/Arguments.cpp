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
    std::size_t minOperands;
    std::size_t maxOperands;
    const char* missing; // what is said when there are too few operands
    std::vector<Option> options;
};

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

const std::vector<CommandForm>& Forms()
{
    static const Option kFolder = {"--folder", Value::kOne};
    static const Option kLog = {"--log", Value::kMany};
    static const Option kNumbers = {"--numbers", Value::kNone};
    static const std::vector<CommandForm> forms = {
        {"help", 0, 1, "", {}},
        {"write",
         1,
         kAnyNumber,
         "name the log",
         {kFolder, {"--kind", Value::kOne}, {"--block", Value::kOne}}},
        {"cat",
         0,
         0,
         "",
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
         0,
         "",
         {kFolder,
          kLog,
          kNumbers,
          {"-f", Value::kNone},
          {"-n", Value::kOne},
          {"--after", Value::kOne},
          {"--cursor-file", Value::kOne}}},
        {"tree", 0, 0, "", {kFolder, kLog, {"--depth", Value::kOne}, {"--errors", Value::kNone}}},
        {"errors", 0, 0, "", {kFolder, kLog}},
        {"verify", 0, 1, "", {kFolder}},
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

const Option* FindOption(const CommandForm& form, const std::string& name)
{
    for (const Option& option : form.options)
        if (name == option.name)
            return &option;
    return nullptr;
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
            const Option* option = FindOption(*form, word);
            if (option == nullptr)
                throw UsageError(word, "no option of " + m_command + ", see logtool help " + m_command);
            if (option->value != Value::kMany && Has(word))
                throw UsageError(word, "given twice");
            if (option->value != Value::kNone && i + 1 == words.size())
                throw UsageError(word, "needs a value");
            m_values[word].push_back(option->value == Value::kNone ? "" : words[++i]);
        }
    }
    if (m_operands.size() < form->minOperands)
        throw UsageError(m_command, form->missing);
    if (m_operands.size() > form->maxOperands)
        throw UsageError(m_operands[form->maxOperands], "not expected by " + m_command);
}

std::string Arguments::Text(const std::string& option, const std::string& missing) const
{
    const auto values = m_values.find(option);
    return values == m_values.end() ? missing : values->second.front();
}

std::vector<std::string> Arguments::Texts(const std::string& option) const
{
    const auto values = m_values.find(option);
    return values == m_values.end() ? std::vector<std::string>() : values->second;
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

QmLogBlockKind Arguments::Kind(const std::string& option, QmLogBlockKind missing) const
{
    if (!Has(option))
        return missing;
    static const char* const names[] = {"plain", "notice", "error", "detail"};
    const std::string text = Text(option);
    std::uint32_t number = 0;
    for (const char* name : names)
    {
        if (text == name)
            return static_cast<QmLogBlockKind>(number);
        ++number;
    }
    if (!ParseNumber(text, number) || number == kEnclosingKind)
        throw UsageError(
            option, "'" + text + "' is no kind: plain, notice, error, detail or a number below 4294967295");
    return static_cast<QmLogBlockKind>(number);
}

} // namespace logtool
