// The numbers of LogDesk's resources.
#pragma once

#define IDI_LOGDESK 1
#define IDD_ABOUT 100
#define IDD_GO_TO 101
#define IDD_BOOKMARKS 102
#define IDC_GO_TO_TEXT 1001
#define IDC_GO_TO_ERROR 1002
#define IDC_BOOKMARKS 1003
#define IDC_BOOKMARK_REMOVE 1004
#define IDC_BOOKMARK_REMOVE_ALL 1005
#define IDC_STATIC (-1)
