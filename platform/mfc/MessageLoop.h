// One turn of a message loop.
#pragma once

#include "afxwin.h"

// Waits for the next message, pre-translates and dispatches it; false for WM_QUIT.
bool PumpMessage(MSG& message);
