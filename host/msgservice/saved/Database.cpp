#include "msgservice/saved/Database.h"

#include "zemacore/WideText.h"

#include <new>
#include <sqlite3.h>
#include <system_error>
#include <utility>

namespace msgservice
{
namespace
{

using Reason = MessageFileError::Reason;

constexpr std::size_t kLongestText = 16 * 1024 * 1024;
constexpr std::string_view kCut = " [...]";

// Generous for what we write, and small enough that a hostile file costs little.
constexpr struct
{
    int what;
    int value;
} kLimits[] = {{SQLITE_LIMIT_LENGTH, 256 * 1024 * 1024}, // of a row
               {SQLITE_LIMIT_SQL_LENGTH, 100'000},
               {SQLITE_LIMIT_COLUMN, 100},
               {SQLITE_LIMIT_EXPR_DEPTH, 20},
               {SQLITE_LIMIT_COMPOUND_SELECT, 3},
               {SQLITE_LIMIT_VDBE_OP, 25'000},
               {SQLITE_LIMIT_FUNCTION_ARG, 8},
               {SQLITE_LIMIT_ATTACHED, 0},
               {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 50},
               {SQLITE_LIMIT_TRIGGER_DEPTH, 1}};

// The system's own words for what it answered last, ": " before them.
std::string SystemWords(sqlite3* handle)
{
    const int error = sqlite3_system_errno(handle);
    if (error == 0)
        return "";
    std::string text = std::system_category().message(error);
    text.erase(text.find_last_not_of(" .\r\n") + 1);
    return ": " + text;
}

std::string WhyOf(int result, sqlite3* handle)
{
    if (result == SQLITE_READONLY_ROLLBACK || result == SQLITE_READONLY_RECOVERY)
        return "a program was stopped while it wrote to it; that can only be undone where it may be written "
               "to";
    switch (result & 0xFF)
    {
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return "it may not be written to";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "it is in use by another program";
    case SQLITE_CORRUPT:
        return "it is damaged";
    case SQLITE_NOTADB:
        return "it is no saved file of messages";
    case SQLITE_CANTOPEN:
        return "it cannot be opened" + SystemWords(handle);
    case SQLITE_IOERR:
        return "it cannot be read or written" + SystemWords(handle);
    default:
        return sqlite3_errmsg(handle);
    }
}

Reason ReasonOf(int result)
{
    switch (result & 0xFF)
    {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Reason::InUse;
    case SQLITE_CORRUPT:
        return Reason::Damaged;
    case SQLITE_NOTADB:
        return Reason::Foreign;
    default:
        return Reason::Other;
    }
}

} // namespace

void Database::Close::operator()(sqlite3* handle) const
{
    sqlite3_close(handle);
}

Database::Database(std::string path, Access access, std::string_view suffix) : m_path(std::move(path))
{
    std::string scratch;
    const std::string utf8 = std::string(AsUtf8(m_path, scratch)).append(suffix);
    int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    if (access == Access::ReadOnly || access == Access::ReadDamaged)
        flags |= SQLITE_OPEN_READONLY;
    else
        flags |= SQLITE_OPEN_READWRITE | (access == Access::Overwrite ? SQLITE_OPEN_CREATE : 0);

    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(utf8.c_str(), &handle, flags, nullptr);
    m_handle.reset(handle);
    if (result != SQLITE_OK)
        Fail(result);

    // Set before anything is read: whatever is there now is neither read nor kept.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_RESET_DATABASE, access == Access::Overwrite, nullptr);
    Distrust();
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, access == Access::Read || access == Access::ReadOnly,
                      nullptr);
    if (access == Access::ReadDamaged)
        Run("PRAGMA writable_schema = ON"); // what makes SQLite take such a file, too
    if (access == Access::Overwrite)
        LockForGood();
    else
        SetWait(500);
}

void Database::Distrust() const
{
    for (const int off : {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
                          SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, SQLITE_DBCONFIG_TRUSTED_SCHEMA})
        sqlite3_db_config(Handle(), off, 0, nullptr);
    for (const auto& limit : kLimits)
        sqlite3_limit(Handle(), limit.what, limit.value);
    Run("PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0");
}

void Database::LockForGood() const
{
    const int result = TryRun("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF; BEGIN EXCLUSIVE");
    // Whoever had it may have renamed it before letting go: then it is a complete file by now.
    int moved = 0;
    sqlite3_file_control(Handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    if ((result & 0xFF) == SQLITE_BUSY || moved != 0)
        Fail(Reason::InUse, "another program is saving it");
    if (result != SQLITE_OK)
        Fail(result);
}

void Database::MakeEmpty() const
{
    sqlite3_limit(Handle(), SQLITE_LIMIT_ATTACHED, 1); // VACUUM attaches
    Run("COMMIT; PRAGMA page_size = 8192; VACUUM");
    sqlite3_db_config(Handle(), SQLITE_DBCONFIG_RESET_DATABASE, 0, nullptr);
}

void Database::SetWait(int milliseconds)
{
    sqlite3_busy_timeout(Handle(), milliseconds);
}

int Database::TryRun(const char* sql) const
{
    return sqlite3_exec(Handle(), sql, nullptr, nullptr, nullptr);
}

void Database::Run(const char* sql) const
{
    if (const int result = TryRun(sql); result != SQLITE_OK)
        Fail(result);
}

std::int64_t Database::Number(const char* sql) const
{
    const Statement statement(*this, sql);
    const int result = statement.Step();
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        Fail(result);
    const bool isNumber =
        result == SQLITE_ROW && sqlite3_column_type(statement.Handle(), 0) == SQLITE_INTEGER;
    return isNumber ? sqlite3_column_int64(statement.Handle(), 0) : 0;
}

bool Database::IsInTransaction() const
{
    return sqlite3_get_autocommit(Handle()) == 0;
}

void Database::Fail(int result) const
{
    if ((result & 0xFF) == SQLITE_NOMEM || !Handle())
        throw std::bad_alloc();
    Fail(ReasonOf(result), WhyOf(result, Handle()));
}

void Statement::Finalize::operator()(sqlite3_stmt* handle) const
{
    sqlite3_finalize(handle);
}

Statement::Statement(const Database& database, const char* sql)
{
    sqlite3_stmt* handle = nullptr;
    const int result =
        sqlite3_prepare_v3(database.Handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    m_handle.reset(handle);
    if (result != SQLITE_OK)
        database.Fail(result);
}

int Statement::Step() const
{
    return sqlite3_step(Handle());
}

void Statement::Reset() const
{
    sqlite3_reset(Handle());
}

std::string_view AsUtf8(std::string_view text, std::string& scratch)
{
    if (ZEMA::ToUtf8(text.data(), text.size(), scratch))
        text = scratch;
    if (text.size() <= kLongestText)
        return text;
    std::size_t end = kLongestText - kCut.size();
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end; // not within a character
    scratch = std::string(text.substr(0, end)).append(kCut);
    return scratch;
}

} // namespace msgservice
