"""Every control that a form's source can name stands in the form's template: one that does not is never seen, because
a call on a control that is not there has no effect. A template stays a table that people read: one control a line."""

import re
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
SOURCES = ROOT / "src"
# The entries of a menu (mnu) are made while the program runs.
CONTROL = re.compile(r"^#define (IDC_(?!mnu)\w+)", re.MULTILINE)


def missing_controls(ids, template):
    return [name for name in CONTROL.findall(ids) if not re.search(rf"\b{name}\b", template)]

STATEMENT = re.compile(
    r"\b(LTEXT|RTEXT|CTEXT|EDITTEXT|(?:DEF)?PUSHBUTTON|GROUPBOX|COMBOBOX|LISTBOX|CHECKBOX|RADIOBUTTON|CONTROL"
    r"|STYLE|EXSTYLE|CAPTION|FONT|BEGIN|END)\b"
)


def crowded_lines(template):
    """The lines on which anything stands before a statement of the template."""
    lines = (re.sub(r'"[^"]*"|//.*', "", line).strip() for line in template.splitlines())
    return [line for line in lines if any(found.start() > 0 for found in STATEMENT.finditer(line))]


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

    def test_every_statement_of_a_template_begins_its_line(self):
        templates = [path for folder in ("src", "tests") for path in sorted((ROOT / folder).rglob("*.rc"))]
        self.assertGreater(len(templates), 6)
        for template in templates:
            with self.subTest(template.name):
                self.assertEqual(crowded_lines(template.read_text(encoding="utf-8")), [])

    def test_a_second_control_on_a_line_is_found(self):
        self.assertEqual(crowded_lines('LTEXT "END", 1, 5, 2\n'), [])
        self.assertEqual(len(crowded_lines('    LTEXT "", 1, 5, 2 EDITTEXT 2, 5\n')), 1)


if __name__ == "__main__":
    unittest.main()
