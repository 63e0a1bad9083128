#pragma once

#include <cstdint>
#include <string>

/// The kinds of a selected item, as the control file tells them.
inline constexpr std::int32_t KindFile = 32;
inline constexpr std::int32_t KindFolder = -1;

/// One item to back up. `strNom` of a record that stands in a collection stays as it was added.
struct clsFileInfo {
    std::wstring strNom; ///< full path, without a trailing backslash
    std::int32_t lngType = KindFile;
    std::wstring strNomUnique; ///< the inner archive's name, once the control file is written
};
