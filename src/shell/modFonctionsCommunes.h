#pragma once

#include "core/Application.h"

#include <cstdint>
#include <string>
#include <vector>

namespace modFonctionsCommunes {

/// The type that stands for removable drives other than A and B.
constexpr std::int32_t RemovableButFloppies = 7;

/// The letters of the drives of a Windows drive type (or of RemovableButFloppies), in upper case and in the system's
/// order. One empty element when there is none: callers skip empty elements.
std::vector<std::wstring> GetDriveListByType(Application& app, std::int32_t type);

/// The native name of the user's default language, such as "français"; empty when the system gives none.
std::wstring pgRecupererLangueWindows(Application& app);

} // namespace modFonctionsCommunes
