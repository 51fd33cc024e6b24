#include "engine/LogTable.h"

#include "engine/SqlText.h"
#include "engine/TableSql.h"

#include "zemacore/WideText.h"

#include <algorithm>

namespace engine
{

namespace
{

template <typename Number> void PutNumber(std::string& bytes, Number value)
{
    for (std::size_t i = 0; i < sizeof(value); ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

// Its length comes first, in groups of seven bits.
void PutText(std::string& bytes, std::string_view text)
{
    std::size_t length = text.size();
    for (; length >= 0x80; length >>= 7)
        bytes += static_cast<char>(length | 0x80);
    bytes += static_cast<char>(length);
    bytes += text;
}

// The bytes of the text, or their conversion in `utf8`.
std::string_view Converted(std::string_view text, std::string& utf8)
{
    if (text.size() > kMostText)
        text = text.substr(0, ZEMA::WholeCharacters(text.data(), kMostText));
    return ZEMA::ToUtf8(text.data(), text.size(), utf8) ? std::string_view(utf8) : text;
}

} // namespace

std::string CreateTableSql(const std::string& table)
{
    constexpr std::string_view kName = "log_rows\n";
    std::string sql(kTableSql);
    sql.erase(0, sql.find("CREATE TABLE"));
    sql.erase(sql.find(";\n"));
    return sql.replace(sql.find(kName), kName.size() - 1, SqlTable(table));
}

std::string TableText(std::string_view text)
{
    std::string utf8;
    return std::string(Converted(text, utf8));
}

void RowBatch::Begin(const std::string& machine, const std::string& session)
{
    m_session.clear();
    PutText(m_session, machine);
    PutText(m_session, session);
    m_rows = 0;
    // The system may still read the bytes of a request that was given up.
    m_bytes = std::make_shared<std::string>();
    m_bytes->reserve(kMostBytes + (64 << 10));
}

void RowBatch::Add(const TableRow& row)
{
    std::string& bytes = *m_bytes;
    bytes += m_session;
    PutNumber(bytes, row.number);
    PutText(bytes, row.log);
    PutNumber(bytes, static_cast<std::uint64_t>(row.time));
    PutNumber(bytes, row.depth);
    PutNumber(bytes, row.kind);
    PutNumber(bytes, static_cast<std::uint8_t>(row.header));
    PutNumber(bytes, row.block);
    PutNumber(bytes, row.parent);
    PutNumber(bytes, static_cast<std::uint32_t>(row.text.size()));
    PutText(bytes, Converted(row.text, m_utf8));
    ++m_rows;
}

} // namespace engine
