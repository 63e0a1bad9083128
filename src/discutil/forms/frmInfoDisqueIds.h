#pragma once

#define IDD_frmInfoDisque 1400

#define IDC_frmInfosDisque 1401
#define IDC_lblLabelType 1402
#define IDC_lblTypeCD 1403
#define IDC_lblLabelStatut 1404
#define IDC_lblStatutCD 1405
#define IDC_lblLabelEspaceUtilise 1406
#define IDC_lblEspaceUtilise 1407
#define IDC_lblMoAGraver 1408
#define IDC_lblEstimEspaceUtilise 1409
#define IDC_cmdRafraichir 1410
#define IDC_cmdOK 1411
