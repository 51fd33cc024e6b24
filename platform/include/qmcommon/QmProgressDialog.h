// An action that goes on step by step while the user sees how far it is.
#pragma once

#include "afxwin.h"

#include <functional>

// A step takes some thousandths of a second at most and answers true as long as there is more to do. Nothing
// is shown of an action that has ended within a moment. After that a dialog shows how far it is (0 to 1) and
// gives it up with its button and with Esc, also with one that was pressed before. Its owner's top-level
// window takes no input, but goes on painting. Answers whether the action came to its end.
QMPLATFORM_API bool QmRunSteps(CWnd& owner, const char* title, const std::function<bool()>& step,
                               const std::function<double()>& progress);
