#include "engine/LogTable.h"
#include "engine/RowReader.h"
#include "logtool/Commands.h"
#include "msgservice/session/ClockText.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

class Sessions : public Command
{
public:
    Sessions()
        : Command({"sessions", "lists the sessions in a table of a columnar engine",
                   "Shows each session that was shipped there: the time of its last row if its\n"
                   "writers had a clock, how many rows it has, and its address, which \"messages\n"
                   "--from\" and \"LogDesk --open\" take. The engine reads its whole table for that.\n"
                   "A row that has arrived twice may be counted twice.\n",
                   "logtool sessions --from http://logs.example:8123"},
                  FolderUse::None)
    {
        Line().AddText("--from", "URL", m_from, "http[s]://host[:port]/[table][?machine=NAME]");
    }

private:
    int Run(Host& host) override;

    std::optional<std::string> m_from;
};

std::string AddressOf(const engine::EngineUrl& url, const engine::RowReader::Session& session)
{
    std::string address = url.Shown() + '/' + engine::EscapedForUrl(url.table) +
                          "?session=" + engine::EscapedForUrl(session.session) +
                          "&machine=" + engine::EscapedForUrl(session.machine);
    for (const auto& [name, value] : url.settings)
        address += '&' + engine::EscapedForUrl(name) + '=' + engine::EscapedForUrl(value);
    return address;
}

int Sessions::Run(Host& host)
{
    if (!m_from)
        throw UsageError("--from", "missing: the address of an engine, as http://host:8123");
    const engine::EngineUrl url = engine::ParseEngineUrl(*m_from);
    if (!url.session.empty())
        throw UsageError("--from", "the address names a session already");
    host.IsEndWanted(); // from here on Ctrl+C gives a question up that waits for its answer
    const auto sessions = engine::RowReader(url, host.Connect(url)).ReadSessions();
    if (sessions.empty())
        host.Messages() << "logtool: there is no session" << std::endl;
    constexpr std::size_t kTimeWidth = 23; // of "2026-11-23 14:03:10.123"
    std::size_t countWidth = 0;
    for (const auto& session : sessions)
        countWidth = std::max(countWidth, Counted(session.rows, "row").size());
    for (const auto& session : sessions)
    {
        std::string time =
            session.last != 0 ? msgservice::LocalTime(session.last + engine::kStartOf1970) : "";
        std::string count = Counted(session.rows, "row");
        time.resize(kTimeWidth, ' ');
        count.insert(0, countWidth - count.size(), ' ');
        host.Output() << time << "  " << count << "  \"" << AddressOf(url, session) << "\"\n";
    }
    return sessions.empty() ? kNothingFound : kDone;
}

} // namespace

std::unique_ptr<Command> MakeSessions()
{
    return std::make_unique<Sessions>();
}

} // namespace logtool
