// Bytes to lines, and lines to messages.
#include "msgservice/text/TextMessages.h"
#include "ListedMessages.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace msgservice
{

namespace
{

void Give(LineReader& reader, std::string_view bytes)
{
    const std::span<char> room = reader.Room();
    ASSERT_LE(bytes.size(), room.size());
    std::copy(bytes.begin(), bytes.end(), room.begin());
    reader.Add(bytes.size());
}

// The lines of `bytes`, each followed by a bar, if they come in pieces of `size`.
std::string LinesOf(std::string_view bytes, std::size_t size)
{
    LineReader reader;
    std::string lines;
    std::string_view line;
    for (std::size_t at = 0; at < bytes.size(); at += size)
    {
        Give(reader, bytes.substr(at, size));
        while (reader.NextLine(line))
            lines.append(line).append("|");
    }
    if (reader.TakeUnfinished(line))
        lines.append(line).append("|");
    return lines;
}

std::string Utf16(std::u16string_view text, bool isBig)
{
    std::string bytes;
    for (const char16_t unit : text)
    {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += isBig ? high : low;
        bytes += isBig ? low : high;
    }
    return bytes;
}

// The messages of a text whose format is found in it; `splits` says where it comes in pieces, with Finish
// after each.
std::string MessagesOf(std::string_view text, const std::vector<std::size_t>& splits = {},
                       const char* format = nullptr)
{
    static const TextFormats formats;
    static FormatDetector detector(formats);
    LineReader look;
    Give(look, text);
    std::vector<std::string_view> lines;
    std::string_view line;
    while (look.NextLine(line) || look.TakeUnfinished(line))
        if (!line.empty())
            lines.push_back(line);
    const TextFormat* forced = format ? formats.Find(format) : nullptr;
    TextMessages messages(formats, detector.Detect(lines, forced, 0), "");
    LineReader reader;
    Listed listed;
    std::size_t at = 0;
    for (const std::size_t split : splits)
    {
        Give(reader, text.substr(at, split - at));
        at = split;
        messages.TakeLines(reader, listed);
        messages.Finish(listed);
        listed.text += "--\n";
    }
    Give(reader, text.substr(at));
    messages.TakeLines(reader, listed);
    messages.TakeUnfinished(reader, listed);
    messages.Finish(listed);
    return listed.text;
}

} // namespace

TEST(LineReader, LineEndsAndEncodingsHoweverTheBytesCome)
{
    using namespace std::string_literals;
    const std::u16string wide = u"a\u00E4\U0001F600\r\n\u20AC\n"s;
    const std::string narrow = "aä😀|€|";
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a\nb\r\nc\r", "a|b|c|"},
        {"a\r\r\n\n\nb", "a|||b|"},
        {"\xEF\xBB\xBFx\ny", "x|y|"},
        {"\xEF\xBBx\n", "\xEF\xBBx|"},
        {"\xFFx\n", "\xFFx|"},
        {"\xEF", "\xEF|"},
        {"caf\xE9 \xC3\xA9\n", "caf\xE9 \xC3\xA9|"},
        {"a\0b\n\0\n"s, "a b| |"},
        {"\xFF\xFE" + Utf16(wide, false), narrow},
        {"\xFE\xFF" + Utf16(wide, true), narrow},
        {"\xFF\xFE" + Utf16(u"x\0\xD800y\n"s, false), "x \xEF\xBF\xBDy|"},
        {"\xFF\xFE"s, ""},
        {"\xFF\xFE" + Utf16(u"\nx"s, false), "|x|"},
    };
    for (const auto& [bytes, lines] : cases)
        for (const std::size_t size : {1, 2, 3, 5, 1000})
            EXPECT_EQ(lines, LinesOf(bytes, size)) << bytes << " in pieces of " << size;
}

