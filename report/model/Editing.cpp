#include "report/model/Editing.h"

#include "ReportStyle.h"
#include "report/model/Input.h"

namespace report
{

std::optional<Rect> EditorRect(const CellLayout& layout, const ShownCell& cell, const CellContents& contents)
{
    Rect text = layout.PartsOf(cell.rect, contents).text;
    if (text.left > text.right)
        return std::nullopt;
    text.top += kEditorTop;
    return text;
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

} // namespace report
