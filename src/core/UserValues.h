#pragma once

#include <string>

/// Who uses the program, as read once before the first window.
struct UserValues {
    std::wstring strProfilUtilisateur; ///< the profile folder, no trailing backslash
    std::wstring strNomUtilisateur;    ///< the last part of the profile folder
    std::wstring accountName;
};
