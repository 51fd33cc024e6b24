#include "logtool/ShippedSession.h"

#include "engine/LogTable.h"
#include "engine/SqlText.h"
#include "msgservice/session/Counter.h"

#include "zemacore/WideText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <optional>

namespace logtool
{

namespace
{

using engine::EngineError;
using engine::SqlValue;
using msgservice::Cursor;
using msgservice::IsSameName;

constexpr std::size_t kComparedBytes = 1000; // of a row's text

// A row of a log of the folder, read by itself.
class FolderLog
{
public:
    explicit FolderLog(const std::string& name) { m_reader.SetFilePath(name.c_str()); }

    // The first row with at least this number; false when there is none.
    bool Find(std::uint32_t number)
    {
        unsigned long found = 0;
        m_index = 0;
        if (m_reader.GetRowCount() == 0 || !m_reader.Find(number, true, found, m_index))
            return false;
        return Load(m_index) && row.time >= number;
    }
    bool Next() { return m_index + 1 < m_reader.GetRowCount() && Load(m_index + 1); }

    CQmLogRow row;
    std::string line; // without its line feed

private:
    bool Load(unsigned long index)
    {
        const char* text = nullptr;
        unsigned long length = 0;
        m_index = index;
        line.clear();
        if (!m_reader.Read(index, text, length, row))
            return false;
        line.assign(text, length);
        if (line.ends_with('\n'))
            line.pop_back();
        return true;
    }

