#include "logreport/ProgressDialog.h"

#include "logreport/OwnDialog.h"
#include "resources/qmlog_resource.h"

#include <commctrl.h>

namespace logreport
{

namespace
{

constexpr ULONGLONG kMoment = 300; // milliseconds without a dialog, which then gets
constexpr ULONGLONG kSlice = 30;   // of work for each tick of its timer
constexpr UINT_PTR kTimer = 1;
constexpr int kSteps = 1000; // of the bar

// Works for so many milliseconds; answers true if there is more to do.
bool Work(const std::function<bool()>& step, ULONGLONG milliseconds)
{
    const ULONGLONG begin = ::GetTickCount64();
    while (step())
        if (::GetTickCount64() - begin >= milliseconds)
            return true;
    return false;
}

class ProgressDialog : public CDialog
{
public:
    ProgressDialog(CWnd& owner, const char* title, const std::function<bool()>& step,
                   const std::function<double()>& progress)
        : m_title(title), m_step(step), m_progress(progress)
    {
        InitModalIndirect(FindOwnDialog(IDD_LOG_PROGRESS), &owner);
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
        if (!Work(m_step, kSlice))
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

bool RunSteps(CWnd& owner, const char* title, const std::function<bool()>& step,
              const std::function<double()>& progress)
{
    {
        const CWaitCursor waiting;
        if (!Work(step, kMoment))
            return true;
    }
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_PROGRESS_CLASS};
    ::InitCommonControlsEx(&classes);
    return ProgressDialog(owner, title, step, progress).DoModal() == IDOK;
}

} // namespace logreport
