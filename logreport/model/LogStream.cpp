#include "logreport/model/LogStream.h"

#include "zemacore/WideText.h"

#include <ostream>
#include <utility>

namespace
{

std::vector<std::string> NamesOf(const std::vector<std::int32_t>& fields)
{
    std::vector<std::string> names;
    names.reserve(fields.size());
    for (const std::int32_t field : fields)
        names.emplace_back(LogMsgDataKindText(field));
    return names;
}

} // namespace

CQmLogStream::CQmLogStream(ILogMsgService& service, std::vector<std::int32_t> fields)
    : m_service(service), m_fields(std::move(fields))
{
}

CQmLogStream::~CQmLogStream() = default;

CQmLogStreamText::CQmLogStreamText(ILogMsgService& service, ZEMA::IOutput& output,
                                   std::vector<std::int32_t> fields, Encoding encoding)
    : CQmLogStream(service, std::move(fields)), m_output(&output), m_encoding(encoding)
{
}

CQmLogStreamText::CQmLogStreamText(ILogMsgService& service, std::ostream& output,
                                   std::vector<std::int32_t> fields)
    : CQmLogStream(service, std::move(fields)), m_stream(&output)
{
}

void CQmLogStreamText::WriteMsg(std::uint32_t id)
{
    const ILogMsgData* const message = m_service.GetMsg(id);
    if (!message)
        return;
    m_line.clear();
    for (const std::int32_t field : m_fields)
    {
        std::string_view text = m_text.Of(*message, field);
        if (m_encoding == Encoding::Utf8 && ZEMA::ToUtf8(text.data(), text.size(), m_utf8))
            text = m_utf8;
        m_line.append(text) += '\t';
    }
    if (!m_line.empty())
        m_line.pop_back();
    m_line += '\n';
    if (m_output)
        m_output->Write(m_line.data(), m_line.size());
    else
        m_stream->write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
}

CQmLogStreamCSV::CQmLogStreamCSV(ILogMsgService& service, ZEMA::IOutput& output,
                                 std::vector<std::int32_t> fields, Mark mark)
    : CQmLogStream(service, std::move(fields)), m_writer(output)
{
    if (mark == Mark::ByteOrder)
        m_writer.WriteMark();
}

void CQmLogStreamCSV::WriteMsg(std::uint32_t id)
{
    const ILogMsgData* const message = m_service.GetMsg(id);
    if (!message)
        return;
    CQmCSVWriter::Row row(m_writer);
    for (const std::int32_t field : m_fields)
    {
        const std::string_view text = m_text.Of(*message, field);
        row.WriteValue(text.data(), text.size());
    }
}

CQmLogStreamXML::CQmLogStreamXML(ILogMsgService& service, ZEMA::IOutput& output,
                                 const std::vector<std::int32_t>& fields)
    : CQmLogStream(service, fields), m_writer(output, "Messages", NamesOf(fields))
{
}

void CQmLogStreamXML::WriteMsg(std::uint32_t id)
{
    const ILogMsgData* const message = m_service.GetMsg(id);
    if (!message)
        return;
    const std::unique_ptr<IReport::Row> row = m_writer.OpenRow("Message");
    for (const std::int32_t field : m_fields)
    {
        const std::string_view text = m_text.Of(*message, field);
        row->WriteChild(LogMsgDataKindText(field), text.data(), text.size());
    }
}
