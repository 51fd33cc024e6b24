// Styles, properties and further constants of the report control. No window system.
#pragma once

#include "wintypes.h"

#include <cstdint>

// Styles of the control. All but the last one are bits of the window style.
constexpr DWORD RVS_SINGLESELECT = 0x0001;
constexpr DWORD RVS_KEEPSELECTION = 0x0002;  // selected rows stay highlighted without the focus
constexpr DWORD RVS_KEEPTEXTCOLOR = 0x0004;  // an item keeps its own text colour when it is selected
constexpr DWORD RVS_ALTERNATEROWS = 0x0008;  // odd rows have colour 0 of the colour table
constexpr DWORD RVS_HORIZONTALGRID = 0x0010; // switching it on adds 1 to the item height
constexpr DWORD RVS_VERTICALGRID = 0x0020;
constexpr DWORD RVS_NOHEADER = 0x0040;
constexpr DWORD RVS_NOHEADERSORT = 0x0080;  // a click on a column header does not sort
constexpr DWORD RVS_DRAGCOLUMNS = 0x0100;   // a column that is dragged off the header is removed
constexpr DWORD RVS_FIXEDROW = 0x0200;      // the default item is shown above the rows
constexpr DWORD RVS_EXTENDGRID = 0x0400;    // the grid continues below the last row
constexpr DWORD RVS_CALLBACK = 0x0800;      // items are asked for and not stored; there is no tree then
constexpr DWORD RVS_CELLFOCUS = 0x1000;     // the focus can be on a cell, not only on a row
constexpr DWORD RVS_TIPS = 0x2000;          // a tip shows a text that is cut off
constexpr DWORD RVS_TREE = 0x4000;          // items form a tree
constexpr DWORD RVS_TREEALTERNATE = 0x8000; // items form a tree, exactly as with RVS_TREE
constexpr DWORD RVS_TREEMASK = RVS_TREE | RVS_TREEALTERNATE;

// The background has the colour of dialogs. The window style has the same bit for "disabled" (WS_DISABLED).
// The control therefore keeps this style to itself: it is not a bit of GetStyle, and a control made or taken
// over with it is enabled. Disable a control with EnableWindow; it has this background, too, as long as it is
// disabled.
constexpr DWORD RVS_FACEBACKGROUND = 0x08000000;

// Properties of CReportCtrl::ModifyProperty. Each comment says what the value is, and its default. The
// default sizes are those at 96 dots per inch: unless the owner sets them, they grow with the resolution.
constexpr std::uint64_t RVP_MARGIN = 1;      // pixels left and right of a cell's contents: 6
constexpr std::uint64_t RVP_CHECKSIZE = 2;   // low 16 bits the width, next 16 bits the height: 8 and 8
constexpr std::uint64_t RVP_EMPTYTEXT = 3;   // const char*, shown by an empty list: "<Empty list>"
constexpr std::uint64_t RVP_GRIDSTYLE = 4;   // 0 dotted, 1 dashed, 2 solid: 2
constexpr std::uint64_t RVP_SORTCAPTION = 5; // const char*, "%s" for the column's caption: "Sort by: %s"
constexpr std::uint64_t RVP_NOTIFYMASK = 6;  // 32 bits; bit k lets code -2048 - k through: all set
constexpr std::uint64_t RVP_UNUSED = 7;      // accepted and ignored

// The byte that ends each cell in an item's encoded cells (ReportItem.h), for all controls of the process: 7.
// Bytes that the encoding itself uses (0, 1, 2, digits, ',' and '-') are refused. Cells that exist already
// keep the old byte: all of an item's cells then read as the text of its first one. Set it before the first
// item.
constexpr std::uint64_t RVP_CELLSEPARATOR = 8;

constexpr std::uint64_t RVP_SHOWPREVIEW = 9;   // flag: items show their previews: 1
constexpr std::uint64_t RVP_DOUBLEBUFFER = 10; // flag: painted off the screen and copied to it in bands: 1
constexpr std::uint64_t RVP_TREESTYLE = 11;    // 0, 1 or 2; kept for the owner, no effect: 0
constexpr std::uint64_t RVP_IMAGEMODE = 12;    // RVIB_*, images of selected and focused rows: RVIB_NONE
constexpr std::uint64_t RVP_COLOR = 13;        // COLORREF; kept for the owner, no effect: 0xFFFFFF

// A byte, for all controls: what GetItemString(item) puts after each text: 9, the tab.
constexpr std::uint64_t RVP_STRINGSEPARATOR = 14;

// const char*, what each indentation level begins with in GetItemString, for all controls: ""
constexpr std::uint64_t RVP_TREEINDENT = 15;

// Flag: an item's line is as high as font, images and check boxes need, and stays so when these change, until
// SetItemHeight is called: 0. Without this property a line has 10 pixels, which cuts the text of any usual
// font.
constexpr std::uint64_t RVP_FITITEMHEIGHT = 256;

