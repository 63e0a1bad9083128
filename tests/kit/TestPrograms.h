#pragma once

#include "Report.h"

#include <filesystem>
#include <string>

namespace kit {

/// Runs one of the test programs with a filter and notes each of its tests. Its output goes to a file in `scratch`.
void RunTests(const std::filesystem::path& program, const std::wstring& filter, const std::filesystem::path& scratch,
              Report& report);

} // namespace kit
