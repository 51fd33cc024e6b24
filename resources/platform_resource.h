// The numbers of QmPlatform.dll's resources.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC -1
#endif

#define IDD_FIND_BAR 9601
#define IDC_FIND_TEXT 9602
#define IDC_FIND_PREVIOUS 9603
#define IDC_FIND_STATUS 9604
