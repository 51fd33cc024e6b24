// A child process of a test, spoken to line by line.
#pragma once

#include <memory>
#include <string>
#include <windows.h>

// Runs writer_child.exe, which lies beside the test program, with this process's environment.
class Child
{
public:
    Child(); // throws if the child does not start
    ~Child() { Kill(); }

    void Send(const std::string& command);

    // Its next line; empty when none comes in time or it has ended.
    std::string Answer(DWORD milliseconds = kLong);

    // Send and Answer in one.
    std::string Ask(const std::string& command)
    {
        Send(command);
        return Answer();
    }

    bool IsRunning() const { return ::WaitForSingleObject(m_process.get(), 0) == WAIT_TIMEOUT; }

    // As a crash would: nothing is closed, nothing flushed.
    void Kill()
    {
        ::TerminateProcess(m_process.get(), 1);
        ::WaitForSingleObject(m_process.get(), kLong);
    }

    // As a debugger does, wherever it is just now; it is to be resumed or killed.
    void Suspend();
    void Resume() { ::ResumeThread(m_thread.get()); }

    // Closes its input, upon which it ends, waits, and answers its exit code.
    DWORD Finish();

private:
    static constexpr DWORD kLong = 60000; // for a busy machine; a test that waits this long fails

    struct CloseHandle
    {
        void operator()(HANDLE handle) const { ::CloseHandle(handle); }
    };
    using Handle = std::unique_ptr<void, CloseHandle>;

    Handle m_process;
    Handle m_thread; // its only one
    Handle m_input;
    Handle m_output;
    std::string m_received; // not answered yet
};
