// Which message is which row of a session.
#pragma once

#include "msgservice/store/MessageStore.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace msgservice
{

// Filled by the source that adds the session's rows to a store, which nothing else adds to meanwhile. Both
// questions are answered in constant time, 4 bytes a row. Any thread.
//
// Messages count from 0 in their arrival, rows from 0 in their log.
class SessionRows
{
public:
    struct Row
    {
        std::string log;
        std::uint32_t index = 0;
        bool operator==(const Row&) const = default;
    };

    explicit SessionRows(std::shared_ptr<const MessageStore> store) : m_store(std::move(store)) {}
    const std::shared_ptr<const MessageStore>& Store() const { return m_store; }

    // A new session has begun: the rows of earlier messages are gone.
    void Begin();
    bool HasBegunAgain() const { return m_hasBegunAgain; }

    // The next message to be added is row `index`, or with `goesOn` the rest of it.
    void Add(const std::string& log, std::uint32_t index, bool goesOn);

    // The row of a message: none if it is of an earlier session, if its row was taken back and another one
    // written there, or if it never was a row.
    std::optional<Row> RowOf(std::uint32_t message) const;

    // The message of a row, the first one if it came in parts; logs compare as file names do.
    std::optional<std::uint32_t> MessageOf(std::string_view log, std::uint32_t index) const;

private:
    struct Log
    {
        explicit Log(std::string text) : name(std::move(text)) {}
        std::string name;
        std::vector<std::uint32_t> messages; // by row
    };

    Log* Find(std::string_view name) const; // null if no row of it has come

    std::shared_ptr<const MessageStore> m_store;
    mutable std::mutex m_mutex;
    std::uint32_t m_begin = 0; // the session's first message
    std::atomic<bool> m_hasBegunAgain = false;
    std::vector<std::unique_ptr<Log>> m_logs;
};

} // namespace msgservice
