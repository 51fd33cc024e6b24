#include "QmLogOutputFile.h"

#include "vkservices/IAppRegistry.h"
#include "zemacore/AppDataManager.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace
{

ZEMA::String OutputFolder()
{
    ZEMA::String folder;
    VkServices::IServiceRegistry* services = VkServices::Services::get_service_registry();
    if (!services)
        return folder;
    if (auto* registry = dynamic_cast<IAppRegistry*>(services->get_service("ServiceId_AppRegistry")))
        registry->GetString("Run.Output.Path", folder);
    folder.TrimRight();
    if (!folder.IsEmpty() && folder.Last() != '\\' && folder.Last() != '/')
        folder += "\\";
    return folder;
}

// False where there is no output folder or the path does not fit.
bool MakeOutputPath(const char* name, char* path)
{
    const ZEMA::String folder = OutputFolder();
    IAppDataManager* manager = AppDataManager::LoadAppDataManager();
    IAppDataAccess* access = manager ? manager->GetAccess() : nullptr;
    AppDataPath parts = {};
    return !folder.IsEmpty() && access && access->SplitPath(folder.c_str(), parts) &&
           ZEMA_makepath(path, parts.drive, parts.directory, name, "TXT");
}

// Ends the process: what was to be written is lost otherwise, and nobody would know.
[[noreturn]] void End(const char* message)
{
    std::fputs(message, stderr);
    std::abort();
}

// Answers the number of characters. `text` has room for `limit` and a NUL.
unsigned long long FormatText(char* text, unsigned limit, const char* format, std::va_list arguments)
{
    const int length = std::vsnprintf(text, limit + 1, format, arguments);
    if (length < 0)
        End("QmLogOutputFile: format error: the text cannot be formatted\n");
    if (static_cast<unsigned>(length) > limit)
        End("QmLogOutputFile: range error: formatted text is too long\n");
    return static_cast<unsigned long long>(length);
}

} // namespace

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr unsigned QmLogOutputFile::kMaxFormatted;

QmLogOutputFile::QmLogOutputFile(const char* name) : m_name(name) {}

QmLogOutputFile::~QmLogOutputFile()
{
    if (m_file)
        ZEMA::FileCalls().Close(m_file);
}

void QmLogOutputFile::SetName(const char* name)
{
    m_name = name;
}

void QmLogOutputFile::Write(const char* format, ...)
{
    Init();
    if (!m_file)
        return;
    char text[kMaxFormatted + 1];
    std::va_list arguments;
    va_start(arguments, format);
    const unsigned long long length = FormatText(text, kMaxFormatted, format, arguments);
    va_end(arguments);
    WriteDirect(text, length);
}

void QmLogOutputFile::WriteLine(const char* format, ...)
{
    Init();
    if (!m_file)
        return;
    char text[1 + kMaxFormatted + 1] = {'\n'};
    std::va_list arguments;
    va_start(arguments, format);
    const unsigned long long length = FormatText(text + 1, kMaxFormatted, format, arguments);
    va_end(arguments);
    WriteDirect(text, 1 + length);
}

void QmLogOutputFile::WriteDirect(const char* data, unsigned long long size)
{
    Init();
    if (!m_file)
        return;
    // The system takes 32-bit sizes.
    constexpr unsigned long long kPortion = 0x40000000;
    while (size > 0)
    {
        const DWORD portion = static_cast<DWORD>(std::min(size, kPortion));
        DWORD written = 0;
        if (!ZEMA::FileCalls().Write(m_file, data, portion, written) || written != portion)
            return;
        data += portion;
        size -= portion;
    }
}

void QmLogOutputFile::Init()
{
    if (m_initialised)
        return;
    m_initialised = true; // first, so that a failure is not tried again

    char path[MAX_PATH] = {};
    if (!MakeOutputPath(m_name.c_str(), path))
        return;
    const HANDLE file = ZEMA_CreateFile(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    m_file = file;
    if (!m_file)
        return;
    std::uint64_t position = 0;
    ZEMA::FileCalls().Seek(m_file, 0, FILE_END, position);
    WriteLine("----------");
}
