// Base classes of command entries.
#pragma once

#include "qmcommon/QmCommand.h"

// An entry without a shortcut.
class QMPLATFORM_API CQmEntry : public IQmEntry
{
};

// An entry with a shortcut: a virtual key code and the accelerator flags held with it.
class QMPLATFORM_API CQmEntryShortcut : public CQmEntry
{
public:
    CQmEntryShortcut(unsigned key, unsigned modifiers);

    unsigned GetKey() override;
    unsigned GetModifiers() override;

private:
    unsigned m_key;
    unsigned m_modifiers;
};

// An entry whose picture is an icon file of its own.
class QMPLATFORM_API CQmEntryImageFile : public CQmEntry
{
public:
    // `file` is a name without folder, such as "Chooser.ico", and outlives the entry.
    explicit CQmEntryImageFile(const char* file);

    const char* GetImage() override;

private:
    const char* m_file;
};
