// The window in which a user says what to find.
#pragma once

#include "afxwin.h"
#include "qmcommon/QmHookWnd.h"

#include <string>
#include <vector>

// What the user has entered. Texts are UTF-8.
struct QmFindSettings
{
    std::string text;
    int place = 0; // where to look: a position in the owner's list
    bool isUp = false;
    bool matchesCase = false;
    bool isWholeWord = false;
    bool isExpression = false;
};

// Who finds. It may destroy the dialog's window from these, but not the dialog.
class IQmFindOwner
{
public:
    // The user has changed what is to be found.
    virtual void OnFindChange(const QmFindSettings& settings) = 0;

    // The next one, up or down as the settings say.
    virtual void OnFindNext(const QmFindSettings& settings) = 0;

    // The user has closed the window. The control gets the focus next.
    virtual void OnFindClose() = 0;

protected:
    ~IQmFindOwner() = default;
};

// "Find", a window beside the others. Enter finds the next one, F3 the next one down, Shift+F3 the next one
// up, Esc closes. The texts that were found last in the process, ten of them, are in the list of its text.
//
// The window ends with the control that it is for, at the latest. The owner is not owned and outlives the
// dialog.
class QMPLATFORM_API CQmFindReplaceDialog : public CDialog
{
public:
    explicit CQmFindReplaceDialog(IQmFindOwner& owner);
    ~CQmFindReplaceDialog() override;

    // Opens the window over the control, with the places where to look and what is to be found. A window that
    // is open already comes to the front as it is. Either way the text is selected. False if that is not
    // possible.
    bool Open(CWnd& control, const std::vector<std::string>& places, const QmFindSettings& settings);

    // What the user sees of the search, and whether there can be one: else the button is disabled.
    void SetState(const std::string& state, bool canFind);

    // Moves the window away from a rectangle of the screen.
    void Uncover(const RECT& rect);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    void FillTexts();
    std::string TextOf(int entry);
    void Enter(const QmFindSettings& settings);
    QmFindSettings Entered(int textEntry = -1);
    void Changed(int textEntry = -1);
    void Find(const QmFindSettings& settings);
    void EnableFind();
    void TakeFocus();

    IQmFindOwner& m_owner;
    CQmEndHook m_hook;
    std::vector<std::string> m_places;
    QmFindSettings m_entered;
    std::string m_state;
    bool m_canFind = true;
    bool m_isFilling = false;
};
