#pragma once

#include "platform/Hold.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Windows' own drive types.
enum class DriveType : std::uint32_t {
    Unknown = 0,
    NoRoot = 1,
    Removable = 2,
    Fixed = 3,
    Network = 4,
    CdRom = 5,
    RamDisk = 6,
};

struct DriveSpace {
    double freeBytes = 0;
    double totalBytes = 0;
};

/// Drive letters and the volumes behind them. A root is written "E:\".
class Drives {
  public:
    virtual ~Drives() = default;
    /// Every drive root, in the order in which the system lists its drives.
    virtual std::vector<std::wstring> Roots() const = 0;
    virtual DriveType Type(const std::wstring& root) const = 0;
    /// Whether the letter is assigned to a drive, with or without a medium in it. Takes "E:\" or "E:".
    virtual bool Exists(const std::wstring& root) const = 0;
    /// The volume's label (possibly empty); nothing when no volume can be read.
    virtual std::optional<std::wstring> VolumeLabel(const std::wstring& root) const = 0;
    /// Free and total bytes of the volume. Throws 71 (disk not ready) when no volume can be read.
    virtual DriveSpace Space(const std::wstring& root) const = 0;
    /// Free clusters times cluster size of the volume, in bytes. Throws as `Space`.
    virtual double FreeClusterBytes(const std::wstring& root) const = 0;
    /// The name of the volume's file system, such as "FAT32"; empty when no volume can be read.
    virtual std::wstring FileSystemName(const std::wstring& root) const = 0;
    /// Whether the volume device of `letter` ("E") can be opened.
    virtual bool CanOpenVolume(const std::wstring& letter) const = 0;
    /// Lists the root folder once so that the drive wakes up; every failure is ignored and shows no box.
    virtual void Touch(const std::wstring& root) = 0;
    /// Keeps the other copies of the program on this computer, whoever started them, from changing the backup on the
    /// drive of that letter, until the hold is gone or the program ends. Null while one of them has it. Takes "E:\" or
    /// "E:". Throws what the platform meets.
    virtual std::unique_ptr<Hold> Claim(const std::wstring& root) = 0;
};
