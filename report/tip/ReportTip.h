// What a report control knows of its tip.
#pragma once

#include "report/model/TipHover.h"
#include "report/tip/ReportTipCtrl.h"

namespace report
{

constexpr UINT_PTR kTipTimer = 9001; // those of subclasses have other numbers

struct TipState
{
    CReportTipCtrl window;
    TipHover hover;
    Rect area;             // of the text that the pointer is over: within it nothing is looked up again
    bool isStale = false;  // what is shown has changed since
    bool isAsking = false; // the owner, for the text
    bool hasTimer = false;
};

} // namespace report
