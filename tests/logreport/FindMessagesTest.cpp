// Finding messages: against a plain search of the same texts, while the view changes.
#include "logreport/model/FindMessages.h"
#include "tests/support/LongRun.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>
#include <regex>

namespace
{

using namespace logreport;
using FindWay = FindMessages::Direction;

struct FoundMessage : CCacheMsgData
{
    FoundMessage(const std::string& body, const std::string& topic)
    {
        m_body = body.c_str();
        m_topic = topic.c_str();
    }
};

struct FoundService : ILogMsgService
{
    static constexpr std::uint32_t kFirst = 3;

    ILogMsgData* GetMsg(std::uint32_t id) override
    {
        moment();
        const std::uint32_t row = id - kFirst;
        return row < messages.size() && row % 10 != 7 ? &messages[row] : nullptr;
    }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return nullptr; }
    std::uint32_t SkipWithout(const char*, std::int32_t, std::uint32_t id, std::uint32_t end) override
    {
        moment();
        while (skips && id < end && !skips(id))
            ++id;
        return id;
    }
    std::uint32_t Last() const { return kFirst + static_cast<std::uint32_t>(messages.size()) - 1; }

    std::vector<FoundMessage> messages;
    std::function<bool(std::uint32_t)> skips; // whether an id may match
    std::function<void()> moment = [] {};
};

// The plain search.

std::string Folded(std::string text)
{
    for (std::size_t at; (at = text.find("\xC3\x89")) != std::string::npos;)
        text.replace(at, 2, "\xC3\xA9");
    for (char& byte : text)
        byte = static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte);
    return text;
}

bool IsWordAt(const std::string& text, std::size_t at)
{
    return at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) || (text[at] & 0x80) != 0);
}

bool Holds(const FindWish& wish, std::string text)
{
    std::string wanted = wish.text;
    if (wish.isExpression)
    {
        for (std::size_t at; (at = text.find('\xC3')) != std::string::npos;)
            text.replace(at, 2, "q"); // letters that no expression names
        const auto flags = wish.matchesCase ? std::regex::ECMAScript : std::regex::icase;
        return std::regex_search(text,
                                 std::regex(wish.isWholeWord ? "\\b(?:" + wanted + ")\\b" : wanted, flags));
    }
    if (!wish.matchesCase)
    {
        wanted = Folded(wanted);
        text = Folded(text);
    }
    for (std::size_t at = 0; (at = text.find(wanted, at)) != std::string::npos; ++at)
        if (!wish.isWholeWord || (!IsWordAt(text, at - 1) && !IsWordAt(text, at + wanted.size())))
            return true;
    return false;
}

class FindRandom
{
public:
    explicit FindRandom(unsigned seed) : random(seed)
    {
        if (seed % 2 == 0)
            service.skips = [this](std::uint32_t id) { return Matches(id) || random(3) == 0; };
        AddMessages(random(300));
        Wish();
    }

    void Step()
    {
        const int what = random(8);
        if (what == 0)
            Wish();
        else if (what == 1)
            Change();
        else if (what == 2)
            AddMessages(random(70));
        else if (what == 3)
            CountAndCompare();
        else
            JumpAndCompare();
    }

    // The service has other messages in the midst of being asked.
    void ChangeMeanwhile()
    {
        bool isChanging = false;
        service.moment = [&] {
            if (!isChanging && random(40) == 0)
            {
                isChanging = true;
                random(2) ? Change() : Wish();
                isChanging = false;
            }
        };
        for (int i = 0; i < 200; ++i)
            find.Step(service, 5000);
        service.moment = [] {};
        CountAndCompare();
    }

private:
    bool Matches(std::uint32_t id)
    {
        const auto [known, isNew] = matches.try_emplace(id);
        const std::uint32_t row = id - FoundService::kFirst;
        FieldText text;
        if (isNew && row < service.messages.size() && row % 10 != 7)
            known->second = std::any_of(wish.fields.begin(), wish.fields.end(), [&](std::int32_t field) {
                return Holds(wish, std::string(text.Of(service.messages[row], field)));
            });
        return known->second;
    }

    std::string Text(int words)
    {
        static const char* const pieces[] = {"a", "b", "A", "ab", " ", "\xC3\xA9", "\xC3\x89", ".", "("};
        std::string text;
        while (words-- > 0)
            text += pieces[random(std::size(pieces))];
        return text;
    }

    void AddMessages(int count)
    {
        while (count-- > 0)
            service.messages.emplace_back(random(4) ? std::string(random(90), '-') : Text(12), Text(2));
        find.SetRange(FoundService::kFirst, service.Last());
        matches.clear();
    }

