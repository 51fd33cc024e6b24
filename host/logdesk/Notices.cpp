#include "logdesk/Notices.h"

#include "logdesk/KeptSessions.h"
#include "logdesk/NumberText.h"

#include <algorithm>
#include <cctype>

namespace logdesk
{

namespace
{

// "Main, Run and SQL"; of many the first ones.
std::string List(const std::vector<std::string>& names)
{
    constexpr std::size_t kMostNamed = 5;
    const std::size_t named = names.size() > kMostNamed ? kMostNamed - 1 : names.size();
    std::string list;
    for (std::size_t i = 0; i < named; ++i)
        list += (i == 0 ? "" : i + 1 < names.size() ? ", " : " and ") + names[i];
    return named < names.size() ? list + " and " + std::to_string(names.size() - named) + " more" : list;
}

std::vector<std::string> Names(const std::vector<LogCounts>& logs)
{
    std::vector<std::string> names(logs.size());
    std::transform(logs.begin(), logs.end(), names.begin(), [](const LogCounts& log) { return log.name; });
    return names;
}

const LogCounts* Find(const FolderState& state, const std::string& name)
{
    for (const LogCounts& log : state.logs)
        if (IsSameLog(log.name, name))
            return &log;
    return nullptr;
}

// The rows of other logs while "Main" has none.
std::string WithoutMain(const FolderState& state)
{
    std::vector<std::string> others;
    for (const LogCounts& log : state.logs)
        if (log.rows > 0)
            others.push_back(log.name + " (" + CountText(log.rows, "row") + ")");
    return "Main has no rows, and rows of other logs unfold only among Main's: " + List(others) +
           ". \"All logs\" shows them";
}

std::string BeforeMain(const FolderState& state)
{
    std::vector<std::string> logs;
    for (const LogCounts& log : state.logs)
        if (log.before > 0)
            logs.push_back(CountText(log.before, "row") + " of " + log.name);
    return "Not in this view, because they are older than the first row of Main: " + List(logs) +
           ". \"All logs\" shows them";
}

// `names` are the logs that have rows and are none of ours, the one that the user asked for first.
std::string Foreign(const FolderState& state, const std::vector<std::string>& names)
{
    return List(names) + (names.size() == 1 ? " is" : " are") +
           " among the messages only: the log text shows " + List(Names(state.logs));
}

// About the log that the user asked for, where nothing else tells why it is not seen.
std::string Wanted(const FolderState& state)
{
    const LogCounts* const log = Find(state, state.wanted);
    if (!log || log->rows == 0)
        return state.wanted + " has no rows: its index, " + state.wanted +
               ".ROW, is missing or empty. Without an index LogDesk shows the text as messages";
    if (state.showsMain && log->after == log->rows)
        return state.wanted + " begins after the last row of Main, and unfolds when Main goes on. "
                              "\"All logs\" shows it";
    return "";
}

std::string ClockSetBack(const FolderState& state)
{
    return "The clock was set back at number " + std::to_string(state.firstStep) +
           (state.clockSteps > 1 ? " and " + CountText(state.clockSteps - 1, "more time") : "") +
           ": later rows may have earlier times";
}

bool HasRows(const LogCounts& log)
{
    return log.rows > 0;
}

} // namespace

std::string LogOfFile(const std::string& file)
{
    if (!IsSessionFile(file) || IsSameLog(file, "Log.DAT") || IsSameLog(file, "Log.TIM"))
        return "";
    return file.substr(0, file.size() - 4);
}

bool IsSameLog(const std::string& a, const std::string& b)
{
    const auto isSame = [](char left, char right) {
        return std::toupper(static_cast<unsigned char>(left)) ==
               std::toupper(static_cast<unsigned char>(right));
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

std::vector<std::string> Notices(const FolderState& state)
{
    if (!state.isThere)
        return {state.folder + " is not there, or cannot be read"};

    std::vector<std::string> notices;
    std::vector<std::string> foreign = state.foreign;
    const auto isWanted = [&](const std::string& log) { return IsSameLog(log, state.wanted); };
    std::stable_partition(foreign.begin(), foreign.end(), isWanted);
    const bool isForeign = !foreign.empty() && isWanted(foreign.front());
    if (!state.wanted.empty() && !isForeign)
        if (const std::string wanted = Wanted(state); !wanted.empty())
            notices.push_back(wanted);

    const bool hasMain = !state.logs.empty() && HasRows(state.logs.front());
    const bool hasRows = std::any_of(state.logs.begin(), state.logs.end(), HasRows);
    if (!hasMain && hasRows && state.showsMain)
        notices.push_back(WithoutMain(state));
    else if (!hasRows && foreign.empty() && notices.empty())
        notices.push_back(
            "There are no logs in " + state.folder +
            " yet. What programs write there is shown as it comes; another session: LogDesk FOLDER");
    if (hasMain && state.showsMain &&
        std::any_of(state.logs.begin(), state.logs.end(),
                    [](const LogCounts& log) { return log.before > 0; }))
        notices.push_back(BeforeMain(state));
    if (!foreign.empty())
        notices.insert(isForeign ? notices.begin() : notices.end(), Foreign(state, foreign));
    if (state.clockSteps > 0)
        notices.push_back(ClockSetBack(state));
    return notices;
}

unsigned long RowsAfterMain(const FolderState& state)
{
    unsigned long rows = 0;
    if (state.showsMain && !state.logs.empty() && state.logs.front().rows > 0)
        for (const LogCounts& log : state.logs)
            rows += log.after;
    return rows;
}

std::string AfterText(const FolderState& state)
{
    const unsigned long rows = RowsAfterMain(state);
    return rows == 0 ? "" : CountText(rows, "row") + " after Main's last, in \"All logs\"";
}

} // namespace logdesk
