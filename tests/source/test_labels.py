"""The labels under which failures are reported: users quote them to the support desk, so each stays as it is."""

import re
import unittest
from pathlib import Path

SOURCES = Path(__file__).resolve().parent.parent.parent / "src"
LABEL = re.compile(r'L"([^"]*), ((?:[mM]odule|Class) \w+)"')
HEAD = re.compile(r"^(?:\S.*\s)?[*&]?([\w]+)::([\w]+)\(", re.MULTILINE)

# The unit as the label has it, and the procedures that report under it.
LABELS = {
    "module CheckWindow":
        "BrowseClicked CancelClicked CheckClicked Follow ListPlaces Load PlaceClicked RecoverClicked "
        "SaveReportClicked",
    "Class clsColFileInfo":
        "Add Remove",
    "Class clsCopie":
        "ArchiverFichier ArchiverRepertoire ArchiverZipFinal CopierListeFichiers CopierUSB ExecCmd "
        "GetZipAppName_Error VerifyZipApp",
    "module ctlScan":
        "InitCaptions UserControl_Initialize",
    "module frmBackup":
        "cmbGraveur_Click",
    "module frmBackupCD":
        "AfficherEspaceRequis AfficherEspaceTravail AfficherOperationEnCours AjouterFichRep AjouterFichier "
        "AjouterFichiers ArreterEcriture ChargerComboVitesse DetruireItem DiscWritableCD DiscWritableDVD "
        "EffacerFichierListe EffacerTouteListe Enabled EnregistrerListeFichiers FinEcriture Form_Activate "
        "Form_Load Form_Unload GetEspaceTotalUSB InitCaptions ListeFichiersRemplir LoadComboDrive "
        "LoadComboDriveUSB MajBoutonLancer PreparerArchive RefreshDiscInfo RemoveControls RemplirArray "
        "ViderArray chkSauvOKR_Click cmbSpeed_Click cmdAjouterFichier_Click cmdAjouterRep_Click "
        "cmdEffacerCD_Click cmdInfoDisque_Click cmdLancer_Click cmdOuvrirExplorer_Click cmdPrecedent_Click "
        "cmdQuitter_Click cmdStopWrite_Click ctlSelectionFichiers_OnAddFile "
        "ctlSelectionFichiers_OnRefreshSpace ctlSelectionFichiers_OnRemoveAllFile "
        "ctlSelectionFichiers_OnRemoveFile dlbSelectLecteur_Change dlbSelectRep_Change dlbSelectRep_Click "
        "flbSelectFichier_DblClick lvFichRep_OLEDragDrop objGraveurCD_ErrorEx objGraveurCD_MediaChange "
        "objGraveurCD_OperationProgress objGraveurDVD_ErrorEx objGraveurDVD_MediaChange "
        "objGraveurDVD_OperationProgress",
    "module frmEffacerCDRW":
        "Form_Load Form_Unload InitCaptions cmdEffacerCD_Click cmdFermer_Click",
    "module frmInfoDisque":
        "Form_Load Form_Unload InitCaptions Rafraichir cmdOk_Click cmdRafraichir_Click",
    "module frmMain":
        "Form_Load InitCaptions InitDisqueAmovible InitDisqueExterne InitGraveur InitLangue MajTexteBouton "
        "cmdAide_Click cmdBackup_Click cmdSortie_Click optBackup_Click optCD_Click optDVD_Click "
        "optDisqueAmovible_Click optDisqueExterne_Click optRestaure_Click",
    "module frmMotPasse":
        "Form_Load VerifierComplexiteMotPasse cmdAideMax_Click cmdAideMin_Click cmdCancel_Click cmdOK_Click "
        "txtConfirmation_KeyPress txtMotPasse_KeyPress",
    "module frmRestaureCD":
        "BloquerBoutons CopierFichRepert Form_Load Form_Unload InitCaptions MAJListeCDetUSB MAJListeFich "
        "RefreshLists cmdFermer_Click cmdLancerRestauration_Click cmdToutDeselectionner_Click "
        "cmdToutSelectionner_Click lstDrive_Click lvFichiersRepertoires_ItemCheck "
        "mnuRaffraichir_Rafraichir_Click",
    "module modFonctionsCommunes":
        "AjouteMultiple AjouteToListAndArray EffacerMultiple GetDriveListByType pgRecupererLangueWindows",
    "module modGestionMotPasse":
        "DemanderMotPasse InitCaptionsMotPasse",
    "Module modGestionRestaure":
        "UnZipIntermediaire UnZipOkrBackup",
    "Module modObtenirUSB":
        "ScanDiskLetter VérifierDriveUSB",
}

# The windows whose procedures keep the name of the unit that they were first written in, and the two that name another.
FIRST_UNITS = {"frmBackup": "module frmBackupCD"}
OTHER_UNITS = {
    ("frmBackup", "InitCaptions"): "module ctlScan",
    ("frmBackup", "cmbGraveur_Click"): "module frmBackup",
    ("frmMotPasse", "InitCaptionsMotPasse"): "module modGestionMotPasse",
}


def labels():
    """Every label of the sources with the class and the procedure in which it stands."""
    for path in sorted(SOURCES.rglob("*.cpp")):
        text = path.read_text(encoding="utf-8")
        heads = [(head.start(), head.group(1), head.group(2)) for head in HEAD.finditer(text)]
        for label in LABEL.finditer(text):
            owner = next(((unit, name) for start, unit, name in reversed(heads) if start < label.start()), ("", ""))
            yield owner, label.group(1), label.group(2)


class LabelsTest(unittest.TestCase):
    maxDiff = None

    def test_every_label_is_one_that_the_support_desk_knows(self):
        used = {}
        for _, name, unit in labels():
            used.setdefault(unit, set()).add(name)
        self.assertEqual(used, {unit: set(names.split()) for unit, names in LABELS.items()})

    def test_a_procedure_whose_name_is_a_label_reports_under_it(self):
        known = {name for names in LABELS.values() for name in names.split()}
        for (unit, procedure), name, _ in labels():
            if procedure not in known:
                continue
            with self.subTest(unit=unit, procedure=procedure):
                self.assertEqual(name, procedure)

    def test_a_windows_procedures_name_its_unit(self):
        for (unit, procedure), name, named in labels():
            if unit.startswith("frm"):
                expected = OTHER_UNITS.get((unit, procedure), FIRST_UNITS.get(unit, f"module {unit}"))
                with self.subTest(unit=unit, procedure=procedure):
                    self.assertEqual(named, expected)


if __name__ == "__main__":
    unittest.main()
