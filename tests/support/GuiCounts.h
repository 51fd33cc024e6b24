// How many drawing objects, windows and handles this process holds, for tests that nothing is left behind.
#pragma once

#include <malloc.h>
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

// Calls `visit` with each of them. Wine does not enumerate them, but like Windows it has their table in the
// process.
template <typename Visit> void ForEachGdiObject(Visit visit)
{
    constexpr std::size_t kHandleTable = 0xF8;
    constexpr std::uintptr_t kEntries = 16384;
    constexpr std::size_t kEntrySize = 24;
    constexpr std::size_t kGeneration = 12; // the upper half of a handle
    constexpr std::size_t kType = 14;       // 0 in a free entry

    void* const address = reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandle("ntdll.dll"), "RtlGetCurrentPeb")); // the process's environment
    const auto* const environment = reinterpret_cast<const unsigned char* (*)()>(address)();
    const auto* const table = *reinterpret_cast<const unsigned char* const*>(environment + kHandleTable);
    for (std::uintptr_t i = 0; i < kEntries; ++i)
    {
        const unsigned char* const entry = table + i * kEntrySize;
        const std::uintptr_t generation = entry[kGeneration] | std::uintptr_t{entry[kGeneration + 1]} << 8;
        if (entry[kType] != 0)
            visit(reinterpret_cast<HGDIOBJ>(i | generation << 16));
    }
}

inline int GdiObjectCount()
{
    int count = 0;
    ForEachGdiObject([&count](HGDIOBJ) { ++count; });
    return count;
}

// The blocks of memory from the run-time's heap, which all modules share.
inline int HeapBlockCount()
{
    int count = 0;
    const auto heap = reinterpret_cast<HANDLE>(::_get_heap_handle());
    PROCESS_HEAP_ENTRY entry = {};
    ::HeapLock(heap);
    while (::HeapWalk(heap, &entry))
        count += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    ::HeapUnlock(heap);
    return count;
}

// The handles of files, processes and the like. Wine does not count them for a process, but lists those of
// all.
inline int HandleCount()
{
    struct HandleEntry
    {
        ULONG process;
        BYTE type;
        BYTE flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    constexpr ULONG kHandleInformation = 16;
    constexpr LONG kTooSmall = static_cast<LONG>(0xC0000004);
    constexpr std::size_t kFirstEntry = 8; // after the count
    void* const address =
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle("ntdll.dll"), "NtQuerySystemInformation"));
    const auto query = reinterpret_cast<LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*)>(address);
    std::vector<char> bytes(1 << 16);
    ULONG size = 0;
    LONG status = kTooSmall;
    while ((status = query(kHandleInformation, bytes.data(), static_cast<ULONG>(bytes.size()), &size)) ==
           kTooSmall)
        bytes.resize(2 * bytes.size());
    if (status < 0)
        return -1;
    const auto* const entries = reinterpret_cast<const HandleEntry*>(bytes.data() + kFirstEntry);
    const ULONG count = *reinterpret_cast<const ULONG*>(bytes.data());
    return static_cast<int>(std::count_if(entries, entries + count, [](const HandleEntry& entry) {
        return entry.process == ::GetCurrentProcessId();
    }));
}

// The windows of the calling thread, children included.
inline int WindowCount()
{
    int count = 0;
    static const auto child = [](HWND, LPARAM counter) -> BOOL {
        ++*reinterpret_cast<int*>(counter);
        return TRUE;
    };
    const auto top = [](HWND hwnd, LPARAM counter) -> BOOL {
        ++*reinterpret_cast<int*>(counter);
        ::EnumChildWindows(hwnd, child, counter);
        return TRUE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), top, reinterpret_cast<LPARAM>(&count));
    return count;
}
