// Edited texts as the bytes of their file.
#pragma once

#include "CsvTable.h"

#include <string>

// A file is in UTF-8 or in the system's code page. One that mixes both, as a log of several programs does, is
// in the code page if more of its rows are.
class TextCoding
{
public:
    TextCoding() = default;
    explicit TextCoding(const CsvTable& table);

    // Returns the bytes for a text that was typed, UTF-8, in the encoding of its row. If the row says
    // nothing, because it is ASCII, the file decides. Throws std::runtime_error if the code page has no such
    // text.
    std::string Encode(const std::string& text, const std::string& row) const;

private:
    bool m_isCodePage = false;
};
