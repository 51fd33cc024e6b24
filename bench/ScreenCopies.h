// Counts the copies of pixels to windows that the library makes.
#pragma once

#include <functional>

namespace bench
{

// Calls of BitBlt with a window for a target, by QmLog.dll and QmPlatform.dll, while `action` runs. Counting
// goes on unseen after that.
int CountScreenCopies(const std::function<void()>& action);

} // namespace bench
