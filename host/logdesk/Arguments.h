// LogDesk's command line, checked.
#pragma once

#include "commandline/UsageError.h"
#include "logdesk/Steps.h"

#include <cstdint>
#include <string>
#include <vector>

namespace logdesk
{

using commandline::UsageError;

struct Arguments
{
    bool help = false;         // only the help text is asked for
    bool version = false;      // or only the version
    bool start = false;        // begin a session; else show what is there
    std::string path;          // a folder or a file of a log, as given; empty for the user's own folder
    bool pathIsFolder = false; // and a file would not do
    int keep = 0;              // earlier sessions to keep; 0 for keeping none, touching none
    std::string screenshot;    // the picture to write before ending; empty for none
    std::vector<Step> steps;   // to take before the picture
    bool developer = false;    // offer what developers try the window with
    std::uint32_t traffic = 0; // messages to make up each second, for trying the window
};

// `words` are the words after the program's name. Throws UsageError.
Arguments ParseArguments(const std::vector<std::string>& words);

// What the program prints for "--help".
std::string HelpText();

} // namespace logdesk
