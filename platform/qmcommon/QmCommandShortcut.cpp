#include "qmcommon/QmCommandShortcut.h"

namespace
{

constexpr unsigned kF1 = 0x70;
constexpr unsigned kF24 = 0x87;

struct KeyName
{
    unsigned key;
    const char* name;
};

// Virtual key codes that are the same on every keyboard.
constexpr KeyName kKeyNames[] = {
    {0x08, "Backspace"}, {0x09, "Tab"}, {0x0D, "Enter"}, {0x1B, "Esc"},   {0x20, "Space"}, {0x21, "Page Up"},
    {0x22, "Page Down"}, {0x23, "End"}, {0x24, "Home"},  {0x25, "Left"},  {0x26, "Up"},    {0x27, "Right"},
    {0x28, "Down"},      {0x2D, "Ins"}, {0x2E, "Del"},   {0x6A, "Num *"}, {0x6B, "Num +"}, {0x6D, "Num -"},
    {0x6F, "Num /"},     {0xBB, "+"},   {0xBC, ","},     {0xBD, "-"},     {0xBE, "."},
};

std::string NameOf(unsigned key)
{
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z'))
        return std::string(1, static_cast<char>(key));
    if (key >= kF1 && key <= kF24)
        return "F" + std::to_string(key - kF1 + 1);
    for (const KeyName& known : kKeyNames)
    {
        if (known.key == key)
            return known.name;
    }
    return {};
}

} // namespace

CQmCommandFind::CQmCommandFind() = default;

CQmCommandFind::~CQmCommandFind() = default;

void CQmCommandFind::Visit(IQmHandler&)
{
    m_count = 0;
    m_entry.reset();
}

void CQmCommandFind::Add(std::unique_ptr<IQmEntry> entry)
{
    const int index = m_count++;
    if (!m_entry && IsWanted(*entry, index) && entry->GetCaption() && entry->IsEnabled())
        m_entry = std::move(entry);
}

void CQmCommandFind::Finish()
{
    if (!m_entry)
        return;
    SetResult(1);
    m_entry->Execute();
}

CQmCommandShortcut::CQmCommandShortcut(unsigned key, unsigned modifiers) : m_key(key), m_modifiers(modifiers)
{
}

bool CQmCommandShortcut::IsWanted(IQmEntry& entry, int)
{
    return m_key != 0 && entry.GetKey() == m_key && entry.GetModifiers() == m_modifiers;
}

CQmCommandExecute::CQmCommandExecute(int index) : m_index(index) {}

bool CQmCommandExecute::IsWanted(IQmEntry&, int index)
{
    return index == m_index;
}

std::string QmShortcutText(unsigned key, unsigned modifiers)
{
    const std::string name = NameOf(key);
    if (name.empty())
        return {};
    std::string text;
    if ((modifiers & kQmControl) != 0)
        text += "Ctrl+";
    if ((modifiers & kQmAlt) != 0)
        text += "Alt+";
    if ((modifiers & kQmShift) != 0)
        text += "Shift+";
    return text + name;
}
