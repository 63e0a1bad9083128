"""Every control that a form's source can name stands in the form's template: one that does not is never seen, because
a call on a control that is not there has no effect."""

import re
import unittest
from pathlib import Path

SOURCES = Path(__file__).resolve().parent.parent.parent / "src"
# The entries of a menu (mnu) are made while the program runs.
CONTROL = re.compile(r"^#define (IDC_(?!mnu)\w+)", re.MULTILINE)


def missing_controls(ids, template):
    return [name for name in CONTROL.findall(ids) if not re.search(rf"\b{name}\b", template)]


class TemplatesTest(unittest.TestCase):
    def test_every_control_number_stands_in_the_template(self):
        headers = sorted(SOURCES.glob("*/forms/*Ids.h"))
        self.assertGreater(len(headers), 6)
        for header in headers:
            template = header.with_name(header.name.replace("Ids.h", ".rc")).read_text(encoding="utf-8")
            with self.subTest(header.name):
                self.assertEqual(missing_controls(header.read_text(encoding="utf-8"), template), [])

    def test_a_control_without_a_line_in_the_template_is_found(self):
        ids = "#define IDD_frmX 1\n#define IDC_cmdOK 2\n#define IDC_cmdOKAll 3\n"
        self.assertEqual(missing_controls(ids, 'PUSHBUTTON "", IDC_cmdOKAll, 1, 1, 1, 1'), ["IDC_cmdOK"])


if __name__ == "__main__":
    unittest.main()
