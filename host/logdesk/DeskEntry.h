// The frame's own commands.
#pragma once

#include "qmcommon/QmEntry.h"

#include <functional>
#include <memory>
#include <string>

namespace logdesk
{

struct DeskCommand
{
    std::string caption;
    std::function<void()> action;
    unsigned key = 0; // a virtual key code
    unsigned modifiers = 0;
    bool checked = false;
    bool enabled = true;
    const char* image = nullptr; // as QmLoadIcon knows it
};

// A command that is a call.
class DeskEntry : public CQmEntry
{
public:
    explicit DeskEntry(DeskCommand command) : m_command(std::move(command)) {}

    void Execute() override { m_command.action(); }
    const char* GetCaption() override { return m_command.caption.c_str(); }
    unsigned GetKey() override { return m_command.key; }
    unsigned GetModifiers() override { return m_command.modifiers; }
    bool IsChecked() override { return m_command.checked; }
    bool IsEnabled() override { return m_command.enabled; }
    const char* GetImage() override { return m_command.image; }

private:
    DeskCommand m_command;
};

inline void AddCommand(IQmCommand& collector, DeskCommand command)
{
    collector.Add(std::make_unique<DeskEntry>(std::move(command)));
}

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
