"""The labels under which procedures report their failures are fixed: users quote them, and the support desk knows them."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
# Where each label stands. A procedure that moved keeps the name of the unit that it was first written in.
LABELS = {
    "archive/clsCopie.cpp": [
        "CopierListeFichiers, Class clsCopie", "CopierUSB, Class clsCopie", "ArchiverRepertoire, Class clsCopie",
        "ArchiverFichier, Class clsCopie", "ArchiverZipFinal, Class clsCopie", "ExecCmd, Class clsCopie",
        "VerifyZipApp, Class clsCopie", "GetZipAppName_Error, Class clsCopie"],
    "archive/clsListe.cpp": ["EnregistrerListeFichiers, module frmBackupCD"],
    "archive/modGestionRestaure.cpp": [
        "UnZipOkrBackup, Module modGestionRestaure", "UnZipIntermediaire, Module modGestionRestaure"],
    "shell/modFonctionsCommunes.cpp": [
        "GetDriveListByType, module modFonctionsCommunes", "pgRecupererLangueWindows, module modFonctionsCommunes"],
    "shell/modObtenirUSB.cpp": ["VérifierDriveUSB, Module modObtenirUSB", "ScanDiskLetter, Module modObtenirUSB"],
}
GUARD = re.compile(r'Guarded\(\s*app_?\s*,\s*L"([^"]*)"')


class ErrorLabels(unittest.TestCase):
    def test_every_procedure_reports_under_its_own_label(self):
        for file, labels in LABELS.items():
            text = (PROJECT / "src" / file).read_text(encoding="utf-8")
            self.assertEqual(sorted(GUARD.findall(text)), sorted(labels), file)

    def test_each_label_belongs_to_the_procedure_that_it_names(self):
        for file, labels in LABELS.items():
            text = (PROJECT / "src" / file).read_text(encoding="utf-8")
            for label in labels:
                # Two of them say another name than that of their procedure, and always have.
                name = {"VerifyZipApp": "ValidZipApp", "GetZipAppName_Error": "GetZipAppName"}.get(
                    label.split(",")[0], label.split(",")[0])
                before = text[:text.index(f'L"{label}"')]
                procedures = re.findall(r"^[\w:<>, ]+?[ :](\w+)\([^;]*?\) (?:const )?\{", before, re.MULTILINE)
                self.assertEqual(procedures[-1], name, label)


if __name__ == "__main__":
    unittest.main()
