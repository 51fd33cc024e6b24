// The shapes of the rows that were painted last.
#pragma once

#include "report/model/Geometry.h"

#include <vector>

namespace report
{

// A point hits what is seen there. So the rows above it need not be asked for their heights, which in
// callback mode costs more than all else, as long as nothing has changed since the paint.
class PaintedShapes
{
public:
    // A paint walks downwards. What lies apart from the rows that are known replaces them.
    void Add(int row, const RowShape& shape)
    {
        const int index = row - m_first;
        if (index >= 0 && index < Count())
            m_shapes[static_cast<std::size_t>(index)] = shape;
        else
        {
            if (index != Count())
                Forget();
            if (m_shapes.empty())
                m_first = row;
            m_shapes.push_back(shape);
        }
    }

    void Forget() { m_shapes.clear(); }

    // Null if it is not known.
    const RowShape* Find(int row) const
    {
        const bool isKnown = row >= m_first && row - m_first < Count();
        return isKnown ? &m_shapes[static_cast<std::size_t>(row - m_first)] : nullptr;
    }

private:
    int Count() const { return static_cast<int>(m_shapes.size()); }

    int m_first = 0;
    std::vector<RowShape> m_shapes;
};

} // namespace report
