// A collector that keeps what it is given.
#pragma once

#include "qmcommon/QmCommand.h"

#include <vector>

// The entries of a scan in menu order; null stands for a separator. Owns the entries.
class QMPLATFORM_API CQmCommandList : public IQmCommand
{
public:
    CQmCommandList();
    ~CQmCommandList() override;
    CQmCommandList(const CQmCommandList&) = delete;
    CQmCommandList& operator=(const CQmCommandList&) = delete;

    void Add(std::unique_ptr<IQmEntry> entry) override;
    void AddSeparator() override;

    const std::vector<std::unique_ptr<IQmEntry>>& GetEntries() const { return m_entries; }

private:
    std::vector<std::unique_ptr<IQmEntry>> m_entries;
};
