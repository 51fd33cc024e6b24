// What a message viewer holds.
#pragma once

#include "ReportCtrlLog.h"
#include "ReportHeaderCtrl.h"
#include "logreport/LevelImages.h"
#include "logreport/MessageFinder.h"
#include "logreport/model/MsgCache.h"
#include "logreport/model/MsgRange.h"
#include "logreport/model/PreviewSizes.h"
#include "logreport/model/ViewCommands.h"
#include "qmcommon/QmMenuDrawer.h"
#include "vkgrafic/GraphicText.h"

#include <optional>

namespace logreport
{

// A preview was measured that is wider than all before. Posted to the control: it is measured in the midst of
// a paint, when nothing may scroll.
constexpr UINT kPreviewWidened = WM_USER + 100;

// Where messages come from. The list may be dropped while it is being asked: whoever asks holds it.
struct MsgSource
{
    ILogMsgService* service = nullptr;
    std::shared_ptr<ILogMsgList> list;
    bool isDirect = false;
    bool isBusy = false;       // no lookups: the list is changing
    bool isMakingList = false; // the service is, and may call back

    MsgOrigin Origin() const { return {service, list.get(), isDirect, isBusy}; }
};

// Whether the last row is scrolled into view when messages arrive.
struct Following
{
    int mode = 1;
    bool pauses = false;
    bool isPaused = false;
};

// The bodies below the lines, or in place of them.
struct Previews
{
    int lines = 0;                 // at most; 0 for all
    int widest = 0;                // of those that were measured
    std::string tip;               // the body that a tip shows
    bool isWideningPosted = false; // the control is about to be told of it
    PreviewSizes sizes;
    CFont font;
    std::optional<GraphicFont> fontHas; // which characters; made when a text is not ASCII
};

} // namespace logreport

struct CReportCtrlLog::Data final : logreport::ViewCommandOwner
{
    explicit Data(CReportCtrlLog& owner) : control(owner) {}

    CReportCtrlLog& control;
    logreport::MsgSource source;
    logreport::MsgRange range;
    logreport::Following following;
    logreport::Previews previews;
    ILogViewer* attached = nullptr;
    LRESULT columnClick = 0; // the parent's answer to the last one

    bool usesAllFields = false;
    bool guardsFormulas = false;
    bool savesState = true;
    bool isActing = false; // an export or a copy is going on
    std::shared_ptr<logreport::MessageFinder> finder =
        std::make_shared<logreport::MessageFinder>(control, isActing);

    logreport::LevelImages images;
    CQmMenuDrawer menuDrawer;

    // ---- What commands call

    logreport::ViewCommandState GetCommandState() override;
    void Execute(logreport::ViewCommand command) override;
};
