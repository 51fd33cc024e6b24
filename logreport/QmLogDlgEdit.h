// The dialog that shows one message in full.
#pragma once

#include "afxwin.h"
#include "logreport/LevelImages.h"
#include "logreport/model/OpenedMessage.h"
#include "qmcommon/QmButtonXP.h"
#include "qmcommon/QmDlgSizer.h"

#include <functional>

namespace logreport
{

// Answers the service as it is now; null if there is none.
using ServiceGetter = std::function<ILogMsgService*()>;

// The service of a viewer as long as the viewer has its window.
template <typename Viewer> ServiceGetter ServiceOf(Viewer& viewer)
{
    return [window = viewer.m_hWnd]() -> ILogMsgService* {
        auto* const present = dynamic_cast<Viewer*>(CWnd::FromHandlePermanent(window));
        return present ? present->GetLogMsgService() : nullptr;
    };
}

} // namespace logreport

// "Log Message". It follows its message when the view changes, and says so when the message has gone; what it
// shows stays. "Previous" and "Next", Alt with the arrow keys, and the page keys step through the view; a
// body that is longer than its field has the page keys for itself while it has the focus. Ctrl+A selects all,
// Ctrl+C copies the whole body if nothing is selected.
class CQmLogDlgEdit : public CDialog
{
public:
    // `owner` is the window over which the dialog opens.
    CQmLogDlgEdit(logreport::ServiceGetter service, CWnd* owner, std::uint32_t id);
    ~CQmLogDlgEdit() override;

protected:
    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;
    void DoDataExchange(CDataExchange* exchange) override;
    afx_msg void OnTimer(UINT_PTR id);
    void OnPrevious();
    void OnNext();
    void OnWrap();
    DECLARE_MESSAGE_MAP()

private:
    using Direction = logreport::OpenedMessage::Direction;
    enum class Place
    {
        Top,
        Kept
    };

    void AddToSizer();
    void MakeFieldsWide();
    HWND MakeFieldAgain(int id, DWORD styles);
    void MakeBodyFont();
    void ShowMessage(Place place);
    void ShowIcon();
    void ShowSteps();
    void SetBody(Place place);
    void WrapBody(bool wrap);
    bool BodyScrolls() const;
    void Step(Direction direction);
    bool OnStepKey(const MSG& message);
    bool OnTextKey(const MSG& message);

    logreport::ServiceGetter m_service;
    logreport::OpenedMessage m_message;
    std::uint32_t m_firstId;
    logreport::LevelImages m_images;
    HICON m_icon = nullptr;
    CFont m_bodyFont;
    CQmDlgSizer m_sizer;
    CQmButtonXP m_previous;
    CQmButtonXP m_next;
};
