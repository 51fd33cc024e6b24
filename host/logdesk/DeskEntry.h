// The frame's own commands.
#pragma once

#include "qmcommon/QmEntry.h"

#include <functional>

namespace logdesk
{

// A command that is a call.
class DeskEntry : public CQmEntry
{
public:
    // `caption` is kept by its address: give a literal.
    DeskEntry(const char* caption, std::function<void()> action, bool checked = false)
        : m_caption(caption), m_action(std::move(action)), m_checked(checked)
    {
    }

    void Execute() override { m_action(); }
    const char* GetCaption() override { return m_caption; }
    bool IsChecked() override { return m_checked; }

private:
    const char* m_caption;
    std::function<void()> m_action;
    bool m_checked;
};

// A group of commands, such as those of one menu.
class DeskCommands : public IQmHandler
{
public:
    explicit DeskCommands(std::function<void(IQmCommand&)> scan) : m_scan(std::move(scan)) {}

    void Scan(IQmCommand& collector) override { m_scan(collector); }

private:
    std::function<void(IQmCommand&)> m_scan;
};

} // namespace logdesk
