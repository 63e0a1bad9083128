#pragma once

#include "platform/discs/DiscFamily.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What a progress event reports on.
enum class DiscOperation : std::int16_t {
    None = 0,
    EraseInProgress = 1,
    Erasing = 2,
    Preparing = 10,
    Writing = 11,
    Finished = 12,
};

/// The stage of DiscOperation::Writing.
enum class WritingStage : std::int16_t { FillingBuffer = 0, WritingTrack = 1, ClosingTrack = 2 };

/// NotAnswering: the drive is held, still loading or does not answer; there may be a disc in it.
enum class DiscPresence : std::int16_t { None = 0, Ready = 1, Unrecognized = 2, NotAnswering = 3 };

/// Media kind codes.
enum class MediaKind : std::int16_t {
    CdRom = 0,
    CdR = 1,
    CdRw = 2,
    DvdRom = 3,
    DvdPlusR = 4,
    DvdPlusRw = 5,
    DvdMinusR = 6,
    DvdMinusRw = 7,
    DvdRam = 8,
    DvdPlusRDl = 9,
    Other = 99,
};

enum class DiscStatus : std::int16_t { Blank = 0, Open = 1, Closed = 2, Unknown = 3 };

/// What a writer tells the window that made it. All calls arrive on the thread that created the writer, in the order
/// in which things happened, while that thread handles its messages; only the error of an operation that is refused at
/// once arrives inside the call that asked for it. A handler may shut the writer down and destroy it.
class DiscWriterEvents {
  public:
    virtual ~DiscWriterEvents() = default;
    /// `errCode` is the system's own code, or one of those below; `errDescr` is the system's text, empty where it has
    /// none.
    virtual void ErrorEx(std::int32_t errCode, const std::wstring& errDescr) = 0;
    /// The disc in the current drive is no longer the one that was read before.
    virtual void MediaChange() = 0;
    /// The disc is still the same, but something that is read of it has changed, or the drive is no longer busy.
    virtual void DiscReadAgain() = 0;
    /// The list of writers is no longer the one that was read before.
    virtual void WritersChange() = 0;
    virtual void OperationProgress(std::int16_t percent) = 0;
};

/// The two error codes that the windows do not show, because they have told the user already: the operation that was
/// stopped on request has ended, and an operation was asked for while the drive held no disc. A disc that is taken
/// out of the drive in the middle of an operation is an error with the system's own code.
constexpr std::int32_t DiscErrorAborted = -104;
constexpr std::int32_t DiscErrorNoDisc = -101;

/// An operation was asked for while the drive is still ending the one before.
constexpr std::int32_t DiscErrorBusy = static_cast<std::int32_t>(0xC0AA0400);

/// One disc-writer component: the drives of one disc family, one of them current (the first, until another is
/// selected). Used on the thread that created it. Failures of the drive never throw; they arrive as `ErrorEx`. What is
/// read of the disc is what the drive said last, so that no reading waits for it; without a disc every amount reads as
/// zero, the kind as Other and the status as Unknown. After `ShutDown` everything reads as if there were no drive, and
/// nothing else has an effect.
class DiscWriter {
  public:
    virtual ~DiscWriter() = default;

    /// Where events go; null for nowhere. Nothing arrives after the call that sets null.
    virtual void SetEvents(DiscWriterEvents* events) = 0;

    /// The operation that the event being handled reports on; between events, that of the last one. None when the
    /// writer is idle or was told to stop.
    virtual DiscOperation CurrentOperation() const = 0;
    virtual WritingStage CurrentStage() const = 0;
    /// Whether an operation would be refused: one runs, the drive is still ending one that was stopped, or the disc
    /// that the last one left has not been read yet.
    virtual bool IsBusy() const = 0;

    virtual DiscPresence Presence() const = 0;
    virtual MediaKind Kind() const = 0;
    virtual DiscStatus Status() const = 0;
    /// Whether the drive can write to the disc in its present state.
    virtual bool IsWritable() const = 0;
    /// The writer's own flag for a DVD that can be written now.
    virtual bool IsDvdReady() const = 0;
    virtual std::uint64_t UsedBytes() const = 0;
    virtual std::uint64_t TotalBytes() const = 0;
    virtual std::uint64_t FreeBytes() const = 0;

    /// The writer drives of this family, such as "VENDOR PRODUCT (G:)".
    virtual std::vector<std::wstring> WriterNames() const = 0;
    /// The index in WriterNames of the current drive; -1 when there is none, or it has gone.
    virtual int CurrentWriter() const = 0;
    /// Makes the drive at `index` (from 0) of WriterNames current and reads the disc in it; another index changes
    /// nothing. The window is repainted while the drive answers, but no click is handled. A drive that takes longer
    /// than a few seconds, or is still ending an operation, reads as not answering and tells its disc later.
    virtual void SelectWriter(int index) = 0;

    /// Asks for a write speed (multiples of the family's single speed); the drive settles on the nearest that it has
    /// for the disc, or, without a disc, on the nearest customary one. Costs no time: the drive is told at the write.
    virtual void SetWriteSpeed(double speed) = 0;
    /// The speed on which the drive settled; the fastest when none was asked for.
    virtual double WriteSpeed() const = 0;
    /// The label of the volume to be written; made acceptable where it is not.
    virtual void SetDiscLabel(const std::wstring& label) = 0;
    /// `label` as it would be written: as it is where the system takes it.
    virtual std::wstring AcceptedDiscLabel(const std::wstring& label) const = 0;
    /// Adds a file to the root of the image to be written, under its own name. It is read during the write. A file
    /// that cannot be read makes the write end in an error.
    virtual void AddFile(const std::wstring& path) = 0;

    /// Starts writing the files added since the last start (none is an empty disc) and returns; the rest runs under
    /// events, the last of which is progress of Finished or an error; then the disc is read again. Refused while busy.
    virtual void StartWrite() = 0;
    /// Asks the running operation to stop and returns; the writer is idle for the window at once, while the drive
    /// ends in its own time (an erase runs to its end) and is busy until then. Its last event is the error
    /// DiscErrorAborted, followed by what is read of the disc. Forgets the files that were added; otherwise nothing
    /// when no operation runs.
    virtual void Abort() = 0;
    /// Starts an erase and returns; quick clears the table of contents only. Progress of EraseInProgress follows,
    /// 100 when the disc is erased; then the disc is read again. Refused while busy.
    virtual void Erase(bool isQuick) = 0;
    /// Ends the component: no further event arrives. A running operation is stopped and waited for, while messages
    /// are handled. The destructor does the same.
    virtual void ShutDown() = 0;
};

/// Makes writer components.
class DiscWriters {
  public:
    virtual ~DiscWriters() = default;
    /// A new component, owned by the caller; a machine without a drive of this family gives one without writers.
    /// Throws 429 when the system's image mastering cannot be reached.
    virtual std::unique_ptr<DiscWriter> Create(DiscFamily family) = 0;
};
