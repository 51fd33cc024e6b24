// The numbers of LogDesk's resources.
#pragma once

#define IDI_LOGDESK 1
#define IDD_ABOUT 100
#define IDC_STATIC (-1)
