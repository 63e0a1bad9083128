"""The colours that a Windows user may have chosen: two contrast schemes, and the dark setting for applications."""

BLACK_ON_WHITE = {"0 0 0": "WindowText ButtonText MenuText InfoText WindowFrame ButtonDkShadow TitleText Hilight "
                           "ActiveBorder InactiveTitleText ButtonShadow",
                  "255 255 255": "Window ButtonFace Menu MenuBar InfoWindow HilightText Background AppWorkSpace "
                                 "ActiveTitle GradientActiveTitle InactiveTitle GradientInactiveTitle InactiveBorder "
                                 "Scrollbar ButtonAlternateFace MenuHilight",
                  "192 192 192": "ButtonHilight ButtonLight",
                  "96 0 0": "GrayText",
                  "0 0 159": "HotTrackingColor"}
WHITE_ON_BLACK = {"255 255 255": "WindowText ButtonText MenuText InfoText WindowFrame ButtonDkShadow TitleText "
                                 "ActiveBorder InactiveTitleText ButtonHilight ButtonShadow",
                  "0 0 0": "Window ButtonFace Menu MenuBar InfoWindow HilightText Background AppWorkSpace "
                           "ActiveTitle GradientActiveTitle InactiveTitle GradientInactiveTitle InactiveBorder "
                           "Scrollbar ButtonLight ButtonAlternateFace",
                  "26 235 255": "Hilight MenuHilight",
                  "63 242 63": "GrayText",
                  "255 255 0": "HotTrackingColor"}

SCHEMES = {"black": WHITE_ON_BLACK, "white": BLACK_ON_WHITE, "dark": None}


def apply_scheme(station, name):
    """Gives a workstation a scheme. Before the start."""
    colours = SCHEMES[name]
    if colours is None:
        station.set_registry("user.reg", r"Software\Microsoft\Windows\CurrentVersion\Themes\Personalize",
                             '"AppsUseLightTheme"=dword:00000000', '"SystemUsesLightTheme"=dword:00000000')
        return
    # A contrast scheme ends the themes: every control is drawn in the system's colours.
    station.set_registry("user.reg", r"Software\Microsoft\Windows\CurrentVersion\ThemeManager", '"ThemeActive"="0"')
    station.set_registry("user.reg", r"Control Panel\Accessibility\HighContrast", '"Flags"="127"')
    station.set_registry("user.reg", r"Control Panel\Colors",
                         *[f'"{name}"="{colour}"' for colour, names in colours.items() for name in names.split()])
