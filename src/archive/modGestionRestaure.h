#pragma once

#include "core/Application.h"

#include <cstdint>
#include <string>

/// Opens the two levels of a backup's archive.
namespace modGestionRestaure {

/// What the archiver answers when the password is wrong.
constexpr std::int32_t WrongPassword = 2;

/// Extracts the outer archive `nom` of a drive root such as "E:\" into the work folder with the backup password, over
/// whatever is there. Gives the archiver's exit code; 0 after a failure, which is reported.
std::int32_t UnZipOkrBackup(Application& app, const std::wstring& lecteur, const std::wstring& nom);

/// Extracts an inner archive from the work folder into the folder that holds `cheminRestauration`. Gives the archiver's
/// exit code; 0 after a failure, which is reported.
std::int32_t UnZipIntermediaire(Application& app, const std::wstring& cheminRestauration,
                                const std::wstring& nomArchive);

/// Whether the volume of a drive letter such as "E" can be opened: it tells a CD/DVD-ROM drive from a CD writer.
bool CanOpenDrive(const Application& app, const std::wstring& letter);

} // namespace modGestionRestaure
