// Reads a file of any size in constant memory.
#pragma once

#include "wintypes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace logfiles
{

// How far reading has come, told now and then to whoever asked for it, who can end it.
class ReadProgress
{
public:
    // `tell` gets the percent and answers false to end; it may be empty.
    explicit ReadProgress(std::function<bool(int)> tell) : m_tell(std::move(tell)) {}

    void Expect(std::uint64_t bytes) { m_expected += bytes; }
    void Add(std::uint64_t bytes);
    bool IsStopped() const { return m_stopped; }

private:
    std::function<bool(int)> m_tell;
    std::uint64_t m_expected = 0;
    std::uint64_t m_done = 0;
    std::uint64_t m_told = 0;
    bool m_stopped = false;
};

// A file opened for reading beside its writers, seen as of the moment it was opened: what is appended later
// is not there, and what is cut off later is gone. Bytes are read in windows, of which the last two are kept:
// walking through the file in either direction, with looks a little back and forth, reads each part once.
class FileWindow
{
public:
    enum class State
    {
        Open,
        Missing,
        Unreadable
    };

    // With a `progress`, which outlives the window, nothing can be read any more once that is stopped.
    explicit FileWindow(const std::string& path, ReadProgress* progress = nullptr);
    ~FileWindow(); // closes the file
    FileWindow(const FileWindow&) = delete;
    FileWindow& operator=(const FileWindow&) = delete;

    // kUnreadable also once a read has failed.
    State GetState() const { return m_state; }

    // Bytes; 0 unless the file is open.
    std::uint64_t Size() const { return m_size; }

    // Bytes by now, with what was appended since.
    std::uint64_t SizeNow() const;

    // The bytes at `position`, BytesFrom(position) of them; null past the end and after a failed read.
    // Valid until the next call. Records of 20 bytes do not cross windows.
    const char* At(std::uint64_t position);

    // Closes the file before its time; nothing can be read afterwards.
    void Close();

    // How many bytes the last At(position) answered; at least one.
    std::uint64_t BytesFrom(std::uint64_t position) const { return m_window.End() - position; }

private:
    static constexpr std::uint64_t kWindowSize = 20 * 3276; // close to 64 KiB

    struct Window
    {
        std::uint64_t start = 0;
        std::vector<char> bytes;

        std::uint64_t End() const { return start + bytes.size(); }
        bool Holds(std::uint64_t position) const { return position >= start && position < End(); }
    };

    bool ReadWindow(std::uint64_t position);

    std::string m_path;
    ReadProgress* m_progress;
    std::uint64_t m_size = 0;
    HANDLE m_file = nullptr;
    State m_state = State::Missing;
    Window m_window; // of the last At
    Window m_other;  // the one before it
};

} // namespace logfiles
