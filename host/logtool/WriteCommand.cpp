#include "logtool/Commands.h"
#include "logtool/LogFeed.h"
#include "logtool/LogName.h"
#include "msgservice/session/Counter.h"

#include "QmLogTimes.h"
#include "QmLogWriter.h"
#include "wintypes.h"

#include <algorithm>
#include <optional>
#include <ostream>

namespace logtool
{

namespace
{

constexpr std::size_t kChunkSize = 64 * 1024;
constexpr int kSilentWaits = 5; // a second

// The library waits for the counters without a limit and without a word. False when the user ends the wait.
bool AwaitCounters(Host& host)
{
    for (int waits = 0;; ++waits)
    {
        if (const unsigned long error = msgservice::CountersError(); error == ERROR_SUCCESS)
            return true;
        else if (error != ERROR_SHARING_VIOLATION)
            throw UsageError(LogFolder(), "cannot be written to: " + SystemReason(error));
        if (waits == kSilentWaits)
            host.Messages() << "logtool: waiting for a process that writes in " << LogFolder()
                            << " and has Log.DAT open; Ctrl+C ends the wait" << std::endl;
        if (!host.Wait())
            return false;
    }
}

// False when the input cannot be read.
bool Copy(Input& input, LogFeed& feed)
{
    std::vector<char> buffer(kChunkSize);
    while (!feed.HasFailed())
    {
        std::size_t length = 0;
        const Input::Result result = input.Read(buffer.data(), buffer.size(), length);
        if (result != Input::Result::Data)
        {
            feed.EndInput();
            return result == Input::Result::End;
        }
        feed.Take({buffer.data(), length}, length == buffer.size());
    }
    return true;
}

using Inputs = std::vector<std::pair<std::string, std::unique_ptr<Input>>>;

// All are opened before anything is written.
Inputs OpenInputs(std::vector<std::string> paths, Host& host)
{
    if (paths.empty())
        paths.push_back("-");
    Inputs inputs;
    for (const std::string& path : paths)
    {
        inputs.emplace_back(path, host.OpenInput(path));
        if (!inputs.back().second)
            throw UsageError(path, "cannot be opened: " + SystemReason());
    }
    return inputs;
}

class Write : public Command
{
public:
    Write()
        : Command({"write", "appends files or standard input to a log",
                   "Appends the files, one after the other, to log LOG; without a file, or for \"-\",\n"
                   "standard input, as it comes. Text begins on a line of its own, and the line\n"
                   "feed at its end is left to the next text. The folder is made when it is\n"
                   "missing. NUL bytes are written as '?'.\n",
                   "logtool write Run --block \"Nightly build\" --kind notice build.txt"},
                  FolderUse::Write)
    {
        Line().AddOperand("LOG", m_log);
        Line().AddOperands("[FILE...]", m_files);
        Line().AddText("--block", "CAPTION", m_caption, "put the text into a block with this header line");
        AddKindOption(m_kind, "the kind of the block: plain, notice, error, detail or a number; without "
                              "--block the first line of the text is the header");
        Line().AddFlag("--times", m_times,
                       "note when lines are written; QM_LOG_TIMES=1 has every program do so");
    }

private:
    int Run(Host& host) override;
    int End(const LogFeed& feed, Host& host) const;

    std::optional<std::string> m_log;
    std::vector<std::string> m_files;
    std::optional<std::string> m_caption;
    std::optional<QmLogBlockKind> m_kind;
    bool m_times = false;
};

int Write::Run(Host& host)
{
    if (!m_log)
        throw UsageError("write", "name the log");
    if (m_caption && m_caption->find_first_of("\r\n") != std::string::npos)
        throw UsageError("--block", "a caption is one line");
    CheckLogName(*m_log);
    CQmLogWriter log;
    log.SetFilePath(m_log->c_str());
    if (*log.GetFilePath() == '\0')
        throw UsageError("'" + *m_log + "'", "is too long for the name of a log in " + LogFolder());
    if (m_times)
        QmLogSetTimes(true);
    const Inputs inputs = OpenInputs(m_files, host);

    LogFeed feed(
        log, [&host] { return AwaitCounters(host); }, host.IsMessagesTerminal() ? &host.Messages() : nullptr);
    if (m_caption || m_kind)
        feed.OpenBlock(m_kind.value_or(kPlainKind), m_caption);
    std::string unreadable;
    for (const auto& [path, input] : inputs)
        if (unreadable.empty() && !Copy(*input, feed))
            unreadable = path + ": cannot be read: " + SystemReason();
    feed.Finish(); // what was read is logged, and the block is closed
    log.Close();
    QmLogWriterCloseAll(); // the counters
    const int exitCode = End(feed, host);
    if (unreadable.empty())
        return exitCode;
    host.Messages() << "logtool: " << Printable(unreadable) << std::endl;
    return kMisuse;
}

// Tells what has not become of the text what the user thinks.
int Write::End(const LogFeed& feed, Host& host) const
{
    const std::string logtool = "logtool: " + Printable(*m_log) + ": ";
    if (feed.HasFailed() && feed.Failure().empty())
    {
        host.Messages() << logtool << "nothing written: the wait was ended" << std::endl;
        return kFoundFaults;
    }
    const std::string see = " See QmLog.LOG in " + LogFolder();
    if (feed.HasFailed())
        host.Messages() << logtool << "cannot be written: " << feed.Failure() << see << std::endl;
    else if (feed.NulBytes() > 0)
        host.Messages() << logtool << Counted(feed.NulBytes(), "NUL byte") << " written as '?'" << std::endl;
    if (feed.LostRows() > 0)
        host.Messages() << logtool << Counted(feed.LostRows(), "line")
                        << " written without an index row, so readers do not find them." << see << std::endl;
    return feed.HasFailed() || feed.LostRows() > 0 ? kFoundFaults : kDone;
}

} // namespace

std::unique_ptr<Command> MakeWrite()
{
    return std::make_unique<Write>();
}

} // namespace logtool