    void Wish()
    {
        matches.clear();
        static const char* const expressions[] = {"a+b", "b[. ]a", "^a", "[(.]A", "a( |b)"};
        wish.isExpression = random(3) == 0;
        wish.text = wish.isExpression ? expressions[random(std::size(expressions))] : Text(1 + random(3));
        wish.matchesCase = random(2) == 0;
        wish.isWholeWord = random(3) == 0;
        wish.fields.assign(1, random(2) ? kLogMsgBody : kLogMsgTopic);
        if (random(3) == 0)
            wish.fields = {kLogMsgTopic, kLogMsgTimestamp, kLogMsgBody};
        ASSERT_TRUE(find.SetWish(wish)) << wish.text << find.GetFault();
    }

    // Other messages under the same ids.
    void Change()
    {
        service.messages.clear();
        AddMessages(random(300));
        find.Restart();
    }

    // One id after the other, from one end on when the other is reached.
    FindMessages::Hit Expected(std::optional<std::uint32_t> from, bool isDown, bool includes)
    {
        FindMessages::Hit hit;
        const std::uint32_t first = FoundService::kFirst;
        const auto count = static_cast<std::uint32_t>(service.messages.size());
        const std::uint32_t row = from ? *from - first : isDown ? 0 : count - 1;
        for (std::uint32_t i = from && !includes ? 1 : 0; i < count + (from && !includes ? 1 : 0); ++i)
        {
            const std::uint32_t at = isDown ? row + i : row + count - i;
            if (!Matches(first + at % count))
                continue;
            hit.id = first + at % count;
            hit.isWrapped = isDown ? at >= count : at < count;
            return hit;
        }
        return hit;
    }

    void JumpAndCompare()
    {
        const bool isDown = random(2) == 0;
        const bool includes = random(2) == 0;
        std::optional<std::uint32_t> from;
        if (!service.messages.empty() && random(5) > 0)
            from = FoundService::kFirst + static_cast<std::uint32_t>(random(service.messages.size()));
        find.Jump(from, isDown ? FindWay::Down : FindWay::Up, includes);
        bool isMore = false;
        const std::uint32_t before = service.Last() + 1;
        while (find.IsJumping())
        {
            find.Step(service, 1 + random(9000));
            if (random(15) == 0 && !std::exchange(isMore, true))
                AddMessages(random(70));
            if (random(60) == 0)
                return Wish();
        }
        const std::optional<FindMessages::Hit> hit = find.TakeHit();
        ASSERT_TRUE(hit);
        if (isMore) // as seen from the end that was passed, or will be
        {
            ASSERT_TRUE(hit->id == kNoLogMsgId || Matches(hit->id));
            for (std::uint32_t id = FoundService::kFirst; hit->id == kNoLogMsgId && id < before; ++id)
                ASSERT_FALSE(Matches(id)) << wish.text << " in " << id;
            return;
        }
        const FindMessages::Hit expected = Expected(from, isDown, includes);
        ASSERT_EQ(expected.id, hit->id) << wish.text << " from " << from.value_or(0) << " down " << isDown;
        if (hit->id != kNoLogMsgId)
            ASSERT_EQ(expected.isWrapped, hit->isWrapped) << from.value_or(0) << " to " << hit->id;
    }

