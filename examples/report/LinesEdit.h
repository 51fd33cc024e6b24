// An editor of our own for cells with several lines, which the control's line cannot show.
#pragma once

#include <afxwin.h>

#include <functional>
#include <string>
#include <utility>

// Return, Tab and the loss of the focus accept, Ctrl+Return begins a new line, and Esc cancels. Made with
// new: the object goes with its window, which the owner closes when it is told of the end.
class LinesEdit : public CEdit
{
public:
    // `end` is told whether the text is accepted, and which it is: in UTF-8, with line ends as the first one
    // of the old text. It answers false to refuse the text, which then stays in the editor.
    using End = std::function<bool(bool isAccepted, const std::string& text)>;
    LinesEdit(const std::string& text, End end) : m_text(text), m_end(std::move(end)) {}

    // A child of the control, at the rectangle of the cell, and as high as it needs. Returns false, and the
    // object is gone, if the window cannot be made.
    bool Create(CWnd& control, const CRect& cell);

protected:
    BOOL PreTranslateMessage(MSG* message) override;
    void PostNcDestroy() override { delete this; }
    afx_msg void OnKillFocus(CWnd* focused);
    DECLARE_MESSAGE_MAP()

private:
    void Finish(bool isAccepted);

    std::string m_text;
    End m_end;
};
