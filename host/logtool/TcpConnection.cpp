// The console's connections: TCP by the system's sockets.
#include <winsock2.h>
#include <ws2tcpip.h>

#include "logtool/Commands.h"
#include "logtool/Console.h"

#include <algorithm>

namespace logtool
{

namespace
{

constexpr DWORD kTimeout = 30'000; // milliseconds without a byte being taken

class TcpConnection : public Connection
{
public:
    explicit TcpConnection(SOCKET connected) : m_socket(connected) {}
    ~TcpConnection() override { ::closesocket(m_socket); }
    TcpConnection(const TcpConnection&) = delete;
    TcpConnection& operator=(const TcpConnection&) = delete;

    bool Send(std::string_view bytes, std::string& fault) override
    {
        while (!bytes.empty())
        {
            const int size = static_cast<int>(std::min<std::size_t>(bytes.size(), 1 << 20));
            const int sent = ::send(m_socket, bytes.data(), size, 0);
            if (sent <= 0)
                return Fail(fault);
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
        return true;
    }

    bool Finish(std::string& fault) override
    {
        if (::shutdown(m_socket, SD_SEND) != 0)
            return Fail(fault);
        char answer[512];
        int received = 0;
        while ((received = ::recv(m_socket, answer, sizeof(answer), 0)) > 0)
        {
        }
        return received == 0 || Fail(fault);
    }

private:
    static bool Fail(std::string& fault)
    {
        fault = SystemReason(static_cast<unsigned long>(::WSAGetLastError()));
        return false;
    }

    SOCKET m_socket;
};

} // namespace

// The library stays loaded for the life of the process.
std::unique_ptr<Connection> Console::ConnectTcp(const std::string& host, const std::string& port,
                                                std::string& fault)
{
    WSADATA data = {};
    static const int started = ::WSAStartup(MAKEWORD(2, 2), &data);
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* addresses = nullptr;
    int error = started != 0 ? started : ::getaddrinfo(host.c_str(), port.c_str(), &hints, &addresses);
    std::unique_ptr<Connection> connection;
    for (const addrinfo* address = addresses; address && !connection; address = address->ai_next)
    {
        const SOCKET candidate = ::socket(address->ai_family, address->ai_socktype, address->ai_protocol);
        if (candidate == INVALID_SOCKET)
        {
            error = ::WSAGetLastError();
            continue;
        }
        const auto* const timeout = reinterpret_cast<const char*>(&kTimeout);
        ::setsockopt(candidate, SOL_SOCKET, SO_SNDTIMEO, timeout, sizeof(kTimeout));
        ::setsockopt(candidate, SOL_SOCKET, SO_RCVTIMEO, timeout, sizeof(kTimeout));
        if (::connect(candidate, address->ai_addr, static_cast<int>(address->ai_addrlen)) == 0)
        {
            connection = std::make_unique<TcpConnection>(candidate);
            break;
        }
        error = ::WSAGetLastError();
        ::closesocket(candidate);
    }
    if (addresses)
        ::freeaddrinfo(addresses);
    fault = connection ? "" : SystemReason(static_cast<unsigned long>(error));
    return connection;
}

} // namespace logtool
