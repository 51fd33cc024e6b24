#include "logtool/Commands.h"
#include "logtool/CursorFile.h"
#include "logtool/Follower.h"

#include <ostream>

namespace logtool
{

namespace
{

constexpr std::uint32_t kDefaultRows = 10;

void Start(Follower& follower, const Arguments& arguments)
{
    Cursor cursor;
    if (arguments.Has("--cursor-file") && LoadCursor(arguments.Text("--cursor-file"), cursor))
        follower.StartAtCursor(cursor);
    else if (arguments.Has("--after"))
        follower.StartAfter(arguments.Number("--after", 0));
    else
        follower.StartAtLast(arguments.Number("-n", kDefaultRows));
}

// The cursor moves on only when what it stands for has reached the reader.
void ShowNews(Follower& follower, const Arguments& arguments, std::ostream& output)
{
    if (!follower.Poll())
        return;
    output.flush();
    if (arguments.Has("--cursor-file"))
        SaveCursor(arguments.Text("--cursor-file"), follower.Position());
}

} // namespace

int Tail(const Arguments& arguments, Host& host)
{
    if (arguments.Has("--after") && (arguments.Has("-n") || arguments.Has("--cursor-file")))
        throw UsageError("--after", "says where to begin, as -n and --cursor-file do: give one of them");
    arguments.Number("--after", 0);
    arguments.Number("-n", kDefaultRows);

    const std::vector<std::string> logs = ChosenLogs(arguments, host);
    TextOutput text(host.Output(), StyleOf(arguments, host), logs);
    Follower follower(logs, text, host.Messages());
    Start(follower, arguments);
    ShowNews(follower, arguments, host.Output());
    while (arguments.Has("-f") && host.Wait())
    {
        if (!arguments.Has("--log"))
            follower.AddLogs(host.ListLogs());
        ShowNews(follower, arguments, host.Output());
    }
    return kDone;
}

} // namespace logtool
