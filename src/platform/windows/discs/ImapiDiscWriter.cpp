#include "platform/windows/discs/ImapiDiscWriter.h"

#include "platform/RuntimeError.h"
#include "platform/windows/discs/ImapiImage.h"

#include <algorithm>
#include <utility>

namespace {

/// The windows are repainted meanwhile, but handle no click.
constexpr DWORD ListMilliseconds = 4000;
constexpr DWORD SelectMilliseconds = 3000;
constexpr DWORD EndLookMilliseconds = 15;

/// A drive of which nothing is known yet.
DriveSnapshot NoAnswer() {
    DriveSnapshot snapshot;
    snapshot.disc.presence = DiscPresence::NotAnswering;
    return snapshot;
}

} // namespace

ImapiDiscWriter::ImapiDiscWriter(DiscFamily family, MessageLoop& messageLoop)
    : family_(family), messageLoop_(messageLoop),
      queue_(std::make_shared<DiscEventQueue>([this](const DiscEvent& event) { OnEvent(event); })),
      worker_(std::make_unique<ImapiWorker>(family, *queue_)), speeds_(family) {
    const auto listed = queue_->WaitFor(
        [](const DiscEvent& event) { return event.kind == DiscEvent::Kind::DrivesListed; }, ListMilliseconds);
    // Drives that take longer are told of when they have answered.
    if (!listed) return;
    if (FAILED(listed->result)) throw RuntimeError(ErrorNumber::CannotCreateObject);
    TakeList(*listed);
    SelectWriter(0);
}

ImapiDiscWriter::~ImapiDiscWriter() {
    ShutDown();
}

void ImapiDiscWriter::SetEvents(DiscWriterEvents* events) {
    if (worker_) events_ = events;
}

void ImapiDiscWriter::TakeList(const DiscEvent& event) {
    names_ = event.names;
    ids_ = event.ids;
}

void ImapiDiscWriter::SelectDrive(const std::wstring& id) {
    driveId_ = id;
    lastDisc_.reset();
    TakeSnapshot(id.empty() ? DriveSnapshot() : NoAnswer());
    worker_->SelectDrive(id, ++selection_);
}

int ImapiDiscWriter::CurrentWriter() const {
    const auto found = std::find(ids_.begin(), ids_.end(), driveId_);
    return found == ids_.end() ? -1 : static_cast<int>(found - ids_.begin());
}

void ImapiDiscWriter::SelectWriter(int index) {
    if (!worker_ || index < 0 || static_cast<std::size_t>(index) >= ids_.size()) return;
    SelectDrive(ids_[static_cast<std::size_t>(index)]);
    if (isBusy_) return;
    const int selection = selection_;
    const auto queue = queue_;
    const std::weak_ptr<int> life = life_;
    const auto read = queue->WaitFor(
        [selection](const DiscEvent& event) {
            return event.kind == DiscEvent::Kind::DriveRead && event.selection == selection;
        },
        SelectMilliseconds);
    if (read && !life.expired() && worker_ && selection == selection_) TakeSnapshot(read->snapshot);
}

bool ImapiDiscWriter::TakeSnapshot(const DriveSnapshot& snapshot) {
    snapshot_ = snapshot;
    speeds_ = DiscSpeeds(family_, snapshot.speeds);
    // A drive that does not answer for a while keeps the disc that is in it.
    if (snapshot.disc.presence == DiscPresence::NotAnswering) return false;
    const bool isAnother = !lastDisc_ || !IsSameDisc(*lastDisc_, snapshot.disc);
    lastDisc_ = snapshot.disc;
    return isAnother;
}

void ImapiDiscWriter::SetWriteSpeed(double speed) {
    speed_ = speed;
}

double ImapiDiscWriter::WriteSpeed() const {
    if (names_.empty()) return 0;
    return speed_ ? speeds_.Nearest(*speed_) : speeds_.Fastest();
}

std::wstring ImapiDiscWriter::AcceptedDiscLabel(const std::wstring& label) const {
    return worker_ ? LabelOnImage(label) : label;
}

void ImapiDiscWriter::AddFile(const std::wstring& path) {
    if (worker_) files_.push_back(path);
}

bool ImapiDiscWriter::MayBegin() {
    if (!worker_) return false;
    const bool isWithoutDisc = Presence() == DiscPresence::None || driveId_.empty();
    if (!isBusy_ && !isWithoutDisc) return true;
    if (events_) events_->ErrorEx(isBusy_ ? DiscErrorBusy : DiscErrorNoDisc, {});
    return false;
}

void ImapiDiscWriter::Follow(DiscOperation operation) {
    progress_ = {operation, WritingStage::FillingBuffer, 0};
    isBusy_ = true;
    running_ = lastOperation_;
}

void ImapiDiscWriter::StartWrite() {
    BurnJob job{std::exchange(files_, {}), label_, speed_};
    if (!MayBegin()) return;
    worker_->StartWrite(++lastOperation_, std::move(job));
    Follow(DiscOperation::Preparing);
}

void ImapiDiscWriter::Erase(bool isQuick) {
    if (!MayBegin()) return;
    worker_->StartErase(++lastOperation_, isQuick);
    Follow(DiscOperation::EraseInProgress);
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
    ids_.clear();
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
        OnDrivesListed(event);
        break;
    case DiscEvent::Kind::DriveRead:
        OnDriveRead(event);
        break;
    case DiscEvent::Kind::Progress:
        if (event.operation == running_) TellProgress(event.progress);
        break;
    case DiscEvent::Kind::OperationEnded:
        OnOperationEnded(event);
        break;
    }
}

void ImapiDiscWriter::OnDrivesListed(const DiscEvent& event) {
    if (FAILED(event.result)) return;
    TakeList(event);
    // Nobody has chosen another one, and what is to be written must not go to it.
    if (CurrentWriter() < 0) SelectDrive({});
    if (events_) events_->WritersChange();
}

void ImapiDiscWriter::OnDriveRead(const DiscEvent& event) {
    if (event.isAfterOperation) isBusy_ = false;
    if (event.selection != selection_ || (!event.isAfterOperation && event.snapshot == snapshot_)) {
        if (event.isAfterOperation && events_) events_->DiscReadAgain();
        return;
    }
    const bool isAnother = TakeSnapshot(event.snapshot);
    if (!events_) return;
    if (isAnother)
        events_->MediaChange();
    else
        events_->DiscReadAgain();
}

void ImapiDiscWriter::TellProgress(const DiscProgress& progress) {
    progress_ = progress;
    if (events_) events_->OperationProgress(progress.percent);
}

void ImapiDiscWriter::OnOperationEnded(const DiscEvent& event) {
    const std::weak_ptr<int> life = life_;
    const bool isFollowed = event.operation == running_;
    const DiscOperation operation = progress_.operation;
    running_ = 0;
    if (isFollowed && SUCCEEDED(event.result)) {
        const bool isErase = operation == DiscOperation::EraseInProgress;
        TellProgress(
            {isErase ? DiscOperation::EraseInProgress : DiscOperation::Finished, WritingStage::ClosingTrack, 100});
        if (!life.expired() && running_ == 0) progress_ = {};
        return;
    }
    progress_ = {};
    if (!events_) return;
    if (isFollowed)
        events_->ErrorEx(event.result, event.text);
    else
        events_->ErrorEx(DiscErrorAborted, {});
}

std::unique_ptr<DiscWriter> ImapiDiscWriters::Create(DiscFamily family) {
    return std::make_unique<ImapiDiscWriter>(family, messageLoop_);
}
