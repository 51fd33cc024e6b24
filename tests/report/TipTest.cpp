// What tips show, where and when, against tables.
#include "report/model/TipHover.h"
#include "report/model/TipLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <tuple>

namespace
{

using namespace report;

// Every character is 10 pixels wide; it counts the bytes that it is asked about.
class PlainFont : public TipFont
{
public:
    int Height() override { return 20; }
    int WidthOf(std::string_view line) override
    {
        measured += line.size();
        return 10 * static_cast<int>(std::count_if(line.begin(), line.end(), IsFirst));
    }
    std::size_t Fitting(std::string_view line, int width) override
    {
        measured += line.size();
        std::size_t fitting = 0;
        for (int room = width; fitting < line.size() && (!IsFirst(line[fitting]) || (room -= 10) >= 0);)
            ++fitting;
        return fitting;
    }

    std::size_t measured = 0;

private:
    static bool IsFirst(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }
};

// A cell of 100 by 30 pixels at (200, 100), of which all is seen, on a screen of 400 by 300.
TipPlace PlaceOf(unsigned format = 0)
{
    return {{200, 102, 300, 130}, {0, 0, 400, 300}, {0, 0, 400, 300}, format, 96};
}

std::string Shown(const std::optional<Tip>& tip)
{
    if (!tip)
        return "none";
    std::string shown;
    for (const std::string& line : tip->lines)
        shown += line + "|";
    for (const int edge : {tip->window.left, tip->window.top, tip->window.right, tip->window.bottom})
        shown += " " + std::to_string(edge);
    return shown;
}

TEST(Tip, ShowsWhatTheCellDoesNot)
{
    const std::string many(60, 'w');
    const std::string wide = "0123456789 0123456789 0123456789 012345678"; // 42 characters
    // The text, the alignment, what is changed of the place; the lines and the window.
    const std::tuple<std::string, unsigned, std::function<void(TipPlace&)>, std::string> cases[] = {
        {"", 0, {}, "none"},
        {"   ", 0, {}, "none"},
        {"0123456789", 0, {}, "none"},
        {"0123456789", 2, {}, "none"},
        {"0123456789a", 0, {}, "0123456789a| 196 103 314 127"},
        {"0123456789a", 1, {}, "0123456789a| 196 103 314 127"},
        {"0123\xC3\xA9 6789a", 0, {}, "0123\xC3\xA9 6789a| 196 103 314 127"},
        {"\xE9 1234567890", 0, {}, "\xC3\xA9 1234567890| 196 103 324 127"}, // of the code page
        {"a\tb\x01", 0, {}, "none"},
        {"two\r\nlines\n\n", 0, {}, "two|lines| 196 103 254 147"},
        {"two\r\nlines", 1, {}, "two|lines| 206 103 264 147"},
        {"\n\nx", 0, {}, "||x| 196 103 214 167"},
        {"one\n", 0, {}, "none"},
        // The control's edge, and that of the screen
        {"abc", 0, [](TipPlace& p) { p.seen.right = 229; }, "abc| 196 103 234 127"},
        {"abc", 1, [](TipPlace& p) { p.seen.right = 299; }, "abc| 266 103 304 127"},
        {"abc", 2, [](TipPlace& p) { p.seen.right = 264; }, "abc| 231 103 269 127"},
        {"abc", 0, [](TipPlace& p) { p.seen.bottom = 124; }, "abc| 196 103 234 127"},
        {"abc", 0, [](TipPlace& p) { p.seen.bottom = 125; }, "none"},
        {"abc", 0, [](TipPlace& p) { p.editor.bottom = 119; }, "abc| 196 98 234 122"},
        {"0123456789a", 0, [](TipPlace& p) { p.monitor.right = 310; }, "0123456789a| 192 103 310 127"},
        {"0123456789a", 0, [](TipPlace& p) { p.monitor.bottom = 126; }, "0123456789a| 196 102 314 126"},
        {"0123456789a", 0, [](TipPlace& p) { p.monitor.left = 198; }, "0123456789a| 198 103 316 127"},
        {"0123456789a", 0, [](TipPlace& p) { p.dpi = 192; }, "0123456789a| 192 101 318 129"},
        // Wider than the screen
        {wide, 0, {}, "0123456789 0123456789 0123456789|012345678| 72 103 400 147"},
        {many.substr(0, 39) + " end", 0, {}, many.substr(0, 39) + "|end| 2 103 400 147"},
        {many, 0, {}, many.substr(0, 39) + "|" + many.substr(39) + "| 2 103 400 147"},
        {" " + many, 0, {}, " " + many.substr(0, 38) + "|" + many.substr(38) + "| 2 103 400 147"},
        {"a\n" + many + "\n\nb", 0, [](TipPlace& p) { p.monitor.bottom = 90; },
         "a|" + many.substr(0, 39) + "|" + many.substr(39) + "|...| 2 6 400 90"},
        {many + many, 0, [](TipPlace& p) { p.monitor.bottom = 30; }, many.substr(0, 36) + "...| 2 6 400 30"},
        {"ww", 0, [](TipPlace& p) { p.seen.right = p.monitor.right = 5; }, "w|w| 0 103 18 147"},
    };
    PlainFont font;
    for (const auto& [text, format, change, expected] : cases)
    {
        TipPlace place = PlaceOf(format);
        if (change)
            change(place);
        EXPECT_EQ(expected, Shown(LayOutTip(TipText(text), place, font))) << text;
    }
}

TEST(Tip, MeasuresNoMoreThanIsSeen)
{
    for (const char* piece : {"x", "word ", "\n", "\r\n", "\xE6\x97\xA5", "\t"})
    {
        std::string text = "begin: ";
        while (text.size() < 65530)
            text += piece;
        PlainFont font;
        const std::optional<Tip> tip = LayOutTip(TipText(text), PlaceOf(), font);
        if (tip)
            EXPECT_LE(tip->lines.size(), 14u) << piece;
        EXPECT_EQ(text.find_first_not_of("\r\n\t", 7) != text.npos || *piece == '\t', tip.has_value());
        EXPECT_LT(font.measured, 100000u) << piece;
    }
}

// Steps: "a@100" the pointer comes to cell a, "-@" to none, "t@" the timer, "d" dismisses, "f" forgets. Each
// gives a letter for what is to be done; what shows is seen in cells a to y, and not in z.
std::string Follow(const std::string& steps)
{
    TipHover hover;
    std::string actions;
    std::istringstream stream(steps);
    for (std::string step; stream >> step;)
    {
        const std::size_t at = step.find('@');
        const auto now = at == step.npos ? 0 : static_cast<std::uint32_t>(std::stoll(step.substr(at + 1)));
        TipHover::Action action = TipHover::Action::Nothing;
        if (step[0] == 'd')
            hover.Dismiss();
        else if (step[0] == 'f')
            hover.Forget();
        else if (step[0] == 't')
            action = hover.Tick(now);
        else if (step[0] == '-')
            action = hover.Move({}, now);
        else
            action = hover.Move(TipCell{step[0], 0}, now);
        if (action == TipHover::Action::Show)
            hover.HasShown(hover.Cell()->row != 'z');
        actions += action == TipHover::Action::Show ? 'S' : action == TipHover::Action::Hide ? 'H' : '.';
        actions += hover.IsShown() ? "+" : "";
    }
    return actions;
}

TEST(Tip, ShowsAfterTheHoverTime)
{
    const std::pair<const char*, const char*> cases[] = {
        {"a@0 t@399 t@400 t@500", "..S+.+"},
        {"a@0 a@300 t@400 a@500", "..S+.+"}, // moves within the cell
        {"a@0 b@300 t@400 t@699 t@700", "....S+"},
        {"a@0 t@400 b@9000", ".S+S+"},
        {"a@0 t@400 -@900 b@1400", ".S+HS+"},
        {"a@0 t@400 -@900 b@1401 t@1800 t@1801", ".S+H..S+"},
        {"a@0 t@400 z@900 b@1300", ".S+SS+"},
        {"z@0 t@400 t@900", ".S."},
        {"a@0 d t@400", "..."},
        {"a@0 t@400 d a@500 t@2000 b@2100 t@2499 t@2500", ".S+.....S+"},
        {"a@0 t@400 d -@450 b@460", ".S+..."},
        {"a@0 t@400 f a@500 t@899 t@900", ".S+...S+"},
        {"a@4294967200 t@303 t@304", "..S+"},
    };
    for (const auto& [steps, actions] : cases)
        EXPECT_EQ(actions, Follow(steps)) << steps;
}

} // namespace
