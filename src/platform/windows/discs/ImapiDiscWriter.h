#pragma once

#include "platform/MessageLoop.h"
#include "platform/discs/DiscProgress.h"
#include "platform/discs/DiscSpeeds.h"
#include "platform/discs/DiscWriter.h"
#include "platform/windows/discs/DiscEventQueue.h"
#include "platform/windows/discs/ImapiWorker.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// DiscWriter on the system's image mastering. This object lives on the thread of the windows and keeps what the worker
/// thread told it last; it never waits for a drive, except as DiscWriter says.
class ImapiDiscWriter final : public DiscWriter {
  public:
    /// `messageLoop` is run while `ShutDown` waits and must outlive the writer. Throws 429.
    ImapiDiscWriter(DiscFamily family, MessageLoop& messageLoop);
    ~ImapiDiscWriter() override;

    void SetEvents(DiscWriterEvents* events) override;
    DiscOperation CurrentOperation() const override { return progress_.operation; }
    WritingStage CurrentStage() const override { return progress_.stage; }
    bool IsBusy() const override { return isBusy_; }
    DiscPresence Presence() const override { return snapshot_.disc.presence; }
    MediaKind Kind() const override { return snapshot_.disc.kind; }
    DiscStatus Status() const override { return snapshot_.disc.status; }
    bool IsWritable() const override { return snapshot_.disc.isWritable; }
    bool IsDvdReady() const override { return snapshot_.disc.isDvdReady; }
    std::uint64_t UsedBytes() const override { return snapshot_.disc.usedBytes; }
    std::uint64_t TotalBytes() const override { return snapshot_.disc.totalBytes; }
    std::uint64_t FreeBytes() const override { return snapshot_.disc.freeBytes; }
    std::vector<std::wstring> WriterNames() const override { return names_; }
    int CurrentWriter() const override;
    void SelectWriter(int index) override;
    void SetWriteSpeed(double speed) override;
    double WriteSpeed() const override;
    void SetDiscLabel(const std::wstring& label) override { label_ = label; }
    std::wstring AcceptedDiscLabel(const std::wstring& label) const override;
    void AddFile(const std::wstring& path) override;
    void StartWrite() override;
    void Abort() override;
    void Erase(bool isQuick) override;
    void ShutDown() override;

  private:
    void OnEvent(const DiscEvent& event);
    void OnDrivesListed(const DiscEvent& event);
    void OnDriveRead(const DiscEvent& event);
    void OnOperationEnded(const DiscEvent& event);
    /// Whether an operation may begin; when it is refused, the window has been told.
    bool MayBegin();
    /// The worker has taken the last operation over.
    void Follow(DiscOperation operation);
    void SelectDrive(const std::wstring& id);
    void TakeList(const DiscEvent& event);
    /// Gives whether the disc is another one than before.
    bool TakeSnapshot(const DriveSnapshot& snapshot);
    void TellProgress(const DiscProgress& progress);

    DiscFamily family_;
    MessageLoop& messageLoop_;
    DiscWriterEvents* events_ = nullptr;
    std::shared_ptr<DiscEventQueue> queue_;
    std::unique_ptr<ImapiWorker> worker_;
    std::vector<std::wstring> names_;
    std::vector<std::wstring> ids_;
    std::wstring driveId_; ///< of the current drive
    int selection_ = 0;
    DriveSnapshot snapshot_;
    std::optional<DiscState> lastDisc_; ///< the last answer about the disc, or that there is none
    DiscSpeeds speeds_;
    std::optional<double> speed_;
    std::wstring label_;
    std::vector<std::wstring> files_;
    DiscProgress progress_;
    int lastOperation_ = 0;
    int running_ = 0;     ///< the operation that the window follows, 0 when none
    bool isBusy_ = false; ///< from the start of an operation until the disc that it left has been read
    /// Gone with the writer: a handler may destroy it.
    std::shared_ptr<int> life_ = std::make_shared<int>();
};

/// Makes ImapiDiscWriter.
class ImapiDiscWriters : public DiscWriters {
  public:
    explicit ImapiDiscWriters(MessageLoop& messageLoop) : messageLoop_(messageLoop) {}
    std::unique_ptr<DiscWriter> Create(DiscFamily family) override;

  private:
    MessageLoop& messageLoop_;
};
