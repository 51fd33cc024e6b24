#include "qmcommon/QmProgressDialog.h"

#include "platform_resource.h"
#include "qmcommon/OwnModule.h"

#include <chrono>
#include <commctrl.h>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kMoment{300}; // without a dialog
constexpr std::chrono::milliseconds kSlice{15};   // of work, between looks at what the windows want
constexpr UINT_PTR kTimer = 1;
constexpr int kSteps = 1000; // of the bar

// Works for a slice; answers true if there is more to do.
bool WorkOn(const std::function<bool()>& step)
{
    const Clock::time_point end = Clock::now() + kSlice;
    while (step())
        if (Clock::now() >= end)
            return true;
    return false;
}

// As many as need it, but for one that needs it again and again.
void PaintWindows()
{
    constexpr int kMost = 50;
    MSG message;
    for (int i = 0; i < kMost && ::PeekMessage(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE); ++i)
        ::DispatchMessage(&message);
}

class ProgressDialog : public CDialog
{
public:
    ProgressDialog(CWnd& owner, const char* title, const std::function<bool()>& step,
                   const std::function<double()>& progress)
        : m_title(title), m_step(step), m_progress(progress)
    {
        InitModalIndirect(QmFindDialog(PlatformModule(), IDD_PROGRESS), &owner);
    }

protected:
    BOOL OnInitDialog() override
    {
        SetWindowText(m_title);
        SendDlgItemMessage(IDC_PROGRESS_BAR, PBM_SETRANGE, 0, MAKELPARAM(0, kSteps));
        Show();
        SetTimer(kTimer, USER_TIMER_MINIMUM, nullptr);
        return CDialog::OnInitDialog();
    }
    void OnTimer(UINT_PTR)
    {
        if (!WorkOn(m_step))
        {
            KillTimer(kTimer);
            EndDialog(IDOK);
        }
        else
            Show();
    }
    DECLARE_MESSAGE_MAP()

private:
    void Show()
    {
        const double done = m_progress();
        SetDlgItemText(IDC_PROGRESS_TEXT, (std::to_string(static_cast<int>(done * 100)) + " %").c_str());
        SendDlgItemMessage(IDC_PROGRESS_BAR, PBM_SETPOS, static_cast<WPARAM>(done * kSteps));
    }

    const char* m_title;
    const std::function<bool()>& m_step;
    const std::function<double()>& m_progress;
};

BEGIN_MESSAGE_MAP(ProgressDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()

} // namespace

bool QmRunSteps(CWnd& owner, const char* title, const std::function<bool()>& step,
                const std::function<double()>& progress)
{
    {
        const CWaitCursor waiting;
        for (const Clock::time_point end = Clock::now() + kMoment; Clock::now() < end; PaintWindows())
            if (!WorkOn(step))
                return true;
    }
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_PROGRESS_CLASS};
    ::InitCommonControlsEx(&classes);
    return ProgressDialog(owner, title, step, progress).DoModal() == IDOK;
}
