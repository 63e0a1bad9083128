"""Signed as an IT department would have it, with a certificate made for the test."""

import shutil
import subprocess
import unittest

from installer_case import InstallerCase
from system_test import BUILD, PROJECT

SIGNED = ("Backup.exe", "BackupCheck.exe", "7Za.exe", "Uninstall.exe")


class SigningTest(InstallerCase):
    def setUp(self):
        for tool in ("osslsigncode", "openssl"):
            if not shutil.which(tool):
                self.skipTest(f"nothing can be signed: there is no {tool} on this machine")
        super().setUp()
        self.scratch = BUILD / "signing-test"
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, self.scratch, ignore_errors=True)
        self.certificate = self.scratch / "certificate.pem"

    def make_certificate(self):
        key = self.scratch / "key.pem"
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Backup test",
                        "-addext", "extendedKeyUsage=codeSigning", "-keyout", key, "-out", self.certificate],
                       check=True, capture_output=True)
        command = self.scratch / "sign"
        command.write_text(f'#!/bin/sh -e\nosslsigncode sign -certs "{self.certificate}" -key "{key}" -in "$1" -out "$1.signed"\n'
                           'mv "$1.signed" "$1"\n', encoding="utf-8")
        command.chmod(0o755)
        return command

    def is_signed(self, program):
        said = subprocess.run(["osslsigncode", "verify", "-CAfile", self.certificate, "-in", program], capture_output=True,
                              text=True, check=False)
        return said.returncode == 0 and "Signature verification: ok" in said.stdout

    def test_programs_archiver_uninstaller_and_setup_are_signed(self):
        output = self.scratch / "packaging"
        done = subprocess.run([PROJECT / "packaging" / "build", "--output", output, "--sign-with", self.make_certificate()],
                              capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        setup = output / "Backup-setup.exe"
        self.assertTrue(self.is_signed(setup))
        self.assertFalse(self.is_signed(BUILD / "windows" / "bin" / "Backup.exe"))
        shutil.copy2(setup, self.station.path(r"C:\Tools"))
        self.install()
        for name in SIGNED:
            self.assertTrue(self.is_signed(self.folder / name), name)


if __name__ == "__main__":
    unittest.main()
