// The command line, checked: which command, its operands, its options.
#pragma once

#include "QmLogRow.h"

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace logtool
{

// The user asked for something that does not exist or does not fit: one line "what: why".
class UsageError : public std::runtime_error
{
public:
    UsageError(const std::string& what, const std::string& why) : std::runtime_error(what + ": " + why) {}
};

class Arguments
{
public:
    // `words` are the words behind the program's name. Throws UsageError.
    explicit Arguments(const std::vector<std::string>& words);

    const std::string& Command() const { return m_command; }
    const std::vector<std::string>& Operands() const { return m_operands; }

    bool Has(const std::string& option) const { return m_values.count(option) != 0; }
    // The value of an option given at most once; empty when it is not there.
    std::string Text(const std::string& option) const;
    // The values of an option that may be repeated, in order.
    std::vector<std::string> Texts(const std::string& option) const;
    // Throws UsageError for anything but a decimal number up to 4294967295.
    std::uint32_t Number(const std::string& option, std::uint32_t missing) const;
    // The block kind that "--kind" gives by name or number. Throws UsageError for anything else.
    std::optional<QmLogBlockKind> Kind() const;

private:
    std::string m_command;
    std::vector<std::string> m_operands;
    std::map<std::string, std::vector<std::string>> m_values;
};

} // namespace logtool
