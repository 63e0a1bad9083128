#pragma once

#include "win32/UniqueHandle.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Keeps other processes of the burner out for as long as it lives.
class ProcessLock {
  public:
    explicit ProcessLock(const wchar_t* name);
    ~ProcessLock();
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;

  private:
    UniqueObject mutex_;
};

/// Held while a settings file is changed or a disc put in or taken out; the thread that holds it may do more of both.
inline constexpr wchar_t SettingsLockName[] = L"VirtualBurnerSettings";

/// A file of lines "key = value"; lines that begin with "#" are comments.
class SettingsFile {
  public:
    explicit SettingsFile(std::wstring path);

    bool Exists() const { return exists_; }
    std::string Text(const std::string& key, const std::string& otherwise = {}) const;
    std::int64_t Number(const std::string& key, std::int64_t otherwise = 0) const;
    std::optional<std::int64_t> OptionalNumber(const std::string& key) const;
    bool Flag(const std::string& key) const { return Text(key) == "yes"; }
    /// Changes one value on disk as well, leaving the other lines as they are by now; nothing when the file is gone, or
    /// by now is that of another disc.
    void Set(const std::string& key, const std::string& value);

  private:
    void Load();

    std::wstring path_;
    std::string id_; ///< of the disc; empty for a drive
    bool exists_ = false;
    std::vector<std::string> lines_;
    std::map<std::string, std::string> values_;
};

class VirtualDisc;

/// The folder of a drive and what its drive.ini says.
struct VirtualDrive {
    explicit VirtualDrive(const std::wstring& folder);

    std::wstring folder;
    SettingsFile settings;

    std::wstring DiscFolder() const { return folder + L"\\disc"; }
    std::vector<LONG> Profiles() const;
    /// The result with which every question about the disc fails; a success code when none does.
    HRESULT QueryResult() const;
    /// The result with which a question about the disc that is in is answered, after as long as the drive takes.
    HRESULT Answer(const VirtualDisc& disc) const;
    /// The result with which the drive is opened.
    HRESULT OpenResult() const;
    /// A write or an erase has ended: the drive needs its time before it answers again.
    void BecomeReadyAgain() const;
    /// Whether the drive is as stern as a real one in this respect.
    bool IsStern(const std::string& mode) const;
    /// A time that drive.ini may give; else the one of a stern drive, or none.
    std::int64_t Delay(const std::string& key, std::int64_t sternMilliseconds) const;
};

/// The disc in a drive as its disc.ini says.
class VirtualDisc {
  public:
    explicit VirtualDisc(const VirtualDrive& drive);

    bool IsPresent() const { return settings.Exists(); }
    LONG MediaType() const;
    /// As bits of image mastering.
    LONG State() const;
    bool IsOverwriteOnly() const;
    bool IsErasable() const;
    bool IsDvd() const;
    LONG TotalSectors() const;
    LONG FreeSectors() const;
    /// The first sector after everything that was written.
    LONG NextSector() const;
    LONG UsedSectors() const;
    /// Fastest first, in sectors per second.
    std::vector<LONG> Speeds() const;
    bool IsBlank() const { return settings.Text("state") == "blank"; }
    /// What the guess at blankness gives, after the time that it takes.
    bool LooksBlank() const;
    /// Whether a program holds something below the letter open.
    bool IsInUse() const;
    /// The letter shows nothing any more.
    void Unmount() const;

    std::wstring ImagePath() const { return folder + L"\\disc.iso"; }
    std::wstring VolumePath() const { return folder + L"\\volume"; }

    std::wstring folder;
    SettingsFile settings;

  private:
    std::int64_t blankTestMilliseconds_;
};

/// The folders of the drives, by name.
std::vector<std::wstring> DriveFolders();

/// The path of this server.
std::wstring ServerPath();

std::wstring Wide(const std::string& utf8);
std::string Narrow(const std::wstring& text);
