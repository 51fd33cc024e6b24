// Where the bytes of a text log come from.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace msgservice
{

// Bytes as they come. One thread at a time.
class ByteInput
{
public:
    enum class Outcome
    {
        Bytes,   // there are `size` of them
        Restart, // no bytes; what comes next is another text
        Nothing, // no bytes now; more may come
        End      // no bytes, and there will be none
    };

    virtual ~ByteInput() = default;

    // Puts bytes into `room`, which is not empty. May wait for some if it answers Nothing never.
    virtual Outcome Read(std::span<char> room, std::size_t& size) = 0;

    // What it is called in sentences: a path, "standard input".
    virtual std::string Name() const = 0;

    // What went wrong or is worth knowing since the last call, one sentence a line.
    virtual std::string TakeNotices() { return {}; }
};

} // namespace msgservice
