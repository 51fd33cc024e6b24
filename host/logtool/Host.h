// What the commands need from the system around them: streams, the folder, input files, time.
#pragma once

#include "engine/HttpClient.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace logtool
{

// Bytes to be logged.
class Input
{
public:
    enum class Result
    {
        Data,
        End,
        Error
    };

    virtual ~Input() = default;

    // Waits until there is something and answers what there is, `size` bytes at most. A `length` below
    // `size` tells that a live input has no more at the moment.
    virtual Result Read(char* data, std::size_t size, std::size_t& length) = 0;
};

// A connection to a receiver of bytes. `fault` gets the reason for an answer of false.
class Connection
{
public:
    virtual ~Connection() = default;
    virtual bool Send(std::string_view bytes, std::string& fault) = 0;

    // Ends what is sent, and waits until the receiver ends its side, which it does when it has read all.
    virtual bool Finish(std::string& fault) = 0;
};

// Implemented by the program over the console and by tests in memory.
class Host
{
public:
    virtual ~Host() = default;

    // Binary: a line feed stays one byte.
    virtual std::ostream& Output() = 0;
    virtual std::ostream& Messages() = 0;

    virtual bool IsOutputTerminal() = 0;
    // False on a terminal that shows colour sequences as text.
    virtual bool HasColours() = 0;
    virtual bool IsMessagesTerminal() = 0;
    // The system's reason why the output has failed; empty when its reader has gone.
    virtual std::string OutputFault() = 0;

    // Makes `folder` the log folder of the process.
    virtual void UseFolder(const std::string& folder) = 0;
    // As the environment names it; empty for the user's own.
    virtual std::string FolderName() = 0;
    virtual bool FolderExists() = 0; // else the system's last error tells why
    // Base names of the log files in the log folder, sorted, the library's error log not among them.
    virtual std::vector<std::string> ListLogs() = 0;

    // "-" is the standard input. Null when the file cannot be opened: the system's last error tells why.
    virtual std::unique_ptr<Input> OpenInput(const std::string& path) = 0;

    // Null, with the reason, when there is no receiver.
    virtual std::unique_ptr<Connection> ConnectTcp(const std::string& host, const std::string& port,
                                                   std::string& fault)
    {
        static_cast<void>(host), static_cast<void>(port);
        fault = "there is no network";
        return nullptr;
    }

    // The formats of text logs that the user has added, as the file in the profile folder has them; empty if
    // there is none.
    virtual std::string UserFormats() { return {}; }

    virtual std::string MachineName() { return {}; }

    // To an engine; a request ends when the user wants to.
    virtual std::unique_ptr<engine::HttpClient> Connect(const engine::EngineUrl&) { return nullptr; }

    // Whether the user has pressed Ctrl+C. From the first call on that no longer ends the program at once.
    virtual bool IsEndWanted() = 0;

    // Pauses between two looks at growing logs. False when the user wants to end.
    virtual bool Wait() = 0;
};

} // namespace logtool
