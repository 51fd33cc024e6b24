// Requests over WinHTTP. It works in the background and calls back, because only then a request that waits
// can be given up at once; here each step is waited for.
#include "engine/HttpClient.h"

#include "zemacore/WideText.h"

#include "wintypes.h"
#include <winhttp.h>

#include <algorithm>
#include <mutex>
#include <utility>

namespace engine
{

namespace
{

constexpr DWORD kWaitStep = 20; // milliseconds between two looks at whether the caller still wants the answer

// Milliseconds for each step of a request. An insertion answers when the server has sorted and written the
// rows, which takes long while it merges, too.
constexpr int kResolveTime = 10'000;
constexpr int kConnectTime = 10'000;
constexpr int kSendTime = 60'000;
constexpr int kAnswerTime = 300'000;

ZEMA::WideString Wide(const std::string& text)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    return wide;
}

struct InternetHandle
{
    InternetHandle() = default;
    explicit InternetHandle(HINTERNET value) : handle(value) {}
    ~InternetHandle() { Close(); }
    InternetHandle(const InternetHandle&) = delete;
    InternetHandle& operator=(const InternetHandle&) = delete;
    void Reset(HINTERNET value)
    {
        Close();
        handle = value;
    }
    void Close()
    {
        if (handle)
            ::WinHttpCloseHandle(handle);
        handle = nullptr;
    }

    HINTERNET handle = nullptr;
};

// What a request shares with the system's threads. It lives until the system has said that it is done with
// the request's handle, which may be long after the caller has given the request up.
struct Exchange
{
    Exchange() : stepped(::CreateEventA(nullptr, FALSE, FALSE, nullptr)) {}
    ~Exchange() { ::CloseHandle(stepped); }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    void Step(DWORD newError, DWORD newBytes)
    {
        {
            const std::lock_guard lock(mutex);
            error = newError;
            bytes = newBytes;
        }
        ::SetEvent(stepped);
    }

    const HANDLE stepped;
    std::mutex mutex;
    DWORD error = ERROR_SUCCESS; // of the last step
    DWORD bytes = 0;             // that it has read
    std::shared_ptr<const std::string> body;
    std::string piece = std::string(64 * 1024, '\0');
};

using SharedExchange = std::shared_ptr<Exchange>;

// `context` is a SharedExchange of the request's own.
void CALLBACK OnStatus(HINTERNET, DWORD_PTR context, DWORD status, LPVOID data, DWORD length)
{
    if (context == 0)
        return; // of a handle that is no request
    const auto held = reinterpret_cast<SharedExchange*>(context);
    switch (status)
    {
    case WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE:
    case WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE:
        (*held)->Step(ERROR_SUCCESS, 0);
        break;
    case WINHTTP_CALLBACK_STATUS_READ_COMPLETE:
        (*held)->Step(ERROR_SUCCESS, length);
        break;
    case WINHTTP_CALLBACK_STATUS_REQUEST_ERROR:
        (*held)->Step(static_cast<WINHTTP_ASYNC_RESULT*>(data)->dwError, 0);
        break;
    case WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING:
        delete held;
        break;
    default:
        break;
    }
}

std::string WordsOf(DWORD error)
{
    switch (error)
    {
    case ERROR_WINHTTP_TIMEOUT:
        return "no answer in time";
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
        return "the host's name is not known";
    case ERROR_WINHTTP_CANNOT_CONNECT:
        return "no connection: nothing listens there";
    case ERROR_WINHTTP_CONNECTION_ERROR:
        return "the connection has broken";
    case ERROR_WINHTTP_INVALID_SERVER_RESPONSE:
        return "no answer in HTTP";
    case ERROR_WINHTTP_SECURE_FAILURE:
    case ERROR_WINHTTP_SECURE_CHANNEL_ERROR: // not every system tells the two apart
        return "no https there, or a certificate that this system does not trust";
    default:
        return "error " + std::to_string(error) + " of the system's HTTP library";
    }
}

[[noreturn]] void Throw(DWORD error)
{
    const bool untrusted =
        error == ERROR_WINHTTP_SECURE_FAILURE || error == ERROR_WINHTTP_SECURE_CHANNEL_ERROR;
    throw HttpError(untrusted ? HttpError::Reason::Untrusted : HttpError::Reason::Unreachable,
                    WordsOf(error));
}

class WinHttpClient : public HttpClient
{
public:
    WinHttpClient(const EngineUrl& url, IsCancelled isCancelled)
        : m_url(url), m_isCancelled(std::move(isCancelled)), m_headers(HeadersFor(url))
    {
    }

    HttpAnswer Post(const HttpRequest& request) override;

private:
    static ZEMA::WideString HeadersFor(const EngineUrl& url);
    void Connect();
    HINTERNET OpenRequest(const std::string& target);
    DWORD Await(Exchange& exchange, BOOL begun, int time);
    int Status(HINTERNET request);
    std::string ReadAll(HINTERNET request, Exchange& exchange, std::size_t most);

