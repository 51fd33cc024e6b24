// Text logs as sources: live input, files that are followed.
#include "msgservice/sources/TextSource.h"
#include "ListedMessages.h"
#include "msgservice/sources/FileInput.h"
#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>
#include <random>

namespace msgservice
{

namespace
{

const TextFormats& Formats()
{
    static const TextFormats formats;
    return formats;
}

std::string Line(const std::string& text)
{
    return "2023-10-09 03:04:05 INFO " + text + "\n";
}

// Pieces one after the other; an empty one is a look that finds nothing.
class PiecesInput : public ByteInput
{
public:
    explicit PiecesInput(std::vector<std::string> pieces) : m_pieces(std::move(pieces)) {}

    Outcome Read(std::span<char> room, std::size_t& size) override
    {
        if (m_next == m_pieces.size())
            return Outcome::End;
        const std::string& piece = m_pieces[m_next++];
        EXPECT_LE(piece.size(), room.size());
        std::copy(piece.begin(), piece.end(), room.begin());
        size = piece.size();
        return piece.empty() ? Outcome::Nothing : Outcome::Bytes;
    }
    std::string Name() const override { return "pieces"; }

private:
    std::vector<std::string> m_pieces;
    std::size_t m_next = 0;
};

// All messages, with "--" after each look that found nothing.
std::string Read(TextSource& source)
{
    Listed listed;
    for (MessageSource::State state = MessageSource::State::More; state != MessageSource::State::Ended;)
    {
        state = source.Read(listed);
        listed.text += state == MessageSource::State::Waiting ? "--\n" : "";
    }
    return listed.text + source.TakeNotices();
}

std::string ReadPieces(const std::vector<std::string>& pieces, TextSourceOptions options = {})
{
    TextSource source(std::make_unique<PiecesInput>(pieces), Formats(), options);
    return Read(source);
}

// A file "x.log" that is followed, and others who change it.
class FollowedFile : public testing::Test
{
protected:
    FollowedFile() : m_replaced(ZEMA::SetFileCalls(&m_files)) {}
    ~FollowedFile() override
    {
        m_source.reset();
        EXPECT_EQ(0U, m_files.OpenHandles());
        ZEMA::SetFileCalls(m_replaced);
    }

    void Write(const std::string& path, const std::string& text) { m_files.SetContents(path, text); }
    void Append(const std::string& path, const std::string& text)
    {
        Write(path, m_files.Contents(path) + text);
    }
    void Follow()
    {
        m_source.emplace(std::make_unique<FileInput>("x.log", FileInput::Until::Forever), Formats());
    }

    // What a number of looks find.
    std::string Look(int looks = 1)
    {
        Listed listed;
        while (looks > 0)
            looks -= m_source->Read(listed) == MessageSource::State::Waiting ? 1 : 0;
        return listed.text + m_source->TakeNotices();
    }

