// What cells, previews and ranges of messages are, from tables and against plain models.
#include "logreport/model/MsgCells.h"
#include "logreport/model/MsgRange.h"
#include "logreport/model/PreviewSizes.h"
#include "logreport/model/Watch.h"
#include "tests/logreport/FullMessage.h"

#include <random>

#include <gtest/gtest.h>

namespace
{

using namespace logreport;

constexpr std::size_t kRoom = 65536; // of a cell's text, as the report control gives it

_RVITEM Answer(const ILogMsgData& message, int subitem, std::string& room, int lines = 0)
{
    _RVITEM cell = {
        .mask = RVIM_TEXT, .subitem = subitem, .text = room.data(), .textMax = static_cast<int>(room.size())};
    AnswerCell(message, lines, cell);
    return cell;
}

std::string Text(const ILogMsgData& message, int subitem, std::size_t size = kRoom)
{
    std::string room(size, '#');
    Answer(message, subitem, room);
    EXPECT_NE(std::string::npos, room.find('\0')) << "of subitem " << subitem;
    return room.c_str();
}

TEST(MsgCells, EverySubItemHasItsText)
{
    const FullMessage message;
    const char* const texts[] = {"time",   "Warning", "topic",   "A(...)", "-4",  "file", "6",
                                 "module", "8",       "context", "source", "who", "12"};
    for (int subitem = 0; subitem < kLogMsgKindCount; ++subitem)
        EXPECT_EQ(texts[subitem], Text(message, subitem)) << subitem;
    EXPECT_EQ("A\r\nB", Text(message, kLogMsgNone));
    EXPECT_EQ("", Text(message, 13));
    EXPECT_EQ("to", Text(message, kLogMsgTopic, 3)) << "cut to the room";
}

TEST(MsgCells, OnlyWhatIsAskedForIsWritten)
{
    const FullMessage message;
    std::string room(8, '#');
    _RVITEM cell = {.subitem = kLogMsgNone, .text = room.data(), .textMax = 8};
    AnswerCell(message, 0, cell);
    EXPECT_EQ("########", room) << "a preview of which only the height is wanted";
    cell.subitem = kLogMsgBody;
    cell.mask = RVIM_TEXT;
    for (const int size : {0, -1})
    {
        cell.textMax = size;
        AnswerCell(message, 0, cell);
        EXPECT_EQ("########", room);
    }
    cell.text = nullptr;
    cell.textMax = 8;
    AnswerCell(message, 0, cell);
}

TEST(MsgCells, LevelsHaveColoursAndImages)
{
    struct
    {
        std::uint32_t level;
        int color;
        int image;
    } const cases[] = {{0, -1, 0}, {1, -1, 0}, {2, -1, 1}, {3, 1, 2}, {4, 2, 3}, {5, 2, 4}, {6, -1, 0}};
    for (const auto& each : cases)
        for (int subitem = kLogMsgNone; subitem < kLogMsgKindCount; ++subitem)
        {
            FullMessage message;
            message.m_level = each.level;
            std::string room(kRoom, '\0');
            const _RVITEM cell = Answer(message, subitem, room);
            EXPECT_EQ(each.color, cell.textColor);
            EXPECT_EQ(each.color >= 0, (cell.mask & RVIM_TEXTCOLOR) != 0);
            EXPECT_EQ(subitem == kLogMsgLevel ? each.image : -1, cell.image);
            EXPECT_EQ(subitem == kLogMsgLevel, (cell.mask & RVIM_IMAGE) != 0);
        }
}

TEST(MsgCells, TheBodysFirstLine)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},          {"A", "A"},           {"A\r\nB", "A(...)"}, {"AB\nC", "A(...)"},
        {"A\nB", "(...)"}, {"A\r\n", "A\r\n"},   {"A\n", "A\n"},       {"\nB", "\nB"},
        {"\n", "\n"},      {"\nB\nC", "\nB\nC"}, {"A\rB", "A\rB"},     {"AB\n\n", "A(...)"}};
    for (const auto& [body, line] : cases)
        EXPECT_EQ(line, FirstLine(body)) << testing::PrintToString(body);
}

TEST(Watch, ShowsTheLatestError)
{
    const std::pair<const char*, const char*> lines[] = {{"A\r\nB", "A(...)"}, {"A\n", "(...)"},
                                                         {"A\r\n", "A(...)"},  {"\nB\nC", "\nB\nC"},
                                                         {"AB", "AB"},         {"", ""}};
    for (const auto& [body, line] : lines)
        EXPECT_EQ(line, WatchLine(body)) << testing::PrintToString(body);
    Watch watch;
    EXPECT_FALSE(watch.Add(1, nullptr));
    for (const std::uint32_t level : {0u, 1u, 3u, 4u, 3u, 5u, 6u})
    {
        FullMessage message;
        message.m_level = level;
        EXPECT_EQ(level == 4 || level == 5, watch.Add(level, &message));
    }
    EXPECT_EQ(5, watch.Id());
    EXPECT_EQ(4, watch.Image());
    EXPECT_EQ("A(...)", watch.Text());
    watch.Clear();
    EXPECT_EQ(-1, watch.Id());
    EXPECT_EQ(0, watch.Image());
    EXPECT_EQ("", watch.Text());
}

