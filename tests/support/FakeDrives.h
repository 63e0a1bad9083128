#pragma once

#include "platform/Drives.h"

#include <set>

/// Drives as plain data.
class FakeDrives : public Drives {
  public:
    struct Drive {
        std::wstring root; ///< such as "E:\"
        DriveType type = DriveType::Fixed;
        std::optional<std::wstring> label; ///< nothing when no volume can be read
        DriveSpace space;
        bool canOpenVolume = true;
        bool canRead = true; ///< false when no medium is in
        std::wstring fileSystem = L"NTFS";
    };

    std::vector<Drive> drives;
    mutable std::vector<std::wstring> touched;

    Drive& Add(const std::wstring& root, DriveType type, std::optional<std::wstring> label = L"",
               DriveSpace space = {1e9, 2e9});
    void Remove(const std::wstring& root);
    /// The drive at `root` ("E:\" or "E:", any letter case), to be changed; null when there is none.
    Drive* At(const std::wstring& root);

    std::vector<std::wstring> Roots() const override;
    DriveType Type(const std::wstring& root) const override;
    bool Exists(const std::wstring& root) const override;
    std::optional<std::wstring> VolumeLabel(const std::wstring& root) const override;
    DriveSpace Space(const std::wstring& root) const override;
    double FreeClusterBytes(const std::wstring& root) const override;
    std::wstring FileSystemName(const std::wstring& root) const override;
    bool CanOpenVolume(const std::wstring& letter) const override;
    void Touch(const std::wstring& root) override;
    /// A claim may not outlive these drives.
    std::unique_ptr<Hold> Claim(const std::wstring& root) override;

  private:
    const Drive* Find(const std::wstring& root) const;

    std::set<wchar_t> claimed_; ///< letters, upper case
};
