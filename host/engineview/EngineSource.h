// The rows of a session that lies in a columnar engine as messages.
#pragma once

#include "engine/RowReader.h"
#include "msgservice/MessageSource.h"
#include "msgservice/session/RowMessage.h"
#include "msgservice/view/Description.h"

#include <memory>
#include <optional>

namespace engineview
{

// Messages come by number, in the memory of one answer. Followed rows are those with numbers behind the last
// one read: a row that arrives later with a smaller number is not among them.
class EngineSource : public msgservice::MessageSource
{
public:
    enum class Until
    {
        Now,    // the rows that there are
        Forever // and those that come; a server that is lost is asked again
    };

    // The address has a session's name. Rows that the description leaves out may be missing.
    EngineSource(const engine::EngineUrl& url, std::unique_ptr<engine::HttpClient> client, Until until,
                 const msgservice::ViewDescription& description);

    State Read(msgservice::MessageSink& sink) override;
    std::string TakeNotices() override;
    std::string Explanation() override;

private:
    static constexpr std::uint64_t kFirstStretch = 10'000;

    bool FindMore();
    void ReadStretch(msgservice::MessageSink& sink);
    void AskLess(const engine::EngineError& error);
    State Lose(const engine::EngineError& error);
    State AtEnd() const { return m_until == Until::Now ? State::Ended : State::Waiting; }

    std::string m_address; // as it may be shown
    Until m_until;
    engine::RowReader m_reader;
    engine::RowChoice m_choice;
    std::uint64_t m_next = 0;                // the first number that was not asked for
    std::optional<std::uint64_t> m_last;     // known to be there, from m_next on
    std::uint64_t m_stretch = kFirstStretch; // how many numbers are asked for at once
    bool m_isLost = false;
    msgservice::RowMessage m_message;
    std::string m_notices;
};

} // namespace engineview
