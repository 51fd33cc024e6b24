// A text log read as messages, against one pass of its format's expression over the same lines.
#include "MessageBench.h"

#include "msgservice/sources/TextSource.h"

#include <algorithm>
#include <cstring>

namespace bench
{

namespace
{

using namespace msgservice;
using textmatch::Expression;

// Hands out a text that is given again and again.
class RepeatedText : public ByteInput
{
public:
    RepeatedText(const std::string& text, int times) : m_text(text), m_times(times) {}

    Outcome Read(std::span<char> room, std::size_t& size) override
    {
        if (m_at == m_text.size())
        {
            m_at = 0;
            --m_times;
        }
        if (m_times <= 0)
            return Outcome::End;
        size = std::min(room.size(), m_text.size() - m_at);
        std::memcpy(room.data(), m_text.data() + m_at, size);
        m_at += size;
        return Outcome::Bytes;
    }
    std::string Name() const override { return "text"; }

private:
    const std::string& m_text;
    int m_times;
    std::size_t m_at = 0;
};

class CountingSink : public MessageSink
{
public:
    void Add(const MessageFields& message) override
    {
        ++count;
        bytes += message.body.size() + message.topic.size();
    }

    std::uint64_t count = 0;
    std::uint64_t bytes = 0;
};

std::string Lines(const Messages& messages)
{
    std::string text;
    messages.ForEach([&](const MessageFields& fields) {
        text += std::string(fields.timestamp) + " INFO [" + std::string(fields.who) + "] " +
                std::string(fields.topic) + ": " + std::string(fields.body) + "\n";
    });
    return text;
}

std::uint64_t ReadAll(TextSource& source)
{
    CountingSink sink;
    while (source.Read(sink) == MessageSource::State::More)
        ;
    return sink.count;
}

} // namespace

void MeasureTexts(const Options& options, unsigned rounds, Report& report)
{
    const Messages messages(100'000);
    const std::string text = Lines(messages);
    const int times = options.quick ? 1 : 10;
    const TextFormats formats;
    TextSource look(std::make_unique<RepeatedText>(text, 1), formats);
    look.Detect();
    const Expression expression(formats.Expand(look.Choices().front().format->expression),
                                Expression::Syntax::Expression, Expression::Case::Kept,
                                Expression::Units::Bytes, Expression::Where::FromStart);
    std::uint64_t found = 0;
    const auto pass = [&] {
        for (int i = 0; i < times; ++i)
            for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end + 1)
            {
                end = text.find('\n', begin);
                const std::string_view line(text.data() + begin, end - begin);
                found += expression.Find(line) == Expression::Outcome::Found ? 1 : 0;
            }
    };
    const auto read = [&] {
        TextSource source(std::make_unique<RepeatedText>(text, times), formats);
        found += ReadAll(source);
    };
    const unsigned lines = messages.Count() * static_cast<unsigned>(times);
    const Comparison reading({{lines, pass}, {lines, read}}, rounds, Clock::Processor);
    report.Add({"the expression alone, a line", reading.Time(0), "us", "", {}, {}});
    report.Add(
        {"read a text log, a line", reading.Time(1), "us", "the expression alone", reading.Ratio(1), 2.0});
}

} // namespace bench
