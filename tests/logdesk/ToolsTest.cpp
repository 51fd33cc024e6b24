// What the tool bar's buttons find among the commands of windows.
#include "logdesk/Tools.h"
#include "tests/support/Commands.h"

#include <gtest/gtest.h>

namespace
{

using logdesk::ToolState;

class Offers : public IQmHandler
{
public:
    explicit Offers(std::vector<Command> commands) : m_commands(std::move(commands)) {}
    void Scan(IQmCommand& collector) override { ScanCommands(m_commands, collector); }

private:
    std::vector<Command> m_commands;
};

std::size_t ToolOf(std::string_view caption)
{
    const auto& tools = logdesk::Tools();
    const auto found = std::find_if(tools.begin(), tools.end(), [&](const logdesk::Tool& tool) {
        return tool.caption && caption == tool.caption;
    });
    return static_cast<std::size_t>(found - tools.begin());
}

TEST(Tools, StandForTheFirstCommandOfTheirName)
{
    std::string done;
    const auto write = [&done](const char* text) { return [&done, text] { done += text; }; };
    Offers pane({{nullptr, 'X', 0, true, write("hidden ")},
                 {"&Copy", 'C', 8, true, write("copy ")},
                 {"Copy All && More", 0, 0, true, write("all ")},
                 {"Configure &View...", 'C', 16, false, write("off ")},
                 {"-"},
                 {"Follow &mode", ' ', 0, true, write("follow "), true}});
    Offers frame({{"Copy", 0, 0, true, write("other ")},
                  {"Configure View...", 0, 0, true, write("other ")},
                  {"Go to Next Error", 0x28, 16, true, write("next ")},
                  {"&Refresh", 0, 0, true, write("refresh ")}});
    const std::vector<IQmHandler*> handlers = {&pane, &frame};
    const std::pair<const char*, ToolState> expected[] = {
        {"Copy", {"Copy (Ctrl+C)", true, false, 0}},
        {"Configure View...", {"Configure View (Alt+C)", false, false, 0}},
        {"Follow mode", {"Follow mode (Space)", true, true, 0}},
        {"Next Error", {"Go to Next Error (Alt+Down)", true, false, 1}},
        {"Refresh", {"Refresh", true, false, 1}},
        {"Open...", {}},
    };
    const std::vector<ToolState> states = logdesk::ReadTools(handlers);
    for (const auto& [caption, state] : expected)
    {
        EXPECT_EQ(state, states.at(ToolOf(caption))) << caption;
        logdesk::UseTool(ToolOf(caption), handlers);
    }
    EXPECT_EQ("copy follow next refresh ", done);
    logdesk::UseTool(states.size(), handlers);
    EXPECT_EQ("copy follow next refresh ", done);
    EXPECT_EQ(ToolState(), states.at(2)) << "a gap";
}

} // namespace
