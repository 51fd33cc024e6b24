// Bytes of a text log as lines.
#pragma once

#include "zemacore/WideText.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace msgservice
{

// A longer line is cut, and ends with kCutMark instead.
constexpr std::size_t kLongestLine = 1024 * 1024; // bytes
constexpr std::string_view kCutMark = " (...)";

// Takes bytes as they come and hands out lines without their ends: LF, CR LF, or CR at the end of all. UTF-8
// and code pages stay as they are, a byte order mark is dropped, and UTF-16 with one becomes UTF-8. NULs
// become blanks. However long a line is, not more than a few megabytes are held.
//
//   const std::span<char> room = reader.Room();
//   reader.Add(input.Read(room));
//   while (reader.NextLine(line)) ...
class LineReader
{
public:
    // Room for the next bytes, 128 KiB at least. Lines handed out before are gone.
    std::span<char> Room();

    // The first `size` bytes of that room are there now.
    void Add(std::size_t size);

    // False if there is no further line with its end. A view is good until Room is called.
    bool NextLine(std::string_view& line);

    // What there is of a line that has no end yet; false if there is nothing. What comes of this line later
    // is the rest of it: a line of its own, for which IsRest answers true.
    bool TakeUnfinished(std::string_view& line);
    bool IsRest() const { return m_isRest; }

    // Forgets all, for another text.
    void Restart();

    // For a look ahead: where it is in what it holds, and back there. Good until Room is called.
    struct Place
    {
        std::size_t at;
        std::size_t searched;
        bool isSkipping;
        bool isRest;
        bool isAfterPart;
    };
    Place Where() const { return {m_at, m_searched, m_isSkipping, m_isRest, m_isAfterPart}; }
    void GoBack(const Place& place);

    // Whether lines must be taken before there is room for more that makes sense.
    bool IsFull() const { return m_end - m_at >= kLongestLine; }

private:
    enum class Encoding
    {
        Unknown,
        Bytes,
        Utf16Little,
        Utf16Big
    };

    void FindEncoding(bool isAll);
    void Decode();
    void Append(const std::string& text);
    void BlankNuls(std::size_t from);
    std::string_view LineTo(std::size_t end);

    std::vector<char> m_text; // what is not handed out yet lies from m_at to m_end
    std::size_t m_at = 0;
    std::size_t m_searched = 0; // up to here there is no line feed
    std::size_t m_end = 0;
    bool m_isSkipping = false;  // what follows belongs to a line that was cut
    bool m_isRest = false;      // of the line handed out last
    bool m_isAfterPart = false; // an unfinished line was handed out
    Encoding m_encoding = Encoding::Unknown;
    std::vector<char> m_piece; // room for UTF-16
    std::string m_raw;         // bytes of UTF-16 that are no character yet
    ZEMA::WideString m_wide;
    std::string m_decoded;
};

} // namespace msgservice
