// LogDesk's command line, checked.
#pragma once

#include "logdesk/Steps.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace logdesk
{

// The user asked for something that does not exist or does not fit: one line "what: why".
class UsageError : public std::runtime_error
{
public:
    UsageError(const std::string& what, const std::string& why) : std::runtime_error(what + ": " + why) {}
};

struct Arguments
{
    bool help = false;         // only the help text is asked for
    bool start = false;        // begin a session; else show what is there
    std::string path;          // a folder or a file of a log, as given; empty for the user's own folder
    bool pathIsFolder = false; // and a file would not do
    int keep = 0;              // earlier sessions to keep; 0 for keeping none, touching none
    std::string screenshot;    // the picture to write before ending; empty for none
    std::vector<Step> steps;   // to take before the picture
};

// `words` are the words behind the program's name. Throws UsageError.
Arguments ParseArguments(const std::vector<std::string>& words);

// What the program prints for "--help".
const char* HelpText();

} // namespace logdesk
