// What the framework knows of one thread.
#pragma once

#include "afxcmn.h"
#include "mfc/HandleMap.h"
#include "mfc/PaintPicture.h"

#include <memory>

class CreationHook;

struct ThreadState
{
    HandleMap<CWnd> windows;
    HandleMap<CDC> deviceContexts;
    HandleMap<CGdiObject> gdiObjects;
    HandleMap<CImageList> imageLists;
    HandleMap<CMenu> menus;

    MSG message = {};                           // the one that a window is dealing with
    CreationHook* creation = nullptr;           // waits for the next window that the thread creates
    std::unique_ptr<PaintPicture> paintPicture; // of the last paint, for the next one; null while in use
};

// The calling thread's. It lives as long as the process: objects that are global variables outlive what ends
// with the thread, and give up their handles later.
ThreadState& GetThreadState();
