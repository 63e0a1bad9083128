#pragma once

#define IDD_ctlSelectionFichiers 1600

#define IDC_frmFileView 1601
#define IDC_dlbSelectLecteur 1602
#define IDC_dlbSelectRep 1603
#define IDC_flbSelectFichier 1604
#define IDC_cmdAjouterFichier 1605
#define IDC_cmdAjouterRep 1606
#define IDC_frmSauvegardeOKR 1607
#define IDC_chkSauvOKR0 1608
#define IDC_chkSauvOKR1 1609
#define IDC_chkSauvOKR2 1610
#define IDC_chkSauvOKR3 1611
#define IDC_frmDView 1612
#define IDC_lvFichRep 1613
#define IDC_cmdOuvrirExplorer 1614
#define IDC_cmdEffacerTouteListe 1615
#define IDC_cmdEffacerFichierListe 1616
#define IDC_lblSelectRep 1617
#define IDC_lblSelectFichier 1618
