#pragma once

#include <cstdint>

/// Whether USB devices are to be used: asked at most once in a run, by the detection.
struct UsbAnswer {
    std::int16_t blnQuestionUSB = 0; ///< 1 once it has been asked
    std::int16_t intReponseUSB = 0;  ///< 0 not answered, 6 yes, 7 no
};
