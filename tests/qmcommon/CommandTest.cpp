#include "qmcommon/QmCommandList.h"
#include "qmcommon/QmCommandShortcut.h"
#include "qmcommon/QmEntry.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

// One command of a test: what it says, and what it does.
struct Command
{
    const char* caption;
    unsigned key = 0;
    unsigned modifiers = 0;
    bool enabled = true;
    std::function<void()> action;
};

class CommandEntry : public CQmEntryShortcut
{
public:
    explicit CommandEntry(const Command& command)
        : CQmEntryShortcut(command.key, command.modifiers), m_command(command)
    {
    }
    const char* GetCaption() override { return m_command.caption; }
    bool IsEnabled() override { return m_command.enabled; }
    void Execute() override { m_command.action(); }

private:
    Command m_command;
};

class Handler : public IQmHandler
{
public:
    explicit Handler(std::vector<Command> commands) : m_commands(std::move(commands)) {}

    void Scan(IQmCommand& collector) override
    {
        for (const Command& command : m_commands)
        {
            collector.Add(std::make_unique<CommandEntry>(command));
            collector.AddSeparator();
        }
    }

private:
    std::vector<Command> m_commands;
};

TEST(CommandRecords, ExecuteTheFirstVisibleEnabledEntryThatFits)
{
    std::string done;
    const auto write = [&done](const char* text) { return [&done, text] { done += text; }; };
    Handler handler({{nullptr, 'A', 8, true, write("hidden")},
                     {"off", 'A', 8, false, write("off")},
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

} // namespace
