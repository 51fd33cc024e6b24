// Objects that take commands, and the tables that say which member function deals with what.
#pragma once

#include "afx.h"

class CCmdTarget;
struct AFX_MSGMAP_ENTRY;

// Unpacks what arrived, calls the handler and stores its answer; FALSE when the handler leaves the rest to
// the default. A command comes with its id and `extra` as the parameters, a window message with its own.
using AFX_PMSG = BOOL (*)(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result);

// One line of a message map.
struct AFX_MSGMAP_ENTRY
{
    UINT message; // 0 ends the map
    UINT code;    // of a notification; 0 for a command
    UINT firstId; // the ids of commands and notifications
    UINT lastId;  //
    AFX_PMSG handler;
    const UINT* registered; // the message's number, when it is known only at run time
};

// A class's map. The base class's is asked for by a call, because it may lie in another module.
struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*baseMap)(); // null at the root
    const AFX_MSGMAP_ENTRY* entries;
};

// Who would deal with a command.
struct AFX_CMDHANDLERINFO
{
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

// What a WM_NOTIFY command carries as `extra`.
struct AFX_NOTIFY
{
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

constexpr int CN_COMMAND = 0; // the code of menu and shortcut commands

#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP* GetThisMessageMap();                                                            \
    const AFX_MSGMAP* GetMessageMap() const override;

// An object with a message map.
class QMPLATFORM_API CCmdTarget : public CObject
{
public:
    // Looks the command up in the message map and calls its handler. `code` is CN_COMMAND, a control's
    // notification code, or for a WM_NOTIFY MAKELONG(code, WM_NOTIFY) with an AFX_NOTIFY as `extra`. With
    // `info` the handler is only looked up. FALSE when there is none.
    virtual BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info);

protected:
    CCmdTarget() = default;

    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};
