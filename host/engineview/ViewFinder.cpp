#include "engineview/ViewFinder.h"

#include <algorithm>

namespace engineview
{

namespace
{

using engine::EngineError;
using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kFirstStretch = 100'000;
constexpr std::uint64_t kLongestStretch = 20'000'000;
constexpr std::chrono::milliseconds kShortSearch(100); // the next stretch may be longer
constexpr std::chrono::milliseconds kLongSearch(500);

} // namespace

ViewFinder::ViewFinder(const engine::EngineUrl& url, const Connect& connect, std::function<void()> wake,
                       std::chrono::milliseconds poll)
    : m_address(url.Shown()), m_wake(std::move(wake)), m_poll(poll),
      m_reader(url, connect([this] {
                   const std::lock_guard lock(m_mutex);
                   return m_isEnding || IsOutdated();
               })),
      m_thread([this](const std::stop_token& stop) { Run(stop); })
{
}

ViewFinder::~ViewFinder()
{
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
}

bool ViewFinder::IsOutdated() const
{
    return m_view != m_wantedView;
}

void ViewFinder::Find(std::uint64_t view, const ViewQuestion& question)
{
    const std::lock_guard lock(m_mutex);
    m_wantedView = view;
    m_wanted = question;
    m_news = {};
    m_changed.notify_all();
}

void ViewFinder::Ask(Question question)
{
    const std::lock_guard lock(m_mutex);
    m_other = std::move(question);
    m_changed.notify_all();
}

ViewNews ViewFinder::Take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, {});
}

Answer ViewFinder::TakeAnswer()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answer, {});
}

std::string ViewFinder::TakeNotices()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_notices, {});
}

bool ViewFinder::IsLost() const
{
    const std::lock_guard lock(m_mutex);
    return m_isLost;
}

void ViewFinder::Run(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested())
    {
        const bool hasMore = m_view != 0 && m_span && !m_isDone && !m_isLost;
        if (!hasMore || m_wantedView == 0)
            m_changed.wait_for(lock, stop, m_poll, [this] { return m_other || IsOutdated(); });
        if (stop.stop_requested() || m_wantedView == 0)
            continue;
        if (IsOutdated())
        {
            m_view = m_wantedView;
            m_question = m_wanted;
            m_span.reset();
            m_next = m_question.choice.from;
            m_stretch = kFirstStretch;
            m_count = 0;
            m_isDone = m_isCutOff = false;
        }
        lock.unlock();
        Work();
        lock.lock();
    }
}

void ViewFinder::Work()
{
    Question other;
    {
        const std::lock_guard lock(m_mutex);
        other = std::exchange(m_other, {});
    }
    try
    {
        if (other)
            AnswerOther(other);
        other = {};
        LookForRows();
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_isLost, false))
            m_notices += m_address + ": the server answers again\n";
    }
    catch (const EngineError& error)
    {
        if (error.Help() != EngineError::Remedy::Cancelled)
            Lose(error);
        const std::lock_guard lock(m_mutex);
        if (!m_other) // another view came between
            m_other = other;
    }
}

void ViewFinder::AnswerOther(const Question& question)
{
    Answer answer;
    answer.isThere = true;
    try
    {
        answer.span = question(m_reader);
    }
    catch (const EngineError& error)
    {
        if (error.Help() == EngineError::Remedy::Cancelled)
            throw;
        answer.failure = error.what();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_answer = answer;
    }
    m_wake();
}

void ViewFinder::LookForRows()
{
    const Clock::time_point now = Clock::now();
    if (!m_span || now - m_lastLook >= m_poll)
    {
        const std::uint64_t from = m_span ? std::uint64_t{m_span->last} + 1 : m_question.choice.from;
        const std::uint64_t to = m_question.choice.to;
        const auto found = from <= to ? m_reader.ReadSpan(from) : std::nullopt;
        m_lastLook = now;
        if (found && found->first <= to)
        {
            m_span = {m_span ? m_span->first : found->first,
                      static_cast<std::uint32_t>(std::min<std::uint64_t>(found->last, to))};
            if (m_isCutOff || (m_question.kind == ViewQuestion::Kind::Sorted && m_isDone))
                PublishSpan(); // it stays as it is
            else
                m_isDone = false;
        }
        else if (!m_span) // the session has no such rows yet
            Publish({});
    }
    if (!m_span || m_isDone)
        return;
    switch (m_question.kind)
    {
    case ViewQuestion::Kind::All:
        return FindAll();
    case ViewQuestion::Kind::Found:
        return FindStretch();
    case ViewQuestion::Kind::Sorted:
        return Sort();
    }
}

