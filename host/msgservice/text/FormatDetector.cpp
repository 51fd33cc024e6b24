#include "msgservice/text/FormatDetector.h"

#include <algorithm>
#include <set>

namespace msgservice
{

namespace
{

// What telling a field apart is worth.
constexpr int kTimeWorth = 20;
constexpr int kLevelWorth = 8;
constexpr int kTopicWorth = 6;
constexpr int kOtherWorth = 2; // who, module, file

// What the rest of a log needs, too: more than this many formats slow down and explain nothing.
constexpr std::size_t kMostChoices = 5;
constexpr std::size_t kMostForTheSample = 3;

// How a format does on the lines.
struct Trial
{
    FormatChoice choice;
    std::vector<int> worth;              // of each line; 0 if it does not match
    std::vector<std::string_view> times; // the time stamp of each line, if it has one
    std::size_t matched = 0;
    std::size_t withTime = 0;
    std::size_t withLevel = 0;
    std::size_t withTopic = 0;
    bool hasRandomTopics = false;
    int total = 0;
};

using Lines = std::span<const std::string_view>;

int WorthOf(const MessageFields& fields, bool hasLevel)
{
    int worth = 1;
    worth += fields.time != kNoTime ? kTimeWorth : 0;
    worth += hasLevel ? kLevelWorth : 0;
    worth += !fields.topic.empty() ? kTopicWorth : 0;
    worth += !fields.who.empty() ? kOtherWorth : 0;
    worth += !fields.module.empty() ? kOtherWorth : 0;
    worth += !fields.runtimeFile.empty() ? kOtherWorth : 0;
    return worth;
}

// Where each line has a topic of its own, it is not a topic but a part of the text.
void DropRandomTopics(Trial& trial, const std::set<std::string>& topics)
{
    constexpr std::size_t kFew = 8;
    if (topics.size() <= kFew || topics.size() * 2 <= trial.withTopic)
        return;
    trial.total -= static_cast<int>(trial.withTopic) * (kTopicWorth + 1);
    trial.hasRandomTopics = true;
}

Trial Try(const FormatChoice& choice, LineParser& parser, Lines lines, Time reference)
{
    Trial trial{choice, std::vector<int>(lines.size()), std::vector<std::string_view>(lines.size())};
    TimeText times(reference);
    std::set<std::string> topics;
    for (std::size_t index = 0; index < lines.size(); ++index)
    {
        MessageFields fields;
        fields.level = ~0U;
        if (parser.Parse(lines[index], times, fields) != LineParser::Outcome::Match)
            continue;
        const bool hasLevel = fields.level != ~0U;
        trial.worth[index] = WorthOf(fields, hasLevel) + choice.format->bonus;
        trial.total += trial.worth[index];
        ++trial.matched;
        trial.withLevel += hasLevel ? 1 : 0;
        if (fields.time != kNoTime)
        {
            ++trial.withTime;
            const bool isView = fields.timestamp.data() >= lines[index].data() &&
                                fields.timestamp.data() < lines[index].data() + lines[index].size();
            trial.times[index] = isView ? fields.timestamp : std::string_view();
        }
        if (!fields.topic.empty())
        {
            ++trial.withTopic;
            topics.insert(std::string(fields.topic));
        }
    }
    DropRandomTopics(trial, topics);
    return trial;
}

// Few lines of a format without time stamps are a coincidence. One with time stamps may have long messages,
// but then the log begins with one.
bool IsCredible(const Trial& trial, std::size_t lines)
{
    if (trial.matched == 0 || trial.choice.format->kind == TextFormat::Kind::Lines)
        return false;
    if (trial.withTime == 0)
        return trial.matched * 10 >= lines * 3;
    return trial.worth[0] > 0 || (trial.matched >= 2 && trial.matched * 20 >= lines) ||
           trial.matched * 2 >= lines;
}

bool HasTimes(const Trial& trial)
{
    return trial.withTime > 0;
}

// One log's detection.
class DetectionRun
{
public:
    DetectionRun(FormatDetector& detector, Lines lines, Time reference)
        : m_detector(detector), m_lines(lines), m_formats(detector.Formats()),
          m_reference(reference), m_detection{{}, TimeText(reference), {}}
    {
    }

