// Lets a dialog be resized, and remembers its place.
#pragma once

#include "qmcommon/QmHookWnd.h"
#include "qmcommon/QmSizerFlags.h"

#include <memory>

// A member of a dialog whose template has WS_THICKFRAME. The size in the template is the least one. What the
// dialog gains in width is shared evenly by columns; a control goes along with its column, and is wider or
// higher as its flags say. Controls are known by their ids: one that is made again takes the former one's
// place.
//
// Place and size of the dialog are kept in the profile, in the section of the layout's name as "Left", "Top",
// "Width" and "Height"; sizes are those at 96 dots per inch. It is brought within the screen that it was on.
class QMPLATFORM_API CQmDlgSizer : public CQmHookWnd
{
public:
    // `name` outlives the sizer; null to remember nothing. At least one column.
    explicit CQmDlgSizer(const char* name, int columns = 1);
    ~CQmDlgSizer() override;

    // In which columns a control lies, counted from 0, and how it follows (kSizer flags). Before Start.
    void Add(int id, int column, unsigned moves, int span = 1);

    // In OnInitDialog, when all controls are at their first places: goes to the remembered place and lets the
    // dialog be resized from now on. False if there is no such window.
    bool Start(HWND dialog);

protected:
    BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void LayOut();
    void GoToSavedPlace();
    void SavePlace() const;

    struct Data;
    std::unique_ptr<Data> m_data;
};
