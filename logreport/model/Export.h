// The export of messages to a file, step by step.
#pragma once

#include "logreport/model/LogStream.h"

#include <optional>
#include <string>

namespace logreport
{

enum class ExportForm
{
    Text,
    Csv,
    Xml
};

// By the last four characters of the path, whatever their case; none for any other than ".txt", ".csv" and
// ".xml". ".log", which the file dialog offers, is deliberately among those.
std::optional<ExportForm> ExportFormOf(const std::string& path);

// The fields of an export: the body alone while only previews are shown, else the fields of the columns from
// left to right, or all of them.
std::vector<std::int32_t> ExportFields(bool onlyPreviews, bool useAllFields,
                                       const std::vector<std::int32_t>& columns);

// Writes the messages from `first` to `last` to a file, which is in its place when all is done and not
// before. What fails is told as a sentence for the user.
class Export
{
public:
    Export(ILogMsgService& service, std::string path, std::vector<std::int32_t> fields, std::uint32_t first,
           std::uint32_t last);

    // Before Begin; what CQmCSVWriter does with it.
    void SetGuardsFormulas(bool guards) { m_guardsFormulas = guards; }

    // Makes the file; false if that is not possible, or if the path has another extension.
    bool Begin();

    // Writes up to `count` messages. Answers true as long as there is more to write; after that the file is
    // in its place, or GetFailure tells why not.
    bool Step(std::uint32_t count);

    double Progress() const; // 0 to 1
    const std::string& GetFailure() const { return m_failure; }

    // How many characters were replaced, because XML does not have them.
    std::uint64_t GetReplacedCount() const { return m_replaced; }

private:
    bool Fail(const std::string& why = "");
    void End();

    ILogMsgService& m_service;
    std::string m_path;
    std::vector<std::int32_t> m_fields;
    std::uint32_t m_first;
    std::uint32_t m_last;
    std::uint64_t m_next; // beyond the last one there may be no id
    std::unique_ptr<ZEMA::FileOutput> m_file;
    std::unique_ptr<CQmLogStream> m_stream; // after the file: it writes its end when it goes
    CQmLogStreamXML* m_xml = nullptr;       // the stream, if it is one
    bool m_guardsFormulas = false;
    std::string m_failure;
    std::uint64_t m_replaced = 0;
};

} // namespace logreport
