// A push button with an icon beside its text.
#pragma once

#include "afxwin.h"

#include <memory>

// Made by Create, or of a push button of a dialog by SubclassWindow or DDX_Control. The window's text is the
// caption, with "&" before its access key. It is pressed, focused and made the default button like any other.
class QMPLATFORM_API CQmButtonXP : public CButton
{
public:
    CQmButtonXP();
    ~CQmButtonXP() override;

    // An icon by its name, as QmLoadIcon knows it, in the size of QmIconSize. Null for none.
    // False, and the button has no icon, if there is none of this name.
    bool SetImage(const char* name);

    // What is shown while the mouse rests on the button; null or empty for nothing. The button has a window.
    void SetTip(const char* tip);

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnDestroy();
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    bool LoadImage();
    void Draw(CDC& dc, CRect rect);
    void DrawContents(CDC& dc, CRect rect);

    struct Data;
    std::unique_ptr<Data> m_data;
};
