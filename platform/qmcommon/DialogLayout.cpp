#include "qmcommon/DialogLayout.h"

#include "qmcommon/QmSizerFlags.h"

#include <algorithm>

namespace qmcommon
{

namespace
{

struct Stretch
{
    LONG start, end;
};

Stretch Within(Stretch wanted, LONG least, Stretch area)
{
    const LONG length = std::min(std::max(wanted.end - wanted.start, least), area.end - area.start);
    const LONG start = std::max(area.start, std::min(wanted.start, area.end - length));
    return {start, start + length};
}

} // namespace

RECT PlaceOf(const SizerRule& rule, const RECT& control, int columns, int gainX, int gainY)
{
    const LONG x = std::max(gainX, 0);
    const LONG y = std::max(gainY, 0);
    const LONG left = rule.moves & kSizerToRight ? x : x * rule.column / columns;
    const LONG right = rule.moves & kSizerWider ? x * (rule.column + rule.span) / columns : left;
    const LONG top = rule.moves & kSizerToBottom ? y : 0;
    const LONG bottom = rule.moves & kSizerHigher ? y : top;
    return {control.left + left, control.top + top, control.right + right, control.bottom + bottom};
}

RECT BringWithin(const RECT& wanted, SIZE least, const RECT& area)
{
    const Stretch x = Within({wanted.left, wanted.right}, least.cx, {area.left, area.right});
    const Stretch y = Within({wanted.top, wanted.bottom}, least.cy, {area.top, area.bottom});
    return {x.start, y.start, x.end, y.end};
}

} // namespace qmcommon
