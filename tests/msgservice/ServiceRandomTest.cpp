// The message service against plain vectors, whatever is asked of it.
#include "tests/msgservice/ToldViewer.h"
#include "tests/support/LongRun.h"

#include <algorithm>
#include <array>
#include <random>

namespace
{

using namespace msgservice;

struct PlainMessage
{
    std::array<std::string, 11> texts; // timestamp, level, topic, body, ...: by field, "" for numbers
    std::int32_t number = 0;           // error number
    std::int32_t sourceLine = 0;
    Time time = kNoTime;
    std::uint32_t level = 0;
    std::uint32_t indent = 0;
    bool counts = false;

    MessageFields Fields() const
    {
        MessageFields fields;
        fields.timestamp = texts[kLogMsgTimestamp];
        fields.levelText = texts[kLogMsgLevel];
        fields.topic = texts[kLogMsgTopic];
        fields.body = texts[kLogMsgBody];
        fields.source = texts[kLogMsgSource];
        fields.errorNumber = number;
        fields.sourceLine = sourceLine;
        fields.time = time;
        fields.level = level;
        fields.indent = indent;
        fields.countsSourceLine = counts;
        return fields;
    }

    std::string Text(std::int32_t field) const
    {
        if (field == kLogMsgErrorNumber || field == kLogMsgSourceLine)
            return std::to_string(field == kLogMsgSourceLine ? sourceLine : number);
        if (field == kLogMsgLine || field == kLogMsgSourceColumn)
            return "0";
        return field >= 0 && field < 11 ? texts[static_cast<std::size_t>(field)] : "";
    }
};

std::string Lower(std::string text)
{
    for (char& letter : text)
        letter = static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter + 32 : letter);
    return text;
}

bool PassesPlain(const PlainMessage& message, const Filter& filter)
{
    const std::string text = message.Text(filter.field);
    const bool has = filter.matchCase ? text.find(filter.value) != std::string::npos
                                      : Lower(text).find(Lower(filter.value)) != std::string::npos;
    return filter.field == kLogMsgNone ||
           (filter.operation == kLogMsgNotEmpty ? !text.empty()
                                                : has == (filter.operation != kLogMsgNotContain));
}

int ComparePlain(const PlainMessage& left, const PlainMessage& right, std::int32_t field)
{
    const auto sign = [](auto a, auto b) { return a < b ? -1 : b < a ? 1 : 0; };
    if (field == kLogMsgErrorNumber)
        return sign(left.number, right.number);
    if (field == kLogMsgSourceLine)
        return sign(left.sourceLine, right.sourceLine);
    if (field == kLogMsgLevel)
        return sign(left.level, right.level);
    if (field == kLogMsgTimestamp && (left.time != kNoTime || right.time != kNoTime))
        return left.time == kNoTime ? 1 : right.time == kNoTime ? -1 : sign(left.time, right.time);
    return sign(Lower(left.Text(field)), Lower(right.Text(field)));
}

bool SaySamePlain(PlainMessage left, PlainMessage right)
{
    left.texts[kLogMsgTimestamp] = right.texts[kLogMsgTimestamp];
    const bool sameLine = (left.counts && right.counts) || left.sourceLine == right.sourceLine;
    return left.texts == right.texts && left.number == right.number && left.level == right.level &&
           left.indent == right.indent && sameLine;
}

// Tags in the order in which the view has to be.
std::vector<std::int32_t> PlainView(const std::vector<PlainMessage>& messages,
                                    const ViewDescription& description)
{
    std::vector<std::int32_t> tags;
    const auto at = [&](std::int32_t tag) -> const PlainMessage& {
        return messages[static_cast<std::size_t>(tag - 1)];
    };
    for (std::size_t i = description.firstIndex; i < messages.size(); ++i)
        if (messages[i].level >= description.leastLevel &&
            std::all_of(description.filters.begin(), description.filters.end(),
                        [&](const Filter& filter) { return PassesPlain(messages[i], filter); }))
            tags.push_back(static_cast<std::int32_t>(i + 1));
    std::stable_sort(tags.begin(), tags.end(), [&](std::int32_t left, std::int32_t right) {
        for (const SortKey& key : description.keys)
            if (const int order = key.field < 0 ? 0 : ComparePlain(at(left), at(right), key.field);
                order != 0)
                return (order < 0) == key.ascending;
        return false;
    });
    std::vector<std::int32_t> shown;
    for (const std::int32_t tag : tags)
        if (description.showDuplicates || shown.empty() || !SaySamePlain(at(tag), at(shown.back())))
            shown.push_back(tag);
    return shown;
}

