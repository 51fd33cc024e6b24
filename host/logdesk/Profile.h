// What LogDesk remembers from run to run, in the profile's section "LogDesk".
#pragma once

#include "afxwin.h"
#include "logdesk/WindowPlace.h"

namespace logdesk
{

struct WindowOptions
{
    Place place;
    bool maximised;
    bool followPauses;
};

// The place is brought within the screen that is nearest to it.
WindowOptions ReadWindowOptions();

// Remembers where `frame` is when it is neither maximised nor minimised.
void WriteWindowOptions(CWnd& frame, bool followPauses);

} // namespace logdesk
