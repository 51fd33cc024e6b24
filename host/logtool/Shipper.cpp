#include "logtool/Shipper.h"

#include "logtool/Commands.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>

namespace logtool
{

namespace
{

using engine::EngineError;

// Pauses between two tries, in looks of the host, which are a fifth of a second apart: they double from a
// second to a minute, and each is cut by up to a half, so that the senders of a fleet do not come back all at
// once.
constexpr unsigned kLooksPerSecond = 5;
constexpr unsigned kMostDoublings = 6;
constexpr unsigned kMostSeconds = 60;

} // namespace

Shipper::Shipper(engine::Engine& engine, const ShipTarget& target, Host& host)
    : m_engine(engine), m_target(target), m_host(host), m_random(std::random_device()())
{
}

bool Shipper::CreateTable()
{
    return Try([&] { m_engine.Do(engine::CreateTableSql(m_target.table)); });
}

// Begins with a session: the folder's when shipping starts, and each one that begins there later.
bool Shipper::Begin()
{
    const std::vector<std::string> logs = m_host.ListLogs();
    ShippedSession session(m_engine, m_target.table, m_target.machine, m_target.session);
    ShipStart start;
    if (!Try([&] { start = session.Find(logs); }))
        return false;
    m_session = start.session;
    m_begun = false;
    sessionwalk::WalkChoice choice;
    choice.logs = logs;
    WalkedRows& rows = *this;
    m_walk.emplace(choice, rows);
    if (start.cursor.number > 0)
        m_walk->StartAtCursor(start.cursor);
    m_host.Messages() << "logtool: session " << Printable(m_session) << " of machine "
                      << Printable(m_target.machine)
                      << (start.cursor.number > 0
                              ? " goes on after number " + std::to_string(start.cursor.number)
                              : " is new")
                      << std::endl;
    return true;
}

void Shipper::Row(const sessionwalk::WalkedRow& walked)
{
    engine::TableRow row;
    row.number = walked.number;
    row.log = *walked.name;
    row.time = walked.time ? *walked.time - engine::kStartOf1970 : 0;
    row.depth = walked.depth;
    row.kind = walked.kind;
    row.header = walked.isHeader;
    row.block = walked.block == sessionwalk::kNoBlock ? 0 : walked.block;
    row.parent = walked.parent == sessionwalk::kNoBlock ? 0 : walked.parent;
    row.text = walked.text;
    m_batch.Add(row);
}

bool Shipper::ShipRows()
{
    do
    {
        if (m_begun && !Begin())
            return false;
        m_walk->AddLogs(m_host.ListLogs());
        m_batch.Begin(m_target.machine, m_session);
        m_walk->Poll();
        if (!Send())
            return false;
    } while (m_begun || m_walk->HasMore());
    return true;
}

void Shipper::Follow()
{
    while (ShipRows() && m_host.Wait())
    {
    }
}

bool Shipper::Send()
{
    if (m_batch.RowCount() == 0)
        return true;
    if (!Try([&] { m_engine.Insert(m_target.table, engine::kRowColumns, m_batch.Bytes()); }))
        return false;
    m_shipped += m_batch.RowCount();
    return true;
}

bool Shipper::Try(const std::function<void()>& act)
{
    for (unsigned tries = 0;; ++tries)
    {
        try
        {
            act();
            return true;
        }
        catch (const EngineError& error)
        {
            if (error.Help() == EngineError::Remedy::Cancelled)
                return false;
            if (error.Help() != EngineError::Remedy::TryAgain)
                throw std::runtime_error(m_target.address + ": " + error.what());
            if (!Pause(tries, error.what()))
                return false;
        }
    }
}

bool Shipper::Pause(unsigned tries, const char* words)
{
    const unsigned most = std::min(1u << std::min(tries, kMostDoublings), kMostSeconds) * kLooksPerSecond;
    unsigned looks = most - static_cast<unsigned>(m_random() % (most / 2 + 1));
    m_host.Messages() << "logtool: " << m_target.address << ": " << Printable(words) << ", trying again in "
                      << (looks + kLooksPerSecond - 1) / kLooksPerSecond << " s" << std::endl;
    for (; looks > 0; --looks)
        if (!m_host.Wait())
            return false;
    return true;
}

} // namespace logtool
