// Writes reports as XML.
#pragma once

#include "zemacore/FileIOHelper.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

// A report: rows, one after the other.
class QMPLATFORM_API IReport
{
public:
    // A row that is open until the object ends.
    class QMPLATFORM_API Row
    {
    public:
        virtual ~Row();

        // A value of the row. `name` and text may hold any character.
        virtual void WriteChild(const char* name, const char* text, std::size_t length) = 0;
    };

    virtual ~IReport();
    virtual std::unique_ptr<Row> OpenRow(const char* name) = 0;
};

// XML 1.0 in UTF-8: a declaration, a root with the attribute "fields", which names the values that rows have,
// an element for each row and in it one for each value, every row on a line. In names all but letters, digits
// and "_", such as the blank of "Error Number", becomes "_". What XML does not have, such as most control
// characters, becomes U+FFFD and is counted. A carriage return is written as a reference, without which it
// would be lost to whoever reads the file.
class QMPLATFORM_API CQmReportWriterXML : public IReport
{
public:
    // Writes the beginning. `output` is not owned. `fields` are names of values.
    CQmReportWriterXML(ZEMA::IOutput& output, const char* root, const std::vector<std::string>& fields);

    // Writes the end of the root.
    ~CQmReportWriterXML() override;
    CQmReportWriterXML(const CQmReportWriterXML&) = delete;
    CQmReportWriterXML& operator=(const CQmReportWriterXML&) = delete;

    std::unique_ptr<Row> OpenRow(const char* name) override;

    // How many characters were replaced.
    std::uint64_t GetReplacedCount() const { return m_replaced; }

    // The name of an element.
    static std::string ElementName(const char* name);

private:
    class XmlRow;
    struct Tags
    {
        std::string name; // as it was given
        std::string begin;
        std::string end;
    };

    void AppendText(const char* bytes, std::size_t length);
    const Tags& TagsOf(const char* name);

    ZEMA::IOutput& m_output;
    std::string m_root;
    std::string m_row;  // the one that is open; its memory is used again,
    std::string m_utf8; // as this is
    std::deque<Tags> m_tags;
    std::uint64_t m_replaced = 0;
};