    ZEMA::MemoryFiles m_files;
    ZEMA::IFileCalls* m_replaced;
    std::optional<TextSource> m_source;
};

} // namespace

TEST(TextSource, TheFormatIsFoundWhenThereAreNoMoreLinesForNow)
{
    const std::string one = Line("a: one");
    EXPECT_EQ("1: a [one]\n--\n2: b [two]\n", ReadPieces({one, "", Line("b: two")}));
    EXPECT_EQ("--\n1: a [one]\n--\n", ReadPieces({one.substr(0, 20), "", one.substr(20), ""}));
    EXPECT_EQ("1: a [one]\n", ReadPieces({one.substr(0, one.size() - 1)}));
    EXPECT_EQ("--\n--\n", ReadPieces({"\n", "", ""}));
    std::vector<std::string> giant(80, std::string(100'000, 'x'));
    giant.insert(giant.begin(), "2023-10-09 03:04:05 INFO a: ");
    giant.push_back("\n" + Line("b: next"));
    EXPECT_TRUE(ReadPieces(giant).ends_with("xxx (...)]\n2: b [next]\n"));
    EXPECT_EQ("", ReadPieces({}));

    TextSource source(std::make_unique<PiecesInput>(std::vector<std::string>{one, Line("b: two")}),
                      Formats());
    EXPECT_EQ("", source.Explanation());
    EXPECT_TRUE(source.Detect());
    EXPECT_EQ("level-topic", source.Choices().front().format->name);
    EXPECT_NE("", source.Explanation());
    EXPECT_EQ("1: a [one]\n2: b [two]\n", Read(source));
}

TEST(TextSource, PiecesOfAnySizeGiveTheSameMessages)
{
    std::mt19937 random(5);
    std::string text = "\xEF\xBB\xBF"
                       "banner\r\n";
    for (int line = 0; line < 60; ++line)
        text += random() % 3 == 0 ? "  continues\r\n\r\n" : Line("t: " + std::to_string(line));
    const std::string whole = ReadPieces({text});
    for (int round = 0; round < 20; ++round)
    {
        std::vector<std::string> pieces;
        for (std::size_t at = 0, size = 0; at < text.size(); at += size)
        {
            size = 1 + random() % (round < 10 ? 7 : 700);
            pieces.push_back(text.substr(at, size));
        }
        EXPECT_EQ(whole, ReadPieces(pieces));
    }
}

TEST(TextSource, AnExpressionThatExplodesIsToldAndLeftAlone)
{
    TextFormats formats;
    formats.Add(R"json({"formats": [{"name": "bad", "expression": "(?:a|aa)+(?<body>b)$"}]})json");
    std::string text;
    for (int line = 0; line < 12; ++line)
        text += std::string(60, 'a') + "c b\n";
    TextSource source(std::make_unique<PiecesInput>(std::vector<std::string>{"aab\n" + text}), formats,
                      {"", formats.Find("bad")});
    const std::string told = Read(source);
    EXPECT_NE(std::string::npos,
              told.find("not tried any more, because too many lines cost too much: bad.\n"))
        << told;
    EXPECT_EQ(0U, told.find("1:  [b|aaa"));
}

TEST_F(FollowedFile, GrowsAndIsContinued)
{
    Write("x.log", Line("a: one") + Line("b: two"));
    Follow();
    EXPECT_EQ("1: a [one]\n2: b [two]\n", Look());
    EXPECT_EQ("", Look(3));
    Append("x.log", "  more\n");
    EXPECT_EQ("3: b [  more]\n", Look());
    Append("x.log", "2023-10-09 03:04:05 INFO c: th");
    EXPECT_EQ("", Look());
    Append("x.log", "ree\n2023-10-09 03:04:05 INFO d: fo");
    EXPECT_EQ("4: c [three]\n", Look());
    EXPECT_EQ("5: d [fo]\n", Look());
    Append("x.log", "ur\n" + Line("e: five"));
    EXPECT_EQ("5: d [ur]\n6: e [five]\n", Look());
}

TEST_F(FollowedFile, AnotherFileGetsItsName)
{
    Write("x.log", Line("a: one"));
    Follow();
    EXPECT_EQ("1: a [one]\n", Look());
    m_files.Rename("x.log", "x.1");
    EXPECT_EQ("'x.log' has gone; it is waited for.\n", Look(3));
    Append("x.1", Line("a: to the old one"));
    Write("x.log", "banner\n" + Line("b: new"));
    EXPECT_EQ("2: a [to the old one]\n", Look());
    Append("x.1", Line("a: the last"));
    EXPECT_EQ("3: a [the last]\n1:  [banner]\n2: b [new]\n'x.log' is another file now.\n", Look(2));
    EXPECT_EQ("", Look(2));
}

TEST_F(FollowedFile, IsEmptiedOrWrittenAgain)
{
    Write("x.log", Line("a: one") + Line("a: two"));
    Follow();
    EXPECT_EQ("1: a [one]\n2: a [two]\n", Look());
    Write("x.log", Line("b: short"));
    EXPECT_EQ("1: b [short]\n'x.log' has become shorter and is read again.\n", Look());
    Write("x.log", Line("c: other") + Line("c: and longer than before"));
    EXPECT_EQ(
        "1: c [other]\n2: c [and longer than before]\n'x.log' has another beginning and is read again.\n",
        Look());
    Write("x.log", "");
    EXPECT_EQ("'x.log' has become shorter and is read again.\n", Look());
    Append("x.log", Line("d: anew"));
    EXPECT_EQ("1: d [anew]\n", Look());
}

TEST_F(FollowedFile, ComesBackAsItWas)
{
    Write("x.log", Line("a: one"));
    Follow();
    EXPECT_EQ("1: a [one]\n", Look());
    m_files.ForgetCalls();
    Look();
    const auto create = std::find(m_files.Calls().begin(), m_files.Calls().end(), "Create x.log");
    ASSERT_NE(m_files.Calls().end(), create);
    const auto number = static_cast<unsigned long>(create - m_files.Calls().begin()) + 1;
    m_files.ForgetCalls();
    m_files.SetFault({number, ZEMA::Fault::InvalidHandle}); // as for a file that is being deleted
    EXPECT_EQ("'x.log' has gone; it is waited for.\n", Look());
    EXPECT_EQ(0U, m_files.OpenHandles());
    m_files.ClearFault();
    Append("x.log", Line("a: two"));
    EXPECT_EQ("2: a [two]\n", Look(2));
    EXPECT_EQ("", Look(2));
}

TEST_F(FollowedFile, FailuresAreOneSentence)
{
    try
    {
        Follow();
        FAIL();
    }
    catch (const std::runtime_error& error)
    {
        EXPECT_STREQ("'x.log' cannot be opened: Error 2.", error.what());
    }
    Write("x.log", Line("a: one") + Line("b: two"));
    Follow();
    m_files.ForgetCalls();
    m_files.SetFault({1, ZEMA::Fault::Fail, true});
    EXPECT_EQ("'x.log' cannot be read: Error 5.\n", Look(3));
    m_files.ClearFault();
    EXPECT_EQ("1: a [one]\n2: b [two]\n", Look());
}

} // namespace msgservice