TEST(MsgCells, PreviewsAreCut)
{
    EXPECT_EQ(std::string(65535, 'x'), PreviewText(std::string(65535, 'x'), 0));
    EXPECT_EQ(std::string(65529, 'x') + "(...)", PreviewText(std::string(65536, 'x'), 0));
    EXPECT_EQ(std::string(65529, 'x') + "(...)", PreviewText(std::string(200'000, 'x'), 3));
    struct
    {
        const char* body;
        int lines;
        const char* text;
    } const cases[] = {{"a\r\nb\r\nc", 0, "a\r\nb\r\nc"},
                       {"a\r\nb\r\nc", 3, "a\r\nb\r\nc"},
                       {"a\r\nb\r\nc", 2, "a\r\nb\r\n..."},
                       {"a\nb\nc", 1, "a\n..."},
                       {"a\nb\n", 2, "a\nb\n"},
                       {"\n\nc", 1, "\n..."},
                       {"\n\nc", 2, "\n\n..."},
                       {"", 2, ""}};
    for (const auto& each : cases)
        EXPECT_EQ(each.text, PreviewText(each.body, each.lines)) << testing::PrintToString(each.body);

    // The message of 65,536 bytes goes into the room of a cell.
    FullMessage message;
    message.m_body = std::string(65536, 'y').c_str();
    EXPECT_EQ(65534u, Text(message, kLogMsgNone).size());
    message.m_body = std::string(65535, 'y').c_str();
    EXPECT_EQ(65535u, Text(message, kLogMsgNone).size());
}

TEST(MsgCells, LinesThatAreInSight)
{
    const std::string text = "a\r\nb\nc\r\rd";
    const std::pair<std::pair<int, int>, const char*> cases[] = {
        {{0, 1}, "a\r\n"}, {{1, 1}, "b\n"},      {{2, 2}, "c\r\r"},
        {{4, 1}, "d"},     {{4, 9}, "d"},        {{5, 1}, ""},
        {{0, 0}, ""},      {{0, 2}, "a\r\nb\n"}, {{0, 2'000'000'000}, "a\r\nb\nc\r\rd"}};
    for (const auto& [lines, shown] : cases)
        EXPECT_EQ(shown, LinesOf(text, lines.first, lines.second)) << lines.first << ", " << lines.second;
}

TEST(MsgCells, StatusTells)
{
    EXPECT_EQ("Rows:0", StatusText(0, 0, -2));
    EXPECT_EQ("Rows:3 | Selected:2", StatusText(3, 2, 0)) << "row 0 is not told";
    EXPECT_EQ("Rows:3 | Current:1", StatusText(3, 0, 1));
    EXPECT_EQ("Rows:1200 | Selected:1 | Current:7", StatusText(1200, 1, 7));
}

TEST(MsgRange, TellsIdsAndRows)
{
    MsgRange range;
    range.Clear(0);
    EXPECT_EQ(0, range.Tick()) << "nothing was ever announced";
    range.Announce(3);
    EXPECT_EQ(3, range.Tick());
    EXPECT_EQ(3u, range.IdOf(2));
    EXPECT_EQ(2, range.RowOf(3, 3));
    EXPECT_EQ(std::nullopt, range.RowOf(4, 3));
    EXPECT_EQ(std::nullopt, range.RowOf(0, 3));
    EXPECT_EQ(std::nullopt, range.RowOf(1, 0));
    for (const std::uint32_t last : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu})
    {
        range.Announce(last);
        EXPECT_EQ(0x7FFFFFFF, range.Tick());
    }
    range.ResetOffset();
    EXPECT_EQ(0u, range.Offset());
}

// What the rules say, in 64 bits.
TEST(MsgRange, IsWhatItsRulesSay)
{
    std::mt19937 random(14);
    MsgRange range;
    range.Announce(0); // before anything was announced there are no rows at all
    ASSERT_EQ(0, range.Tick());
    std::int64_t offset = 1, clear = 0, pending = -1, last = 0, rows = 0;
    for (int step = 0; step < 20'000; ++step)
    {
        switch (random() % 5)
        {
        case 0:
        case 1:
            last = random() % 100;
            pending = 1;
            range.Announce(static_cast<std::uint32_t>(last));
            break;
        case 2:
            clear = pending = offset + rows;
            range.Clear(static_cast<int>(rows));
            break;
        case 3:
            if (random() % 4 == 0)
                clear = 0, range.ShowCleared();
            break;
        default:
            const std::optional<int> told = range.Tick();
            ASSERT_EQ(pending >= 0, told.has_value());
            if (!told)
                break;
            offset = std::max(clear, std::exchange(pending, -1));
            rows = std::max<std::int64_t>(0, last - offset + 1);
            ASSERT_EQ(rows, *told);
        }
        ASSERT_EQ(offset, range.Offset());
        ASSERT_EQ(last, range.Last());
    }
}

TEST(PreviewSizes, AreThoseOfTheLastThousands)
{
    PreviewSizes sizes;
    EXPECT_FALSE(sizes.Find(0));
    sizes.Keep(1, {1, 1});
    EXPECT_FALSE(sizes.Find(0));
    sizes.Keep(0, {1, 2});
    sizes.Keep(5000, {3, 4});
    EXPECT_EQ(1, sizes.Find(0)->right);
    EXPECT_EQ(4, sizes.Find(5000)->height);
    EXPECT_FALSE(sizes.Find(4096));
    EXPECT_FALSE(sizes.Find(904)) << "another one of the same place";
    sizes.Keep(904, {5, 6});
    EXPECT_FALSE(sizes.Find(5000));
    for (std::uint32_t id = 10'000; id < 11'000; ++id)
        sizes.Keep(id, {static_cast<int>(id), 1});
    for (std::uint32_t id = 10'000; id < 11'000; ++id)
        ASSERT_EQ(static_cast<int>(id), sizes.Find(id)->right);
    sizes.Forget();
    EXPECT_FALSE(sizes.Find(10'500));
}

} // namespace
