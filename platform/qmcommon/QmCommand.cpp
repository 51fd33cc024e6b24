#include "qmcommon/QmCommand.h"

const char* IQmEntry::GetCaption()
{
    return nullptr;
}

unsigned IQmEntry::GetKey()
{
    return 0;
}

unsigned IQmEntry::GetModifiers()
{
    return 0;
}

bool IQmEntry::IsEnabled()
{
    return true;
}

bool IQmEntry::IsChecked()
{
    return false;
}

const char* IQmEntry::GetImage()
{
    return nullptr;
}

IQmEntry::~IQmEntry() = default;

void IQmCommand::AddSeparator() {}

IQmCommand::~IQmCommand() = default;

void CQmCommandRecord::Visit(IQmHandler&) {}

void CQmCommandRecord::Finish() {}

void IQmHandler::Scan(IQmCommand&) {}

int IQmHandler::Dispatch(CQmCommandRecord& record)
{
    record.SetResult(0);
    record.Visit(*this);
    Scan(record);
    record.Finish();
    return record.GetResult();
}

void IQmHandler::SetShortcuts(bool on)
{
    m_shortcuts = on;
}

IQmHandler::~IQmHandler() = default;
