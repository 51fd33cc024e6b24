// Asks where to go in the logs.
#pragma once

#include "afxwin.h"

#include <functional>
#include <string>

namespace logdesk
{

// Stays open while it cannot go to what is typed, and says why.
class GoToDialog : public CDialog
{
public:
    // Goes there; answers why it cannot, and nothing if it did.
    using Go = std::function<std::string(const std::string& text)>;

    // `text` is offered at first, and afterwards what was gone to.
    GoToDialog(CWnd* parent, std::string& text, Go go);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    std::string& m_text;
    Go m_go;
};

} // namespace logdesk
