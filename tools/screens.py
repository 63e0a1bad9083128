"""The screens that the windows have to fit, and the frame that Windows draws around a window's inside."""

import math

TASKBAR_PIXELS = 48
# Of Windows 10 and 11 at 96 dots an inch. Its caption and menu grow with the scale, and so does a frame to resize by.
CAPTION_PIXELS = 23
MENU_PIXELS = 20
FRAME_PIXELS = 3
SIZING_FRAME_PIXELS = 8

# Scale of the screen in percent to its size.
SCREENS = {100: (1366, 768), 125: (1366, 768), 150: (1920, 1080), 175: (1920, 1080), 200: (2560, 1440)}


def outer_size(window, scale):
    """What a window takes of the screen of a real Windows."""
    width, height = window.inner
    top = math.ceil(CAPTION_PIXELS * scale / 100) + (math.ceil(MENU_PIXELS * scale / 100) if window.has_menu else 0)
    frame = math.ceil(SIZING_FRAME_PIXELS * scale / 100) if window.is_sizable else FRAME_PIXELS
    return width + 2 * frame, height + top + 2 * frame


def room(scale):
    """What a screen leaves above its taskbar."""
    width, height = SCREENS[scale]
    return width, height - TASKBAR_PIXELS


def fits(outer, scale):
    return all(size <= limit for size, limit in zip(outer, room(scale)))


def size_table(sizes):
    """Name to scale to outer size, as lines to be read."""
    scales = sorted({scale for found in sizes.values() for scale in found})
    lines = ["outer sizes in pixels with the frame of Windows 10 and 11; * does not fit its screen",
             "window".ljust(24) + "".join(f"{scale} %".rjust(14) for scale in scales),
             "room".ljust(24) + "".join("{}x{}".format(*room(scale)).rjust(14) for scale in scales)]
    for name, found in sizes.items():
        cells = []
        for scale in scales:
            outer = found.get(scale)
            cells.append(("{}x{}".format(*outer) + ("" if fits(outer, scale) else "*") if outer else "").rjust(14))
        lines.append(name.ljust(24) + "".join(cells))
    return "\n".join(lines) + "\n"
