#pragma once

#include "platform/discs/DiscReading.h"
#include "platform/windows/discs/ComPointer.h"
#include "platform/windows/discs/DiscEventQueue.h"

#include <optional>
#include <string>
#include <vector>

/// One drive, held open by the thread that made it. A drive that cannot be opened is tried again with each reading.
class ImapiDrive {
  public:
    explicit ImapiDrive(const std::wstring& id) : id_(id) {}

    /// Opens the drive unless it is open.
    HRESULT Open();
    IDiscRecorder2* Recorder() const { return recorder_.Get(); }
    IDiscFormat2Data* Data() const { return data_.Get(); }

    /// Asks the drive about its disc. Slow questions are asked once per disc, what may still change of it until it has
    /// settled, and everything once more when the drive did not answer for a while.
    const DriveSnapshot& Read();
    /// Whether the last `Read` had an answer about the disc, or that there is none.
    bool HasAnswered() const { return snapshot_.disc.presence != DiscPresence::NotAnswering; }
    /// Makes the next `Read` ask everything.
    void Forget() {
        answers_.reset();
        snapshot_ = {};
        snapshot_.disc.presence = DiscPresence::NotAnswering;
    }

  private:
    /// What a drive answers at once, every second.
    DriveAnswers AskQuickly() const;
    /// Gives whether the drive had an answer to everything; it may have been taken in between.
    bool AskTheRest(DriveAnswers& answers) const;
    bool IsReadFor(const DriveAnswers& quickAnswers) const;
    void LookForVolume();
    /// What the volume mounted from a disc of `discBytes` takes of it; 0 when none is.
    std::uint64_t MountedVolumeBytes(std::uint64_t discBytes) const;
    std::vector<std::uint32_t> AskSpeeds() const;
    void Close();

    std::wstring id_;
    ComPointer<IDiscRecorder2> recorder_;
    ComPointer<IDiscFormat2Data> data_;
    std::wstring root_;
    std::optional<DriveAnswers> answers_; ///< of the disc that is in
    bool mayHaveChanged_ = false;         ///< the disc: the drive has not answered since it was read
    int unfinishedReadings_ = 0;          ///< how often in a row the drive was taken while it was asked
    int volumeLooks_ = 0;                 ///< how often a volume may still be looked for
    DriveSnapshot snapshot_;
};
