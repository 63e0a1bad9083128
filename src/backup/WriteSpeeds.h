#pragma once

#include "platform/discs/DiscWriter.h"

#include <string>
#include <vector>

/// An entry of the list of write speeds.
struct WriteSpeed {
    std::wstring text;
    double speed = 0; ///< the number that the text shows
};

/// The whole speeds that a CD writer takes as they are asked for, fastest first. Leaves the writer at the last one
/// asked for.
std::vector<WriteSpeed> ProbeCdSpeeds(DiscWriter& writer);

/// The speeds on which a DVD writer settles, each once, in the order in which they came up. Leaves the writer at the
/// last one asked for.
std::vector<WriteSpeed> ProbeDvdSpeeds(DiscWriter& writer, const std::wstring& decimalSeparator);
