#include "logdesk/Tools.h"

#include "qmcommon/QmCommandShortcut.h"

#include <string_view>

namespace logdesk
{

namespace
{

// "Configure View..." for "Configure &View...".
std::string PlainCaption(std::string_view caption)
{
    std::string plain;
    for (std::size_t i = 0; i < caption.size(); ++i)
    {
        if (caption[i] == '&' && i + 1 < caption.size())
            ++i;
        plain += caption[i];
    }
    return plain;
}

bool IsCommandOf(const Tool& tool, IQmEntry& entry)
{
    const char* const caption = entry.GetCaption();
    if (!tool.image || !caption)
        return false;
    const std::string plain = PlainCaption(caption);
    return plain == tool.caption || (tool.otherCaption && plain == tool.otherCaption);
}

std::string TipOf(IQmEntry& entry)
{
    std::string tip = PlainCaption(entry.GetCaption());
    if (tip.ends_with("..."))
        tip.resize(tip.size() - 3);
    const std::string shortcut = QmShortcutText(entry.GetKey(), entry.GetModifiers());
    return shortcut.empty() ? tip : tip + " (" + shortcut + ")";
}

// Looks for all tools in the scan of one handler.
class ToolLook : public IQmCommand
{
public:
    ToolLook(std::vector<ToolState>& states, std::size_t handler) : m_states(states), m_handler(handler) {}

    void Add(std::unique_ptr<IQmEntry> entry) override
    {
        for (std::size_t i = 0; i < m_states.size(); ++i)
            if (m_states[i].tip.empty() && IsCommandOf(Tools()[i], *entry))
                m_states[i] = {TipOf(*entry), entry->IsEnabled(), entry->IsChecked(), m_handler};
    }

private:
    std::vector<ToolState>& m_states;
    std::size_t m_handler;
};

class ToolCommand : public CQmCommandFind
{
public:
    explicit ToolCommand(const Tool& tool) : m_tool(tool) {}

protected:
    bool IsWanted(IQmEntry& entry, int) override { return IsCommandOf(m_tool, entry); }

private:
    const Tool& m_tool;
};

} // namespace

const std::vector<Tool>& Tools()
{
    constexpr Tool kGap = {};
    static const std::vector<Tool> tools = {{"FileOpen", "Open...", nullptr},
                                            {"FileSave", "Export Selection...", nullptr},
                                            kGap,
                                            {"Copy", "Copy", nullptr},
                                            {"Find", "Find...", nullptr},
                                            kGap,
                                            {"PreviousError.ico", "Previous Error", "Go to Previous Error"},
                                            {"NextError.ico", "Next Error", "Go to Next Error"},
                                            {"Follow.ico", "Follow mode", "Follow Mode"},
                                            kGap,
                                            {"Setup", "Configure View...", nullptr},
                                            {"Refresh", "Refresh", nullptr},
                                            {"Clear", "Clear", nullptr}};
    return tools;
}

std::vector<ToolState> ReadTools(const std::vector<IQmHandler*>& handlers)
{
    std::vector<ToolState> states(Tools().size());
    for (std::size_t i = 0; i < handlers.size(); ++i)
    {
        ToolLook look(states, i);
        handlers[i]->Scan(look);
    }
    return states;
}

void UseTool(std::size_t tool, const std::vector<IQmHandler*>& handlers)
{
    const ToolState state = tool < Tools().size() ? ReadTools(handlers)[tool] : ToolState();
    if (!state.enabled)
        return;
    ToolCommand record(Tools()[tool]);
    handlers[state.handler]->Dispatch(record);
}

} // namespace logdesk