    void CountAndCompare()
    {
        while (find.Step(service, 1 + random(20'000)))
            ;
        ASSERT_TRUE(find.IsCounted());
        std::uint32_t count = 0;
        for (std::uint32_t id = FoundService::kFirst - 1; id <= service.Last() + 1; ++id)
            ASSERT_EQ(Matches(id) ? ++count : 0, find.NumberOf(id)) << wish.text << " in " << id;
        ASSERT_EQ(count, find.GetCount());
    }

    Random random;
    FoundService service;
    FindWish wish;
    FindMessages find;
    std::map<std::uint32_t, bool> matches;
};

TEST(FindMessages, FindsAndCountsAsAPlainSearchWould)
{
    const unsigned first = FirstSeed();
    const unsigned rounds = Rounds(12u, 100u);
    for (unsigned seed = first; seed < first + rounds && !testing::Test::HasFatalFailure(); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        FindRandom search(seed);
        for (int step = 0; step < 60 && !testing::Test::HasFatalFailure(); ++step)
            search.Step();
        if (!testing::Test::HasFatalFailure())
            search.ChangeMeanwhile();
    }
}

std::string Status(const FindMessages& find, std::uint32_t id)
{
    return FoundText(find, find.NumberOf(id));
}

// What is told of an id after all messages have been looked at.
std::string LastStatus(FindMessages& find, FoundService& service, std::uint32_t id)
{
    while (find.Step(service))
        ;
    return Status(find, id);
}

TEST(FindMessages, TellsWhatIsWrongAndWhatIsTooCostly)
{
    FoundService service;
    for (int i = 0; i < 1300; ++i)
        service.messages.emplace_back(i % 2 ? "some text" : "another text", "");
    FindMessages find;
    find.SetRange(FoundService::kFirst, service.Last());
    find.SetWish({"SOME", {kLogMsgBody}});
    EXPECT_EQ("Searching...", Status(find, 4));
    find.Step(service, 256 * 70);
    EXPECT_EQ("27+ found", Status(find, 5));
    EXPECT_EQ("1 of 27+", Status(find, 4));
    EXPECT_EQ("27+ found", Status(find, 130)) << "those before it are not all known";
    EXPECT_EQ("520 found", LastStatus(find, service, 5));
    find.SetWish({"text", {kLogMsgBody}});
    EXPECT_EQ("1,170 of 1,170", LastStatus(find, service, service.Last()));
    find.SetWish({"none", {kLogMsgBody}});
    EXPECT_EQ("Not found", LastStatus(find, service, 4));
    EXPECT_FALSE(find.SetWish({"a(b", {kLogMsgBody}, false, false, true}));
    EXPECT_FALSE(find.SetWish({"a(b", {kLogMsgBody}, false, false, true})) << "nor the second time";
    EXPECT_EQ("At character 4: missing closing parenthesis", find.GetFault());
    EXPECT_FALSE(find.HasWish() || find.Step(service));
    find.Jump(4, FindWay::Down, false);
    EXPECT_EQ(kNoLogMsgId, find.TakeHit().value().id);
    service.messages.resize(2, {std::string(3000, 'a'), ""});
    service.messages.emplace_back(std::string(3000, 'a'), "");
    find.SetRange(FoundService::kFirst, service.Last());
    find.SetWish({"(a+)+[bc]", {kLogMsgBody}, true, false, true});
    EXPECT_EQ("Not found, 1 too costly", LastStatus(find, service, 4));
    find.SetWish({"some", {kLogMsgBody}});
    find.SetRange(kNoLogMsgId - 3, kNoLogMsgId); // which is no id
    EXPECT_EQ("Not found", LastStatus(find, service, kNoLogMsgId));
    EXPECT_TRUE(find.SetWish({"", {kLogMsgBody}}));
    EXPECT_FALSE(find.HasWish() || find.Step(service));
}

TEST(FindMessages, JumpsOverMessagesThatArrive)
{
    FoundService service;
    for (int i = 0; i < 200; ++i)
        service.messages.emplace_back(i == 64 ? "here" : "no", "");
    FindMessages find;
    find.SetWish({"here", {kLogMsgBody}});
    find.SetRange(FoundService::kFirst, service.Last());
    find.Jump(FoundService::kFirst + 65, FindWay::Down, false);
    find.Step(service, 256 * 10);
    for (int i = 0; i < 70; ++i)
        service.messages.emplace_back("no", "");
    find.SetRange(FoundService::kFirst, service.Last());
    while (find.IsJumping())
        find.Step(service, 256 * 10);
    EXPECT_EQ(FoundService::kFirst + 64, find.TakeHit().value().id);
    find.Jump(FoundService::kFirst + 64, FindWay::Down, false);
    find.Step(service);
    EXPECT_EQ(FoundService::kFirst + 64, find.TakeHit().value().id) << "to itself";
    service.messages.back() = {"here", ""};
    find.Restart();
    find.Jump(service.Last() - 1, FindWay::Down, false);
    find.Step(service);
    EXPECT_EQ(service.Last(), find.TakeHit().value().id) << "and no further than the end";
}

TEST(FindMessages, FindsHostileTexts)
{
    struct Case
    {
        std::string text, wanted;
        bool isFound, isWord;
    };
    const Case cases[] = {{"\xFF\xFE", "\xFE", true, false},
                          {"caf\xE9 caf", "caf", true, true},
                          {"caf\xE9", "CAF\xC3\x89", true, true},
                          {"caf\xE9!", "\xC3\xA9!", true, false},
                          {"na\xC3\xAFve", "na", true, false},
                          {"a.b*c", ".b*", true, false},
                          {"a\\Eb", "\\E", true, false},
                          {"[x]", "[x]", true, true},
                          {"", "x", false, false},
                          {std::string(100'000, 'x') + "y", "Y", true, false},
                          {"x\r\ny", "x\r\ny", true, true},
                          {"0123456789abcdefX", "x", true, false},
                          {"0123456789abcdefg", "fgh", false, false},
                          {"0123456789abcdef@", "`", false, false}};
    MessageMatch sameCase({"caf\xC3\xA9", {kLogMsgBody}, true});
    EXPECT_EQ(MessageMatch::Outcome::Yes, sameCase(FoundMessage("caf\xE9", ""))) << "in the code page";
    for (const Case& one : cases)
        for (const bool isWholeWord : {false, true})
        {
            const FoundMessage message(one.text, "");
            MessageMatch match({one.wanted, {kLogMsgBody}, false, isWholeWord, false});
            const bool expected = isWholeWord ? one.isWord : one.isFound;
            EXPECT_EQ(expected, match(message) == MessageMatch::Outcome::Yes) << one.wanted << isWholeWord;
        }
}

} // namespace
