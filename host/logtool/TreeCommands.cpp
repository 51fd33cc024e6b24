// The commands that show blocks: "tree" their outline, "errors" those of kind error.
#include "logtool/BlockTree.h"
#include "logtool/Commands.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

constexpr std::size_t kCaptionLimit = 72; // on a terminal, where a line should stay one line

BlockTree BuildTree(LogStream& stream, std::size_t logs)
{
    BlockTree tree(logs);
    LogEntry entry;
    while (stream.Next(entry))
    {
        if (entry.hasText)
            tree.Add(entry.log, entry.index, entry.row);
        else
            tree.EndBlocks(entry.log, entry.index, entry.row);
    }
    tree.Finish();
    return tree;
}

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
    Outline(const Arguments& arguments, Host& host, const std::vector<std::string>& logs)
        : m_output(host.Output()), m_terminal(host.IsOutputTerminal()), m_logs(logs),
          m_stream(logs, LogStream::Content::kRows), m_tree(BuildTree(m_stream, logs.size())),
          m_depth(arguments.Number("--depth", 0xFFFFFFFF)), m_onlyErrors(arguments.Has("--errors"))
    {
    }

    void Print()
    {
        m_output << Counted(m_logs.size(), "log") << ", " << Counted(m_tree.RowCount(), "row") << ", "
                 << Counted(m_tree.BlockCount(), "block") << ", " << Counted(m_tree.ErrorCount(), "error")
                 << '\n';
        PrintBranches(m_tree.FirstTop(), 0);
    }

    const LogStream& Stream() const { return m_stream; }

private:
    // The recursion ends: a block's depth is above its parent's and fits a byte.
    void PrintBranches(std::uint32_t node, std::uint32_t depth)
    {
        if (depth >= m_depth)
            return;
        for (; node != BlockTree::kNone; node = m_tree.At(node).nextSibling)
        {
            if (m_onlyErrors && m_tree.At(node).errors == 0)
                continue;
            PrintNode(m_tree.At(node), depth);
            PrintBranches(m_tree.At(node).firstChild, depth + 1);
        }
    }

    void PrintNode(const BlockTree::Node& node, std::uint32_t depth)
    {
        m_output << std::string(2 * std::size_t{depth}, ' ') << Caption(node) << "  [" << m_logs[node.log]
                 << ", " << Counted(node.rows, "row");
        if (node.errors > 0)
            m_output << ", " << Counted(node.errors, "error");
        m_output << "]\n";
    }

    std::string Caption(const BlockTree::Node& node)
    {
        LogEntry entry;
        m_stream.ReadEntry(node.log, node.begin, entry);
        const std::string_view text = Trimmed(entry.text);
        if (!m_terminal)
            return std::string(text);
        const bool cut = text.size() > kCaptionLimit;
        return Printable(text.substr(0, cut ? kCaptionLimit - 3 : kCaptionLimit)) + (cut ? "..." : "");
    }

    std::ostream& m_output;
    bool m_terminal;
    const std::vector<std::string>& m_logs;
    LogStream m_stream;
    BlockTree m_tree;
    std::uint32_t m_depth;
    bool m_onlyErrors;
};

// Shows error blocks and, once, the header lines on the way to them.
class ErrorReport
{
public:
    ErrorReport(TextOutput& output, const std::vector<std::string>& logs)
        : m_output(output), m_logs(logs), m_stream(logs, LogStream::Content::kRows),
          m_tree(BuildTree(m_stream, logs.size()))
    {
    }

    // False when there is no error.
    bool Print()
    {
        PrintBranches(m_tree.FirstTop());
        return m_tree.ErrorCount() > 0;
    }

    const LogStream& Stream() const { return m_stream; }

private:
    struct Step
    {
        std::uint32_t node;
        bool shown;
    };

    void PrintBranches(std::uint32_t node)
    {
        for (; node != BlockTree::kNone; node = m_tree.At(node).nextSibling)
        {
            if (m_tree.At(node).errors == 0)
                continue;
            m_path.push_back({node, IsInShownError(m_tree.At(node))});
            if (m_tree.At(node).isError && !m_path.back().shown)
                PrintBlock();
            PrintBranches(m_tree.At(node).firstChild);
            m_path.pop_back();
        }
    }

    // What lies in an error of the same log came out with it. What lies in one of another log did not.
    bool IsInShownError(const BlockTree::Node& node) const
    {
        return std::any_of(m_path.begin(), m_path.end(), [&](const Step& step) {
            const BlockTree::Node& outer = m_tree.At(step.node);
            return outer.isError && outer.log == node.log;
        });
    }

    void PrintBlock()
    {
        for (Step& step : m_path)
        {
            const BlockTree::Node& node = m_tree.At(step.node);
            const bool whole = &step == &m_path.back();
            if (!step.shown)
                PrintRows(node.log, node.begin, whole ? node.end : node.begin + 1);
            step.shown = true;
        }
    }

    void PrintRows(std::size_t log, unsigned long begin, unsigned long end)
    {
        for (unsigned long index = begin; index < end; ++index)
        {
            LogEntry entry;
            if (m_stream.ReadEntry(log, index, entry))
                m_output.Row(m_logs[log], entry);
        }
    }

    TextOutput& m_output;
    const std::vector<std::string>& m_logs;
    LogStream m_stream;
    BlockTree m_tree;
    std::vector<Step> m_path; // from the top to the block at hand
};

} // namespace

int Tree(const Arguments& arguments, Host& host)
{
    const std::vector<std::string> logs = ChosenLogs(arguments, host);
    Outline outline(arguments, host, logs);
    outline.Print();
    return EndOf(outline.Stream(), host);
}

int Errors(const Arguments& arguments, Host& host)
{
    const std::vector<std::string> logs = ChosenLogs(arguments, host);
    TextOutput text(host.Output(), StyleOf(arguments, host), logs);
    ErrorReport report(text, logs);
    const bool found = report.Print();
    if (!found)
        text.Line("no errors");
    const int exitCode = EndOf(report.Stream(), host);
    return found ? kFoundFaults : exitCode;
}

} // namespace logtool
