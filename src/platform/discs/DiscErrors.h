#pragma once

#include <cstdint>
#include <string>

/// The text of a failure of image mastering, for a system that gives none; empty for a code that is not known.
std::wstring DiscErrorText(std::uint32_t result);
