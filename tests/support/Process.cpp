#include "tests/support/Process.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>

namespace
{

// On a busy machine Wine now and then gives up on a process that is not set up in time, and answers this
// error. The process never ran then, so that it can be started again.
PROCESS_INFORMATION Start(const std::string& program, STARTUPINFOA& startup)
{
    PROCESS_INFORMATION process = {};
    for (int attempt = 0; attempt < 5; ++attempt)
    {
        if (::CreateProcessA(program.c_str(), nullptr, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                             &process))
            return process;
        if (::GetLastError() != ERROR_INTERNAL_ERROR)
            break;
    }
    // Thrown, so that the test ends here: without its child nothing that follows means anything.
    throw std::runtime_error(program + " does not start, error " + std::to_string(::GetLastError()));
}

} // namespace

Child::Child()
{
    constexpr DWORD kPipeSize = 1 << 20; // what a child says until it is killed fits without being read
    SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    HANDLE input = nullptr;
    HANDLE output = nullptr;
    ::CreatePipe(&startup.hStdInput, &input, &inherited, kPipeSize);
    ::CreatePipe(&output, &startup.hStdOutput, &inherited, kPipeSize);
    for (const HANDLE ours : {input, output})
        ::SetHandleInformation(ours, HANDLE_FLAG_INHERIT, 0);
    m_input.reset(input);
    m_output.reset(output);
    const Handle childInput(startup.hStdInput);
    const Handle childOutput(startup.hStdOutput);
    startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    char path[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string program = std::filesystem::path(path).replace_filename("writer_child.exe").string();
    const PROCESS_INFORMATION process = Start(program, startup);
    m_process.reset(process.hProcess);
    m_thread.reset(process.hThread);
}

void Child::Suspend()
{
    CONTEXT context = {};
    context.ContextFlags = CONTEXT_CONTROL;
    EXPECT_NE(DWORD(-1), ::SuspendThread(m_thread.get()));
    EXPECT_TRUE(::GetThreadContext(m_thread.get(), &context)); // waits until it stands
}

void Child::Send(const std::string& command)
{
    const std::string line = command + "\n";
    DWORD done = 0;
    EXPECT_TRUE(::WriteFile(m_input.get(), line.data(), static_cast<DWORD>(line.size()), &done, nullptr))
        << command;
}

std::string Child::Answer(DWORD milliseconds)
{
    const ULONGLONG deadline = ::GetTickCount64() + milliseconds;
    while (m_received.find('\n') == std::string::npos)
    {
        // A pipe has no wait with a time limit.
        DWORD available = 0;
        if (!::PeekNamedPipe(m_output.get(), nullptr, 0, nullptr, &available, nullptr) ||
            (available == 0 && ::GetTickCount64() >= deadline))
            return {};
        std::string part(available, '\0');
        if (available > 0)
            ::ReadFile(m_output.get(), part.data(), available, &available, nullptr);
        else
            ::Sleep(1);
        m_received += part;
    }
    const std::string line = m_received.substr(0, m_received.find('\n'));
    m_received.erase(0, line.size() + 1);
    return line;
}

DWORD Child::Finish()
{
    m_input.reset();
    DWORD code = 1;
    EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(m_process.get(), kLong)) << "the child does not end";
    ::GetExitCodeProcess(m_process.get(), &code);
    return code;
}
