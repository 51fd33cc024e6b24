// The thread that finds out which rows a view has.
#pragma once

#include "engineview/PageReader.h"

#include <chrono>
#include <string>

namespace engineview
{

// Rows of a session: all with numbers within the choice's bounds, or found ones.
struct ViewQuestion
{
    enum class Kind
    {
        All,   // the rows by their numbers: these are the view
        Found, // some of them by their numbers, found stretch by stretch
        Sorted // found and sorted by the engine at once
    };
    Kind kind = Kind::All;
    engine::RowChoice choice;
};

// What became known of a view since it was told last.
struct ViewNews
{
    std::uint64_t view = 0;                      // none if 0
    std::optional<engine::RowReader::Span> span; // of the rows that are there, within the bounds
    std::vector<std::uint32_t> numbers;          // further ones, of Found and Sorted
    std::uint64_t found = 0;                     // rows, before repeated ones were left out
    std::uint32_t searchedTo = 0;                // of Found: all numbers up to it
    bool isCutOff = false;                       // there are more rows than a view can have
    std::string failure;                         // why the view cannot be had
};

// Another question beside, for numbers.
using Question = std::function<std::optional<engine::RowReader::Span>(engine::RowReader&)>;
struct Answer
{
    bool isThere = false;
    std::optional<engine::RowReader::Span> span;
    std::string failure;
};

// All operations are for one thread, the owner's.
class ViewFinder
{
public:
    static constexpr std::uint32_t kMostNumbers = 1'000'000; // of a view that is found or sorted

    // Looks for new rows every `poll`. `wake` is called on the finder's thread when there is news. It must
    // not throw.
    ViewFinder(const engine::EngineUrl& url, const Connect& connect, std::function<void()> wake,
               std::chrono::milliseconds poll = std::chrono::seconds(1));
    ~ViewFinder();
    ViewFinder(const ViewFinder&) = delete;
    ViewFinder& operator=(const ViewFinder&) = delete;

    // Finds this view, and then what comes to its end, in place of the one before. `view` is not 0.
    void Find(std::uint64_t view, const ViewQuestion& question);

    // Is asked on the finder's thread, in place of one that waits.
    void Ask(Question question);

    ViewNews Take();
    Answer TakeAnswer();
    std::string TakeNotices(); // sentences for the user, a line each
    bool IsLost() const;       // the server, at present

private:
    void Run(const std::stop_token& stop);
    void Work();
    void AnswerOther(const Question& question);
    void LookForRows();
    void FindAll();
    void PublishSpan();
    bool FindNumbers(std::uint64_t from, std::uint64_t to);
    void FindStretch();
    void Sort();
    void Publish(ViewNews news);
    void Lose(const engine::EngineError& error);
    bool IsOutdated() const;

    std::string m_address; // as it may be shown
    std::function<void()> m_wake;
    std::chrono::milliseconds m_poll;

    // The thread's
    engine::RowReader m_reader;
    std::uint64_t m_view = 0; // that is being found
    ViewQuestion m_question;
    std::optional<engine::RowReader::Span> m_span;
    std::chrono::steady_clock::time_point m_lastLook;
    std::uint64_t m_next = 0;    // the first number that was not searched
    std::uint64_t m_stretch = 0; // numbers to search at once
    std::uint32_t m_count = 0;   // of numbers that were found
    bool m_isDone = false;       // nothing more is to be found, at present
    bool m_isCutOff = false;     // nor later

    mutable std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::uint64_t m_wantedView = 0;
    ViewQuestion m_wanted;
    Question m_other;
    ViewNews m_news;
    Answer m_answer;
    std::string m_notices;
    bool m_isLost = false;
    bool m_isEnding = false;
    std::jthread m_thread; // last
};

} // namespace engineview
