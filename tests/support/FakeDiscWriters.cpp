#include "support/FakeDiscWriters.h"

#include <algorithm>
#include <cmath>

FakeDisc BlankDisc(MediaKind kind, std::uint64_t totalBytes) {
    FakeDisc disc;
    disc.presence = DiscPresence::Ready;
    disc.kind = kind;
    disc.status = DiscStatus::Blank;
    disc.isWritable = true;
    disc.isDvdReady = kind >= MediaKind::DvdRom && kind <= MediaKind::DvdPlusRDl;
    disc.totalBytes = totalBytes;
    disc.freeBytes = totalBytes;
    return disc;
}

std::unique_ptr<DiscWriter> FakeDiscWriters::Create(DiscFamily family) {
    if (createFailure) throw RuntimeError(*createFailure);
    return std::make_unique<FakeDiscWriter>(*this, family);
}

FakeDiscWriter::FakeDiscWriter(FakeDiscWriters& writers, DiscFamily family) : writers_(writers), family_(family) {
    (family == DiscFamily::Cd ? writers_.cdWriter : writers_.dvdWriter) = this;
    ++writers_.Record(family_).created;
    ++writers_.Record(family_).alive;
}

FakeDiscWriter::~FakeDiscWriter() {
    ShutDown();
    *isAlive_ = false;
    auto& latest = family_ == DiscFamily::Cd ? writers_.cdWriter : writers_.dvdWriter;
    if (latest == this) latest = nullptr;
    --writers_.Record(family_).alive;
}

void FakeDiscWriter::SetEvents(DiscWriterEvents* events) {
    if (!isShutDown_) events_ = events;
}

FakeDiscDrive* FakeDiscWriter::Drive() const {
    auto& drives = writers_.Drives(family_);
    return isShutDown_ || drive_ >= drives.size() ? nullptr : &drives[drive_];
}

const FakeDisc& FakeDiscWriter::Disc() const {
    static const FakeDisc none;
    static const FakeDisc notAnswering = [] {
        FakeDisc disc;
        disc.presence = DiscPresence::NotAnswering;
        return disc;
    }();
    const FakeDiscDrive* drive = Drive();
    if (!drive) return none;
    const bool hasDisc =
        drive->disc.presence == DiscPresence::Ready || drive->disc.presence == DiscPresence::Unrecognized;
    if (hasDisc) return drive->disc;
    return drive->disc.presence == DiscPresence::None ? none : notAnswering;
}

std::vector<std::wstring> FakeDiscWriter::WriterNames() const {
    std::vector<std::wstring> names;
    if (isShutDown_) return names;
    for (const auto& drive : writers_.Drives(family_)) names.push_back(drive.name);
    return names;
}

void FakeDiscWriter::SelectWriter(int index) {
    Note(L"SelectWriter " + std::to_wstring(index));
    if (index >= 0 && static_cast<std::size_t>(index) < writers_.Drives(family_).size())
        drive_ = static_cast<std::size_t>(index);
}

void FakeDiscWriter::SetWriteSpeed(double speed) {
    speed_ = speed;
    writers_.Record(family_).speed = speed;
}

double FakeDiscWriter::WriteSpeed() const {
    const FakeDiscDrive* drive = Drive();
    if (!drive || drive->speeds.empty()) return 0;
    if (!speed_) return drive->speeds.front();
    if (drive->acceptsEverySpeed) return *speed_;
    return *std::min_element(drive->speeds.begin(), drive->speeds.end(), [&](double left, double right) {
        return std::abs(left - *speed_) < std::abs(right - *speed_);
    });
}

void FakeDiscWriter::SetDiscLabel(const std::wstring& label) {
    writers_.Record(family_).label = label;
}

std::wstring FakeDiscWriter::AcceptedDiscLabel(const std::wstring& label) const {
    return writers_.acceptedLabel.empty() ? label : writers_.acceptedLabel;
}

void FakeDiscWriter::AddFile(const std::wstring& path) {
    Note(L"AddFile " + path);
    if (!isShutDown_) files_.push_back(path);
}

bool FakeDiscWriter::MayStart() {
    if (isShutDown_) return false;
    if (running_ != Running::Nothing) {
        RaiseError(DiscErrorBusy, L"The drive is busy.");
        return false;
    }
    if (Disc().presence == DiscPresence::None) {
        RaiseError(DiscErrorNoDisc, L"There is no disc in the drive.");
        return false;
    }
    if (writers_.startError) {
        const FakeDiscError error = *writers_.startError;
        writers_.startError.reset();
        RaiseError(error.code, error.text);
        return false;
    }
    return true;
}

