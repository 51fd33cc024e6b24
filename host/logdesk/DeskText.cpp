#include "logdesk/DeskText.h"

namespace logdesk
{

std::string TitleText(const std::string& folder, SessionState session)
{
    const std::string state = session == SessionState::kRefused ? " (session not started)" : "";
    return folder + state + " - LogDesk";
}

std::string SessionText(SessionState session)
{
    switch (session)
    {
    case SessionState::kStarted:
        return "Session started";
    case SessionState::kOpened:
        return "Session opened";
    case SessionState::kRefused:
        break;
    }
    return "Session not started: another program writes here, or the folder cannot be written to";
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
