// Rows and columns of a report control as they are at the moment, and where everything is.
#pragma once

#include "report/ReportCtrlData.h"

// What the geometry asks. Columns are read once, and a row that is asked for again is not fetched again: an
// object for one operation, or one paint.
class CReportCtrl::Data::FetchedRows : public report::GeometrySource
{
public:
    // Shapes are asked for, or those of the last paint as long as they are good.
    enum class Shapes
    {
        Asked,
        Painted
    };
    explicit FetchedRows(Data& data, Shapes shapes) : m_data(data), m_shapes(shapes) {}

    int RowCount() override { return m_data.rows.Count(); }
    report::RowShape ShapeOf(int row) override
    {
        const bool isPainted = m_shapes == Shapes::Painted;
        const report::RowShape* const known = isPainted ? m_data.painting.shapes.Find(row) : nullptr;
        return known ? *known : Row(row).shape;
    }
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
    Shapes m_shapes;
    std::vector<report::Column> m_columns;
    bool m_areColumnsRead = false;
    Fetched m_row;
};

struct CReportCtrl::Data::Snapshot
{
    explicit Snapshot(Data& data, FetchedRows::Shapes shapes = FetchedRows::Shapes::Asked)
        : rows(data, shapes), geometry(data.view, rows), m_asking(data.window.asking)
    {
        if (!m_asking)
            m_asking = &rows.callbackHeader;
    }
    ~Snapshot()
    {
        if (m_asking == &rows.callbackHeader)
            m_asking = nullptr;
    }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    FetchedRows rows;
    report::Geometry geometry;
    report::ShownRow above; // the last row that ended within what has been painted, where a paint can go on

private:
    NMHDR*& m_asking; // the control's
};
