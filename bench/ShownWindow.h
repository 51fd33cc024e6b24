// Windows that are timed painting.
#pragma once

#include "Bench.h"

#include <functional>
#include <windows.h>

namespace bench
{

// Paints all of a window at once, but not its children: a header costs as much as the rows.
void Repaint(HWND hwnd);

// A key, and what it changes painted.
void Press(HWND hwnd, WPARAM key);

// `times` an action of a window that has the focus and is the only one shown of its parent's. `prepare` comes
// before, not timed; what it changes is painted.
Variant WhenShown(HWND hwnd, unsigned times, const std::function<void()>& action,
                  const std::function<void()>& prepare = {});

} // namespace bench
