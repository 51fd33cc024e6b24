// Targets: functions that take any bytes and end the process where a property does not hold. The ordinary
// tests give them the stored corpus, tools/fuzz.sh has libFuzzer look for more.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace fuzz
{

void RowFiles(std::string_view input);     // reading and showing damaged logs
void Verification(std::string_view input); // of a session with bytes changed
void CellTexts(std::string_view input);    // the encoding of cells, and keys to sort them by
void Arguments(std::string_view input);    // command lines of logtool and LogDesk
void TextFormats(std::string_view input);  // text logs as lines and messages
void Characters(std::string_view input);   // UTF-8, code page, cells
void CFunctions(std::string_view input);   // what the C functions write, against a text beside it

struct Target
{
    const char* name; // of its folder of the corpus
    void (*function)(std::string_view input);
};

inline constexpr Target kTargets[] = {
    {"row_files", RowFiles},     {"verification", Verification}, {"cell_texts", CellTexts},
    {"arguments", Arguments},    {"text_formats", TextFormats},  {"characters", Characters},
    {"c_functions", CFunctions},
};

inline void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// Takes values off the front of an input; zeros once it is used up.
class Input
{
public:
    explicit Input(std::string_view bytes) : m_rest(bytes) {}

    bool IsEmpty() const { return m_rest.empty(); }

    unsigned Byte()
    {
        const unsigned byte = m_rest.empty() ? 0 : static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(m_rest.empty() ? 0 : 1);
        return byte;
    }

    unsigned Number()
    {
        const unsigned high = Byte();
        return high << 8 | Byte();
    }

    std::string_view Bytes(std::size_t count)
    {
        const std::string_view bytes = m_rest.substr(0, count);
        m_rest.remove_prefix(bytes.size());
        return bytes;
    }

    std::string_view Rest() { return std::exchange(m_rest, {}); }

private:
    std::string_view m_rest;
};

} // namespace fuzz
