#include "qmcommandline/QmCSVWriter.h"

#include "zemacore/FindBytes.h"
#include "zemacore/WideText.h"

#include <string_view>
#include <utility>

namespace
{

bool NeedsQuotes(std::string_view text)
{
    const char* const end = text.data() + text.size();
    return ZEMA::FindBytes<0, ',', '"', '\r', '\n'>(text.data(), end) != end;
}

// "-5" or "+0.5".
bool IsNumber(std::string_view text)
{
    return text.size() > 1 && text.find_first_not_of("0123456789.", 1) == std::string_view::npos;
}

bool IsFormula(std::string_view text)
{
    return !text.empty() && std::string_view("=+-@").find(text[0]) != std::string_view::npos &&
           !(text[0] != '=' && text[0] != '@' && IsNumber(text));
}

} // namespace

void CQmCSVWriter::WriteMark()
{
    m_output.Write("\xEF\xBB\xBF", 3);
}

CQmCSVWriter::Row::Row(CQmCSVWriter& writer) : m_writer(writer)
{
    m_writer.m_row.clear();
}

CQmCSVWriter::Row::~Row()
{
    m_writer.m_row += "\r\n";
    m_writer.m_output.Write(m_writer.m_row.data(), m_writer.m_row.size());
}

void CQmCSVWriter::Row::WriteValue(const char* value, std::size_t length)
{
    std::string& row = m_writer.m_row;
    if (!std::exchange(m_isFirst, false))
        row += ',';
    std::string_view text(value, length);
    if (ZEMA::ToUtf8(value, length, m_writer.m_utf8))
        text = m_writer.m_utf8;
    const bool isGuarded = m_writer.m_guardsFormulas && IsFormula(text);
    if (!NeedsQuotes(text))
    {
        row.append(isGuarded ? "'" : "").append(text);
        return;
    }
    row.append(isGuarded ? "\"'" : "\"");
    for (std::size_t quote; (quote = text.find('"')) != std::string_view::npos; text.remove_prefix(quote + 1))
        row.append(text.substr(0, quote)).append("\"\"");
    row.append(text) += '"';
}
