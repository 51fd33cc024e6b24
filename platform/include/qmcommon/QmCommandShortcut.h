// Records that find one command of a handler, by its shortcut or its place, and execute it.
#pragma once

#include "qmcommon/QmCommand.h"

#include <string>

// Keeps the first wanted entry of a scan that is visible and enabled, and executes it when the scan has
// ended: a command may destroy the handler that offered it. The result is 1 when there was one.
class QMPLATFORM_API CQmCommandFind : public CQmCommandRecord
{
public:
    CQmCommandFind();
    ~CQmCommandFind() override;
    CQmCommandFind(const CQmCommandFind&) = delete;
    CQmCommandFind& operator=(const CQmCommandFind&) = delete;

    void Visit(IQmHandler& handler) override;
    void Add(std::unique_ptr<IQmEntry> entry) override;
    void Finish() override;

protected:
    // Whether `entry` is what this record looks for. `index` counts the entries of the scan from 0: hidden
    // ones are counted, separators are not.
    virtual bool IsWanted(IQmEntry& entry, int index) = 0;
    bool IsFound() const { return m_entry != nullptr; }

private:
    int m_count = 0;
    std::unique_ptr<IQmEntry> m_entry;
};

// Finds the entry with exactly this shortcut: a virtual key code and what is held with it (kQmShift
// and its like). While the entry is disabled its key is anybody's.
class QMPLATFORM_API CQmCommandShortcut : public CQmCommandFind
{
public:
    CQmCommandShortcut(unsigned key, unsigned modifiers);

protected:
    bool IsWanted(IQmEntry& entry, int index) override;

private:
    unsigned m_key;
    unsigned m_modifiers;
};

// Finds the entry at a place of the scan, as menus name their items. Places keep their meaning while entries
// hide and show themselves, as long as the handler offers the same ones.
class QMPLATFORM_API CQmCommandExecute : public CQmCommandFind
{
public:
    explicit CQmCommandExecute(int index);

protected:
    bool IsWanted(IQmEntry& entry, int index) override;

private:
    int m_index;
};

// A shortcut as menus show it, "Ctrl+C" or "Alt+Down"; empty without a key or when the key has no name.
QMPLATFORM_API std::string QmShortcutText(unsigned key, unsigned modifiers);