// Flag: the images of cells stay as they are from SetImageList on, so that the control may keep copies of
// them and draw those, which is several times as fast: 0. Changes to the list are not seen until SetImageList
// is called.
constexpr std::uint64_t RVP_KEEPIMAGES = 258;

// COLORREF, the background of selected rows without the focus: -1, which stands for the system's colour of
// dialogs. That colour is hardly to be seen where the system's style is light.
constexpr std::uint64_t RVP_INACTIVEHIGHLIGHT = 259;

// RVK_* bits: keys that users expect and that the control leaves alone otherwise: 0.
constexpr std::uint64_t RVP_KEYS = 257;

// Values of RVP_KEYS. The parent is told of each key first, as of all others (RVN_KEYDOWN).
//
// In a tree, Left folds the focused item or goes to its parent, and Right unfolds it or goes to its first
// child. Where neither can be done, and on a focused cell, they do what they do without this.
constexpr std::int64_t RVK_FOLD = 0x01;

// A double click on a tree item folds or unfolds it, unless it is on its check box.
constexpr std::int64_t RVK_DOUBLECLICK = 0x02;

// Ctrl+A selects all rows. Not with RVS_SINGLESELECT.
constexpr std::int64_t RVK_SELECTALL = 0x04;

// Ctrl+C and Ctrl+Insert copy the selected rows: the texts of the columns from left to right with tabs
// between them, a line for each row, as Unicode.
constexpr std::int64_t RVK_COPY = 0x08;

// Typing goes to the next row that begins with what is typed, in the column that is sorted by, or else in the
// first one. Capitals do not matter, a pause of a second begins a new text, and one letter typed again and
// again goes from row to row. At most 100,000 rows are looked at. Where typing edits a cell, it does that.
constexpr std::int64_t RVK_TYPEAHEAD = 0x10;

// The columns by keys: Ctrl+Left and Ctrl+Right mark one in the header. Ctrl+Shift+Left and Ctrl+Shift+Right
// move it, Ctrl with + or - makes it wider or narrower, Ctrl with * of the numeric keypad fits it to its
// texts, and Ctrl+Shift+Space is a click on its header. With a focused cell the marked column is that of the
// cell.
constexpr std::int64_t RVK_COLUMNS = 0x20;

// F2 edits the focused cell, with its whole text selected.
constexpr std::int64_t RVK_EDIT = 0x40;

constexpr std::int64_t RVK_ALL = 0x7F;

// RVED_* bits: what users expect of editing cells in place: 0.
constexpr std::uint64_t RVP_EDITING = 260;

// Values of RVP_EDITING. Tab and Shift+Tab end an edit and go on with the next cell to be edited, beyond the
// last one in the row below; Return goes on with the cell below.
constexpr std::int64_t RVED_GOON = 0x01;

// The letter C can be typed, and Ctrl+C copies what is selected; else the key C copies and is not typed.
constexpr std::int64_t RVED_TYPEC = 0x02;

// The editor grows with its text, up to the right edge of the control.
constexpr std::int64_t RVED_GROW = 0x04;

// The parent is asked before an edit ends (RVN_CHECKITEMEDIT), and may refuse the text.
constexpr std::int64_t RVED_CHECK = 0x08;

constexpr std::int64_t RVED_ALL = 0x0F;

// Values of RVP_IMAGEMODE: the share of the highlight colour in the images of selected rows, and of the
// window's colour in those of the focused row.
constexpr std::int64_t RVIB_NONE = 0;
constexpr std::int64_t RVIB_BLEND25 = 1;
constexpr std::int64_t RVIB_BLEND50 = 2;

// The system's colours that a control is drawn in (GetSystemColor).
constexpr int RVSC_WINDOW = 0;
constexpr int RVSC_HIGHLIGHT = 1;
constexpr int RVSC_INACTIVEHIGHLIGHT = 2; // selected rows without the focus
constexpr int RVSC_TEXT = 3;
constexpr int RVSC_HIGHLIGHTTEXT = 4;
constexpr int RVSC_INACTIVEHIGHLIGHTTEXT = 5;
constexpr int RVSC_GRID = 6;
constexpr int RVSC_FACE = 7;
constexpr int RVSC_LIGHT = 8;
constexpr int RVSC_SHADOW = 9;
constexpr int RVSC_HIGHLIGHTEDGE = 10; // of the fixed row, left and top
constexpr int RVSC_DARKSHADOW = 11;    // of the fixed row, right and bottom
constexpr int RVSC_COUNT = 12;

// The keys of an edit that are no characters: what begins or ends it. F2 begins it as RVEK_TAB does.
constexpr unsigned RVEK_MOUSE = 1;
constexpr unsigned RVEK_BACKSPACE = 8;
constexpr unsigned RVEK_TAB = 9;
constexpr unsigned RVEK_RETURN = 13;
constexpr unsigned RVEK_ESCAPE = 27;

// What GetRowRect and GetItemRect answer: the whole row with its preview, or the whole cell of its line; or
// the rectangle that editing a cell starts from, which is the same.
constexpr unsigned RVRC_WHOLE = 0;
constexpr unsigned RVRC_EDIT = 3;
