// The peer that the log files are compared with: spdlog writing plain lines to one file.
#pragma once

#include <memory>
#include <string>

namespace bench
{

// Each line is written as it is, followed by a line feed, and handed to the system at once, as the log
// files do. For one thread: no lock of its own.
class SpdlogFile
{
public:
    explicit SpdlogFile(const std::string& path);
    ~SpdlogFile();
    SpdlogFile(const SpdlogFile&) = delete;
    SpdlogFile& operator=(const SpdlogFile&) = delete;

    void Line(const std::string& text);

private:
    struct Logger;
    std::unique_ptr<Logger> m_logger;
};

} // namespace bench
