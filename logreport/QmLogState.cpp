#include "QmLogState.h"

#include "ReportCtrlLog.h"
#include "afx.h"
#include "logreport/model/ViewState.h"

struct CQmLogState::Data
{
    explicit Data(CReportCtrlLog* owner) : viewer(owner) {}

    CReportCtrlLog* viewer;
    logreport::ViewState values;
    COLORREF textColor = ::GetSysColor(COLOR_WINDOWTEXT);

    CQmLogStateColumn& ColumnAt(std::int32_t position)
    {
        if (position < 0 || static_cast<std::size_t>(position) >= values.columns.size())
            AfxThrowInvalidArgException();
        return values.columns[static_cast<std::size_t>(position)];
    }
};

CQmLogState::CQmLogState(CReportCtrlLog* viewer) : m_data(std::make_unique<Data>(viewer)) {}

CQmLogState::~CQmLogState() = default;

bool CQmLogState::ReadFromProcess()
{
    m_data->viewer->WriteState(this);
    return true;
}

bool CQmLogState::WriteToProcess()
{
    m_data->viewer->ReadState(this);
    return true;
}

bool CQmLogState::ReadFromProfile()
{
    logreport::ReadFromProfile(m_data->values);
    return true;
}

bool CQmLogState::WriteToProfile()
{
    logreport::WriteToProfile(m_data->values);
    return true;
}

std::int32_t CQmLogState::GetColumnCount() const
{
    return static_cast<std::int32_t>(m_data->values.columns.size());
}

const CQmLogStateColumn& CQmLogState::GetColumn(std::int32_t position) const
{
    return m_data->ColumnAt(position);
}

void CQmLogState::SetColumn(std::int32_t position, const CQmLogStateColumn& column)
{
    m_data->ColumnAt(position) = column;
}

void CQmLogState::AddColumn(const CQmLogStateColumn& column)
{
    m_data->values.columns.push_back(column);
}

void CQmLogState::RemoveAllColumns()
{
    m_data->values.columns.clear();
}

std::int32_t CQmLogState::GetFollow() const
{
    return m_data->values.follow;
}

void CQmLogState::SetFollow(std::int32_t follow)
{
    m_data->values.follow = follow;
}

std::int32_t CQmLogState::GetHeader() const
{
    return m_data->values.header;
}

void CQmLogState::SetHeader(std::int32_t header)
{
    m_data->values.header = header;
}

std::int32_t CQmLogState::GetReport() const
{
    return m_data->values.report;
}

void CQmLogState::SetReport(std::int32_t report)
{
    m_data->values.report = report;
}

COLORREF CQmLogState::GetTextColor() const
{
    return m_data->textColor;
}

void CQmLogState::SetTextColor(COLORREF color)
{
    m_data->textColor = color;
}

COLORREF CQmLogState::GetWarningColor() const
{
    return m_data->values.warning;
}

void CQmLogState::SetWarningColor(COLORREF color)
{
    m_data->values.warning = color;
}

COLORREF CQmLogState::GetErrorColor() const
{
    return m_data->values.error;
}

void CQmLogState::SetErrorColor(COLORREF color)
{
    m_data->values.error = color;
}
