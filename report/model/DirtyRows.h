// What of a report control has been invalidated since it was painted.
#pragma once

#include "report/model/Geometry.h"

namespace report
{

// Each invalidation is a request to the system's server. So rows that are out of view or invalid already need
// none, and after some ranges of rows all of the window is cheaper.
class DirtyRows
{
public:
    static constexpr int kMaxRanges = 4;

    enum class Request // what to ask the system for
    {
        Nothing,
        Rows,
        All
    };
    Request Add(RowRange rows, const View& view);
    Request AddAll();
    void Painted() { *this = DirtyRows(); }

private:
    bool m_all = false;
    int m_ranges = 0;
    RowRange m_last{0, -1};
};

} // namespace report
