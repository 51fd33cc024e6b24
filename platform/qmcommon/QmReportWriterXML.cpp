#include "qmcommon/QmReportWriterXML.h"

#include "zemacore/FindBytes.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <string_view>

namespace
{

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

// U+FFFE and U+FFFF, the characters beyond the control characters that XML does not have.
constexpr std::string_view kNoCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};

bool IsLetterOrDigit(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

// What XML writes for a byte that is not copied with others; empty if it has no such character.
std::string_view ReferenceOf(char byte)
{
    switch (byte)
    {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\r':
        return "&#13;";
    case '\n':
        return "\n";
    case '\t':
        return "\t";
    default:
        return {};
    }
}

} // namespace

IReport::Row::~Row() = default;

IReport::~IReport() = default;

class CQmReportWriterXML::XmlRow : public IReport::Row
{
public:
    XmlRow(CQmReportWriterXML& writer, const char* name) : m_writer(writer), m_tags(writer.TagsOf(name))
    {
        m_writer.m_row = m_tags.begin;
    }
    ~XmlRow() override
    {
        m_writer.m_row.append(m_tags.end) += '\n';
        m_writer.m_output.Write(m_writer.m_row.data(), m_writer.m_row.size());
    }
    XmlRow(const XmlRow&) = delete;
    XmlRow& operator=(const XmlRow&) = delete;

    void WriteChild(const char* name, const char* text, std::size_t length) override
    {
        const Tags& tags = m_writer.TagsOf(name);
        m_writer.m_row += tags.begin;
        m_writer.AppendText(text, length);
        m_writer.m_row += tags.end;
    }

private:
    CQmReportWriterXML& m_writer;
    const Tags& m_tags;
};

CQmReportWriterXML::CQmReportWriterXML(ZEMA::IOutput& output, const char* root,
                                       const std::vector<std::string>& fields)
    : m_output(output), m_root(ElementName(root))
{
    std::string begin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + m_root + " fields=\"";
    for (const std::string& field : fields)
        begin += (&field == fields.data() ? "" : " ") + ElementName(field.c_str());
    begin += "\">\n";
    m_output.Write(begin.data(), begin.size());
}

CQmReportWriterXML::~CQmReportWriterXML()
{
    const std::string end = "</" + m_root + ">\n";
    m_output.Write(end.data(), end.size());
}

std::unique_ptr<IReport::Row> CQmReportWriterXML::OpenRow(const char* name)
{
    return std::make_unique<XmlRow>(*this, name);
}

// Rows have the same names again and again.
const CQmReportWriterXML::Tags& CQmReportWriterXML::TagsOf(const char* name)
{
    const auto found =
        std::find_if(m_tags.begin(), m_tags.end(), [name](const Tags& tags) { return tags.name == name; });
    if (found != m_tags.end())
        return *found;
    const std::string element = ElementName(name);
    return m_tags.emplace_back(Tags{name, "<" + element + ">", "</" + element + ">"});
}

std::string CQmReportWriterXML::ElementName(const char* name)
{
    std::string element = name;
    std::replace_if(
        element.begin(), element.end(), [](char character) { return !IsLetterOrDigit(character); }, '_');
    if (element.empty() || (element[0] >= '0' && element[0] <= '9'))
        element.insert(0, 1, '_');
    return element;
}

void CQmReportWriterXML::AppendText(const char* bytes, std::size_t length)
{
    std::string_view text(bytes, length);
    if (ZEMA::ToUtf8(bytes, length, m_utf8))
        text = m_utf8;
    while (!text.empty())
    {
        const char* const special =
            ZEMA::FindBytes<0x20, '&', '<', '>', '"', '\xEF'>(text.data(), text.data() + text.size());
        m_row.append(text.data(), special);
        text.remove_prefix(static_cast<std::size_t>(special - text.data()));
        if (text.empty())
            return;
        const std::string_view reference = ReferenceOf(text[0]);
        const std::string_view three = text.substr(0, 3);
        const bool isWide = text[0] == '\xEF';
        if (!reference.empty())
            m_row += reference;
        else if (isWide && three != kNoCharacters[0] && three != kNoCharacters[1])
            m_row += three;
        else
        {
            m_row += kReplacement;
            ++m_replaced;
        }
        text.remove_prefix(isWide ? 3 : 1);
    }
}
