#include "logreport/model/MsgCells.h"

#include "logreport/model/FieldText.h"
#include "logreport/model/LevelMap.h"

#include <algorithm>
#include <cstring>

namespace logreport
{

namespace
{

constexpr std::string_view kGoesOn = "(...)";
constexpr std::size_t kPreviewEnd = 65536; // bytes: from here on a body is cut,
constexpr std::size_t kPreviewCut = 65529; // to so many

void PutText(std::string_view text, _RVITEM& cell)
{
    if (!cell.text || cell.textMax <= 0)
        return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(cell.textMax) - 1);
    std::memcpy(cell.text, text.data(), length);
    cell.text[length] = '\0';
    cell.mask |= RVIM_TEXT;
}

std::string_view OrEmpty(const char* text)
{
    return text ? text : "";
}

// The end of so many lines, without the line end after the last one.
std::size_t EndOfLines(std::string_view text, int lines)
{
    std::size_t end = text.find('\n');
    for (; lines > 1 && end != std::string_view::npos; --lines)
        end = text.find('\n', end + 1);
    return end == std::string_view::npos ? text.size() : end;
}

} // namespace

std::string FirstLine(std::string_view body)
{
    const std::size_t end = body.find('\n');
    if (end == std::string_view::npos || end == 0 || end + 1 == body.size())
        return std::string(body);
    return std::string(body.substr(0, end - 1)).append(kGoesOn);
}

std::string PreviewText(std::string_view body, int lines)
{
    const std::size_t end = lines > 0 ? EndOfLines(body, lines) : body.size();
    const bool hasMore = end < body.size() && body.substr(end) != "\n";
    const std::string_view shown = body.substr(0, hasMore ? end : body.size());
    if (shown.size() >= kPreviewEnd)
        return std::string(shown.substr(0, kPreviewCut)).append(kGoesOn);
    std::string text(shown);
    if (hasMore)
        text += "\n...";
    return text;
}

std::string_view LinesOf(std::string_view text, int first, int count)
{
    const auto rest = [&text](std::size_t from, int lines) {
        for (; lines > 0 && from < text.size(); --lines)
        {
            from = std::min(text.find_first_of("\r\n", from), text.size());
            from += text.substr(from, 2) == "\r\n" ? 2 : 1;
        }
        return std::min(from, text.size());
    };
    const std::size_t begin = rest(0, first);
    return text.substr(begin, rest(begin, count) - begin);
}

void AnswerCell(const ILogMsgData& message, int previewLines, _RVITEM& cell)
{
    if (cell.subitem != kLogMsgNone)
    {
        FieldText field;
        PutText(cell.subitem == kLogMsgBody ? FirstLine(field.Of(message, kLogMsgBody))
                                            : field.Of(message, cell.subitem),
                cell);
    }
    else if (cell.mask & RVIM_TEXT)
        PutText(PreviewText(OrEmpty(message.GetBody()), previewLines), cell);
    const std::uint32_t level = message.GetLevel();
    if (cell.subitem == kLogMsgLevel)
    {
        cell.image = LevelImage(level);
        cell.mask |= RVIM_IMAGE;
    }
    if (IsWarning(level) || IsError(level))
    {
        cell.textColor = IsError(level) ? kErrorColor : kWarningColor;
        cell.mask |= RVIM_TEXTCOLOR;
    }
}

std::string StatusText(int rows, int selected, int focused)
{
    std::string text = "Rows:" + std::to_string(rows);
    if (selected > 0)
        text += " | Selected:" + std::to_string(selected);
    if (focused > 0)
        text += " | Current:" + std::to_string(focused);
    return text;
}

} // namespace logreport
