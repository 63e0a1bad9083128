#pragma once

#include <cstdint>

/// What `InitLangue` settles once, before the first caption is set.
struct LanguageValues {
    std::int32_t lngLangue = 0;    ///< 0 French, 10000 English
    bool blnLangueWindows = false; ///< the language came from Windows, because the settings gave none
};
