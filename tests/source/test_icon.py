"""The sizes in which Windows asks for the program's icon: for each scale of the screen a small and a large one."""

import struct
import unittest
from pathlib import Path

ICON = Path(__file__).resolve().parent.parent.parent / "src" / "resources" / "Backup.ico"


class IconTest(unittest.TestCase):
    def test_it_is_drawn_for_every_scale(self):
        content = ICON.read_bytes()
        _, kind, count = struct.unpack("<HHH", content[:6])
        self.assertEqual(kind, 1)
        sizes = [content[6 + 16 * entry] or 256 for entry in range(count)]
        self.assertEqual(sizes, [16, 20, 24, 32, 40, 48, 64, 256])


if __name__ == "__main__":
    unittest.main()
