#include "report/model/Input.h"

#include "ReportStyle.h"

#include <algorithm>

namespace report
{

namespace
{

// Between these the control deals with every key that it leaves to nobody else.
constexpr unsigned kFirstCommand = 27;
constexpr unsigned kLastCommand = 40;

} // namespace

// ---- Keys

bool Input::KeyDown(unsigned key, Modifiers modifiers)
{
    m_selection.typingMayEdit = false;
    const Key command = static_cast<Key>(key);
    switch (command)
    {
    case Key::Space:
        if (m_selection.focusRow >= 0)
            m_target.SelectRows(m_selection.focusRow, m_selection.focusRow,
                                modifiers.control ? SelectMode::Toggle : SelectMode::Add);
        return true;
    case Key::PageUp:
    case Key::PageDown:
    case Key::End:
    case Key::Home:
    case Key::Left:
    case Key::Up:
    case Key::Right:
    case Key::Down:
        return MoveByKey(command, modifiers);
    case Key::Escape:
        return false;
    case Key::Multiply:
    case Key::Add:
    case Key::Subtract:
        if (ChangeTree(command))
            return true;
        break;
    }
    if (key < kFirstCommand || key > kLastCommand)
        m_selection.typingMayEdit = !modifiers.control;
    return false;
}

bool Input::MoveByKey(Key key, Modifiers modifiers)
{
    const int focus = m_selection.focusRow;
    switch (key)
    {
    case Key::PageUp:
        PageUp(modifiers);
        break;
    case Key::PageDown:
        PageDown(modifiers);
        break;
    case Key::End:
        if (focus < m_target.RowCount() - 1)
        {
            m_target.Scroll(RowScroll::Bottom);
            MoveTo(NextRow(m_target.RowCount(), -1), modifiers);
        }
        break;
    case Key::Home:
        if (focus > 0)
        {
            m_target.Scroll(RowScroll::Top);
            MoveTo(NextRow(-1, 1), modifiers);
        }
        break;
    case Key::Left:
        MoveColumn(-1);
        break;
    case Key::Right:
        MoveColumn(1);
        break;
    case Key::Up:
        if (focus > 0)
            MoveTo(NextRow(focus, -1), modifiers);
        else if (focus == 0 && m_target.IsFixedRow())
            MoveTo(0, modifiers);
        break;
    default:
        if (focus < m_target.RowCount() - 1)
            MoveTo(NextRow(std::max(focus, kFixedRow), 1), modifiers);
        break;
    }
    return true;
}

void Input::PageUp(Modifiers modifiers)
{
    if (m_target.RowCount() == 0)
        return;
    if (m_selection.focusRow == m_target.WholeRows().first)
        m_target.Scroll(RowScroll::PageUp);
    MoveTo(NextRow(m_target.WholeRows().first, -1), modifiers);
}

void Input::PageDown(Modifiers modifiers)
{
    if (m_target.RowCount() == 0)
        return;
    if (m_selection.focusRow == m_target.WholeRows().last)
        m_target.Scroll(RowScroll::PageDown);
    MoveTo(NextRow(m_target.WholeRows().last, 1), modifiers);
}

void Input::MoveTo(int row, Modifiers modifiers)
{
    if (row < 0 || row >= m_target.RowCount())
        return;
    const bool extend = modifiers.shift;
    const bool select = extend || !modifiers.control;
    m_target.SelectRows(row, extend ? Anchor(row) : row, select ? SelectMode::Alone : SelectMode::None);
    if (!extend)
        m_selection.anchor = row;
    m_target.EnsureVisible(row);
}

// The next row that can be seen at all; the outermost such row at the end.
int Input::NextRow(int row, int direction)
{
    int hidden = 0;
    for (int next = row + direction; next >= 0 && next < m_target.RowCount(); next += direction)
    {
        if (m_target.HasHeight(next))
            return next;
        if (++hidden > kMaxHidden)
            break;
    }
    return std::clamp(row, 0, std::max(0, m_target.RowCount() - 1));
}

// The anchor of a selection that is extended to `row`.
int Input::Anchor(int row)
{
    const int count = m_target.RowCount();
    return count > 0 ? std::clamp(m_selection.anchor, 0, count - 1) : row;
}

// ---- Columns

void Input::MoveColumn(int direction)
{
    if (!m_target.IsCellFocus())
    {
        m_target.ScrollColumns(direction);
        return;
    }
    const int column = NextColumn(m_selection.focusColumn, direction);
    if (column == m_selection.focusColumn)
        return;
    m_target.FocusColumn(column);
    m_target.EnsureVisibleColumn(column);
}

// To the left of the first such column lies the whole row; to the right of the last, nothing.
int Input::NextColumn(int column, int direction)
{
    for (int next = column + direction; next >= 0 && next < m_target.ColumnCount(); next += direction)
        if (m_target.CanFocus(next))
            return next;
    return direction < 0 ? kNoColumn : std::min(column, m_target.ColumnCount() - 1);
}

// ---- Tree and edits

bool Input::Edit(unsigned key)
{
    const bool isCell =
        m_selection.focusColumn >= 0 && (m_selection.focusRow == kFixedRow || m_target.IsCellFocus());
    return isCell && m_target.BeginEdit(m_selection.focusRow, m_selection.focusColumn, key);
}

// The keys of a tree, unless they begin to edit a cell.
bool Input::ChangeTree(Key key)
{
    if (!m_target.IsTree() || m_selection.focusRow < 0)
        return false;
    const struct
    {
        Key key;
        unsigned character;
        TreeAction action;
    } keys[] = {{Key::Add, '+', TreeAction::Expand},
                {Key::Multiply, '*', TreeAction::ExpandAll},
                {Key::Subtract, '-', TreeAction::Collapse}};
    for (const auto& each : keys)
    {
        if (each.key != key)
            continue;
        if (!Edit(each.character))
            m_target.ChangeTree(m_selection.focusRow, each.action);
    }
    return true;
}

bool Input::Character(unsigned character)
{
    return m_selection.typingMayEdit && Edit(character);
}

// ---- Mouse

void Input::Click(int row, int column, Modifiers modifiers)
{
    const int oldRow = m_selection.focusRow;
    const int oldColumn = m_selection.focusColumn;
    // Columns may have gone since the click; and a row that one cell spans is shown without any.
    const bool canFocus = column >= 0 && column < m_target.ColumnCount() && m_target.CanFocus(column);
    m_target.FocusColumn(canFocus && (m_target.IsCellFocus() || row == kFixedRow) ? column : kNoColumn);
    if (row == kNoRow)
        return;
    const bool alone = !modifiers.shift && !modifiers.control;
    if (row == kFixedRow)
        m_target.FocusFixedRow();
    else
    {
        const int anchor = modifiers.shift ? Anchor(row) : row;
        const SelectMode mode = modifiers.shift ? SelectMode::Add : SelectMode::Toggle;
        m_target.SelectRows(row, anchor, modifiers.control ? mode : SelectMode::Alone);
        if (alone || modifiers.control)
            m_selection.anchor = row;
    }
    const bool again = m_selection.focusRow == oldRow && m_selection.focusColumn == oldColumn;
    if (alone && again)
        Edit(RVEK_MOUSE);
}

void Input::RightClick(int row, Modifiers modifiers)
{
    if (row < 0 || modifiers.shift || modifiers.control)
        return;
    m_target.SelectRows(row, row, SelectMode::Alone);
    m_selection.anchor = row;
}

void Input::DragTo(int row)
{
    if (row >= 0 && row < m_target.RowCount() && row != m_selection.focusRow)
        m_target.SelectRows(row, Anchor(row), SelectMode::Alone);
}

} // namespace report
