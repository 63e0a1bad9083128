#pragma once

#include <string>

/// What the main window finds out while it loads.
struct StartUpValues {
    std::wstring strRepRacine;      ///< parent of the program's folder, no trailing backslash
    double dblEspaceDisponible = 0; ///< bytes free on the program's drive
};
