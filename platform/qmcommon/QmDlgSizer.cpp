#include "qmcommon/QmDlgSizer.h"

#include "qmcommon/DialogLayout.h"
#include "vkgrafic/Display.h"
#include "zemacore/AppDataManager.h"

#include <optional>
#include <vector>

namespace
{

constexpr int kNoPlace = INT_MIN;

SIZE SizeOf(const RECT& rect)
{
    return {rect.right - rect.left, rect.bottom - rect.top};
}

IProfileStore* Profile(const char* name)
{
    IAppDataManager* const manager = name ? AppDataManager::LoadAppDataManager() : nullptr;
    return manager ? manager->GetProfileStore() : nullptr;
}

// What the screen nearest to a place has free for windows.
RECT FreeAreaOf(const RECT& place)
{
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    ::GetMonitorInfo(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

// Without a remembered place there is none.
std::optional<RECT> ReadPlace(IProfileStore& profile, const char* name, int dpi)
{
    const int left = profile.GetInteger(name, "Left", kNoPlace);
    const int top = profile.GetInteger(name, "Top", kNoPlace);
    const int width = ::MulDiv(profile.GetInteger(name, "Width", 0), dpi, 96);
    const int height = ::MulDiv(profile.GetInteger(name, "Height", 0), dpi, 96);
    constexpr int kMost = 32767; // what windows can place
    for (const int number : {left, top, width, height})
        if (number < -kMost || number > kMost)
            return std::nullopt;
    return RECT{left, top, left + width, top + height};
}

} // namespace

struct CQmDlgSizer::Data
{
    struct Control
    {
        qmcommon::SizerRule rule;
        RECT first; // its place before the dialog was resized
    };

    const char* name;
    int columns;
    std::vector<Control> controls;
    SIZE client = {}; // at first, and of the window with its frame
    SIZE least = {};
    RECT normal = {}; // where the window is, or was before it filled the screen
};

CQmDlgSizer::CQmDlgSizer(const char* name, int columns) : m_data(std::make_unique<Data>())
{
    m_data->name = name;
    m_data->columns = columns;
}

CQmDlgSizer::~CQmDlgSizer()
{
    Detach();
}

void CQmDlgSizer::Add(int id, int column, unsigned moves, int span)
{
    m_data->controls.push_back({{id, column, span, moves}, {}});
}

bool CQmDlgSizer::Start(HWND dialog)
{
    for (Data::Control& control : m_data->controls)
    {
        ::GetWindowRect(::GetDlgItem(dialog, control.rule.id), &control.first);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&control.first), 2);
    }
    RECT client = {};
    ::GetClientRect(dialog, &client);
    ::GetWindowRect(dialog, &m_data->normal);
    m_data->client = SizeOf(client);
    m_data->least = SizeOf(m_data->normal);
    if (!Attach(dialog))
        return false;
    GoToSavedPlace();
    return true;
}

BOOL CQmDlgSizer::OnHookMessage(UINT message, WPARAM, LPARAM lParam, LRESULT*)
{
    const HWND dialog = GetHookedWindow();
    if (message == WM_GETMINMAXINFO)
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {m_data->least.cx, m_data->least.cy};
    if (message == WM_SIZE)
        LayOut();
    if ((message == WM_SIZE || message == WM_MOVE) && !::IsZoomed(dialog) && !::IsIconic(dialog))
        ::GetWindowRect(dialog, &m_data->normal);
    if (message == WM_DESTROY)
        SavePlace();
    return message == WM_GETMINMAXINFO;
}

void CQmDlgSizer::LayOut()
{
    const HWND dialog = GetHookedWindow();
    RECT client = {};
    ::GetClientRect(dialog, &client);
    const int gainX = client.right - m_data->client.cx;
    const int gainY = client.bottom - m_data->client.cy;
    for (const Data::Control& control : m_data->controls)
    {
        const RECT place = qmcommon::PlaceOf(control.rule, control.first, m_data->columns, gainX, gainY);
        const SIZE size = SizeOf(place);
        ::SetWindowPos(::GetDlgItem(dialog, control.rule.id), nullptr, place.left, place.top, size.cx,
                       size.cy, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
}

void CQmDlgSizer::GoToSavedPlace()
{
    const HWND dialog = GetHookedWindow();
    IProfileStore* const profile = Profile(m_data->name);
    const std::optional<RECT> saved =
        profile ? ReadPlace(*profile, m_data->name, VkGrafic::GetResolution(dialog)) : std::nullopt;
    if (!saved)
        return;
    const RECT place = qmcommon::BringWithin(*saved, m_data->least, FreeAreaOf(*saved));
    const SIZE size = SizeOf(place);
    ::SetWindowPos(dialog, nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void CQmDlgSizer::SavePlace() const
{
    IProfileStore* const profile = Profile(m_data->name);
    if (!profile)
        return;
    const int dpi = VkGrafic::GetResolution(GetHookedWindow());
    const SIZE size = SizeOf(m_data->normal);
    profile->SetInteger(m_data->name, "Left", m_data->normal.left);
    profile->SetInteger(m_data->name, "Top", m_data->normal.top);
    profile->SetInteger(m_data->name, "Width", ::MulDiv(size.cx, 96, dpi));
    profile->SetInteger(m_data->name, "Height", ::MulDiv(size.cy, 96, dpi));
}
