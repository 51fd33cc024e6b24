// The lines above the logs that tell what a user must know about the folder.
#pragma once

#include "afxwin.h"
#include "qmcommon/QmTip.h"

#include <string>
#include <vector>

namespace logdesk
{

// As high as its lines; without any it is hidden. A line that is too long for the window ends in "...", and
// the tip has all of it.
class NoticeBar : public CWnd
{
public:
    ~NoticeBar() override;

    BOOL Create(CWnd* parent, UINT id);

    // Tells whether the height has changed.
    bool SetLines(const std::vector<std::string>& lines);

    int GetHeight();

protected:
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    int GetLineHeight();

    std::vector<std::string> m_lines;
    std::string m_text; // all of them
    CQmTip m_tip;
};

} // namespace logdesk
