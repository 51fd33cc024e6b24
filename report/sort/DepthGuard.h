// Counts the levels of a recursion.
#pragma once

namespace report
{

// One level deeper, for as long as it lives.
class DepthGuard
{
public:
    explicit DepthGuard(int& depth) : m_depth(depth) { ++m_depth; }
    ~DepthGuard() { --m_depth; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& m_depth;
};

} // namespace report
