"""The shipped program, driven from outside by the messages that a person's clicks send."""

import time
from dataclasses import dataclass

from controlids import control_ids
from driver import DEFAULT_SECONDS, Driver, DriverError, NotSeen

WM_CLOSE = 0x10
WM_COMMAND = 0x111
DBT_DEVICEARRIVAL = 0x8000
DBT_DEVICEREMOVECOMPLETE = 0x8004
PBM_GETPOS = 0x408

IDOK, IDCANCEL, IDYES, IDNO = 1, 2, 6, 7


@dataclass(frozen=True)
class Control:
    handle: int
    id: int
    class_name: str
    text: str
    enabled: bool
    visible: bool
    left: int
    top: int
    width: int
    height: int
    style: int
    checked: int
    parent: int


@dataclass(frozen=True)
class ListRow:
    ticked: bool
    selected: bool
    texts: tuple


@dataclass(frozen=True)
class MessageBox:
    handle: int
    title: str
    text: str
    icon: str
    buttons: dict
    default_button: int

    def __str__(self):
        return f"message box {self.title!r} ({self.icon}, buttons {sorted(self.buttons)}): {self.text!r}"


class Window:
    """One of the program's windows. Controls are named as in its form's header: window["cmdLancer"]."""

    def __init__(self, program, handle, class_name, title, enabled, owner, rectangle, inside=(0, 0, 0, 0)):
        self.program = program
        self.handle = handle
        self.class_name = class_name
        self.title = title
        self.enabled = enabled
        self.owner = owner
        self.rectangle = rectangle
        *self.inner, self.is_sizable, self.has_menu = inside
        self.forms = ()

    def _control_rows(self):
        """A control that goes while all are read, as a progress that has ended does, makes the reading begin again."""
        for _ in range(5):
            try:
                return self.program.driver.call("controls", self.handle)
            except DriverError:
                time.sleep(0.05)
        return self.program.driver.call("controls", self.handle)

    def controls(self):
        found = []
        for row in self._control_rows():
            numbers = [int(field) for field in row[:2]] + row[2:4] + [int(field) for field in row[4:]]
            numbers[4], numbers[5] = bool(numbers[4]), bool(numbers[5])
            found.append(Control(*numbers))
        return found

    def control(self, name):
        numbers = {control_ids(form)[name] for form in self.forms if name in control_ids(form)}
        if not numbers:
            raise LookupError(f"no form of {self.forms} has a control {name}")
        matches = [control for control in self.controls() if control.id in numbers]
        if len(matches) > 1:
            matches = [control for control in matches if control.visible]
        if len(matches) != 1:
            raise NotSeen(f"{len(matches)} controls {name} {sorted(numbers)} in {self.title!r}")
        return matches[0]

    __getitem__ = control

    def has(self, name):
        numbers = {control_ids(form)[name] for form in self.forms if name in control_ids(form)}
        return any(control.id in numbers for control in self.controls())

    def press(self, name):
        """Clicks a button, option or check box, as a person can: only when it is shown and enabled."""
        control = self.wait_enabled(name)
        self.program.driver.call("click", control.handle)

    def wait_enabled(self, name, seconds=DEFAULT_SECONDS):
        return self.program.wait(lambda: (found := self.control(name)).enabled and found.visible and found or None,
                                 f"{name} enabled in {self.title!r}", seconds)

    def text(self, name):
        return self.control(name).text

    def set_text(self, name, text):
        self.program.driver.call("settext", self.wait_enabled(name).handle, text)

    def type(self, name, text):
        self.program.driver.call("type", self.wait_enabled(name).handle, text)

    def key(self, name, virtual_key):
        self.program.driver.call("key", self.control(name).handle, virtual_key)

    def entries(self, name):
        return [text for text, _ in self.program.driver.call("items", self.control(name).handle)]

    def chosen(self, name):
        return [text for text, selected in self.program.driver.call("items", self.control(name).handle)
                if selected == "1"]

    def choose(self, name, entry):
        """Selects an entry of a drop-down list or list box, by its position or its exact text."""
        control = self.wait_enabled(name)
        if isinstance(entry, str):
            entries = self.entries(name)
            if entry not in entries:
                raise NotSeen(f"no entry {entry!r} in {name}: {entries}")
            entry = entries.index(entry)
        self.program.driver.call("choose", control.handle, entry)

    def click_entry(self, name, entry, count=1):
        """Clicks an entry of a list box with the mouse."""
        entries = self.entries(name)
        index = entries.index(entry) if isinstance(entry, str) else entry
        self.program.driver.call("clickitem", self.control(name).handle, index, count)

    def row_count(self, name):
        return int(self.program.driver.call("rowcount", self.control(name).handle)[0][0])

    def rows(self, name, first=0, count=1000):
        return [ListRow(row[0] == "1", row[1] == "1", tuple(row[2:]))
                for row in self.program.driver.call("rows", self.control(name).handle, first, count)]

    def columns(self, name):
        return [text for text, _ in self.program.driver.call("columns", self.control(name).handle)]

    def click_row(self, name, index, part="label", count=1):
        """Clicks a row with the mouse: its label, or with part "tick" its check box."""
        self.program.driver.call("clickrow", self.control(name).handle, index, part, count)

    def drop(self, name, *paths):
        """Files and folders arrive as if dragged from the desktop."""
        self.program.driver.call("drop", self.control(name).handle, *paths)

    def panels(self, name):
        """The texts of a status bar."""
        return [row[0] for row in self.program.driver.call("panels", self.control(name).handle)]

    def progress(self, name):
        return int(self.program.driver.call("send", self.control(name).handle, PBM_GETPOS, 0, 0)[0][0])

    def command(self, form, name):
        """Chooses a menu command."""
        self.program.driver.call("post", self.handle, WM_COMMAND, control_ids(form)[name], 0)

    def close(self):
        self.program.driver.call("post", self.handle, WM_CLOSE, 0, 0)

    def device_change(self, event, letter):
        """Sent, as Windows does: posted it is refused."""
        self.program.driver.call("devicechange", self.handle, event, letter)

    def screenshot(self, path):
        self.program.workstation.display.screenshot(path, self.rectangle)


