#include "engine/Engine.h"

#include "engine/SqlText.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace engine
{

namespace
{

using Json = nlohmann::json;

// Bytes of a query that travels in the address: an answer comes a twentieth of a second earlier than with a
// body, whose first piece otherwise waits until the server has confirmed the header. Servers take addresses
// up to 16 KiB.
constexpr std::size_t kMostInAddress = 8000;

EngineError NoEngine(const std::string& answer)
{
    return {EngineError::Remedy::None,
            "the server answers as no engine does: " + std::string(ErrorOf(200, answer).what())};
}

EngineError::Remedy RemedyOf(HttpError::Reason reason)
{
    switch (reason)
    {
    case HttpError::Reason::Unreachable:
        return EngineError::Remedy::TryAgain;
    case HttpError::Reason::TooLong:
        return EngineError::Remedy::AskLess;
    case HttpError::Reason::Cancelled:
        return EngineError::Remedy::Cancelled;
    default:
        return EngineError::Remedy::None;
    }
}

} // namespace

Engine::Engine(const EngineUrl& url, std::unique_ptr<HttpClient> client) : m_client(std::move(client))
{
    for (const auto& [name, value] : url.settings)
        m_settings += '&' + EscapedForUrl(name) + '=' + EscapedForUrl(value);
}

void Engine::Do(const std::string& sql)
{
    const std::string answer = Ask("", sql);
    if (!answer.empty())
        throw NoEngine(answer);
}

// JSON has an end, so an answer that was cut is noticed. The engine answers when it has all of it: otherwise
// its "200 OK" would come before its error.
Rows Engine::Select(const std::string& sql)
{
    const std::string answer = Ask("&wait_end_of_query=1", sql + "\nFORMAT JSONCompact");
    const Json parsed = Json::parse(answer, nullptr, false);
    const auto data = parsed.is_object() ? parsed.find("data") : parsed.end();
    if (!parsed.is_object() || data == parsed.end() || !data->is_array())
        throw NoEngine(answer);
    Rows rows;
    for (const Json& row : *data)
    {
        if (!row.is_array())
            throw NoEngine(answer);
        rows.emplace_back();
        for (const Json& field : row)
            rows.back().push_back(field.is_string() ? field.get<std::string>() : field.dump());
    }
    return rows;
}

// A Distributed table would otherwise answer before the rows have reached their shard.
void Engine::Insert(const std::string& table, std::string_view columns,
                    std::shared_ptr<const std::string> rows)
{
    const std::string sql =
        "INSERT INTO " + SqlTable(table) + " (" + std::string(columns) + ") FORMAT RowBinary";
    const std::string answer =
        Post("&insert_distributed_sync=1&query=" + EscapedForUrl(sql), std::move(rows));
    if (!answer.empty())
        throw NoEngine(answer);
}

std::string Engine::Ask(const std::string& parameters, const std::string& sql)
{
    const std::string escaped = EscapedForUrl(sql);
    if (escaped.size() > kMostInAddress)
        return Post(parameters + "&query=", std::make_shared<std::string>(sql));
    return Post(parameters + "&query=" + escaped, std::make_shared<std::string>());
}

std::string Engine::Post(const std::string& parameters, std::shared_ptr<const std::string> body)
{
    HttpRequest request;
    // Each begins with "&": the engine takes an empty name for an unknown setting.
    request.target = "/?" + (m_settings + parameters).substr(1);
    request.body = std::move(body);
    try
    {
        HttpAnswer answer = m_client->Post(request);
        if (answer.status != 200)
            throw ErrorOf(answer.status, answer.body);
        return std::move(answer.body);
    }
    catch (const HttpError& error)
    {
        throw EngineError(RemedyOf(error.Why()), error.what());
    }
}

} // namespace engine
