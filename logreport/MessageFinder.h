// The find of a message viewer.
#pragma once

#include "ReportCtrlLog.h"
#include "logreport/model/FindMessages.h"
#include "qmcommon/QmFindReplaceDialog.h"

namespace logreport
{

// Stands between a viewer, the window in which the user says what to find, and the search. It works in slices
// of the viewer's timer: after the next message that is wanted, and while the window is open also to count
// all. The service holds its view as long as a jump goes on; a view that becomes another one is searched
// again.
//
// The viewer tells what happens to it. It may go from any call to it: whoever calls this holds it.
class MessageFinder : public IQmFindOwner
{
public:
    static constexpr UINT_PTR kTimer = 9001; // of the viewer

    // `isActing` is set while another action of the viewer goes through the messages.
    MessageFinder(CReportCtrlLog& viewer, const bool& isActing)
        : m_viewer(&viewer), m_isActing(isActing), m_dialog(*this)
    {
    }
    virtual ~MessageFinder() = default;

    // Opens the window, with this text if there is one.
    void Open(const char* text);

    // Goes on with what was found last; asks for it first if there is none.
    void Next(FindMessages::Direction direction);

    bool IsJumping() const { return m_find.IsJumping() || m_find.HasHit(); }

    void OnTimer();

    // The ids are those of other messages now. The service is about to be another one. The viewer's window
    // goes.
    void OnViewChange() { m_find.Restart(); }
    void OnServiceChange();
    void OnDestroy();

    // The viewer ends.
    void Detach();

    // ---- What the window tells

    void OnFindChange(const QmFindSettings& settings) override;
    void OnFindNext(const QmFindSettings& settings) override;
    void OnFindClose() override;

private:
    ILogMsgService* ReadyService();
    std::vector<std::int32_t> Fields();
    std::optional<std::uint32_t> FocusedId();
    void TakeView();
    void Begin(FindMessages::Direction direction);
    void Work(ILogMsgService& service);
    void Arrive(const FindMessages::Hit& hit);
    void Hold(ILogMsgService* service);
    void Plan();
    void ShowState();

    CReportCtrlLog* m_viewer; // null after its end
    const bool& m_isActing;
    CQmFindReplaceDialog m_dialog;
    QmFindSettings m_settings;
    FindMessages m_find;
    FindWish m_jumpedWith;                   // what was last gone for
    ILogMsgService* m_held = nullptr;        // holds its view
    std::uint32_t m_wrappedId = kNoLogMsgId; // that the last jump came to by way of the other end
    FindMessages::Direction m_direction = FindMessages::Direction::Down;
};

} // namespace logreport
