#include "logreport/model/Export.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace logreport
{

std::optional<ExportForm> ExportFormOf(const std::string& path)
{
    std::string extension = path.substr(path.size() - std::min<std::size_t>(path.size(), 4));
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
        return static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A') : letter);
    });
    const std::pair<const char*, ExportForm> forms[] = {
        {".txt", ExportForm::Text}, {".csv", ExportForm::Csv}, {".xml", ExportForm::Xml}};
    for (const auto& [text, form] : forms)
        if (extension == text)
            return form;
    return std::nullopt;
}

std::vector<std::int32_t> ExportFields(bool onlyPreviews, bool useAllFields,
                                       const std::vector<std::int32_t>& columns)
{
    if (onlyPreviews)
        return {kLogMsgBody};
    if (!useAllFields)
        return columns;
    std::vector<std::int32_t> fields(kLogMsgKindCount);
    std::iota(fields.begin(), fields.end(), 0);
    return fields;
}

Export::Export(ILogMsgService& service, std::string path, std::vector<std::int32_t> fields,
               std::uint32_t first, std::uint32_t last)
    : m_service(service), m_path(std::move(path)), m_fields(std::move(fields)), m_first(first), m_last(last),
      m_next(first), m_file(ZEMA::FileIOHelper::getWriter(m_path.c_str()))
{
}

bool Export::Begin()
{
    if (!m_file->Open())
        return Fail();
    const std::optional<ExportForm> form = ExportFormOf(m_path);
    if (!form)
        return Fail(": Wrong file extension");
    if (form == ExportForm::Text)
        m_stream = std::make_unique<CQmLogStreamText>(m_service, *m_file, m_fields);
    else if (form == ExportForm::Csv)
    {
        auto csv =
            std::make_unique<CQmLogStreamCSV>(m_service, *m_file, m_fields, CQmLogStreamCSV::Mark::ByteOrder);
        csv->SetGuardsFormulas(m_guardsFormulas);
        m_stream = std::move(csv);
    }
    else
    {
        auto xml = std::make_unique<CQmLogStreamXML>(m_service, *m_file, m_fields);
        m_xml = xml.get();
        m_stream = std::move(xml);
    }
    return true;
}

bool Export::Step(std::uint32_t count)
{
    if (!m_stream)
        return false;
    for (; count > 0 && m_next <= m_last; --count)
        m_stream->WriteMsg(static_cast<std::uint32_t>(m_next++));
    if (!m_file->GetError().empty())
        return Fail("\n" + m_file->GetError());
    if (m_next > m_last)
        End();
    return m_stream != nullptr;
}

void Export::End()
{
    m_replaced = m_xml ? m_xml->GetReplacedCount() : 0;
    m_stream.reset();
    if (!m_file->Commit())
        Fail("\n" + m_file->GetError());
    m_file.reset();
}

double Export::Progress() const
{
    const double all = static_cast<double>(m_last) - m_first + 1;
    return all <= 0 ? 1 : (static_cast<double>(m_next) - m_first) / all;
}

bool Export::Fail(const std::string& why)
{
    m_failure = "Can't write file \"" + m_path + "\"" + why;
    m_stream.reset();
    m_file.reset();
    return false;
}

} // namespace logreport
