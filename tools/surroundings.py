"""What a Windows says of itself to the programs on it, and the combinations of it under which the system tests run.

Wine takes the user's language from the messages' locale of Unix. Its code pages are those of the characters' locale: there
is no Unix locale for a Windows set to UTF-8, but Hindi is a language that never had a code page of its own.
"""

import os
from dataclasses import dataclass, replace

VARIABLE = "BACKUP_SURROUNDINGS"
UTF8 = 65001
# Language to Unix locale, the number and the name that Windows gives it, and its decimal separator.
LANGUAGES = {"fr": ("fr_FR.UTF-8", "0000040c", "fr-FR", ","), "en": ("en_US.UTF-8", "00000409", "en-US", ".")}
CHARACTERS = {1252: None, UTF8: "hi_IN.UTF-8"}
UNIX_LOCALES = (*(names[0] for names in LANGUAGES.values()), CHARACTERS[UTF8])
SEPARATORS = {"comma": ",", "point": "."}


@dataclass(frozen=True)
class Surroundings:
    """A version is called as Wine calls it; without one, Wine answers what it likes, and without a decimal separator it is
    that of the language."""
    language: str = "fr"
    version: str = ""
    code_page: int = 1252
    decimal: str = ""

    @property
    def encoding(self):
        """How a program that is not Unicode writes text there."""
        return "utf-8" if self.code_page == UTF8 else "cp1252"

    @property
    def is_before_vista(self):
        return self.version.startswith("winxp")

    @property
    def separator(self):
        return SEPARATORS.get(self.decimal) or LANGUAGES[self.language][3]

    def environment(self):
        locale = LANGUAGES[self.language][0]
        return {"LC_MESSAGES": locale, "LC_CTYPE": CHARACTERS[self.code_page] or locale}

    def international(self):
        """The values of the user's settings for numbers. Wine replaces all of them where they are another language's."""
        if not self.decimal:
            return []
        _, number, name, _ = LANGUAGES[self.language]
        return [f'"Locale"="{number}"', f'"LocaleName"="{name}"', f'"sDecimal"="{self.separator}"']

    def __str__(self):
        return "-".join(str(value) for value in (self.language, self.version, self.code_page, self.decimal) if value)


# Any two values of different sorts meet in at least one of these; all four together would be 24.
COVER = (
    Surroundings("fr", "win10", 1252, "comma"),
    Surroundings("en", "win10", UTF8, "point"),
    Surroundings("fr", "win7", UTF8, "point"),
    Surroundings("en", "win7", 1252, "comma"),
    Surroundings("fr", "winxp64", 1252, "point"),
    Surroundings("en", "winxp64", UTF8, "comma"),
)
BY_NAME = {str(one): one for one in COVER}


def rounds():
    """The rounds that the environment asks for by their combinations, "all" for every one; otherwise one without a name, in
    which each class of tests has its own."""
    wanted = os.environ.get(VARIABLE, "")
    names = list(BY_NAME) if wanted == "all" else wanted.split(",")
    for name in names:
        if name and name not in BY_NAME:
            raise LookupError(f"{VARIABLE} is one of all, {', '.join(BY_NAME)}, not {name}")
    return names


def chosen(test_class):
    """The combination of this round for a class of tests, save for the sorts of value that it keeps; without a round its
    own."""
    own, wanted = test_class.own_surroundings, os.environ.get(VARIABLE, "")
    return replace(BY_NAME[wanted], **{sort: getattr(own, sort) for sort in test_class.keeps}) if wanted else own
