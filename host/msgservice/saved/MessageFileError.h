// What is thrown where a saved file cannot be read or written.
#pragma once

#include <stdexcept>
#include <string>

namespace msgservice
{

// what() is one sentence without a full stop: "PATH: why".
class MessageFileError : public std::runtime_error
{
public:
    enum class Reason
    {
        InUse,   // by another program or connection; may be tried again
        Foreign, // something else than a saved file, which may be opened as what it is
        Damaged,
        Other
    };

    MessageFileError(const std::string& path, Reason reason, const std::string& why)
        : std::runtime_error(path + ": " + why), m_reason(reason)
    {
    }

    Reason Why() const { return m_reason; }

private:
    Reason m_reason;
};

} // namespace msgservice
