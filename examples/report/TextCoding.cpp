#include "TextCoding.h"

#include <windows.h>
#include <zemacore/WideText.h>

#include <stdexcept>

namespace
{

constexpr UINT kWestern = 1252;

// The program's own code page is UTF-8, by its manifest: this is that of programs without one.
UINT CodePage()
{
    UINT codePage = 0;
    ::GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                     reinterpret_cast<wchar_t*>(&codePage), sizeof(codePage) / sizeof(wchar_t));
    return codePage == CP_UTF8 || codePage == CP_ACP ? kWestern : codePage;
}

ZEMA::TextKind KindOf(const std::string& text)
{
    return ZEMA::GetTextKind(text.data(), text.size());
}

} // namespace

TextCoding::TextCoding(const CsvTable& table)
{
    int codePageRows = 0;
    for (int row = 0; row < table.RowCount(); ++row)
    {
        const ZEMA::TextKind kind = KindOf(table.Row(row));
        codePageRows += kind == ZEMA::TextKind::CodePage ? 1 : kind == ZEMA::TextKind::Utf8 ? -1 : 0;
    }
    m_isCodePage = codePageRows > 0;
}

std::string TextCoding::Encode(const std::string& text, const std::string& row) const
{
    const ZEMA::TextKind kind = KindOf(row);
    const bool isCodePage = kind == ZEMA::TextKind::Ascii ? m_isCodePage : kind == ZEMA::TextKind::CodePage;
    if (!isCodePage || KindOf(text) == ZEMA::TextKind::Ascii)
        return text;
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    const auto length = static_cast<int>(wide.size());
    const UINT codePage = CodePage();
    const int size = ::WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(codePage, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    // It must be shown as what was typed, which it would not if other characters stand for some of it, or
    // if its bytes are valid UTF-8.
    ZEMA::WideString shown;
    ZEMA::ToWide(bytes.data(), bytes.size(), shown);
    if (shown != wide)
        throw std::runtime_error("The file is in code page " + std::to_string(codePage) +
                                 ", which does not have this text");
    return bytes;
}
