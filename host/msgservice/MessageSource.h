// Where messages come from.
#pragma once

#include "msgservice/Message.h"

#include <string>

namespace msgservice
{

// Read piece by piece, so that whoever reads can do something else in between. One thread at a time.
class MessageSource
{
public:
    enum class State
    {
        More,    // there is more to read at once
        Waiting, // all is read; more may come
        Ended    // no more will come
    };

    virtual ~MessageSource() = default;

    // Reads on, a few megabytes at most, and hands what is complete to `sink`. To be called again after a
    // while if it answers Waiting: what may still be continued is held back until a call finds nothing new.
    virtual State Read(MessageSink& sink) = 0;

    // What went wrong or is worth knowing since the last call, one sentence a line with the name of the
    // source; empty if there is nothing to tell.
    virtual std::string TakeNotices() = 0;

    // How the messages are told apart, in sentences; known after the first messages, empty if there is
    // nothing to tell.
    virtual std::string Explanation() { return {}; }
};

} // namespace msgservice
