// The formats of text logs: a table of data, and what a user adds to it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace msgservice
{

// How the lines of a log are told apart.
//
// An expression has parts named after fields: timestamp, level, topic, body, source, who, module, file, line,
// context, text1, text2, error, indent (its length), and three that tell the level by a number: priority (of
// syslog, facility and all), severity (0 to 7), status (of an answer to a request). A part that is "-" tells
// nothing. A line that does not match from its start continues the message before it. "%{NAME}" stands for
// one of the named pieces.
struct TextFormat
{
    enum class Kind
    {
        Expression,
        Json,   // each line is an object
        Logfmt, // each line is key=value ...
        Lines   // a line is a message
    };
    enum class Trust
    {
        Checked, // a line matches only if its time stamp can be read and its level is known
        Given    // the user says so: any text will do
    };
    // Words of the lines and the levels that they mean, before all others.
    using Levels = std::vector<std::pair<std::string, std::uint32_t>>;
    // Field and keys, the first one that a line has counts. "a.b" is b within a. Before the usual ones.
    using Keys = std::vector<std::pair<std::string, std::vector<std::string>>>;

    std::string name;
    std::string title;
    Kind kind = Kind::Expression;
    std::string expression; // with PCRE2's syntax, of one line
    Levels levels = {};
    Keys keys = {}; // for Json and Logfmt
    Trust trust = Trust::Checked;
    int bonus = 0; // what a line is worth besides, in detection: for a form that is hardly met by chance
};

// The formats to choose from, in the order of preference, and the pieces of their expressions.
class TextFormats
{
public:
    // The built-in ones.
    TextFormats();

    const std::vector<TextFormat>& All() const { return m_formats; }

    // Null if there is none of this name.
    const TextFormat* Find(std::string_view name) const;

    // Reads formats of the user's, a JSON text, and puts them before the others; one with the name of another
    // takes its place. Answers what is wrong with it, a sentence a line; what is right counts nevertheless.
    //
    //   {"pieces":  {"id": "[0-9a-f]{8}"},
    //    "formats": [{"name": "shop", "title": "Our shop", "levels": {"OK": "info", "KO": "error"},
    //                 "expression": "(?<timestamp>%{time}) %{id} (?<level>\\w+) (?<body>.*)"},
    //                {"name": "shop-json", "kind": "json", "keys": {"topic": ["svc"]}}]}
    std::string Add(std::string_view json);

    // The format's expression with all pieces put in. `unknown` receives the name of a piece that there is
    // not.
    std::string Expand(std::string_view expression, std::string* unknown = nullptr) const;

private:
    std::vector<TextFormat> m_formats;
    std::map<std::string, std::string, std::less<>> m_pieces;
};

// The table of data.
std::vector<TextFormat> BuiltInFormats();
std::map<std::string, std::string, std::less<>> BuiltInPieces();

} // namespace msgservice
