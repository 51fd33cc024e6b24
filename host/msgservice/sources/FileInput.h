// A file as bytes, to its end or as it grows.
#pragma once

#include "msgservice/sources/ByteInput.h"
#include "zemacore/FileCalls.h"

#include <cstdint>
#include <string>

namespace msgservice
{

// Reads a file that others may write, rename and delete meanwhile.
//
// A file that is followed may become shorter or get another beginning, and is then read again from its
// beginning. When another file has its name, what is left of the old one is read first; the new one is
// another text. A file that has gone is waited for.
class FileInput : public ByteInput
{
public:
    enum class Until
    {
        End,
        Forever // follows it
    };

    // Throws std::runtime_error, a sentence, if it cannot be opened.
    FileInput(std::string path, Until until);
    ~FileInput() override;
    FileInput(const FileInput&) = delete;
    FileInput& operator=(const FileInput&) = delete;

    Outcome Read(std::span<char> room, std::size_t& size) override;
    std::string Name() const override { return m_path; }
    std::string TakeNotices() override;

private:
    static constexpr std::size_t kBeginning = 256;

    HANDLE Open();
    bool ReadBytes(std::span<char> room, std::size_t& size);
    bool SeekTo(std::uint64_t position);
    Outcome Look();
    Outcome LookAtName();
    Outcome ReadAgain(const std::string& why);
    void Take(HANDLE file);
    void Leave();
    bool HasOtherBeginning();
    void Tell(const std::string& what);
    std::string SystemReason() const;

    std::string m_path;
    Until m_until;
    HANDLE m_file;
    HANDLE m_next = INVALID_HANDLE_VALUE; // the file that has the name now
    ZEMA::FileIdentity m_identity;
    std::uint64_t m_position = 0;
    std::string m_beginning; // of the file, to know it again
    bool m_isAtEnd = false;  // the last Read found nothing
    bool m_hasGone = false;  // and this was told
    bool m_hasToldFault = false;
    std::string m_notices;
};

} // namespace msgservice
