// What messages cost: keeping, filtering, sorting and, under Windows, showing them. Runs on this system too,
// where there is memmem.
#include "MessageBench.h"

#include "LogMsg.h"
#include "msgservice/MsgService.h"
#include "msgservice/view/MessageOrder.h"
#include "zemacore/Collation.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#ifdef _WIN32
#include "BenchMemory.h"
#else
#include <malloc.h>
#endif

namespace
{

using namespace msgservice;
using bench::Comparison;
using bench::Messages;

double UsedBytes()
{
#ifdef _WIN32
    return bench::PrivateBytes();
#else
    const struct mallinfo2 memory = mallinfo2();
    return static_cast<double>(memory.uordblks + memory.hblkhd);
#endif
}

// A search as good as the system has one.
bool Contains(std::string_view text, std::string_view wanted)
{
#ifdef _WIN32
    return text.find(wanted) != std::string_view::npos;
#else
    return memmem(text.data(), text.size(), wanted.data(), wanted.size()) != nullptr;
#endif
}

void MeasureStoring(const Messages& messages, unsigned rounds, bench::Report& report)
{
    const double before = UsedBytes();
    const auto store = messages.Stored();
    report.Add({"memory of a message of 120 bytes",
                (UsedBytes() - before) / messages.Count(),
                "bytes",
                "its texts are 144 bytes",
                {},
                200.0});

    std::vector<std::pair<std::string, std::string>> texts;
    const Comparison adding({{messages.Count(), [&] { messages.ForEach([](const MessageFields&) {}); }},
                             {messages.Count(), [&] { messages.Stored(); }},
                             {messages.Count(),
                              [&] {
                                  texts.clear();
                                  messages.ForEach([&](const MessageFields& fields) {
                                      texts.emplace_back(std::string(fields.timestamp),
                                                         std::string(fields.body));
                                  });
                              }}},
                            rounds, bench::Clock::Processor);
    const double add = adding.Time(1) - adding.Time(0);
    const double copy = adding.Time(2) - adding.Time(0);
    report.Add({"add a message", add, "us", "two strings of it in a vector", add / copy, {}});
}

void MeasureFilter(const std::shared_ptr<MessageStore>& store, unsigned rounds, bench::Report& report)
{
    const std::uint32_t count = store->Count();
    std::uint32_t found = 0;
    const auto filter = [&](const char* text, bool matchCase) {
        return [&, text, matchCase] {
            ViewDescription description;
            description.filters.push_back({kLogMsgBody, kLogMsgContain, text, matchCase});
            View view(store, description);
            Work work;
            view.Insert(count, work);
            found += view.Count();
        };
    };
    const auto plain = [&] {
        for (std::uint32_t i = 0; i < count; ++i)
            found += Contains(store->At(i).body, "status 499") ? 1 : 0;
    };
    const Comparison filters(
        {{count, plain}, {count, filter("status 499", true)}, {count, filter("STATUS 499", false)}}, rounds,
        bench::Clock::Processor);
#ifdef _WIN32
    const std::string reference = "std::string_view::find";
#else
    const std::string reference = "memmem";
#endif
    report.Add({reference + " in a body", filters.Time(0), "us", "", {}, {}});
    report.Add({"filter contain, a message", filters.Time(1), "us", reference, filters.Ratio(1), 1.5});
    report.Add({"filter, match case off", filters.Time(2), "us", reference, filters.Ratio(2), 3.0});
}

// Ready keys of three fields, sorted by the standard library.
struct ReadyKeys
{
    std::uint64_t level, topic, time;
    std::uint32_t index;
};

void MeasureSort(const MessageStore& store, unsigned rounds, bench::Report& report)
{
    const std::uint32_t count = store.Count();
    std::vector<std::uint32_t> all(count);
    std::iota(all.begin(), all.end(), 0);
    std::vector<std::uint32_t> order;
    const auto sort = [&](SortKeys keys) {
        return [&, keys] {
            Work work;
            SortMessages(store, keys, order, work);
        };
    };
    std::vector<ReadyKeys> ready(count);
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const Record record = store.At(i);
        ready[i] = {record.level, record.texts[kTopic], static_cast<std::uint64_t>(record.time), i};
    }
    std::vector<ReadyKeys> sorted;
    std::vector<std::pair<std::uint64_t, std::uint32_t>> one, sortedOne;
    for (const ReadyKeys& keys : ready)
        one.emplace_back(keys.time, keys.index);
    const auto renew = [&] { order = all; };
    const Comparison sorts(
        {{count,
          [&] {
              std::stable_sort(sortedOne.begin(), sortedOne.end(),
                               [](const auto& a, const auto& b) { return a.first < b.first; });
          },
          [&] { sortedOne = one; }},
         {count, sort({{kLogMsgTimestamp, true}}), renew},
         {count,
          [&] {
              std::stable_sort(sorted.begin(), sorted.end(), [](const ReadyKeys& a, const ReadyKeys& b) {
                  return a.level != b.level   ? a.level < b.level
                         : a.topic != b.topic ? a.topic < b.topic
                                              : a.time < b.time;
              });
          },
          [&] { sorted = ready; }},
         {count, sort({{kLogMsgLevel, true}, {kLogMsgTopic, true}, {kLogMsgTimestamp, true}}), renew}},
        rounds, bench::Clock::Processor);
    report.Add({"std::stable_sort, one ready key", sorts.Time(0), "us", "", {}, {}});
    report.Add({"sort by time, a message", sorts.Time(1), "us", "std::stable_sort, one ready key",
                sorts.Ratio(1), 1.5});
    report.Add({"std::stable_sort, three ready keys", sorts.Time(2), "us", "", {}, {}});
    report.Add({"sort by three keys, a message", sorts.Time(3), "us", "std::stable_sort, three ready keys",
                sorts.Ratio(3, 2), 1.5});
}

