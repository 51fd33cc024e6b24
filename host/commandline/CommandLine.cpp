#include "commandline/CommandLine.h"

#include "commandline/HelpText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>

namespace commandline
{

namespace
{

// Far more operands than a command line can hold.
constexpr int kAnyNumber = 1 << 24;

// "--name=" gives an empty value, which CLI11 would take for none and look for it in the next word.
std::vector<std::string> WithEmptyValues(const std::vector<std::string>& words)
{
    std::vector<std::string> result;
    for (const std::string& word : words)
    {
        result.push_back(word);
        if (word.size() > 3 && word.starts_with("--") && word.find('=') == word.size() - 1)
        {
            result.back().pop_back();
            result.emplace_back();
        }
    }
    return result;
}

// The names of an option as a user types them: "-i, --ignore-case".
std::string NamesOf(const CLI::Option& option)
{
    std::string names;
    for (const std::string& name : option.get_snames())
        names += (names.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames())
        names += (names.empty() ? "--" : ", --") + name;
    return names;
}

} // namespace

std::uint32_t ParseNumber(const std::string& what, const std::string& text, Range range)
{
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number < range.least || number > range.most)
        throw UsageError(what, "'" + text + "' is no number from " + std::to_string(range.least) + " to " +
                                   std::to_string(range.most));
    return number;
}

CommandLine::CommandLine(const std::string& name, const std::string& helpCall)
    : m_name(name), m_helpCall(helpCall), m_app(std::make_unique<CLI::App>())
{
    m_app->set_help_flag("-h,--help", "show this");
    m_app->allow_windows_style_options(false); // "/tmp" is a path
}

CommandLine::~CommandLine() = default;

// Every option takes all its values and none of CLI11's conversions: those read "010" as 8.
CLI::Option& CommandLine::AddOption(const std::string& names, const std::string& label,
                                    const std::string& help,
                                    const std::function<void(const std::vector<std::string>&)>& take)
{
    CLI::Option* const option = m_app->add_option(
        names,
        [take](const std::vector<std::string>& texts) {
            take(texts);
            return true;
        },
        help);
    option->option_text(label)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    return *option;
}

void CommandLine::AddFlag(const std::string& names, bool& value, const std::string& help)
{
    m_app->add_flag(names, value, help)->disable_flag_override();
}

void CommandLine::AddValue(const std::string& names, const std::string& label,
                           const std::function<void(const std::string&)>& take, const std::string& help)
{
    const std::string name = names.substr(names.find(',') + 1);
    AddOption(names, label, help, [take, name](const std::vector<std::string>& texts) {
        if (texts.size() > 1)
            throw UsageError(name, "given twice");
        take(texts.front());
    });
}

void CommandLine::AddText(const std::string& names, const std::string& label,
                          std::optional<std::string>& value, const std::string& help)
{
    AddValue(
        names, label, [&value](const std::string& text) { value = text; }, help);
}

void CommandLine::AddNumber(const std::string& names, const std::string& label,
                            std::optional<std::uint32_t>& value, const std::string& help, Range range)
{
    const std::string name = names.substr(names.find(',') + 1);
    const auto take = [&value, name, range](const std::string& text) {
        value = ParseNumber(name, text, range);
    };
    AddValue(names, label, take, help);
}

void CommandLine::AddTexts(const std::string& names, const std::string& label,
                           std::vector<std::string>& values, const std::string& help)
{
    AddOption(names, label, help, [&values](const std::vector<std::string>& texts) { values = texts; });
}

void CommandLine::AddOperand(const std::string& label, std::optional<std::string>& value)
{
    m_operands += ' ' + label;
    AddOption("operand" + std::to_string(m_operands.size()), label, "",
              [&value](const std::vector<std::string>& texts) { value = texts.front(); });
}

void CommandLine::AddOperands(const std::string& label, std::vector<std::string>& values)
{
    m_operands += ' ' + label;
    // As many are expected, and not any number, because CLI11 would then take the word "[a,b]" for a list.
    AddOption("operands", label, "", [&values](const std::vector<std::string>& texts) {
        values = texts;
    }).expected(kAnyNumber);
}

void CommandLine::AddCommand(const std::string& label, std::vector<std::string>& words)
{
    m_operands += ' ' + label;
    m_app->prefix_command();
    m_commandWords = &words;
}

bool CommandLine::Parse(std::vector<std::string> words)
{
    if (!words.empty() && words.front() == "/?")
        return false;
    words = WithEmptyValues(words);
    std::reverse(words.begin(), words.end()); // so CLI11 wants them
    try
    {
        m_app->parse(words);
    }
    catch (const CLI::CallForHelp&)
    {
        return false;
    }
    catch (const CLI::ExtrasError&)
    {
        ThrowUnexpected(m_app->remaining());
    }
    catch (const CLI::ArgumentMismatch& error)
    {
        const std::string message = error.what(); // "--from: 1 required ...", "numbers was given ..."
        const std::string name = message.substr(0, message.find_first_of(": "));
        if (message.find("flag override") != std::string::npos)
            throw UsageError("--" + name, "takes no value");
        throw UsageError(name, "needs a value");
    }
    if (!m_commandWords)
        return true;
    *m_commandWords = m_app->remaining();
    if (!m_commandWords->empty() && m_commandWords->front() == "--")
        m_commandWords->erase(m_commandWords->begin());
    else if (!m_commandWords->empty() && m_commandWords->front().starts_with('-'))
        ThrowUnexpected(*m_commandWords);
    return true;
}

void CommandLine::ThrowUnexpected(const std::vector<std::string>& words) const
{
    const std::string word = words.front() == "--" && words.size() > 1 ? words[1] : words.front();
    const bool option = words.front() == word && word.starts_with('-') && word != "-";
    throw UsageError(option ? word.substr(0, word.find('=')) : word,
                     option ? "no option of " + m_name + ", see " + m_helpCall : "not expected by " + m_name);
}

std::string CommandLine::Help(const std::string& program, const std::string& about) const
{
    std::vector<HelpEntry> entries;
    for (const CLI::Option* option : std::as_const(*m_app).get_options())
    {
        if (option->nonpositional() && option != m_app->get_help_ptr())
            entries.push_back({NamesOf(*option) + (option->get_option_text().empty() ? "" : " ") +
                                   option->get_option_text(),
                               option->get_description()});
    }
    entries.push_back({NamesOf(*m_app->get_help_ptr()), m_app->get_help_ptr()->get_description()});
    const std::string options = m_commandWords ? "" : " [OPTION...]";
    return program + options + m_operands + "\n\n" + about + '\n' + Table(entries);
}

} // namespace commandline