    CQmLogReader m_reader;
    unsigned long m_index = 0;
};

// Whether a line begins with a text of the engine that had `length` bytes in its file. If it has grown since,
// it is compared up to where a character may have been cut: an unfinished line is converted otherwise than
// the whole one.
bool BeginsWith(std::string_view line, std::size_t length, std::string_view shipped)
{
    const std::string text = engine::TableText(line);
    const std::size_t whole = ZEMA::WholeCharacters(text.data(), std::min(text.size(), kComparedBytes));
    const std::string_view begin = std::string_view(text).substr(0, whole);
    if (line.size() == length)
        return shipped.starts_with(begin);
    const auto [l, r] = std::mismatch(begin.begin(), begin.end(), shipped.begin(), shipped.end());
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    return l == begin.end() || r == shipped.end() || !std::all_of(begin.begin(), l, isPlain) ||
           !isPlain(*l) || !isPlain(*r);
}

} // namespace

std::string ShippedSession::NameOf(std::uint32_t count) const
{
    return count == 1 ? m_name : m_name + '-' + std::to_string(count);
}

std::string ShippedSession::Where(const std::string& session) const
{
    return " FROM " + engine::SqlTable(m_table) + " WHERE machine = " + SqlValue(m_machine) +
           " AND session = " + SqlValue(session);
}

bool ShippedSession::Exists(const std::string& session)
{
    return !m_engine.Select("SELECT number" + Where(session) + " LIMIT 1").empty();
}

// How many sessions there are of the folder: numbers are given without gaps, so a few questions find the
// last.
std::uint32_t ShippedSession::CountSessions()
{
    std::uint32_t known = 0;
    std::uint32_t missing = 1;
    while (missing < 0x80000000 && Exists(NameOf(missing)))
    {
        known = missing;
        missing *= 2;
    }
    while (known + 1 < missing)
    {
        const std::uint32_t middle = known + (missing - known) / 2;
        (Exists(NameOf(middle)) ? known : missing) = middle;
    }
    return known;
}

std::vector<ShippedSession::ShippedLog> ShippedSession::ShippedLogs(const std::string& session)
{
    std::vector<ShippedLog> logs;
    for (const std::vector<std::string>& row :
         m_engine.Select("SELECT log, min(number), max(number)" + Where(session) + " GROUP BY log"))
    {
        if (row.size() != 3)
            throw EngineError(EngineError::Remedy::None,
                              "the engine answers other columns than it was asked for");
        logs.push_back({row[0],
                        {engine::NumberIn<std::uint32_t>(row[1]), 0, ""},
                        {engine::NumberIn<std::uint32_t>(row[2]), 0, ""}});
    }
    ReadRows(session, logs);
    return logs;
}

// By their keys, which reads little of the texts.
void ShippedSession::ReadRows(const std::string& session, std::vector<ShippedLog>& logs)
{
    for (ShippedLog& log : logs)
    {
        for (ShippedRow* row : {&log.first, &log.last})
        {
            const engine::Rows found =
                m_engine.Select("SELECT length, substring(text, 1, " + std::to_string(kComparedBytes) + ")" +
                                Where(session) + " AND number = " + std::to_string(row->number) +
                                " AND log = " + SqlValue(log.log) + " ORDER BY length DESC LIMIT 1");
            if (found.size() != 1 || found[0].size() != 2)
                throw EngineError(EngineError::Remedy::TryAgain, "rows have gone from the engine");
            row->length = engine::NumberIn<std::uint32_t>(found[0][0]);
            row->text = found[0][1];
        }
    }
}

// The first row is always there. The last one may have been taken back, by a writer that could not write it
// in full, and may be longer by now.
bool ShippedSession::IsInFolder(const ShippedLog& shipped)
{
    FolderLog log(shipped.log);
    const bool one = shipped.first.number == shipped.last.number;
    if (!log.Find(shipped.first.number) || log.row.time != shipped.first.number ||
        (!one && log.line.size() != shipped.first.length) ||
        !BeginsWith(log.line, shipped.first.length, shipped.first.text))
        return false;
    return one || !log.Find(shipped.last.number) || log.row.time != shipped.last.number ||
           BeginsWith(log.line, shipped.last.length, shipped.last.text);
}

bool ShippedSession::AreInFolder(const std::vector<ShippedLog>& shipped)
{
    std::uint32_t last = 0;
    for (const ShippedLog& log : shipped)
        last = std::max(last, log.last.number);
    const std::optional<std::uint32_t> number = msgservice::LastNumber();
    if (!number) // a writer is at it
        throw EngineError(EngineError::Remedy::TryAgain, "the session's Log.DAT cannot be read");
    return *number >= last && std::all_of(shipped.begin(), shipped.end(), IsInFolder);
}

// The rows up to the last number that the engine has are there, but for those of logs that lag: their first
// row that is not.
Cursor ShippedSession::CursorAfter(const std::vector<ShippedLog>& shipped,
                                   const std::vector<std::string>& logs)
{
    Cursor cursor;
    for (const ShippedLog& log : shipped)
        cursor.number = std::max(cursor.number, log.last.number);
    for (const std::string& name : logs)
    {
        const auto known = std::find_if(shipped.begin(), shipped.end(),
                                        [&](const ShippedLog& log) { return IsSameName(log.log, name); });
        FolderLog log(name);
        std::size_t shown = 0;
        if (!log.Find(known == shipped.end() ? 0 : known->last.number))
            continue;
        if (known != shipped.end() && log.row.time == known->last.number)
        {
            if (log.line.size() > known->last.length)
                shown = known->last.length;
            else if (!log.Next())
                continue;
        }
        if (log.row.time <= cursor.number)
            cursor.lags.push_back({log.row.time, shown, name});
    }
    return cursor;
}

ShipStart ShippedSession::Find(const std::vector<std::string>& logs)
{
    const std::uint32_t count = CountSessions();
    if (count == 0)
        return {NameOf(1), {}};
    const std::vector<ShippedLog> shipped = ShippedLogs(NameOf(count));
    if (!AreInFolder(shipped))
        return {NameOf(count + 1), {}};
    return {NameOf(count), CursorAfter(shipped, logs)};
}

std::string SessionName(const std::string& folder)
{
    std::uint32_t checksum = 2166136261; // FNV-1a
    for (const char c : folder)
        checksum =
            (checksum ^ static_cast<unsigned char>(std::tolower(static_cast<unsigned char>(c)))) * 16777619;
    const std::string path = folder.substr(0, folder.find_last_not_of("\\/") + 1);
    char text[16] = {};
    std::snprintf(text, sizeof(text), "-%08x", static_cast<unsigned>(checksum));
    return path.substr(path.find_last_of("\\/:") + 1) + text;
}

} // namespace logtool
