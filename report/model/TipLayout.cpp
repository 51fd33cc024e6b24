#include "report/model/TipLayout.h"

#include "ReportItem.h"
#include "report/model/Editing.h"
#include "zemacore/WideText.h"

#include <algorithm>

namespace report
{

namespace
{

constexpr std::string_view kEllipsis = "...";
constexpr std::size_t kLongestLine = 4096; // bytes, which are wider than any screen

std::size_t EndOfCharacter(std::string_view text, std::size_t at)
{
    do
        ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    return at;
}

// No more bytes than can be seen, and whole characters.
std::string_view Beginning(std::string_view text)
{
    if (text.size() <= kLongestLine)
        return text;
    std::size_t end = kLongestLine;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end);
}

std::string CutOff(std::string_view line, int width, TipFont& font)
{
    const int room = width - font.WidthOf(kEllipsis);
    return std::string(line.substr(0, font.Fitting(line, room))).append(kEllipsis);
}

// Takes a line off the text: up to a line feed, or to the last blank within the width, or as much as fits.
std::string_view TakeLine(std::string_view& text, int width, TipFont& font)
{
    const std::size_t feed = text.find('\n');
    std::string_view line = Beginning(text.substr(0, feed));
    std::size_t used = line.size() + (line.size() == feed);
    if (const std::size_t fitting = font.Fitting(line, width); fitting < line.size())
    {
        const std::size_t blank = line.rfind(' ', fitting);
        const bool breaksAtBlank = blank != line.npos && blank > 0;
        line = line.substr(0, breaksAtBlank ? blank : std::max(fitting, EndOfCharacter(line, 0)));
        used = line.size() + breaksAtBlank;
    }
    text.remove_prefix(used);
    return line;
}

std::vector<std::string> LinesOf(std::string_view text, int width, std::size_t most, TipFont& font)
{
    std::vector<std::string> lines;
    std::string_view last;
    while (!text.empty() && lines.size() < most)
        lines.emplace_back(last = TakeLine(text, width, font));
    if (!text.empty() && !lines.empty())
    {
        const bool hasRoom = font.WidthOf(last) + font.WidthOf(kEllipsis) <= width;
        lines.back() = hasRoom ? lines.back().append(kEllipsis) : CutOff(last, width, font);
    }
    return lines;
}

// Where a cell paints its text, as much of it as it has room for.
struct PaintedText
{
    Rect rect;
    bool isWhole;
};

PaintedText Paint(std::string_view text, const TipPlace& place, TipFont& font)
{
    std::string line(Beginning(text));
    std::replace(line.begin(), line.end(), '\n', ' ');
    const int room = place.editor.Width();
    const bool isCut = line.size() < text.size() || font.Fitting(line, room) < line.size();
    const int width = std::min(room, font.WidthOf(isCut ? CutOff(line, room, font) : line));
    const int gaps[] = {0, room - width, (room - width) / 2, 0}; // by the alignment
    const int left = place.editor.left + gaps[place.format & RVSF_ALIGNMASK];

    const int top = TopOfCell(place.editor);
    const int rest = place.editor.bottom - top - font.Height();
    const int textTop = top + std::max(0, rest) / 2;
    return {{left, textTop, left + width, textTop + font.Height()}, !isCut && rest >= 0};
}

bool Contains(const Rect& outer, const Rect& inner)
{
    return outer.left <= inner.left && inner.right <= outer.right && outer.top <= inner.top &&
           inner.bottom <= outer.bottom;
}

int Within(int begin, int size, int first, int end)
{
    return std::max(first, std::min(begin, end - size));
}

} // namespace

std::string TipText(std::string_view text)
{
    std::string shown;
    if (!ZEMA::ToUtf8(text.data(), text.size(), shown))
        shown = text;
    std::size_t length = 0;
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (shown.compare(i, 2, "\r\n") != 0)
            shown[length++] = shown[i];
    shown.resize(length);
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\n'; },
        ' ');
    shown.erase(shown.find_last_not_of('\n') + 1);
    return shown;
}

std::optional<Tip> LayOutTip(std::string_view text, const TipPlace& place, TipFont& font)
{
    const PaintedText painted = Paint(text, place, font);
    const bool isOneLine = text.find('\n') == text.npos;
    if (text.find_first_not_of(" \n") == text.npos ||
        (isOneLine && painted.isWhole && Contains(place.seen, painted.rect)))
        return std::nullopt;

    const int borderX = Scale(kTipFrame, place.dpi) + Scale(kTipPaddingX, place.dpi);
    const int borderY = Scale(kTipFrame, place.dpi) + Scale(kTipPaddingY, place.dpi);
    const int room = place.monitor.Height() - 2 * borderY;
    const int most = std::max(1, room / std::max(1, font.Height()));
    Tip tip;
    tip.lines = LinesOf(text, place.monitor.Width() - 2 * borderX, static_cast<std::size_t>(most), font);
    int width = 0;
    for (const std::string& line : tip.lines)
        width = std::max(width, font.WidthOf(line));
    width += 2 * borderX;
    const int height = static_cast<int>(tip.lines.size()) * font.Height() + 2 * borderY;
    const int left = Within(painted.rect.left - borderX, width, place.monitor.left, place.monitor.right);
    const int top = Within(painted.rect.top - borderY, height, place.monitor.top, place.monitor.bottom);
    tip.window = {left, top, left + width, top + height};
    return tip;
}

} // namespace report
