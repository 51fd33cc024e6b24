#include "report/model/ExtraKeys.h"

#include <algorithm>
#include <limits>

namespace report
{

namespace
{

constexpr unsigned kInsert = 45;
constexpr unsigned kF2 = 113;
constexpr unsigned kPlus = 0xBB; // of the letters' block
constexpr unsigned kMinus = 0xBD;
constexpr unsigned kFirstCharacter = 32;

} // namespace

bool ExtraKeys::KeyDown(unsigned key, Modifiers modifiers, std::uint32_t time)
{
    if (modifiers.control && Has(kColumnKeys) && ColumnKey(key, modifiers))
        return true;
    if (modifiers.control)
        return !modifiers.shift && ControlKey(key);
    const Key command = static_cast<Key>(key);
    if (command == Key::Space && Has(kTypeAheadKeys) && m_state.typing.IsTyping(time))
    {
        m_selection.typingMayEdit = true; // the blank is a character of the text
        return true;
    }
    if (key == kF2 && Has(kEditKey))
        return Input(m_selection, m_rows).Edit(RVEK_TAB);
    return (command == Key::Left || command == Key::Right) && Has(kFoldKeys) && Fold(command, modifiers);
}

bool ExtraKeys::ControlKey(unsigned key)
{
    if (key == 'A' && Has(kSelectAllKey))
        m_target.SelectAll();
    else if ((key == 'C' || key == kInsert) && Has(kCopyKeys))
        m_target.Copy();
    else
        return false;
    return true;
}

bool ExtraKeys::Character(unsigned character, std::uint32_t time)
{
    if (!Has(kTypeAheadKeys) || !m_selection.typingMayEdit || character < kFirstCharacter)
        return false;
    const int row =
        m_state.typing.Type(static_cast<ZEMA::WideChar>(character), time, m_selection.focusRow, m_target);
    if (row != kNoRow)
        Input(m_selection, m_rows).MoveTo(row, {});
    return true;
}

// ---- Tree

// Beyond what can be folded the keys are Input's, and so they are on a focused cell.
bool ExtraKeys::Fold(Key key, Modifiers modifiers)
{
    const int row = m_selection.focusRow;
    if (!m_rows.IsTree() || row < 0 || row >= m_rows.RowCount() || IsCellFocused())
        return false;
    const TreeRow tree = m_target.TreeRowAt(row);
    const bool isOpen = tree.hasChildren && tree.isExpanded;
    if (key == Key::Right && tree.hasChildren && !isOpen)
        m_rows.ChangeTree(row, TreeAction::Expand);
    else if (key == Key::Right && isOpen && !m_rows.IsCellFocus())
        Input(m_selection, m_rows).MoveTo(row + 1, modifiers);
    else if (key == Key::Left && isOpen)
        m_rows.ChangeTree(row, TreeAction::Collapse);
    else if (key == Key::Left && tree.parent >= 0)
        Input(m_selection, m_rows).MoveTo(tree.parent, modifiers);
    else
        return false;
    return true;
}

bool ExtraKeys::DoubleClick(int row)
{
    if (!Has(kDoubleClickToggles) || !m_rows.IsTree() || row < 0 || row >= m_rows.RowCount())
        return false;
    const TreeRow tree = m_target.TreeRowAt(row);
    if (!tree.hasChildren)
        return false;
    m_rows.ChangeTree(row, tree.isExpanded ? TreeAction::Collapse : TreeAction::Expand);
    return true;
}

// ---- Columns

// The one that keys change: that of the focused cell, or else the one marked in the header.
int ExtraKeys::CurrentColumn()
{
    const int column = IsCellFocused() ? m_selection.focusColumn : m_target.MarkedColumn();
    return column < m_rows.ColumnCount() ? column : kNoColumn;
}

bool ExtraKeys::ColumnKey(unsigned key, Modifiers modifiers)
{
    const Key command = static_cast<Key>(key);
    const bool isArrow = command == Key::Left || command == Key::Right;
    const int direction = command == Key::Left ? -1 : 1;
    if (isArrow && !modifiers.shift)
        return MarkNext(direction);
    const int column = CurrentColumn();
    if (column < 0)
        return false;
    const int width = m_target.WidthOf(column);
    if (isArrow)
        MoveColumn(column, direction);
    else if (command == Key::Space && modifiers.shift)
        m_target.ClickColumn(column);
    else if (command == Key::Add || key == kPlus)
        m_target.SetWidth(column, width + std::min(kWidthStep, std::numeric_limits<int>::max() - width));
    else if (command == Key::Subtract || key == kMinus)
        m_target.SetWidth(column, std::max(std::min(width, kWidthStep), width - kWidthStep));
    else if (command == Key::Multiply)
        m_target.FitColumn(column);
    else
        return false;
    return true;
}

// From no mark the first is the leftmost or rightmost column. A focused cell is moved by Input.
bool ExtraKeys::MarkNext(int direction)
{
    const int count = m_rows.ColumnCount();
    if (IsCellFocused() || count == 0)
        return false;
    const int column = CurrentColumn();
    const int from = column >= 0 ? column : direction > 0 ? -1 : count;
    const int next = std::clamp(from + direction, 0, count - 1);
    m_target.MarkColumn(next);
    m_rows.EnsureVisibleColumn(next);
    return true;
}

// What marks the column goes along.
void ExtraKeys::MoveColumn(int column, int direction)
{
    const int to = column + direction;
    if (to < 0 || to >= m_rows.ColumnCount())
        return;
    const bool isFocused = IsCellFocused();
    m_target.MoveColumn(column, to);
    isFocused ? m_rows.FocusColumn(to) : m_target.MarkColumn(to);
    m_rows.EnsureVisibleColumn(to);
}

} // namespace report
