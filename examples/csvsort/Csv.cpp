#include "Csv.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <string_view>

namespace
{

constexpr std::size_t kMaxField = 65535; // what a cell of a report control holds

struct Record
{
    int line = 1; // that it begins in
    std::vector<std::string> fields = {""};
};

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw Failure(2, path, "no such file, or it cannot be read");
    std::string text(std::istreambuf_iterator<char>(file), {});
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

char GuessSeparator(std::string_view text)
{
    std::map<char, int> counts;
    bool quoted = false;
    for (const char c : text)
    {
        if (c == '\n' && !quoted)
            break;
        if (c == '"')
            quoted = !quoted;
        else if (!quoted)
            ++counts[c];
    }
    const std::string_view separators = ",;\t";
    return *std::max_element(separators.begin(), separators.end(),
                             [&](char a, char b) { return counts[a] < counts[b]; });
}

std::vector<Record> Parse(std::string_view text, const std::string& path)
{
    const char separator = GuessSeparator(text);
    std::vector<Record> records(1);
    int line = 1;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char c = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\n';
        std::vector<std::string>& fields = records.back().fields;
        line += c == '\n';
        if (c == '\r' && next == '\n')
            continue;
        if (c == '"' && quoted && next == '"')
            fields.back() += text[++i];
        else if (c == '"' && (quoted || fields.back().empty()))
            quoted = !quoted;
        else if (c == separator && !quoted)
            fields.emplace_back();
        else if (c == '\n' && !quoted)
            records.push_back({line, {""}});
        else
            fields.back() += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    if (quoted)
        throw Failure(1, path, "line " + std::to_string(records.back().line) + ": a quote is not closed");
    return records;
}

} // namespace

std::vector<std::vector<std::string>> ReadCsv(const std::string& path)
{
    std::vector<std::vector<std::string>> lines;
    for (Record& record : Parse(ReadFile(path), path))
    {
        if (record.fields.size() == 1 && record.fields.front().empty())
            continue;
        const std::string where = path + ": line " + std::to_string(record.line);
        for (const std::string& field : record.fields)
            if (field.size() > kMaxField)
                throw Failure(1, where, "a field of more than 65535 bytes");
        if (!lines.empty() && record.fields.size() > lines.front().size())
            throw Failure(1, where, "more fields than captions");
        record.fields.resize(lines.empty() ? record.fields.size() : lines.front().size());
        lines.push_back(std::move(record.fields));
    }
    if (lines.empty())
        throw Failure(1, path, "no captions");
    return lines;
}
