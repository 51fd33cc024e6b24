// What an engine answers when it does not do what it is asked.
#pragma once

#include <stdexcept>
#include <string>

namespace engine
{

// what() is one line: the server's own words where it has said any.
class EngineError : public std::runtime_error
{
public:
    enum class Remedy
    {
        TryAgain,  // a full disk, a server that starts, a broken connection
        None,      // a wrong table, no access, an error in the query
        Cancelled, // the caller has given the request up
        AskLess,   // the answer is too long
    };

    EngineError(Remedy remedy, const std::string& words, int code = 0)
        : std::runtime_error(words), m_remedy(remedy), m_code(code)
    {
    }

    Remedy Help() const { return m_remedy; }
    int Code() const { return m_code; } // the engine's own number; 0 where it has given none

private:
    Remedy m_remedy;
    int m_code;
};

constexpr int kUnknownTable = 60;

// The error that an answer tells of, if its query has failed.
EngineError ErrorOf(int status, const std::string& answer);

} // namespace engine
