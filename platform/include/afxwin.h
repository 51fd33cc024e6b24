// The application class framework over Win32: windows, message maps, dialogs, drawing, menus, the
// application.
//
// A subset under the framework's documented names: what is here behaves as documented there. Windows, drawing
// objects and menus belong to the thread that made them: objects are found by their handles in maps that each
// thread has for itself.
#pragma once

#include "afx.h"
#include "atltypes.h"

#include "mfc/App.h"
#include "mfc/CmdTarget.h"
#include "mfc/Controls.h"
#include "mfc/Dc.h"
#include "mfc/Dialog.h"
#include "mfc/GdiObjects.h"
#include "mfc/Menu.h"
#include "mfc/Wnd.h"

#include "afxmsg_.h"
