#include "msgservice/saved/Schema.h"

#include "msgservice/SystemPath.h"

#include <filesystem>
#include <sqlite3.h>

namespace msgservice
{
namespace
{

using Reason = MessageFileError::Reason;

// What is short comes first, and the body last, so that looking for messages reads little of long ones.
constexpr char kMessagesTable[] = R"(CREATE TABLE messages (
  id INTEGER PRIMARY KEY,
  timestamp TEXT,
  time INTEGER,
  level INTEGER,
  level_text TEXT,
  topic TEXT,
  error_number INTEGER,
  module TEXT,
  runtime_file TEXT,
  line INTEGER,
  runtime_context TEXT,
  source TEXT,
  source_line INTEGER,
  source_column INTEGER,
  counts_source_line INTEGER,
  who TEXT,
  indent INTEGER,
  text1 TEXT,
  text2 TEXT,
  body TEXT
))";
constexpr char kAboutTable[] = "CREATE TABLE about (name TEXT PRIMARY KEY, value) WITHOUT ROWID";

#define MESSAGE_COLUMNS                                                                                      \
    "id, time, level, indent, counts_source_line, error_number, line, source_line, source_column, "          \
    "timestamp, "                                                                                            \
    "level_text, topic, module, runtime_file, runtime_context, source, who, text1, text2, body"

bool HasTable(const Database& database, const char* name, const char* sql)
{
    const Statement statement(database,
                              "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 AND sql = ?2");
    sqlite3_bind_text(statement.Handle(), 1, name, -1, SQLITE_STATIC);
    sqlite3_bind_text(statement.Handle(), 2, sql, -1, SQLITE_STATIC);
    const int result = statement.Step();
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        database.Fail(result);
    return result == SQLITE_ROW;
}

// The tables must be exactly ours: of others we would not know what reading or writing them does.
void CheckSchema(const Database& database)
{
    if (database.Number("PRAGMA application_id") != kApplicationId)
        database.Fail(Reason::Foreign, database.Number("PRAGMA page_count") == 0
                                           ? "it is empty"
                                           : "it is another program's database");
    if (const std::int64_t version = database.Number("PRAGMA user_version"); version > kFormatVersion)
        database.Fail(Reason::Other, "it was saved by a newer version of the program (format " +
                                         std::to_string(version) + "; this one knows " +
                                         std::to_string(kFormatVersion) + ")");
    if (!HasTable(database, "messages", kMessagesTable) || !HasTable(database, "about", kAboutTable))
        database.Fail(Reason::Damaged, "it is damaged: what it says of its tables is not what was saved");
}

void CheckIsFile(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(SystemPath(path), error);
    if (!std::filesystem::exists(status))
        throw MessageFileError(path, Reason::Other, "there is no such file");
    if (std::filesystem::is_directory(status))
        throw MessageFileError(path, Reason::Other, "it is a folder");
}

} // namespace

const char kInsertMessage[] =
    "INSERT INTO messages (" MESSAGE_COLUMNS ") VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
const char kSelectMessages[] =
    "SELECT " MESSAGE_COLUMNS " FROM messages NOT INDEXED WHERE id >= ?1 ORDER BY id";
const char kSelectNumber[] = "SELECT id FROM messages NOT INDEXED WHERE id >= ?1 ORDER BY id LIMIT 1";

void MakeSchema(const Database& database)
{
    database.Run(kMessagesTable);
    database.Run(kAboutTable);
    database.Run(("PRAGMA application_id = " + std::to_string(kApplicationId)).c_str());
    database.Run(("PRAGMA user_version = " + std::to_string(kFormatVersion)).c_str());
}

Database OpenMessageDatabase(const std::string& path, Database::Access access, bool& isDamaged)
{
    CheckIsFile(path);
    isDamaged = false;
    try
    {
        Database database(path, access);
        CheckSchema(database);
        return database;
    }
    catch (const MessageFileError& error)
    {
        if (error.Why() != Reason::Damaged || access == Database::Access::Write)
            throw;
    }
    isDamaged = true;
    Database database(path, Database::Access::ReadDamaged);
    CheckSchema(database);
    return database;
}

std::int64_t LastNumberGiven(const Database& database)
{
    try
    {
        const std::int64_t number = database.Number("SELECT value FROM about WHERE name = 'last_id'");
        return number >= 0 && number <= kLastNumber ? number : 0;
    }
    catch (const MessageFileError& error)
    {
        if (error.Why() == Reason::InUse)
            throw;
        return 0;
    }
}

} // namespace msgservice