class RandomService
{
public:
    explicit RandomService(unsigned seed) : m_random(seed)
    {
        m_set.keys.resize(3);
        m_set.filters.resize(3);
        m_applied = m_shown = m_set;
        m_service.AddViewer(viewer);
    }

    void Step()
    {
        switch (Below(9))
        {
        case 0:
            AddMessages(Below(60) == 0 ? 1001 + Below(200) : Below(30));
            break;
        case 1:
            SetKeys();
            break;
        case 2:
            SetFilter();
            break;
        case 3:
            m_set.showDuplicates = !m_set.showDuplicates;
            m_service.SetShowDuplicate(m_set.showDuplicates ? 1 : 0);
            break;
        case 4:
            m_set.leastLevel = Below(3);
            m_service.SetLeastLevel(m_set.leastLevel);
            break;
        case 5:
            m_service.Apply();
            m_applied = m_set;
            break;
        case 6:
            if (!m_service.IsBusy())
                break;
            m_service.CancelApply();
            m_set = m_applied = m_shown;
            break;
        case 7:
            m_set.firstIndex = Below(4) == 0 ? 0 : Below(static_cast<std::uint32_t>(m_messages.size()) + 1);
            m_service.ClearBefore(m_set.firstIndex == 0 ? 0
                                                        : static_cast<std::int32_t>(m_set.firstIndex + 1));
            m_applied = m_set;
            break;
        default:
            m_service.Publish();
            if (!m_service.IsBusy())
                m_shown = m_applied;
        }
    }

    void ExpectSettled()
    {
        m_service.Settle();
        m_shown = m_applied;
        const std::vector<std::int32_t> wanted = PlainView(m_messages, m_shown);
        ASSERT_EQ(wanted, viewer.Tags());
        ASSERT_EQ(wanted.size(), m_service.GetMsgCount());
        EXPECT_FALSE(m_service.IsBusy());
        for (int i = 0; i < 5 && !m_messages.empty(); ++i)
        {
            const auto tag =
                static_cast<std::int32_t>(1 + Below(static_cast<std::uint32_t>(m_messages.size())));
            const auto found = std::find(wanted.begin(), wanted.end(), tag);
            ASSERT_EQ(found == wanted.end() ? kNoLogMsgId
                                            : static_cast<std::uint32_t>(found - wanted.begin() + 1),
                      m_service.FindTag(tag));
        }
        ExpectLevelsFound(wanted);
        ExpectTextsFound(wanted);
    }

