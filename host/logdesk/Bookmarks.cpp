#include "logdesk/Bookmarks.h"

#include "logdesk/Notices.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace logdesk
{

namespace
{

// The text up to `end`, which is taken away with it.
std::string_view TakeWord(std::string_view& text, char end)
{
    const std::size_t size = std::min(text.find(end), text.size());
    const std::string_view word = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    return word;
}

template <typename Integer> bool ReadInteger(std::string_view text, Integer& value, int base)
{
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value, base);
    return result.ec == std::errc() && result.ptr == end;
}

// FNV-1a.
std::uint64_t Checksum(std::string_view text)
{
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char character : text)
        sum = (sum ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    return sum;
}

} // namespace

// ---- Bookmarks

bool Bookmarks::Has(std::uint32_t number) const
{
    return std::binary_search(m_numbers.begin(), m_numbers.end(), number);
}

bool Bookmarks::Toggle(std::uint32_t number)
{
    const auto at = std::lower_bound(m_numbers.begin(), m_numbers.end(), number);
    if (at != m_numbers.end() && *at == number)
        m_numbers.erase(at);
    else if (m_numbers.size() < kMost)
        m_numbers.insert(at, number);
    else
        return false;
    return true;
}

std::optional<std::uint32_t> Bookmarks::Next(std::uint32_t number) const
{
    if (m_numbers.empty())
        return {};
    const auto at = std::upper_bound(m_numbers.begin(), m_numbers.end(), number);
    return at == m_numbers.end() ? m_numbers.front() : *at;
}

std::optional<std::uint32_t> Bookmarks::Previous(std::uint32_t number) const
{
    if (m_numbers.empty())
        return {};
    const auto at = std::lower_bound(m_numbers.begin(), m_numbers.end(), number);
    return at == m_numbers.begin() ? m_numbers.back() : *(at - 1);
}

std::string Bookmarks::Text() const
{
    std::string text;
    for (const std::uint32_t number : m_numbers)
        text += (text.empty() ? "" : " ") + std::to_string(number);
    return text;
}

Bookmarks Bookmarks::FromText(std::string_view text)
{
    Bookmarks bookmarks;
    while (!text.empty())
    {
        std::uint32_t number = 0;
        if (ReadInteger(TakeWord(text, ' '), number, 10) && !bookmarks.Has(number))
            bookmarks.Toggle(number);
    }
    return bookmarks;
}

// ---- SessionMark

SessionMark SessionMark::Of(const ReadText& read)
{
    SessionMark mark;
    for (std::size_t log = 0; log < kMostLogs; ++log)
    {
        const std::string text = read(log, kMostBytes);
        mark.m_logs[log] = {text.size(), Checksum(text)};
    }
    return mark;
}

bool SessionMark::IsOf(const ReadText& read) const
{
    bool isAny = false;
    for (std::size_t log = 0; log < kMostLogs; ++log)
    {
        const Beginning& known = m_logs[log];
        if (known.size == 0)
            continue;
        isAny = true;
        const std::string text = read(log, known.size);
        if (text.size() != known.size || Checksum(text) != known.sum)
            return false;
    }
    return isAny;
}

std::string SessionMark::Text() const
{
    std::string text;
    for (const Beginning& log : m_logs)
    {
        std::array<char, 40> word = {};
        std::snprintf(word.data(), word.size(), "%u:%016llx", static_cast<unsigned>(log.size),
                      static_cast<unsigned long long>(log.sum));
        text += (text.empty() ? "" : " ") + std::string(word.data());
    }
    return text;
}

std::optional<SessionMark> SessionMark::FromText(std::string_view text)
{
    SessionMark mark;
    for (Beginning& log : mark.m_logs)
    {
        std::string_view word = TakeWord(text, ' ');
        if (!ReadInteger(TakeWord(word, ':'), log.size, 10) || log.size > kMostBytes ||
            !ReadInteger(word, log.sum, 16))
            return {};
    }
    return text.empty() ? std::optional(mark) : std::nullopt;
}

// ---- BookmarkStore

BookmarkStore::BookmarkStore(const std::vector<std::string>& lines)
{
    for (const std::string& line : lines)
    {
        std::string_view rest = line;
        const std::string folder(TakeWord(rest, '|'));
        const std::optional<SessionMark> mark = SessionMark::FromText(TakeWord(rest, '|'));
        const Bookmarks bookmarks = Bookmarks::FromText(rest);
        if (!folder.empty() && mark && !bookmarks.Numbers().empty() && !Find(folder) &&
            m_entries.size() < kMostSessions)
            m_entries.push_back({folder, *mark, bookmarks});
    }
}

std::vector<std::string> BookmarkStore::Lines() const
{
    std::vector<std::string> lines;
    for (const Entry& entry : m_entries)
        lines.push_back(entry.folder + '|' + entry.mark.Text() + '|' + entry.bookmarks.Text());
    return lines;
}

const BookmarkStore::Entry* BookmarkStore::Find(const std::string& folder) const
{
    for (const Entry& entry : m_entries)
        if (IsSameLog(entry.folder, folder))
            return &entry;
    return nullptr;
}

void BookmarkStore::Put(const Entry& entry)
{
    std::erase_if(m_entries, [&](const Entry& known) { return IsSameLog(known.folder, entry.folder); });
    if (entry.bookmarks.Numbers().empty())
        return;
    m_entries.insert(m_entries.begin(), entry);
    if (m_entries.size() > kMostSessions)
        m_entries.resize(kMostSessions);
}

} // namespace logdesk
