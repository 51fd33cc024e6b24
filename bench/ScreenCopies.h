// Counts the copies of pixels to windows that the library makes.
#pragma once

#include <functional>

namespace bench
{

// Pixels that BitBlt copies to a window, called by QmLog.dll and QmPlatform.dll, while `action` runs.
// Counting goes on unseen after that.
double CountCopiedPixels(const std::function<void()>& action);

} // namespace bench
