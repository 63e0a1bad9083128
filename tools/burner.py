"""Virtual CD and DVD writers of a workstation. A drive is a folder below C:\\VirtualBurner\\drives with a small settings
file; the disc in it is a folder "disc" with its own settings, the burnt image and, below "volume", what the drive's letter
shows."""

import shutil
import uuid

from workstation import BINARIES

SERVER = r"C:\VirtualBurner\VirtualBurner.dll"
IMAGE_MASTERING_CLASSES = (
    "{2735412E-7F64-5B0F-8F00-5D77AFBE261E}",
    "{2735412D-7F64-5B0F-8F00-5D77AFBE261E}",
    "{2735412A-7F64-5B0F-8F00-5D77AFBE261E}",
    "{2735412B-7F64-5B0F-8F00-5D77AFBE261E}",
    "{2C941FC5-975B-59BE-A960-9A2A262853A5}",
)
CAPACITIES = {"CD": 736_962_560, "DVD": 4_700_372_992}
SPEEDS = {"CD": "48 32 16 8 4", "DVD": "16 8 4 2.4"}


def install_image_mastering(station):
    """Puts the virtual burner where Windows' image mastering would be, with no drive yet. Before the start."""
    target = station.path(SERVER)
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy2(BINARIES / "VirtualBurner.dll", target)
    for class_id in IMAGE_MASTERING_CLASSES:
        station.set_registry("system.reg", rf"Software\Classes\CLSID\{class_id}\InprocServer32",
                             '@="' + SERVER.replace("\\", "\\\\") + '"', '"ThreadingModel"="Both"')


class Burner:
    """One drive that writes, with at most one disc in it."""

    def __init__(self, station, letter, writes="cd", **settings):
        """Adds the drive to a workstation that has image mastering. Before the start."""
        self.folder = station.path(rf"C:\VirtualBurner\drives\{letter.upper()}")
        self.folder.mkdir(parents=True)
        self._settings = {"vendor": "VIRTUAL", "product": f"{writes.upper()} WRITER", "letter": letter.upper(),
                          "writes": writes}
        self.set(**settings)
        station.declare_drive(letter, "cdrom")
        (station.prefix / "dosdevices" / f"{letter.lower()}:").symlink_to(
            f"../drive_c/VirtualBurner/drives/{letter.upper()}/disc/volume")

    @property
    def disc(self):
        return self.folder / "disc"

    @property
    def image(self):
        return self.disc / "disc.iso"

    @property
    def volume(self):
        """What the drive's letter shows."""
        return self.disc / "volume"

    def set(self, **settings):
        """Changes how the drive behaves: fail_at=50, busy="yes", write_milliseconds=2000 and the like."""
        self._settings.update({name.replace("_", " "): value for name, value in settings.items()})
        write_settings(self.folder / "drive.ini", self._settings)

    def insert(self, kind="CD-R", state="blank", **settings):
        """Puts a disc in, in place of the one that may be there."""
        family = kind[:3].rstrip("-+")
        prepared = self.folder / "prepared"
        shutil.rmtree(prepared, ignore_errors=True)
        (prepared / "volume").mkdir(parents=True)
        disc = {"id": str(uuid.uuid4()), "kind": kind, "state": state, "capacity": CAPACITIES.get(family, 0), "speeds": SPEEDS.get(family, "")}
        disc.update(settings)
        write_settings(prepared / "disc.ini", disc)
        shutil.rmtree(self.disc, ignore_errors=True)
        prepared.rename(self.disc)

    def take_out(self):
        shutil.rmtree(self.folder / "outside", ignore_errors=True)
        self.disc.rename(self.folder / "outside")

    def disc_settings(self):
        pairs = (line.split("=", 1) for line in (self.disc / "disc.ini").read_text(encoding="utf-8").splitlines()
                 if "=" in line and not line.startswith("#"))
        return {name.strip(): value.strip() for name, value in pairs}


def write_settings(path, settings):
    written = path.with_suffix(".written")
    written.write_text("".join(f"{name} = {value}\n" for name, value in settings.items()), encoding="utf-8")
    written.rename(path)
