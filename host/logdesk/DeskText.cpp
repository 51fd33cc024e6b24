#include "logdesk/DeskText.h"

namespace logdesk
{

std::string TitleText(const std::string& folder, SessionState session)
{
    const bool isRoot = folder.size() <= 3; // "C:\\" keeps its backslash
    const std::string name = folder.ends_with('\\') && !isRoot ? folder.substr(0, folder.size() - 1) : folder;
    const bool isWanting = session == SessionState::kRefused || session == SessionState::kElsewhere;
    return name + (isWanting ? " (no session started)" : "") + " - LogDesk";
}

std::string SessionText(SessionState session)
{
    switch (session)
    {
    case SessionState::kStarted:
        return "Session started";
    case SessionState::kOpened:
        return "Session opened";
    case SessionState::kElsewhere:
        return "No session started: another LogDesk shows this one";
    case SessionState::kRefused:
        break;
    }
    return "No session started: a program is writing here, or nothing can be written";
}

std::string RowsText(const ViewState& view)
{
    return std::to_string(view.rows) + (view.rows == 1 ? " row" : " rows");
}

std::string CaretText(const ViewState& view)
{
    if (view.log.empty())
        return "";
    return "Row " + std::to_string(view.caretRow + 1) + ": " + view.log + ", number " +
           std::to_string(view.number);
}

std::string FollowText(const ViewState& view)
{
    switch (view.follow)
    {
    case FollowState::kOn:
        return "Following";
    case FollowState::kPaused:
        return "Following paused";
    case FollowState::kOff:
        break;
    }
    return "Not following";
}

} // namespace logdesk
