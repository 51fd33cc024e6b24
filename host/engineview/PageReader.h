// The thread that fetches pages.
#pragma once

#include "engine/RowReader.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace engineview
{

// How an engine is reached: a client whose requests are given up when the function answers true.
using Connect = std::function<std::unique_ptr<engine::HttpClient>(engine::IsCancelled)>;

// Which rows of a page's view it has: those with its numbers, whose bounds the choice has.
struct PageRequest
{
    std::uint32_t index = 0;
    engine::RowChoice choice;
    std::vector<std::uint32_t> numbers; // in the view's order
    bool isStretch = false;             // they follow each other, so that the bounds say it all
};

// A page that came.
struct PageAnswer
{
    PageRequest request;
    std::uint64_t view = 0;
    std::vector<engine::ShippedRow> rows; // by number
};

// All operations are for one thread, the owner's.
class PageReader
{
public:
    // `wake` is called on the reader's thread when a page has come. It must not throw.
    PageReader(const engine::EngineUrl& url, const Connect& connect, std::function<void()> wake);
    ~PageReader();
    PageReader(const PageReader&) = delete;
    PageReader& operator=(const PageReader&) = delete;

    // The pages to fetch, the most urgent first, in place of those that were wanted before: one that is being
    // fetched and is not wanted any more is given up. A page that cannot be had is tried for again.
    void Want(std::uint64_t view, std::vector<PageRequest> pages);

    std::vector<PageAnswer> Take();

    // Until a page has come, the server is found lost, or the time is over.
    void Wait(std::chrono::milliseconds time);
    bool IsLost() const;

private:
    void Run(const std::stop_token& stop);
    void Fetch(std::unique_lock<std::mutex>& lock);
    bool IsWanted() const; // the one that is being fetched

    std::function<void()> m_wake;
    engine::RowReader m_reader; // the thread's
    mutable std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::uint64_t m_view = 0;
    std::vector<PageRequest> m_wanted;
    std::optional<PageAnswer> m_current; // is being fetched
    std::vector<PageAnswer> m_answers;
    bool m_isLost = false;
    bool m_isEnding = false;
    std::jthread m_thread; // last
};

} // namespace engineview
