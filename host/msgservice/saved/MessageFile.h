// A saved file of messages, "*.zemalog", opened for reading.
#pragma once

#include "msgservice/Message.h"
#include "msgservice/saved/Database.h"

#include <array>

namespace msgservice
{

// Opening reads a few pages, however large the file is. Other programs may write to it meanwhile: each Read
// sees the messages that are committed at its beginning. Of a damaged file whatever can still be read is
// read. One thread at a time.
class MessageFile
{
public:
    enum class Access
    {
        ReadOnly, // nothing is ever written, and so a file is refused that a killed writer left half changed
        MayRepair // such a change is undone, where the file may be written to
    };

    // `path` is UTF-8 or in the system's code page. Throws MessageFileError: the file is not there, is
    // something else, was saved by a newer version, is in use, or is so damaged that nothing can be read.
    explicit MessageFile(const std::string& path, Access access = Access::MayRepair);

    const std::string& Path() const { return m_database.Path(); }

    // The number of the last message. They are numbered from 1 on, so there are as many, unless another
    // program has deleted some or they are lost. Throws MessageFileError if the file is in use.
    std::int64_t Count() const;

    // Of what the file tells about itself: "title", "program", "version", "saved", "origin"; empty if it
    // tells nothing.
    std::string About(const char* name) const;

    // What a Read has done.
    struct Piece
    {
        std::int64_t next = 0;     // the number to go on with
        std::uint64_t missing = 0; // numbers before `next` without a message that could be read
        std::uint64_t wrongValues =
            0;              // that were left out: of another type than their column, or out of range
        bool atEnd = false; // there is nothing from `next` on, yet
    };

    // Hands messages on to the sink, from number `first` on and in their order: `count` at most, and fewer if
    // they are large or much is damaged. Throws MessageFileError if the file is in use or cannot be read any
    // more, and what the sink throws: the same call can be made again then.
    Piece Read(std::int64_t first, std::uint32_t count, MessageSink& sink);

    // Whether the file has turned out to be damaged, up to now.
    bool IsDamaged() const { return m_isDamaged; }

    // How long opening and reading wait for a program that is writing; at first half a second.
    void SetWait(int milliseconds) { m_database.SetWait(milliseconds); }

private:
    struct Reading;

    int ReadOn(Reading& reading);
    void HandOn(Reading& reading, std::int64_t number);
    std::int64_t NumberFrom(std::int64_t number) const;
    std::int64_t Skip(std::int64_t unreadable) const;
    std::int64_t FindFrom(std::int64_t number, std::int64_t otherwise) const;

    bool m_isDamaged = false;
    Database m_database;
    Statement m_messages;
    Statement m_number;
    std::array<std::string, 11> m_scratch; // of texts with NULs
};

} // namespace msgservice
