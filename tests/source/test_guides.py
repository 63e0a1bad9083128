"""The users' guides quote the program to the letter, show pictures that are there, and say the same in both languages."""

import re
import unittest
from html.parser import HTMLParser
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
GUIDES = PROJECT / "packaging" / "help"
LANGUAGES = {"Copie de Sauvegarde.html": "fr", "Backup.html": "en"}
STRING = r'"((?:[^"\\]|\\.)*)"'
ROW = re.compile(rf"^\w+\(.*?{STRING},\s*{STRING}\)\s*$", re.MULTILINE)


def plain(text):
    """A text as a reader sees it: without access keys, and with single blanks."""
    return " ".join(text.replace("&", "").split())


def texts_of(language):
    table = (PROJECT / "src" / "resources" / "Strings.def").read_text(encoding="utf-8")
    rows = [[re.sub(r"\\(.)", lambda found: {"n": " "}.get(found[1], found[1]), text) for text in row]
            for row in ROW.findall(table)]
    return {plain(row[0 if language == "fr" else 1]) for row in rows}


class Guide(HTMLParser):
    """What a guide quotes, shows and how it is built."""

    def __init__(self, name):
        super().__init__()
        self.captions, self.parts, self.pictures, self.headings = [], [], [], []
        self._into = None
        self.feed((GUIDES / name).read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        into = {"ui": self.captions, "message": self.parts}.get(attributes.get("class")) if tag == "span" else None
        if tag in ("h1", "h2", "h3"):
            self.headings.append(tag)
        if tag == "img":
            self.pictures.append((attributes["src"], attributes["alt"]))
        if into is not None:
            into.append("")
            self._into = into

    def handle_endtag(self, tag):
        if tag == "span":
            self._into = None

    def handle_data(self, data):
        if self._into is not None:
            self._into[-1] += data


class GuidesTest(unittest.TestCase):
    def test_the_string_table_is_read(self):
        self.assertIn("Next...", texts_of("en"))
        self.assertIn("Suivant...", texts_of("fr"))

    def test_every_quoted_caption_is_one_of_the_program(self):
        for name, language in LANGUAGES.items():
            quoted = {plain(text) for text in Guide(name).captions}
            self.assertGreater(len(quoted), 20, name)
            self.assertEqual(sorted(quoted - texts_of(language)), [], name)

    def test_every_quoted_part_of_a_message_stands_in_one_of_the_program(self):
        for name, language in LANGUAGES.items():
            texts = texts_of(language)
            # The writer's box is put together by the program.
            fixed = {"Error:"}
            lost = [part for part in map(plain, Guide(name).parts)
                    if part not in fixed and not any(part in text for text in texts)]
            self.assertEqual(lost, [], name)

    def test_every_picture_is_there_in_the_guide_s_language_and_described(self):
        for name, language in LANGUAGES.items():
            for source, description in Guide(name).pictures:
                self.assertTrue((GUIDES / source).is_file(), f"{name}: {source}; packaging/pictures takes it")
                self.assertTrue(Path(source).name.startswith(f"{language}-"), f"{name}: {source}")
                self.assertTrue(description.strip(), f"{name}: {source}")

    def test_both_languages_have_the_same_headings_and_pictures(self):
        french, english = (Guide(name) for name in LANGUAGES)
        self.assertEqual(french.headings, english.headings)
        self.assertEqual([source.split("-", 1)[1] for source, _ in french.pictures],
                         [source.split("-", 1)[1] for source, _ in english.pictures])


if __name__ == "__main__":
    unittest.main()
