#include "logfiles/FileWindow.h"

#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <utility>

namespace logfiles
{

// Asking whether to go on may cost as much as reading a window.
void ReadProgress::Add(std::uint64_t bytes)
{
    constexpr std::uint64_t kStep = 4 * 1024 * 1024;
    m_done += bytes;
    if (!m_tell || m_stopped || m_done - m_told < kStep)
        return;
    m_told = m_done;
    m_stopped = !m_tell(
        static_cast<int>(100 * std::min(m_done, m_expected) / std::max<std::uint64_t>(m_expected, 1)));
}

FileWindow::FileWindow(const std::string& path, ReadProgress* progress) : m_path(path), m_progress(progress)
{
    if (!ZEMA::FileCalls().GetSize(path.c_str(), m_size))
        return;
    m_file = ZEMA_CreateFile(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_file == INVALID_HANDLE_VALUE)
        m_file = nullptr;
    m_state = m_file ? State::Open : State::Unreadable;
    if (!m_file)
        m_size = 0;
}

FileWindow::~FileWindow()
{
    Close();
}

void FileWindow::Close()
{
    if (m_file)
        ZEMA::FileCalls().Close(std::exchange(m_file, nullptr));
    m_state = State::Missing;
}

std::uint64_t FileWindow::SizeNow() const
{
    std::uint64_t size = 0;
    return ZEMA::FileCalls().GetSize(m_path.c_str(), size) ? size : m_size;
}

const char* FileWindow::At(std::uint64_t position)
{
    if (m_state != State::Open || position >= m_size || (m_progress && m_progress->IsStopped()))
        return nullptr;
    if (!m_window.Holds(position))
    {
        std::swap(m_window, m_other);
        if (!m_window.Holds(position) && !ReadWindow(position))
            m_state = State::Unreadable;
        if (!m_window.Holds(position))
            return nullptr;
    }
    return m_window.bytes.data() + (position - m_window.start);
}

bool FileWindow::ReadWindow(std::uint64_t position)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    m_window.start = position - position % kWindowSize;
    m_window.bytes.resize(static_cast<std::size_t>(std::min(kWindowSize, m_size - m_window.start)));
    if (m_progress)
        m_progress->Add(m_window.bytes.size());
    std::uint64_t reached = 0;
    DWORD bytes = 0;
    const bool isRead =
        files.Seek(m_file, static_cast<std::int64_t>(m_window.start), FILE_BEGIN, reached) &&
        files.Read(m_file, m_window.bytes.data(), static_cast<DWORD>(m_window.bytes.size()), bytes);
    if (bytes < m_window.bytes.size())
    {
        m_window.bytes.resize(bytes);
        if (isRead)
            m_size = m_window.End();
    }
    return isRead;
}

} // namespace logfiles
