#pragma once

#include "core/Application.h"
#include "core/ProgressBar.h"

#include <cstdint>
#include <string>
#include <string_view>

class clsColFileInfo;

/// The name of the control file on every medium.
inline constexpr const wchar_t* ControlFileName = L"_listFich.lst";
/// The name of the outer archive on every medium.
inline constexpr const wchar_t* ArchiveName = L"OKRBACKUP.ZIP";

/// The name of the inner archive of the item at a position (from 1): "Zip" and at least four digits.
std::wstring InnerArchiveName(std::int32_t position);

/// Tells the content of one control file from that of another. `print` is that of what stood before, 0 at the start.
std::uint64_t ListPrint(std::string_view bytes, std::uint64_t print = 0);

/// Writes the control file of a backup.
class clsListe {
  public:
    explicit clsListe(Application& app) : app_(app) {}

    /// Writes one line per item to "_listFich.lst" in the user's Temp folder, gives every item its inner archive's
    /// name, and keeps the file's path as `listFilePath`, which stays empty when the file could not be written, and the
    /// print of its content. The bar moves with the items and ends at 0 with the bounds that it had. Failures are
    /// reported.
    void EnregistrerListeFichiers(clsColFileInfo& arrArray, ProgressBar& pbProgress);

  private:
    Application& app_;
};
