#pragma once

#include "platform/discs/DiscReading.h"
#include "platform/discs/DiscWriter.h"
#include "platform/windows/discs/ComPointer.h"
#include "platform/windows/discs/DiscEventQueue.h"

#include <string>
#include <vector>

/// A writer drive as image mastering lists it.
struct ImapiDriveEntry {
    std::wstring id;   ///< opaque, the system's key
    std::wstring name; ///< vendor and product, then the drive letter in parentheses
};

/// The drives that write discs of `family`; a failure only when image mastering cannot be reached.
std::vector<ImapiDriveEntry> ListImapiDrives(DiscFamily family, HRESULT& result);

/// One drive, held open by the thread that made it.
class ImapiDrive {
  public:
    /// Whether the drive answers is told by `IsOpen`.
    explicit ImapiDrive(const std::wstring& id);

    bool IsOpen() const { return static_cast<bool>(data_); }
    IDiscRecorder2* Recorder() const { return recorder_.Get(); }
    IDiscFormat2Data* Data() const { return data_.Get(); }

    /// Asks the drive about its disc. Slow questions are asked again only when the quick ones have another answer.
    const DriveSnapshot& Read();
    /// Makes the next `Read` ask everything.
    void Forget() { isStale_ = true; }

  private:
    /// What a drive answers at once, every second.
    DriveAnswers AskQuickly() const;
    void AskTheRest(DriveAnswers& answers) const;
    bool IsReadFor(const DriveAnswers& quickAnswers) const;
    /// What the volume mounted from a disc of `discBytes` takes of it; 0 when none is.
    std::uint64_t MountedVolumeBytes(std::uint64_t discBytes) const;
    std::vector<std::uint32_t> AskSpeeds() const;

    ComPointer<IDiscRecorder2> recorder_;
    ComPointer<IDiscFormat2Data> data_;
    std::wstring root_;
    std::optional<DriveAnswers> answers_;
    bool isStale_ = false;
    DriveSnapshot snapshot_;
};
