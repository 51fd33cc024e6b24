#include "msgservice/sources/FileInput.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace msgservice
{

FileInput::FileInput(std::string path, Until until) : m_path(std::move(path)), m_until(until), m_file(Open())
{
    if (m_file == INVALID_HANDLE_VALUE)
        throw std::runtime_error("'" + m_path + "' cannot be opened" + SystemReason());
    Take(m_file);
}

FileInput::~FileInput()
{
    Leave();
    if (m_next != INVALID_HANDLE_VALUE)
        ZEMA::FileCalls().Close(m_next);
}

HANDLE FileInput::Open()
{
    return ZEMA::FileCalls().Create(m_path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL);
}

// `file` is read from now on, from its beginning.
void FileInput::Take(HANDLE file)
{
    m_file = file;
    m_position = 0;
    m_beginning.clear();
    m_isAtEnd = false;
    if (!ZEMA::FileCalls().GetIdentity(file, m_identity))
        m_identity = {};
}

void FileInput::Leave()
{
    if (m_file != INVALID_HANDLE_VALUE)
        ZEMA::FileCalls().Close(m_file);
    m_file = INVALID_HANDLE_VALUE;
}

ByteInput::Outcome FileInput::Read(std::span<char> room, std::size_t& size)
{
    if (m_file == INVALID_HANDLE_VALUE)
        return LookAtName();
    if (m_isAtEnd && HasOtherBeginning())
        return ReadAgain(" has another beginning and is read again.");
    if (!ReadBytes(room, size))
    {
        if (!std::exchange(m_hasToldFault, true))
            Tell(" cannot be read" + SystemReason());
        return m_until == Until::Forever ? Outcome::Nothing : Outcome::End;
    }
    m_hasToldFault = false;
    if (size > 0)
    {
        m_isAtEnd = false;
        return Outcome::Bytes;
    }
    if (m_until == Until::End)
        return Outcome::End;
    m_isAtEnd = true;
    return Look();
}

bool FileInput::ReadBytes(std::span<char> room, std::size_t& size)
{
    DWORD bytes = 0;
    const auto most = static_cast<DWORD>(std::min<std::size_t>(room.size(), 1U << 30));
    if (!ZEMA::FileCalls().Read(m_file, room.data(), most, bytes))
        return false;
    size = bytes;
    if (m_position == m_beginning.size() && m_beginning.size() < kBeginning)
        m_beginning.append(room.data(), std::min<std::size_t>(bytes, kBeginning - m_beginning.size()));
    m_position += bytes;
    return true;
}

bool FileInput::SeekTo(std::uint64_t position)
{
    std::uint64_t reached = 0;
    return ZEMA::FileCalls().Seek(m_file, static_cast<std::int64_t>(position), FILE_BEGIN, reached);
}

// All that the file has is read.
ByteInput::Outcome FileInput::Look()
{
    std::uint64_t end = 0;
    if (ZEMA::FileCalls().Seek(m_file, 0, FILE_END, end) && end < m_position)
        return ReadAgain(" has become shorter and is read again.");
    SeekTo(m_position);
    if (m_next == INVALID_HANDLE_VALUE)
        return LookAtName();
    Leave();
    Take(std::exchange(m_next, INVALID_HANDLE_VALUE));
    Tell(" is another file now.");
    return Outcome::Restart;
}

ByteInput::Outcome FileInput::ReadAgain(const std::string& why)
{
    Tell(why);
    SeekTo(0);
    Take(m_file);
    return Outcome::Restart;
}

// Whether the file that has the name is still the one that is read.
ByteInput::Outcome FileInput::LookAtName()
{
    const HANDLE named = Open();
    if (named == INVALID_HANDLE_VALUE)
    {
        const DWORD error = ZEMA::FileCalls().LastError();
        if (error == ERROR_SHARING_VIOLATION)
            return Outcome::Nothing; // it is there
        if (!std::exchange(m_hasGone, true))
            Tell(" has gone; it is waited for.");
        if (error == ERROR_ACCESS_DENIED)
            Leave(); // a deleted file keeps its name as long as somebody has it open
        return Outcome::Nothing;
    }
    ZEMA::FileIdentity identity;
    const bool isSame = ZEMA::FileCalls().GetIdentity(named, identity) && identity == m_identity;
    const bool isBack = std::exchange(m_hasGone, false);
    if (m_file != INVALID_HANDLE_VALUE)
    {
        if (isSame)
            ZEMA::FileCalls().Close(named);
        else
            m_next = named; // what is written to the old one meanwhile comes first
        return Outcome::Nothing;
    }
    const std::uint64_t position = m_position;
    const std::string beginning = m_beginning;
    Take(named);
    if (isSame && SeekTo(position)) // if it is shorter now, this is noticed next
    {
        m_position = position;
        m_beginning = beginning;
        m_isAtEnd = true;
        return Outcome::Nothing;
    }
    Tell(isBack ? " is back." : " is another file now.");
    return Outcome::Restart;
}

// A file may be emptied and filled beyond the place that was read, between two looks.
bool FileInput::HasOtherBeginning()
{
    std::string beginning(m_beginning.size(), '\0');
    DWORD bytes = 0;
    const bool isRead = SeekTo(0) && ZEMA::FileCalls().Read(m_file, beginning.data(),
                                                            static_cast<DWORD>(beginning.size()), bytes);
    SeekTo(m_position);
    return isRead && bytes == beginning.size() && beginning != m_beginning;
}

void FileInput::Tell(const std::string& what)
{
    m_notices += "'" + m_path + "'" + what + "\n";
}

// ": the system's sentence"
std::string FileInput::SystemReason() const
{
    std::string reason = ZEMA::FileCalls().ErrorText(ZEMA::FileCalls().LastError());
    while (!reason.empty() && (reason.back() == '\n' || reason.back() == '\r' || reason.back() == ' '))
        reason.pop_back();
    return reason.empty() ? "." : ": " + reason;
}

std::string FileInput::TakeNotices()
{
    return std::exchange(m_notices, {});
}

} // namespace msgservice
