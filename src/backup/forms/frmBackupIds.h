#pragma once

#define IDD_frmBackup 1100

#define IDC_fParametres 1101
#define IDC_cmbGraveur 1102
#define IDC_lblVitesse 1103
#define IDC_cmbSpeed 1104
#define IDC_lblNomVolume 1105
#define IDC_txtDiscLabel 1106
#define IDC_cmdInfoDisque 1107
#define IDC_cmdEffacerDisque 1108
#define IDC_lblEspaceRequis 1109
#define IDC_lblEspaceDispo 1110
#define IDC_lblEspaceTravail 1111
#define IDC_fProgression 1112
#define IDC_lblStatutGravure 1113
#define IDC_pbProgress 1114
#define IDC_lblStatutGraveur 1115
#define IDC_pbProgressTotal 1116
#define IDC_cmdStopWrite 1117
#define IDC_cmdPrecedent 1118
#define IDC_cmdLancer 1119
#define IDC_cmdQuitter 1120
#define IDC_stBarDataWriter 1121
