#include "logview/MarginZones.h"

namespace logview
{

int SwitchedRow(int row, int column, int x, int dy, int rowHeight, int columnWidth)
{
    if (column >= -1 || x < 0 || x > columnWidth)
        return kNoSwitch;
    if (dy <= rowHeight / 2)
        return row - 1;
    return dy >= rowHeight - rowHeight / 2 ? row : kNoSwitch;
}

} // namespace logview
