// What is known of the cell that is being edited.
#pragma once

#include "ReportStyle.h"
#include "afxwin.h"
#include "report/model/Editing.h"

#include <optional>
#include <string>

namespace report
{

struct EditState
{
    HWND editor = nullptr; // null while none is
    bool isOwn = false;    // the editor reports its end; else the parent ends it
    int item = RVI_NONE;
    int subitem = -1;
    CRect rect;            // of the cell
    std::string shown;     // as it was, or as the editor had it first
    bool isTyping = false; // a character may be about to start an edit
    bool isEnding = false; // the parent is being told
    bool isSettingText = false;
    bool isRefused = false; // what is in the editor, and the user does not see why yet
    std::string reason;
    bool hasPicked = false; // a choice of a list
};

// Where an edit goes on once the window has the focus again.
struct NextEdit
{
    int item = RVI_NONE;
    int subitem = -1;
    GoOn goOn = GoOn::Nowhere;
};

} // namespace report
