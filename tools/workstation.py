"""A Windows workstation on this machine: a Wine prefix of its own, its drives, and a display.

The prefix is made once as a template and copied for each workstation. A copy shares the system's files with the template
by hard links, which Wine never writes to, so a copy costs a few milliseconds.
"""

import atexit
import functools
import os
import shutil
import subprocess
import tempfile
import time
from dataclasses import replace
from pathlib import Path

from surroundings import UNIX_LOCALES, Surroundings

PROJECT = Path(__file__).resolve().parent.parent
BUILD = PROJECT / "build"
BINARIES = BUILD / "windows" / "bin"
TEMPLATE = BUILD / "workstation" / "template"
LOCALES = BUILD / "workstation" / "locale"
# Where the packages put the fonts that Windows has, Wine's own Tahoma among them.
FONTS = Path("/usr/share/wine/fonts")

ACCOUNT = "agent"
INSTALL_FOLDER = r"C:\Valcoreaux\Backup"
HELP_DOCUMENTS = ("Copie de Sauvegarde.pdf", "Backup.pdf")
DRIVE_KINDS = {"removable": "floppy", "fixed": "hd", "cdrom": "cdrom", "network": "network"}


class CannotHave(Exception):
    """The machine refuses what was asked for, such as mounting a small disk without root rights."""


def _wine_tool(name):
    for candidate in (shutil.which(name), f"/usr/lib/wine/{name}", f"/usr/lib/wine/{name}64"):
        if candidate and os.access(candidate, os.X_OK):
            return candidate
    raise CannotHave(f"there is no {name} on this machine")


