// A child process of a test, spoken to line by line.
#pragma once

#include <optional>
#include <string>
#include <windows.h>

// Runs writer_child.exe, which lies beside the test program, with this process's environment.
class Child
{
public:
    Child();
    ~Child(); // kills it when it still runs
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void Send(const std::string& command);

    // Its next line; nothing when none comes in time or it has ended.
    std::optional<std::string> Answer(DWORD milliseconds = kLong);

    // Send and Answer in one; empty when no answer comes.
    std::string Ask(const std::string& command);

    bool IsRunning() const;

    // As a crash would: nothing is closed, nothing flushed.
    void Kill();

    // Closes its input, upon which it ends. Children that wait for each other need this before any Finish.
    void EndInput();

    // EndInput, waits, and answers its exit code.
    DWORD Finish();

private:
    static constexpr DWORD kLong = 60000; // for a busy machine; a test that waits this long fails

    HANDLE m_process = nullptr;
    HANDLE m_input = nullptr;
    HANDLE m_output = nullptr;
    std::string m_received; // not answered yet
};
