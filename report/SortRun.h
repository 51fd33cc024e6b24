// A sort of a report control while it runs.
#pragma once

#include "report/ReportCtrlData.h"
#include "report/sort/FlatSort.h"
#include "report/sort/SortKeys.h"
#include "report/sort/TreeSort.h"

#include <utility>

// While one exists, the control's items stay.
class Busy
{
public:
    explicit Busy(CReportCtrl::Data& data) : m_data(data), m_before(std::exchange(data.busy, true)) {}
    ~Busy() { m_data.busy = m_before; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    CReportCtrl::Data& m_data;
    bool m_before;
};

class SortRun
{
public:
    explicit SortRun(CReportCtrl::Data& data) : m_data(data), m_busy(data)
    {
        static unsigned sorts = 0;
        number = ++sorts ? sorts : ++sorts; // never 0
        data.sort = this;
    }
    ~SortRun() { m_data.sort = nullptr; }
    SortRun(const SortRun&) = delete;
    SortRun& operator=(const SortRun&) = delete;

    unsigned number = 0;
    report::SortKeys keys; // none when the owner compares or a subclass sorts
    bool hasKeys = false;
    report::FlatSort flat;
    report::TreeSort tree;

private:
    CReportCtrl::Data& m_data;
    Busy m_busy;
};
