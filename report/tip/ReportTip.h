// What a report control knows of its tip.
#pragma once

#include "report/model/TipHover.h"
#include "report/tip/ReportTipCtrl.h"

namespace report
{

constexpr UINT_PTR kTipTimer = 2; // the one of a drag is 1; those of subclasses have larger numbers

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
