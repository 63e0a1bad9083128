#pragma once

#define IDD_frmMain 1000

#define IDC_frmAction 1001
#define IDC_optBackup 1002
#define IDC_optRestaure 1003
#define IDC_frmMedium 1004
#define IDC_optCD 1005
#define IDC_optDVD 1006
#define IDC_optDisqueAmovible 1007
#define IDC_optDisqueExterne 1008
#define IDC_cboDrive 1009
#define IDC_cboDisqueExterne 1010
#define IDC_lblType 1011
#define IDC_lblDetecte 1012
#define IDC_lblDetCD 1013
#define IDC_lblDetDVD 1014
#define IDC_lblDetRemDisk 1015
#define IDC_lblDetExtDisk 1016
#define IDC_cmdBackup 1017
#define IDC_cmdSortie 1018
#define IDC_cmdAide 1019
#define IDC_pgbInit 1020
#define IDC_removableDriveName 1021
#define IDC_externalDriveName 1022
#define IDC_loadingName 1023
