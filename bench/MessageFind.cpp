// A text that no message holds, looked for in all of them, against a search of their bytes in one piece.
#include "MessageBench.h"

#include "logreport/model/FindMessages.h"
#include "msgservice/MsgService.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace bench
{

namespace
{

using logreport::FindMessages;
using logreport::FindWish;

constexpr unsigned kTimes = 10;
constexpr char kAbsent[] = "status 9999 of no client";
const std::vector<std::int32_t> kFields = {kLogMsgTimestamp, kLogMsgLevel, kLogMsgTopic, kLogMsgBody};

// The texts that are looked at, one after the other.
std::string TextsOf(msgservice::MsgService& service)
{
    std::string texts;
    logreport::FieldText text;
    for (std::uint32_t id = 1; id <= service.GetMsgCount(); ++id)
        for (const std::int32_t field : kFields)
            texts += text.Of(*service.GetMsg(id), field);
    return texts;
}

// As memmem does it, which this system's library lacks: its first byte, and then the others.
bool FindsByFirstByte(std::string_view texts)
{
    const std::string_view wanted = kAbsent;
    const char* at = texts.data();
    const char* const end = at + texts.size() - wanted.size() + 1;
    while (at < end)
    {
        at = static_cast<const char*>(std::memchr(at, wanted[0], static_cast<std::size_t>(end - at)));
        if (!at)
            return false;
        if (std::memcmp(at, wanted.data(), wanted.size()) == 0)
            return true;
        ++at;
    }
    return false;
}

bool FindsByTable(std::string_view texts)
{
    const std::string_view wanted = kAbsent;
    return std::search(texts.begin(), texts.end(),
                       std::boyer_moore_horspool_searcher(wanted.begin(), wanted.end())) != texts.end();
}

void MustNotFind(bool finds)
{
    if (!finds)
        return;
    std::fprintf(stderr, "bench_messages: an absent text was found\n");
    std::exit(2);
}

// A service that does not tell which messages need no look.
class AskedService : public msgservice::MsgService
{
public:
    using MsgService::MsgService;
    std::uint32_t SkipWithout(const char*, std::int32_t, std::uint32_t id, std::uint32_t) override
    {
        return id;
    }
};

void Find(ILogMsgService& service, std::uint32_t count, const FindWish& wish)
{
    FindMessages find;
    find.SetRange(1, count);
    find.SetWish(wish);
    while (find.Step(service))
        ;
    MustNotFind(find.GetCount() > 0);
}

} // namespace

void MeasureFind(const std::shared_ptr<msgservice::MessageStore>& store, unsigned rounds, Report& report)
{
    msgservice::MsgService service(store);
    AskedService asked(store);
    service.Settle();
    asked.Settle();
    const std::uint32_t count = service.GetMsgCount();
    const std::string texts = TextsOf(service);
    const auto find = [count](ILogMsgService& where, bool matchesCase) {
        return [&where, count, matchesCase] { Find(where, count, {kAbsent, kFields, matchesCase}); };
    };
    const auto get = [&asked, count] {
        for (std::uint32_t id = 1; id <= count; ++id)
            MustNotFind(!asked.GetMsg(id));
    };
    logreport::FieldText text;
    const auto take = [&] {
        std::size_t size = 0;
        for (std::uint32_t id = 1; id <= count; ++id)
            for (const std::int32_t field : kFields)
                size += text.Of(*asked.GetMsg(id), field).size();
        MustNotFind(size == 0);
    };
    // Several times each: the processor's time is counted in hundredths of a second.
    const auto often = [count](const std::function<void()>& act) {
        return Variant{count * kTimes, [act] {
                           for (unsigned i = 0; i < kTimes; ++i)
                               act();
                       }};
    };
    const Comparison finds({often([&] { MustNotFind(FindsByTable(texts)); }),
                            often([&] { MustNotFind(FindsByFirstByte(texts)); }), often(find(service, true)),
                            often(find(service, false)), often(find(asked, true)), often(get), often(take)},
                           rounds, Clock::Processor);
    const std::size_t best = finds.Time(0) < finds.Time(1) ? 0 : 1;
    const std::string reference = "memmem over its bytes";
    report.Add({reference, finds.Time(best), "us", "", {}, {}});
    report.Add({"find an absent text, a message", finds.Time(2), "us", reference, finds.Ratio(2, best), 1.5});
    report.Add({"find, match case off", finds.Time(3), "us", reference, finds.Ratio(3, best), 1.5});
    report.Add(
        {"find, a service that tells nothing", finds.Time(4), "us", reference, finds.Ratio(4, best), {}});
    report.Add({"GetMsg alone", finds.Time(5), "us", reference, finds.Ratio(5, best), {}});
    report.Add({"GetMsg and field texts alone", finds.Time(6), "us", reference, finds.Ratio(6, best), {}});
}

} // namespace bench
