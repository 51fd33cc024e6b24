// Counts the drawing objects of this process, for tests that nothing leaks.
#pragma once

#include <windows.h>
#include <winternl.h>

// Caches of the system count too: compare after a first round.
inline unsigned CountGdiObjects()
{
    if (const DWORD count = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS); count != 0)
        return count;
    // Wine does not answer that; its handle table lies where the process environment block points to.
    PROCESS_BASIC_INFORMATION process = {};
    ::NtQueryInformationProcess(::GetCurrentProcess(), ProcessBasicInformation, &process, sizeof(process),
                                nullptr);
    const auto* const block = reinterpret_cast<const BYTE*>(process.PebBaseAddress);
    const BYTE* const table = *reinterpret_cast<const BYTE* const*>(block + 0xF8);
    unsigned count = 0;
    for (int entry = 0; entry < 16384; ++entry)
        count += table[entry * 24 + 14] != 0;
    return count;
}
