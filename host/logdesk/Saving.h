// Saves messages on a thread of its own.
#pragma once

#include "msgservice/saved/MessageFileWriter.h"
#include "msgservice/store/MessageStore.h"
#include "msgservice/view/Work.h"

#include <string>
#include <thread>

namespace logdesk
{

// The messages of a store from number `first` to before `end`, as they arrived, become a saved file. What was
// at its path stays whole until the new one is complete, and for good if it is given up or fails.
class Saving
{
public:
    Saving(std::shared_ptr<const msgservice::MessageStore> store, std::uint32_t first, std::uint32_t end,
           std::string path, msgservice::SavedAbout about);
    ~Saving(); // gives it up if it is not done
    Saving(const Saving&) = delete;
    Saving& operator=(const Saving&) = delete;

    bool IsDone() const { return m_isDone; }
    double Progress() const { return m_work.Progress(); } // 0 to 1

    void Cancel() { m_work.Cancel(); }

    // What to tell the user; waits until it is done.
    const std::string& Outcome();

private:
    std::string Save(const msgservice::MessageStore& store, std::uint32_t first, std::uint32_t end,
                     const std::string& path, const msgservice::SavedAbout& about);

    msgservice::Work m_work;
    std::string m_outcome;
    std::atomic<bool> m_isDone = false;
    std::jthread m_thread;
};

} // namespace logdesk
