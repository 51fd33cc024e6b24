#include "SpdlogFile.h"

#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

namespace bench
{

struct SpdlogFile::Logger
{
    spdlog::logger logger;
};

SpdlogFile::SpdlogFile(const std::string& path)
    : m_logger(new Logger{{"peer", std::make_shared<spdlog::sinks::basic_file_sink_st>(path)}})
{
    spdlog::logger& logger = m_logger->logger;
    logger.set_formatter(
        std::make_unique<spdlog::pattern_formatter>("%v", spdlog::pattern_time_type::local, "\n"));
    logger.set_level(spdlog::level::trace);
    logger.flush_on(spdlog::level::trace);
}

SpdlogFile::~SpdlogFile() = default;

void SpdlogFile::Line(const std::string& text)
{
    m_logger->logger.log(spdlog::level::info, spdlog::string_view_t(text));
}

} // namespace bench
