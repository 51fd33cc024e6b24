#include "logdesk/DeskText.h"

#include "logdesk/NumberText.h"

namespace logdesk
{

namespace
{

// A session was to be started, and was not.
bool IsWanting(SessionState session)
{
    return session == SessionState::Refused || session == SessionState::Elsewhere;
}

std::string StateText(SessionState session)
{
    switch (session)
    {
    case SessionState::Started:
        return "Session started";
    case SessionState::Opened:
        return "Session opened";
    case SessionState::Elsewhere:
        return "No session started: another LogDesk shows this one";
    case SessionState::Refused:
        break;
    }
    return "No session started: a program is writing here, or nothing can be written";
}

} // namespace

std::string FolderName(const std::string& folder)
{
    const bool isRoot = folder.size() <= 3; // "C:\\"
    return folder.ends_with('\\') && !isRoot ? folder.substr(0, folder.size() - 1) : folder;
}

std::string TitleText(const std::string& folder, SessionState session)
{
    return FolderName(folder) + (IsWanting(session) ? " (no session started)" : "") + " - LogDesk";
}

std::string FileTitleText(const std::string& file)
{
    return file + " - LogDesk";
}

// There is room for one of them.
std::string SessionLinkText(SessionState session, const FolderState& folder)
{
    return IsWanting(session) ? "" : AfterText(folder);
}

std::string SessionText(SessionState session, const FolderState& folder)
{
    const std::string after = SessionLinkText(session, folder);
    return StateText(session) + (after.empty() ? "" : ". " + after);
}

std::string RowsText(const ViewState& view)
{
    return CountText(static_cast<std::uint64_t>(view.rows), "row");
}

std::string CaretText(const ViewState& view)
{
    if (view.log.empty())
        return "";
    return "Row " + std::to_string(view.caretRow + 1) + ": " + view.log + ", number " +
           std::to_string(view.number);
}

std::string LeftFoldedText(int rows)
{
    return "\"Expand All\" has ended early: up to " + CountText(static_cast<std::uint64_t>(rows), "row") +
           " may be folded";
}

std::string FollowText(const ViewState& view)
{
    switch (view.follow)
    {
    case FollowState::On:
        return "Following";
    case FollowState::Paused:
        return "Following paused";
    case FollowState::Off:
        break;
    }
    return "Not following";
}

} // namespace logdesk
