#pragma once

#define IDD_frmEffacerCDRW 1500

#define IDC_optEffacementRapide 1501
#define IDC_optEffacementComplet 1502
#define IDC_pgbEffacement 1503
#define IDC_cmdEffacerCD 1504
#define IDC_cmdFermer 1505
#define IDC_eraseName 1506