void ViewFinder::FindAll()
{
    m_isDone = true;
    PublishSpan();
}

void ViewFinder::PublishSpan()
{
    ViewNews news;
    news.span = m_span;
    Publish(std::move(news));
}

// As many numbers as keep the engine busy for a moment.
void ViewFinder::FindStretch()
{
    const std::uint64_t from = std::max<std::uint64_t>(m_next, m_span->first);
    const std::uint64_t to = std::min<std::uint64_t>(from + m_stretch - 1, m_span->last);
    const Clock::time_point begin = Clock::now();
    if (!FindNumbers(from, to))
        return;
    const auto took = Clock::now() - begin;
    if (took < kShortSearch)
        m_stretch = std::min(m_stretch * 2, kLongestStretch);
    else if (took > kLongSearch)
        m_stretch = std::max(m_stretch / 2, kFirstStretch);
    m_next = to + 1;
    m_isDone = m_isDone || m_next > m_span->last;
}

void ViewFinder::Sort()
{
    if (FindNumbers(m_span->first, m_span->last))
        m_isDone = true;
}

// False if there is nothing to publish yet: the engine is to be asked for less.
bool ViewFinder::FindNumbers(std::uint64_t from, std::uint64_t to)
{
    engine::RowChoice choice = m_question.choice;
    choice.from = from;
    choice.to = to;
    ViewNews news;
    news.span = m_span;
    try
    {
        const std::uint64_t room = kMostNumbers - m_count;
        engine::RowReader::Numbers found;
        if (from <= to)
            found = m_reader.ReadNumbers(choice, room + 1);
        news.isCutOff = found.found > room;
        if (found.numbers.size() > room)
            found.numbers.resize(room);
        if (found.found > 0)
            m_question.choice.before = found.hash;
        m_count += static_cast<std::uint32_t>(found.numbers.size());
        news.found = found.found;
        news.numbers = std::move(found.numbers);
        news.searchedTo = m_span->last;
        if (from <= to)
            news.searchedTo = static_cast<std::uint32_t>(to);
    }
    catch (const EngineError& error)
    {
        if (error.Code() == 0) // it was not the engine that refused
            throw;
        if (m_question.kind == ViewQuestion::Kind::Found && m_stretch > kFirstStretch)
        {
            m_stretch = kFirstStretch;
            return false;
        }
        news.failure = error.what();
    }
    m_isCutOff = news.isCutOff || !news.failure.empty();
    m_isDone = m_isDone || m_isCutOff;
    Publish(std::move(news));
    return true;
}

// What was not taken yet and this belong together.
void ViewFinder::Publish(ViewNews news)
{
    {
        const std::lock_guard lock(m_mutex);
        if (IsOutdated())
            return;
        m_news.view = m_view;
        m_news.span = news.span;
        m_news.numbers.insert(m_news.numbers.end(), news.numbers.begin(), news.numbers.end());
        m_news.found += news.found;
        m_news.searchedTo = std::max(m_news.searchedTo, news.searchedTo);
        m_news.isCutOff = m_news.isCutOff || news.isCutOff;
        m_news.failure = news.failure;
    }
    m_wake();
}

// Told once, however often the server is asked in vain. It is asked again whatever it says: a table or a
// session may come.
void ViewFinder::Lose(const EngineError& error)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!std::exchange(m_isLost, true))
            m_notices += m_address + ": " + error.what() + ", trying again\n";
    }
    m_wake();
}

} // namespace engineview
