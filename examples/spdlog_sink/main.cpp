// A program that logs by spdlog, whose messages go into the log "Main".
#include "QmLogSink.h"

#include <spdlog/spdlog.h>

int main()
{
    spdlog::logger logger("program", std::make_shared<QmLogSinkMt>("Main"));
    logger.info("Started");
    logger.warn("{} jobs, {} of them disabled", 12, 1);
    logger.error("Job {} failed", 3);
    logger.set_pattern("[%l] %v");
    logger.info("Done");
    return qmlog::Writer::CloseAll() ? 0 : 1;
}
