// Files of messages, whatever kind they are of.
#pragma once

#include "msgservice/MessageSource.h"
#include "msgservice/text/TextFormat.h"

#include <functional>
#include <memory>
#include <string>

namespace msgservice
{

struct OpenOptions
{
    const TextFormats* formats = nullptr; // for text; must outlive the source
    const TextFormat* format = nullptr;   // that a text has; null to find it out
    bool follow = false;                  // what is added to the file later
    bool readOnly = false;                // a saved file is not repaired
    bool named = false;                   // the messages of a text have the path as their source

    // Makes a folder the log folder, in which the logs of a session are read; null if it has to stay what it
    // is.
    std::function<void(const std::string& folder)> useFolder;
};

// A saved file of messages; one of the two files of a log, if there are both and its folder can be used; or
// else a text. Throws an exception with a sentence for the user if the file cannot be opened.
std::unique_ptr<MessageSource> OpenSource(const std::string& path, const OpenOptions& options);

} // namespace msgservice
