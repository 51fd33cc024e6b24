// The numbers of QmLog.dll's resources.
#pragma once

// Five square images in a row, on magenta: those of the levels 1 to 5.
#define IDB_LEVELS 9824     // of 16 pixels
#define IDB_LEVELS_200 9825 // of 32, for displays of 144 dpi and more

// Dialogs, and those of their controls that the code names.
#define IDD_LOG_CONFIG 9821
#define IDC_SORT_LABEL 2049
#define IDC_SORT1 2003
#define IDC_SORT1_ASCENDING 2008
#define IDC_SORT1_DESCENDING 2009
#define IDC_SORT1_GROUP 2010
#define IDC_SORT2 2005
#define IDC_SORT2_ASCENDING 2011
#define IDC_SORT2_DESCENDING 2012
#define IDC_SORT2_GROUP 2013
#define IDC_SORT3 2017
#define IDC_SORT3_ASCENDING 2014
#define IDC_SORT3_DESCENDING 2015
#define IDC_SORT3_GROUP 2016
#define IDC_FILTER_LABEL 2050
#define IDC_FILTER1_FIELD 2018
#define IDC_FILTER1_OPERATOR 2006
#define IDC_FILTER1_VALUE 2007
#define IDC_FILTER1_CASE 2026
#define IDC_FILTER2_FIELD 2020
#define IDC_FILTER2_OPERATOR 2021
#define IDC_FILTER2_VALUE 2022
#define IDC_FILTER2_CASE 2027
#define IDC_FILTER3_FIELD 2023
#define IDC_FILTER3_OPERATOR 2024
#define IDC_FILTER3_VALUE 2025
#define IDC_FILTER3_CASE 2028
#define IDC_SHOW_DUPLICATE 2019

#define IDD_LOG_FILTER 9823
#define IDC_ONE_FIELD 2000
#define IDC_ONE_OPERATOR 2001
#define IDC_ONE_VALUE 2002
