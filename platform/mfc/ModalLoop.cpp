#include "mfc/MessageLoop.h"

#include <utility>

int CWnd::RunModalLoop()
{
    m_modalResult = -1;
    m_modalRunning = true;
    while (m_modalRunning && m_hWnd)
    {
        MSG message;
        if (!PumpMessage(message))
        {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // the outer loop ends as well
            m_modalRunning = false;
        }
    }
    return std::exchange(m_modalResult, -1);
}

void CWnd::EndModalLoop(int result)
{
    m_modalResult = result;
    m_modalRunning = false;
    PostMessage(WM_NULL); // wakes the loop
}
