// The thread that reads a source into a store.
#pragma once

#include "msgservice/MessageSource.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace msgservice
{

// Reads from construction to destruction, or to the end of the source.
class SourceReader
{
public:
    // `wake` is called on the reader's thread after it has read something or has something to tell; it must
    // not throw.
    SourceReader(std::unique_ptr<MessageSource> source, std::shared_ptr<MessageSink> sink,
                 std::function<void()> wake);
    SourceReader(const SourceReader&) = delete;
    SourceReader& operator=(const SourceReader&) = delete;

    // As MessageSource::TakeNotices; any thread.
    std::string TakeNotices();

    // Whether the source may still bring messages.
    bool IsReading() const { return m_reading; }

private:
    void Run(const std::stop_token& stop);
    MessageSource::State ReadPiece();

    std::unique_ptr<MessageSource> m_source;
    std::shared_ptr<MessageSink> m_sink;
    std::function<void()> m_wake;
    std::atomic<bool> m_reading = true;
    std::mutex m_mutex;
    std::condition_variable_any m_waiting;
    std::string m_notices;
    std::jthread m_thread; // last: it ends before the rest goes
};

} // namespace msgservice