    Detection Run(const TextFormat* forced)
    {
        if (forced)
            TryOne(*forced, LineParser::Start::AsWritten);
        else
            TryAll(LineParser::Start::AsWritten);
        const Trial* best = forced ? TrialOf(forced) : Best();
        const bool isPoor = !best || !HasTimes(*best) || best->matched * 2 < m_lines.size();
        if (isPoor)
        {
            if (forced)
                TryOne(*forced, LineParser::Start::AfterColumn);
            else
                TryAll(LineParser::Start::AfterColumn);
            best = forced ? TrialOf(forced) : Best();
        }
        Choose(best, forced);
        Learn();
        Explain(forced);
        return std::move(m_detection);
    }

private:
    void TryAll(LineParser::Start start)
    {
        // Most formats begin with a time stamp: they need not be tried if no line does.
        const TextFormat stamp = {"", "", TextFormat::Kind::Expression, "%{stamp}"};
        LineParser parser(stamp, m_formats, start, Expression::Speed::Interpreted);
        const bool hasStamps = Try({&stamp, start}, parser, m_lines, m_reference).matched > 0;
        for (const TextFormat& format : m_formats.All())
            if (hasStamps || !LineParser::CanFollowColumn(format))
                TryOne(format, start);
    }

    void TryOne(const TextFormat& format, LineParser::Start start)
    {
        if (start == LineParser::Start::AsWritten || LineParser::CanFollowColumn(format))
            m_trials.push_back(
                Try({&format, start}, m_detector.Parser({&format, start}), m_lines, m_reference));
    }

    const Trial* TrialOf(const TextFormat* format) const
    {
        const Trial* found = nullptr;
        for (const Trial& trial : m_trials)
            if (trial.choice.format == format && (!found || trial.total > found->total))
                found = &trial;
        return found;
    }

    const Trial* Best() const
    {
        const Trial* best = nullptr;
        for (const Trial& trial : m_trials)
            if (IsCredible(trial, m_lines.size()) && (!best || trial.total > best->total))
                best = &trial;
        return best;
    }

    void Choose(const Trial* best, const TextFormat* forced)
    {
        if (!best)
        {
            const TextFormat* none = m_formats.Find("none");
            m_detection.choices.push_back({forced ? forced : none, LineParser::Start::AsWritten});
            return;
        }
        if (HasTimes(*best) && !forced)
            AddFiner(*best);
        Add(*best);
        if (!HasTimes(*best) || forced)
            return;
        while (m_detection.choices.size() < kMostForTheSample)
        {
            const Trial* next = BestForTheRest();
            if (!next)
                break;
            Add(*next);
        }
        AddPlain(*best);
    }

    void Add(const Trial& trial)
    {
        m_detection.choices.push_back(trial.choice);
        m_chosen.push_back(&trial);
    }

    bool IsTold(std::size_t line) const
    {
        return std::any_of(m_chosen.begin(), m_chosen.end(),
                           [&](const Trial* t) { return t->worth[line] > 0; });
    }

    // What tells the most apart in the lines that none of the chosen formats matches.
    const Trial* BestForTheRest() const
    {
        const Trial* best = nullptr;
        int most = 0;
        for (const Trial& trial : m_trials)
        {
            int total = 0;
            for (std::size_t line = 0; line < m_lines.size(); ++line)
                total += !trial.times[line].empty() && !IsTold(line) ? trial.worth[line] : 0;
            if (total > most)
            {
                most = total;
                best = &trial;
            }
        }
        return best;
    }

    // A format that tells no topic may be best only because some lines have none: one that finds topics in
    // half of its lines comes first.
    void AddFiner(const Trial& best)
    {
        const Trial* finer = nullptr;
        for (const Trial& trial : m_trials)
            if (best.withTopic == 0 && trial.withTopic * 2 >= best.matched && !trial.hasRandomTopics &&
                trial.withLevel >= std::min(trial.matched, best.withLevel) &&
                FindsTheSameTimes(best, trial) && (!finer || trial.total > finer->total))
                finer = &trial;
        if (finer)
            Add(*finer);
    }

    // For lines to come, the plain formats that find the same time stamps: those without a topic.
    void AddPlain(const Trial& best)
    {
        std::vector<const Trial*> plain;
        for (const Trial& trial : m_trials)
            if (trial.withTopic == 0 && FindsTheSameTimes(trial, best))
                plain.push_back(&trial);
        std::stable_sort(plain.begin(), plain.end(),
                         [](const Trial* a, const Trial* b) { return a->total > b->total; });
        for (const Trial* trial : plain)
            if (m_chosen.size() < kMostChoices &&
                std::find(m_chosen.begin(), m_chosen.end(), trial) == m_chosen.end())
                Add(*trial);
    }

    static bool FindsTheSameTimes(const Trial& trial, const Trial& best)
    {
        std::size_t same = 0;
        for (std::size_t line = 0; line < best.times.size(); ++line)
            same += !best.times[line].empty() && trial.times[line].data() == best.times[line].data() &&
                            trial.times[line].size() == best.times[line].size()
                        ? 1
                        : 0;
        return trial.matched >= best.matched && same == best.withTime;
    }

