// The numbers of QmLog.dll's resources.
#pragma once

// Five square images in a row, on magenta: those of the levels 1 to 5.
#define IDB_LEVELS 9824     // of 16 pixels
#define IDB_LEVELS_200 9825 // of 32, for displays of 144 dpi and more
