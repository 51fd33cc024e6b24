#include "logtool/Commands.h"
#include "logtool/Shipper.h"

#include <ostream>

namespace logtool
{

namespace
{

class Ship : public Command
{
public:
    Ship()
        : Command({"ship", "sends the rows into a table of a columnar engine",
                   "Sends all rows of the folder's session to a ClickHouse server, over HTTP.\n"
                   "What the engine has is not sent again, however often sender or server are\n"
                   "ended. A session that begins anew in the folder gets another name.\n"
                   "User and password are taken from QM_ENGINE_USER and QM_ENGINE_PASSWORD.\n",
                   "logtool ship --to http://logs.example:8123 --create --follow"})
    {
        Line().AddText("--to", "URL", m_to, "http[s]://host[:port]/[table][?database=...]");
        Line().AddText("--table", "TABLE", m_table, "the table, log_rows without this option");
        Line().AddText("--session", "NAME", m_session,
                       "the session's name, instead of one made of the folder's");
        Line().AddText("--machine", "NAME", m_machine, "the machine's name, instead of the computer's");
        Line().AddFlag("--create", m_create, "make the table if there is none");
        Line().AddFlag("--follow", m_follow, "go on with new rows as they come, until Ctrl+C");
    }

private:
    int Run(Host& host) override;
    ShipTarget Target(const engine::EngineUrl& url, Host& host) const;

    std::optional<std::string> m_to, m_table, m_session, m_machine;
    bool m_create = false;
    bool m_follow = false;
};

// The options say more than the address does.
ShipTarget Ship::Target(const engine::EngineUrl& url, Host& host) const
{
    const auto choose = [](const std::optional<std::string>& option, const std::string& part,
                           const auto& other) {
        if (option)
            return *option;
        return part.empty() ? std::string(other()) : part;
    };
    ShipTarget target;
    target.address = url.Shown();
    target.table = choose(m_table, url.table, [] { return engine::kUsualTable; });
    target.machine = choose(m_machine, url.machine, [&] { return host.MachineName(); });
    target.session = choose(m_session, url.session, [] { return SessionName(LogFolder()); });
    for (const auto& [option, value] : {std::pair{"--table", &target.table},
                                        {"--machine", &target.machine},
                                        {"--session", &target.session}})
        if (value->empty())
            throw UsageError(option, "needs a name");
    return target;
}

int Ship::Run(Host& host)
{
    if (!m_to)
        throw UsageError("--to", "missing: the address of an engine, as http://host:8123");
    const engine::EngineUrl url = engine::ParseEngineUrl(*m_to);
    host.IsEndWanted(); // from here on Ctrl+C ends in an orderly way
    engine::Engine engine(url, host.Connect(url));
    Shipper shipper(engine, Target(url, host), host);
    bool done = !m_create || shipper.CreateTable();
    if (done && m_follow)
        shipper.Follow();
    else if (done)
        done = shipper.ShipRows();
    host.Messages() << "logtool: " << Counted(shipper.ShippedRows(), "row") << " shipped"
                    << (done ? "" : ", not all of the session") << std::endl;
    return done ? kDone : kFoundFaults;
}

} // namespace

std::unique_ptr<Command> MakeShip()
{
    return std::make_unique<Ship>();
}

} // namespace logtool
