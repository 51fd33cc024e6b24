#include "logtool/Command.h"

#include "logtool/Commands.h"
#include "msgservice/session/Counter.h"

#include "wintypes.h"

#include <algorithm>
#include <map>

namespace logtool
{

namespace
{

QmLogBlockKind ParseKind(const std::string& text)
{
    static const std::map<std::string, QmLogBlockKind> names = {
        {"plain", kPlainKind}, {"notice", kNoticeKind}, {"error", kErrorKind}, {"detail", kDetailKind}};
    if (const auto name = names.find(text); name != names.end())
        return name->second;
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        throw UsageError("--kind", "'" + text + "' is no kind: plain, notice, error, detail or a number");
    return static_cast<QmLogBlockKind>(
        commandline::ParseNumber("--kind", text, {0, static_cast<std::uint32_t>(kEnclosingKind) - 1}));
}

std::vector<std::string>::const_iterator FindName(const std::vector<std::string>& logs,
                                                  const std::string& name)
{
    return std::find_if(logs.begin(), logs.end(),
                        [&](const std::string& log) { return msgservice::IsSameName(log, name); });
}

} // namespace

Command::Command(const Texts& texts, FolderUse use)
    : m_texts(texts), m_use(use), m_line(texts.name, "logtool help " + std::string(texts.name))
{
    if (use != FolderUse::None)
        m_line.AddText("--folder", "DIR", m_folder, kFolderHelp);
}

std::string Command::Help() const
{
    return m_line.Help(std::string("logtool ") + m_texts.name, m_texts.about) +
           "\nExample: " + m_texts.example + '\n';
}

int Command::Call(const std::vector<std::string>& words, Host& host)
{
    if (!m_line.Parse(words))
    {
        host.Output() << Help();
        return kDone;
    }
    if (m_use != FolderUse::None && UsesFolder())
        EnterFolder(host);
    return Run(host);
}

void Command::AddLogOption()
{
    m_line.AddTexts("--log", "NAME", m_logs, "only this log; may be repeated");
}

void Command::AddNumbersOption(const char* help)
{
    m_line.AddFlag("--numbers", m_numbers, help);
}

void Command::AddTimesOption(const char* help)
{
    m_line.AddFlag("--times", m_showsTimes, help);
}

const CQmLogTimes* Command::ShownTimes()
{
    return m_showsTimes ? &OpenTimes("--times") : nullptr;
}

const CQmLogTimes& Command::OpenTimes(const char* option)
{
    if (m_times.GetSampleCount() == 0 && !m_times.SetFolder(nullptr))
        throw UsageError(option,
                         "the session in " + LogFolder() + " has no times: see \"logtool help write\"");
    return m_times;
}

void Command::AddKindOption(std::optional<QmLogBlockKind>& kind, const std::string& help)
{
    m_line.AddValue(
        "--kind", "KIND", [&kind](const std::string& text) { kind = ParseKind(text); }, help);
}

void Command::EnterFolder(Host& host) const
{
    const std::optional<std::string> named = NamedFolder();
    if (named && named->empty())
        throw UsageError("--folder", "names no folder");
    if (named)
        host.UseFolder(*named);
    const std::string shown = named.value_or(host.FolderName());
    if (m_use == FolderUse::Look && !host.FolderExists())
        throw UsageError(shown, "cannot be opened: " + SystemReason());
    if (LogFolder().empty()) // asking for it makes it
        throw UsageError(shown.empty() ? "log folder" : shown, "cannot be made, or its name is too long");
    const unsigned long error = m_use == FolderUse::Write ? msgservice::CountersError() : ERROR_SUCCESS;
    if (error != ERROR_SUCCESS && error != ERROR_SHARING_VIOLATION)
        throw UsageError(LogFolder(), "cannot be written to: " + SystemReason(error));
}

std::vector<std::string> Command::AllLogs(Host& host)
{
    std::vector<std::string> logs = {"Main", "Run", "Source", "SQL", "Service"};
    for (const std::string& name : host.ListLogs())
        if (FindName(logs, name) == logs.end())
            logs.push_back(name);
    return logs;
}

std::vector<std::string> Command::ChosenLogs(Host& host) const
{
    const std::vector<std::string> logs = AllLogs(host);
    if (!NamesLogs())
        return logs;

    std::vector<std::string> chosen;
    for (const std::string& name : m_logs)
    {
        const auto log = FindName(logs, name);
        if (log == logs.end())
            throw UsageError(name, "no such log in " + LogFolder());
        if (std::find(chosen.begin(), chosen.end(), *log) == chosen.end())
            chosen.push_back(*log);
    }
    return chosen;
}

} // namespace logtool
