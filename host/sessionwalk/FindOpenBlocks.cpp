// Looks backwards for the blocks that are open at a row.
#include "sessionwalk/OpenBlocks.h"

#include "msgservice/session/LogPages.h"

#include <algorithm>
#include <memory>

namespace sessionwalk
{

namespace
{

constexpr unsigned kNoDepth = 256; // above every depth

// The rows of all logs in descending order.
class BackwardRows
{
public:
    BackwardRows(const std::vector<std::string>& logs, std::uint32_t number)
    {
        for (const std::string& name : logs)
        {
            Log& log = *m_logs.emplace_back(std::make_unique<Log>(name));
            if (log.pages.RowCount() == 0)
                continue;
            log.left = log.pages.FindRow(number);
            CQmLogRow row;
            if (log.pages.ReadRow(log.left, row) && row.time <= number)
                ++log.left;
            Load(log);
        }
    }

    // False at the beginning of the session.
    bool Next(std::size_t& log, CQmLogRow& row)
    {
        const auto last =
            std::max_element(m_logs.rbegin(), m_logs.rend(),
                             [](const auto& left, const auto& right) { return Key(*left) < Key(*right); });
        if (last == m_logs.rend() || !(*last)->held)
            return false;
        log = static_cast<std::size_t>(m_logs.rend() - last) - 1;
        row = (*last)->row;
        Load(**last);
        return true;
    }

    bool HasEnded(std::size_t log) const { return !m_logs[log]->held; }

private:
    struct Log
    {
        explicit Log(const std::string& name) : pages(name) {}
        msgservice::LogPages pages;
        unsigned long left = 0; // rows before the one held
        bool held = false;
        CQmLogRow row;
    };

    static std::uint64_t Key(const Log& log) { return log.held ? std::uint64_t{log.row.time} + 1 : 0; }

    // Rows that cannot be read are passed over.
    static void Load(Log& log)
    {
        log.held = false;
        while (!log.held && log.left > 0)
            log.held = log.pages.ReadRow(--log.left, log.row);
    }

    std::vector<std::unique_ptr<Log>> m_logs;
};

// A header is that of an open block if no later header has its depth or a lower one, and no later row of its
// own log a lower one. The parent of the block found last is looked for by the same rule, but of the rows of
// the own log only those count that come before that block.
class BackwardSearch
{
public:
    BackwardSearch(const std::vector<std::string>& logs, std::uint32_t number)
        : m_rows(logs, number), m_lowest(logs.size(), kNoDepth), m_lowestBefore(logs.size(), kNoDepth)
    {
    }

    std::vector<OpenBlocks::Block> Run()
    {
        std::size_t log = 0;
        CQmLogRow row;
        while (!IsDone() && m_rows.Next(log, row))
        {
            if (OpenBlocks::IsHeader(row) && row.indent < m_lowestHeader)
                TakeHeader(log, row);
            m_lowest[log] = std::min<unsigned>(m_lowest[log], row.indent);
            m_lowestBefore[log] = std::min<unsigned>(m_lowestBefore[log], row.indent);
        }
        std::reverse(m_found.begin(), m_found.end());
        return m_found;
    }

private:
    void TakeHeader(std::size_t log, const CQmLogRow& row)
    {
        m_lowestHeader = row.indent;
        if (m_seeksParent && row.indent <= m_lowestBefore[log])
        {
            m_found.back().parent = row.time;
            m_seeksParent = false;
        }
        if (row.indent > m_lowest[log])
            return;
        m_found.push_back({row.time, OpenBlocks::kNone, static_cast<std::uint32_t>(log), row.indent});
        m_seeksParent = true;
        std::fill(m_lowestBefore.begin(), m_lowestBefore.end(), kNoDepth);
    }

    bool IsDone() const
    {
        if (m_lowestHeader <= 1)
            return true;
        const std::vector<unsigned>& lowest = m_seeksParent ? m_lowestBefore : m_lowest;
        for (std::size_t log = 0; log < lowest.size(); ++log)
            if (lowest[log] > 0 && !m_rows.HasEnded(log))
                return false;
        return true;
    }

    BackwardRows m_rows;
    std::vector<OpenBlocks::Block> m_found; // inner ones first
    bool m_seeksParent = false;             // that of the last one
    unsigned m_lowestHeader = kNoDepth;
    std::vector<unsigned> m_lowest;       // depth of each log's rows
    std::vector<unsigned> m_lowestBefore; // the same of rows before the block found last
};

} // namespace

OpenBlocks FindOpenBlocks(const std::vector<std::string>& logs, std::uint32_t number)
{
    OpenBlocks open(logs.size());
    for (const OpenBlocks::Block& block : BackwardSearch(logs, number).Run())
        open.Open(block);
    return open;
}

} // namespace sessionwalk
