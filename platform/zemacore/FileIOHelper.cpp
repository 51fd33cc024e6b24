#include "zemacore/FileIOHelper.h"

#include "zemacore/FileCalls.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ZEMA
{

namespace
{

constexpr std::size_t kPiece = 64 * 1024; // bytes
constexpr int kNames = 100;               // tried for the file beside

} // namespace

IOutput::~IOutput() = default;

bool StringOutput::Write(const char* bytes, std::size_t length)
{
    m_text.append(bytes, length);
    return true;
}

FileOutput::FileOutput(std::string path) : m_path(std::move(path)) {}

FileOutput::~FileOutput()
{
    Close();
    if (!m_beside.empty())
        FileCalls().Delete(m_beside.c_str());
}

bool FileOutput::Open()
{
    for (int i = 0; i < kNames && !m_file; ++i)
    {
        m_beside = m_path + ".~" + std::to_string(i);
        const HANDLE file = FileCalls().Create(m_beside.c_str(), GENERIC_WRITE, 0, CREATE_NEW, 0);
        if (file && file != INVALID_HANDLE_VALUE)
            m_file = file;
        else if (FileCalls().LastError() != ERROR_FILE_EXISTS)
            break;
    }
    if (m_file)
        return true;
    m_beside.clear();
    return Fail();
}

bool FileOutput::Write(const char* bytes, std::size_t length)
{
    if (!m_file || !m_error.empty())
        return false;
    m_buffer.append(bytes, length);
    return m_buffer.size() < kPiece || Flush(kPiece);
}

// Writes pieces of at least so many bytes: what is left of the buffer goes out with what follows it. A full
// disk may take a part.
bool FileOutput::Flush(std::size_t least)
{
    std::string_view rest = m_buffer;
    while (rest.size() >= least)
    {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(rest.size(), kPiece));
        if (!FileCalls().Write(m_file, rest.data(), size, written))
            return Fail();
        if (written == 0)
        {
            FileCalls().SetLastError(ERROR_DISK_FULL);
            return Fail();
        }
        rest.remove_prefix(written);
    }
    m_buffer.erase(0, m_buffer.size() - rest.size());
    return true;
}

bool FileOutput::Commit()
{
    if (!m_file || !m_error.empty() || !Flush(1))
        return false;
    if (!Close() || !FileCalls().Replace(m_beside.c_str(), m_path.c_str()))
        return Fail();
    m_beside.clear();
    return true;
}

bool FileOutput::Close()
{
    return !m_file || FileCalls().Close(std::exchange(m_file, nullptr));
}

bool FileOutput::Fail()
{
    m_error = FileCalls().ErrorText(FileCalls().LastError());
    m_error.erase(m_error.find_last_not_of("\r\n ") + 1);
    if (m_error.empty())
        m_error = "The file cannot be written.";
    return false;
}

std::unique_ptr<FileOutput> FileIOHelper::getWriter(const char* path)
{
    return std::make_unique<FileOutput>(path ? path : "");
}

} // namespace ZEMA
