// The host over the Windows console, pipes and files.
#pragma once

#include "logtool/Host.h"

#include <array>
#include <ostream>
#include <streambuf>
#include <string>

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
    bool WriteToConsole(const char* data, const char* end);

    void* m_handle;
    bool m_isConsole;
    std::string m_begun; // bytes of a character that a console has not got yet
    unsigned long m_error = 0;
    std::array<char, 64 * 1024> m_bytes;
};

class Console : public Host
{
public:
    Console();

    std::ostream& Output() override { return m_output; }
    std::ostream& Messages() override { return m_messages; } // who writes to it flushes it
    bool IsOutputTerminal() override;
    bool HasColours() override;
    bool IsMessagesTerminal() override;
    std::string OutputFault() override;
    void UseFolder(const std::string& folder) override;
    std::string FolderName() override;
    bool FolderExists() override;
    std::vector<std::string> ListLogs() override;
    std::unique_ptr<Input> OpenInput(const std::string& path) override;
    std::unique_ptr<Connection> ConnectTcp(const std::string& host, const std::string& port,
                                           std::string& fault) override;
    std::string UserFormats() override;
    std::string MachineName() override;
    std::unique_ptr<engine::HttpClient> Connect(const engine::EngineUrl& url) override;
    bool IsEndWanted() override;
    bool Wait() override;

private:
    HandleBuffer m_buffer;
    std::ostream m_output;
    HandleBuffer m_messagesBuffer;
    std::ostream m_messages;
};

} // namespace logtool
