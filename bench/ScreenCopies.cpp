#include "ScreenCopies.h"
#include "BenchFiles.h"

#include <windows.h>

namespace bench
{

namespace
{

using BitBltFunction = decltype(&::BitBlt);

double pixels = 0;

BOOL WINAPI CountingBitBlt(HDC target, int x, int y, int cx, int cy, HDC source, int sourceX, int sourceY,
                           DWORD operation)
{
    if (::GetObjectType(target) == OBJ_DC)
        pixels += static_cast<double>(cx) * cy;
    return ::BitBlt(target, x, y, cx, cy, source, sourceX, sourceY, operation);
}

// Puts `replacement` wherever a module has imported `function`; false when it has not.
bool Replace(const char* module, BitBltFunction function, BitBltFunction replacement)
{
    auto* const image = reinterpret_cast<unsigned char*>(::GetModuleHandle(module));
    Check(image != nullptr, "a module of the library");
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    auto* const imports = reinterpret_cast<BitBltFunction*>(image + table.VirtualAddress);
    bool replaced = false;
    for (std::size_t i = 0; i < table.Size / sizeof(*imports); ++i)
    {
        if (imports[i] != function)
            continue;
        DWORD protection = 0;
        ::VirtualProtect(imports + i, sizeof(*imports), PAGE_READWRITE, &protection);
        imports[i] = replacement;
        ::VirtualProtect(imports + i, sizeof(*imports), protection, &protection);
        replaced = true;
    }
    return replaced;
}

} // namespace

double CountCopiedPixels(const std::function<void()>& action)
{
    const auto function = reinterpret_cast<BitBltFunction>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle("gdi32.dll"), "BitBlt")));
    static const bool counting = [function] {
        const bool log = Replace("QmLog.dll", function, CountingBitBlt);
        return Replace("QmPlatform.dll", function, CountingBitBlt) || log;
    }();
    Check(counting, "counting copies");
    pixels = 0;
    action();
    return pixels;
}

} // namespace bench
