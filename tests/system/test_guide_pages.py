"""The guides as they are printed: their number of pages, how full these are, and what a reader of PDF is told of them."""

import json
import re
import subprocess
import unittest
import zlib

from installer_case import PACKAGING, PackagedCase
from system_test import PROJECT

GUIDES = {"Copie de Sauvegarde": ("fr-CA", "Copies de sécurité - Guide de l'utilisateur", "Faire une copie de sécurité"),
          "Backup": ("en-CA", "Backup - User's guide", "Make a backup")}
# The distribution's own Python has the setter. The foot stands in a box of its own beside the page's content.
LAY_OUT = """
import json, sys, weasyprint
def shown(box):
    if type(box).__name__ in ("TextBox", "InlineReplacedBox"):
        yield box.position_y + box.height
    elif type(box).__name__ != "MarginBox":
        for child in getattr(box, "children", ()):
            yield from shown(child)
pages = []
for page in weasyprint.HTML(sys.argv[1]).render(presentational_hints=True).pages:
    box = page._page_box
    pages.append((max(shown(box)) - box.content_box_y()) / box.height)
print(json.dumps(pages))
"""


def unpacked(document):
    """A PDF with its compressed streams laid open."""
    for stream in re.findall(rb"stream\r?\n(.*?)endstream", document, re.DOTALL):
        try:
            document += zlib.decompressobj().decompress(stream)
        except zlib.error:
            pass
    return document


def as_written(text):
    """The ways in which a PDF writes a text that is not on a page."""
    return tuple(way + text.encode("latin-1") + b")" for way in (b"/Lang (", b"/Title (")) + (
        b"<feff" + text.encode("utf-16-be").hex().encode("ascii") + b">",)


class GuidePagesTest(PackagedCase):
    def test_six_to_eight_pages_of_which_none_but_the_last_ends_early(self):
        for name in GUIDES:
            done = subprocess.run(["/usr/bin/python3", "-c", LAY_OUT, PROJECT / "packaging" / "help" / f"{name}.html"],
                                  capture_output=True, text=True, check=True)
            pages = json.loads(done.stdout)
            with self.subTest(name):
                self.assertIn(len(pages), range(6, 9))
                early = {number: round(full, 2) for number, full in enumerate(pages[:-1], 1) if full < 0.85}
                self.assertEqual(early, {}, "which part of its height each of these pages takes")

    def test_a_document_tells_its_title_language_and_headings_and_brings_its_fonts(self):
        for name, (language, title, heading) in GUIDES.items():
            document = unpacked((PACKAGING / f"{name}.pdf").read_bytes())
            with self.subTest(name):
                told = [language, title, heading]
                self.assertEqual([text for text in told if any(way in document for way in as_written(text))], told)
                fonts, files = (len(re.findall(word, document)) for word in (rb"/FontDescriptor\b(?! \d)", rb"/FontFile[23] "))
                self.assertEqual(fonts, files)
                self.assertGreaterEqual(files, 2)


if __name__ == "__main__":
    unittest.main()