    EngineUrl m_url;
    IsCancelled m_isCancelled;
    ZEMA::WideString m_headers;
    InternetHandle m_session;
    InternetHandle m_connection;
};

// A line feed in a name or password would begin another header.
ZEMA::WideString WinHttpClient::HeadersFor(const EngineUrl& url)
{
    std::string headers = "Content-Type: application/octet-stream\r\n";
    const auto add = [&](const char* name, std::string value) {
        std::erase_if(value, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
        if (!value.empty())
            headers += name + (": " + value) + "\r\n";
    };
    add("X-ClickHouse-User", url.user);
    add("X-ClickHouse-Key", url.password);
    return Wide(headers);
}

void WinHttpClient::Connect()
{
    if (m_connection.handle)
        return;
    m_session.Reset(::WinHttpOpen(L"QmLog", WINHTTP_ACCESS_TYPE_DEFAULT_PROXY, WINHTTP_NO_PROXY_NAME,
                                  WINHTTP_NO_PROXY_BYPASS, WINHTTP_FLAG_ASYNC));
    if (!m_session.handle)
        Throw(::GetLastError());
    ::WinHttpSetTimeouts(m_session.handle, kResolveTime, kConnectTime, kSendTime, kAnswerTime);
    const DWORD wanted = WINHTTP_CALLBACK_FLAG_ALL_COMPLETIONS | WINHTTP_CALLBACK_FLAG_HANDLES;
    ::WinHttpSetStatusCallback(m_session.handle, OnStatus, wanted, 0);
    m_connection.Reset(::WinHttpConnect(m_session.handle, Wide(m_url.host).c_str(), m_url.port, 0));
    if (!m_connection.handle)
        Throw(::GetLastError());
}

HINTERNET WinHttpClient::OpenRequest(const std::string& target)
{
    const HINTERNET request = ::WinHttpOpenRequest(
        m_connection.handle, L"POST", Wide(target).c_str(), nullptr, WINHTTP_NO_REFERER,
        WINHTTP_DEFAULT_ACCEPT_TYPES, WINHTTP_FLAG_ESCAPE_DISABLE | (m_url.secure ? WINHTTP_FLAG_SECURE : 0));
    if (!request)
        Throw(::GetLastError());
    DWORD off = WINHTTP_DISABLE_REDIRECTS | WINHTTP_DISABLE_COOKIES | WINHTTP_DISABLE_AUTHENTICATION;
    ::WinHttpSetOption(request, WINHTTP_OPTION_DISABLE_FEATURE, &off, sizeof(off));
    return request;
}

// Waits for a step that was `begun`, and answers its error.
DWORD WinHttpClient::Await(Exchange& exchange, BOOL begun, int time)
{
    if (!begun)
        return ::GetLastError();
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(time);
    while (::WaitForSingleObject(exchange.stepped, kWaitStep) != WAIT_OBJECT_0)
    {
        if (m_isCancelled && m_isCancelled())
            throw HttpError(HttpError::Reason::Cancelled, "given up");
        if (::GetTickCount64() > end)
            return ERROR_WINHTTP_TIMEOUT;
    }
    const std::lock_guard lock(exchange.mutex);
    return exchange.error;
}

int WinHttpClient::Status(HINTERNET request)
{
    DWORD status = 0;
    DWORD size = sizeof(status);
    if (!::WinHttpQueryHeaders(request, WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                               WINHTTP_HEADER_NAME_BY_INDEX, &status, &size, WINHTTP_NO_HEADER_INDEX))
        Throw(::GetLastError());
    return static_cast<int>(status);
}

std::string WinHttpClient::ReadAll(HINTERNET request, Exchange& exchange, std::size_t most)
{
    std::string text;
    for (;;)
    {
        const BOOL begun = ::WinHttpReadData(request, exchange.piece.data(),
                                             static_cast<DWORD>(exchange.piece.size()), nullptr);
        if (const DWORD error = Await(exchange, begun, kAnswerTime); error != ERROR_SUCCESS)
            Throw(error);
        if (exchange.bytes == 0)
            return text;
        text.append(exchange.piece, 0, exchange.bytes);
        if (text.size() > most)
            throw HttpError(HttpError::Reason::TooLong,
                            "the answer is longer than " + std::to_string(most) + " bytes");
    }
}

HttpAnswer WinHttpClient::Post(const HttpRequest& posted)
{
    Connect();
    const InternetHandle request(OpenRequest(posted.target));
    const auto exchange = std::make_shared<Exchange>();
    exchange->body = posted.body;
    auto held = std::make_unique<SharedExchange>(exchange);
    auto context = reinterpret_cast<DWORD_PTR>(held.get());
    if (!::WinHttpSetOption(request.handle, WINHTTP_OPTION_CONTEXT_VALUE, &context, sizeof(context)))
        Throw(::GetLastError());
    held.release(); // until OnStatus hears that the handle is closed

    const auto length = static_cast<DWORD>(posted.body->size());
    // The system takes the body through a pointer to what it never changes.
    void* const body = const_cast<char*>(posted.body->data());
    DWORD error = Await(*exchange,
                        ::WinHttpSendRequest(request.handle, m_headers.c_str(), static_cast<DWORD>(-1), body,
                                             length, length, context),
                        kResolveTime + kConnectTime + kSendTime);
    if (error == ERROR_SUCCESS)
        error = Await(*exchange, ::WinHttpReceiveResponse(request.handle, nullptr), kAnswerTime);
    if (error != ERROR_SUCCESS)
        Throw(error);
    HttpAnswer answer;
    answer.status = Status(request.handle);
    answer.body = ReadAll(request.handle, *exchange, posted.mostAnswer);
    return answer;
}

} // namespace

std::unique_ptr<HttpClient> MakeHttpClient(const EngineUrl& url, IsCancelled isCancelled)
{
    return std::make_unique<WinHttpClient>(url, std::move(isCancelled));
}

} // namespace engine