@functools.cache
def _if_allowed(*command):
    """A command that starts another one, where this machine lets it; otherwise nothing."""
    is_allowed = subprocess.run([*command, "true"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                check=False).returncode == 0
    return command if is_allowed else ()


def _conditions():
    """The start of a command line whose processes run as an agent's would.

    They get the same addresses each time: with random ones the heap of one process in some thousands lies where Wine must
    put a page of its own, and that process does not start. And they are refused what an ordinary account is refused: root
    may write to files that are read-only, and read those of others.
    """
    dropped = "-dac_override,-dac_read_search"
    return [*_if_allowed("setarch", "--addr-no-randomize"),
            *_if_allowed("setpriv", f"--bounding-set={dropped}", f"--inh-caps={dropped}")]


def _base_environment(prefix):
    environment = {key: value for key, value in os.environ.items() if not key.startswith(("LC_", "LANG", "WINE"))}
    environment.update(
        WINEPREFIX=str(prefix),
        WINEDEBUG="-all",
        WINEDLLOVERRIDES="mscoree,mshtml=",
        USER=ACCOUNT,
        LOGNAME=ACCOUNT,
        LOCPATH=str(LOCALES),
        LC_ALL="C.UTF-8",
        # A disk that happens to be plugged into this machine must not become a drive of the workstation.
        DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nonexistent",
    )
    environment.pop("DISPLAY", None)
    return environment


def _make_locales():
    """Locales under which Wine reports the language and still maps file names with accents."""
    for locale in UNIX_LOCALES:
        if (LOCALES / locale).is_dir():
            continue
        LOCALES.mkdir(parents=True, exist_ok=True)
        scratch = LOCALES.with_name(f"locale.{locale}.{os.getpid()}")
        subprocess.run(["localedef", "-i", locale.split(".")[0], "-f", "UTF-8", str(scratch)], check=True)
        _publish(scratch, LOCALES / locale)


def _publish(scratch, finished):
    try:
        scratch.rename(finished)
    except OSError:
        # Another process was quicker; its result is as good.
        shutil.rmtree(scratch)


def _make_template():
    if TEMPLATE.is_dir():
        return
    scratch = TEMPLATE.with_name(f"template.{os.getpid()}")
    scratch.mkdir(parents=True)
    environment = _base_environment(scratch)
    try:
        subprocess.run([*_conditions(), _wine_tool("wineboot"), "-i"], env=environment, check=True, timeout=180,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        subprocess.run([_wine_tool("wineserver"), "-w"], env=environment, check=True, timeout=60)
    except (subprocess.SubprocessError, OSError) as failure:
        shutil.rmtree(scratch, ignore_errors=True)
        raise CannotHave(f"a Windows environment cannot be made: {failure}") from failure
    # Wine points the profile's folders at this account's own; the workstation has its own ones.
    for folder, _, _ in os.walk(scratch / "drive_c"):
        for entry in list(os.scandir(folder)):
            if entry.is_symlink():
                os.unlink(entry.path)
                os.mkdir(entry.path)
    for device in list(os.scandir(scratch / "dosdevices")):
        if device.name != "c:":
            os.unlink(device.path)
    (scratch / "drive_c" / "users" / ACCOUNT / "Documents").mkdir(parents=True, exist_ok=True)
    _publish(scratch, TEMPLATE)


def _add_fonts():
    """The fonts stand where Windows has its own: Wine 8 looks for its packaged ones in a folder where they are not, and
    shows every window in another font than users have, without a word."""
    target = TEMPLATE / "drive_c" / "windows" / "Fonts"
    target.mkdir(exist_ok=True)
    for font in FONTS.glob("*.ttf"):
        if not (target / font.name).exists():
            scratch = target / f"{font.name}.{os.getpid()}"
            shutil.copy2(font, scratch)
            scratch.rename(target / font.name)
    if not (target / "tahoma.ttf").exists():
        raise CannotHave(f"there is no Tahoma in {FONTS}: the windows would be shown in another font than users have")


def prepare():
    """Makes what all workstations share, unless it is there already."""
    _make_locales()
    _make_template()
    _add_fonts()


def _copy_template(target):
    target.mkdir(parents=True)
    for entry in os.scandir(TEMPLATE):
        if entry.name != "drive_c":
            destination = target / entry.name
            if entry.is_dir(follow_symlinks=False):
                shutil.copytree(entry.path, destination, symlinks=True)
            else:
                shutil.copy2(entry.path, destination)
    shutil.copytree(TEMPLATE / "drive_c", target / "drive_c", symlinks=True, copy_function=os.link)


class Display:
    """A virtual display with a window manager; where there is a real one, it is left alone."""

    def __init__(self, size="1280x1024", dots_per_inch=96):
        reader, writer = os.pipe()
        self._folder = tempfile.TemporaryDirectory(prefix="display-")
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{size}x24", "-dpi", str(dots_per_inch),
             "-nolisten", "tcp", "-noreset"],
            pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as stream:
            number = stream.readline().strip()
        if not number:
            raise CannotHave("the virtual display Xvfb does not start")
        self.name = f":{number}"
        self._manager = subprocess.Popen(
            ["openbox", "--sm-disable"], env=dict(os.environ, DISPLAY=self.name, HOME=self._folder.name,
                                                  XDG_CONFIG_HOME=self._folder.name, XDG_CACHE_HOME=self._folder.name),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        atexit.register(self.stop)
        self._wait_for_manager()

    def _wait_for_manager(self):
        deadline = time.monotonic() + 10
        while time.monotonic() < deadline:
            answer = subprocess.run(["xprop", "-display", self.name, "-root", "_NET_SUPPORTING_WM_CHECK"],
                                    capture_output=True, text=True, check=False)
            if "window id" in answer.stdout:
                return
            time.sleep(0.02)
        raise CannotHave("the window manager openbox does not start")

    def screenshot(self, path, rectangle=None):
        command = ["import", "-display", self.name, "-window", "root"]
        if rectangle:
            left, top, width, height = rectangle
            command += ["-crop", f"{width}x{height}+{max(left, 0)}+{max(top, 0)}", "+repage"]
        Path(path).parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(command + [str(path)], check=True)

    def stop(self):
        atexit.unregister(self.stop)
        for process in (self._manager, self._server):
            process.terminate()
            process.wait()
        self._folder.cleanup()


class Workstation:
    """One workstation, from its folder on the disk to its running Wine server."""

    def __init__(self, folder, language="fr", display=None, program_folder=INSTALL_FOLDER, scale_percent=100,
                 keep=False, has_program=True, surroundings=None):
        """Lays out a workstation in a folder that does not exist yet, or takes up the one that is kept there. The display
        is borrowed."""
        prepare()
        self.prefix = Path(folder).resolve()
        self.display = display
        self.program_folder = program_folder
        self._mounts = []
        if not keep:
            _copy_template(self.prefix)
        atexit.register(self.stop)
        self.environment = _base_environment(self.prefix)
        self.surround(surroundings or Surroundings(language))
        if display:
            self.environment["DISPLAY"] = display if isinstance(display, str) else display.name
        self.profile = self.path(rf"C:\users\{ACCOUNT}")
        self.documents = self.profile / "Documents"
        # Newer releases of Wine put it where Windows has it.
        self.temp = next(folder for folder in (self.profile / "AppData/Local/Temp", self.profile / "Temp") if folder.is_dir())
        if scale_percent != 100:
            self.set_registry("user.reg", r"Control Panel\Desktop",
                               f'"LogPixels"=dword:{96 * scale_percent // 100:08x}')
        self.path(r"C:\Tools").mkdir(exist_ok=True)
        if has_program:
            self.install()

    def install(self):
        """Puts the program and the archiver where the installer puts them."""
        target = self.path(self.program_folder)
        target.mkdir(parents=True, exist_ok=True)
        for name in ("Backup.exe", "7Za.exe"):
            shutil.copy2(BINARIES / name, target / name)
        if (BINARIES / "BackupCheck.exe").exists():
            shutil.copy2(BINARIES / "BackupCheck.exe", target / "BackupCheck.exe")
        # The program finds its help documents in this folder wherever it lies itself, and does without them.
        help_folder = self.path(INSTALL_FOLDER)
        for document in HELP_DOCUMENTS:
            if (BUILD / "packaging" / document).exists():
                help_folder.mkdir(parents=True, exist_ok=True)
                shutil.copy2(BUILD / "packaging" / document, help_folder / document)
        shutil.copy2(BINARIES / "uidriver.exe", self.path(r"C:\Tools") / "uidriver.exe")

    def path(self, windows_path):
        """The place on this machine of an absolute Windows path; letters stand as they were given."""
        drive, _, rest = windows_path.partition(":")
        root = self.prefix / "drive_c" if drive.lower() == "c" else self.prefix / f"drive_{drive.lower()}"
        return root.joinpath(*[piece for piece in rest.split("\\") if piece])

    def windows_path(self, path):
        """The Windows path of a file in one of the workstation's drives."""
        drive, *pieces = Path(path).relative_to(self.prefix).parts
        return f"{drive[-1].upper()}:\\" + "\\".join(pieces)

    def surround(self, surroundings):
        """What Windows says of itself. Before the start."""
        self.surroundings = surroundings
        self.environment.pop("LC_ALL", None)
        self.environment.update(surroundings.environment())
        if surroundings.international():
            self.set_registry("user.reg", r"Control Panel\International", *surroundings.international())
        if surroundings.version:
            self.set_windows_version(surroundings.version)

    def set_user_language(self, language):
        self.surround(replace(self.surroundings, language=language))

    def set_settings_language(self, value):
        """Writes the language number into the sibling application's settings file."""
        folder = self.path(self.program_folder).parent / "Accueil"
        folder.mkdir(exist_ok=True)
        (folder / "accueil.ini").write_bytes(f"[ACCUEIL-DEFAULTS]\r\nLang={value}\r\n".encode(self.surroundings.encoding))

    def set_windows_version(self, name):
        """The reported version: winxp64, win7, win10 and so on."""
        self.set_registry("user.reg", r"Software\Wine", f'"Version"="{name}"')

    def add_usb_storage(self, device="Disk&Ven_Valcoreaux&Prod_Stick", instance="0001&0"):
        """A USB mass-storage device among the machine's devices."""
        self.set_registry("system.reg", rf"System\CurrentControlSet\Enum\USBSTOR\{device}\{instance}",
                           '"Service"="USBSTOR"', '"ClassGUID"="{4d36e967-e325-11ce-bfc1-08002be10318}"')

    def add_drive(self, letter, kind="removable", label=None, size_megabytes=None):
        """A drive with an empty folder behind it; with a size, a small file system of its own. Before the start, or while
        the program runs when the letter was known before."""
        folder = self.path(f"{letter}:")
        folder.mkdir(exist_ok=True)
        if size_megabytes:
            self._mount(folder, size_megabytes)
        if label:
            (folder / ".windows-label").write_text(label + "\n", encoding="utf-8")
        self.declare_drive(letter, kind)
        self.plug_in(letter)
        return folder

    def declare_drive(self, letter, kind):
        self.set_registry("system.reg", r"Software\Wine\Drives", f'"{letter.lower()}:"="{DRIVE_KINDS[kind]}"')

    def plug_in(self, letter):
        (self.prefix / "dosdevices" / f"{letter.lower()}:").symlink_to(f"../drive_{letter.lower()}")

    def pull_out(self, letter):
        """The drive goes; what is on it stays and comes back with plug_in."""
        (self.prefix / "dosdevices" / f"{letter.lower()}:").unlink()

    def medium_files(self, letter):
        """The names at the root of a drive, without what stands for its volume label."""
        return sorted(name for name in os.listdir(self.path(f"{letter}:")) if name != ".windows-label")

    def _mount(self, folder, size_megabytes):
        done = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size_megabytes}m", "tmpfs", str(folder)],
                              capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise CannotHave(f"a small disk cannot be mounted here: {done.stderr.strip()}")
        self._mounts.append(folder)

    def set_registry(self, file, key, *lines):
        """Adds values to a hive, in the form of its file. Before the start."""
        # The hive is a text file that is read when the server starts; a key given twice is merged.
        escaped = key.replace("\\", "\\\\")
        with open(self.prefix / file, "a", encoding="utf-8") as hive:
            hive.write(f"\n[{escaped}] 1\n" + "".join(line + "\n" for line in lines))

    def processes(self, *names):
        """Process ids of the Windows programs of these names that run on the workstation; names in small letters, without
        what follows the dot."""
        found = []
        mark = f"WINEPREFIX={self.prefix}\0".encode()
        for process in Path("/proc").iterdir():
            try:
                if not process.name.isdigit() or mark not in (process / "environ").read_bytes():
                    continue
                command = (process / "cmdline").read_bytes().split(b"\0")[0].decode(errors="replace")
            except OSError:
                continue
            if command.replace("/", "\\").rsplit("\\", 1)[-1].lower().removesuffix(".exe") in names:
                found.append(int(process.name))
        return found

    def wine_command(self, *arguments):
        return [*_conditions(), _wine_tool("wine"), *arguments]

    def stop(self):
        """Ends everything that runs on the workstation."""
        atexit.unregister(self.stop)
        subprocess.run([_wine_tool("wineserver"), "-k"], env=self.environment, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        subprocess.run([_wine_tool("wineserver"), "-w"], env=self.environment, check=False, timeout=60,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for folder in self._mounts:
            subprocess.run(["umount", "-l", str(folder)], check=False)
        self._mounts.clear()

    def wait_until_idle(self, seconds=60):
        """Waits until every program on it has ended; what they wrote to the registry is then in its files."""
        subprocess.run([_wine_tool("wineserver"), "-w"], env=self.environment, check=True, timeout=seconds)

    def remove(self):
        """Ends the workstation and deletes it."""
        self.stop()
        for attempt in range(5):
            try:
                shutil.rmtree(self.prefix)
                return
            except OSError:
                if attempt == 4:
                    raise
                time.sleep(0.1)
