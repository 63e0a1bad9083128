"""What every source file keeps to: who may include what, no word of unfinished work, the layout and the length."""

import re
import shutil
import subprocess
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
# From the floor up: a room stands on those before it.
ROOMS = ("core", "shell", "selection", "archive", "discutil", "backup", "restore", "check")
# Neither of these two knows the other, though one of them has to come first.
STRANGERS = {frozenset(("backup", "restore")), frozenset(("backup", "check")), frozenset(("restore", "check"))}
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^">]+)[">]', re.MULTILINE)
WINDOWS_HEADERS = re.compile(
    r"^(windows|windowsx|winuser|winbase|commctrl|commdlg|shellapi|shlobj|shlwapi|objbase|ole2|oleauto|setupapi|userenv|"
    r"winioctl|ntddstor|uxtheme|dwmapi|psapi|dbt|imapi2|imapi2fs|process|io|direct|mmsystem)\.h$", re.IGNORECASE)


def tracked(*folders):
    """The project's files: what git knows or would add; without git or its data, all but what was built."""
    git = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "--", *folders]
    listed = subprocess.run(git, cwd=PROJECT, capture_output=True, check=False) if shutil.which("git") else None
    if listed and listed.returncode == 0:
        names = [PROJECT / name for name in listed.stdout.decode().split("\0") if name]
    else:
        roots = [PROJECT / folder for folder in folders] or [PROJECT]
        names = [path for root in roots for path in root.rglob("*")]
    return [path for path in names
            if path.is_file() and path.relative_to(PROJECT).parts[0] not in ("build", ".git") and path.suffix != ".pyc"]


def sources(*folders):
    return [path for path in tracked(*folders) if path.suffix in (".h", ".cpp")]


def kind_of(path):
    """The layer a file below src belongs to."""
    parts = path.relative_to(PROJECT / "src").parts
    if len(parts) == 1 or parts[-1] == "main.cpp":
        return "main"
    if parts[0] == "platform":
        return "windows" if parts[1] == "windows" else "platform"
    if parts[0] in ROOMS:
        return "form" if parts[1] == "forms" else "logic"
    return parts[0]


MAY_INCLUDE = {
    "main": {"main", "form", "logic", "ui", "platform", "windows", "win32", "resources", "system"},
    "form": {"form", "logic", "ui", "platform", "resources"},
    "logic": {"logic", "platform", "resources"},
    "ui": {"ui", "win32", "system"},
    "platform": {"platform"},
    "windows": {"windows", "platform", "win32", "system"},
    "win32": {"win32", "system"},
    "resources": {"resources", "system"},
}


def included_file(name, includer):
    """The file below src that an include line means; nothing for a header of the system."""
    for base in (PROJECT / "src", includer.parent):
        candidate = (base / name).resolve()
        if candidate.is_file() and candidate.is_relative_to(PROJECT / "src"):
            return candidate
    return None


def included_kind(name, includer):
    if WINDOWS_HEADERS.match(name):
        return "system"
    file = included_file(name, includer)
    return kind_of(file) if file else None


def layer_breaches(path, text):
    kind = kind_of(path)
    for bracket, name in INCLUDE.findall(text):
        included = included_kind(name, path)
        if included is None and bracket == '"':
            yield f"{path.relative_to(PROJECT)} includes {name}, which is not there"
        elif included is not None and included not in MAY_INCLUDE[kind]:
            yield f"{path.relative_to(PROJECT)} ({kind}) includes {name} ({included})"


def room_of(path):
    """The room that a file below src stands in; nothing for a file outside the rooms."""
    room = path.relative_to(PROJECT / "src").parts[0]
    return room if room in ROOMS else None


def room_breaches(path, text):
    room = room_of(path)
    for _, name in INCLUDE.findall(text):
        file = included_file(name, path)
        other = room_of(file) if file else None
        if room and other and (ROOMS.index(other) > ROOMS.index(room) or frozenset((room, other)) in STRANGERS):
            yield f"{path.relative_to(PROJECT)} includes {name}, but {room} does not stand on {other}"


