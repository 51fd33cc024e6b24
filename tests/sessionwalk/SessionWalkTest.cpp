#include "host/sessionwalk/FollowedWalk.h"
#include "tests/support/LongRun.h"
#include "tests/support/MemorySession.h"
#include "tests/support/Random.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>

namespace
{

using namespace sessionwalk;

const std::vector<std::string> kNames = {"Main", "Run", "Extra"};

struct ModelRow
{
    std::size_t log = 0;
    CQmLogRow row;
    std::string text;
};

// A session as a list of rows, and the rule for blocks looked up in it row by row.
class Model
{
public:
    explicit Model(unsigned seed) : m_random(seed)
    {
        for (int i = m_random(120); i > 0; --i)
            AddRow();
    }

    void AddRow()
    {
        ModelRow next;
        next.log = static_cast<std::size_t>(m_random(kNames.size()));
        // Depths mostly near the one before, some wild as in a damaged index.
        const int depth = m_random(12) == 0 ? m_random(6) : std::max(0, m_depth + m_random(3) - 1);
        m_depth = std::min(depth, 5);
        next.row.indent = static_cast<std::uint8_t>(m_depth);
        next.row.blockBegin = m_random(3) == 0 ? 1 : 0;
        next.row.kind = static_cast<QmLogBlockKind>(m_random(5));
        next.row.time = m_number += 1 + static_cast<std::uint32_t>(m_random(2));
        next.text =
            "row " + std::to_string(m_number) + std::string(static_cast<std::size_t>(m_random(40)), 'x');
        if (m_random(10) == 0)
            next.text += std::string("\0\r\xff", 3);
        rows.push_back(next);
    }

    // Whether the block of header `block` is still open just before row `at`.
    bool IsOpen(std::size_t block, std::size_t at) const
    {
        const ModelRow& header = rows[block];
        for (std::size_t i = block + 1; i < at; ++i)
        {
            const CQmLogRow& row = rows[i].row;
            const bool isHeader = row.blockBegin != 0 && row.indent > 0;
            if ((isHeader && row.indent <= header.row.indent) ||
                (rows[i].log == header.log && row.indent < header.row.indent))
                return false;
        }
        return true;
    }

    // The last header before `at` whose block is open there: of `log` if it has one, else of any.
    std::optional<std::size_t> Around(std::size_t at, std::optional<std::size_t> log, unsigned below) const
    {
        for (std::size_t i = at; i > 0; --i)
        {
            const ModelRow& header = rows[i - 1];
            if (header.row.blockBegin != 0 && header.row.indent > 0 && header.row.indent < below &&
                (!log || header.log == *log) && IsOpen(i - 1, at))
                return i - 1;
        }
        return {};
    }

    std::string Dump(std::size_t at) const
    {
        const ModelRow& row = rows[at];
        std::optional<std::size_t> block = Around(at + 1, row.log, 256);
        if (!block)
            block = Around(at + 1, {}, 256);
        const auto parent = block ? Around(*block, {}, rows[*block].row.indent) : std::nullopt;
        std::ostringstream text;
        text << kNames[row.log] << ' ' << row.row.time << ' ' << int{row.row.indent} << ' ' << row.row.kind
             << (row.row.blockBegin != 0 && row.row.indent > 0 ? " header" : "") << " block "
             << (block ? int(rows[*block].row.time) : -1) << " parent "
             << (parent ? int(rows[*parent].row.time) : -1) << ' ' << row.text << '\n';
        return text.str();
    }

    // The files as they are when `count` rows have come; the text of each log's last ones may lag, but what
    // came stays.
    void Write(MemorySession& session, std::size_t count, std::size_t lag = 0)
    {
        for (std::size_t log = 0; log < kNames.size(); ++log)
        {
            std::string text, index;
            std::size_t own = 0;
            std::size_t total = 0;
            for (std::size_t i = 0; i < count; ++i)
                total += rows[i].log == log ? 1 : 0;
            for (std::size_t i = 0; i < count; ++i)
            {
                if (rows[i].log != log)
                    continue;
                CQmLogRow row = rows[i].row;
                row.offset = static_cast<std::uint32_t>(OffsetOf(log, i));
                index.append(reinterpret_cast<const char*>(&row), sizeof(row));
                if (++own + lag <= total || own <= m_texts[log])
                    text += rows[i].text + '\n';
            }
            m_texts[log] = std::max(m_texts[log], total - std::min(lag, total));
            session.files.SetContents(session.Path(kNames[log] + ".LOG"), text);
            session.files.SetContents(session.Path(kNames[log] + ".ROW"), index);
        }
        const std::uint64_t counter = count > 0 ? rows[count - 1].row.time : 0;
        session.files.SetContents(session.Path("Log.DAT"),
                                  std::string(reinterpret_cast<const char*>(&counter), sizeof(counter)));
    }

