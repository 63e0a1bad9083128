#pragma once

#include "platform/Drives.h"

class WindowsDrives : public Drives {
  public:
    WindowsDrives();
    std::vector<std::wstring> Roots() const override;
    DriveType Type(const std::wstring& root) const override;
    bool Exists(const std::wstring& root) const override;
    std::optional<std::wstring> VolumeLabel(const std::wstring& root) const override;
    DriveSpace Space(const std::wstring& root) const override;
    double FreeClusterBytes(const std::wstring& root) const override;
    std::wstring FileSystemName(const std::wstring& root) const override;
    bool CanOpenVolume(const std::wstring& letter) const override;
    void Touch(const std::wstring& root) override;
    std::unique_ptr<Hold> Claim(const std::wstring& root) override;
};
