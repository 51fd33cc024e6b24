#include "logfiles/FileWindow.h"

#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>

namespace logfiles
{

FileWindow::FileWindow(const std::string& path)
{
    if (!ZEMA::FileCalls().GetSize(path.c_str(), m_size))
        return;
    m_file = ZEMA_CreateFile(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_file == INVALID_HANDLE_VALUE)
        m_file = nullptr;
    m_state = m_file != nullptr ? State::kOpen : State::kUnreadable;
    if (m_file == nullptr)
        m_size = 0;
}

FileWindow::~FileWindow()
{
    if (m_file != nullptr)
        ZEMA::FileCalls().Close(m_file);
}

const char* FileWindow::At(std::uint64_t position)
{
    if (m_state != State::kOpen || position >= m_size)
        return nullptr;
    if (position < m_windowStart || position >= m_windowStart + m_window.size())
    {
        m_windowStart = position - position % kWindowSize;
        m_window.resize(static_cast<std::size_t>(std::min(kWindowSize, m_size - m_windowStart)));
        std::uint64_t reached = 0;
        DWORD bytes = 0;
        if (!ZEMA::FileCalls().Seek(m_file, static_cast<std::int64_t>(m_windowStart), FILE_BEGIN, reached) ||
            !ZEMA::FileCalls().Read(m_file, m_window.data(), static_cast<DWORD>(m_window.size()), bytes) ||
            bytes != m_window.size())
        {
            m_state = State::kUnreadable;
            m_window.clear();
            return nullptr;
        }
    }
    return m_window.data() + (position - m_windowStart);
}

} // namespace logfiles
