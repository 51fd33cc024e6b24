// Rows and columns of any looks, for the rules of where things are.
#pragma once

#include "report/model/Geometry.h"

#include <map>
#include <vector>

class Sheet : public report::GeometrySource
{
public:
    int RowCount() override { return static_cast<int>(rows.size()); }
    report::RowShape ShapeOf(int row) override
    {
        ++asked;
        return row == report::kFixedRow ? report::RowShape() : rows.at(static_cast<std::size_t>(row));
    }
    report::CellContents ContentsOf(int, int subitem) override { return contents[subitem]; }
    const std::vector<report::Column>& Columns() override { return columns; }

    report::View view;
    report::Geometry geometry{view, *this};
    std::vector<report::RowShape> rows;
    std::vector<report::Column> columns;
    std::map<int, report::CellContents> contents; // by subitem
    int asked = 0;                                // how often for a row
};
