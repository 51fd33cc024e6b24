#include "qmcommon/QmEntry.h"

CQmEntryShortcut::CQmEntryShortcut(unsigned key, unsigned modifiers) : m_key(key), m_modifiers(modifiers) {}

unsigned CQmEntryShortcut::GetKey()
{
    return m_key;
}

unsigned CQmEntryShortcut::GetModifiers()
{
    return m_modifiers;
}

CQmEntryImageFile::CQmEntryImageFile(const char* file) : m_file(file) {}

const char* CQmEntryImageFile::GetImage()
{
    return m_file;
}
