// A sink of spdlog that writes into a log. Needs QmLog.hpp only, so it suits any compiler.
#pragma once

#include <QmLog.hpp>

#include <spdlog/details/null_mutex.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/base_sink.h>

#include <memory>
#include <mutex>
#include <string>

// A message is a line; an error, or worse, is a block of its own, which viewers colour and "next error"
// finds. Lines go to the system at once. A line that cannot be written is told to the logger's error handler.
template <typename Mutex> class QmLogSink : public spdlog::sinks::base_sink<Mutex>
{
public:
    explicit QmLogSink(const std::string& name)
        : spdlog::sinks::base_sink<Mutex>(Formatter("%v")), m_log(name)
    {
    }

protected:
    void sink_it_(const spdlog::details::log_msg& message) override
    {
        spdlog::memory_buf_t buffer;
        this->formatter_->format(message, buffer);
        const qmlog::Text text(buffer.data(), buffer.size());
        if (message.level < spdlog::level::err)
        {
            if (!m_log.Line(text))
                spdlog::throw_spdlog_ex(qmlog::LastErrorText());
            return;
        }
        const qmlog::Block block(m_log, QMLOG_C_ERROR, text);
    }

    void flush_() override {}

    void set_pattern_(const std::string& pattern) override { this->set_formatter_(Formatter(pattern)); }

private:
    // Without a line end: a line begins with its own where text precedes it.
    static std::unique_ptr<spdlog::formatter> Formatter(const std::string& pattern)
    {
        return std::make_unique<spdlog::pattern_formatter>(pattern, spdlog::pattern_time_type::local, "");
    }

    qmlog::Writer m_log;
};

using QmLogSinkMt = QmLogSink<std::mutex>;
using QmLogSinkSt = QmLogSink<spdlog::details::null_mutex>;
