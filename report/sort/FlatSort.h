// Sorting rows.
#pragma once

#include <utility>
#include <vector>

namespace report
{

// What the flat sort works on.
class SortRows
{
public:
    virtual ~SortRows() = default;
    virtual int ItemAt(int row) = 0; // both throw outside the rows
    virtual void Swap(int row1, int row2) = 0;
    virtual int Compare(int item, int pivot) = 0;

    // Sorts the rows from `low` to `high`: leads back to FlatSort::Run, perhaps on a way round.
    virtual void Sort(int low, int high) = 0;
};

// Partitions by the item in the middle, then has both parts sorted. The parts of a range are sorted when Run
// returns, but for ranges deeper than kMaxDepth: those are put on a list that the range at this depth works
// off, so that no input reaches deeper on the stack. A comparison that contradicts itself may end in an
// invalid argument. Whatever is thrown, the rows are still the same ones, and the object can sort again.
// One object a sort.
class FlatSort
{
public:
    static constexpr int kMaxDepth = 200;
    void Run(SortRows& rows, bool ascending, int low, int high);

private:
    int m_depth = 0;
    std::vector<std::pair<int, int>> m_list;
};

} // namespace report
