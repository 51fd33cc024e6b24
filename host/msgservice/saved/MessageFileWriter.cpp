#include "msgservice/saved/MessageFileWriter.h"

#include "msgservice/SystemPath.h"
#include "msgservice/saved/Schema.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sqlite3.h>
#include <system_error>
#include <thread>

namespace msgservice
{
namespace
{

using Reason = MessageFileError::Reason;

constexpr std::string_view kSavingSuffix = ".saving";
constexpr std::size_t kCommitBytes = 16 * 1024 * 1024;

bool Exists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::exists(SystemPath(path), error);
}

// Takes the place of the only writer, which lasts as long as the transaction.
void BecomeWriter(const Database& database)
{
    const int result = database.TryRun("BEGIN IMMEDIATE");
    if ((result & 0xFF) == SQLITE_BUSY)
        database.Fail(Reason::InUse, "another program is writing to it");
    if (result != SQLITE_OK)
        database.Fail(result);
}

// A file that may be replaced, with nobody else writing to it as long as it is open; nothing if there is
// none. What a killed writer left unfinished beside it is undone and gone: it would be taken for a part of
// the new file.
std::optional<Database> OpenReplaced(const std::string& path)
try
{
    if (!Exists(path))
        return std::nullopt;
    bool isDamaged = false;
    Database database = OpenMessageDatabase(path, Database::Access::Read, isDamaged);
    if (!isDamaged)
    {
        database.Run("PRAGMA journal_mode = DELETE"); // another program may have chosen a log beside the file
        BecomeWriter(database);
    }
    return database;
}
catch (const MessageFileError& error)
{
    std::error_code ignored;
    if (error.Why() != Reason::Foreign)
        throw;
    if (std::filesystem::file_size(SystemPath(path), ignored) == 0)
        return std::nullopt;
    throw MessageFileError(path, Reason::Foreign,
                           "it is no saved file of messages and will not be replaced by one");
}

// Programs that look at every file, such as virus scanners, let go of it after a moment.
std::error_code RenamePatiently(const std::filesystem::path& from, const std::filesystem::path& to)
{
    constexpr int kTries = 10;
    std::error_code error;
    for (int i = 0; i < kTries; ++i)
    {
        std::filesystem::rename(from, to, error);
        if (!error)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return error;
}

void WriteAbout(const Database& database, const SavedAbout& about)
{
    const Statement insert(database, "INSERT INTO about VALUES (?1, ?2)");
    const std::pair<const char*, const std::string*> values[] = {{"title", &about.title},
                                                                 {"program", &about.program},
                                                                 {"version", &about.version},
                                                                 {"origin", &about.origin}};
    for (const auto& [name, value] : values)
    {
        if (value->empty())
            continue;
        std::string scratch;
        const std::string_view utf8 = AsUtf8(*value, scratch);
        sqlite3_bind_text(insert.Handle(), 1, name, -1, nullptr);
        sqlite3_bind_text(insert.Handle(), 2, utf8.data(), static_cast<int>(utf8.size()), nullptr);
        if (const int result = insert.Step(); result != SQLITE_DONE)
            database.Fail(result);
        insert.Reset();
    }
    database.Run("INSERT INTO about VALUES ('saved', strftime('%Y-%m-%dT%H:%M:%SZ', 'now'))");
}

} // namespace

void MessageFileWriter::DeleteUnfinished::operator()(const std::string* path) const
{
    std::error_code ignored;
    std::filesystem::remove(SystemPath(*path, kSavingSuffix), ignored);
    delete path;
}

MessageFileWriter::MessageFileWriter(std::string path, Mode mode, SavedAbout about)
    : m_path(std::move(path)), m_about(std::move(about))
{
    if (mode == Mode::Append && Exists(m_path))
    {
        m_isComplete = true;
        OpenExisting();
        return;
    }
    OpenReplaced(m_path); // so that whoever saves for minutes knows at once
    OpenNew();
    if (mode == Mode::Append)
    {
        Commit();
        Begin();
    }
}

MessageFileWriter::~MessageFileWriter() = default;

void MessageFileWriter::OpenNew()
{
    std::error_code ignored;
    const auto folder = SystemPath(m_path).parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, ignored))
        throw MessageFileError(m_path, Reason::Other, "there is no such folder");

    m_database.emplace(m_path, Database::Access::Overwrite, kSavingSuffix);
    m_unfinished.reset(new std::string(m_path));
    m_database->MakeEmpty();
    m_database->Run("BEGIN");
    MakeSchema(*m_database);
    WriteAbout(*m_database, m_about);
    m_insert = Statement(*m_database, kInsertMessage);
}

