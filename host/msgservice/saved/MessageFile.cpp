#include "msgservice/saved/MessageFile.h"

#include "msgservice/saved/Schema.h"

#include <algorithm>
#include <cstring>
#include <sqlite3.h>
#include <utility>

namespace msgservice
{
namespace
{

constexpr std::size_t kPieceBytes = 4 * 1024 * 1024;
constexpr int kTriesAPiece = 100; // to get past damage
constexpr std::int64_t kNoNumber = kLastNumber + 1;

// Whether the result tells of what lies in the file, and not of how it can be reached.
bool IsDamage(int result)
{
    switch (result)
    {
    case SQLITE_IOERR_READ:
    case SQLITE_IOERR_SHORT_READ:
    case SQLITE_IOERR_CORRUPTFS:
        return true;
    default:
        const int primary = result & 0xFF;
        return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB || primary == SQLITE_TOOBIG;
    }
}

// With blanks for NULs, which `scratch` keeps then.
std::string_view TextOf(sqlite3_value* value, std::string& scratch)
{
    if (sqlite3_value_type(value) == SQLITE_NULL)
        return {};
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    const auto length = static_cast<std::size_t>(sqlite3_value_bytes(value));
    if (!text)
        return {}; // no memory for it, which the statement's next step tells
    if (!std::memchr(text, 0, length))
        return {text, length};
    scratch.assign(text, length);
    std::replace(scratch.begin(), scratch.end(), '\0', ' ');
    return scratch;
}

} // namespace

// One Read on its way.
struct MessageFile::Reading
{
    MessageSink& sink;
    const std::uint32_t count; // as many as may be handed on
    std::uint32_t handed = 0;
    std::size_t bytes = 0;  // of these
    std::int64_t after = 0; // the number after the last of these
    Piece piece;

    bool IsFull() const { return handed == count || bytes >= kPieceBytes; }