    void Learn()
    {
        for (std::size_t line = 0; line < m_lines.size(); ++line)
            for (const Trial* trial : m_chosen)
                if (trial->worth[line] > 0)
                {
                    m_detection.times.Learn(trial->times[line]);
                    break;
                }
    }

    std::string Name(const Trial& trial) const
    {
        const std::string column =
            trial.choice.start == LineParser::Start::AfterColumn ? ", after a column of its own" : "";
        return trial.choice.format->name + " (" + trial.choice.format->title + ")" + column;
    }

    void Say(const std::string& sentence) { m_detection.explanation += sentence + "\n"; }

    void Explain(const TextFormat* forced)
    {
        const auto count = [](std::size_t number, const char* what) {
            return std::to_string(number) + " " + what;
        };
        Say("Looked at " + count(m_lines.size(), m_lines.size() == 1 ? "line." : "lines."));
        std::vector<const Trial*> order;
        for (const Trial& trial : m_trials)
            if (trial.matched > 0 && trial.choice.format->kind != TextFormat::Kind::Lines)
                order.push_back(&trial);
        std::stable_sort(order.begin(), order.end(),
                         [](const Trial* a, const Trial* b) { return a->total > b->total; });
        constexpr std::size_t kShown = 6;
        for (std::size_t index = 0; index < order.size() && index < kShown; ++index)
        {
            const Trial& trial = *order[index];
            Say(Name(trial) + " matches " + count(trial.matched, trial.matched == 1 ? "line" : "lines") +
                ", " + count(trial.withTime, "with a time stamp that can be read, ") +
                count(trial.withLevel, "with a level, ") + count(trial.withTopic, "with a topic") +
                ": worth " + std::to_string(trial.total) + ".");
        }
        if (order.size() > kShown)
            Say(count(order.size() - kShown, "more formats match some lines and tell less."));
        const bool isNone = m_detection.choices.front().format->kind == TextFormat::Kind::Lines;
        if (m_chosen.empty() || (isNone && !forced))
        {
            Say(forced ? forced->name + " (" + forced->title + ") was asked for."
                       : "No format fits: a line is a message.");
            return;
        }
        Say(Name(*m_chosen.front()) + (forced ? " was asked for." : " was chosen: it tells the most apart."));
        for (std::size_t index = 1; index < m_chosen.size(); ++index)
            Say("A line that does not match it is tried with " + Name(*m_chosen[index]) +
                (index > 1 ? ", too." : "."));
        Say("A line that does not match continues the message before it.");
        ExplainFirst();
    }

    // How the first line that has a format is told apart.
    void ExplainFirst()
    {
        const Trial& trial = *m_chosen.front();
        const auto first =
            std::find_if(trial.worth.begin(), trial.worth.end(), [](int worth) { return worth > 0; });
        if (first == trial.worth.end())
            return;
        const std::string_view line = m_lines[static_cast<std::size_t>(first - trial.worth.begin())];
        LineParser& parser = m_detector.Parser(trial.choice);
        TimeText times = m_detection.times;
        MessageFields fields;
        if (parser.Parse(line, times, fields) != LineParser::Outcome::Match)
            return;
        Say("Its first line is told apart like this:");
        const std::pair<const char*, std::string_view> parts[] = {{"time stamp", fields.timestamp},
                                                                  {"level", fields.levelText},
                                                                  {"topic", fields.topic},
                                                                  {"who", fields.who},
                                                                  {"module", fields.module},
                                                                  {"file", fields.runtimeFile},
                                                                  {"context", fields.runtimeContext},
                                                                  {"text 1", fields.text1},
                                                                  {"body", fields.body}};
        constexpr std::size_t kLongest = 200;
        for (const auto& [name, text] : parts)
            if (!text.empty())
                Say("  " + std::string(name) + ": " + std::string(text.substr(0, kLongest)) +
                    (text.size() > kLongest ? "..." : ""));
        m_detection.explanation += times.Settlements();
    }

    FormatDetector& m_detector;
    Lines m_lines;
    const TextFormats& m_formats;
    Time m_reference;
    std::vector<Trial> m_trials;
    std::vector<const Trial*> m_chosen;
    Detection m_detection;
};

} // namespace

Detection FormatDetector::Detect(std::span<const std::string_view> lines, const TextFormat* forced,
                                 Time reference)
{
    return DetectionRun(*this, lines, reference).Run(forced);
}

LineParser& FormatDetector::Parser(const FormatChoice& choice)
{
    const auto [format, start] = choice;
    return m_parsers.try_emplace({format, start}, *format, m_formats, start, Expression::Speed::Interpreted)
        .first->second;
}

} // namespace msgservice
