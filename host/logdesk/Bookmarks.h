// Rows that the user has marked, by their sequence numbers, and how they are remembered. No window system.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logdesk
{

// In ascending order, each once.
class Bookmarks
{
public:
    static constexpr std::size_t kMost = 2000; // a line of the profile holds them

    bool Has(std::uint32_t number) const;

    // Sets or removes one. False, and nothing changes, if there are kMost.
    bool Toggle(std::uint32_t number);

    // The nearest one after or before `number`, and around the end. Returns nothing if there are no
    // bookmarks.
    std::optional<std::uint32_t> Next(std::uint32_t number) const;
    std::optional<std::uint32_t> Previous(std::uint32_t number) const;

    const std::vector<std::uint32_t>& Numbers() const { return m_numbers; }
    bool operator==(const Bookmarks&) const = default;

    // "7 18342", and the numbers that such a text has, whatever else is in it.
    std::string Text() const;
    static Bookmarks FromText(std::string_view text);

private:
    std::vector<std::uint32_t> m_numbers;
};

// The text that the logs of a session begin with, so that a session which begins later in the same folder is
// told from it. Only lengths and checksums are kept.
class SessionMark
{
public:
    static constexpr std::size_t kMostBytes = 4096; // of a log
    static constexpr std::size_t kMostLogs = 5;

    // Up to `size` bytes from the beginning of a log's text, by its place among the logs.
    using ReadText = std::function<std::string(std::size_t log, std::size_t size)>;

    static SessionMark Of(const ReadText& read);

    // Whether the logs still begin with that text, though they may have grown. False for an empty one.
    bool IsOf(const ReadText& read) const;

    // "120:00ab34cd56ef7890 ..." a log each; nothing for any other text.
    std::string Text() const;
    static std::optional<SessionMark> FromText(std::string_view text);

private:
    struct Beginning
    {
        std::size_t size = 0;
        std::uint64_t sum = 0;
    };
    std::vector<Beginning> m_logs = std::vector<Beginning>(kMostLogs);
};

// The bookmarks of the sessions that had some last, as lines of the profile: "C:\Logs|mark|numbers".
class BookmarkStore
{
public:
    static constexpr std::size_t kMostSessions = 20;

    struct Entry
    {
        std::string folder;
        SessionMark mark;
        Bookmarks bookmarks;
    };

    // Lines that are none of ours are left out.
    explicit BookmarkStore(const std::vector<std::string>& lines);
    std::vector<std::string> Lines() const; // the most recent first

    // Null if the folder has none. Folders that differ in case only are one.
    const Entry* Find(const std::string& folder) const;

    // In place of the folder's earlier ones; without bookmarks the folder has none then.
    void Put(const Entry& entry);

private:
    std::vector<Entry> m_entries;
};

} // namespace logdesk
