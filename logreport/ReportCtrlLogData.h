// What a message viewer holds.
#pragma once

#include "ReportCtrlLog.h"
#include "ReportHeaderCtrl.h"
#include "logreport/LevelImages.h"
#include "logreport/model/MsgCache.h"
#include "logreport/model/MsgRange.h"
#include "logreport/model/PreviewSizes.h"
#include "logreport/model/ViewCommands.h"
#include "qmcommon/QmMenuDrawer.h"

namespace logreport
{

// A preview was measured that is wider than all before. Posted to the control: it is measured in the midst of
// a paint, when nothing may scroll.
constexpr UINT kPreviewWidened = WM_USER + 100;

} // namespace logreport

struct CReportCtrlLog::Data : logreport::ViewCommandOwner
{
    explicit Data(CReportCtrlLog& owner) : control(owner) {}

    CReportCtrlLog& control;

    // Where messages come from. The list may be dropped while it is being asked: whoever asks holds it.
    ILogMsgService* service = nullptr;
    std::shared_ptr<ILogMsgList> list;
    bool isDirect = false;
    bool isBusy = false;       // no lookups: the list is changing
    bool isMakingList = false; // the service is, and may call back
    ILogViewer* attached = nullptr;

    logreport::MsgRange range;
    int follow = 1;
    bool followPauses = false;
    bool isFollowPaused = false;
    LRESULT columnClick = 0; // the parent's answer to the last one

    int previewLines = 0;
    int widestPreview = 0;         // of those that were measured
    bool isWideningPosted = false; // the control is about to be told of it
    logreport::PreviewSizes previewSizes;
    CFont previewFont;
    CBrush previewBrush{RGB(240, 240, 240)};

    bool usesAllFields = false;
    bool savesState = true;
    bool isActing = false; // an export or a copy is going on

    logreport::LevelImages images;
    CQmMenuDrawer menuDrawer;

    logreport::MsgOrigin Origin() const { return {service, list.get(), isDirect, isBusy}; }

    // ---- What commands call

    logreport::ViewCommandState GetCommandState() override;
    void Execute(logreport::ViewCommand command) override;
};
