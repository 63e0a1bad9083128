#pragma once

#include <cstdint>
#include <string>

/// What `InitLangue` settles once, before the first caption is set.
struct LanguageValues {
    std::int32_t lngLangue = 0;    ///< 0 French, 10000 English
    bool blnLangueWindows = false; ///< the language came from Windows, because the settings gave none

    // Made while there is memory, for the moment when there is too little to make a report.
    std::wstring memoryReport;
    std::wstring memoryReportTitle;
};
