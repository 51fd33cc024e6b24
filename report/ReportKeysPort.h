// The control as the rules of the keys see it that an owner switches on.
#pragma once

#include "report/ReportCtrlData.h"

class CReportCtrl::Data::KeysPort : public report::ExtraKeysTarget
{
public:
    explicit KeysPort(Data& data) : m_data(data) {}

    int RowCount() override { return m_data.rows.Count(); }
    bool BeginsWith(int row, const ZEMA::WideString& typed) override;
    report::TreeRow TreeRowAt(int row) override;
    void SelectAll() override;
    void Copy() override;
    int MarkedColumn() override;
    void MarkColumn(int column) override;
    int WidthOf(int column) override;
    void SetWidth(int column, int width) override;
    void FitColumn(int column) override;
    void MoveColumn(int from, int to) override;
    void ClickColumn(int column) override;

private:
    int TypingSubItem();

    Data& m_data;
    ZEMA::WideString m_text;
};
