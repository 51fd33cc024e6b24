// The window in which a CSV file is edited.
#pragma once

#include "ReportWnd.h"
#include "TableFile.h"
#include "TableView.h"

#include <string>

class TableWnd : public ReportWnd
{
public:
    TableWnd() : ReportWnd(Use::Edit) {}

protected:
    void Load(const std::string& path) override;
    std::string Title() override;
    BOOL PreTranslateMessage(MSG* message) override;

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnClose();
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL system);
    afx_msg void OnSave();
    afx_msg void OnSaveAs();
    afx_msg void OnUndo();
    afx_msg void OnRedo();
    afx_msg void OnInsertRow();
    afx_msg void OnDeleteRows();
    afx_msg void OnBeginEdit(NMHDR* notification, LRESULT* result);
    afx_msg void OnCheckEdit(NMHDR* notification, LRESULT* result);
    afx_msg void OnEndEdit(NMHDR* notification, LRESULT* result);
    afx_msg LRESULT OnQueryEndSession(WPARAM, LPARAM);
    afx_msg LRESULT OnLookAtFile(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    // Each answers false if the user has to do something else first, or wants to.
    bool EndEdit();
    bool Save(TableFile file);
    bool MayLoseChanges();

    HWND EditLines(int item, int subitem, const std::string& text, const CRect& cell);
    bool TakeText(int item, int subitem, const std::string& text);
    int Ask(const std::string& question, UINT buttons);
    bool IsEditing() const;
    void ShowState(const std::string& news = {});

    TableFile m_file{""};
    TableView m_view{m_report, m_order};
    bool m_isAsking = false;
    std::string m_reason; // why a text was refused last
};
