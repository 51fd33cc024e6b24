#include "logdesk/Arguments.h"

#include "commandline/CommandLine.h"

#include <algorithm>
#include <optional>

namespace logdesk
{

namespace
{

constexpr commandline::Range kKeepRange = {1, 1000};
constexpr commandline::Range kTrafficRange = {1, 1'000'000};

constexpr char kAbout[] =
    R"(Shows the logs of the session in FOLDER; without it, in the folder that
QM_LOG_FOLDER names, else in the user's own. With FILE, such as Run.LOG, from
the first row of that log on. Any other FILE, a text log of the usual kinds or
saved messages (*.zemalog), is shown as messages. With the address of an engine,
http[s]://host[:port]/[table]?session=NAME[&machine=NAME], a shipped session is
shown. Nothing there is changed.
)";

constexpr char kStepsHelp[] = "what to do before the picture, one step after the other:\n"
                              "home, end, up:N, down:N - move the caret\n"
                              "next-fold - to the next row that can be unfolded\n"
                              "unfold, unfold-all, fold - the caret's row\n"
                              "next-error, previous-error - to another error\n"
                              "find:TEXT - through the find bar; TEXT without comma\n"
                              "select:N, select-all - N rows from the caret on\n"
                              "follow:on, follow:off\n"
                              "message:N - select a message, counted from 1\n"
                              "next-message-error, previous-message-error - from it\n"
                              "find-message:TEXT, next-found, previous-found - through \"Find\"\n"
                              "sort:FIELD, sort:FIELD:desc - the messages, by level, body, ...\n"
                              "level:error, level:warning, level:all - messages to show\n"
                              "report:on, report:off, preview:on, preview:off - how they show\n"
                              "show-in-log, show-in-messages - the row of the message, and back\n"
                              "log-text:on, log-text:off, messages:on, messages:off - the two panes\n"
                              "split:N - the log text has N hundredths of the height\n"
                              "dark:on, dark:off, zoom:N - colours and size of the log text\n"
                              "size:WxH - of the window, in pixels\n"
                              "sample - write a sample session into the logs";

constexpr char kExitCodes[] =
    "\nExit code: 0 done, 1 the earlier session cannot be kept or the picture not made,\n2 asked wrongly.\n";

std::vector<Step> ReadSteps(const std::string& text)
{
    std::vector<Step> steps;
    for (std::size_t begin = 0; begin <= text.size();)
    {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string word = text.substr(begin, end - begin);
        Step step;
        if (!ParseStep(word, step))
            throw UsageError("--steps", "'" + word + "' is no step, see LogDesk --help");
        steps.push_back(step);
        begin = end + 1;
    }
    return steps;
}

// The declarations, and what a command line gives for them.
struct DeskLine
{
    DeskLine();
    Arguments Read() const;
    void ReadPath(Arguments& arguments) const;

    commandline::CommandLine line{"LogDesk", "LogDesk --help"};
    bool version = false;
    bool start = false;
    bool developer = false;
    std::optional<std::string> path;
    std::optional<std::string> open;
    std::optional<std::string> folder;
    std::optional<std::uint32_t> keep;
    std::optional<std::string> screenshot;
    std::vector<Step> steps;
    std::optional<std::uint32_t> traffic;
};

DeskLine::DeskLine()
{
    line.AddOperand("[FOLDER | FILE | ADDRESS]", path);
    line.AddFlag("--start", start,
                 "begin a new session in FOLDER, which is made when missing: the logs of the earlier one are "
                 "deleted");
    line.AddNumber("--keep", "N", keep,
                   "with --start: first copy the earlier session into a folder of its own in FOLDER, named "
                   "after its date, and keep the newest N of these",
                   kKeepRange);
    line.AddText("--open", "PATH", open, "the same as FOLDER, FILE or ADDRESS");
    line.AddText("--folder", "DIR", folder, "the same as FOLDER");
    line.AddText("--screenshot", "FILE.bmp", screenshot, "write a picture of the window and end");
    line.AddValue(
        "--steps", "STEP,...", [this](const std::string& text) { steps = ReadSteps(text); }, kStepsHelp);
    line.AddNumber("--traffic", "N", traffic, "make up N messages a second, to try the window with",
                   kTrafficRange);
    line.AddFlag(
        "--developer", developer,
        "offer what the window is tried with: \"Test [DEBUG]\" writes a sample session into the logs");
    line.AddFlag("--version", version, "show the version");
}

Arguments DeskLine::Read() const
{
    if (keep && !start)
        throw UsageError("--keep", "keeps earlier sessions when a new one begins: give --start as well");
    if (!steps.empty() && !screenshot)
        throw UsageError("--steps", "lead to a picture: give --screenshot as well");
    if (screenshot && screenshot->empty())
        throw UsageError("--screenshot", "names no file");
    Arguments arguments;
    ReadPath(arguments);
    arguments.version = version;
    arguments.start = start;
    arguments.developer = developer;
    arguments.keep = static_cast<int>(keep.value_or(0));
    arguments.screenshot = screenshot.value_or("");
    arguments.steps = steps;
    arguments.traffic = traffic.value_or(0);
    return arguments;
}

// The path can be given in three ways, but only once.
void DeskLine::ReadPath(Arguments& arguments) const
{
    arguments.pathIsFolder = folder.has_value();
    const std::optional<std::string>* given = nullptr;
    for (const std::optional<std::string>* const each : {&path, &open, &folder})
    {
        if (*each && given)
            throw UsageError(**each, "one folder or file is enough");
        given = *each ? each : given;
    }
    if (given && (*given)->empty())
        throw UsageError("''", "names no folder or file");
    arguments.path = given ? **given : "";
}

} // namespace

Arguments ParseArguments(const std::vector<std::string>& words)
{
    DeskLine desk;
    if (desk.line.Parse(words))
        return desk.Read();
    Arguments arguments;
    arguments.help = true;
    return arguments;
}

std::string HelpText()
{
    return DeskLine().line.Help("LogDesk", kAbout) + kExitCodes;
}

} // namespace logdesk
