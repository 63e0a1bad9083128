#pragma once

#define IDD_frmRestaureCD 1300

#define IDC_lblDriveName 1301
#define IDC_lstDrive 1302
#define IDC_lblListName 1303
#define IDC_lvFichiersRepertoires 1304
#define IDC_cmdToutSelectionner 1305
#define IDC_cmdToutDeselectionner 1306
#define IDC_cmdLancerRestauration 1307
#define IDC_cmdFermer 1308
#define IDC_mnuRaffraichir_Rafraichir 1309
