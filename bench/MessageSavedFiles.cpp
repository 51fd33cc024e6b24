// Messages saved and opened, against the same rows through SQLite alone.
#include "MessageBench.h"

#include "msgservice/saved/MessageFile.h"
#include "msgservice/saved/MessageFileWriter.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace bench
{

namespace
{

using namespace msgservice;

constexpr char kTable[] =
    "create table messages(id integer primary key, timestamp text, time integer, level integer, "
    "level_text text, topic text, who text, source_line integer, body text)";

struct Close
{
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using DatabaseOwner = std::unique_ptr<sqlite3, Close>;
using StatementOwner = std::unique_ptr<sqlite3_stmt, Close>;

void Must(int result, int wanted)
{
    if (result == wanted)
        return;
    std::fprintf(stderr, "bench_messages: SQLite answered %d\n", result);
    std::exit(2);
}

DatabaseOwner Open(const char* path)
{
    sqlite3* database = nullptr;
    Must(sqlite3_open(path, &database), SQLITE_OK);
    return DatabaseOwner(database);
}

StatementOwner Prepare(const DatabaseOwner& database, const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    Must(sqlite3_prepare_v2(database.get(), sql, -1, &statement, nullptr), SQLITE_OK);
    return StatementOwner(statement);
}

void SaveBare(const MessageStore& store, const char* path)
{
    std::remove(path);
    const DatabaseOwner database = Open(path);
    for (const char* const sql : {kTable, "begin"})
        Must(sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr), SQLITE_OK);
    {
        const StatementOwner insert =
            Prepare(database, "insert into messages values(?, ?, ?, ?, ?, ?, ?, ?, ?)");
        sqlite3_stmt* const to = insert.get();
        const auto text = [&](int column, std::string_view value) {
            sqlite3_bind_text(to, column, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
        };
        for (std::uint32_t i = 0; i < store.Count(); ++i)
        {
            const MessageFields message = FieldsOf(store, i);
            sqlite3_bind_int64(to, 1, i + 1);
            text(2, message.timestamp);
            sqlite3_bind_int64(to, 3, message.time);
            sqlite3_bind_int64(to, 4, message.level);
            text(5, message.levelText);
            text(6, message.topic);
            text(7, message.who);
            sqlite3_bind_int64(to, 8, message.sourceLine);
            text(9, message.body);
            Must(sqlite3_step(to), SQLITE_DONE);
            sqlite3_reset(to);
        }
    }
    Must(sqlite3_exec(database.get(), "commit", nullptr, nullptr, nullptr), SQLITE_OK);
}

void Save(const MessageStore& store, const char* path)
{
    std::remove(path);
    MessageFileWriter writer(path, MessageFileWriter::Mode::Replace, {});
    for (std::uint32_t i = 0; i < store.Count(); ++i)
        writer.Add(FieldsOf(store, i));
    writer.Commit();
}

void OpenBare(const char* path, MessageSink& sink)
{
    const DatabaseOwner database = Open(path);
    const StatementOwner rows = Prepare(database, "select * from messages order by id");
    sqlite3_stmt* const from = rows.get();
    const auto text = [&](int column) {
        const auto* const value = reinterpret_cast<const char*>(sqlite3_column_text(from, column));
        return std::string_view(value, static_cast<std::size_t>(sqlite3_column_bytes(from, column)));
    };
    while (sqlite3_step(from) == SQLITE_ROW)
    {
        MessageFields message;
        message.timestamp = text(1);
        message.time = sqlite3_column_int64(from, 2);
        message.level = static_cast<std::uint32_t>(sqlite3_column_int(from, 3));
        message.levelText = text(4);
        message.topic = text(5);
        message.who = text(6);
        message.sourceLine = sqlite3_column_int(from, 7);
        message.body = text(8);
        sink.Add(message);
    }
}

void OpenSaved(const char* path, MessageSink& sink)
{
    MessageFile file(path);
    for (std::int64_t next = 1;;)
    {
        const MessageFile::Piece piece = file.Read(next, 10'000, sink);
        next = piece.next;
        if (piece.atEnd)
            return;
    }
}

} // namespace

void MeasureSavedFiles(const MessageStore& store, unsigned rounds, Report& report)
{
    constexpr char kBare[] = "bench_messages.db";
    constexpr char kSaved[] = "bench_messages.zemalog";
    const auto into = [](auto open, const char* path) {
        return [open, path] {
            const auto opened = MessageStore::Make();
            open(path, *opened);
        };
    };
    const unsigned count = store.Count();
    const Comparison files({{count, [&] { SaveBare(store, kBare); }},
                            {count, [&] { Save(store, kSaved); }},
                            {count, into(OpenBare, kBare)},
                            {count, into(OpenSaved, kSaved)}},
                           rounds, Clock::Processor);
    report.Add({"save a message", files.Time(1), "us", "the same through SQLite alone", files.Ratio(1), 1.3});
    report.Add({"open a saved message", files.Time(3), "us", "the same through SQLite alone",
                files.Ratio(3, 2), 1.3});
    std::remove(kBare);
    std::remove(kSaved);
}

} // namespace bench