    // The number in a column: `otherwise` without one, and for what must be a mistake.
    template <typename T> T NumberAt(sqlite3_stmt* row, int column, T otherwise)
    {
        sqlite3_value* const value =
            sqlite3_column_value(row, column); // quicker than asking for each property
        const int type = sqlite3_value_type(value);
        if (type == SQLITE_NULL)
            return otherwise;
        const std::int64_t number = sqlite3_value_int64(value);
        if (type == SQLITE_INTEGER && std::in_range<T>(number))
            return static_cast<T>(number);
        ++piece.wrongValues;
        return otherwise;
    }
};

MessageFile::MessageFile(const std::string& path, Access access)
    : m_database(OpenMessageDatabase(
          path, access == Access::ReadOnly ? Database::Access::ReadOnly : Database::Access::Read,
          m_isDamaged)),
      m_messages(m_database, kSelectMessages), m_number(m_database, kSelectNumber)
{
    static_assert(std::tuple_size_v<decltype(m_scratch)> == kTextFields.size());
}

std::int64_t MessageFile::Count() const
{
    const std::int64_t lastGiven = LastNumberGiven(m_database);
    try
    {
        return std::clamp(m_database.Number("SELECT max(id) FROM messages"), lastGiven, kLastNumber);
    }
    catch (const MessageFileError& error)
    {
        if (error.Why() == MessageFileError::Reason::InUse)
            throw;
        return lastGiven;
    }
}

std::string MessageFile::About(const char* name) const
{
    const Statement statement(m_database, "SELECT value FROM about WHERE name = ?1");
    sqlite3_bind_text(statement.Handle(), 1, name, -1, SQLITE_STATIC);
    std::string scratch;
    return statement.Step() == SQLITE_ROW
               ? std::string(TextOf(sqlite3_column_value(statement.Handle(), 0), scratch))
               : "";
}

MessageFile::Piece MessageFile::Read(std::int64_t first, std::uint32_t count, MessageSink& sink)
{
    // Asked before the messages: what is committed in between is not missing.
    const std::int64_t lastGiven = LastNumberGiven(m_database);
    first = std::max<std::int64_t>(first, 1);
    Reading reading = {.sink = sink, .count = count, .after = first, .piece = {.next = first}};
    Piece& piece = reading.piece;
    for (int tries = 0; !reading.IsFull() && tries < kTriesAPiece; ++tries)
    {
        const std::int64_t begin = piece.next;
        const int result = ReadOn(reading);
        if (result == SQLITE_ROW)
            break;
        piece.atEnd = result == SQLITE_DONE;
        if (piece.atEnd)
            break;
        if (!IsDamage(result))
            m_database.Fail(result);
        m_isDamaged = true;
        if (piece.next == begin) // else the tree is searched again for where it stopped
            piece.next = Skip(begin);
        piece.atEnd = piece.next == kNoNumber;
        if (piece.atEnd)
            break;
    }
    if (piece.atEnd)
        piece.next = std::max(reading.after, lastGiven + 1);
    piece.missing = static_cast<std::uint64_t>(piece.next - first) - reading.handed;
    return piece;
}

// SQLITE_ROW if it stopped because enough has been handed on; else why there is no further message.
int MessageFile::ReadOn(Reading& reading)
{
    const ResetAtEnd reset(m_messages);
    sqlite3_bind_int64(m_messages.Handle(), 1, reading.piece.next);
    while (!reading.IsFull())
    {
        if (const int result = m_messages.Step(); result != SQLITE_ROW)
            return result;
        // SQLite looks for the first one and takes the others as they come. In a damaged tree they may come
        // again, or one with a wrong number may come before the others.
        const std::int64_t number = sqlite3_column_int64(m_messages.Handle(), 0);
        if (number < reading.piece.next || number > kLastNumber)
            return SQLITE_CORRUPT;
        if (const std::int64_t before = FindFrom(reading.piece.next, number); before < number)
        {
            reading.piece.next = before;
            return SQLITE_CORRUPT;
        }
        HandOn(reading, number);
    }
    return SQLITE_ROW;
}

void MessageFile::HandOn(Reading& reading, std::int64_t number)
{
    sqlite3_stmt* const row = m_messages.Handle();
    MessageFields fields;
    fields.time = reading.NumberAt<Time>(row, kTimeColumn, kNoTime);
    const auto level = reading.NumberAt<std::int64_t>(row, kLevelColumn, kInfoLevel);
    fields.level = ValidLevel(level);
    reading.piece.wrongValues += fields.level != level ? 1 : 0;
    fields.indent = reading.NumberAt<std::uint32_t>(row, kIndentColumn, 0);
    fields.countsSourceLine = reading.NumberAt<std::int64_t>(row, kFlagColumn, 0) != 0;
    for (std::size_t i = 0; i < kNumberFields.size(); ++i)
        fields.*kNumberFields[i] = reading.NumberAt<std::int32_t>(row, kFirstNumber + static_cast<int>(i), 0);
    bool hasNuls = false;
    for (std::size_t i = 0; i < kTextFields.size(); ++i)
    {
        const std::string_view text =
            TextOf(sqlite3_column_value(row, kFirstText + static_cast<int>(i)), m_scratch[i]);
        fields.*kTextFields[i] = text;
        reading.bytes += text.size();
        hasNuls = hasNuls || (!text.empty() && text.data() == m_scratch[i].data());
    }
    reading.piece.next = number + 1;
    if (hasNuls && m_isDamaged)
        return; // we save no NULs: they stand for a part of a page that is not there
    reading.sink.Add(fields);
    ++reading.handed;
    reading.after = reading.piece.next;
}

// The first number from this one on that a message has; kNoNumber if there is none or the file is damaged
// there.
std::int64_t MessageFile::NumberFrom(std::int64_t number) const
{
    const ResetAtEnd reset(m_number);
    sqlite3_bind_int64(m_number.Handle(), 1, number);
    const int result = m_number.Step();
    if (result != SQLITE_ROW && result != SQLITE_DONE && !IsDamage(result))
        m_database.Fail(result);
    const std::int64_t found = result == SQLITE_ROW ? sqlite3_column_int64(m_number.Handle(), 0) : kNoNumber;
    return found >= number ? found : kNoNumber;
}

// The number to go on with where the message of this one cannot be read; kNoNumber if there is none.
std::int64_t MessageFile::Skip(std::int64_t unreadable) const
{
    const std::int64_t found = NumberFrom(unreadable);
    return found == unreadable ? unreadable + 1 // only its content cannot be read
                               : FindFrom(unreadable, found);
}

// The first number that can be found after `number`; `otherwise`, which is higher, if there is none before
// that.
std::int64_t MessageFile::FindFrom(std::int64_t number, std::int64_t otherwise) const
{
    // Nobody knows how many messages are in a page that cannot be read: look further and further away, and
    // then for the first one between the last two places.
    std::int64_t best = otherwise;
    std::int64_t bad = number;
    std::int64_t good = number;
    std::int64_t last = number;
    for (std::uint64_t step = 1; step < static_cast<std::uint64_t>(best - number); step *= 2)
    {
        const std::int64_t place = number + static_cast<std::int64_t>(step);
        if (const std::int64_t found = NumberFrom(place); found < best)
        {
            best = found;
            bad = last;
            good = place;
        }
        last = place;
    }
    while (good - bad > 1)
    {
        const std::int64_t middle = bad + (good - bad) / 2;
        const std::int64_t found = NumberFrom(middle);
        (found <= best ? good : bad) = middle;
        best = std::min(best, found);
    }
    return best;
}

} // namespace msgservice
