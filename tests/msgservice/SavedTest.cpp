// Saved files against the plain messages that were saved: what comes back, who may write, and what other
// files, hostile values and damage are answered with.
#include "tests/msgservice/SavedFiles.h"
#include "tests/support/LongRun.h"

#include <tuple>

namespace
{

using namespace msgservice;

class SavedTest : public SavedFilesTest
{
protected:
    // Saves a message with hostile texts and numbers at the edges, and notes what is to come back of it.
    void AddRandom(MessageFileWriter& writer)
    {
        using Limits = std::numeric_limits<std::int32_t>;
        static const std::string longText(40'000, 'x');
        const std::pair<std::string_view, std::string_view> texts[] = {
            {"", ""},
            {"'; drop table messages; --", "'; drop table messages; --"},
            {"gr\xFC\xDF", "gr\xC3\xBC\xC3\x9F"},
            {"\xF0\x9F\x98\x80\r\n", "\xF0\x9F\x98\x80\r\n"},
            {longText, longText}};
        MessageFields fields;
        MessageFields back;
        for (const auto field : kDumpedTexts)
            std::tie(fields.*field, back.*field) =
                texts[m_random() % (field == &MessageFields::body ? 5 : 4)];
        for (const auto field : kDumpedNumbers)
            back.*field = fields.*field = std::array{0, 1, -1, Limits::min(), Limits::max()}[m_random() % 5];
        back.time = fields.time = std::array{kNoTime, Time{0}, kNoTime + 1}[m_random() % 3];
        fields.level = m_random() % 8;
        back.level = fields.level < 6 ? fields.level : 2;
        back.indent = fields.indent = std::array{0u, 1u, 0xFFFFFFFFu}[m_random() % 3];
        back.countsSourceLine = fields.countsSourceLine = m_random() % 2 == 0;
        writer.Add(fields);
        m_saved.Add(back);
    }

    // Messages of all lengths, ascending as texts, and the bytes of their file.
    std::string SaveNumbered()
    {
        MessageFileWriter writer(m_path, Mode::Replace, {});
        for (std::size_t i = 0; i < 300; ++i)
        {
            const std::string body = std::to_string(100'000 + i) + std::string(i % 50 == 0 ? 20'000 : i, 'b');
            MessageFields fields;
            fields.body = body;
            fields.topic = "topic";
            writer.Add(fields);
            m_saved.Add(fields);
        }
        writer.Commit();
        std::ifstream file(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string Refused(Mode mode) const
    {
        return SavedFilesTest::Refused([&] { Save({}, mode); });
    }

    // What other programs may do to the file.
    void Change(const std::string& sql) const { Database(m_path, Database::Access::Write).Run(sql.c_str()); }

    std::mt19937 m_random{7};
    CollectingSink m_saved;
};

TEST_F(SavedTest, EveryFieldOfEveryMessageComesBack)
{
    SavedAbout about;
    about.title = "caf\xE9";
    {
        MessageFileWriter writer(m_path, Mode::Replace, about);
        for (int i = 0; i < 403; ++i)
        {
            if (i == 300 || i == 400)
                writer.Commit();
            EXPECT_EQ(i >= 300, std::filesystem::exists(m_path));
            AddRandom(writer);
        }
        EXPECT_EQ(400u, writer.Committed());
    }
    m_saved.dumps.resize(400);
    {
        MessageFileWriter writer(m_path, Mode::Append, {});
        for (int i = 0; i < 200; ++i)
            AddRandom(writer);
        writer.Commit();
    }
    EXPECT_EQ(1, FileCount());

    CollectingSink got;
    EXPECT_EQ("", Told(got));
    EXPECT_TRUE(m_saved.dumps == got.dumps);
    MessageFile file(m_path, MessageFile::Access::ReadOnly);
    EXPECT_EQ("caf\xC3\xA9 ", file.About("title") + " " + file.About("origin"));
    EXPECT_EQ(600, file.Count());
    got.dumps.clear();
    EXPECT_EQ(458, file.Read(451, 7, got).next);
    EXPECT_TRUE(std::equal(got.dumps.begin(), got.dumps.end(), &m_saved.dumps[450], &m_saved.dumps[457]));
}

TEST_F(SavedTest, AnyToolReadsIt)
{
    MessageFields fields;
    fields.timestamp = "10:00";
    fields.time = 5;
    MessageFileWriter writer(m_path, Mode::Append, {});
    for (fields.level = 3; fields.level < 5; ++fields.level)
        writer.Add(fields);
    writer.Commit();
    const Database any(m_path, Database::Access::ReadOnly);
    EXPECT_EQ(
        1, any.Number("select count(*) from messages where level >= 4 and timestamp = '10:00' and time = 5 "
                      "and topic is null and line is null"));
    EXPECT_EQ(1, any.Number("select count(*) from pragma_integrity_check where integrity_check = 'ok'"));
}

TEST_F(SavedTest, LongTextsAreCutBetweenCharactersAndCommittedAtOnce)
{
    const std::string fits(16 * 1024 * 1024 - 7, 'x');
    MessageFileWriter writer(m_path, Mode::Append, {});
    Add(writer, {fits + "\xC3\xA9 and more"});
    EXPECT_EQ(0u, writer.Committed());
    Add(writer, {"2"});
    EXPECT_EQ(2u, writer.Committed());
    EXPECT_TRUE(fits + " [...]|2|" == Bodies());
}

TEST_F(SavedTest, WhatIsNotCommittedReplacesNothing)
{
    Save({"old"});
    std::ofstream(m_path + ".saving") << std::string(100'000, 'x'); // of a killed writer
    {
        MessageFileWriter writer(m_path, Mode::Replace, {});
        Add(writer, {"new"});
    }
    EXPECT_EQ("old|", Bodies());
    EXPECT_EQ(1, FileCount());
    Save({"a", "b"});
    Save({"c"}, Mode::Append);
    EXPECT_EQ("a|b|c|", Bodies());
}

TEST_F(SavedTest, OtherFilesAreToldApart)
{
    const std::string foreign = "it is no saved file of messages";
    const std::string newer = "it was saved by a newer version of the program (format 2; this one knows 1)";
    const std::string changed = "it is damaged: what it says of its tables is not what was saved";
    const struct
    {
        std::function<void()> make;
        std::string read;
        std::string replace;
    } cases[] = {
        {[] {}, "there is no such file", ""},
        {[&] { std::filesystem::create_directory(m_path); }, "it is a folder", "it is a folder"},
        {[&] { std::ofstream(m_path) << ""; }, "it is empty", ""},
        {[&] { std::ofstream(m_path) << foreign; }, foreign, foreign + " and will not be replaced by one"},
        {[&] { Save({}), Change("pragma application_id = 0"); }, "it is another program's database",
         foreign + " and will not be replaced by one"},
        {[&] { Save({}), Change("pragma user_version = 2"); }, newer, newer},
        {[&] { Save({}), Change("alter table messages add column more"); }, changed, changed},
        {[&] { Save({}), Change("drop table messages; create view messages as select 1"); }, changed,
         changed},
    };
    for (const auto& test : cases)
    {
        std::filesystem::remove_all(m_path);
        test.make();
        EXPECT_EQ(m_path + ": " + test.read, Bodies());
        EXPECT_EQ(test.replace.empty() ? "" : m_path + ": " + test.replace, Refused(Mode::Replace));
    }
    m_path += "/none/x.zemalog";
    EXPECT_EQ(m_path + ": there is no such folder", Refused(Mode::Replace));
}

TEST_F(SavedTest, ValuesOfOthersAreNotTrusted)
{
    Save({"1", "2", "3", "4"});
    Change("update messages set level = 9, indent = -1, line = 3000000000, time = 'x' where id = 1;"
           "update messages set body = cast(x'610062' as text), topic = x'00ff', source = 5 where id = 2;"
           "insert into messages (id, body) values (-5, 'x');"
           "create trigger evil after insert on messages begin delete from messages; end;");
    Save({"5"}, Mode::Append);
    Change("update messages set id = 9223372036854775807 where id = 4");
    CollectingSink got;
    EXPECT_EQ(m_path + ": it is damaged, and 1 message is missing\n" + m_path +
                  ": 4 values were left out that cannot be right\n",
              Told(got));
    MessageFields fields;
    for (const char* const body : {"1", "a b", "3", "5"})
    {
        fields.topic = *body == 'a' ? " \xFF" : "";
        fields.source = *body == 'a' ? "5" : "";
        fields.body = body;
        m_saved.Add(fields);
    }
    EXPECT_EQ(m_saved.dumps, got.dumps);
}

TEST_F(SavedTest, DeletedMessagesAreToldAndTheirNumbersNotGivenAgain)
{
    Save({"1", "2", "3", "4"});
    Change("delete from messages where id in (2, 4)");
    const std::string told = m_path + ": 2 messages are missing\n";
    EXPECT_EQ(told + "1|3|", Bodies());
    Save({"5"}, Mode::Append);
    EXPECT_EQ(told + "1|3|5|", Bodies());
}

TEST_F(SavedTest, ThereIsOneWriterAndReadersReadWhatItCommits)
{
    const std::string writing = m_path + ": another program is writing to it";
    MessageFileWriter writer(m_path, Mode::Replace, {});
    EXPECT_EQ(m_path + ": another program is saving it", Refused(Mode::Replace));
    writer.Commit();
    Add(writer, {"1"});
    EXPECT_EQ(writing, Refused(Mode::Replace));

    SavedSource source(m_path, SavedSource::AtEnd::Follow);
    CollectingSink got;
    for (std::size_t round = 0; round < 3; ++round)
    {
        EXPECT_EQ(MessageSource::State::Waiting, source.Read(got));
        EXPECT_EQ(round, got.dumps.size());
        writer.Commit();
        EXPECT_EQ(writing, Refused(Mode::Append));
        EXPECT_EQ(MessageSource::State::Waiting, source.Read(got));
        EXPECT_EQ(round + 1, got.dumps.size());
        Add(writer, {"more"});
    }
    EXPECT_EQ("", source.TakeNotices());
}

TEST_F(SavedTest, ACommitThatAReaderKeepsOutCanBeMadeAgain)
{
    Save({"1"});
    MessageFileWriter writer(m_path, Mode::Append, {});
    Add(writer, {"2"});
    {
        const Database reader(m_path, Database::Access::ReadOnly);
        reader.Run("begin; select * from messages");
        EXPECT_EQ(m_path + ": another program is reading it",
                  SavedFilesTest::Refused([&] { writer.Commit(); }));
    }
    Add(writer, {"3"});
    writer.Commit();
    EXPECT_EQ("1|2|3|", Bodies());
}

TEST_F(SavedTest, AFileThatIsOpenIsReplacedAtOnceOrOnceItIsClosed)
{
    Save({"old"});
    auto reader = std::make_unique<MessageFile>(m_path);
    MessageFileWriter writer(m_path, Mode::Replace, {});
    Add(writer, {"1"});
    const std::string refused = SavedFilesTest::Refused([&] { writer.Commit(); });
    EXPECT_TRUE(refused.empty() || refused.starts_with(m_path + ": it cannot be replaced, ")) << refused;
    EXPECT_EQ(refused.empty() ? "1|" : "old|", Bodies());
    CollectingSink got;
    EXPECT_TRUE(reader->Read(1, 10, got).atEnd);
    EXPECT_EQ(1u, got.dumps.size());
    reader.reset();
    Add(writer, {"2"});
    writer.Commit();
    EXPECT_EQ("1|2|", Bodies());
}

// Of what is left all is read that the tree leads to, and none of it is wrong.
TEST_F(SavedTest, OfACutFileTheRestIsReadAndTheLossIsTold)
{
    const std::string whole = SaveNumbered();
    const std::vector<std::string>& wanted = m_saved.dumps;
    CollectingSink got;
    for (std::size_t size = 1; size < whole.size(); size += size % 8192 == 0 ? 1 : 4096 - size % 4096)
    {
        got.dumps.clear();
        std::ofstream(m_path, std::ios::binary) << whole.substr(0, size);
        EXPECT_NE("", Told(got)) << size;
        EXPECT_TRUE(std::includes(wanted.begin(), wanted.end(), got.dumps.begin(), got.dumps.end())) << size;
    }
    EXPECT_GT(got.dumps.size(), wanted.size() * 9 / 10);
}

TEST_F(SavedTest, ADamagedMessageHidesNoOther)
{
    std::string bytes = SaveNumbered();
    const auto before = [&](const char* number, const char* body) {
        return bytes.rfind(number, bytes.find(body));
    };
    bytes[before("\x81\x21", "100160b")] = '\xFF';     // its number: from 161 to 16289
    bytes[before("\x81\x2B", "100170b") + 2] = '\x7F'; // what follows the number: how its fields are laid out
    std::ofstream(m_path, std::ios::binary) << bytes;
    m_saved.dumps.erase(m_saved.dumps.begin() + 170);
    m_saved.dumps.erase(m_saved.dumps.begin() + 160);
    CollectingSink got;
    EXPECT_EQ(m_path + ": it is damaged, and 2 messages are missing\n", Told(got));
    EXPECT_TRUE(m_saved.dumps == got.dumps);
}

// A changed byte of a text shows in that text; of everything else the loss is told. A change costs the
// messages of a page at most, unless it is in one that the others are found by: the first of the file and the
// first of the tree.
TEST_F(SavedTest, OfADamagedFileTheRestIsReadAndTheLossIsTold)
{
    const std::string whole = SaveNumbered();
    const std::vector<std::string>& wanted = m_saved.dumps;
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + Rounds(100u, 5'000u); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        std::mt19937 random(seed);
        std::string bytes = whole;
        const std::size_t changes = seed % 2 == 0 ? 1 : 1 + random() % 20;
        std::size_t begin = bytes.size(); // of what is changed
        for (std::size_t i = 0; i < changes; ++i)
        {
            const std::size_t at = random() % bytes.size();
            bytes[at] = static_cast<char>(random());
            begin = std::min(begin, at);
        }
        std::ofstream(m_path, std::ios::binary) << bytes;
        CollectingSink got;
        const bool isTold = !Told(got).empty();
        std::sort(got.dumps.begin(), got.dumps.end());
        std::vector<std::string> right;
        std::set_intersection(wanted.begin(), wanted.end(), got.dumps.begin(), got.dumps.end(),
                              std::back_inserter(right));
        const std::size_t lost = wanted.size() - right.size();
        EXPECT_TRUE(isTold || (got.dumps.size() == wanted.size() && lost <= changes)) << lost;
        EXPECT_TRUE(begin < 2 * 8192 || lost <= changes * 75) << lost;
    }
}

} // namespace
