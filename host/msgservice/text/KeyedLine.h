// Lines whose fields have names: JSON Lines and logfmt.
#pragma once

#include "msgservice/Message.h"
#include "msgservice/text/TextFormat.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace msgservice
{

// Tells the fields of a line by the keys that are usual for them, in any case, and those of the format. What
// else the line has becomes "key=value ..." in the first text of the message; what tells of an error follows
// its body.
class KeyedLine
{
public:
    explicit KeyedLine(const TextFormat& format);

    // False if the line is none of this kind. Texts are views into memory that is kept until the line after
    // the next that matches.
    bool Parse(std::string_view line, MessageFields& fields);

private:
    enum Field
    {
        Timestamp,
        LevelText,
        Topic,
        Body,
        Source,
        Who,
        Module,
        File,
        Line,
        Context,
        Error,  // its number
        Detail, // all there are
        FieldCount
    };
    struct Meaning
    {
        Field field;
        std::size_t rank; // the lowest of a line counts
    };
    struct Value
    {
        std::string key; // in lower case
        std::string text;
    };
    struct Texts
    {
        std::string body;
        std::string others;
        std::array<std::string, FieldCount> fields;
    };
    struct Hash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    class JsonReader;

    static Field FieldOf(std::string_view name);
    void AddKeys(Field field, const std::vector<std::string>& keys);
    Value& NewValue();
    bool ReadJson(std::string_view line);
    bool ReadLogfmt(std::string_view line);
    bool ReadPair(std::string_view& rest);
    void Assign(std::string_view line, MessageFields& fields);
    void Collect(const Value& value, Field field, Texts& texts) const;

    TextFormat::Kind m_kind;
    std::unordered_map<std::string, Meaning, Hash, std::equal_to<>> m_meanings;
    std::vector<Value> m_values; // of the present line; their memory is used again
    std::size_t m_count = 0;
    std::array<Texts, 2> m_texts; // of the last two lines that matched, in turn
    std::size_t m_turn = 0;
};

} // namespace msgservice