def unit_of(path):
    """A header and the source of its name are one unit."""
    return str(path.relative_to(PROJECT / "src").with_suffix(""))


def unit_graph(files):
    """The units that each unit includes, its own header apart: files are paths with their texts."""
    graph = {}
    for path, text in files:
        uses = graph.setdefault(unit_of(path), set())
        for _, name in INCLUDE.findall(text):
            file = included_file(name, path)
            if file and unit_of(file) != unit_of(path):
                uses.add(unit_of(file))
    return graph


def circles(graph):
    """Each circle of a graph that a walk meets, as the names on the way round."""
    found, done = [], set()

    def walk(node, way):
        if node in way:
            found.append(way[way.index(node):] + [node])
        elif node not in done:
            for other in sorted(graph.get(node, ())):
                walk(other, way + [node])
            done.add(node)

    for node in sorted(graph):
        walk(node, [])
    return found


# Put together from pieces, so that this list does not find itself.
UNFINISHED_WORDS = re.compile(r"\b(TO" r"DO|FIX" r"ME|XX" r"X|HA" r"CK)\b|(?i:\b(not imple" r"mented|unimple" r"mented)\b)")


def unfinished_words(text):
    for found in UNFINISHED_WORDS.finditer(text):
        yield text.count("\n", 0, found.start()) + 1, found.group(0)


class LayersTest(unittest.TestCase):
    def test_every_file_includes_only_what_its_layer_may(self):
        files = sources("src")
        self.assertGreater(len(files), 20)
        breaches = [breach for path in files for breach in layer_breaches(path, path.read_text(encoding="utf-8"))]
        self.assertEqual(breaches, [])

    def test_a_logic_file_that_includes_a_window_header_is_found(self):
        logic = PROJECT / "src" / "archive" / "Example.cpp"
        self.assertTrue(list(layer_breaches(logic, "#include <windows.h>\n")))
        self.assertTrue(list(layer_breaches(logic, '#include "ui/Form.h"\n')))
        self.assertFalse(list(layer_breaches(logic, '#include "platform/Files.h"\n#include <string>\n')))

    def test_a_control_that_includes_the_programs_texts_is_found(self):
        control = PROJECT / "src" / "ui" / "Example.cpp"
        self.assertTrue(list(layer_breaches(control, '#include "resources/TextId.h"\n')))
        self.assertFalse(list(layer_breaches(control, '#include "win32/UniqueHandle.h"\n#include <windows.h>\n')))

    def test_every_room_stands_on_those_below_it(self):
        breaches = [breach for path in sources("src") for breach in room_breaches(path, path.read_text(encoding="utf-8"))]
        self.assertEqual(breaches, [])

    def test_a_file_that_includes_a_room_above_its_own_is_found(self):
        logic = PROJECT / "src" / "archive" / "Example.cpp"
        self.assertTrue(list(room_breaches(logic, '#include "restore/RestoreRows.h"\n')))
        self.assertFalse(list(room_breaches(logic, '#include "selection/clsColFileInfo.h"\n')))
        backup = PROJECT / "src" / "backup" / "Example.cpp"
        self.assertTrue(list(room_breaches(backup, '#include "restore/RestoreRows.h"\n')))
        restore = PROJECT / "src" / "restore" / "Example.cpp"
        self.assertTrue(list(room_breaches(restore, '#include "backup/BackupRun.h"\n')))

    def test_no_two_units_include_each_other(self):
        files = [(path, path.read_text(encoding="utf-8")) for path in sources("src")]
        self.assertEqual(circles(unit_graph(files)), [])

    def test_units_that_include_each_other_are_found(self):
        copier, lister = (PROJECT / "src" / "archive" / name for name in ("clsCopie.cpp", "clsListe.cpp"))
        graph = unit_graph([(copier, '#include "archive/clsListe.h"\n'), (lister, '#include "archive/clsCopie.h"\n')])
        self.assertEqual(circles(graph), [["archive/clsCopie", "archive/clsListe", "archive/clsCopie"]])
        alone = unit_graph([(copier, '#include "archive/clsCopie.h"\n#include "archive/clsListe.h"\n'), (lister, "")])
        self.assertEqual(circles(alone), [])

    def test_windows_headers_outside_src_stand_in_the_tests_that_need_them(self):
        allowed = ("tests/window/", "tests/system/", "tests/kit/", "tests/faults/archiver/", "tests/faults/memory/",
                   "tests/virtual_burner/", "bench/")
        breaches = []
        for path in sources("tests", "bench"):
            name = str(path.relative_to(PROJECT))
            headers = [header for _, header in INCLUDE.findall(path.read_text(encoding="utf-8"))]
            if not name.startswith(allowed) and any(WINDOWS_HEADERS.match(header) for header in headers):
                breaches.append(name)
        self.assertEqual(breaches, [])


