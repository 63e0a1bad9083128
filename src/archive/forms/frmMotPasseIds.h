#pragma once

#define IDD_frmMotPasse 1200

#define IDC_lblNotaBene 1201
#define IDC_lblTitre 1202
#define IDC_txtMotPasse 1203
#define IDC_lblConfirmation 1204
#define IDC_txtConfirmation 1205
#define IDC_cmdOK 1206
#define IDC_cmdCancel 1207
#define IDC_cmdAideMax 1208
#define IDC_cmdAideMin 1209
#define IDC_frameAide 1210
#define IDC_lblTitreLabel 1211
#define IDC_lblCritere 1212
#define IDC_lblAlphaNum 1213
