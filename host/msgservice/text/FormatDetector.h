// Which format a text log has, found out from its first lines.
#pragma once

#include "msgservice/text/LineParser.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace msgservice
{

// A format and where its lines begin.
struct FormatChoice
{
    const TextFormat* format;
    LineParser::Start start;
};

struct Detection
{
    // A line is in the first format that it matches; if it matches none, it continues the message before it.
    // Never empty.
    std::vector<FormatChoice> choices;
    TimeText times;          // knows the order of numbers in dates
    std::string explanation; // sentences for people, a line each
};

constexpr std::size_t kLinesToDetect = 200;

// Tries formats on the first lines of logs. One thread at a time.
class FormatDetector
{
public:
    // `formats` must outlive the detector.
    explicit FormatDetector(const TextFormats& formats) : m_formats(formats) {}

    // Tries each format on `lines`, those of the log's first that are not blank, and chooses the one that
    // tells the most apart in them: what a line is worth grows with a time stamp that can be read, a level
    // that is known, a topic and more; lines that do not match are worth nothing, and of two formats with the
    // same worth the first in the table is taken. Other formats are added for lines that it does not match
    // but that have time stamps, too. `forced` is taken instead if it is not null. `reference` settles years
    // and days that are left out; see TimeText.
    Detection Detect(std::span<const std::string_view> lines, const TextFormat* forced, Time reference);

    // The format, ready to be tried on a few lines. What has been made is used again for the next log.
    LineParser& Parser(const FormatChoice& choice);

    const TextFormats& Formats() const { return m_formats; }

private:
    const TextFormats& m_formats;
    std::map<std::pair<const TextFormat*, LineParser::Start>, LineParser> m_parsers;
};

} // namespace msgservice
