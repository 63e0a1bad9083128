"""The page of given names and the sources know the same names."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
PAGE = PROJECT / "docs" / "vocabulary.md"
# A type prefix and a capital: what no English name of this program looks like.
GIVEN = re.compile(r"\b(?:frm|ctl|cls|mod|cmd|opt|chk|cbo|cmb|lbl|txt|lst|dlb|flb|lv|pgb|pb|stBar|mnu|str|lng|dbl|bln|arr|"
                   r"mstr|mi|m|fl|fra|f|int|obj)[A-ZÉ]\w*")
LABEL = re.compile(r'L"(\w+), (?:module|Module|Class) (\w+)"')
COMMENT = re.compile(r"//[^\n]*|/\*[^*]*\*/")
TEXT = re.compile(r'L?"(?:[^"\\\n]|\\.)*"')
EVENT = re.compile(r"_(?:Click|Change|DblClick|KeyPress|ItemCheck|OLEDragDrop)$")
# Names that the system gives its own things, in the folder that speaks to it, are not this program's.
FOREIGN = ("src/platform/", "src/ui/", "src/win32/", "src/resources/")


def sources():
    for path in sorted((PROJECT / "src").rglob("*")):
        if path.suffix in (".h", ".cpp") and not str(path.relative_to(PROJECT)).startswith(FOREIGN):
            yield path.read_text(encoding="utf-8")


def plain(name):
    """A control's own name: without the event after it, and without the mark of a private field."""
    return EVENT.sub("", name).rstrip("_").removesuffix("Ids")


def names_used(text):
    """The given names of a source, in its code and in the labels of its error reports."""
    code = TEXT.sub("", COMMENT.sub("", text))
    names = {plain(name) for name in GIVEN.findall(code)}
    for procedure, unit in LABEL.findall(text):
        names.add(unit)
        names |= {plain(procedure)} if GIVEN.match(procedure) else set()
    return names


def names_on_page():
    return set(re.findall(r"`([A-Za-zÉé]\w*)`", PAGE.read_text(encoding="utf-8")))


class VocabularyTest(unittest.TestCase):
    def test_every_given_name_of_the_sources_is_on_the_page(self):
        used = set().union(*(names_used(text) for text in sources()))
        self.assertGreater(len(used), 80)
        events = {name for name in used if name.startswith(("ctlSelectionFichiers_On", "objGraveur"))}
        self.assertEqual(sorted(used - events - names_on_page()), [])

    def test_no_name_on_the_page_has_gone_from_the_sources(self):
        text = "\n".join(sources())
        prefixes = {"frm", "ctl", "cls", "mod", "cmd", "opt", "chk", "cbo", "cmb", "lbl", "txt", "lst", "dlb", "flb", "lv",
                    "pgb", "pb", "stBar", "mnu", "f", "fra", "str", "lng", "int", "dbl", "bln", "fl", "arr", "obj", "m"}
        gone = {name for name in names_on_page() - prefixes if not re.search(rf"\b(?:IDC_)?{re.escape(name)}", text)}
        self.assertEqual(sorted(gone), [])

    def test_a_name_with_a_prefix_is_found_in_code_and_labels_and_not_in_comments(self):
        self.assertEqual(names_used('int lngExample = 1; // strOther\nShow(L"cmdOne_Click, module frmTwo", L"blnText");'),
                         {"lngExample", "cmdOne", "frmTwo"})
        self.assertEqual(names_used("int intCount = objDisc.mTotal + fFrame.fraInner; m.print(interval, object, fast);"),
                         {"intCount", "objDisc", "mTotal", "fFrame", "fraInner"})


if __name__ == "__main__":
    unittest.main()
