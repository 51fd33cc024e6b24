// Writes tables as CSV.
#pragma once

#include "zemacore/FileIOHelper.h"

#include <string>

// RFC 4180: values are separated by commas and rows end with CR LF. A value that holds a comma, a quote or a
// line break is quoted, with its quotes doubled. Texts are written as UTF-8, whichever of the two kinds of
// zemacore/WideText.h they are.
class QMPLATFORM_API CQmCSVWriter
{
public:
    // `output` is not owned.
    explicit CQmCSVWriter(ZEMA::IOutput& output) : m_output(output) {}

    // A byte order mark, by which spreadsheets know that it is UTF-8. Before the first row.
    void WriteMark();

    // Whether values that begin with "=", "+", "-" or "@" get an apostrophe in front, so that spreadsheets do
    // not take them for formulas; off at first. Numbers such as "-5" stay as they are.
    void SetGuardsFormulas(bool guards) { m_guardsFormulas = guards; }

    // A row: its values one by one; it goes out when the object ends.
    class QMPLATFORM_API Row
    {
    public:
        explicit Row(CQmCSVWriter& writer);
        ~Row();
        Row(const Row&) = delete;
        Row& operator=(const Row&) = delete;

        void WriteValue(const char* value, std::size_t length);

    private:
        CQmCSVWriter& m_writer;
        bool m_isFirst = true;
    };

private:
    ZEMA::IOutput& m_output;
    bool m_guardsFormulas = false;
    std::string m_row;  // the one that is being written; its memory is used again,
    std::string m_utf8; // as this is
};
