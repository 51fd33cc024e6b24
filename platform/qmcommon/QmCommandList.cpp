#include "qmcommon/QmCommandList.h"

CQmCommandList::CQmCommandList() = default;

CQmCommandList::~CQmCommandList() = default;

void CQmCommandList::Add(std::unique_ptr<IQmEntry> entry)
{
    m_entries.push_back(std::move(entry));
}

void CQmCommandList::AddSeparator()
{
    m_entries.push_back(nullptr);
}
