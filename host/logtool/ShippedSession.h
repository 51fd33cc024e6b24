// Under which name a folder's session is in the engine, and where shipping it goes on.
#pragma once

#include "engine/Engine.h"
#include "msgservice/session/Follower.h"

#include <cstdint>
#include <string>
#include <vector>

namespace logtool
{

struct ShipStart
{
    std::string session;
    msgservice::Cursor cursor; // its number is 0 if nothing has been shipped
};

// Asks the engine, and keeps nothing by itself: so it does not matter who shipped before, or how that ended.
//
// The first session of a folder has the name as it is, and those that begin there later have "-2", "-3" and
// so on behind it. The last of them that the engine knows is the folder's if the rows that the engine has are
// in the folder: the first and the last one of each log are compared. Otherwise the folder holds the next
// one.
class ShippedSession
{
public:
    // `table` as in SqlTable.
    ShippedSession(engine::Engine& engine, const std::string& table, const std::string& machine,
                   const std::string& name)
        : m_engine(engine), m_table(table), m_machine(machine), m_name(name)
    {
    }

    // Throws EngineError. Leaves no file open.
    ShipStart Find(const std::vector<std::string>& logs);

private:
    // The first and the last row of a log that the engine has.
    struct ShippedRow
    {
        std::uint32_t number = 0;
        std::uint32_t length = 0;
        std::string text; // its beginning
    };
    struct ShippedLog
    {
        std::string log;
        ShippedRow first, last;
    };

    std::string NameOf(std::uint32_t count) const;
    std::string Where(const std::string& session) const;
    bool Exists(const std::string& session);
    std::uint32_t CountSessions();
    std::vector<ShippedLog> ShippedLogs(const std::string& session);
    void ReadRows(const std::string& session, std::vector<ShippedLog>& logs);

    static bool IsInFolder(const ShippedLog& shipped);
    static bool AreInFolder(const std::vector<ShippedLog>& shipped);
    static msgservice::Cursor CursorAfter(const std::vector<ShippedLog>& shipped,
                                          const std::vector<std::string>& logs);

    engine::Engine& m_engine;
    std::string m_table;
    std::string m_machine;
    std::string m_name;
};

// The name of a folder's sessions: its own name, and a checksum that keeps folders of one name apart.
std::string SessionName(const std::string& folder);

} // namespace logtool
