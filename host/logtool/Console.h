// The host over the Windows console, pipes and files.
#pragma once

#include "logtool/Host.h"

#include <array>
#include <ostream>
#include <streambuf>

namespace logtool
{

// Writes to a system handle; a failed write makes the stream bad.
class HandleBuffer : public std::streambuf
{
public:
    explicit HandleBuffer(void* handle);

    unsigned long Error() const { return m_error; } // of the write that has failed

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* data, std::streamsize size) override;
    int sync() override;

private:
    bool WriteAll(const char* data, const char* end);

    void* m_handle;
    unsigned long m_error = 0;
    std::array<char, 64 * 1024> m_bytes;
};

class Console : public Host
{
public:
    Console();

    std::ostream& Output() override { return m_output; }
    std::ostream& Messages() override;
    bool IsOutputTerminal() override;
    bool HasColours() override;
    bool IsMessagesTerminal() override;
    std::string OutputFault() override;
    void UseFolder(const std::string& folder) override;
    std::string FolderName() override;
    bool FolderExists() override;
    std::vector<std::string> ListLogs() override;
    std::unique_ptr<Input> OpenInput(const std::string& path) override;
    std::string UserFormats() override;
    bool IsEndWanted() override;
    bool Wait() override;

private:
    HandleBuffer m_buffer;
    std::ostream m_output;
};

} // namespace logtool
