// The message viewer: what its commands do.
#include "afxdlgs.h"
#include "logreport/QmLogConfig.h"
#include "logreport/QmReportFieldChooser.h"
#include "logreport/ReportCtrlLogData.h"
#include "logreport/model/CopiedMessages.h"
#include "logreport/model/Export.h"
#include "qmcommon/QmClipboard.h"
#include "qmcommon/QmProgressDialog.h"
#include "zemacore/WideText.h"

namespace
{

constexpr std::uint32_t kMessagesAStep = 200;
constexpr std::size_t kMuch = 100 * 1024 * 1024; // bytes to copy
constexpr char kExportTitle[] = "Export file";
constexpr char kNothingSelected[] = "No message is selected.";

// The service keeps its view as long as this object lives.
class HeldView
{
public:
    HeldView(CReportCtrlLog& viewer, bool& isActing)
        : m_viewer(viewer), m_service(viewer.GetLogMsgService()), m_isActing(isActing)
    {
        m_isActing = true;
        m_service->HoldView(1);
    }
    ~HeldView()
    {
        m_isActing = false;
        if (IsThere())
            m_service->HoldView(0);
    }
    HeldView(const HeldView&) = delete;
    HeldView& operator=(const HeldView&) = delete;

    // The viewer may have lost it meanwhile, and then nobody knows whether it still lives.
    bool IsThere() const { return m_viewer.GetLogMsgService() == m_service; }

private:
    CReportCtrlLog& m_viewer;
    ILogMsgService* m_service;
    bool& m_isActing;
};

std::string PathOfFile(ILogMsgService& service, bool& readOnly)
{
    ZEMA::String path;
    bool followed = false;
    bool damaged = false;
    service.GetFileInfo(path, followed, damaged, readOnly);
    return path.c_str();
}

} // namespace

// ---- Menus and keys

void CReportCtrlLog::Scan(IQmCommand& collector)
{
    logreport::ScanView(*m_data, collector);
}

void CReportCtrlLog::ScanEdit(IQmCommand& collector)
{
    logreport::ScanViewEdit(*m_data, collector);
}

void CReportCtrlLog::ScanFile(IQmCommand& collector)
{
    logreport::ScanViewFile(*m_data, collector);
}

logreport::ViewCommandState CReportCtrlLog::Data::GetCommandState()
{
    logreport::ViewCommandState state;
    __int64 showsPreview = 0;
    control.GetProperty(RVP_SHOWPREVIEW, &showsPreview);
    state.isDirect = source.isDirect;
    state.hasService = source.service != nullptr;
    state.isServiceBusy = isActing || (source.service && source.service->IsBusy());
    state.follows = following.mode != 0;
    state.showsHeader = control.GetShowHeader() != 0;
    state.showsPreview = showsPreview != 0;
    state.hidesRow = control.GetHideRow() != 0;
    state.showsReport = control.GetShowReport() != 0;
    state.usesAllFields = usesAllFields;
    state.status = control.GetStatusText().c_str();
    return state;
}

void CReportCtrlLog::Data::Execute(logreport::ViewCommand command)
{
    using enum logreport::ViewCommand;
    const logreport::ViewCommandState state = GetCommandState();
    switch (command)
    {
    case Clear:
        control.OnClear();
        break;
    case PickColumns:
        control.PickColumns();
        break;
    case Info:
        break;
    case Configure:
        control.ConfigureView();
        break;
    case Copy:
        control.CopyMessages();
        break;
    case Export:
        control.ExportSelection();
        break;
    case Find:
        control.OpenFind();
        break;
    case Open:
        control.OpenLogFile();
        break;
    case Refresh:
        control.Refresh();
        break;
    case SelectAll:
        control.SelectAll();
        break;
    case Follow:
        control.SetFollow(!state.follows);
        break;
    case ShowHeader:
        control.SetShowHeader(!state.showsHeader);
        break;
    case ShowPreview:
        control.ModifyProperty(RVP_SHOWPREVIEW, !state.showsPreview);
        break;
    case ShowReport:
        control.SetShowReport(!state.showsReport);
        break;
    case UseVisible:
        control.SetUseAllFields(!usesAllFields);
    }
}

// ---- Keys and filters

void CReportCtrlLog::ConfigureView()
{
    CQmLogConfig(*this, this).DoModal();
    if (m_hWnd)
        RefreshHeader();
}

void CReportCtrlLog::EditFilter(ILogMsgDataKind field, const char* value)
{
    CQmLogDialogFilter dialog(field, value, this);
    if (dialog.DoModal() != IDOK || !m_hWnd || !m_data->source.service || m_data->source.service->IsBusy())
        return; // any of them may have gone meanwhile
    logreport::AddFilter(dialog.GetField(), dialog.GetValue(), *m_data->source.service);
    RefreshHeader();
}

void CReportCtrlLog::PickColumns()
{
    static CQmReportFieldChooser picker;
    picker.Open(*this);
}

