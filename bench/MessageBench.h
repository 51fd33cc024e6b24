// What the benchmarks of messages share.
#pragma once

#include "Bench.h"

#include "msgservice/store/MessageStore.h"

#include <memory>
#include <random>
#include <string>

namespace bench
{

constexpr std::size_t kBodySize = 120;

// Messages as a busy service writes them: few topics, many threads, bodies that begin alike.
class Messages
{
public:
    explicit Messages(std::uint32_t count) : m_count(count) {}

    std::uint32_t Count() const { return m_count; }

    // Calls `take` with each message; all calls see the same ones.
    template <typename Take> void ForEach(Take take) const
    {
        using namespace msgservice;
        std::mt19937 random(7);
        std::string body, topic, who, timestamp;
        for (std::uint32_t i = 0; i < m_count; ++i)
        {
            const auto below = [&](std::uint32_t bound) {
                return static_cast<std::uint32_t>(random() % bound);
            };
            body = "Request " + std::to_string(random()) + " of client " + std::to_string(below(5000)) +
                   " answered in " + std::to_string(below(900)) + " ms with status " +
                   std::to_string(below(500));
            body.resize(kBodySize, 'x');
            topic = "server.module" + std::to_string(below(50));
            who = "worker-" + std::to_string(below(200));
            timestamp = "2026-11-22 13:" + std::to_string(10 + i / 60'000 % 50) + ":" +
                        std::to_string(10 + i / 1000 % 50) + "," + std::to_string(100 + below(900));
            MessageFields fields;
            fields.timestamp = timestamp;
            fields.levelText = "INFO";
            fields.topic = topic;
            fields.body = body;
            fields.who = who;
            fields.sourceLine = static_cast<std::int32_t>(i + 1);
            fields.countsSourceLine = true;
            fields.time = Time{i / 7} * 1'000'000 + below(5'000'000);
            fields.level = below(20) == 0 ? kErrorLevel : kInfoLevel;
            take(fields);
        }
    }

    std::shared_ptr<msgservice::MessageStore> Stored() const
    {
        auto store = msgservice::MessageStore::Make();
        ForEach([&](const msgservice::MessageFields& fields) { store->Add(fields); });
        return store;
    }

private:
    std::uint32_t m_count;
};

#ifdef _WIN32
void MeasureExports(const std::shared_ptr<msgservice::MessageStore>& store, unsigned rounds, Report& report);
void MeasureFind(const std::shared_ptr<msgservice::MessageStore>& store, unsigned rounds, Report& report);
void MeasureWindow(const Options& options, Report& report);
#endif
void MeasureTexts(const Options& options, unsigned rounds, Report& report);
void MeasureSavedFiles(const msgservice::MessageStore& store, unsigned rounds, Report& report);

} // namespace bench
