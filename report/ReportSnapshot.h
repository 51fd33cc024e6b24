// Rows and columns of a report control as they are at the moment, and where everything is.
#pragma once

#include "report/ReportCtrlData.h"

// What the geometry asks. Columns are read once, and a row that is asked for again is not fetched again: an
// object for one operation, or one paint.
class CReportCtrl::Data::FetchedRows : public report::GeometrySource
{
public:
    explicit FetchedRows(Data& data) : m_data(data) {}

    int RowCount() override { return m_data.rows.Count(); }
    report::RowShape ShapeOf(int row) override { return Row(row).shape; }
    report::CellContents ContentsOf(int row, int subitem) override;
    const std::vector<report::Column>& Columns() override;

    struct Fetched
    {
        int row = report::kNoRow;
        report::RowShape shape;
        _RVITEM item; // its text is the preview
        std::string preview;
    };
    Fetched& Row(int row);

    // A cell of a row, with its text in `text`; false when there is none.
    bool ReadCell(int row, int subitem, _RVITEM& cell, std::string& text);

    NMHDR callbackHeader = {}; // filled when a callback is first asked

private:
    Data& m_data;
    std::vector<report::Column> m_columns;
    bool m_areColumnsRead = false;
    Fetched m_row;
};

struct CReportCtrl::Data::Snapshot
{
    explicit Snapshot(Data& data) : rows(data), geometry(data.view, rows) {}
    FetchedRows rows;
    report::Geometry geometry;
};
