// The numbers of QmPlatform.dll's resources.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define IDD_FIND_BAR 9601
#define IDC_FIND_TEXT 9602
#define IDC_FIND_PREVIOUS 9603
#define IDC_FIND_STATUS 9604

#define IDD_FIND 9610
#define IDC_FIND_WHAT 9611
#define IDC_FIND_IN 9612
#define IDC_FIND_CASE 9613
#define IDC_FIND_WORD 9614
#define IDC_FIND_EXPRESSION 9615
#define IDC_FIND_UP 9616
#define IDC_FIND_DOWN 9617
#define IDC_FIND_STATE 9618

#define IDD_PROGRESS 9620
#define IDC_PROGRESS_TEXT 9621
#define IDC_PROGRESS_BAR 9622
