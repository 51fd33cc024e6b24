#include "WindowsFiles.h"

#include <cstring>
#include <memory>
#include <string>

namespace ZEMA
{
namespace
{

DWORD Low(std::uint64_t number)
{
    return static_cast<DWORD>(number);
}

DWORD High(std::uint64_t number)
{
    return static_cast<DWORD>(number >> 32);
}

// The narrow calls know no longer paths.
bool IsLong(const char* path)
{
    return std::strlen(path) >= MAX_PATH;
}

// The name that a narrow call would make of it.
std::wstring WideName(const char* path)
{
    std::wstring wide(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, path, -1, nullptr, 0)),
                      L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, path, -1, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

class WindowsFiles : public IFileCalls
{
public:
    HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags) override
    {
        if (IsLong(path))
            return ::CreateFileW(WideName(path).c_str(), access, share, nullptr, disposition, flags, nullptr);
        return ::CreateFileA(path, access, share, nullptr, disposition, flags, nullptr);
    }

    bool Close(HANDLE file) override { return ::CloseHandle(file) != FALSE; }

    bool Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position) override
    {
        LARGE_INTEGER move;
        move.QuadPart = distance;
        LARGE_INTEGER moved;
        if (!::SetFilePointerEx(file, move, &moved, origin))
            return false;

        position = static_cast<std::uint64_t>(moved.QuadPart);
        return true;
    }

    bool Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead) override
    {
        bytesRead = 0;
        return ::ReadFile(file, data, size, &bytesRead, nullptr) != FALSE;
    }

    bool Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten) override
    {
        bytesWritten = 0;
        return ::WriteFile(file, data, size, &bytesWritten, nullptr) != FALSE;
    }

    bool SetEnd(HANDLE file) override { return ::SetEndOfFile(file) != FALSE; }

    bool Lock(HANDLE file, std::uint64_t offset, std::uint64_t length) override
    {
        return ::LockFile(file, Low(offset), High(offset), Low(length), High(length)) != FALSE;
    }

    bool Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length) override
    {
        return ::UnlockFile(file, Low(offset), High(offset), Low(length), High(length)) != FALSE;
    }

    bool GetSize(const char* path, std::uint64_t& size) override
    {
        WIN32_FILE_ATTRIBUTE_DATA attributes;
        if (!::GetFileAttributesExA(path, GetFileExInfoStandard, &attributes))
            return false;

        size = (static_cast<std::uint64_t>(attributes.nFileSizeHigh) << 32) | attributes.nFileSizeLow;
        return true;
    }

    bool Delete(const char* path) override { return ::DeleteFileA(path) != FALSE; }

    bool Replace(const char* path, const char* to) override
    {
        return ::MoveFileExA(path, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
    }

    bool GetIdentity(HANDLE file, FileIdentity& identity) override
    {
        BY_HANDLE_FILE_INFORMATION information;
        if (!::GetFileInformationByHandle(file, &information))
            return false;

        identity.volume = information.dwVolumeSerialNumber;
        identity.file =
            (static_cast<std::uint64_t>(information.nFileIndexHigh) << 32) | information.nFileIndexLow;
        return true;
    }

    DWORD LastError() override { return ::GetLastError(); }

    void SetLastError(DWORD error) override { ::SetLastError(error); }

    std::string ErrorText(DWORD error) override
    {
        // Inserts are ignored because there are no arguments to put in their places.
        char* text = nullptr;
        const DWORD length = ::FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                                  FORMAT_MESSAGE_IGNORE_INSERTS,
                                              nullptr, error, 0, reinterpret_cast<char*>(&text), 0, nullptr);
        const std::unique_ptr<char, decltype(&::LocalFree)> owner(text, &::LocalFree);
        return length == 0 ? std::string() : std::string(text, length);
    }

    std::int64_t UtcTime() override
    {
        FILETIME time = {};
        ::GetSystemTimePreciseAsFileTime(&time);
        return static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
    }
};

} // namespace

IFileCalls& WindowsFileCalls()
{
    // Never destroyed: destructors of other modules' statics still close their files through it.
    static IFileCalls& calls = *new WindowsFiles;
    return calls;
}

} // namespace ZEMA
