#pragma once

#include "Report.h"
#include "Stick.h"
#include "WorkFolder.h"

namespace kit {

/// Installs the program (Windows asks for an administrator), tries it as the person does, and removes it again. Nothing
/// of that happens where C:\Valcoreaux\Backup exists: what is installed is not the kit's.
void TryInstallation(const std::filesystem::path& setup, const WorkFolder& work, Stick& stick, Report& report);

} // namespace kit
