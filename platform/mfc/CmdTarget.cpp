#include "afxwin.h"

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

static const AFX_MSGMAP_ENTRY* FindCommand(const AFX_MSGMAP& map, UINT message, WORD code, UINT id)
{
    for (const AFX_MSGMAP_ENTRY* entry = map.entries; entry->message != 0; ++entry)
        if (entry->message == message && entry->code == code && entry->firstId <= id && id <= entry->lastId)
            return entry;
    return map.baseMap ? FindCommand(*map.baseMap(), message, code, id) : nullptr;
}

BOOL CCmdTarget::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info)
{
    const UINT message = HIWORD(code) == 0 ? WM_COMMAND : HIWORD(code);
    const AFX_MSGMAP_ENTRY* const entry = FindCommand(*GetMessageMap(), message, LOWORD(code), id);
    if (!entry)
        return FALSE;
    if (info)
    {
        *info = {this, entry->handler};
        return TRUE;
    }
    return entry->handler(this, id, reinterpret_cast<LPARAM>(extra), nullptr);
}