TEST(LineReader, LongLinesAreCutBetweenCharacters)
{
    LineReader reader;
    std::string_view line;
    std::vector<std::string> lines;
    std::size_t most = 0;
    std::string bytes;
    for (int count = 0; count < 100'000; ++count)
        bytes += "ä";
    for (int piece = 0; piece < 50; ++piece) // 10 MB without a line feed
    {
        Give(reader, piece == 0 ? "b" + bytes : bytes);
        while (reader.NextLine(line))
            lines.emplace_back(line);
        most = std::max(most, reader.Room().size());
    }
    Give(reader, "end\nnext\n");
    while (reader.NextLine(line))
        lines.emplace_back(line);
    ASSERT_EQ(2U, lines.size());
    EXPECT_EQ("next", lines[1]);
    EXPECT_LE(lines[0].size(), kLongestLine);
    EXPECT_GE(lines[0].size(), kLongestLine - 4);
    EXPECT_TRUE(lines[0].ends_with("ä (...)"));
    EXPECT_LE(most, 4U * 1024 * 1024);
}

TEST(TextMessages, WhatDoesNotMatchContinues)
{
    EXPECT_EQ("1:  [banner]\n"
              "3: a [first]\n"
              "4: b [it failed|java.lang.Exception: no|\tat x||Caused by: y]\n"
              "10: c [third]\n",
              MessagesOf("banner\n\n"
                         "2023-10-09 03:04:05 INFO a: first\n"
                         "2023-10-09 03:04:05 ERROR b: it failed\n"
                         "java.lang.Exception: no\r\n\tat x\n \nCaused by: y\n\n"
                         "2023-10-09 03:04:06 INFO c: third\n\n\n"));
    EXPECT_EQ("1: Shop.Orders [late|      again]\n4: Shop.Orders [x]\n",
              MessagesOf("info: Shop.Orders[14]\n      late\n      again\ninfo: Shop.Orders[14]\n      x\n"));
    EXPECT_EQ("1:  [a]\n3:  [b]\n", MessagesOf("a\n\nb"));
    EXPECT_EQ("", MessagesOf(""));
}

TEST(TextMessages, WhatComesAfterTheEndBecomesAMessageOfItsOwn)
{
    const std::string text = "2023-10-09 03:04:05 INFO a: first\n more\n2023-10-09 03:04:06 INFO b: second\n";
    EXPECT_EQ("1: a [first| more]\n3: b [second]\n", MessagesOf(text));
    EXPECT_EQ("1: a [first]\n--\n2: a [ more]\n3: b [second]\n", MessagesOf(text, {34}));
    EXPECT_EQ("--\n1: a [first| more]\n3: b [second]\n", MessagesOf(text, {10}));
}

TEST(TextMessages, LongBodiesAreCut)
{
    const TextFormats formats;
    const std::vector<std::string_view> lines = {"2023-10-09 03:04:05 INFO a: first"};
    TextMessages messages(formats, FormatDetector(formats).Detect(lines, nullptr, 0), "");
    LineReader reader;
    Listed listed;
    Give(reader, std::string(lines[0]) + "\n");
    for (int piece = 0; piece < 40; ++piece)
    {
        messages.TakeLines(reader, listed);
        std::string more;
        for (int line = 0; line < 1000; ++line)
            more += "x" + std::string(98, '\xA4') + "\n";
        Give(reader, more);
    }
    messages.TakeLines(reader, listed);
    messages.Finish(listed);
    ASSERT_EQ(1U, listed.sizes.size());
    EXPECT_LE(listed.sizes[0], kLongestBody);
    EXPECT_GE(listed.sizes[0], kLongestBody - 8);
    EXPECT_TRUE(listed.last.ends_with(kCutMark));
    listed = {};
    Give(reader, "2023-10-09 03:04:06 INFO a: next\nx\n");
    messages.TakeLines(reader, listed);
    messages.Finish(listed);
    EXPECT_EQ("40002: a [next|x]\n", listed.text);
}

TEST(TextMessages, AnyBytesGiveMessagesAndLoseNoText)
{
    std::mt19937 random(7);
    const std::string letters = "2023-10-09 03:04:05 INFO a: {\"}[]\n\n\r\t\0\xFF\xC3\xA4=";
    for (int round = 0; round < 30; ++round)
    {
        std::string text;
        while (text.size() < 2000)
            if (random() % 20 == 0)
                text += "2023-10-09 03:04:05 INFO a: {\"level\":30,\"msg\":\"";
            else
                text += letters[random() % letters.size()];
        const std::string listed =
            MessagesOf(text, {random() % 1000}, round % 2 == 0 ? "json" : "level-topic");
        const auto count = [](const std::string& in, char c) { return std::count(in.begin(), in.end(), c); };
        if (round % 2 != 0)
            EXPECT_GE(count(listed, '{') + 100, count(text, '{'));
    }
}

} // namespace msgservice