// Texts are compared by keys of the user's language, which take longer to make than to sort.
void MeasureTextSort(const MessageStore& store, unsigned rounds, bench::Report& report)
{
    const std::uint32_t count = store.Count();
    std::vector<std::uint32_t> all(count);
    std::iota(all.begin(), all.end(), 0);
    std::vector<std::uint32_t> order;
    std::vector<std::pair<std::string, std::uint32_t>> ready(count), sorted;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const std::string_view body = store.At(i).body;
        ZEMA::AppendSortKey(body.data(), body.size(), ZEMA::LetterCase::Ignored, ready[i].first);
        ready[i].second = i;
    }
    std::string key;
    const Comparison sorts(
        {{count,
          [&] {
              std::stable_sort(sorted.begin(), sorted.end(),
                               [](const auto& a, const auto& b) { return a.first < b.first; });
          },
          [&] { sorted = ready; }},
         {count,
          [&] {
              SortColumn column(store, kLogMsgBody, all);
              for (const std::uint32_t message : all)
                  column.Add(store.BytesAt(message));
              column.Finish();
          }},
         {count,
          [&] {
              Work work;
              SortMessages(store, {{kLogMsgBody, true}}, order, work);
          },
          [&] { order = all; }},
         {count,
          [&] {
              for (std::uint32_t i = 0; i < count; ++i)
              {
                  const std::string_view body = store.At(i).body;
                  key.clear();
                  ZEMA::AppendSortKey(body.data(), body.size(), ZEMA::LetterCase::Ignored, key);
              }
          }}},
        rounds, bench::Clock::Processor);
    report.Add(
        {"locale keys of the bodies", sorts.Time(1), "us", "the system's keys alone", sorts.Ratio(1, 3), {}});
    report.Add({"std::stable_sort, ready text keys", sorts.Time(0), "us", "", {}, {}});
    const double sort = sorts.Time(2) - sorts.Time(1);
    report.Add({"sort by body, without its keys", sort, "us", "std::stable_sort, ready text keys",
                sort / sorts.Time(0), 1.5});
}

} // namespace

int main(int count, char** arguments)
{
    const bench::Options options = bench::ParseOptions(count, arguments);
    const unsigned rounds = options.quick ? 1 : 3;
    bench::Report report;
    MeasureStoring(Messages(options.quick ? 100'000 : 2'000'000), rounds, report);
    const auto store = Messages(options.quick ? 100'000 : 1'000'000).Stored();
    MeasureFilter(store, rounds, report);
    MeasureSort(*store, rounds, report);
    MeasureTextSort(*store, rounds, report);
    bench::MeasureTexts(options, rounds, report);
    bench::MeasureSavedFiles(*store, rounds, report);
#ifdef _WIN32
    bench::MeasureFind(store, rounds, report);
    bench::MeasureExports(store, rounds, report);
    bench::MeasureWindow(options, report);
#endif
    report.Print(options);
    return report.AllMet() || options.quick ? 0 : 1;
}
