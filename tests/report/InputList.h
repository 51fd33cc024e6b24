// A list of rows for the rules of input.
#pragma once

#include "report/model/Input.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace report
{

// Its rows are 1 high. It remembers what it is told.
class InputList : public InputTarget
{
public:
    int RowCount() override { return rows; }
    bool HasHeight(int row) override { return !hidden.contains(row); }
    RowRange WholeRows() override { return {top, std::max(top, std::min(top + page, rows) - 1)}; }
    int ColumnCount() override { return columns; }
    bool CanFocus(int column) override
    {
        EXPECT_LT(column, columns);
        return column != 1;
    }
    bool IsCellFocus() const override { return cellFocus; }
    bool IsFixedRow() const override { return fixedRow; }
    bool IsTree() const override { return tree; }
    void SelectRows(int row, int anchor, SelectMode mode) override
    {
        const char* const modes[] = {" focus only", "", " add", " toggle"};
        log +=
            " select " + std::to_string(row) + ".." + std::to_string(anchor) + modes[static_cast<int>(mode)];
        selection.Select(row, anchor, mode, false);
    }
    void FocusFixedRow() override
    {
        log += " fixed";
        selection.focusRow = kFixedRow;
    }
    void EnsureVisible(int row) override
    {
        if (row < top)
            top = row;
        if (row >= top + page)
            top = row - page + 1;
    }
    void Scroll(RowScroll how) override
    {
        const int end = std::max(0, rows - page);
        top = how == RowScroll::Top ? 0
              : how == RowScroll::Bottom
                  ? end
                  : std::clamp(top + (how == RowScroll::PageUp ? 1 - page : page - 1), 0, end);
    }
    void ScrollColumns(int direction) override { log += direction < 0 ? " left" : " right"; }
    void FocusColumn(int column) override
    {
        selection.focusColumn = column;
        shownColumn = column;
    }
    void EnsureVisibleColumn(int column) override { visibleColumn = column; }
    void ChangeTree(int row, TreeAction action) override
    {
        log += " tree " + std::to_string(row) + "+*-"[static_cast<int>(action)];
    }
    bool BeginEdit(int row, int column, unsigned key) override
    {
        log += " edit " + std::to_string(row) + ',' + std::to_string(column) + ' ' + std::to_string(key);
        return edits;
    }

    Selection selection;
    int rows = 100;
    int page = 10;
    int top = 0;
    int columns = 4;
    bool cellFocus = false;
    bool fixedRow = false;
    bool tree = false;
    bool edits = true;
    int visibleColumn = kNoRow;  // that has been brought into view; kNoRow for none
    int shownColumn = kNoColumn; // that the target has been told of
    std::set<int> hidden;
    std::string log;
};

} // namespace report
