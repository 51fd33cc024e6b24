// The rows of a session's logs as messages.
#pragma once

#include "msgservice/MessageSource.h"
#include "msgservice/session/Follower.h"
#include "msgservice/session/RowMessage.h"
#include "msgservice/session/SessionRows.h"

#include <functional>
#include <memory>
#include <optional>

namespace msgservice
{

// A row is a message (RowMessage). Its source line is its number in its log, from 1 on, so that a message
// leads to its row.
//
// The logs lie in the log folder. Rows come in the order of their numbers; later, in the order in which they
// are found. Of a line that goes on after it was found complete the rest is another message.
class SessionSource : public MessageSource
{
public:
    enum class Until
    {
        Now,    // the rows that there are
        Forever // and those that come
    };

    SessionSource(const std::vector<std::string>& logs, Until until);
    ~SessionSource() override;

    // Has `find` asked before each look which logs there are, so that new ones are taken in; logs that have
    // gone stay. If it answers nothing there is no log folder, and no look, which would make the folder. On
    // the reading thread, before the first Read.
    using FindLogs = std::function<std::optional<std::vector<std::string>>()>;
    void SetFindLogs(FindLogs find) { m_findLogs = std::move(find); }

    // Has `rows` told which message is which row. Before the first Read, which then has to be given the
    // store of `rows` to fill.
    void SetRows(std::shared_ptr<SessionRows> rows);

    State Read(MessageSink& sink) override;
    std::string TakeNotices() override;
    std::string Explanation() override;

private:
    class Rows;

    Until m_until;
    FindLogs m_findLogs;
    std::unique_ptr<Rows> m_rows;
    Follower m_follower;
};

} // namespace msgservice
