#pragma once

#define IDD_CheckWindow 1800

#define IDC_PlacesLabel 1801
#define IDC_Places 1802
#define IDC_Browse 1803
#define IDC_PasswordLabel 1804
#define IDC_Password 1805
#define IDC_Compare 1806
#define IDC_Check 1807
#define IDC_Sign 1808
#define IDC_Verdict 1809
#define IDC_ItemsLabel 1810
#define IDC_Items 1811
#define IDC_SelectAll 1812
#define IDC_DeselectAll 1813
#define IDC_Recover 1814
#define IDC_SaveReport 1815
#define IDC_DetailsLabel 1816
#define IDC_Details 1817
#define IDC_Progress 1818
#define IDC_ProgressText 1819
#define IDC_Close 1820
#define IDC_Cancel 1821
#define IDM_Refresh 1830
#define IDM_SortByFirst 1831
