#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One line of a control file, ready to be restored.
struct ControlFileRecord {
    std::wstring restorePath; ///< where the item goes back to; mail stores go to a folder of their own
    std::wstring kind;        ///< as read: "32", "16" or "-1"
    std::wstring innerArchive;
    /// False for a line that no backup writes, whose parts must not stand in a command line.
    bool couldBeWritten = true;
};

/// Whether a path as a control file gives it, marker replaced, and the inner archive named for it can be a backup's
/// own: an absolute path of characters that names may have, without a piece that leads elsewhere, and "Zip" with a
/// number or the path itself. A path that would bring switches along is no inner archive's name.
bool CouldBeWritten(const std::wstring& path, const std::wstring& innerArchive);

/// Appends the records of a control file to `records`, one for each line that begins with a path. `bytes` is the whole
/// file; the number of commas on its first line tells three fields (two commas) from the older form with two, and
/// fields beyond these are dropped. Throws 62 when a line lacks a field; every record is there then, that one with what
/// it has.
void ReadControlFile(std::string_view bytes, const std::wstring& profileFolder,
                     std::vector<ControlFileRecord>& records);

/// Reads a control file of which the text comes in parts, each of whole lines, as the function above does.
class ControlFileReader {
  public:
    explicit ControlFileReader(const std::wstring& profileFolder) : profileFolder_(profileFolder) {}

    void Read(std::wstring text, std::vector<ControlFileRecord>& records);
    /// Throws what the function above does at its end.
    void Finish() const;

  private:
    std::wstring profileFolder_;
    std::optional<std::size_t> fieldCount_; ///< as the first line has it
    bool isAnyFieldMissing_ = false;
};

/// Where mail stores are restored to, with a trailing backslash.
inline constexpr const wchar_t* MailStoreFolder = L"c:\\ValcoreauxTechno\\OutlookBK\\";
