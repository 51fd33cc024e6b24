// What the title and the status bar say.
#pragma once

#include "logdesk/Notices.h"

#include <string>

namespace logdesk
{

enum class SessionState
{
    Started,   // this program began the session
    Opened,    // what lies in the folder is shown
    Elsewhere, // another LogDesk has the folder: a new session would delete the one it shows
    Refused    // it was to be started and could not be
};

enum class FollowState
{
    On,
    Paused,
    Off
};

// What the text window shows at the moment.
struct ViewState
{
    int rows = 0;             // displayed
    int caretRow = 0;         // displayed, counted from 0
    std::string log = {};     // of the caret's row; empty when there is no such row
    unsigned long number = 0; // its sequence number
    FollowState follow = FollowState::On;
    bool operator==(const ViewState&) const = default;
};

// A folder as it is shown: without the backslash at its end, unless it is a drive's.
std::string FolderName(const std::string& folder);

std::string TitleText(const std::string& folder, SessionState session);
std::string FileTitleText(const std::string& file); // while a file's messages are shown

// What of the session's text leads to rows that are out of sight; empty for nothing.
std::string SessionLinkText(SessionState session, const FolderState& folder);
std::string SessionText(SessionState session, const FolderState& folder);
std::string RowsText(const ViewState& view);
std::string CaretText(const ViewState& view);
std::string LeftFoldedText(int rows); // after "Expand All"
std::string FollowText(const ViewState& view);

} // namespace logdesk
