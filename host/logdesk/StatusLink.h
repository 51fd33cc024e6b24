// A text in the status bar that leads somewhere.
#pragma once

#include "afxwin.h"
#include "qmcommon/QmTip.h"

#include <functional>
#include <string>

namespace logdesk
{

// A click goes there. Its place is its parent's business.
class StatusLink : public CWnd
{
public:
    explicit StatusLink(std::function<void()> clicked) : m_clicked(std::move(clicked)) {}
    ~StatusLink() override;

    BOOL Create(CWnd* parent, UINT id, const char* tip);

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    std::function<void()> m_clicked;
    CQmTip m_tip;
};

} // namespace logdesk
