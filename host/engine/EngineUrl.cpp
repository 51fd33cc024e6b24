#include "engine/EngineUrl.h"

#include "commandline/UsageError.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace engine
{

namespace
{

using commandline::UsageError;

constexpr std::string_view kSchemes[] = {"http://", "https://", "clickhouse://"};

// The text without what may hold a password, which may have an "@" of its own.
std::string Harmless(const std::string& text)
{
    const std::size_t begin = text.find("://") + 3;
    const std::size_t at = text.rfind('@');
    const std::size_t rest = at == std::string::npos ? begin : at + 1;
    return text.substr(0, begin) + text.substr(rest, text.find('?', rest) - rest);
}

[[noreturn]] void Refuse(const std::string& text, const char* why)
{
    throw UsageError(Harmless(text), why);
}

int HexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char small = static_cast<char>(digit | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

// False where a "%" has no two digits after it.
bool Unescape(std::string_view text, std::string& plain)
{
    plain.clear();
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != '%')
        {
            plain += text[i];
            continue;
        }
        if (i + 2 >= text.size() || HexDigit(text[i + 1]) < 0 || HexDigit(text[i + 2]) < 0)
            return false;
        plain += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
        i += 2;
    }
    return true;
}

// Takes what comes before `end` off the front of `text`, or all of it if it has no `end`.
std::string_view TakeUpTo(std::string_view& text, char end)
{
    const std::size_t length = text.find(end);
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length == std::string_view::npos ? text.size() : length + 1);
    return taken;
}

std::string Environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

// "host", "host:port", "[address]:port".
bool ParseHost(std::string_view text, EngineUrl& url)
{
    if (text.starts_with('['))
    {
        if (text.find(']') == std::string_view::npos)
            return false;
        text.remove_prefix(1);
        url.host = TakeUpTo(text, ']');
    }
    else
    {
        const std::size_t colon = std::min(text.find(':'), text.size());
        url.host = text.substr(0, colon);
        text.remove_prefix(colon);
    }
    const auto isOdd = [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '%' || c == '\\'; };
    if (url.host.empty() || std::any_of(url.host.begin(), url.host.end(), isOdd))
        return false;
    if (text.empty())
        return true;
    const char* const end = text.data() + text.size();
    const std::from_chars_result port = std::from_chars(text.data() + 1, end, url.port);
    return text[0] == ':' && port.ec == std::errc() && port.ptr == end && url.port > 0;
}

void ParseParameters(std::string_view text, const std::string& whole, EngineUrl& url)
{
    while (!text.empty())
    {
        std::string_view value = TakeUpTo(text, '&');
        std::string name, plain;
        if (!Unescape(TakeUpTo(value, '='), name) || !Unescape(value, plain))
            Refuse(whole, "has a % that is no %XX");
        if (name == "password" || name == "user")
            Refuse(whole, "user and password are taken from QM_ENGINE_USER and QM_ENGINE_PASSWORD only");
        if (name == "session")
            url.session = plain;
        else if (name == "machine")
            url.machine = plain;
        else if (!name.empty())
            url.settings.emplace_back(name, plain);
    }
}

} // namespace

std::string EngineUrl::Shown() const
{
    const bool bracketed = host.find(':') != std::string::npos;
    return (secure ? "https://" : "http://") + (bracketed ? '[' + host + ']' : host) + ':' +
           std::to_string(port);
}

bool IsEngineUrl(const std::string& text)
{
    return std::any_of(std::begin(kSchemes), std::end(kSchemes),
                       [&](std::string_view scheme) { return text.starts_with(scheme); });
}

EngineUrl ParseEngineUrl(const std::string& text)
{
    if (!IsEngineUrl(text))
        throw UsageError("address", "is not one of an engine, such as http://host:8123");
    EngineUrl url;
    url.secure = text.starts_with("https:");
    url.port = url.secure ? 8443 : 8123;
    url.user = Environment("QM_ENGINE_USER");
    url.password = Environment("QM_ENGINE_PASSWORD");

    std::string_view rest = text;
    rest.remove_prefix(rest.find("://") + 3);
    rest = rest.substr(0, rest.find('#'));
    std::string_view parameters = rest;
    std::string_view path = TakeUpTo(parameters, '?');
    std::string_view host = TakeUpTo(path, '/');
    if (const std::size_t at = host.rfind('@'); at != std::string_view::npos)
    {
        if (host.substr(0, at).find(':') != std::string_view::npos)
            Refuse(text, "a password belongs into QM_ENGINE_PASSWORD");
        if (!Unescape(host.substr(0, at), url.user))
            Refuse(text, "has a % that is no %XX");
        host.remove_prefix(at + 1);
    }
    if (!ParseHost(host, url))
        Refuse(text, "names no host, as http://host:8123");
    if (!Unescape(path, url.table))
        Refuse(text, "has a % that is no %XX");
    ParseParameters(parameters, text, url);
    return url;
}

std::string EscapedForUrl(const std::string& text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text)
    {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                           c == '-' || c == '_' || c == '.' || c == '~';
        if (plain)
            escaped += c;
        else
            escaped.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
    }
    return escaped;
}

} // namespace engine
