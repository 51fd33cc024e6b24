// An action that goes on step by step while the user sees how far it is.
#pragma once

#include "afxwin.h"

#include <functional>
#include <string>

namespace logreport
{

// A step takes some thousandths of a second and answers true as long as there is more to do. Nothing is shown
// of an action that has ended within a moment. After that a dialog shows how far it is (0 to 1) and has a
// button that gives it up. Answers whether it came to its end.
bool RunSteps(CWnd& owner, const char* title, const std::function<bool()>& step,
              const std::function<double()>& progress);

} // namespace logreport
