#include "logtool/Commands.h"

#include "QmLogWriter.h"

#include <algorithm>
#include <optional>
#include <ostream>

namespace logtool
{

namespace
{

constexpr std::size_t kChunkSize = 64 * 1024;
constexpr std::uint64_t kProgressStep = 1024 * 1024;

// Writes bytes as they come in large pieces that end with a line, so that many rows share one write.
// Nothing is written behind a write that failed: it would read as if there were no gap.
class Feed
{
public:
    // Shows progress on `messages` unless it is null.
    Feed(CQmLogWriter& log, std::ostream* messages) : m_log(log), m_messages(messages) {}

    // Puts all that follows into a block, whose header is its first line unless there is a caption.
    void OpenBlock(QmLogBlockKind kind, const std::optional<std::string>& caption);

    // Writes what the input gives. False when the input cannot be read.
    bool Append(Input& input);

    void Finish();

    bool HasFailed() const { return m_failed; }
    std::uint64_t NulBytes() const { return m_nulBytes; }

private:
    void Take(char* data, std::size_t length);
    void WriteFirst(std::size_t length);
    void ShowProgress(std::size_t added);

    CQmLogWriter& m_log;
    std::ostream* m_messages;
    std::string m_pending;
    bool m_inBlock = false; // the last line feed is held back, see Finish
    bool m_failed = false;  // a write did
    std::uint64_t m_bytes = 0;
    std::uint64_t m_nulBytes = 0;
};

// The caption goes out at once: it also tells whether the log can be written.
void Feed::OpenBlock(QmLogBlockKind kind, const std::optional<std::string>& caption)
{
    m_inBlock = true;
    m_log.BlockBegin(kind);
    m_pending = caption.value_or("");
    WriteFirst(m_pending.size());
    if (caption)
        m_pending = '\n';
}

bool Feed::Append(Input& input)
{
    std::vector<char> buffer(kChunkSize);
    while (!m_failed)
    {
        std::size_t length = 0;
        const Input::Result result = input.Read(buffer.data(), buffer.size(), length);
        if (result != Input::Result::kData)
            return result == Input::Result::kEnd;
        Take(buffer.data(), length);
    }
    return true;
}

void Feed::Take(char* data, std::size_t length)
{
    m_nulBytes += static_cast<std::uint64_t>(std::count(data, data + length, '\0'));
    std::replace(data, data + length, '\0', '?');
    m_pending.append(data, length);
    ShowProgress(length);

    // Less than was asked for: a live input has no more at the moment, and what it gave goes out at once.
    std::size_t ready = m_pending.size();
    if (length == kChunkSize && m_pending.find('\n') != std::string::npos)
        ready = m_pending.rfind('\n') + 1;
    if (m_inBlock && ready > 0 && m_pending[ready - 1] == '\n')
        --ready;
    WriteFirst(ready);
}

void Feed::WriteFirst(std::size_t length)
{
    if (m_failed)
        return;
    m_failed = !m_log.Write(m_pending.substr(0, length).c_str());
    m_pending.erase(0, length);
}

// A line feed makes the row of the line that follows. The one that ends a block goes out behind it, so that
// the log's next text does not count to the block, whoever writes it.
void Feed::Finish()
{
    const std::size_t held = m_inBlock && m_pending.ends_with('\n') ? 1 : 0;
    WriteFirst(m_pending.size() - held);
    if (m_inBlock)
    {
        m_log.BlockEnd();
        WriteFirst(held); // nothing held: an empty write, which begins the fresh line as well
    }
    if (m_messages != nullptr && m_bytes >= kProgressStep)
        *m_messages << '\n';
}

void Feed::ShowProgress(std::size_t added)
{
    const std::uint64_t before = m_bytes / kProgressStep;
    m_bytes += added;
    if (m_messages != nullptr && m_bytes / kProgressStep != before)
        *m_messages << "\rlogtool: " + std::to_string(m_bytes / kProgressStep) + " MB" << std::flush;
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
        if (inputs.back().second == nullptr)
            throw UsageError(path, "cannot be opened");
    }
    return inputs;
}

CQmLogWriter& DefineLog(const std::string& name)
{
    CQmLogWriter& log = QmLogWriterDefine(name.c_str());
    if (name.empty() || *log.GetFilePath() == '\0')
        throw UsageError("'" + name + "'", "cannot be the name of a log");
    if (IsSameName(name, "QmLog") || IsSameName(name, "QmLog.LOG"))
        throw UsageError(name, "holds the messages about failures and is no log");
    return log;
}

class Write : public Command
{
public:
    Write()
        : Command({"write", "appends files or standard input to a log",
                   "Appends the files, one after the other, to log LOG; without a file, or for \"-\",\n"
                   "standard input, as it comes. The folder is made when it is missing. NUL bytes\n"
                   "are written as '?'.\n",
                   "logtool write Run --block \"Nightly build\" --kind notice build.txt"},
                  FolderUse::kWrite)
    {
        Line().AddOperand("LOG", m_log);
        Line().AddOperands("[FILE...]", m_files);
        Line().AddText("--block", "CAPTION", m_caption, "put the text into a block with this header line");
        AddKindOption(m_kind, "the kind of the block: plain, notice, error, detail or a number; without "
                              "--block the first line of the text is the header");
    }

private:
    int Run(Host& host) override;

    std::optional<std::string> m_log;
    std::vector<std::string> m_files;
    std::optional<std::string> m_caption;
    std::optional<QmLogBlockKind> m_kind;
};

int Write::Run(Host& host)
{
    if (!m_log)
        throw UsageError("write", "name the log");
    if (m_caption && m_caption->find_first_of("\r\n") != std::string::npos)
        throw UsageError("--block", "a caption is one line");
    const Inputs inputs = OpenInputs(m_files, host);

    Feed feed(DefineLog(*m_log), host.IsMessagesTerminal() ? &host.Messages() : nullptr);
    if (m_caption || m_kind)
        feed.OpenBlock(m_kind.value_or(kPlainKind), m_caption);
    const auto unreadable = std::find_if(inputs.begin(), inputs.end(),
                                         [&](const auto& input) { return !feed.Append(*input.second); });
    feed.Finish(); // what was read is logged, and the block is closed
    QmLogWriterCloseAll();

    if (feed.NulBytes() > 0)
        host.Messages() << "logtool: " << *m_log << ": " << Counted(feed.NulBytes(), "NUL byte")
                        << " written as '?'\n";
    if (unreadable != inputs.end())
        throw UsageError(unreadable->first, "cannot be read");
    if (!feed.HasFailed())
        return kDone;
    host.Messages() << "logtool: " << *m_log << ": cannot write, see QmLog.LOG in " << LogFolder()
                    << std::endl;
    return kFoundFaults;
}

} // namespace

std::unique_ptr<Command> MakeWrite()
{
    return std::make_unique<Write>();
}

} // namespace logtool
