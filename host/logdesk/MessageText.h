// What the status bar says of the messages.
#pragma once

#include <cstdint>
#include <string>

namespace logdesk
{

// What is shown of the messages at the moment.
struct MessageState
{
    std::uint32_t shown = 0;
    std::uint32_t all = 0;     // that there are, without those that were cleared
    std::uint32_t cleared = 0; // which are left out of all views
    bool filtered = false;     // by filters, a least level, or because they repeat the one before
    bool sorted = false;
    bool busy = false;   // a view is being made
    double progress = 0; // of it, 0 to 1
    bool saving = false; // a file is being written
    double saved = 0;    // of it, 0 to 1
    bool operator==(const MessageState&) const = default;
};

// "1,200 of 5,000, filtered", "5,000 messages", "Sorting 42 %".
std::string MessagesText(const MessageState& state);

// "No errors", "1 error", "1,204 errors".
std::string ErrorsText(std::uint32_t errors);

// What the button beside it does: "Cancel", "Remove filters", or nothing.
std::string MessagesButton(const MessageState& state);

} // namespace logdesk
