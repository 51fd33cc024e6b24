#include "logtool/Commands.h"

#include "QmLogWriter.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

constexpr std::size_t kChunkSize = 64 * 1024;
constexpr std::uint64_t kProgressStep = 1024 * 1024;

// Writes bytes as they come in large pieces that end with a line, so that many rows share one write.
class Feed
{
public:
    enum class Block
    {
        kNone,
        kOpen // the last line feed is held back, see Finish
    };

    Feed(CQmLogWriter& log, Block block) : m_log(log), m_block(block) {}

    // Puts `text` before whatever comes next.
    void Prefix(const std::string& text) { m_pending += text; }

    bool Append(Input& input);
    bool Finish();

    std::uint64_t Bytes() const { return m_bytes; }
    std::uint64_t NulBytes() const { return m_nulBytes; }

    enum class Failure
    {
        kNone,
        kRead,
        kWrite
    };
    Failure Fault() const { return m_failure; }

    void ShowProgressOn(std::ostream& messages) { m_progress = &messages; }

private:
    bool Take(char* data, std::size_t length);
    bool WriteFirst(std::size_t length);
    void ShowProgress(std::size_t added);

    CQmLogWriter& m_log;
    Block m_block;
    std::string m_pending;
    std::uint64_t m_bytes = 0;
    std::uint64_t m_nulBytes = 0;
    Failure m_failure = Failure::kNone;
    std::ostream* m_progress = nullptr;
};

bool Feed::Append(Input& input)
{
    std::vector<char> buffer(kChunkSize);
    for (;;)
    {
        std::size_t length = 0;
        const Input::Result result = input.Read(buffer.data(), buffer.size(), length);
        if (result == Input::Result::kEnd)
            return true;
        if (result == Input::Result::kError)
        {
            m_failure = Failure::kRead;
            return false;
        }
        if (!Take(buffer.data(), length))
            return false;
    }
}

bool Feed::Take(char* data, std::size_t length)
{
    m_nulBytes += static_cast<std::uint64_t>(std::count(data, data + length, '\0'));
    std::replace(data, data + length, '\0', '?');
    m_pending.append(data, length);
    ShowProgress(length);

    // Less than was asked for: a live input has no more at the moment, and what it gave goes out at once.
    std::size_t ready = m_pending.size();
    if (length == kChunkSize && m_pending.find('\n') != std::string::npos)
        ready = m_pending.rfind('\n') + 1;
    if (m_block == Block::kOpen && ready > 0 && m_pending[ready - 1] == '\n')
        --ready;
    return WriteFirst(ready);
}

bool Feed::WriteFirst(std::size_t length)
{
    if (m_failure == Failure::kWrite)
        return false; // what came behind the gap would read as if there were none
    const std::string piece = m_pending.substr(0, length);
    m_pending.erase(0, length);
    if (!m_log.Write(piece.c_str()))
        m_failure = Failure::kWrite;
    return m_failure != Failure::kWrite;
}

// A line feed makes the row of the line that follows. The one that ends a block goes out behind it, so that
// the log's next text does not count to the block, whoever writes it.
bool Feed::Finish()
{
    const std::size_t held = m_block == Block::kOpen && m_pending.ends_with('\n') ? 1 : 0;
    const bool written = WriteFirst(m_pending.size() - held);
    if (m_block == Block::kNone)
        return written;
    m_log.BlockEnd();
    return WriteFirst(held);
}

void Feed::ShowProgress(std::size_t added)
{
    const std::uint64_t before = m_bytes / kProgressStep;
    m_bytes += added;
    if (m_progress != nullptr && m_bytes / kProgressStep != before)
        *m_progress << "\rlogtool: " + std::to_string(m_bytes / kProgressStep) + " MB" << std::flush;
}

using Inputs = std::vector<std::pair<std::string, std::unique_ptr<Input>>>;

// All are opened before anything is written.
Inputs OpenInputs(const Arguments& arguments, Host& host)
{
    std::vector<std::string> paths(arguments.Operands().begin() + 1, arguments.Operands().end());
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

std::string CaptionOf(const Arguments& arguments)
{
    std::string caption = arguments.Text("--block");
    if (caption.find_first_of("\r\n") != std::string::npos)
        throw UsageError("--block", "a caption is one line");
    return caption;
}

// The caption goes out at once: it also tells whether the log can be written.
bool OpenBlock(CQmLogWriter& log, const Arguments& arguments, Feed& feed)
{
    log.BlockBegin(arguments.Kind("--kind", kPlainKind));
    if (arguments.Has("--block"))
        feed.Prefix("\n");
    return log.Write(CaptionOf(arguments).c_str());
}

bool AppendAll(Feed& feed, const Inputs& inputs)
{
    for (const auto& [path, input] : inputs)
    {
        if (feed.Append(*input))
            continue;
        if (feed.Fault() == Feed::Failure::kRead)
        {
            feed.Finish(); // what was read is logged, and the block is closed
            QmLogWriterCloseAll();
            throw UsageError(path, "cannot be read");
        }
        return false;
    }
    return true;
}

} // namespace

int Write(const Arguments& arguments, Host& host)
{
    const std::string& name = arguments.Operands().front();
    CaptionOf(arguments);
    arguments.Kind("--kind", kPlainKind);
    const bool inBlock = arguments.Has("--block") || arguments.Has("--kind");
    const Inputs inputs = OpenInputs(arguments, host);

    CQmLogWriter& log = DefineLog(name);
    Feed feed(log, inBlock ? Feed::Block::kOpen : Feed::Block::kNone);
    if (host.IsMessagesTerminal())
        feed.ShowProgressOn(host.Messages());
    bool written = !inBlock || OpenBlock(log, arguments, feed);
    written = written && AppendAll(feed, inputs);
    written = feed.Finish() && written;
    QmLogWriterCloseAll();

    if (host.IsMessagesTerminal() && feed.Bytes() >= kProgressStep)
        host.Messages() << '\n';
    if (feed.NulBytes() > 0)
        host.Messages() << "logtool: " << name << ": " << Counted(feed.NulBytes(), "NUL byte")
                        << " written as '?'\n";
    if (written)
        return kDone;
    host.Messages() << "logtool: " << name << ": cannot write, see QmLog.LOG in " << LogFolder() << std::endl;
    return kFoundFaults;
}

} // namespace logtool
