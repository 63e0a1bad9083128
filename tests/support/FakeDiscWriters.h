#pragma once

#include "platform/RuntimeError.h"
#include "platform/discs/DiscWriter.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The disc in a stand-in drive, as plain data.
struct FakeDisc {
    DiscPresence presence = DiscPresence::None;
    MediaKind kind = MediaKind::Other;
    DiscStatus status = DiscStatus::Unknown;
    bool isWritable = false;
    bool isDvdReady = false;
    std::uint64_t usedBytes = 0;
    std::uint64_t totalBytes = 0;
    std::uint64_t freeBytes = 0;
};

/// A blank writable disc of `kind`, `totalBytes` large.
FakeDisc BlankDisc(MediaKind kind, std::uint64_t totalBytes);

struct FakeDiscDrive {
    std::wstring name;
    FakeDisc disc;
    /// Fastest first; a request settles on the nearest.
    std::vector<double> speeds{8, 4, 2, 1};
    bool acceptsEverySpeed = false;
};

struct FakeDiscError {
    std::int32_t code = 0;
    std::wstring text;
};

/// What a writer was asked to do; outlives the writer.
struct FakeDiscRecord {
    std::vector<std::wstring> calls;        ///< such as L"SelectWriter 0", L"AddFile C:\\a", L"StartWrite", L"Abort"
    std::vector<std::wstring> filesWritten; ///< of the last write started
    std::wstring label;
    double speed = 0;
    int created = 0;
    int shutDown = 0;
    int alive = 0;
};

class FakeDiscWriters;

/// A writer whose drives are the family's drives of a FakeDiscWriters. It plays an operation only as far as it is told:
/// the test raises each event, or `PlayToEnd` does.
class FakeDiscWriter : public DiscWriter {
  public:
    FakeDiscWriter(FakeDiscWriters& writers, DiscFamily family);
    ~FakeDiscWriter() override;

    void SetEvents(DiscWriterEvents* events) override;
    DiscOperation CurrentOperation() const override { return operation_; }
    WritingStage CurrentStage() const override { return stage_; }
    bool IsBusy() const override { return running_ != Running::Nothing; }
    DiscPresence Presence() const override { return Disc().presence; }
    MediaKind Kind() const override { return Disc().kind; }
    DiscStatus Status() const override { return Disc().status; }
    bool IsWritable() const override { return Disc().isWritable; }
    bool IsDvdReady() const override { return Disc().isDvdReady; }
    std::uint64_t UsedBytes() const override { return Disc().usedBytes; }
    std::uint64_t TotalBytes() const override { return Disc().totalBytes; }
    std::uint64_t FreeBytes() const override { return Disc().freeBytes; }
    std::vector<std::wstring> WriterNames() const override;
    int CurrentWriter() const override { return Drive() ? static_cast<int>(drive_) : -1; }
    void SelectWriter(int index) override;
    void SetWriteSpeed(double speed) override;
    double WriteSpeed() const override;
    void SetDiscLabel(const std::wstring& label) override;
    std::wstring AcceptedDiscLabel(const std::wstring& label) const override;
    void AddFile(const std::wstring& path) override;
    void StartWrite() override;
    void Abort() override;
    void Erase(bool isQuick) override;
    void ShutDown() override;

    /// Tells the window now; without a window nothing happens.
    void RaiseProgress(DiscOperation operation, std::int16_t percent, WritingStage stage = WritingStage::WritingTrack);
    void RaiseError(std::int32_t code, const std::wstring& text);
    void RaiseMediaChange();
    void RaiseDiscReadAgain();
    void RaiseWritersChange();
    /// Ends the running operation with an error, as a drive does.
    void FailOperation(std::int32_t code, const std::wstring& text);

    /// Plays what is left of the running operation, the drive's own end of a stopped one included.
    void PlayToEnd();
    /// Puts another disc into the current drive and says so when idle.
    void InsertDisc(const FakeDisc& disc);

  private:
    enum class Running { Nothing, Write, Erase, Stopping };

    FakeDiscDrive* Drive() const;
    const FakeDisc& Disc() const;
    bool MayStart();
    void Note(const std::wstring& call);

    FakeDiscWriters& writers_;
    DiscFamily family_;
    DiscWriterEvents* events_ = nullptr;
    DiscOperation operation_ = DiscOperation::None;
    WritingStage stage_ = WritingStage::FillingBuffer;
    Running running_ = Running::Nothing;
    std::size_t drive_ = 0;
    std::optional<double> speed_;
    std::vector<std::wstring> files_;
    bool isShutDown_ = false;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

/// Makes FakeDiscWriter. The drives may be changed at any time and must outlive the writers.
class FakeDiscWriters : public DiscWriters {
  public:
    std::unique_ptr<DiscWriter> Create(DiscFamily family) override;

    std::deque<FakeDiscDrive>& Drives(DiscFamily family) { return family == DiscFamily::Cd ? cdDrives : dvdDrives; }
    FakeDiscRecord& Record(DiscFamily family) { return family == DiscFamily::Cd ? cdRecord : dvdRecord; }
    /// The living writer of the family that was made last; null when there is none.
    FakeDiscWriter* Latest(DiscFamily family) { return family == DiscFamily::Cd ? cdWriter : dvdWriter; }

    std::deque<FakeDiscDrive> cdDrives;
    std::deque<FakeDiscDrive> dvdDrives;
    FakeDiscRecord cdRecord;
    FakeDiscRecord dvdRecord;
    FakeDiscWriter* cdWriter = nullptr;
    FakeDiscWriter* dvdWriter = nullptr;

    /// What the system makes of every label; empty: it takes each as it is.
    std::wstring acceptedLabel;
    /// Thrown by Create.
    std::optional<RuntimeError> createFailure;
    /// Raised inside the next StartWrite or Erase, which then does not start.
    std::optional<FakeDiscError> startError;
};
