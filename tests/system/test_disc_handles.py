"""Windows for discs that are opened again and again, on drives that answer and that do not, leave no handle."""

import os
import unittest

from test_disc_backup import DiscTest


class HandlesTest(DiscTest):
    def test_windows_on_drives_that_misbehave_leave_no_handle(self):
        self.cd.insert("CD-RW")
        # Every write is stopped, however late on a busy machine.
        self.cd.set(write_milliseconds=30_000)
        program = self.start()
        program.main_window(90)

        def visit(busy, is_burnt=False):
            self.cd.set(busy=busy)
            backup = self.open_disc_backup(program, "CD-RW")
            if is_burnt:
                self.burn_and_stop(program, backup)
            else:
                backup.press("cmdInfoDisque")
                program.window("frmInfoDisque").press("cmdOK")
                backup = program.window("frmBackup")
            backup.press("cmdPrecedent")
            program.window("frmMain")

        def visits(times):
            for _ in range(times):
                visit("yes")
                visit("no")
            visit("no", is_burnt=True)

        # The first round makes what the process keeps anyway.
        self.assert_a_round_leaves_nothing(program, lambda: visits(4))

    def burn_and_stop(self, program, backup):
        program.wait(lambda: "700" in backup.text("lblEspaceDispo"), "the disc")
        self.select(backup, self.document("lettre.txt", os.urandom(100_000)))
        backup.press("cmdLancer")
        self.give_new_password(program)
        program.wait(lambda: backup.text("lblStatutGraveur") in (self.words("Ecriture de piste..."),
                                                                  self.words("Fermeture de la piste...")), "the track", 60)
        backup.press("cmdStopWrite")
        backup.wait_enabled("cmdPrecedent", 60)
        self.cd.take_out()
        self.cd.insert("CD-RW")


if __name__ == "__main__":
    unittest.main()
