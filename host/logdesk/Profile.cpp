#include "logdesk/Profile.h"

#include "vkgrafic/Display.h"
#include "zemacore/AppDataManager.h"

#include <algorithm>
#include <array>

namespace logdesk
{

namespace
{

constexpr const char* kSection = "LogDesk";
constexpr std::size_t kMaxFontName = 128; // bytes: 31 characters of any language
// Keys "1", "2" and so on, the most recent first.
constexpr const char* kRecentSection = "LogDesk.Recent";
constexpr const char* kRecentSessionsSection = "LogDesk.RecentSessions";
constexpr const char* kFindSection = "LogDesk.Find";
constexpr std::size_t kMostFindTexts = 20;
constexpr DWORD kFindBytes = 1024;
constexpr const char* kBookmarksSection = "LogDesk.Bookmarks";
constexpr DWORD kBookmarkBytes = 0x8000; // of a session, its folder included
constexpr DWORD kGoToBytes = 100;

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

// Where other windows of this program are that have a place.
std::vector<Place> OtherWindows()
{
    std::vector<Place> places;
    HWND wnd = nullptr;
    while ((wnd = ::FindWindowExA(nullptr, wnd, kFrameClass, nullptr)) != nullptr)
    {
        RECT rect = {};
        if (::IsWindowVisible(wnd) && !::IsIconic(wnd) && !::IsZoomed(wnd) && ::GetWindowRect(wnd, &rect))
            places.push_back(ToPlace(rect));
    }
    return places;
}

// The texts of the keys "1" to "N", as far as there are any of at most `size` bytes.
std::vector<std::string> ReadTexts(const char* section, std::size_t most, DWORD size)
{
    std::vector<std::string> texts;
    IProfileStore* const profile = Profile();
    std::string text(size, '\0');
    for (std::size_t i = 0; profile && i < most; ++i)
    {
        const DWORD length = profile->GetText(section, std::to_string(i + 1).c_str(), text.data(), size);
        if (length < size)
            texts.push_back(text.substr(0, length));
    }
    return texts;
}

void WriteTexts(const char* section, std::size_t most, const std::vector<std::string>& texts)
{
    IProfileStore* const profile = Profile();
    for (std::size_t i = 0; profile && i < most; ++i)
    {
        const std::string key = std::to_string(i + 1);
        if (i < texts.size())
            profile->SetText(section, key.c_str(), texts[i].c_str());
        else
            profile->RemoveKey(section, key.c_str());
    }
}

} // namespace

WindowOptions ReadWindowOptions()
{
    IProfileStore* const profile = Profile();
    // A file that somebody has edited may hold any number; windows have 16-bit places.
    const auto read = [&](const char* key, int missing = 0) {
        return profile ? std::clamp(profile->GetInteger(kSection, key, missing), -0x8000, 0x7FFF) : missing;
    };

    WindowOptions options;
    options.maximised = read("Maximised") != 0;
    options.followPauses = read("FollowPauses", 1) != 0;
    options.split = read("Split", options.split);
    options.showLogText = read("ShowLogText", 1) != 0;
    options.showMessages = read("ShowMessages", 1) != 0;
    options.preview = read("Preview", 1) != 0;
    options.pauseMessages = read("PauseMessages", 1) != 0;
    options.useAllFields = read("UseAllFields") != 0;
    options.guardFormulas = read("GuardFormulas") != 0;
    options.showToolBar = read("ToolBar", 1) != 0;
    options.showTimes = read("ShowTimes", 1) != 0;
    options.openHere = read("OpenHere") != 0;
    char font[kMaxFontName] = {};
    if (profile && profile->GetText(kSection, "Font", font, sizeof(font)) < sizeof(font))
        options.look.font = font;
    options.look.points = read("FontPoints", options.look.points);
    options.look.zoom = read("Zoom");
    options.look = BoundedLook(options.look, read("Colours"));
    std::array<char, kGoToBytes> goTo = {};
    if (profile && profile->GetText(kSection, "GoTo", goTo.data(), kGoToBytes) < kGoToBytes)
        options.goTo = goTo.data();
    const Place place = {read("Left"), read("Top"), read("Width"), read("Height")};
    const bool isKnown = place.width > 0 && place.height > 0;
    const Place area = WorkArea({place.left, place.top, place.left + place.width, place.top + place.height});
    const int resolution = static_cast<int>(VkGrafic::GetResolution(nullptr));
    options.place =
        CascadedPlace(isKnown ? BoundedPlace(place, area) : FirstPlace(area, resolution), OtherWindows(),
                      ::GetSystemMetrics(SM_CYCAPTION) + ::GetSystemMetrics(SM_CYMENU), area);
    return options;
}

void KeepOnScreen(CWnd& frame)
{
    CRect rect;
    frame.GetWindowRect(rect);
    frame.MoveWindow(rect.left, rect.top, rect.Width(), rect.Height()); // which becomes its least size
    frame.GetWindowRect(rect);
    const Place place = BoundedPlace(ToPlace(rect), WorkArea(rect));
    frame.MoveWindow(place.left, place.top, place.width, place.height);
}

void WriteWindowOptions(CWnd& frame, const WindowOptions& options)
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
    profile->SetInteger(kSection, "FollowPauses", options.followPauses ? 1 : 0);
    profile->SetInteger(kSection, "Split", options.split);
    profile->SetInteger(kSection, "ShowLogText", options.showLogText ? 1 : 0);
    profile->SetInteger(kSection, "ShowMessages", options.showMessages ? 1 : 0);
    profile->SetInteger(kSection, "Preview", options.preview ? 1 : 0);
    profile->SetInteger(kSection, "PauseMessages", options.pauseMessages ? 1 : 0);
    profile->SetInteger(kSection, "UseAllFields", options.useAllFields ? 1 : 0);
    profile->SetInteger(kSection, "GuardFormulas", options.guardFormulas ? 1 : 0);
    profile->SetInteger(kSection, "ToolBar", options.showToolBar ? 1 : 0);
    profile->SetInteger(kSection, "ShowTimes", options.showTimes ? 1 : 0);
    profile->SetInteger(kSection, "OpenHere", options.openHere ? 1 : 0);
    profile->SetText(kSection, "Font", options.look.font.c_str());
    profile->SetInteger(kSection, "FontPoints", options.look.points);
    profile->SetInteger(kSection, "Zoom", options.look.zoom);
    profile->SetInteger(kSection, "Colours", static_cast<int>(options.look.colours));
    profile->SetText(kSection, "GoTo", options.goTo.c_str());
}

