// Rows as syslog messages (RFC 5424).
#include "logtool/ExportForm.h"
#include "logtool/ExportText.h"

#include "msgservice/session/SessionSource.h"

namespace logtool
{

namespace
{

using sessionwalk::kNoBlock;
using sessionwalk::WalkedRow;

constexpr int kUserFacility = 1;

int Severity(QmLogBlockKind kind)
{
    switch (kind)
    {
    case kErrorKind:
        return 3; // err
    case kNoticeKind:
        return 5; // notice
    case kDetailKind:
        return 7; // debug
    default:
        return 6; // info
    }
}

// A field of the head: visible ASCII, of bounded length. What does not fit is whole in the structured data.
std::string HeadField(const std::string& text, std::size_t most)
{
    std::string field = text.substr(0, most);
    for (char& character : field)
        if (const auto code = static_cast<unsigned char>(character); code <= ' ' || code >= 0x7F)
            character = '_';
    return field.empty() ? "-" : field;
}

class SyslogForm : public ExportForm
{
public:
    SyslogForm(const ExportSource& source, Framing framing) : m_source(source), m_framing(framing) {}

    void SetSource(const ExportSource& source, ExportBuffer&) override { m_source = source; }

    void Row(const WalkedRow& row, ExportBuffer& to) override
    {
        m_message.clear();
        PutHead(row);
        PutData(row);
        PutText(row.text.substr(row.skip));
        if (m_framing == Framing::OctetCounting)
            to.Append(std::to_string(m_message.size()) + ' ');
        else
            m_message += '\n';
        to.Append(m_message);
    }

private:
    void PutHead(const WalkedRow& row)
    {
        m_message += '<';
        m_message += std::to_string(8 * kUserFacility + Severity(row.kind));
        m_message += ">1 ";
        m_message += row.time ? UtcText(*row.time, 6) : "-";
        m_message.append(" ").append(HeadField(m_source.machine, 255));
        m_message.append(" ").append(HeadField(m_source.session, 48));
        m_message.append(" - ").append(HeadField(*row.name, 32));
    }

    // The identifier's number is the one that is reserved for examples, so nobody else's.
    void PutData(const WalkedRow& row)
    {
        m_message += " [row@32473";
        PutValue("session", m_source.SessionName());
        PutValue("log", *row.name);
        PutValue("number", std::to_string(row.number));
        PutValue("depth", std::to_string(row.depth));
        PutValue("kind", KindText(row.kind));
        PutValue("header", row.isHeader ? "true" : "false");
        if (row.block != kNoBlock)
            PutValue("block", std::to_string(row.block));
        if (row.parent != kNoBlock)
            PutValue("parent", std::to_string(row.parent));
        if (row.skip > 0)
            PutValue("skip", std::to_string(row.skip));
        m_message += ']';
    }

    void PutValue(const char* name, const std::string& value)
    {
        m_message.append(" ").append(name).append("=\"");
        AppendSyslog(m_message, value, "\"\\]");
        m_message += '"';
    }

    // A text beyond ASCII begins with the mark that says it is UTF-8.
    void PutText(std::string_view text)
    {
        if (text.empty())
            return;
        m_message += ' ';
        const std::size_t begin = m_message.size();
        AppendSyslog(m_message, text);
        for (std::size_t i = begin; i < m_message.size(); ++i)
        {
            if (static_cast<unsigned char>(m_message[i]) < 0x80)
                continue;
            m_message.insert(begin, "\xEF\xBB\xBF");
            return;
        }
    }

    ExportSource m_source;
    Framing m_framing;
    std::string m_message;
};

} // namespace

std::unique_ptr<ExportForm> MakeSyslogForm(const ExportSource& source, Framing framing)
{
    return std::make_unique<SyslogForm>(source, framing);
}

} // namespace logtool
