#include "logdesk/Arguments.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace logdesk
{

namespace
{

constexpr int kMostKept = 1000;

// The options that are given, with their values.
using Options = std::map<std::string, std::string>;

Options ReadOptions(const std::vector<std::string>& words)
{
    const char* const names[] = {"--folder", "--keep", "--open", "--screenshot", "--steps"};
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const std::string& name = words[i];
        if (std::find(std::begin(names), std::end(names), name) == std::end(names))
            throw UsageError(name, "no option of LogDesk, see LogDesk --help");
        if (options.count(name) != 0)
            throw UsageError(name, "given twice");
        if (++i == words.size() || words[i].empty())
            throw UsageError(name, "needs a value");
        options[name] = words[i];
    }
    return options;
}

int ReadKeep(const std::string& text)
{
    int keep = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, keep);
    if (result.ec != std::errc() || result.ptr != end || keep < 1 || keep > kMostKept)
        throw UsageError("--keep", "'" + text + "' is no number from 1 to " + std::to_string(kMostKept));
    return keep;
}

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

// Throws when `option` is given without, or against, what it goes with.
void CheckTogether(const Options& options)
{
    const auto has = [&](const char* name) { return options.count(name) != 0; };
    if (has("--open") && has("--folder"))
        throw UsageError("--folder", "names the folder as --open does: give one of them");
    if (has("--open") && has("--keep"))
        throw UsageError("--keep", "is for starting a session, and --open starts none");
    if (has("--steps") && !has("--screenshot"))
        throw UsageError("--steps", "lead to a picture: give --screenshot as well");
}

} // namespace

Arguments ParseArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    arguments.help = std::find(words.begin(), words.end(), "--help") != words.end();
    if (arguments.help)
        return arguments;

    Options options = ReadOptions(words);
    CheckTogether(options);
    arguments.open = options.count("--open") != 0;
    arguments.folder = options[arguments.open ? "--open" : "--folder"];
    if (options.count("--keep") != 0)
        arguments.keep = ReadKeep(options["--keep"]);
    arguments.screenshot = options["--screenshot"];
    if (options.count("--steps") != 0)
        arguments.steps = ReadSteps(options["--steps"]);
    return arguments;
}

const char* HelpText()
{
    return R"(LogDesk [--folder DIR] [--keep N]
LogDesk --open DIR

Shows the logs of a session. Starting it begins a new session in the log folder: the logs of the
earlier one are deleted.

  --folder DIR  the log folder, instead of the one in QM_LOG_FOLDER or the user's own; made when missing
  --open DIR    show the session in DIR; nothing is deleted
  --keep N      before the deletion copy the earlier session into a folder of its own below the log
                folder, named after its date, and keep the newest N of them

  --screenshot FILE.bmp  write a picture of the window and end
  --steps STEP,...       before the picture:
                           home, end, up:N, down:N          move the caret
                           next-fold                        to the next row that can be unfolded
                           unfold, unfold-all, fold         the caret's row
                           next-error, previous-error       to another error
                           find:TEXT                        through the find bar; TEXT without comma
                           select:N, select-all             N rows from the caret on
                           follow:on, follow:off
                           size:WxH                         of the window, in pixels
                           sample                           write a sample session

Exit code: 0 done, 1 the earlier session cannot be kept or the picture not made, 2 asked wrongly.
)";
}

} // namespace logdesk
