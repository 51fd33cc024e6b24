// Requests to one server, over the system's HTTP library or a test's own.
#pragma once

#include "engine/EngineUrl.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace engine
{

struct HttpRequest
{
    std::string target; // path and query, escaped: "/?query=..."
    // The system may read the body for a while after a request that was given up: hence shared, never
    // changed.
    std::shared_ptr<const std::string> body;
    std::size_t mostAnswer = 64 << 20; // bytes; a longer answer is HttpError::Reason::TooLong
};

struct HttpAnswer
{
    int status = 0; // 200: OK
    std::string body;
};

// No answer, or only a part of one. what() is a sentence without full stop, free of user and password.
class HttpError : public std::runtime_error
{
public:
    enum class Reason
    {
        Unreachable, // may be tried again
        Untrusted,   // the server's certificate
        TooLong,
        Cancelled
    };

    HttpError(Reason reason, const std::string& why) : std::runtime_error(why), m_reason(reason) {}

    Reason Why() const { return m_reason; }

private:
    Reason m_reason;
};

class HttpClient
{
public:
    virtual ~HttpClient() = default;

    // Posts the body and waits for the whole answer, whatever its status. Throws HttpError. The connection
    // stays open for the next request. One thread at a time.
    virtual HttpAnswer Post(const HttpRequest& request) = 0;
};

// Asked about fifty times a second while a request waits, on the waiting thread: true gives the request up.
using IsCancelled = std::function<bool()>;

// A client over the system's HTTP library, with the system's certificates for https and the user and password
// of the address in headers. Redirections are not followed: they would take the password elsewhere. Connects
// with the first request.
std::unique_ptr<HttpClient> MakeHttpClient(const EngineUrl& url, IsCancelled isCancelled);

} // namespace engine