void MessageFileWriter::OpenExisting()
{
    bool isDamaged = false;
    Database database = OpenMessageDatabase(m_path, Database::Access::Write, isDamaged);
    // What does not fit into the cache would have to go to the file, and no reader could be in it until the
    // commit.
    database.Run("PRAGMA synchronous = FULL; PRAGMA cache_spill = OFF; PRAGMA ignore_check_constraints = ON");
    BecomeWriter(database);
    const std::int64_t last =
        std::max(database.Number("SELECT max(id) FROM messages"), LastNumberGiven(database));
    m_insert = {};
    m_database = std::move(database);
    m_insert = Statement(*m_database, kInsertMessage);
    m_nextNumber = std::min(last, kLastNumber) + 1;
}

// The transaction for what is added next.
void MessageFileWriter::Begin()
{
    if (m_isComplete && m_unfinished)
        Commit(); // which could not put it in place before
    if (!m_database)
        OpenExisting();
    else
        BecomeWriter(*m_database);
}

void MessageFileWriter::Add(const MessageFields& message)
{
    if (m_failure)
        throw MessageFileError(*m_failure);
    if (!m_database || !m_database->IsInTransaction())
        Begin();
    if (m_nextNumber > kLastNumber)
        m_database->Fail(Reason::Other, "there is no number left for a further message");
    Bind(message);
    const int result = m_insert.Step();
    m_insert.Reset();
    if (result != SQLITE_DONE)
        GiveUp(result);
    ++m_nextNumber;
    ++m_added;
    if (m_unfinished || m_uncommittedBytes < kCommitBytes)
        return;
    try
    {
        Commit();
    }
    catch (const MessageFileError& error)
    {
        if (error.Why() != Reason::InUse)
            throw;
        m_uncommittedBytes = 0; // a reader is slow: try again after as much again
    }
}

void MessageFileWriter::Bind(const MessageFields& message)
{
    sqlite3_stmt* const row = m_insert.Handle();
    const auto bindNumber = [row](int column, std::int64_t number) {
        sqlite3_bind_int64(row, column + 1, number);
    };
    sqlite3_clear_bindings(row);
    bindNumber(0, m_nextNumber);
    bindNumber(kLevelColumn, ValidLevel(message.level));
    if (message.time != kNoTime)
        bindNumber(kTimeColumn, message.time);
    if (message.indent != 0)
        bindNumber(kIndentColumn, message.indent);
    if (message.countsSourceLine)
        bindNumber(kFlagColumn, 1);
    for (std::size_t i = 0; i < kNumberFields.size(); ++i)
        if (const std::int32_t number = message.*kNumberFields[i]; number != 0)
            bindNumber(kFirstNumber + static_cast<int>(i), number);
    for (std::size_t i = 0; i < kTextFields.size(); ++i)
    {
        if ((message.*kTextFields[i]).empty())
            continue;
        const std::string_view text = AsUtf8(message.*kTextFields[i], m_scratch[i]);
        sqlite3_bind_text(row, kFirstText + static_cast<int>(i) + 1, text.data(),
                          static_cast<int>(text.size()),
                          nullptr); // not copied
        m_uncommittedBytes += text.size();
    }
}

void MessageFileWriter::Commit()
{
    if (m_failure)
        throw MessageFileError(*m_failure);
    if (m_added == m_committed && m_isComplete && !m_unfinished)
        return; // costs nothing to who calls it every second
    if (m_database && m_database->IsInTransaction())
        EndTransaction();
    if (m_unfinished)
        PutInPlace();
    m_committed = m_added;
    m_uncommittedBytes = 0;
    // Whoever appends stays the only writer. If another one was quicker, the next Add tells.
    if (m_database)
        m_database->TryRun("BEGIN IMMEDIATE");
}

void MessageFileWriter::EndTransaction()
{
    const std::string number = std::to_string(m_nextNumber - 1);
    int result =
        m_database->TryRun(("INSERT OR REPLACE INTO about VALUES ('last_id', " + number + ")").c_str());
    if (result == SQLITE_OK)
        result = m_database->TryRun("COMMIT");
    if ((result & 0xFF) == SQLITE_BUSY)
        m_database->Fail(Reason::InUse, "another program is reading it");
    if (result != SQLITE_OK)
        GiveUp(result);
    m_isComplete = true;
}

void MessageFileWriter::PutInPlace()
{
    auto replaced = OpenReplaced(m_path);
    const auto close = [&] {
        replaced.reset();
        m_insert = {};
        m_database.reset();
    };
#ifdef _WIN32
    close(); // an open file is neither renamed nor replaced
#endif
    const std::error_code error = RenamePatiently(SystemPath(m_path, kSavingSuffix), SystemPath(m_path));
    close(); // where it can be renamed while it is open, nobody may write to it before it is in place
    if (error)
        throw MessageFileError(m_path, Reason::InUse,
                               "it cannot be replaced, perhaps because it is open in a program: " +
                                   error.message());
    delete m_unfinished.release();
}

void MessageFileWriter::GiveUp(int result)
{
    try
    {
        m_database->Fail(result);
    }
    catch (const MessageFileError& error)
    {
        m_failure = error;
        m_insert = {};
        m_database->TryRun("ROLLBACK");
        throw;
    }
}

} // namespace msgservice