FORMS = {
    "frmMain": ("frmMain", "cmdSortie"),
    "frmBackup": ("frmBackup", "cmdLancer"),
    "frmRestaureCD": ("frmRestaureCD", "lvFichiersRepertoires"),
    "frmMotPasse": ("frmMotPasse", "txtMotPasse"),
    "frmInfoDisque": ("frmInfoDisque", "cmdRafraichir"),
    "frmEffacerCDRW": ("frmEffacerCDRW", "cmdEffacerCD"),
    "CheckWindow": ("CheckWindow", "Items"),
}
NESTED_FORMS = {"frmBackup": ("ctlSelectionFichiers", "ctlScan")}


class Program:
    """One run of the program on a workstation."""

    def __init__(self, workstation, executable="Backup.exe", arguments=""):
        self.workstation = workstation
        self.executable = executable
        self.driver = Driver(workstation)
        folder = workstation.program_folder
        separator = "" if folder.endswith("\\") else "\\"
        command = f'"{folder}{separator}{executable}" {arguments}'.rstrip()
        self.process_id = int(self.driver.call("start", folder, command)[0][0])

    def windows(self):
        found = []
        for row in self.driver.call("windows", self.process_id):
            handle, class_name, title, enabled, owner, *numbers = row
            left, top, width, height, *inside = map(int, numbers)
            found.append(Window(self, int(handle), class_name, title, enabled == "1", int(owner),
                                (left, top, width, height), inside))
        return found

    def exit_code(self):
        """None while the program runs."""
        state = self.driver.call("state", self.process_id)[0][0]
        return int(state) if state else None

    def wait(self, condition, description, seconds=DEFAULT_SECONDS, pause_seconds=0.02):
        """The first true value of a condition, which is asked again and again until the deadline."""
        deadline = time.monotonic() + seconds
        while True:
            try:
                value = condition()
                failure = None
            except (DriverError, NotSeen) as reason:
                value, failure = None, reason
            if value:
                return value
            if time.monotonic() > deadline:
                raise NotSeen(f"waited {seconds} s for {description}"
                              + (f" ({failure})" if failure else "") + f"; seen: {self.describe()}")
            time.sleep(pause_seconds)

    def describe(self):
        """What a person would see now, for failure messages."""
        exit_code = self.exit_code()
        if exit_code is not None:
            return f"the program has ended with {exit_code}"
        seen = []
        for window in self.windows():
            try:
                box = self._message_box(window)
            except DriverError as failure:
                box = f"window {window.title!r} ({failure})"
            seen.append(str(box) if box else f"window {window.title!r}{'' if window.enabled else ' (disabled)'}")
        return "; ".join(seen) or "no window"

    def window(self, form, seconds=DEFAULT_SECONDS):
        """The window of a form, once it is shown and can be used."""
        return self.wait(lambda: self.find_window(form, enabled=True), f"window {form}", seconds)

    def main_window(self, seconds=DEFAULT_SECONDS):
        """The main window once its start-up is over. Where the workstation has no image mastering, the program reports
        that it cannot make its disc writers; these reports are read and closed."""
        def usable():
            box = self.find_message_box()
            if box and "InitGraveur" in box.text:
                self.answer(IDOK)
            main = self.find_window("frmMain", enabled=True)
            return main if main and main.control("cmdBackup").enabled else None

        return self.wait(usable, "the main window", seconds)

    def find_window(self, form, enabled=False):
        name, landmark = FORMS[form]
        for window in self.windows():
            window.forms = (name, *[nested for nested in NESTED_FORMS.get(form, ()) if _form_exists(nested)])
            if window.class_name == "tooltips_class32" or (enabled and not window.enabled):
                continue
            numbers = control_ids(name)
            try:
                identities = {control.id for control in window.controls()}
            except DriverError:
                # It has closed since the list of windows was taken.
                continue
            if numbers[landmark] in identities and not self._message_box(window):
                if len(identities & set(numbers.values())) >= min(len(numbers), 4):
                    return window
        return None

    def _message_box(self, window):
        rows = self.driver.call("messagebox", window.handle)
        if not rows:
            return None
        text, icon, default_button = rows[0]
        return MessageBox(window.handle, window.title, text, icon, {int(id): text for id, text in rows[1:]},
                          int(default_button or 0))

    def find_message_box(self):
        for window in self.windows():
            box = self._message_box(window)
            if box:
                return box
        return None

    def message_box(self, seconds=DEFAULT_SECONDS):
        """The message box that is open, once there is one."""
        return self.wait(self.find_message_box, "a message box", seconds)

    def answer(self, button=IDOK, seconds=DEFAULT_SECONDS):
        """Presses a button of the open message box, waits until it is gone, and returns what it said."""
        box = self.message_box(seconds)
        if button not in box.buttons:
            raise NotSeen(f"no button {button} in {box}")
        for control in self.controls_of(box):
            if control.id == button:
                self.driver.call("click", control.handle)
        self.wait(lambda: all(window.handle != box.handle for window in self.windows()), f"the end of {box}")
        return box

    def controls_of(self, box):
        return Window(self, box.handle, "", box.title, True, 0, None).controls()

    def wait_exit(self, seconds=DEFAULT_SECONDS):
        self.wait(lambda: self.exit_code() is not None, "the end of the program", seconds)
        return self.exit_code()

    def pull_out(self, letter):
        """A disk goes while the program runs; what is on it stays and comes back with plug_in. The program is told
        nothing."""
        self.driver.call("drive", letter)

    def plug_in(self, letter):
        """A removable disk comes while the program runs. The program is told nothing."""
        folder = self.workstation.path(f"{letter}:")
        folder.mkdir(exist_ok=True)
        self.driver.call("drive", letter, folder)

    def usage(self):
        """Private bytes now and at their peak, handles, GDI objects and user objects."""
        return tuple(int(number) for number in self.driver.call("usage", self.process_id)[0])

    def stop(self):
        """Ends the program if it still runs, and the driver; nothing the second time."""
        if self.driver.has_ended():
            return
        try:
            if self.exit_code() is None:
                self.driver.call("kill", self.process_id)
        except DriverError:
            pass
        self.driver.stop()


def _form_exists(form):
    try:
        control_ids(form)
    except LookupError:
        return False
    return True
