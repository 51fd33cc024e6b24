// The engine's table of session rows: how it is made and how rows travel into it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace engine
{

// What makes the table; `table` as in SqlTable.
std::string CreateTableSql(const std::string& table);

// The table of who names none.
constexpr char kUsualTable[] = "log_rows";

// What a time in 100 ns since the beginning of 1601 has more than one of the table.
constexpr std::int64_t kStartOf1970 = 116'444'736'000'000'000;

// The columns that RowBatch fills.
constexpr char kRowColumns[] =
    "machine, session, number, log, time, depth, kind, header, block, parent, length, text";

// docs/log_rows.sql tells the columns.
struct TableRow
{
    std::uint32_t number = 0;
    std::string_view log;
    std::int64_t time = 0;
    std::uint8_t depth = 0;
    std::uint32_t kind = 0;
    bool header = false;
    std::uint32_t block = 0;
    std::uint32_t parent = 0;
    std::string_view text; // as in its file, without the line feed
};

// A text as the table has it: UTF-8. Bytes beyond `kMostText` are left out.
constexpr std::size_t kMostText = 64 << 20;
std::string TableText(std::string_view text);

// Rows of one session for Engine::Insert. The same rows make the same bytes.
class RowBatch
{
public:
    // How much goes in one insertion. The engine merges few large ones with less work than many small ones,
    // and the sender holds one of them.
    static constexpr std::size_t kMostRows = 50'000;
    static constexpr std::size_t kMostBytes = 8 << 20; // the last row may go beyond

    void Begin(const std::string& machine, const std::string& session);
    void Add(const TableRow& row);

    bool IsFull() const { return m_rows >= kMostRows || m_bytes->size() >= kMostBytes; }
    std::size_t RowCount() const { return m_rows; }
    std::shared_ptr<const std::string> Bytes() const { return m_bytes; }

private:
    std::string m_session; // the two columns that all rows share
    std::size_t m_rows = 0;
    std::shared_ptr<std::string> m_bytes;
    std::string m_utf8;
};

} // namespace engine
