// What LogDesk remembers from run to run, in the profile's section "LogDesk".
#pragma once

#include "afxwin.h"
#include "logdesk/Bookmarks.h"
#include "logdesk/PaneSplit.h"
#include "logdesk/RecentFiles.h"
#include "logdesk/TextLook.h"
#include "logdesk/WindowPlace.h"

#include <string>
#include <vector>

namespace logdesk
{

constexpr const char* kFrameClass = "LogDeskFrame"; // of the program's windows

struct WindowOptions
{
    Place place = {};
    bool maximised = false;
    bool followPauses = true; // of the log text
    int split = PaneSplit::kWhole / 2;
    bool showLogText = true;
    bool showMessages = true;
    bool preview = true;
    bool pauseMessages = true;  // following, when scrolled up
    bool useAllFields = false;  // in what is copied and exported
    bool guardFormulas = false; // in tables that are copied and exported
    bool showToolBar = true;
    bool showTimes = true; // of rows, where the session has some
    bool openHere = false; // sessions, in place of the one that is shown
    TextLook look;
    std::string goTo; // typed last into "Go To"
};

// The place is brought within the screen that is nearest to it, and beside other windows of ours.
WindowOptions ReadWindowOptions();

// Makes `frame` as large as it has to be and brings it within its screen, once its children are there.
void KeepOnScreen(CWnd& frame);

// Remembers the options, and as the place where `frame` is when it is neither maximised nor minimised.
void WriteWindowOptions(CWnd& frame, const WindowOptions& options);

// Whether a layout of the list of messages was ever saved.
bool HasListLayout();

// Each in a section of their own; sessions are folders.
RecentFiles ReadRecentFiles();
void WriteRecentFiles(const RecentFiles& files);
RecentFiles ReadRecentSessions();
BookmarkStore ReadBookmarks();
void WriteBookmarks(const BookmarkStore& store);
void WriteRecentSessions(const RecentFiles& sessions);

// What was looked for in the log text, newest first.
std::vector<std::string> ReadFindHistory();
void WriteFindHistory(const std::vector<std::string>& texts);

} // namespace logdesk
