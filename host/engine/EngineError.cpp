#include "engine/EngineError.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace engine
{

namespace
{

constexpr std::string_view kCode = "Code: ";
constexpr std::size_t kMostWords = 500; // of a page of HTML the beginning is enough

// Numbers of the engine's errors that pass by themselves or once someone has helped the server.
constexpr int kPassing[] = {
    24,   // cannot write to a stream
    32,   // the query's data ended early
    33,   // not all data came
    74,   // cannot read a file
    75,   // cannot write to a file: a full disk
    76,   // cannot open a file: too many are open
    77,   // cannot close a file
    95,   // the same of a connection
    96,   //
    159,  // time limit
    160,  // too slow
    173,  // no memory
    201,  // quota
    202,  // too many queries at a time
    203,  // no free connection
    204,  // cannot make data safe
    209,  // time-out of a connection
    210,  // network
    225,  // no coordination service
    236,  // the server ends
    241,  // memory limit
    242,  // the table can be read only, for the moment
    243,  // a full disk
    252,  // too many parts: merging has to catch up
    254,  // no replica that is up to date
    265,  // too few replicas
    279,  // all connections failed
    285,  // too few live replicas
    286,  // too few replicas have confirmed
    319,  // it is not known whether an insertion was done
    394,  // cancelled
    999,  // coordination service
    1000, // of a library below the engine: files, network
    1001, // of the standard library: memory
};

// The engine's own code is the first one: further on it may quote values of the query, or another server.
int CodeIn(std::string_view text)
{
    const std::size_t at = text.find(kCode);
    int code = 0;
    if (at != std::string_view::npos)
        std::from_chars(text.data() + at + kCode.size(), text.data() + text.size(), code);
    return code;
}

// One line, without what the engine says of its own inside.
std::string Words(std::string_view text)
{
    if (const std::size_t at = text.find(kCode); at != std::string_view::npos)
        text.remove_prefix(at);
    for (const std::string_view noise : {", e.what() = ", ". Stack trace:", ", Stack trace"})
        text = text.substr(0, text.find(noise));
    std::string words(text.substr(0, kMostWords));
    if (const std::size_t at = words.find("e.displayText() = "); at != std::string::npos)
        words.erase(at, std::string_view("e.displayText() = ").size());
    std::replace_if(
        words.begin(), words.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    words.erase(words.find_last_not_of(' ') + 1);
    return words;
}

bool Passes(int status, int code)
{
    if (code != 0)
        return std::find(std::begin(kPassing), std::end(kPassing), code) != std::end(kPassing);
    // Without a number it is not the engine that speaks but something before it.
    return status == 408 || status == 429 || status == 502 || status == 503 || status == 504;
}

} // namespace

EngineError ErrorOf(int status, const std::string& answer)
{
    const int code = CodeIn(answer);
    std::string words = Words(answer);
    if (code == 0)
        words = "status " + std::to_string(status) + (words.empty() ? "" : ": " + words);
    return {Passes(status, code) ? EngineError::Remedy::TryAgain : EngineError::Remedy::None, words, code};
}

} // namespace engine
