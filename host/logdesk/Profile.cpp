#include "logdesk/Profile.h"

#include "zemacore/AppDataManager.h"

#include <algorithm>

namespace logdesk
{

namespace
{

constexpr const char* kSection = "LogDesk";

IProfileStore* Profile()
{
    IAppDataManager* const manager = AppDataManager::LoadAppDataManager();
    return manager ? manager->GetProfileStore() : nullptr;
}

Place ToPlace(const RECT& rect)
{
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right - rect.left),
            static_cast<int>(rect.bottom - rect.top)};
}

// What the screen nearest to `rect` has free.
Place WorkArea(const RECT& rect)
{
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST), &monitor);
    return ToPlace(monitor.rcWork);
}

} // namespace

WindowOptions ReadWindowOptions()
{
    IProfileStore* const profile = Profile();
    // A file that somebody has edited may hold any number; windows have 16-bit places.
    const auto read = [&](const char* key) {
        return profile ? std::clamp(profile->GetInteger(kSection, key, 0), -0x8000, 0x7FFF) : 0;
    };

    WindowOptions options = {};
    options.maximised = read("Maximised") != 0;
    options.followPauses = read("FollowPauses") != 0;
    const Place place = {read("Left"), read("Top"), read("Width"), read("Height")};
    const bool isKnown = place.width > 0 && place.height > 0;
    const Place area = WorkArea({place.left, place.top, place.left + place.width, place.top + place.height});
    options.place = isKnown ? BoundedPlace(place, area) : FirstPlace(area);
    return options;
}

void WriteWindowOptions(CWnd& frame, bool followPauses)
{
    IProfileStore* const profile = Profile();
    if (!profile)
        return;
    const bool isMaximised = ::IsZoomed(frame) != FALSE;
    CRect rect;
    frame.GetWindowRect(rect);
    if (isMaximised || ::IsIconic(frame))
    {
        WINDOWPLACEMENT placement = {};
        placement.length = sizeof(placement);
        ::GetWindowPlacement(frame, &placement);
        rect = placement.rcNormalPosition;
    }
    const Place place = ToPlace(rect);
    profile->SetInteger(kSection, "Left", place.left);
    profile->SetInteger(kSection, "Top", place.top);
    profile->SetInteger(kSection, "Width", place.width);
    profile->SetInteger(kSection, "Height", place.height);
    profile->SetInteger(kSection, "Maximised", isMaximised ? 1 : 0);
    profile->SetInteger(kSection, "FollowPauses", followPauses ? 1 : 0);
}

} // namespace logdesk
