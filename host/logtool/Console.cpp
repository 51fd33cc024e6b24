#include "logtool/Console.h"

#include "commandline/ConsoleText.h"
#include "logtool/Commands.h"
#include "msgservice/SystemPath.h"
#include "msgservice/text/UserFormats.h"

#include "wintypes.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace logtool
{

using msgservice::IsSameName;

namespace
{

constexpr DWORD kPollPause = 200; // milliseconds

// Set by Ctrl+C, which ends following and reading in an orderly way: an open block is closed first.
HANDLE stopEvent = nullptr;
HANDLE mainThread = nullptr;

// The second time nothing is waited for: the system ends the process.
BOOL WINAPI OnControl(DWORD)
{
    const BOOL first = ::WaitForSingleObject(stopEvent, 0) == WAIT_TIMEOUT;
    ::SetEvent(stopEvent);
    ::CancelSynchronousIo(mainThread); // wakes a read from an idle pipe
    return first;
}

// Commands that do not wait leave Ctrl+C its usual meaning.
void CatchControl()
{
    if (stopEvent)
        return;
    stopEvent = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    ::DuplicateHandle(::GetCurrentProcess(), ::GetCurrentThread(), ::GetCurrentProcess(), &mainThread, 0,
                      FALSE, DUPLICATE_SAME_ACCESS);
    ::SetConsoleCtrlHandler(OnControl, TRUE);
}

bool IsConsole(HANDLE handle)
{
    DWORD mode = 0;
    return ::GetConsoleMode(handle, &mode) != 0;
}

class HandleInput : public Input
{
public:
    HandleInput(HANDLE handle, bool own) : m_handle(handle), m_own(own) {}
    ~HandleInput() override
    {
        if (m_own)
            ::CloseHandle(m_handle);
    }
    HandleInput(const HandleInput&) = delete;
    HandleInput& operator=(const HandleInput&) = delete;

    Result Read(char* data, std::size_t size, std::size_t& length) override
    {
        if (::WaitForSingleObject(stopEvent, 0) == WAIT_OBJECT_0)
            return Result::End;
        DWORD bytes = 0;
        if (!::ReadFile(m_handle, data, static_cast<DWORD>(size), &bytes, nullptr))
        {
            const DWORD error = ::GetLastError();
            const bool ended = error == ERROR_BROKEN_PIPE || error == ERROR_OPERATION_ABORTED;
            return ended ? Result::End : Result::Error;
        }
        length = bytes;
        return bytes == 0 ? Result::End : Result::Data;
    }

private:
    HANDLE m_handle;
    bool m_own;
};

} // namespace

HandleBuffer::HandleBuffer(void* handle) : m_handle(handle), m_isConsole(IsConsole(handle))
{
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
}

HandleBuffer::int_type HandleBuffer::overflow(int_type character)
{
    if (sync() != 0)
        return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

// What would fill the buffer goes past it.
std::streamsize HandleBuffer::xsputn(const char* data, std::streamsize size)
{
    if (size < static_cast<std::streamsize>(m_bytes.size()))
        return std::streambuf::xsputn(data, size);
    return sync() == 0 && WriteAll(data, data + size) ? size : 0;
}

int HandleBuffer::sync()
{
    const char* const data = pbase();
    const char* const end = pptr();
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size()); // what fails is not tried again at the end
    return WriteAll(data, end) ? 0 : -1;
}

// A console has a code page of its own.
bool HandleBuffer::WriteToConsole(const char* data, const char* end)
{
    m_begun.append(data, end);
    std::size_t written = 0;
    const bool isDone = commandline::WriteConsoleText(m_handle, m_begun, written);
    m_error = isDone ? m_error : ::GetLastError();
    m_begun.erase(0, written);
    return isDone;
}

bool HandleBuffer::WriteAll(const char* data, const char* end)
{
    if (m_isConsole)
        return WriteToConsole(data, end);
    while (data < end)
    {
        DWORD written = 0;
        if (!::WriteFile(m_handle, data, static_cast<DWORD>(end - data), &written, nullptr) || written == 0)
        {
            m_error = ::GetLastError();
            return false;
        }
        data += written;
    }
    return true;
}

Console::Console()
    : m_buffer(::GetStdHandle(STD_OUTPUT_HANDLE)), m_output(&m_buffer),
      m_messagesBuffer(::GetStdHandle(STD_ERROR_HANDLE)), m_messages(&m_messagesBuffer)
{
}

bool Console::IsOutputTerminal()
{
    return IsConsole(::GetStdHandle(STD_OUTPUT_HANDLE));
}

bool Console::HasColours()
{
    const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    return ::GetConsoleMode(output, &mode) != 0 &&
           ::SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool Console::IsMessagesTerminal()
{
    return IsConsole(::GetStdHandle(STD_ERROR_HANDLE));
}

std::string Console::OutputFault()
{
    const DWORD error = m_buffer.Error();
    const bool closed =
        error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA || error == ERROR_PIPE_NOT_CONNECTED;
    return closed ? "" : SystemReason(error);
}

// Names are in the system's code page here, as the library takes them: std::filesystem would convert them.
void Console::UseFolder(const std::string& folder)
{
    char path[MAX_PATH] = {};
    const DWORD length = ::GetFullPathNameA(folder.c_str(), MAX_PATH, path, nullptr);
    ::_putenv_s("QM_LOG_FOLDER", length > 0 && length < MAX_PATH ? path : folder.c_str());
}

std::string Console::FolderName()
{
    const char* folder = std::getenv("QM_LOG_FOLDER");
    return folder ? folder : "";
}

// The manager makes its own folder when none is named, so only a named one can be missing.
bool Console::FolderExists()
{
    const std::string folder = FolderName();
    if (folder.empty())
        return true;
    const DWORD attributes = ::GetFileAttributesA(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    ::SetLastError(ERROR_DIRECTORY);
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::string> Console::ListLogs()
{
    std::vector<std::string> logs;
    WIN32_FIND_DATAA file = {};
    const HANDLE search = ::FindFirstFileA((LogFolder() + "*").c_str(), &file);
    for (bool found = search != INVALID_HANDLE_VALUE; found; found = ::FindNextFileA(search, &file) != 0)
    {
        std::string name = file.cFileName;
        const std::string extension = name.size() > 4 ? name.substr(name.size() - 4) : "";
        if (!IsSameName(extension, ".LOG") && !IsSameName(extension, ".ROW"))
            continue;
        name.resize(name.size() - 4);
        const auto isSame = [&](const std::string& log) { return IsSameName(log, name); };
        const bool foreign = name.find('?') != std::string::npos; // not in the code page, so no log of ours
        // The library drops what follows the last dot of a name.
        if (name.find('.') != std::string::npos)
            name += ".LOG";
        if (!foreign && !IsSameName(name, "QmLog") && std::none_of(logs.begin(), logs.end(), isSame))
            logs.push_back(name);
    }
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
    std::sort(logs.begin(), logs.end());
    return logs;
}

std::unique_ptr<Input> Console::OpenInput(const std::string& path)
{
    CatchControl();
    if (path == "-")
        return std::make_unique<HandleInput>(::GetStdHandle(STD_INPUT_HANDLE), false);
    const HANDLE file =
        ::CreateFileW(msgservice::SystemPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    return std::make_unique<HandleInput>(file, true);
}

std::string Console::UserFormats()
{
    return msgservice::ReadUserFormats();
}

std::string Console::MachineName()
{
    wchar_t name[256] = {};
    DWORD size = static_cast<DWORD>(std::size(name));
    if (!::GetComputerNameExW(ComputerNameDnsHostname, name, &size))
        return {};
    std::string text;
    ZEMA::FromWide(name, size, text);
    return text;
}

std::unique_ptr<engine::HttpClient> Console::Connect(const engine::EngineUrl& url)
{
    return engine::MakeHttpClient(url, [this] { return IsEndWanted(); });
}

bool Console::IsEndWanted()
{
    CatchControl();
    return ::WaitForSingleObject(stopEvent, 0) == WAIT_OBJECT_0;
}

bool Console::Wait()
{
    CatchControl();
    return ::WaitForSingleObject(stopEvent, kPollPause) == WAIT_TIMEOUT;
}

} // namespace logtool
