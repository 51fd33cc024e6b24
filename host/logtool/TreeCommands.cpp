// The commands that show blocks: "tree" their outline, "errors" those of kind error.
#include "logtool/BlockTree.h"
#include "logtool/Commands.h"
#include "msgservice/session/ClockText.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

constexpr std::size_t kCaptionLimit = 72; // on a terminal, where a line should stay one line

// The blocks of some logs, and where their texts are read from.
struct Blocks
{
    explicit Blocks(const std::vector<std::string>& names)
        : logs(names), stream(names, LogStream::Content::Rows), tree(names.size())
    {
        while (const LogEntry* const entry = stream.Next())
        {
            if (entry->hasText)
                tree.Add(entry->log, entry->index, entry->row);
            else
                tree.EndBlocks(entry->log, entry->index, entry->row);
        }
        tree.Finish();
    }

    std::vector<std::string> logs;
    LogStream stream;
    BlockTree tree;
};

std::string_view Trimmed(std::string_view text)
{
    static constexpr char blanks[] = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

class Outline
{
public:
    Outline(Host& host, Blocks& blocks, std::uint32_t depth, bool onlyErrors, bool numbers,
            const CQmLogTimes* times)
        : m_output(host.Output()), m_terminal(host.IsOutputTerminal()), m_blocks(blocks), m_depth(depth),
          m_onlyErrors(onlyErrors), m_numberWidth(numbers ? NumberWidth() : 0), m_times(times)
    {
    }

    void Print()
    {
        PrintBranches(m_blocks.tree.FirstTop(), 0);
        m_output << m_text;
    }

private:
    static constexpr std::size_t kPiece = 64 * 1024;

    // `node` and its siblings, and what lies in them. The recursion ends: a block's depth is above its
    // parent's and fits a byte.
    void PrintBranches(std::uint32_t node, std::uint32_t depth)
    {
        if (depth >= m_depth)
            return;
        const BlockTree& tree = m_blocks.tree;
        for (; node != BlockTree::kNone; node = tree.At(node).nextSibling)
        {
            if (m_onlyErrors && tree.At(node).errors == 0)
                continue;
            PrintNode(tree.At(node), depth);
            PrintBranches(tree.At(node).firstChild, depth + 1);
        }
    }

    // Lines are collected and go out in large pieces.
    void PrintNode(const BlockTree::Node& node, std::uint32_t depth)
    {
        LogEntry header;
        m_blocks.stream.ReadEntry(node.log, node.begin, header);
        if (m_numberWidth > 0)
        {
            const std::string number = std::to_string(header.row.time);
            m_text.append(m_numberWidth - std::min(m_numberWidth, number.size()), ' ');
            m_text.append(number).append("  ");
        }
        if (m_times)
            AddBegin(header.row.time);
        m_text.append(2 * std::size_t{depth}, ' ');
        AddCaption(Trimmed(header.text));
        m_text.append("  [").append(m_blocks.logs[node.log]).append(", ").append(Counted(node.rows, "row"));
        if (node.errors > 0)
            m_text.append(", ").append(Counted(node.errors, "error"));
        if (m_times)
            AddDuration(node, header.row);
        m_text.append("]\n");
        if (m_text.size() < kPiece)
            return;
        m_output << m_text;
        m_text.clear();
    }

    void AddBegin(std::uint32_t number)
    {
        QmLogTime time;
        const bool isKnown = m_times->TimeOf(number, time);
        m_text += isKnown ? msgservice::LocalTime(time.time) : std::string(msgservice::kLocalTimeWidth, ' ');
        m_text += isKnown && !time.isExact ? "+  " : "   ";
    }

    // How long a block was open; of one that has not ended, how long to its last row.
    void AddDuration(const BlockTree::Node& node, const CQmLogRow& header)
    {
        LogEntry entry;
        QmLogTime begin;
        QmLogTime last;
        QmLogTimeValue end = 0;
        const std::uint32_t next =
            m_blocks.stream.ReadEntry(node.log, node.end, entry) ? entry.row.time : 0xFFFFFFFF;
        const bool isRead = m_blocks.stream.ReadEntry(node.log, node.end - 1, entry);
        if (!isRead || !m_times->TimeOf(header.time, begin) || !m_times->TimeOf(entry.row.time, last))
            return;
        const bool hasEnded = m_times->FindBlockEnd(header.indent, entry.row.time, next, end);
        const QmLogTimeValue duration = (hasEnded ? end : last.time) - begin.time;
        if (duration >= 0) // else the clock was set back
            m_text.append(hasEnded ? ", " : ", over ").append(msgservice::DurationText(duration));
    }

    void AddCaption(std::string_view text)
    {
        const bool cut = m_terminal && text.size() > kCaptionLimit;
        if (m_terminal)
            m_text +=
                Printable(cut ? text.substr(0, ZEMA::WholeCharacters(text.data(), kCaptionLimit - 3)) : text);
        else
            m_text += text;
        m_text += cut ? "..." : "";
    }

    std::ostream& m_output;
    bool m_terminal;
    Blocks& m_blocks;
    std::uint32_t m_depth;
    bool m_onlyErrors;
    std::size_t m_numberWidth;  // 0 without numbers
    const CQmLogTimes* m_times; // null without times
    std::string m_text;         // not yet in m_output
};

// Shows error blocks and, once, the header lines on the way to them.
class ErrorReport
{
public:
    ErrorReport(TextOutput& output, Blocks& blocks) : m_output(output), m_blocks(blocks) {}

    // The errors in `node` and its siblings.
    void PrintBranches(std::uint32_t node)
    {
        const BlockTree& tree = m_blocks.tree;
        for (; node != BlockTree::kNone; node = tree.At(node).nextSibling)
        {
            const BlockTree::Node& block = tree.At(node);
            if (block.errors == 0)
                continue;
            m_path.push_back({block, IsInShownError(block)});
            if (block.isError && !m_path.back().shown)
                PrintBlock();
            PrintBranches(block.firstChild);
            m_path.pop_back();
        }
    }

private:
    struct Step
    {
        const BlockTree::Node& block;
        bool shown;
    };

    // What lies in an error of the same log came out with it. What lies in one of another log did not.
    bool IsInShownError(const BlockTree::Node& block) const
    {
        return std::any_of(m_path.begin(), m_path.end(), [&](const Step& step) {
            return step.block.isError && step.block.log == block.log;
        });
    }

    void PrintBlock()
    {
        for (Step& step : m_path)
        {
            const bool whole = &step == &m_path.back();
            if (!step.shown)
                PrintRows(step.block.log, step.block.begin, whole ? step.block.end : step.block.begin + 1);
            step.shown = true;
        }
    }

    void PrintRows(std::size_t log, unsigned long begin, unsigned long end)
    {
        for (unsigned long index = begin; index < end; ++index)
        {
            LogEntry entry;
            if (m_blocks.stream.ReadEntry(log, index, entry))
                m_output.Row(m_blocks.logs[log], entry);
        }
    }

    TextOutput& m_output;
    Blocks& m_blocks;
    std::vector<Step> m_path; // from the top to the block at hand
};

class Tree : public Command
{
public:
    Tree()
        : Command({"tree", "outlines the blocks with their rows and errors",
                   "Shows each block's header line with its log, the rows and the errors in it.\n",
                   "logtool tree --depth 2"})
    {
        Line().AddNumber("--depth", "N", m_depth, "only the outer N levels");
        Line().AddFlag("--errors", m_onlyErrors, "only what contains errors");
        AddLogOption();
        AddNumbersOption("put the sequence number of its header line before each block");
        AddTimesOption("put the local time before each block, and tell how long it was open");
    }

private:
    int Run(Host& host) override
    {
        Blocks blocks(ChosenLogs(host));
        Outline outline(host, blocks, m_depth.value_or(0xFFFFFFFF), m_onlyErrors, ShowsNumbers(),
                        ShownTimes());
        host.Output() << Totals(blocks.logs, host) << ", " << Counted(blocks.tree.BlockCount(), "block")
                      << ", " << Counted(blocks.tree.ErrorCount(), "error") << '\n';
        outline.Print();
        TellNoRows(blocks.logs, host);
        return EndOf(blocks.stream, host);
    }

    std::optional<std::uint32_t> m_depth;
    bool m_onlyErrors = false;
};

class Errors : public Command
{
public:
    Errors()
        : Command({"errors", "shows every error with the blocks around it",
                   "Shows each error block under the header lines of the blocks it lies in. Exits\n"
                   "with 1 when there is any.\n",
                   "logtool errors --log Run"})
    {
        AddLogOption();
        AddNumbersOption();
    }

private:
    int Run(Host& host) override
    {
        Blocks blocks(ChosenLogs(host));
        TextOutput text(host.Output(), StyleOf(ShowsNumbers(), host), blocks.logs);
        const bool found = blocks.tree.ErrorCount() > 0;
        if (found)
            ErrorReport(text, blocks).PrintBranches(blocks.tree.FirstTop());
        else
            text.Line("no errors");
        text.EndLine();
        text.Flush();
        TellNoRows(blocks.logs, host);
        const int exitCode = EndOf(blocks.stream, host);
        return found ? kFoundFaults : exitCode;
    }
};

} // namespace

std::unique_ptr<Command> MakeTree()
{
    return std::make_unique<Tree>();
}

std::unique_ptr<Command> MakeErrors()
{
    return std::make_unique<Errors>();
}

} // namespace logtool
