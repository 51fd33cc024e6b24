// What viewers send to their parents.
#pragma once

#include <cstdint>
#include <windows.h>

namespace logreport
{

// Sends the registered message "QmPresentMessageId" to the parent of a viewer's window, which may be null,
// with the window's handle and the id.
void SendPresentMessage(HWND viewer, std::uint32_t id);

} // namespace logreport
