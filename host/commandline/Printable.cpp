#include "commandline/Printable.h"

#include "zemacore/WideText.h"

namespace commandline
{

std::string Printable(std::string_view text)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string converted;
    if (ZEMA::ToUtf8(text.data(), text.size(), converted))
        text = converted;
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        const bool isWideControl = byte == 0xC2 && next < 0xA0; // U+0080 to U+009F
        const unsigned char shown = isWideControl ? next : byte;
        if (isWideControl || (byte < ' ' && byte != '\t') || byte == 0x7F)
            result.append({'\\', 'x', digits[shown >> 4], digits[shown & 15]});
        else
            result += text[i];
        i += isWideControl ? 1 : 0;
    }
    return result;
}

} // namespace commandline
