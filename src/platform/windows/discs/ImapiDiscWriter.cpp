#include "platform/windows/discs/ImapiDiscWriter.h"

#include "platform/RuntimeError.h"
#include "platform/discs/DiscErrors.h"
#include "platform/discs/MasteringCodes.h"

#include <utility>

namespace {

constexpr DWORD SelectMilliseconds = 3000;
constexpr DWORD EndLookMilliseconds = 15;

} // namespace

ImapiDiscWriter::ImapiDiscWriter(DiscFamily family, MessageLoop& messageLoop)
    : family_(family), messageLoop_(messageLoop),
      queue_(std::make_shared<DiscEventQueue>([this](const DiscEvent& event) { OnEvent(event); })),
      worker_(std::make_unique<ImapiWorker>(family, *queue_)), speeds_(family) {
    const auto listed =
        queue_->WaitFor([](const DiscEvent& event) { return event.kind == DiscEvent::Kind::DrivesListed; }, INFINITE);
    if (FAILED(listed->result)) throw RuntimeError(ErrorNumber::CannotCreateObject);
    names_ = listed->names;
    SelectWriter(0);
}

ImapiDiscWriter::~ImapiDiscWriter() {
    ShutDown();
}

void ImapiDiscWriter::SetEvents(DiscWriterEvents* events) {
    if (worker_) events_ = events;
}

void ImapiDiscWriter::SelectWriter(int index) {
    if (!worker_ || index < 0 || static_cast<std::size_t>(index) >= names_.size()) return;
    const int selection = ++selection_;
    TakeSnapshot({});
    worker_->SelectDrive(index, selection);
    if (isBusy_) return;
    const auto queue = queue_;
    const std::weak_ptr<int> life = life_;
    const auto read = queue->WaitFor(
        [selection](const DiscEvent& event) {
            return event.kind == DiscEvent::Kind::DriveRead && event.selection == selection;
        },
        SelectMilliseconds);
    if (read && !life.expired() && worker_ && selection == selection_) TakeSnapshot(read->snapshot);
}

void ImapiDiscWriter::TakeSnapshot(const DriveSnapshot& snapshot) {
    snapshot_ = snapshot;
    speeds_ = DiscSpeeds(family_, snapshot.speeds);
}

void ImapiDiscWriter::SetWriteSpeed(double speed) {
    speed_ = speed;
}

double ImapiDiscWriter::WriteSpeed() const {
    if (names_.empty()) return 0;
    return speed_ ? speeds_.Nearest(*speed_) : speeds_.Fastest();
}

void ImapiDiscWriter::AddFile(const std::wstring& path) {
    if (worker_) files_.push_back(path);
}

std::optional<int> ImapiDiscWriter::BeginOperation(DiscOperation operation) {
    if (!worker_) return std::nullopt;
    if (isBusy_) {
        if (events_) events_->ErrorEx(DiscErrorBusy, DiscErrorText(Mastering::WriteInProgress));
        return std::nullopt;
    }
    if (Presence() == DiscPresence::None) {
        if (events_) events_->ErrorEx(DiscErrorNoDisc, DiscErrorText(Mastering::NoMedia));
        return std::nullopt;
    }
    progress_ = {operation, WritingStage::FillingBuffer, 0};
    isBusy_ = true;
    running_ = ++lastOperation_;
    return running_;
}

void ImapiDiscWriter::StartWrite() {
    BurnJob job{std::move(files_), label_, speed_};
    files_.clear();
    if (const auto operation = BeginOperation(DiscOperation::Preparing))
        worker_->StartWrite(*operation, std::move(job));
}

void ImapiDiscWriter::Erase(bool isQuick) {
    if (const auto operation = BeginOperation(DiscOperation::EraseInProgress)) worker_->StartErase(*operation, isQuick);
}

void ImapiDiscWriter::Abort() {
    files_.clear();
    if (!worker_ || running_ == 0) return;
    worker_->RequestStop();
    running_ = 0;
    progress_ = {};
}

void ImapiDiscWriter::ShutDown() {
    if (!worker_) return;
    queue_->Close();
    events_ = nullptr;
    names_.clear();
    files_.clear();
    progress_ = {};
    running_ = 0;
    TakeSnapshot({});
    // The messages handled while waiting may destroy this object: from here on only these two are used.
    const auto queue = std::move(queue_);
    const auto worker = std::move(worker_);
    MessageLoop& messageLoop = messageLoop_;
    worker->RequestEnd();
    while (!worker->WaitForEnd(EndLookMilliseconds)) messageLoop.RunPending();
}

void ImapiDiscWriter::OnEvent(const DiscEvent& event) {
    switch (event.kind) {
    case DiscEvent::Kind::DrivesListed:
        break;
    case DiscEvent::Kind::DriveRead:
        if (event.selection != selection_ || event.snapshot == snapshot_) break;
        TakeSnapshot(event.snapshot);
        if (events_) events_->MediaChange();
        break;
    case DiscEvent::Kind::Progress:
        if (event.operation == running_) TellProgress(event.progress);
        break;
    case DiscEvent::Kind::OperationEnded:
        OnOperationEnded(event);
        break;
    }
}

void ImapiDiscWriter::TellProgress(const DiscProgress& progress) {
    progress_ = progress;
    if (events_) events_->OperationProgress(progress.percent);
}

void ImapiDiscWriter::OnOperationEnded(const DiscEvent& event) {
    const std::weak_ptr<int> life = life_;
    const bool isFollowed = event.operation == running_;
    const DiscOperation operation = progress_.operation;
    isBusy_ = false;
    running_ = 0;
    const bool isChanged = event.selection == selection_ && event.snapshot != snapshot_;
    if (isChanged) TakeSnapshot(event.snapshot);
    if (isFollowed && SUCCEEDED(event.result)) {
        const bool isErase = operation == DiscOperation::EraseInProgress;
        TellProgress(
            {isErase ? DiscOperation::EraseInProgress : DiscOperation::Finished, WritingStage::ClosingTrack, 100});
        if (!life.expired() && running_ == 0) progress_ = {};
        return;
    }
    progress_ = {};
    if (isChanged && events_) events_->MediaChange();
    if (life.expired() || !events_) return;
    if (isFollowed)
        events_->ErrorEx(event.result, event.text);
    else
        events_->ErrorEx(DiscErrorAborted, DiscErrorText(Mastering::RequestCancelled));
}

std::unique_ptr<DiscWriter> ImapiDiscWriters::Create(DiscFamily family) {
    return std::make_unique<ImapiDiscWriter>(family, messageLoop_);
}