    ToldViewer viewer;

private:
    std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(m_random() % bound); }

    void AddMessages(std::uint32_t count)
    {
        const std::vector<std::string> words = {"",
                                                "a",
                                                "A",
                                                "B",
                                                "b long text that is more than eight bytes",
                                                "B long text that is more than eight bytez",
                                                "\xC3\xA4rger"};
        for (; count > 0; --count)
        {
            PlainMessage message;
            for (const auto field :
                 {kLogMsgTimestamp, kLogMsgLevel, kLogMsgTopic, kLogMsgBody, kLogMsgSource})
                message.texts[static_cast<std::size_t>(field)] = words[Below(field == kLogMsgSource ? 2 : 7)];
            // Bodies that differ only after what a sort keeps of them.
            if (Below(8) == 0)
                message.texts[kLogMsgBody] = std::string(1100, 'x') + words[Below(7)];
            message.number = static_cast<std::int32_t>(Below(3)) - 1;
            message.level = Below(6);
            message.indent = Below(2);
            if (Below(2) == 0 && !m_messages.empty())
            {
                message = m_messages.back(); // again, but for one thing or for the time alone
                message.indent = Below(4) == 0 ? Below(2) : message.indent;
                message.number += Below(8) == 0 ? 1 : 0;
            }
            message.time = Below(3) == 0 ? kNoTime : static_cast<Time>(Below(5)) - 2;
            message.counts = Below(2) == 0;
            message.sourceLine =
                message.counts ? static_cast<std::int32_t>(m_messages.size()) : message.number;
            m_messages.push_back(message);
            m_service.Store()->Add(message.Fields());
        }
    }

    void ExpectLevelsFound(const std::vector<std::int32_t>& tags)
    {
        const auto count = static_cast<std::uint32_t>(tags.size());
        const std::uint32_t level = Below(7);
        const auto has = [&](std::uint32_t id) {
            return m_messages[static_cast<std::size_t>(tags[id - 1] - 1)].level >= level;
        };
        const std::uint32_t from = Below(count + 2);
        std::uint32_t next = from + 1;
        while (next <= count && !has(next))
            ++next;
        std::uint32_t previous = from > 0 ? from - 1 : 0;
        while (previous > 0 && !has(previous))
            --previous;
        using Direction = MsgService::Direction;
        ASSERT_EQ(next <= count ? next : kNoLogMsgId, m_service.FindLevel(from, level, Direction::Forward));
        ASSERT_EQ(previous > 0 ? previous : kNoLogMsgId,
                  m_service.FindLevel(from, level, Direction::Backward));
    }

    void ExpectTextsFound(const std::vector<std::int32_t>& tags)
    {
        const char* const texts[] = {"long T", "A", "\xC3\xA4r", "none", "-1", ""};
        const std::string text = texts[Below(6)];
        const bool matchCase = Below(2) == 0;
        const auto end = static_cast<std::uint32_t>(tags.size()) + Below(3);
        const std::uint32_t id = Below(end + 1);
        std::uint32_t next = id;
        const auto holds = [&](std::uint32_t at) {
            for (std::int32_t field = 0; field < kLogMsgKindCount; ++field)
                if (PassesPlain(m_messages[static_cast<std::size_t>(tags[at - 1] - 1)],
                                {field, kLogMsgContain, text, matchCase}))
                    return true;
            return false;
        };
        const bool isKnown = text != "" && text != "-1"; // which may be part of a number
        while (isKnown && next >= 1 && next < end && next <= tags.size() && !holds(next))
            ++next;
        ASSERT_EQ(next, m_service.SkipWithout(text.c_str(), matchCase ? 1 : 0, id, end)) << text << id;
    }

    std::int32_t AnyField() { return static_cast<std::int32_t>(Below(14)) - 1; }

    void SetKeys()
    {
        const std::uint32_t count = Below(2) == 0 ? 1 : 3;
        LogMsgSortKey keys[3];
        for (std::uint32_t i = 0; i < count; ++i)
        {
            m_set.keys[i] = {AnyField(), Below(2) == 0};
            keys[i] = {static_cast<ILogMsgDataKind>(m_set.keys[i].field), m_set.keys[i].ascending ? 7 : 0};
        }
        m_service.SetSortKeys(keys, static_cast<std::int32_t>(count));
        LogMsgSortKey all[3];
        m_service.GetSortKeys(all, 3);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_TRUE(all[i].field == m_set.keys[i].field &&
                        (all[i].ascending != 0) == m_set.keys[i].ascending);
    }

    void SetFilter()
    {
        const std::array<std::string, 5> values = {"", "b", "LONG", "\xC3\x84", "1"};
        LogMsgFilter filters[3];
        m_service.GetFilters(filters, 3);
        const std::size_t which = Below(3);
        Filter& filter = m_set.filters[which];
        filter = {Below(2) == 0 ? kLogMsgNone : AnyField(), static_cast<std::int32_t>(Below(5)),
                  values[Below(5)], Below(2) == 0};
        if (filter.value == "\xC3\x84")
            filter.matchCase = true; // beyond ASCII the plain model knows no case
        filters[which].field = static_cast<ILogMsgDataKind>(filter.field);
        filters[which].operation = static_cast<LogMsgFilterOperator>(filter.operation);
        filters[which].value = filter.value.c_str();
        filters[which].matchCase = filter.matchCase ? 1 : 0;
        m_service.SetFilters(filters, 3);
    }

    std::mt19937 m_random;
    MsgService m_service;
    std::vector<PlainMessage> m_messages;
    ViewDescription m_set;     // as the service has been told
    ViewDescription m_applied; // as it was when it was last applied
    ViewDescription m_shown;   // as the service is known to show it
};

TEST(MsgService, ShowsWhatPlainVectorsShowWhateverIsAsked)
{
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + Rounds(8u, 300u); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        RandomService random(seed);
        for (int step = 0; step < 120; ++step)
        {
            random.Step();
            if (step % 5 == 4)
                ASSERT_NO_FATAL_FAILURE(random.ExpectSettled());
        }
    }
}

} // namespace
