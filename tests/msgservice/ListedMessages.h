// Messages as a text that tests compare.
#pragma once

#include "msgservice/Message.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace msgservice
{

// "line: topic [text, next line of it]" of each message.
class Listed : public MessageSink
{
public:
    void Add(const MessageFields& message) override
    {
        EXPECT_EQ(std::string_view::npos, message.body.find('\0'));
        std::string body;
        for (const char c : message.body)
            body.append(c == '\r' ? 0 : 1, c == '\n' ? '|' : c);
        text += std::to_string(message.sourceLine) + ": " + std::string(message.topic) + " [" + body + "]\n";
        sizes.push_back(message.body.size());
        last = message.body;
    }

    std::string text;
    std::vector<std::size_t> sizes;
    std::string last;
};

} // namespace msgservice
