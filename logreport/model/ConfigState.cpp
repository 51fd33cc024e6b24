#include "QmLogState.h"
#include "qmcommandline/QmCommandLineWorker.h"

IConfigState::~IConfigState() = default;

bool IConfigState::ReadFromProcess()
{
    return true;
}

bool IConfigState::WriteToProcess()
{
    return true;
}

bool IConfigState::ReadFromProfile()
{
    return true;
}

bool IConfigState::WriteToProfile()
{
    return true;
}

bool IConfigState::ReadFromCommandLine(QmCommandLineWorker&)
{
    return true;
}

bool IConfigState::Hook6()
{
    return true;
}

bool IConfigState::Hook7()
{
    return true;
}

bool IConfigState::Load()
{
    if (!ReadFromProfile())
        return false;
    QmCommandLineWorker line;
    line.ReadFromProcess();
    return ReadFromCommandLine(line) && WriteToProcess();
}

bool IConfigState::LoadFromCommandLine()
{
    QmCommandLineWorker line;
    line.ReadFromProcess();
    return ReadFromCommandLine(line) && WriteToProcess();
}

bool IConfigState::Save()
{
    if (!m_enabled)
        return true;
    return ReadFromProcess() && WriteToProfile();
}
