// Messages written one by one, as text, CSV or XML.
#pragma once

#include "logreport/model/FieldText.h"
#include "qmcommandline/QmCSVWriter.h"
#include "qmcommon/QmReportWriterXML.h"
#include "zemacore/FileIOHelper.h"

#include <iosfwd>
#include <memory>
#include <vector>

// Writes messages of a service with the fields that were chosen, in their order. Service and output are not
// owned and outlive the stream, which writes its end when it goes.
class CQmLogStream
{
public:
    virtual ~CQmLogStream();

    // A message that the service does not have is left out.
    virtual void WriteMsg(std::uint32_t id) = 0;

protected:
    // `fields` are ILogMsgDataKind.
    CQmLogStream(ILogMsgService& service, std::vector<std::int32_t> fields);
    CQmLogStream(const CQmLogStream&) = delete;
    CQmLogStream& operator=(const CQmLogStream&) = delete;

    ILogMsgService& m_service;
    std::vector<std::int32_t> m_fields;
    logreport::FieldText m_text;
};

// The values of a message with tabs between them, and a line feed. Nothing is quoted: line ends within a body
// stay.
class CQmLogStreamText : public CQmLogStream
{
public:
    enum class Encoding
    {
        AsGiven,
        Utf8 // texts in the code page become UTF-8
    };
    CQmLogStreamText(ILogMsgService& service, ZEMA::IOutput& output, std::vector<std::int32_t> fields,
                     Encoding encoding = Encoding::AsGiven);
    CQmLogStreamText(ILogMsgService& service, std::ostream& output, std::vector<std::int32_t> fields);
    void WriteMsg(std::uint32_t id) override;

private:
    ZEMA::IOutput* m_output = nullptr; // one of the two
    std::ostream* m_stream = nullptr;
    Encoding m_encoding = Encoding::AsGiven;
    std::string m_line;
    std::string m_utf8;
};

// A row of CSV for each message (QmCSVWriter.h), without a row of names.
class CQmLogStreamCSV : public CQmLogStream
{
public:
    enum class Mark
    {
        None,
        ByteOrder // in front, for files
    };
    CQmLogStreamCSV(ILogMsgService& service, ZEMA::IOutput& output, std::vector<std::int32_t> fields,
                    Mark mark);
    void WriteMsg(std::uint32_t id) override;
    void SetGuardsFormulas(bool guards) { m_writer.SetGuardsFormulas(guards); }

private:
    CQmCSVWriter m_writer;
};

// An element "Message" for each message (QmReportWriterXML.h).
class CQmLogStreamXML : public CQmLogStream
{
public:
    CQmLogStreamXML(ILogMsgService& service, ZEMA::IOutput& output, const std::vector<std::int32_t>& fields);
    void WriteMsg(std::uint32_t id) override;

    // How many characters XML does not have, and were replaced.
    std::uint64_t GetReplacedCount() const { return m_writer.GetReplacedCount(); }

private:
    CQmReportWriterXML m_writer;
};
