// The command "during": what all logs received in the time of one block.
#include "logtool/BlockTree.h"
#include "logtool/Commands.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

// Finds the block that a row opens or lies in, and the numbers from its header to its end. What "tree" counts
// to a block lies between them.
class BlockSearch
{
public:
    BlockSearch(const std::vector<std::string>& logs, std::uint32_t number)
        : m_logs(logs), m_stream(logs, LogStream::Content::Rows), m_tree(logs.size())
    {
        const LogEntry* const row = FindRow(number);
        if (!row)
            return;
        const std::uint32_t block = m_tree.Innermost(row->log);
        if (block == BlockTree::kNone)
            m_reason = "this row of " + m_logs[row->log] + " lies in no block";
        else
            FindEnds(block);
    }

    // Why there is no block; empty when there is one.
    const std::string& Reason() const { return m_reason; }
    std::uint32_t First() const { return m_first; }
    std::uint32_t Last() const { return m_last; }

private:
    const LogEntry* Next()
    {
        const LogEntry* const entry = m_stream.Next();
        if (!entry)
            return nullptr;
        if (entry->hasText)
            m_tree.Add(entry->log, entry->index, entry->row);
        else
            m_tree.EndBlocks(entry->log, entry->index, entry->row);
        return entry;
    }

    const LogEntry* FindRow(std::uint32_t number)
    {
        LogEntry before;
        bool any = false;
        const LogEntry* entry = Next();
        for (; entry && entry->row.time < number; entry = Next())
        {
            before = *entry;
            any = true;
        }
        if (entry && entry->row.time == number)
            return entry;
        m_reason = "no row has this number";
        if (any)
            m_reason += "; the one before is " + Place(before);
        if (entry)
        {
            m_reason += any ? ", the one behind is " : "; the one behind is ";
            m_reason += Place(*entry);
        }
        return nullptr;
    }

    std::string Place(const LogEntry& entry) const
    {
        return std::to_string(entry.row.time) + " in " + m_logs[entry.log];
    }

    void FindEnds(std::uint32_t block)
    {
        const LogEntry* entry = nullptr;
        do
            entry = Next();
        while (entry && m_tree.IsOpen(block));
        if (entry)
            m_last = entry->row.time - 1;
        LogEntry header; // read last, because it ends what the stream has given out
        m_stream.ReadEntry(m_tree.At(block).log, m_tree.At(block).begin, header);
        m_first = header.row.time;
    }

    const std::vector<std::string>& m_logs;
    LogStream m_stream;
    BlockTree m_tree;
    std::uint32_t m_first = 0;
    std::uint32_t m_last = 0xFFFFFFFF; // of a block that has not ended
    std::string m_reason;
};

class During : public Command
{
public:
    During()
        : Command({"during", "shows a block with the rows of all logs in its time",
                   "Shows the whole block that the row with sequence number N opens or lies in, and\n"
                   "what all other logs received meanwhile, by sequence number, indented by depth.\n"
                   "\"tree --numbers\" and \"errors --numbers\" tell numbers. Exits with 1 when no row\n"
                   "has the number, or when it lies in no block.\n",
                   "logtool during 4711 --numbers"})
    {
        Line().AddOperand("N", m_number);
        AddLogOption();
        AddNumbersOption();
        AddTimesOption();
    }

private:
    int Run(Host& host) override
    {
        if (!m_number)
            throw UsageError("during", "name the number of a row");
        const std::uint32_t number = commandline::ParseNumber("during", *m_number);
        const std::vector<std::string> logs = ChosenLogs(host);
        const std::vector<std::string> all = AllLogs(host);
        const BlockSearch block(all, number);
        if (!block.Reason().empty())
        {
            host.Messages() << "logtool: " << LogFolder() << ": " << number << ": " << block.Reason()
                            << std::endl;
            return kNothingFound;
        }
        TextOutput text(host.Output(), StyleOf(ShowsNumbers(), host, ShownTimes()), logs);
        LogStream stream(logs, LogStream::Content::Text);
        stream.SetRange(block.First(), block.Last());
        while (const LogEntry* const entry = stream.Next())
            text.Row(logs[entry->log], *entry);
        text.EndLine();
        text.Flush();
        return EndOf(stream, host);
    }

    std::optional<std::string> m_number;
};

} // namespace

std::unique_ptr<Command> MakeDuring()
{
    return std::make_unique<During>();
}

} // namespace logtool
