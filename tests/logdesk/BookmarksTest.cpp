#include "logdesk/Bookmarks.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace
{

using logdesk::Bookmarks;
using logdesk::BookmarkStore;
using logdesk::SessionMark;

TEST(Bookmarks, AreWhatASetIs)
{
    std::mt19937 random(1);
    Bookmarks bookmarks;
    std::set<std::uint32_t> model;
    for (int step = 0; step < 2000; ++step)
    {
        const auto at = static_cast<std::uint32_t>(random() % 40);
        ASSERT_EQ(model.contains(at), bookmarks.Has(at));
        const auto next = model.upper_bound(at);
        const auto before = model.lower_bound(at);
        ASSERT_EQ(model.empty(), !bookmarks.Next(at) || !bookmarks.Previous(at));
        if (!model.empty())
        {
            EXPECT_EQ(next == model.end() ? *model.begin() : *next, *bookmarks.Next(at));
            EXPECT_EQ(before == model.begin() ? *model.rbegin() : *std::prev(before),
                      *bookmarks.Previous(at));
        }
        EXPECT_TRUE(bookmarks.Toggle(at));
        if (!model.erase(at))
            model.insert(at);
        ASSERT_TRUE(
            std::equal(model.begin(), model.end(), bookmarks.Numbers().begin(), bookmarks.Numbers().end()));
        EXPECT_EQ(bookmarks, Bookmarks::FromText(bookmarks.Text()));
    }
}

TEST(Bookmarks, AreReadFromAnyText)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"18342 7 18342  7", "7 18342"},
        {"0 4294967295", "0 4294967295"},
        {"4294967296 -1 +1 1.5 0x7 7a 99999999999999999999 8", "8"},
        {"7,8\t9 \xC3\x28|10 11", "11"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(expected, Bookmarks::FromText(text).Text()) << text;

    std::string many;
    for (std::size_t i = 0; i < 2 * Bookmarks::kMost; ++i)
        many += std::to_string(i) + ' ';
    Bookmarks most = Bookmarks::FromText(many);
    EXPECT_EQ(Bookmarks::kMost, most.Numbers().size());
    EXPECT_FALSE(most.Toggle(999'999));
    EXPECT_TRUE(most.Toggle(0) && most.Toggle(999'999)); // one goes, there is room
}

TEST(SessionMark, TellsASessionFromOneThatBeginsLater)
{
    const auto reader = [](std::vector<std::string> logs) {
        logs.resize(SessionMark::kMostLogs);
        return [logs](std::size_t log, std::size_t size) { return logs[log].substr(0, size); };
    };
    const std::string long1(SessionMark::kMostBytes, 'x');
    const struct
    {
        std::vector<std::string> then;
        std::vector<std::string> now;
        bool isSame;
    } cases[] = {
        {{"header\nfirst"}, {"header\nfirst"}, true},
        {{"header\nfirst"}, {"header\nfirst and more", "another log"}, true},
        {{"header\nfirst"}, {"header\n"}, false}, // begun anew
        {{"header\nfirst"}, {"header\nother"}, false},
        {{"header\n", "run"}, {"header\n", "ruN"}, false},
        {{"header\n", "", "x"}, {"header\n", "x", ""}, false},
        {{long1 + "a"}, {long1 + "b"}, true}, // beyond the beginning
        {{}, {}, false},
        {{}, {"header"}, false},
    };
    for (const auto& [then, now, isSame] : cases)
    {
        const SessionMark mark = SessionMark::Of(reader(then));
        EXPECT_EQ(isSame, mark.IsOf(reader(now)));
        const auto read = SessionMark::FromText(mark.Text());
        ASSERT_TRUE(read.has_value()) << mark.Text();
        EXPECT_EQ(isSame, read->IsOf(reader(now)));
        EXPECT_EQ(mark.Text(), read->Text());
    }
    const std::string good = SessionMark::Of(reader({"a"})).Text();
    EXPECT_FALSE(SessionMark::FromText("") || SessionMark::FromText(good + " 1:0") ||
                 SessionMark::FromText(good.substr(2)) || SessionMark::FromText("4097" + good.substr(1)));
}

TEST(BookmarkStore, KeepsTheSessionsThatHadBookmarksLast)
{
    const auto entry = [](const std::string& folder, const char* numbers) {
        return BookmarkStore::Entry{
            folder, SessionMark::Of([](std::size_t, std::size_t) { return std::string("x"); }),
            Bookmarks::FromText(numbers)};
    };
    BookmarkStore store({});
    for (std::size_t i = 0; i < BookmarkStore::kMostSessions + 2; ++i)
        store.Put(entry("C:\\" + std::to_string(i), "5"));
    store.Put(entry("c:\\3", "7 8"));
    store.Put(entry("C:\\4", ""));
    std::vector<std::string> lines = store.Lines();
    ASSERT_EQ(BookmarkStore::kMostSessions - 1, lines.size());
    EXPECT_TRUE(lines[0].starts_with("c:\\3|") && lines[0].ends_with("|7 8"));
    EXPECT_TRUE(store.Find("C:\\3") && !store.Find("C:\\4") && !store.Find("C:\\1") && store.Find("C:\\2"));

    for (const char* const damaged : {"", "|", "C:\\x", "C:\\x|1:2|5", "|||", "C:\\9|no|5"})
        lines.insert(lines.begin(), damaged);
    lines.push_back(lines[6] + " 9"); // a folder twice
    const BookmarkStore again(lines);
    EXPECT_EQ(store.Lines(), again.Lines());
    ASSERT_TRUE(again.Find("C:\\3"));
    EXPECT_EQ("7 8", again.Find("C:\\3")->bookmarks.Text());
}

} // namespace
