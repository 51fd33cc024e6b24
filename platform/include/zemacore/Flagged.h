// A flag for the length of a scope.
#pragma once

namespace ZEMA
{

// Sets a flag, and puts it back to what it was.
class Flagged
{
public:
    explicit Flagged(bool& flag) : m_flag(flag), m_before(flag) { flag = true; }
    ~Flagged() { m_flag = m_before; }
    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;

private:
    bool& m_flag;
    bool m_before;
};

} // namespace ZEMA
