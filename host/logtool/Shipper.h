// A session's rows on their way into an engine.
#pragma once

#include "engine/Engine.h"
#include "engine/LogTable.h"
#include "logtool/Host.h"
#include "logtool/ShippedSession.h"
#include "sessionwalk/FollowedWalk.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string>

namespace logtool
{

struct ShipTarget
{
    std::string address; // as it is shown
    std::string table;
    std::string machine;
    std::string session; // see ShippedSession
};

// Sends batch after batch, and waits for each of them to be there: so the session is the only buffer. While
// it waits no file is open, so that a new session can delete the files.
class Shipper : private sessionwalk::WalkedRows
{
public:
    Shipper(engine::Engine& engine, const ShipTarget& target, Host& host);

    // These say among the messages when the engine cannot be reached or cannot do its work, and try again
    // until the user ends it: then the answer is false. They throw where trying again does not help.
    bool CreateTable();
    bool ShipRows(); // those that there are
    void Follow();   // and those that come

    std::uint64_t ShippedRows() const { return m_shipped; }

private:
    void Row(const sessionwalk::WalkedRow& walked) override;
    void SessionBegun() override { m_begun = true; }
    bool IsFull() override { return m_begun || m_batch.IsFull(); }

    bool Begin();
    bool Send();
    bool Try(const std::function<void()>& act);
    bool Pause(unsigned tries, const char* words);

    engine::Engine& m_engine;
    ShipTarget m_target;
    Host& m_host;
    std::optional<sessionwalk::FollowedWalk> m_walk;
    engine::RowBatch m_batch;
    std::string m_session;
    bool m_begun = true; // a session has, and its name is not known yet
    std::uint64_t m_shipped = 0;
    std::minstd_rand m_random;
};

} // namespace logtool
