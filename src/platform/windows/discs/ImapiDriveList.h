#pragma once

#include "platform/discs/DiscFamily.h"
#include "platform/windows/discs/ComPointer.h"

#include <optional>
#include <string>
#include <vector>

/// A writer drive as image mastering lists it.
struct ImapiDriveEntry {
    std::wstring id;   ///< opaque, the system's key
    std::wstring name; ///< vendor and product, then the drive letter in parentheses

    bool operator==(const ImapiDriveEntry&) const = default;
};

/// The drives that write discs of one family. Used by the thread that made it.
class ImapiDriveList {
  public:
    explicit ImapiDriveList(DiscFamily family) : family_(family) {}

    /// Looks for drives that came, went or did not answer before; gives whether the list has changed.
    bool Refresh();
    const std::vector<ImapiDriveEntry>& Writers() const { return writers_; }
    /// A failure only when image mastering cannot be reached.
    HRESULT Result() const { return result_; }

  private:
    struct Drive {
        std::wstring id;
        bool hasAnswered = false;
        std::optional<ImapiDriveEntry> writer; ///< nothing when it writes no discs of the family
    };

    std::optional<std::vector<std::wstring>> Ids();
    Drive Asked(const std::wstring& id, IDiscFormat2Data* data) const;

    DiscFamily family_;
    std::vector<Drive> drives_;
    std::vector<ImapiDriveEntry> writers_;
    HRESULT result_ = S_OK;
};

/// The drive's root, such as "G:\"; empty when it has no letter.
std::wstring RootOf(IDiscRecorder2* recorder);

/// The recorder of a drive; null while it cannot be had, the reason being in `result`.
ComPointer<IDiscRecorder2> OpenRecorder(const std::wstring& id, HRESULT& result);