    std::deque<ModelRow> rows;

private:
    std::size_t OffsetOf(std::size_t log, std::size_t at) const
    {
        std::size_t offset = 0;
        for (std::size_t i = 0; i < at; ++i)
            offset += rows[i].log == log ? rows[i].text.size() + 1 : 0;
        return offset;
    }

    Random m_random;
    std::array<std::size_t, 3> m_texts = {}; // of each log that have come
    int m_depth = 0;
    std::uint32_t m_number = 0;
};

std::string Dump(const WalkedRow& row)
{
    std::ostringstream text;
    text << *row.name << ' ' << row.number << ' ' << int{row.depth} << ' ' << row.kind
         << (row.isHeader ? " header" : "") << " block " << static_cast<std::int32_t>(row.block) << " parent "
         << static_cast<std::int32_t>(row.parent) << ' ' << row.text.substr(row.skip) << '\n';
    return text.str();
}

class Collected : public WalkedRows
{
public:
    void Row(const WalkedRow& row) override { rows[row.number] += Dump(row); }
    void SessionBegun() override { ++sessions; }

    std::map<std::uint32_t, std::string> rows;
    int sessions = 0;
};

} // namespace

TEST(SessionWalk, ShowsRowsWithTheirBlocksFromAnyNumberOn)
{
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + Rounds(60u, 1000u); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        MemorySession session;
        Model model(seed);
        model.Write(session, model.rows.size());
        Random random(seed);
        for (int i = 0; i < 5; ++i)
        {
            WalkChoice choice = {kNames, {}, 0, 0xFFFFFFFF};
            if (i > 0)
                choice.from = static_cast<std::uint32_t>(random(180));
            if (i > 2)
                choice.to = choice.from + static_cast<std::uint32_t>(random(60));
            if (i > 3)
                choice.chosen = {"RUN"};
            std::string expected, walked;
            for (std::size_t at = 0; at < model.rows.size(); ++at)
                if (const ModelRow& row = model.rows[at];
                    row.row.time >= choice.from && row.row.time <= choice.to && (i <= 3 || row.log == 1))
                    expected += model.Dump(at);
            SessionWalk walk(choice);
            while (const WalkedRow* const row = walk.Next())
                walked += Dump(*row);
            ASSERT_EQ(expected, walked) << "from " << choice.from;
            EXPECT_EQ(0u, walk.Unreadable());
        }
    }
}

// The text comes later than the rows, the process that follows ends now and then, and a new session begins.
TEST(SessionWalk, FollowsWithTheSameBlocksFromAnyCursorOn)
{
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + Rounds(40u, 600u); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        MemorySession session;
        Random random(seed);
        std::optional<FollowedWalk> walk;
        msgservice::Cursor cursor;
        Collected collected;
        for (int begun = 0; begun < 2; ++begun)
        {
            Model model(seed * 2 + static_cast<unsigned>(begun));
            if (begun == 1 && model.rows.size() < 2)
                break; // nothing tells it from the one before
            collected.rows.clear();
            for (std::size_t count = 0; count < model.rows.size();)
            {
                count = std::min(model.rows.size(), count + static_cast<std::size_t>(1 + random(20)));
                const bool isEnd = count == model.rows.size();
                model.Write(session, count, isEnd ? 0 : static_cast<std::size_t>(random(3)));
                if (!walk || random(4) == 0)
                {
                    walk.emplace(WalkChoice{kNames, {}, 0, 0xFFFFFFFF}, collected);
                    walk->StartAtCursor(cursor);
                }
                do
                    walk->Poll(static_cast<std::size_t>(1 + random(30)));
                while (walk->HasMore() || (isEnd && walk->HoldsLine()));
                cursor = walk->Position();
            }
            for (std::size_t at = 0; at < model.rows.size(); ++at)
            {
                const std::uint32_t number = model.rows[at].row.time;
                ASSERT_EQ(model.Dump(at), collected.rows[number]) << "number " << number;
            }
            session.files.SetContents(session.Path("Log.DAT"), std::string(8, '\0'));
            for (const std::string& name : kNames)
            {
                session.files.SetContents(session.Path(name + ".LOG"), "");
                session.files.SetContents(session.Path(name + ".ROW"), "");
            }
            if (walk)
                walk->Poll(1);
            cursor = {};
        }
    }
}
