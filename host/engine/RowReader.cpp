#include "engine/RowReader.h"

#include "engine/LogTable.h"

#include <algorithm>
#include <limits>

namespace engine
{

namespace
{

constexpr std::uint32_t kBeginning = 1000;      // characters of a text that is cut
constexpr std::uint64_t kStretch = 10'000;      // numbers that are looked at first for what is near
constexpr std::uint64_t kShortSpan = 1'000'000; // numbers that are read in no time
constexpr std::uint64_t kLast = std::numeric_limits<std::uint32_t>::max();

std::vector<std::uint32_t> NumbersIn(const std::string& text)
{
    std::vector<std::uint32_t> numbers;
    for (std::size_t begin = 0; begin < text.size();)
    {
        const std::size_t end = std::min(text.find(' ', begin), text.size());
        numbers.push_back(NumberIn<std::uint32_t>(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return numbers;
}

ShippedRow RowOf(std::vector<std::string>& fields)
{
    ShippedRow row;
    row.number = NumberIn<std::uint32_t>(fields[0]);
    row.log = std::move(fields[1]);
    row.time = NumberIn<std::int64_t>(fields[2]);
    row.depth = NumberIn<std::uint32_t>(fields[3]);
    row.kind = NumberIn<std::uint32_t>(fields[4]);
    row.header = fields[5] != "0";
    row.block = NumberIn<std::uint32_t>(fields[6]);
    row.text = std::move(fields[7]);
    return row;
}

} // namespace

RowReader::RowReader(const EngineUrl& url, std::unique_ptr<HttpClient> client)
    : m_engine(url, std::move(client)), m_rows{url.table.empty() ? kUsualTable : url.table, url.machine,
                                               url.session}
{
}

Rows RowReader::Ask(const std::string& sql, std::size_t columns)
{
    Rows rows = m_engine.Select(sql);
    for (const auto& row : rows)
        if (row.size() != columns)
            throw EngineError(EngineError::Remedy::None,
                              "the engine answers other columns than it was asked for");
    return rows;
}

std::vector<RowReader::Session> RowReader::ReadSessions()
{
    std::vector<Session> sessions;
    for (auto& fields : Ask(SessionsSql(m_rows), 4))
        sessions.push_back({std::move(fields[0]), std::move(fields[1]), NumberIn<std::uint64_t>(fields[2]),
                            NumberIn<std::int64_t>(fields[3])});
    return sessions;
}

// A look at the whole table's key, so it is better named in the address.
void RowReader::FindMachine()
{
    if (!m_rows.machine.empty())
        return;
    const Rows machines = Ask(MachinesSql(m_rows), 1);
    if (machines.empty())
        throw EngineError(EngineError::Remedy::None, "there is no session " + m_rows.session);
    if (machines.size() > 1)
        throw EngineError(EngineError::Remedy::None,
                          "more than one machine has a session " + m_rows.session + ", " + machines[0][0] +
                              " and " + machines[1][0] +
                              " among them: say which, with machine=NAME in the address");
    m_rows.machine = machines[0][0];
}

std::optional<std::uint64_t> RowReader::FindSome(std::uint64_t from)
{
    if (from > kLast)
        return {};
    const Rows found = Ask(SomeSql(m_rows, from), 1);
    return found.empty() ? std::nullopt : std::optional(NumberIn<std::uint64_t>(found[0][0]));
}

std::optional<RowReader::Span> RowReader::FindEnds(std::uint64_t from, std::uint64_t to)
{
    const Rows found = Ask(SpanSql(m_rows, from, to), 2);
    if (found.size() != 1)
        throw EngineError(EngineError::Remedy::None, "the engine answers no last number");
    const Span span{NumberIn<std::uint32_t>(found[0][0]), NumberIn<std::uint32_t>(found[0][1])};
    return span.last != 0 ? std::optional(span) : std::nullopt;
}

// The engine would read the numbers of all rows to find their least and greatest, so both are looked for near
// where they must be.
std::optional<RowReader::Span> RowReader::ReadSpan(std::uint64_t from)
{
    FindMachine();
    const auto some = FindSome(from);
    if (!some)
        return {};
    std::optional<Span> begin;
    for (std::uint64_t width = kShortSpan; !begin && from <= kLast; from += width, width *= 16)
        begin = FindEnds(from, std::min(from + width - 1, kLast));
    if (!begin) // it was deleted meanwhile
        return {};

    std::uint64_t last = *some; // is there
    std::uint64_t end = kLast;  // nothing is behind it
    for (std::uint64_t step = kShortSpan; end - last >= kShortSpan; step *= 4)
    {
        const std::uint64_t middle = last + std::min(step, (end - last) / 2);
        if (const auto next = FindSome(middle + 1))
            last = *next;
        else
            end = middle;
    }
    const auto ends = FindEnds(last, end);
    return Span{begin->first, ends ? ends->last : static_cast<std::uint32_t>(last)};
}

std::vector<ShippedRow> RowReader::Read(const RowChoice& choice, const std::vector<std::uint32_t>& numbers,
                                        std::optional<std::uint32_t> mostText)
{
    FindMachine();
    std::vector<ShippedRow> rows;
    for (auto& fields : Ask(RowsSql(m_rows, choice, numbers, mostText), 8))
        rows.push_back(RowOf(fields));
    return rows;
}

std::vector<ShippedRow> RowReader::ReadRows(const RowChoice& choice,
                                            const std::vector<std::uint32_t>& numbers)
{
    return Read(choice, numbers, {});
}

std::vector<ShippedRow> RowReader::ReadPage(const RowChoice& choice,
                                            const std::vector<std::uint32_t>& numbers)
{
    try
    {
        return ReadRows(choice, numbers);
    }
    catch (const EngineError& error)
    {
        if (error.Help() != EngineError::Remedy::AskLess)
            throw;
        return Read(choice, numbers, kBeginning);
    }
}

RowReader::Numbers RowReader::ReadNumbers(const RowChoice& choice, std::uint64_t most)
{
    FindMachine();
    const Rows found = Ask(NumbersSql(m_rows, choice, most), 3);
    if (found.size() != 1)
        throw EngineError(EngineError::Remedy::None, "the engine answers no numbers");
    return {NumbersIn(found[0][0]), NumberIn<std::uint64_t>(found[0][1]),
            NumberIn<std::uint64_t>(found[0][2])};
}

// The end is near the header as a rule, so that stretches grow from there.
std::optional<RowReader::Span> RowReader::ReadBlock(const ShippedRow& row)
{
    FindMachine();
    if (row.block == 0)
        return {};
    RowChoice choice;
    choice.from = choice.to = row.block;
    const std::vector<ShippedRow> headers = ReadPage(choice, {}); // one row
    const ShippedRow* header = nullptr;
    for (const ShippedRow& each : headers) // a row without a block of its own log is in another's
        if (each.header && (!header || each.log == row.log))
            header = &each;
    if (!header)
        return {};
    std::uint64_t stretch = kStretch;
    for (std::uint64_t from = std::uint64_t{row.block} + 1; from <= kLast; from += stretch, stretch *= 4)
    {
        const std::uint64_t to = std::min(from + stretch - 1, kLast);
        if (const auto end = AskNumber(BlockEndSql(m_rows, from, to, header->log, header->depth)); end != 0)
            return Span{row.block, end - 1};
    }
    return Span{row.block, static_cast<std::uint32_t>(kLast)};
}

std::optional<RowReader::Span> RowReader::ReadNearest(std::uint32_t number, std::uint32_t kind, bool forward)
{
    FindMachine();
    std::uint64_t stretch = kStretch;
    std::uint64_t from = number;
    std::uint64_t to = number;
    while (forward ? to < kLast : from > 0)
    {
        if (forward)
            from = to + 1, to = std::min(to + stretch, kLast);
        else
            to = from - 1, from -= std::min(from, stretch);
        if (const std::uint32_t found = AskNumber(NearestSql(m_rows, from, to, kind, forward)); found != 0)
            return Span{found, found};
        stretch *= 4;
    }
    return {};
}

std::optional<RowReader::Span> RowReader::ReadTime(std::int64_t time)
{
    FindMachine();
    const std::uint32_t found = AskNumber(TimeSql(m_rows, time));
    return found != 0 ? std::optional(Span{found, found}) : std::nullopt;
}

std::uint32_t RowReader::AskNumber(const std::string& sql)
{
    const Rows found = Ask(sql, 1);
    return found.empty() ? 0 : NumberIn<std::uint32_t>(found[0][0]);
}

} // namespace engine
