#include "msgservice/text/TextFormat.h"

#include "msgservice/text/LevelWords.h"
#include "textmatch/Expression.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace msgservice
{

using textmatch::Expression;

namespace
{

using Json = nlohmann::json;

constexpr int kDeepest = 16; // pieces within pieces

std::string ExpandPieces(std::string_view text, const std::map<std::string, std::string, std::less<>>& pieces,
                         std::string* unknown, int depth)
{
    std::string expanded;
    while (!text.empty())
    {
        const std::size_t begin = text.find("%{");
        const std::size_t end = begin == std::string_view::npos ? begin : text.find('}', begin);
        if (end == std::string_view::npos)
            break;
        expanded += text.substr(0, begin);
        const std::string_view name = text.substr(begin + 2, end - begin - 2);
        const auto piece = pieces.find(name);
        if (piece != pieces.end() && depth < kDeepest)
            expanded += ExpandPieces(piece->second, pieces, unknown, depth + 1);
        else if (unknown)
            *unknown = name;
        text.remove_prefix(end + 1);
    }
    return expanded.append(text);
}

// Something in the user's file is not as it has to be; what() is the sentence's end.
class FormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

std::string TextOf(const Json& object, const char* key, const std::string& otherwise)
{
    const auto value = object.find(key);
    if (value == object.end())
        return otherwise;
    if (!value->is_string())
        throw FormatError(std::string("\"") + key + "\" is not a text.");
    return value->get<std::string>();
}

TextFormat::Kind KindOf(const std::string& text)
{
    if (text == "expression")
        return TextFormat::Kind::Expression;
    if (text == "json")
        return TextFormat::Kind::Json;
    if (text == "logfmt")
        return TextFormat::Kind::Logfmt;
    throw FormatError("\"kind\" is \"" + text + "\", which is none of expression, json and logfmt.");
}

TextFormat::Levels LevelsOf(const Json& format)
{
    TextFormat::Levels levels;
    const auto found = format.find("levels");
    if (found == format.end())
        return levels;
    if (!found->is_object())
        throw FormatError("\"levels\" is not an object.");
    for (const auto& [word, meaning] : found->items())
    {
        std::uint32_t level = 0;
        if (meaning.is_number_unsigned() && meaning.get<std::uint64_t>() <= 5)
            level = meaning.get<std::uint32_t>();
        else if (!meaning.is_string() || !FindLevel(meaning.get<std::string>(), level))
            throw FormatError("the level of \"" + word +
                              "\" is no number from 0 to 5 and no word for a level.");
        levels.emplace_back(word, level);
    }
    return levels;
}

TextFormat::Keys KeysOf(const Json& format)
{
    TextFormat::Keys keys;
    const auto found = format.find("keys");
    if (found == format.end())
        return keys;
    if (!found->is_object())
        throw FormatError("\"keys\" is not an object.");
    for (const auto& [field, names] : found->items())
    {
        keys.emplace_back(field, std::vector<std::string>());
        if (names.is_string())
            keys.back().second.push_back(names.get<std::string>());
        else if (names.is_array() &&
                 std::all_of(names.begin(), names.end(), [](const Json& n) { return n.is_string(); }))
            keys.back().second = names.get<std::vector<std::string>>();
        else
            throw FormatError("the keys of \"" + field + "\" are no texts.");
    }
    return keys;
}

void CheckExpression(const TextFormat& format, const TextFormats& formats)
{
    std::string unknown;
    const std::string expanded = formats.Expand(format.expression, &unknown);
    if (!unknown.empty())
        throw FormatError("there is no piece %{" + unknown + "}.");
    try
    {
        const Expression expression(expanded, Expression::Syntax::Expression, Expression::Case::Kept,
                                    Expression::Units::Characters, Expression::Where::FromStart,
                                    Expression::Speed::Interpreted);
    }
    catch (const textmatch::ExpressionError& error)
    {
        std::string text = "\"expression\", at character " + std::to_string(error.Position() + 1);
        if (expanded != format.expression)
            text += " of '" + expanded + "'";
        throw FormatError(text + ": " + error.what() + ".");
    }
}

TextFormat FormatOf(const Json& json, const TextFormats& formats)
{
    if (!json.is_object())
        throw FormatError("it is not an object.");
    TextFormat format;
    format.trust = TextFormat::Trust::Given;
    format.name = TextOf(json, "name", "");
    if (format.name.empty())
        throw FormatError("it has no name.");
    format.title = TextOf(json, "title", format.name);
    format.kind = KindOf(TextOf(json, "kind", "expression"));
    format.expression = TextOf(json, "expression", "");
    format.levels = LevelsOf(json);
    format.keys = KeysOf(json);
    if (format.kind != TextFormat::Kind::Expression)
        return format;
    if (format.expression.empty())
        throw FormatError("it has no expression.");
    CheckExpression(format, formats);
    return format;
}

std::string NameForPeople(const Json& json, std::size_t number)
{
    const auto name = json.is_object() ? json.find("name") : json.end();
    std::string counted = "Format " + std::to_string(number);
    if (!json.is_object() || name == json.end() || !name->is_string())
        return counted;
    return counted + " (\"" + name->get<std::string>() + "\")";
}

} // namespace

TextFormats::TextFormats() : m_formats(BuiltInFormats()), m_pieces(BuiltInPieces()) {}

const TextFormat* TextFormats::Find(std::string_view name) const
{
    const auto found =
        std::find_if(m_formats.begin(), m_formats.end(), [&](const TextFormat& f) { return f.name == name; });
    return found == m_formats.end() ? nullptr : &*found;
}

std::string TextFormats::Expand(std::string_view expression, std::string* unknown) const
{
    return ExpandPieces(expression, m_pieces, unknown, 0);
}

std::string TextFormats::Add(std::string_view json)
{
    Json file;
    try
    {
        file = Json::parse(json.begin(), json.end());
    }
    catch (const Json::parse_error& error)
    {
        const std::string_view before = json.substr(0, std::min(error.byte, json.size()));
        const auto line = 1 + std::count(before.begin(), before.end(), '\n');
        return "It is not JSON: line " + std::to_string(line) + ", byte " + std::to_string(error.byte) +
               ".\n";
    }
    if (!file.is_object())
        return "It is not an object with \"formats\".\n";
    std::string errors;
    if (const auto pieces = file.find("pieces"); pieces != file.end() && pieces->is_object())
    {
        for (const auto& [name, text] : pieces->items())
            if (text.is_string())
                m_pieces[name] = text.get<std::string>();
            else
                errors += "Piece \"" + name + "\": it is not a text.\n";
    }
    const auto formats = file.find("formats");
    if (formats == file.end() || !formats->is_array())
        return errors + "It has no list \"formats\".\n";
    std::size_t number = 0;
    std::size_t place = 0;
    for (const Json& entry : *formats)
    {
        ++number;
        try
        {
            TextFormat format = FormatOf(entry, *this);
            const auto isSame = [&](const TextFormat& other) { return other.name == format.name; };
            const auto same = std::find_if(m_formats.begin(), m_formats.end(), isSame);
            if (same != m_formats.end())
            {
                place -= same - m_formats.begin() < static_cast<std::ptrdiff_t>(place) ? 1 : 0;
                m_formats.erase(same);
            }
            m_formats.insert(m_formats.begin() + static_cast<std::ptrdiff_t>(place++), std::move(format));
        }
        catch (const FormatError& error)
        {
            errors += NameForPeople(entry, number) + ": " + error.what() + "\n";
        }
    }
    return errors;
}

} // namespace msgservice
