// What a watch window shows.
#pragma once

#include "LogMsg.h"

#include <string>
#include <string_view>

namespace logreport
{

// The latest error.
class Watch
{
public:
    // Answers whether the message is an error, which is shown from now on; null is none.
    bool Add(std::uint32_t id, const ILogMsgData* message);
    void Clear();

    std::int32_t Id() const { return m_id; } // -1 for none
    int Image() const { return m_image; }
    const std::string& Text() const { return m_text; }

private:
    std::int32_t m_id = -1;
    int m_image = 0;
    std::string m_text;
};

// The beginning of a body up to its first line feed, without the byte before it, and "(...)". A line feed
// that is the first byte does not count; unlike in a cell, one that is the last byte does.
std::string WatchLine(std::string_view body);

} // namespace logreport
