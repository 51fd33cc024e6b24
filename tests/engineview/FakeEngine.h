// An engine in memory for the questions of a view: it knows their bounds and lists of numbers, and takes from
// the test what their conditions and orders mean.
#pragma once

#include "host/engineview/PageReader.h"

#include <atomic>
#include <nlohmann/json.hpp>
#include <regex>
#include <span>

class FakeEngine
{
public:
    std::vector<engine::ShippedRow> rows; // by number; under the mutex while a service runs
    std::mutex mutex;
    bool isReversed = false; // sorted questions

    using Passes = std::function<bool(const engine::ShippedRow&)>;
    void SetPasses(Passes wanted)
    {
        const std::lock_guard lock(mutex);
        m_passes = std::move(wanted);
    }

    // Before each answer, outside of the mutex; may throw.
    using OnQuery = std::function<void(const std::string& query, const engine::IsCancelled& isCancelled)>;
    void SetOnQuery(OnQuery wanted)
    {
        const std::lock_guard lock(mutex);
        m_onQuery = std::move(wanted);
    }
    std::atomic<int> asked = 0;

    engineview::Connect Connect()
    {
        return [this](engine::IsCancelled isCancelled) {
            return std::make_unique<Client>(*this, std::move(isCancelled));
        };
    }

    void Add(std::uint32_t number, const std::string& text, std::uint32_t kind = 0)
    {
        const std::lock_guard lock(mutex);
        engine::ShippedRow row;
        row.number = number;
        row.log = "Main";
        row.kind = kind;
        row.text = text;
        rows.push_back(row);
    }

private:
    class Client : public engine::HttpClient
    {
    public:
        Client(FakeEngine& engine, engine::IsCancelled isCancelled)
            : m_engine(engine), m_isCancelled(std::move(isCancelled))
        {
        }

        engine::HttpAnswer Post(const engine::HttpRequest& request) override
        {
            std::string query;
            for (std::size_t i = request.target.rfind("query=") + 6; i < request.target.size(); ++i)
                query +=
                    request.target[i] == '%'
                        ? static_cast<char>(std::stoi(request.target.substr((i += 2) - 1, 2), nullptr, 16))
                        : request.target[i];
            ++m_engine.asked;
            OnQuery onQuery;
            {
                const std::lock_guard lock(m_engine.mutex);
                onQuery = m_engine.m_onQuery;
            }
            onQuery(query, m_isCancelled);
            if (m_isCancelled())
                throw engine::HttpError(engine::HttpError::Reason::Cancelled, "given up");
            const std::lock_guard lock(m_engine.mutex);
            return {200, nlohmann::json{{"data", m_engine.Answer(query)}}.dump()};
        }

    private:
        FakeEngine& m_engine;
        engine::IsCancelled m_isCancelled;
    };

    Passes m_passes = [](const auto&) { return true; };
    OnQuery m_onQuery = [](const auto&, const auto&) {};

    static std::vector<std::uint64_t> NumbersIn(const std::string& text)
    {
        std::vector<std::uint64_t> numbers;
        const std::regex digits("[0-9]+");
        for (std::sregex_iterator it(text.begin(), text.end(), digits), end; it != end; ++it)
            numbers.push_back(std::stoull(it->str()));
        return numbers;
    }

    nlohmann::json Answer(const std::string& query) const
    {
        if (query.starts_with("SELECT DISTINCT machine"))
            return {{"press"}};
        std::smatch found;
        std::uint64_t from = 0;
        std::uint64_t to = 0xFFFFFFFF;
        if (std::regex_search(query, found, std::regex("BETWEEN ([0-9]+) AND ([0-9]+)")))
        {
            from = std::stoull(found[1]);
            to = std::stoull(found[2]);
        }
        else if (std::regex_search(query, found, std::regex("number >= ([0-9]+)")))
            from = std::stoull(found[1]);
        const auto isBefore = [](const engine::ShippedRow& row, std::uint64_t number) {
            return row.number < number;
        };
        const auto begin = std::lower_bound(rows.begin(), rows.end(), from, isBefore);
        const std::span within(begin, std::lower_bound(begin, rows.end(), to + 1, isBefore));
        if (query.find(" LIMIT 1\n") != std::string::npos) // any of them
            return within.empty() ? nlohmann::json::array()
                                  : nlohmann::json{{within[within.size() / 2].number}};
        if (query.starts_with("SELECT min(number), max"))
            return {{within.empty() ? 0 : within.front().number, within.empty() ? 0 : within.back().number}};
        if (query.starts_with("SELECT min(number)")) // a block's end
        {
            std::regex_search(query, found, std::regex("depth < ([0-9]+)"));
            for (const engine::ShippedRow& row : within)
                if (row.depth < std::stoul(found[1]))
                    return {{row.number}};
            return {{0}};
        }
        if (query.find("groupArray") != std::string::npos)
            return AnswerNumbers(query, within);
        std::vector<std::uint64_t> wanted;
        if (std::regex_search(query, found, std::regex("IN \\(([0-9, ]+)\\)")))
            wanted = NumbersIn(found[1]);
        auto data = nlohmann::json::array();
        for (const engine::ShippedRow& row : within)
            if (wanted.empty() || std::find(wanted.begin(), wanted.end(), row.number) != wanted.end())
                data.push_back({row.number, row.log, std::to_string(row.time), row.depth, row.kind,
                                row.header ? 1 : 0, row.block, row.text});
        return data;
    }

    nlohmann::json AnswerNumbers(const std::string& query, std::span<const engine::ShippedRow> within) const
    {
        std::smatch found;
        std::regex_search(query, found, std::regex(" LIMIT ([0-9]+)\\)"));
        const std::size_t most = std::stoull(found[1]);
        std::vector<std::uint32_t> numbers;
        for (const engine::ShippedRow& row : within)
            if (m_passes(row))
                numbers.push_back(row.number);
        if (isReversed)
            std::reverse(numbers.begin(), numbers.end());
        numbers.resize(std::min(numbers.size(), most));
        std::string text;
        for (const std::uint32_t number : numbers)
            text += (text.empty() ? "" : " ") + std::to_string(number);
        return {{text, std::to_string(numbers.size()), "7"}};
    }
};
