// The address of an engine, and of a table or a session in it.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace engine
{

// "http://[user@]host[:port]/[table][?name=value&...]". "https" is the same with encryption, and "clickhouse"
// is another word for "http". Names and values may hold "%XX" for bytes.
struct EngineUrl
{
    bool secure = false;
    std::string host;       // an IPv6 address without its brackets
    std::uint16_t port = 0; // 8123 and for https 8443 where the text names none
    std::string table;      // "table" or "database.table", as it is; empty where the text names none
    std::string user;       // of QM_ENGINE_USER where the text names none
    std::string password;   // of QM_ENGINE_PASSWORD, never of the text
    std::string session;    // "session=", which the engine itself does not know
    std::string machine;    // "machine=", too
    std::vector<std::pair<std::string, std::string>> settings; // all others, which go with each request

    // Without user, password and settings: fit to be shown and logged.
    std::string Shown() const;
};

// Whether a text is meant as such an address, so that others can be taken for files.
bool IsEngineUrl(const std::string& text);

// Throws commandline::UsageError, whose text never holds a password.
EngineUrl ParseEngineUrl(const std::string& text);

// A text as a part of an address.
std::string EscapedForUrl(const std::string& text);

} // namespace engine
