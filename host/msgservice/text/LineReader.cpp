#include "msgservice/text/LineReader.h"

#include "textmatch/ByteSearch.h"

#include <algorithm>

namespace msgservice
{

namespace
{

constexpr std::size_t kPiece = 256 * 1024; // stays in the processor's cache while its lines are told apart
constexpr std::size_t kWidePiece = kPiece / 2; // grows by half at most when it becomes UTF-8

bool IsWithinCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

} // namespace

std::span<char> LineReader::Room()
{
    if (m_encoding == Encoding::Utf16Little || m_encoding == Encoding::Utf16Big)
    {
        m_piece.resize(kWidePiece);
        return m_piece;
    }
    if (m_at > 0)
    {
        std::copy(m_text.begin() + static_cast<std::ptrdiff_t>(m_at),
                  m_text.begin() + static_cast<std::ptrdiff_t>(m_end), m_text.begin());
        m_end -= m_at;
        m_searched -= m_at;
        m_at = 0;
    }
    if (m_text.size() < m_end + kPiece)
        m_text.resize(m_end + kPiece);
    return std::span(m_text).subspan(m_end, kPiece);
}

void LineReader::Add(std::size_t size)
{
    if (m_encoding == Encoding::Utf16Little || m_encoding == Encoding::Utf16Big)
    {
        m_raw.append(m_piece.data(), size);
        Decode();
        return;
    }
    m_end += size;
    if (m_encoding == Encoding::Unknown)
        FindEncoding(false);
    else
        BlankNuls(m_end - size);
}

// Nothing has been handed out yet.
void LineReader::FindEncoding(bool isAll)
{
    const std::string_view bytes(m_text.data(), m_end);
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.empty() || (!isAll && bytes.size() < kUtf8Mark.size() &&
                          (kUtf8Mark.starts_with(bytes) || bytes == "\xFF" || bytes == "\xFE")))
        return;
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    if (isLittle || bytes.starts_with("\xFE\xFF"))
    {
        m_encoding = isLittle ? Encoding::Utf16Little : Encoding::Utf16Big;
        m_raw = bytes.substr(2);
        m_at = m_searched = m_end = 0;
        Decode();
        return;
    }
    m_encoding = Encoding::Bytes;
    if (bytes.starts_with(kUtf8Mark))
        m_at = m_searched = kUtf8Mark.size();
    BlankNuls(m_at);
}

void LineReader::Decode()
{
    const std::size_t low = m_encoding == Encoding::Utf16Little ? 0 : 1;
    std::size_t units = m_raw.size() / 2;
    m_wide.clear();
    for (std::size_t unit = 0; unit < units; ++unit)
    {
        const auto lowByte = static_cast<unsigned char>(m_raw[2 * unit + low]);
        const auto highByte = static_cast<unsigned char>(m_raw[2 * unit + 1 - low]);
        m_wide.push_back(static_cast<ZEMA::WideChar>(lowByte | highByte << 8));
    }
    if (!m_wide.empty() && (m_wide.back() & 0xFC00) == 0xD800)
    {
        m_wide.pop_back(); // its other half comes next
        --units;
    }
    m_raw.erase(0, 2 * units);
    ZEMA::FromWide(m_wide.data(), m_wide.size(), m_decoded);
    Append(m_decoded);
}

void LineReader::Append(const std::string& text)
{
    m_text.erase(m_text.begin(), m_text.begin() + static_cast<std::ptrdiff_t>(m_at));
    m_end -= m_at;
    m_searched -= m_at;
    m_at = 0;
    if (m_text.size() < m_end + text.size())
        m_text.resize(m_end + text.size());
    std::copy(text.begin(), text.end(), m_text.begin() + static_cast<std::ptrdiff_t>(m_end));
    m_end += text.size();
    BlankNuls(m_end - text.size());
}

void LineReader::BlankNuls(std::size_t from)
{
    const std::span<char> added = std::span(m_text).subspan(from, m_end - from);
    char* const end = added.data() + added.size();
    for (const char* at = added.data(); (at = textmatch::FindByte(at, end, '\0')) != end; ++at)
        added[static_cast<std::size_t>(at - added.data())] = ' ';
}

bool LineReader::NextLine(std::string_view& line)
{
    while (true)
    {
        const char* const text = m_text.data();
        const char* const found = textmatch::FindByte(text + m_searched, text + m_end, '\n');
        if (found == text + m_end)
            break;
        const auto end = static_cast<std::size_t>(found - text);
        m_isRest = m_isAfterPart;
        m_isAfterPart = false;
        const bool isSkipped = m_isSkipping;
        m_isSkipping = false;
        if (!isSkipped)
            line = LineTo(end);
        m_at = m_searched = end + 1;
        if (!isSkipped)
            return true;
    }
    m_searched = m_end;
    if (m_isSkipping)
        m_at = m_end;
    if (m_end - m_at <= kLongestLine)
        return false;
    line = LineTo(m_end);
    m_isRest = m_isAfterPart;
    m_isAfterPart = false;
    m_isSkipping = true;
    m_at = m_end;
    return true;
}

// The line from where it is to `end`, cut if it is too long.
std::string_view LineReader::LineTo(std::size_t end)
{
    while (end > m_at && m_text[end - 1] == '\r')
        --end;
    if (end - m_at > kLongestLine)
    {
        end = m_at + kLongestLine - kCutMark.size();
        for (int back = 0; back < 3 && IsWithinCharacter(m_text[end]); ++back)
            --end;
        std::copy(kCutMark.begin(), kCutMark.end(), m_text.begin() + static_cast<std::ptrdiff_t>(end));
        end += kCutMark.size();
    }
    return {m_text.data() + m_at, end - m_at};
}

bool LineReader::TakeUnfinished(std::string_view& line)
{
    if (m_encoding == Encoding::Unknown)
        FindEncoding(true);
    if (m_isSkipping || m_at == m_end)
        return false;
    line = LineTo(m_end);
    m_isRest = m_isAfterPart;
    m_isAfterPart = true;
    m_at = m_searched = m_end;
    return true;
}

void LineReader::Restart()
{
    m_at = m_searched = m_end = 0;
    m_isSkipping = m_isRest = m_isAfterPart = false;
    m_encoding = Encoding::Unknown;
    m_raw.clear();
}

void LineReader::GoBack(const Place& place)
{
    m_at = place.at;
    m_searched = place.searched;
    m_isSkipping = place.isSkipping;
    m_isRest = place.isRest;
    m_isAfterPart = place.isAfterPart;
}

} // namespace msgservice
