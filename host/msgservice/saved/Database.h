// SQLite as saved files need it: connections and statements that release themselves, and what went wrong in
// words.
#pragma once

#include "msgservice/saved/MessageFileError.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace msgservice
{

// A connection to one file. It trusts nothing that the file brings: triggers and views are off, sizes are
// limited. Operations throw MessageFileError, and std::bad_alloc. One thread at a time.
class Database
{
public:
    enum class Access
    {
        ReadOnly,    // never changes the file, so that it cannot undo what a killed writer left unfinished
        Read,        // may undo that
        ReadDamaged, // read-only; takes a file of another length than its beginning says for what is there
        Write,       // of a file that exists
        Overwrite // makes the file or takes one that is there, which nobody else can open then; for MakeEmpty
    };

    // `path` is UTF-8 or in the system's code page. Of an existing file nothing is read yet. The file is
    // `path` and `suffix`; errors name the path alone.
    Database(std::string path, Access access, std::string_view suffix = {});

    const std::string& Path() const { return m_path; }

    // Drops all that an `Overwrite` has found. What is written from then on cannot be rolled back.
    void MakeEmpty() const;

    // Waits so long for another program that is in its way; at first half a second.
    void SetWait(int milliseconds);

    void Run(const char* sql) const;
    int TryRun(const char* sql) const; // the result code
    std::int64_t Number(
        const char* sql) const; // of the first row; 0 if there is none or if it holds no number
    bool IsInTransaction() const;

    [[noreturn]] void Fail(int result) const;
    [[noreturn]] void Fail(MessageFileError::Reason reason, const std::string& why) const
    {
        throw MessageFileError(m_path, reason, why);
    }
    sqlite3* Handle() const { return m_handle.get(); }

private:
    struct Close
    {
        void operator()(sqlite3* handle) const;
    };

    void Distrust() const;
    void LockForGood() const;

    std::string m_path;
    std::unique_ptr<sqlite3, Close> m_handle;
};

// A prepared statement. Its parameters and columns are used through its handle. The connection must outlive
// it.
class Statement
{
public:
    Statement() = default;
    Statement(const Database& database, const char* sql);

    int Step() const; // whether there is a row, or what went wrong: a result code
    void Reset() const;
    sqlite3_stmt* Handle() const { return m_handle.get(); }

private:
    struct Finalize
    {
        void operator()(sqlite3_stmt* handle) const;
    };

    std::unique_ptr<sqlite3_stmt, Finalize> m_handle;
};

// Ends what a statement has begun, however the block is left: until then it keeps writers from committing.
class ResetAtEnd
{
public:
    explicit ResetAtEnd(const Statement& statement) : m_statement(statement) {}
    ~ResetAtEnd() { m_statement.Reset(); }
    ResetAtEnd(const ResetAtEnd&) = delete;
    ResetAtEnd& operator=(const ResetAtEnd&) = delete;

private:
    const Statement& m_statement;
};

// The text itself if it is UTF-8, else `scratch` with the text in UTF-8. Texts beyond 16 MB are cut, with a
// mark.
std::string_view AsUtf8(std::string_view text, std::string& scratch);

} // namespace msgservice
