#include "logreport/QmLogConfig.h"

#include "ReportCtrlLog.h"
#include "logreport/OwnDialog.h"
#include "resources/qmlog_resource.h"

namespace
{

constexpr UINT kSorts[] = {IDC_SORT1, IDC_SORT2, IDC_SORT3};
constexpr UINT kDirections[] = {IDC_SORT1_ASCENDING, IDC_SORT2_ASCENDING, IDC_SORT3_ASCENDING};
struct FilterRow
{
    UINT field, operation, value, matchCase;
};
constexpr FilterRow kFilters[] = {
    {IDC_FILTER1_FIELD, IDC_FILTER1_OPERATOR, IDC_FILTER1_VALUE, IDC_FILTER1_CASE},
    {IDC_FILTER2_FIELD, IDC_FILTER2_OPERATOR, IDC_FILTER2_VALUE, IDC_FILTER2_CASE},
    {IDC_FILTER3_FIELD, IDC_FILTER3_OPERATOR, IDC_FILTER3_VALUE, IDC_FILTER3_CASE}};

constexpr char kHelp[] =
    "Messages are sorted by the first field; those that are equal in it by the second, and then by the "
    "third. "
    "Without a field they stay in the order in which they arrived.\n\n"
    "A filter leaves in the messages whose field contains the value, does not contain it, or is not empty. "
    "A message has to pass all three.\n\n"
    "Without \"Show Duplicate\" a message is left out that says the same as the one shown before it.";

void AddText(CWnd& dialog, UINT combo, const char* text)
{
    dialog.SendDlgItemMessage(static_cast<int>(combo), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

void AddFields(CWnd& dialog, UINT combo)
{
    for (std::int32_t kind = kLogMsgNone; kind < kLogMsgKindCount; ++kind)
        AddText(dialog, combo, LogMsgDataKindText(kind));
}

void ExchangeCombo(CDataExchange* exchange, UINT id, std::string& text)
{
    CString value(text.c_str());
    DDX_CBString(exchange, static_cast<int>(id), value);
    text = value;
}

// A text of any language, as far as the system's code page has it.
void ExchangeEdit(CDataExchange* exchange, UINT id, std::string& text)
{
    CString value(text.c_str());
    DDX_Text(exchange, static_cast<int>(id), value);
    text = value;
}

void ExchangeCheck(CDataExchange* exchange, UINT id, bool& checked)
{
    int value = checked;
    DDX_Check(exchange, static_cast<int>(id), value);
    checked = value != 0;
}

} // namespace

// ---- Log Configuration

BEGIN_MESSAGE_MAP(CQmLogConfig, CDialog)
    ON_COMMAND(IDHELP, &CQmLogConfig::OnHelp)
END_MESSAGE_MAP()

CQmLogConfig::CQmLogConfig(CReportCtrlLog& viewer, CWnd* parent) : m_viewer(viewer)
{
    InitModalIndirect(logreport::FindOwnDialog(IDD_LOG_CONFIG), parent);
}

BOOL CQmLogConfig::OnInitDialog()
{
    for (const UINT id : kSorts)
        AddFields(*this, id);
    for (const FilterRow& row : kFilters)
    {
        AddFields(*this, row.field);
        for (std::int32_t operation = kLogMsgContain; operation <= kLogMsgNotEmpty; ++operation)
            AddText(*this, row.operation, logreport::OperatorText(operation));
    }
    m_config = logreport::ReadLogConfig(m_viewer.GetLogMsgService());
    return CDialog::OnInitDialog();
}

void CQmLogConfig::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    for (std::size_t i = 0; i < m_config.sorts.size(); ++i)
    {
        ExchangeCombo(exchange, kSorts[i], m_config.sorts[i].field);
        DDX_Radio(exchange, static_cast<int>(kDirections[i]), m_config.sorts[i].direction);
        logreport::LogConfig::Filter& filter = m_config.filters[i];
        ExchangeCombo(exchange, kFilters[i].field, filter.field);
        ExchangeCombo(exchange, kFilters[i].operation, filter.operation);
        ExchangeEdit(exchange, kFilters[i].value, filter.value);
        ExchangeCheck(exchange, kFilters[i].matchCase, filter.matchCase);
    }
    ExchangeCheck(exchange, IDC_SHOW_DUPLICATE, m_config.showDuplicate);
}

void CQmLogConfig::OnOK()
{
    if (!UpdateData(TRUE))
        return;
    ILogMsgService* const service = m_viewer.GetLogMsgService();
    if (service && service->IsBusy())
    {
        MessageBox("The messages are just being put in order. Please try again in a moment.",
                   "Log Configuration", MB_OK | MB_ICONINFORMATION);
        return;
    }
    logreport::WriteLogConfig(m_config, service);
    EndDialog(IDOK);
}

void CQmLogConfig::OnHelp()
{
    MessageBox(kHelp, "Log Configuration", MB_OK | MB_ICONINFORMATION);
}

// ---- Edit Filter

CQmLogDialogFilter::CQmLogDialogFilter(ILogMsgDataKind field, const std::string& value, CWnd* parent)
    : m_field(field), m_value(value)
{
    InitModalIndirect(logreport::FindOwnDialog(IDD_LOG_FILTER), parent);
}

BOOL CQmLogDialogFilter::OnInitDialog()
{
    AddFields(*this, IDC_ONE_FIELD);
    AddText(*this, IDC_ONE_OPERATOR, "contain"); // the only one here, and deliberately not "Contain"
    SendDlgItemMessage(IDC_ONE_OPERATOR, CB_SETCURSEL, 0, 0);
    CDialog::OnInitDialog();
    GetDlgItem(IDC_ONE_VALUE)->SetFocus();
    return FALSE;
}

void CQmLogDialogFilter::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    std::string field = LogMsgDataKindText(m_field);
    ExchangeCombo(exchange, IDC_ONE_FIELD, field);
    m_field = logreport::FieldOf(field);
    ExchangeEdit(exchange, IDC_ONE_VALUE, m_value);
}
