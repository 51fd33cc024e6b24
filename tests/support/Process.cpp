#include "tests/support/Process.h"

#include <gtest/gtest.h>

namespace
{

void CloseAndForget(HANDLE& handle)
{
    if (handle != nullptr)
        ::CloseHandle(handle);
    handle = nullptr;
}

std::string ProgramFolder()
{
    char path[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text = path;
    return text.substr(0, text.find_last_of('\\') + 1);
}

} // namespace

Child::Child()
{
    constexpr DWORD kPipeSize = 1 << 20; // what a child says until it is killed fits without being read
    SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    ::CreatePipe(&startup.hStdInput, &m_input, &inherited, kPipeSize);
    ::CreatePipe(&m_output, &startup.hStdOutput, &inherited, kPipeSize);
    startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    ::SetHandleInformation(m_input, HANDLE_FLAG_INHERIT, 0);
    ::SetHandleInformation(m_output, HANDLE_FLAG_INHERIT, 0);

    std::string program = ProgramFolder() + "writer_child.exe";
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA(program.c_str(), program.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                          &startup, &process))
        ADD_FAILURE() << program << " does not start, error " << ::GetLastError();
    m_process = process.hProcess;
    CloseAndForget(process.hThread);
    CloseAndForget(startup.hStdInput);
    CloseAndForget(startup.hStdOutput);
}

Child::~Child()
{
    Kill();
    CloseAndForget(m_input);
    CloseAndForget(m_output);
    CloseAndForget(m_process);
}

void Child::Send(const std::string& command)
{
    const std::string line = command + "\n";
    DWORD done = 0;
    EXPECT_TRUE(::WriteFile(m_input, line.data(), static_cast<DWORD>(line.size()), &done, nullptr))
        << command;
}

std::optional<std::string> Child::Answer(DWORD milliseconds)
{
    const ULONGLONG deadline = ::GetTickCount64() + milliseconds;
    for (;;)
    {
        if (const std::size_t end = m_received.find('\n'); end != std::string::npos)
        {
            const std::string line = m_received.substr(0, end);
            m_received.erase(0, end + 1);
            return line;
        }
        // A pipe has no wait with a time limit.
        DWORD available = 0;
        if (!::PeekNamedPipe(m_output, nullptr, 0, nullptr, &available, nullptr))
            return {};
        if (available > 0)
        {
            std::string part(available, '\0');
            ::ReadFile(m_output, part.data(), available, &available, nullptr);
            m_received += part.substr(0, available);
        }
        else if (::GetTickCount64() >= deadline)
            return {};
        else
            ::Sleep(1);
    }
}

std::string Child::Ask(const std::string& command)
{
    Send(command);
    return Answer().value_or("");
}

bool Child::IsRunning() const
{
    return ::WaitForSingleObject(m_process, 0) == WAIT_TIMEOUT;
}

void Child::Kill()
{
    ::TerminateProcess(m_process, 1);
    ::WaitForSingleObject(m_process, kLong);
}

void Child::EndInput()
{
    CloseAndForget(m_input);
}

DWORD Child::Finish()
{
    EndInput();
    DWORD code = 1;
    EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(m_process, kLong)) << "the child does not end";
    ::GetExitCodeProcess(m_process, &code);
    return code;
}
