#include "logreport/PresentMessage.h"

namespace logreport
{

void SendPresentMessage(HWND viewer, std::uint32_t id)
{
    static const UINT message = ::RegisterWindowMessage("QmPresentMessageId");
    if (const HWND parent = ::GetParent(viewer))
        ::SendMessage(parent, message, reinterpret_cast<WPARAM>(viewer), static_cast<LPARAM>(id));
}

} // namespace logreport
