#include "logdesk/Arguments.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace logdesk
{

namespace
{

constexpr int kMostKept = 1000;

// The options that are given, with their values; the word without an option is "--open".
using Options = std::map<std::string, std::string>;

Options ReadOptions(const std::vector<std::string>& words)
{
    const char* const names[] = {"--folder", "--keep", "--open", "--screenshot", "--start", "--steps"};
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const bool isOption = words[i].starts_with('-');
        const std::string name = isOption ? words[i] : "--open";
        if (std::find(std::begin(names), std::end(names), name) == std::end(names))
            throw UsageError(name, "no option of LogDesk, see LogDesk --help");
        if (options.count(name) != 0)
            throw UsageError(words[i], isOption ? "given twice" : "one folder or file is enough");
        if (isOption && name != "--start")
            ++i;
        if (i == words.size() || words[i].empty())
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
        throw UsageError("--folder", "the folder is given already: " + options.at("--open"));
    if (has("--keep") && !has("--start"))
        throw UsageError("--keep", "keeps earlier sessions when a new one begins: give --start as well");
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
    arguments.start = options.count("--start") != 0;
    arguments.pathIsFolder = options.count("--folder") != 0;
    arguments.path = options[arguments.pathIsFolder ? "--folder" : "--open"];
    if (options.count("--keep") != 0)
        arguments.keep = ReadKeep(options["--keep"]);
    arguments.screenshot = options["--screenshot"];
    if (options.count("--steps") != 0)
        arguments.steps = ReadSteps(options["--steps"]);
    return arguments;
}

const char* HelpText()
{
    return R"(LogDesk [FOLDER | FILE]
LogDesk --start [FOLDER] [--keep N]

Shows the logs of the session in FOLDER; without it, in the folder that QM_LOG_FOLDER names or in the user's own.
With FILE, such as Run.LOG, from the first row of that log on. Nothing is changed.

  --start       begin a new session: the logs of the earlier one are deleted. FOLDER is made when missing
  --keep N      before that, copy the earlier session into a folder of its own below, named after its date,
                and keep the newest N of these
  --folder DIR  the same as FOLDER
  --open PATH   the same as FOLDER or FILE

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
