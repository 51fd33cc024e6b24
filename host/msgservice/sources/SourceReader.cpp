#include "msgservice/sources/SourceReader.h"

#include <chrono>
#include <exception>
#include <utility>

namespace msgservice
{

namespace
{

constexpr std::chrono::milliseconds kBetweenLooks(200);

} // namespace

SourceReader::SourceReader(std::unique_ptr<MessageSource> source, std::shared_ptr<MessageSink> sink,
                           std::function<void()> wake)
    : m_source(std::move(source)), m_sink(std::move(sink)), m_wake(std::move(wake)),
      m_thread([this](const std::stop_token& stop) { Run(stop); })
{
}

std::string SourceReader::TakeNotices()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_notices, {});
}

void SourceReader::Run(const std::stop_token& stop)
{
    while (m_reading && !stop.stop_requested())
    {
        const MessageSource::State state = ReadPiece();
        m_reading = state != MessageSource::State::Ended;
        m_wake();
        std::unique_lock lock(m_mutex);
        if (state == MessageSource::State::Waiting)
            m_waiting.wait_for(lock, stop, kBetweenLooks, [] { return false; });
    }
}

// Without memory, or with as many messages as there are ids, what has been read stays.
MessageSource::State SourceReader::ReadPiece()
{
    std::string fault;
    MessageSource::State state = MessageSource::State::Ended;
    try
    {
        state = m_source->Read(*m_sink);
    }
    catch (const std::exception& exception)
    {
        fault = std::string("Reading has ended: ") + exception.what() + "\n";
    }
    const std::string notices = m_source->TakeNotices();
    const std::lock_guard lock(m_mutex);
    m_notices += notices + fault;
    return state;
}

} // namespace msgservice
