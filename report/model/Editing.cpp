#include "report/model/Editing.h"

#include "ReportItem.h"
#include "ReportStyle.h"
#include "report/model/Input.h"

#include <algorithm>

namespace report
{

bool IsPlaceToEdit(int row, int column, int rows, std::uint32_t style)
{
    const bool isRow = row == kFixedRow ? (style & RVS_FIXEDROW) != 0 : row >= 0 && row < rows;
    return isRow && column >= 0;
}

bool MayEdit(std::uint32_t state)
{
    return (state & RVIS_READONLY) == 0;
}

std::optional<Rect> EditorRect(const CellLayout& layout, const ShownCell& cell, const CellContents& contents)
{
    Rect text = layout.PartsOf(cell.rect, contents).text;
    if (text.left > text.right)
        return std::nullopt;
    text.top += kEditorTop;
    return text;
}

int GrownRight(const Rect& editor, int textWidth, int end)
{
    const int caret = editor.Height(); // room for the letter that comes next, too
    return std::max(editor.right, std::min(editor.left + textWidth + caret, end));
}

Primer PrimerOf(unsigned key, bool isTyped)
{
    const auto isMove = [key] {
        return key >= static_cast<unsigned>(Key::Space) && key <= static_cast<unsigned>(Key::Down);
    };
    if (key == RVEK_MOUSE || key == RVEK_RETURN)
        return {};
    if (key == RVEK_BACKSPACE)
        return {false, RVEK_BACKSPACE};
    if (key == RVEK_TAB || (isMove() && !(isTyped && key != static_cast<unsigned>(Key::Space))))
        return {true, 0};
    return {true, key};
}

GoOn GoOnAfter(unsigned key, bool isShift)
{
    if (key == RVEK_TAB)
        return isShift ? GoOn::Previous : GoOn::Next;
    return key == RVEK_RETURN ? GoOn::Below : GoOn::Nowhere;
}

CellPlace NextCell(CellPlace cell, GoOn goOn, int rows, int columns)
{
    const bool isFixed = cell.row == kFixedRow;
    if (goOn == GoOn::Below)
        ++cell.row;
    else
        cell.column += goOn == GoOn::Next ? 1 : -1;
    if (cell.column >= columns)
        cell = {cell.row + 1, 0};
    else if (cell.column < 0)
        cell = {cell.row - 1, columns - 1};
    const bool isSameKind = (cell.row == kFixedRow) == isFixed;
    return !isSameKind || cell.row >= rows || columns == 0 ? CellPlace{kNoRow, 0} : cell;
}

} // namespace report