void FakeDiscWriter::StartWrite() {
    Note(L"StartWrite");
    std::vector<std::wstring> files = std::move(files_);
    files_.clear();
    if (!MayStart()) return;
    writers_.Record(family_).filesWritten = std::move(files);
    running_ = Running::Write;
    operation_ = DiscOperation::Preparing;
    stage_ = WritingStage::FillingBuffer;
}

void FakeDiscWriter::Abort() {
    Note(L"Abort");
    files_.clear();
    if (running_ == Running::Nothing || running_ == Running::Stopping) return;
    running_ = Running::Stopping;
    operation_ = DiscOperation::None;
}

void FakeDiscWriter::Erase(bool isQuick) {
    Note(isQuick ? L"Erase quick" : L"Erase full");
    if (!MayStart()) return;
    running_ = Running::Erase;
    operation_ = DiscOperation::EraseInProgress;
}

void FakeDiscWriter::ShutDown() {
    if (isShutDown_) return;
    Note(L"ShutDown");
    isShutDown_ = true;
    ++writers_.Record(family_).shutDown;
    events_ = nullptr;
    operation_ = DiscOperation::None;
    running_ = Running::Nothing;
    files_.clear();
}

void FakeDiscWriter::RaiseProgress(DiscOperation operation, std::int16_t percent, WritingStage stage) {
    operation_ = operation;
    stage_ = stage;
    if (operation == DiscOperation::Finished || (operation == DiscOperation::EraseInProgress && percent >= 100))
        running_ = Running::Nothing;
    const auto isAlive = isAlive_;
    if (events_) events_->OperationProgress(percent);
    if (*isAlive && running_ == Running::Nothing) operation_ = DiscOperation::None;
}

void FakeDiscWriter::RaiseError(std::int32_t code, const std::wstring& text) {
    if (events_) events_->ErrorEx(code, text);
}

void FakeDiscWriter::FailOperation(std::int32_t code, const std::wstring& text) {
    running_ = Running::Nothing;
    operation_ = DiscOperation::None;
    RaiseError(code, text);
}

void FakeDiscWriter::RaiseMediaChange() {
    if (events_) events_->MediaChange();
}

void FakeDiscWriter::RaiseDiscReadAgain() {
    if (events_) events_->DiscReadAgain();
}

void FakeDiscWriter::RaiseWritersChange() {
    if (events_) events_->WritersChange();
}

void FakeDiscWriter::PlayToEnd() {
    const auto isAlive = isAlive_;
    FakeDiscDrive* drive = Drive();
    if (running_ == Running::Stopping) {
        running_ = Running::Nothing;
        RaiseError(DiscErrorAborted, L"The operation was stopped.");
        if (*isAlive) RaiseDiscReadAgain();
    } else if (running_ == Running::Erase) {
        RaiseProgress(DiscOperation::EraseInProgress, 50);
        if (!*isAlive || running_ != Running::Erase) return;
        drive->disc = BlankDisc(drive->disc.kind, drive->disc.totalBytes);
        RaiseProgress(DiscOperation::EraseInProgress, 100);
    } else if (running_ == Running::Write) {
        struct Step {
            DiscOperation operation;
            WritingStage stage;
            std::int16_t percent;
        };
        constexpr Step steps[] = {{DiscOperation::Preparing, WritingStage::FillingBuffer, 0},
                                  {DiscOperation::Writing, WritingStage::FillingBuffer, 0},
                                  {DiscOperation::Writing, WritingStage::WritingTrack, 50},
                                  {DiscOperation::Writing, WritingStage::WritingTrack, 100},
                                  {DiscOperation::Writing, WritingStage::ClosingTrack, 100}};
        for (const Step& step : steps) {
            RaiseProgress(step.operation, step.percent, step.stage);
            if (!*isAlive || running_ != Running::Write) return;
        }
        drive->disc.status = DiscStatus::Open;
        drive->disc.usedBytes += drive->disc.freeBytes / 2;
        drive->disc.freeBytes -= drive->disc.freeBytes / 2;
        RaiseProgress(DiscOperation::Finished, 100);
    }
}

void FakeDiscWriter::InsertDisc(const FakeDisc& disc) {
    FakeDiscDrive* drive = Drive();
    if (!drive) return;
    drive->disc = disc;
    if (running_ == Running::Nothing) RaiseMediaChange();
}

void FakeDiscWriter::Note(const std::wstring& call) {
    writers_.Record(family_).calls.push_back(call);
}