bool HasListLayout()
{
    IProfileStore* const profile = Profile();
    return profile && profile->GetInteger("Log.Report", "Report", -1) != -1;
}

RecentFiles ReadRecentFiles()
{
    return RecentFiles(ReadTexts(kRecentSection, RecentFiles::kMost, MAX_PATH));
}

void WriteRecentFiles(const RecentFiles& files)
{
    WriteTexts(kRecentSection, RecentFiles::kMost, files.Paths());
}

RecentFiles ReadRecentSessions()
{
    return RecentFiles(ReadTexts(kRecentSessionsSection, RecentFiles::kMost, MAX_PATH));
}

void WriteRecentSessions(const RecentFiles& sessions)
{
    WriteTexts(kRecentSessionsSection, RecentFiles::kMost, sessions.Paths());
}

BookmarkStore ReadBookmarks()
{
    return BookmarkStore(ReadTexts(kBookmarksSection, BookmarkStore::kMostSessions, kBookmarkBytes));
}

void WriteBookmarks(const BookmarkStore& store)
{
    WriteTexts(kBookmarksSection, BookmarkStore::kMostSessions, store.Lines());
}

// In brackets, without which a profile loses blanks at both ends.
std::vector<std::string> ReadFindHistory()
{
    std::vector<std::string> texts;
    for (const std::string& value : ReadTexts(kFindSection, kMostFindTexts, kFindBytes))
        if (value.size() > 2 && value.front() == '[' && value.back() == ']')
            texts.push_back(value.substr(1, value.size() - 2));
    return texts;
}

void WriteFindHistory(const std::vector<std::string>& texts)
{
    std::vector<std::string> values;
    for (const std::string& text : texts)
        values.push_back("[" + text + "]");
    WriteTexts(kFindSection, kMostFindTexts, values);
}

} // namespace logdesk
