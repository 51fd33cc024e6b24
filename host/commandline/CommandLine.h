// The command line of a program or of one of its commands: its options and operands, each declared once with
// its help, and one clear line for whatever is wrong.
#pragma once

#include "commandline/UsageError.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
} // namespace CLI

namespace commandline
{

// What a number may be, both ends included.
struct Range
{
    std::uint32_t least = 0;
    std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
};

// Decimal digits and nothing else. Throws UsageError that begins with `what`.
std::uint32_t ParseNumber(const std::string& what, const std::string& text, Range range = {});

// Values are declared with references to where Parse puts them. These must outlive the command line, and keep
// what they held where nothing is given.
//
// Names are "--grep", "-n", or both as "-i,--ignore-case". Labels stand for values in the help: "N", "FILE".
class CommandLine
{
public:
    // `name` is the name in messages, `helpCall` what the user types to see the help.
    CommandLine(const std::string& name, const std::string& helpCall);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    void AddFlag(const std::string& names, bool& value, const std::string& help);
    void AddText(const std::string& names, const std::string& label, std::optional<std::string>& value,
                 const std::string& help);
    void AddNumber(const std::string& names, const std::string& label, std::optional<std::uint32_t>& value,
                   const std::string& help, Range range = {});
    // May be given several times.
    void AddTexts(const std::string& names, const std::string& label, std::vector<std::string>& values,
                  const std::string& help);
    // Whatever else a text can mean: `take` gets it, and throws UsageError when it means nothing.
    void AddValue(const std::string& names, const std::string& label,
                  const std::function<void(const std::string&)>& take, const std::string& help);

    // Words that belong to no option. Their labels come in the usage line, as "[FOLDER]" and "[FILE...]".
    void AddOperand(const std::string& label, std::optional<std::string>& value);
    void AddOperands(const std::string& label, std::vector<std::string>& values);
    // All words from the first that is no option on are `words`: a command with what belongs to it.
    void AddCommand(const std::string& label, std::vector<std::string>& words);

    // `words` are the words after the program's or command's name. "--name=value" is "--name value", and "--"
    // ends the options. False when the help is asked for, by "--help", "-h" or a first word "/?". Throws
    // UsageError.
    bool Parse(std::vector<std::string> words);

    // The usage line, `about`, and the options with their meaning, in lines of at most 80 characters. `about`
    // is printed as it is.
    std::string Help(const std::string& program, const std::string& about) const;

private:
    CLI::Option& AddOption(const std::string& names, const std::string& label, const std::string& help,
                           const std::function<void(const std::vector<std::string>&)>& take);
    [[noreturn]] void ThrowUnexpected(const std::vector<std::string>& words) const;

    std::string m_name;
    std::string m_helpCall;
    std::string m_operands; // their labels, each with a blank before it
    std::vector<std::string>* m_commandWords = nullptr;
    std::unique_ptr<CLI::App> m_app;
};

} // namespace commandline
