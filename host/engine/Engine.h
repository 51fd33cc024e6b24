// Queries to a columnar engine, and rows into its tables.
#pragma once

#include "engine/EngineError.h"
#include "engine/HttpClient.h"

#include <charconv>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace engine
{

// Rows of texts, as the engine writes them: numbers in decimal digits.
using Rows = std::vector<std::vector<std::string>>;

// A number of an answer. Throws EngineError if the text is none, or none of that kind.
template <typename Number> Number NumberIn(const std::string& text)
{
    Number number = 0;
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size())
        throw EngineError(EngineError::Remedy::None, "the engine answers no number: " + text);
    return number;
}

// Throws EngineError. One thread at a time.
class Engine
{
public:
    Engine(const EngineUrl& url, std::unique_ptr<HttpClient> client);

    // Does a statement that answers nothing, as CREATE TABLE.
    void Do(const std::string& sql);

    // The rows that a SELECT answers, without a FORMAT of its own. All of them or an error, never a part.
    Rows Select(const std::string& sql);

    // Adds rows in the named columns: one block, which is there as a whole or not at all. `rows` are in the
    // engine's format RowBinary.
    void Insert(const std::string& table, std::string_view columns, std::shared_ptr<const std::string> rows);

private:
    std::string Ask(const std::string& parameters, const std::string& sql);
    std::string Post(const std::string& parameters, std::shared_ptr<const std::string> body);

    std::string m_settings; // "&name=value..."
    std::unique_ptr<HttpClient> m_client;
};

} // namespace engine
