#include "platform/qmcommon/MenuText.h"
#include "qmcommon/QmCommandShortcut.h"
#include "tests/support/Commands.h"

#include <gtest/gtest.h>

#include <tuple>

namespace
{

class Handler : public IQmHandler
{
public:
    explicit Handler(std::vector<Command> commands) : m_commands(std::move(commands)) {}

    void Scan(IQmCommand& collector) override { ScanCommands(m_commands, collector); }

private:
    std::vector<Command> m_commands;
};

TEST(CommandRecords, ExecuteTheFirstVisibleEnabledEntryThatFits)
{
    std::string done;
    const auto write = [&done](const char* text) { return [&done, text] { done += text; }; };
    Handler handler({{nullptr, 'A', 8, true, write("hidden")},
                     {"off", 'A', 8, false, write("off")},
                     {"-"},
                     {"other", 'A', 24, true, write("other")},
                     {"first", 'A', 8, true, write("first")},
                     {"second", 'A', 8, true, write("second")},
                     {"no key", 0, 0, true, write("no key")}});

    const auto press = [&](unsigned key, unsigned modifiers) {
        CQmCommandShortcut record(key, modifiers);
        done = std::to_string(handler.Dispatch(record)) + " " + done;
        return std::exchange(done, "");
    };
    EXPECT_EQ("1 first", press('A', 8));
    EXPECT_EQ("1 other", press('A', 24));
    EXPECT_EQ("0 ", press('A', 0));
    EXPECT_EQ("0 ", press(0, 0));

    const char* const expected[] = {"0 ", "0 ", "1 other", "1 first", "1 second", "1 no key", "0 "};
    for (int index = 0; index < 7; ++index)
    {
        CQmCommandExecute record(index);
        const int result = handler.Dispatch(record);
        EXPECT_EQ(expected[index], std::to_string(result) + " " + std::exchange(done, "")) << index;
        EXPECT_EQ(result, handler.Dispatch(record)) << "the record can be used again";
        done.clear();
    }
}

TEST(CommandRecords, ACommandMayDestroyItsHandler)
{
    std::unique_ptr<Handler> handler;
    handler = std::make_unique<Handler>(std::vector<Command>{
        {"close", 'W', 8, true, [&handler] { handler.reset(); }}, {"after", 'W', 8, true, [] {}}});
    CQmCommandShortcut record('W', 8);
    EXPECT_EQ(1, handler->Dispatch(record));
    EXPECT_EQ(nullptr, handler);
}

TEST(ShortcutText, NamesKeysAsMenusDo)
{
    const std::tuple<unsigned, unsigned, const char*> cases[] = {
        {'C', 8, "Ctrl+C"},
        {0x28, 16, "Alt+Down"},
        {0x20, 0, "Space"},
        {0x72, 0, "F3"},
        {0x0D, 0, "Enter"},
        {0x87, 4, "Shift+F24"},
        {'1', 28, "Ctrl+Alt+Shift+1"},
        {0, 8, ""},
        {0x88, 8, ""},
        {'a', 0, ""},
    };
    for (const auto& [key, modifiers, text] : cases)
    {
        EXPECT_EQ(text, QmShortcutText(key, modifiers));
    }
}

TEST(MenuText, AccessKeysGoRoundTheItems)
{
    const std::vector<std::string> captions = {"&Copy",       "",           "Cut && &Paste",
                                               "100 && more", "c, no mark", "&&"};
    const std::tuple<int, char, int, bool> cases[] = {
        {-1, 'C', 0, false}, {0, 'c', 4, false}, {4, 'c', 0, false},   {2, 'p', 2, true},
        {-1, '1', 3, true},  {-1, '&', 5, true}, {-1, 'm', -1, false}, {-1, 0, -1, false},
    };
    for (const auto& [selected, key, position, only] : cases)
    {
        const qmcommon::AccessItem item = qmcommon::FindAccessItem(captions, selected, key);
        EXPECT_EQ(position, item.position) << key;
        EXPECT_EQ(only, item.only) << key;
    }
    EXPECT_EQ(-1, qmcommon::FindAccessItem({}, -1, 'C').position);
}

} // namespace
