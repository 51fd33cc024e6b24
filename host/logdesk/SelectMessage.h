// Leads to a message of a list.
#pragma once

#include "ReportCtrlLog.h"

namespace logdesk
{

// Selects a message and shows it with some rows around it, so that what led to it is in sight. Does nothing
// if the list does not have it.
void SelectMessage(CReportCtrlLog& list, std::uint32_t id);

} // namespace logdesk
