// What may stand on logtool's command line before a command's own options.
#pragma once

#include "commandline/CommandLine.h"

#include <optional>
#include <string>
#include <vector>

namespace logtool
{

struct ProgramLine
{
    ProgramLine();

    std::optional<std::string> folder;
    bool version = false;
    std::vector<std::string> command; // with all words after it
    commandline::CommandLine line;
};

} // namespace logtool