void CReportCtrlLog::Refresh()
{
    FlushCacheMsgData();
    RefreshHeader();
    if (m_hWnd)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

// ---- Going through the selected messages

void CReportCtrlLog::SetUseAllFields(bool all)
{
    m_data->usesAllFields = all;
}

bool CReportCtrlLog::GetUseAllFields()
{
    return m_data->usesAllFields;
}

void CReportCtrlLog::SetGuardsFormulas(bool guards)
{
    m_data->guardsFormulas = guards;
}

bool CReportCtrlLog::GetGuardsFormulas()
{
    return m_data->guardsFormulas;
}

std::vector<std::int32_t> CReportCtrlLog::GetActionFields()
{
    std::vector<std::int32_t> columns;
    columns.reserve(kLogMsgKindCount);
    for (int column = 0; column < GetActiveSubItemCount(); ++column)
        columns.push_back(GetSubItemFromColumn(column));
    return logreport::ExportFields(GetHideRow() != 0, m_data->usesAllFields, columns);
}

// The ids of the selected messages. False if there are none, or none can be asked for.
bool CReportCtrlLog::GetSelectedIds(std::uint32_t& first, std::uint32_t& last)
{
    int firstRow = 0;
    int lastRow = -1;
    if (m_data->source.service && !m_data->isActing)
        GetSelectedRows(&firstRow, &lastRow);
    if (lastRow < firstRow)
        return false;
    first = m_data->range.IdOf(firstRow);
    last = first + static_cast<std::uint32_t>(lastRow - firstRow);
    return true;
}

void CReportCtrlLog::ExportSelection()
{
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    if (!GetSelectedIds(first, last))
    {
        MessageBox(kNothingSelected, kExportTitle, MB_OK | MB_ICONINFORMATION);
        return;
    }
    CFileDialog dialog(FALSE, "*.txt", nullptr, OFN_LONGNAMES | OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                       "Text files (*.txt)|*.txt;*.log|CSV files (*.csv)|*.csv|XML files (*.xml)|*.xml||",
                       this);
    dialog.m_ofn.lpstrTitle = kExportTitle;
    if (dialog.DoModal() == IDOK && m_hWnd)
        ExportTo(dialog.GetPathName());
}

bool CReportCtrlLog::ExportTo(const char* path)
{
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    if (!GetSelectedIds(first, last))
        return false;
    const HeldView held(*this, m_data->isActing);
    logreport::Export work(*m_data->source.service, path, GetActionFields(), first, last);
    work.SetGuardsFormulas(m_data->guardsFormulas);
    const auto step = [&] { return held.IsThere() && work.Step(kMessagesAStep); };
    if (work.Begin() && !QmRunSteps(*this, kExportTitle, step, [&work] { return work.Progress(); }))
        return false;
    if (!work.GetFailure().empty() && m_hWnd)
        MessageBox(work.GetFailure().c_str(), kExportTitle, MB_OK | MB_ICONERROR);
    else if (work.GetReplacedCount() > 0 && m_hWnd)
        MessageBox(
            (std::to_string(work.GetReplacedCount()) + " characters were replaced, which XML does not have.")
                .c_str(),
            kExportTitle, MB_OK | MB_ICONINFORMATION);
    return work.GetFailure().empty() && held.IsThere();
}

bool CReportCtrlLog::CopyMessages()
{
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    if (!GetSelectedIds(first, last))
        return false;
    const HeldView held(*this, m_data->isActing);
    logreport::CopiedMessages copied(*m_data->source.service, GetActionFields(), first, last);
    copied.SetGuardsFormulas(m_data->guardsFormulas);
    bool isWanted = true;
    bool isAsked = false;
    const auto step = [&] {
        if (!held.IsThere() || !copied.Step(kMessagesAStep))
            return false;
        if (copied.Text().size() > kMuch && !std::exchange(isAsked, true))
            isWanted = MessageBox("More than 100 MB are to be copied. Go on?", "Copy",
                                  MB_YESNO | MB_ICONQUESTION) == IDYES;
        return isWanted;
    };
    if (!QmRunSteps(*this, "Copy", step, [&copied] { return copied.Progress(); }) || !isWanted ||
        !held.IsThere())
        return false;
    const std::string& text = copied.Text();
    const std::string& table = copied.Table();
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    static const UINT csv = ::RegisterClipboardFormat("CSV");
    // The system makes plain text of the Unicode text for who asks for it.
    const QmClipboardItem items[] = {{CF_UNICODETEXT, wide.c_str(), (wide.size() + 1) * sizeof(wide[0])},
                                     {csv, table.c_str(), table.size() + 1}};
    return QmSetClipboard(GetSafeHwnd(), items, std::size(items));
}

// ---- Finding

void CReportCtrlLog::OpenFind(const char* text)
{
    const std::shared_ptr<logreport::MessageFinder> finder = m_data->finder;
    finder->Open(text);
}

void CReportCtrlLog::FindNext()
{
    const std::shared_ptr<logreport::MessageFinder> finder = m_data->finder;
    finder->Next(logreport::FindMessages::Direction::Down);
}

void CReportCtrlLog::FindPrevious()
{
    const std::shared_ptr<logreport::MessageFinder> finder = m_data->finder;
    finder->Next(logreport::FindMessages::Direction::Up);
}

bool CReportCtrlLog::IsFinding()
{
    return m_data->finder->IsJumping();
}

// ---- Opening a file

void CReportCtrlLog::OpenLogFile()
{
    ILogMsgService* const service = m_data->source.service;
    if (!service)
        return;
    bool isReadOnly = false;
    const std::string path = PathOfFile(*service, isReadOnly);
    CFileDialog dialog(TRUE, "*.zemalog", path.c_str(),
                       OFN_LONGNAMES | OFN_PATHMUSTEXIST | (isReadOnly ? OFN_READONLY : 0),
                       "ZEMA Log files (*.zemalog)|*.zemalog|All files (*.*)|*.*||", this);
    dialog.m_ofn.lpstrTitle = "Open ZEMA Log file";
    if (dialog.DoModal() == IDOK && m_data->source.service && !m_data->source.service->IsBusy())
        m_data->source.service->OpenFile(dialog.GetPathName(), dialog.GetReadOnlyPref());
}
