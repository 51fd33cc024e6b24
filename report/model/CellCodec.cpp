#include "report/model/CellCodec.h"

#include <bit>
#include <charconv>
#include <cstdio>
#include <emmintrin.h>
#include <memory_resource>

namespace report
{
namespace
{

constexpr char kBegin = '\x01';
constexpr char kEndOfNumbers = '\x02';
constexpr std::string_view kNoNumbers = "-1,-1,-1,-1,"; // as most cells have them

char g_separator = '\x07';
char g_undefinedField[] = "\x01-1,-1,-1,-1,-1\x02\x07";

std::string_view TextOf(const ZEMA::String& cells)
{
    return {cells.c_str(), cells.GetLength()};
}

// Where a field lies, or would.
struct FieldBytes
{
    std::size_t begin = 0; // the length of the string when the field is missing
    std::size_t end = 0;   // after its separator
    int missing = 0;       // fields that are missing in front of it
};

// Looks for the separator as the C library's memchr would, which takes bytes one by one on some systems.
std::size_t EndOfField(std::string_view cells, std::size_t begin)
{
    const __m128i separator = _mm_set1_epi8(g_separator);
    for (; cells.size() - begin >= sizeof(separator); begin += sizeof(separator))
    {
        const auto* const bytes = reinterpret_cast<const __m128i*>(cells.data() + begin);
        const auto found =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_loadu_si128(bytes), separator)));
        if (found != 0)
            return begin + static_cast<std::size_t>(std::countr_zero(found)) + 1;
    }
    while (begin < cells.size())
        if (cells[begin++] == g_separator)
            break;
    return begin;
}

FieldBytes Find(std::string_view cells, int field)
{
    FieldBytes bytes;
    while (field > 0 && bytes.begin < cells.size())
    {
        bytes.begin = EndOfField(cells, bytes.begin);
        --field;
    }
    bytes.end = EndOfField(cells, bytes.begin);
    bytes.missing = field;
    return bytes;
}

// Takes `byte` from the front of `text`.
bool Skip(std::string_view& text, char byte)
{
    if (text.empty() || text.front() != byte)
        return false;
    text.remove_prefix(1);
    return true;
}

// Takes a number from the front of `text`, as "%d" does: after white space, and a plus sign may precede it.
// False when there is none; one that int does not hold leaves `number` alone.
bool ReadNumber(std::string_view& text, int& number)
{
    while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')))
        text.remove_prefix(1);
    if (Skip(text, '+') && !text.empty() && text.front() == '-')
        return false;

    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::invalid_argument)
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

// What goes into a string in one piece, built on the stack unless it is long. It never lies in that string,
// although the text of a cell may.
class Insertion
{
public:
    // Begins with what has to come before the field at `bytes`.
    Insertion(std::string_view cells, const FieldBytes& bytes) : m_text(&m_memory)
    {
        m_text.reserve(sizeof(m_buffer) - 1);
        if (bytes.begin == cells.size() && !cells.empty() && cells.back() != g_separator)
            m_text += g_separator;
        for (int i = 0; i < bytes.missing; ++i)
            AddUndefined();
    }

    void AddUndefined() { m_text += UndefinedField(); }

    void Add(const Cell& cell)
    {
        m_text += kBegin;
        if ((cell.image & cell.extra & cell.check & cell.textColor) == -1)
            m_text += kNoNumbers;
        else
            for (const int number : {cell.image, cell.extra, cell.check, cell.textColor})
            {
                AddNumber(number);
                m_text += ',';
            }
        AddNumber(cell.hasText ? static_cast<int>(cell.text.size()) : -1);
        m_text += kEndOfNumbers;
        if (cell.hasText)
            m_text += cell.text;
        m_text += g_separator;
    }

    std::string_view Text() const { return m_text; }

private:
    void AddNumber(int number)
    {
        char digits[11]; // the lowest int has as many
        m_text.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
    }

    char m_buffer[512];
    std::pmr::monotonic_buffer_resource m_memory{m_buffer, sizeof(m_buffer)};
    std::pmr::string m_text;
};

} // namespace

char CellSeparator()
{
    return g_separator;
}

bool SetCellSeparator(char separator)
{
    constexpr std::string_view kFieldBytes("\0\x01\x02,-0123456789", 15);
    if (kFieldBytes.find(separator) != std::string_view::npos)
        return false;
    g_separator = separator;
    std::snprintf(g_undefinedField, sizeof(g_undefinedField), "\x01-1,-1,-1,-1\x02%c", separator);
    return true;
}

std::string_view UndefinedField()
{
    return g_undefinedField;
}

Cell ReadCell(const ZEMA::String& cells, int field)
{
    const std::string_view all = TextOf(cells);
    const FieldBytes bytes = Find(all, field);
    std::string_view text = all.substr(bytes.begin, bytes.end - bytes.begin);
    if (!text.empty() && text.back() == g_separator)
        text.remove_suffix(1);

    Cell cell;
    if (!Skip(text, kBegin))
        return cell;
    if (text.starts_with(kNoNumbers))
        text.remove_prefix(kNoNumbers.size());
    else
        for (int* const number : {&cell.image, &cell.extra, &cell.check, &cell.textColor})
            if (!ReadNumber(text, *number) || !Skip(text, ','))
                return cell;
    int length = -1;
    if (ReadNumber(text, length) && Skip(text, kEndOfNumbers) && length >= 0)
    {
        cell.hasText = true;
        cell.text = text;
    }
    return cell;
}

void WriteCell(ZEMA::String& cells, int field, const Cell& cell)
{
    const FieldBytes bytes = Find(TextOf(cells), field);
    Insertion insertion(TextOf(cells), bytes);
    insertion.Add(cell);
    const std::string_view text = insertion.Text();
    const std::size_t old = bytes.end - bytes.begin;
    if (text.size() <= old)
    {
        cells.deleteAt(bytes.begin, old); // the new field finds room: nothing can fail
        cells.insertAt(bytes.begin, text.data(), text.size());
        return;
    }
    cells.insertAt(bytes.begin, text.data(), text.size());
    cells.deleteAt(bytes.begin + text.size(), old);
}

void InsertCell(ZEMA::String& cells, int field)
{
    const FieldBytes bytes = Find(TextOf(cells), field);
    Insertion insertion(TextOf(cells), bytes);
    insertion.AddUndefined();
    const std::string_view text = insertion.Text();
    cells.insertAt(bytes.begin, text.data(), text.size());
}

void RemoveCell(ZEMA::String& cells, int field)
{
    const FieldBytes bytes = Find(TextOf(cells), field);
    cells.deleteAt(bytes.begin, bytes.end - bytes.begin);
}

void ResetCells(ZEMA::String& cells, int count)
{
    const Insertion insertion({}, {0, 0, count});
    const std::string_view text = insertion.Text();
    cells.assign(text.data(), text.size());
}

int CompareCells(const Cell& cell1, const Cell& cell2)
{
    if (cell1.hasText || cell2.hasText)
        return cell1.text.compare(cell2.text);
    if (cell1.check >= 0 || cell2.check >= 0)
        return (cell1.check > cell2.check) - (cell1.check < cell2.check);
    return (cell1.image > cell2.image) - (cell1.image < cell2.image);
}

} // namespace report
