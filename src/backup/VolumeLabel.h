#pragma once

#include "core/Application.h"

#include <string>

/// The label proposed for a disc: today's date in the order of the program's language, with the month's name in the
/// user's.
std::wstring DefaultVolumeLabel(const Application& app);
