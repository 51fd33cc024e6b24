// The bar between the log text and the messages.
#pragma once

#include "afxwin.h"

#include <functional>

namespace logdesk
{

// Dragged by the mouse; it does not move itself.
class SplitterBar : public CWnd
{
public:
    // `move` is told where the bar's top is to go, in client pixels of the parent; kMiddle after a double
    // click.
    using Move = std::function<void(int top)>;
    static constexpr int kMiddle = -0x10000;

    explicit SplitterBar(Move move) : m_move(std::move(move)) {}
    ~SplitterBar() override;

    BOOL Create(CWnd* parent, UINT id);

protected:
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    Move m_move;
    int m_grip = 0; // where within the bar it was taken
};

} // namespace logdesk