class WordsTest(unittest.TestCase):
    def test_no_file_says_that_something_is_unfinished(self):
        found = []
        for path in tracked():
            # Licence texts stay as their authors wrote them.
            if path == Path(__file__).resolve() or path.is_relative_to(PROJECT / "LICENSES"):
                continue
            try:
                text = path.read_text(encoding="utf-8")
            except UnicodeDecodeError:
                continue
            found += [f"{path.relative_to(PROJECT)}:{line}: {word}" for line, word in unfinished_words(text)]
        self.assertEqual(found, [])

    def test_a_word_of_the_list_is_found_with_its_line(self):
        self.assertEqual(list(unfinished_words("one\n// TO" "DO later\n")), [(2, "TO" "DO")])
        self.assertEqual(list(unfinished_words("todo lists and hacks")), [])


MOST_LINES = 400


def too_long(path, text):
    lines = text.count("\n")
    if lines > MOST_LINES:
        yield f"{path.relative_to(PROJECT)} has {lines} lines"


class LayoutTest(unittest.TestCase):
    def test_no_file_is_so_long_that_it_is_two(self):
        files = [path for path in tracked("src", "tests", "tools") if path.suffix in (".h", ".cpp", ".rc", ".py", ".sh")]
        self.assertGreater(len(files), 100)
        self.assertEqual([line for path in files for line in too_long(path, path.read_text(encoding="utf-8"))], [])

    def test_a_file_that_is_too_long_is_found(self):
        file = PROJECT / "src" / "archive" / "Example.cpp"
        self.assertEqual(list(too_long(file, "\n" * MOST_LINES)), [])
        self.assertEqual(list(too_long(file, "\n" * (MOST_LINES + 1))), ["src/archive/Example.cpp has 401 lines"])

    def test_sources_are_laid_out_as_clang_format_says(self):
        files = [str(path) for path in sources("src", "tests", "bench")]
        done = subprocess.run(["clang-format", "--dry-run", "--Werror", *files], cwd=PROJECT, capture_output=True, text=True,
                              check=False)
        wrong = sorted(set(re.findall(r"^(\S+?):\d+", done.stderr, re.MULTILINE)))
        self.assertEqual(wrong, [])
        self.assertEqual(done.returncode, 0)


DETACHED = re.compile(r"(?:\.|->)\s*detach\s*\(")


class ThreadsTest(unittest.TestCase):
    """`StartThread` tells why: on Windows the thread library loses threads that are detached."""

    def test_no_thread_of_the_library_is_detached(self):
        native = PROJECT / "tests" / "support" / "NativeThread.cpp"
        found = {path for path in sources("src", "tests", "bench") if DETACHED.search(path.read_text(encoding="utf-8"))}
        self.assertEqual(found, {native})

    def test_a_thread_that_is_detached_is_found_however_it_is_held(self):
        for line in ("thread.detach();", "std::thread(steps) .detach ();", "thread_->detach();", "thread_\n    -> detach();"):
            self.assertTrue(DETACHED.search(line), line)
        for line in ("subclass.Detach();", "detach(thread);", "thread.detached();"):
            self.assertFalse(DETACHED.search(line), line)


if __name__ == "__main__":
    unittest.main()
