// A user at the backup window and a drive that answers as it likes: the window never stays busy with nothing that would
// end, nothing goes to a medium but a whole backup, and the machine is held for no longer than a run lasts.
#include "FuzzInput.h"
#include "Require.h"

#include "backup/BackupRun.h"
#include "core/ArchiveValues.h"
#include "core/SpaceValues.h"
#include "support/FakeBackupSteps.h"
#include "support/FakeBackupView.h"
#include "support/FakeMachine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::int32_t ErrorCodes[] = {
    DiscErrorAborted, DiscErrorNoDisc, DiscErrorBusy, static_cast<std::int32_t>(0xC0AA0202), -1, 0};
constexpr MediaKind Kinds[] = {MediaKind::CdRom,      MediaKind::CdR,    MediaKind::CdRw,       MediaKind::DvdPlusR,
                               MediaKind::DvdMinusRw, MediaKind::DvdRam, MediaKind::DvdPlusRDl, MediaKind::Other};
constexpr DiscOperation Operations[] = {DiscOperation::None,    DiscOperation::EraseInProgress,
                                        DiscOperation::Erasing, DiscOperation::Preparing,
                                        DiscOperation::Writing, DiscOperation::Finished};
constexpr std::size_t MostNested = 3;

class BackupWindowUser {
  public:
    explicit BackupWindowUser(FuzzInput& input) : input_(input) {
        state_.miTypeMedia = AllMedia[input_.Below(AllMedia.size())];
        state_.mstrDrive = L"E:\\";
        view_.drive = L"(E:\\) x";
        machine_.drives.Add(L"E:\\", DriveType::Removable, L"", {1e6, 2e6});
        machine_.app.archive->archiveSizeBytes = 100;
        steps_.whileArchiving = [this] { Nested(); };
        steps_.whileCopying = [this] { Nested(); };
        view_.whileErasing = [this] { Nested(); };
        view_.whenBusyChanges = [this](bool isBusy) {
            isBusy_ = isBusy;
            Nested();
        };
        machine_.messageLoop.handler = [this] { Nested(); };
        machine_.messageBoxes.whileShown = [this](const FakeMessageBoxes::Box&) { Nested(); };
        if (IsDisc(state_.miTypeMedia)) {
            machine_.discWriters.Drives(Family()).push_back({L"WRITER (G:)", AnyDisc()});
            if (!input_.Bool() || input_.Bool()) discs_.CreateWriter();
        }
        state_.phase.Enter(RunPhase::Idle);
        discs_.RefreshDiscInfo();
    }

    void Act() {
        const std::size_t action = input_.Below(16);
        // A message box takes the window's input, and so does the erase window.
        if (depth_ == 0 && action < 3 && state_.phase.IsAt(RunPhase::Idle)) return Press(action);
        if (action < 5) return run_.Stop();
        if (action < 13) return PlayDrive(action);
        ChangeOutcome();
    }

    void Check() {
        Require(!state_.phase.IsRunning());
        Require(state_.phase.IsAt(RunPhase::Writing) || (state_.awake == nullptr && view_.holds == 0));
        if (state_.phase.IsAt(RunPhase::Idle) && !view_.hasEnded) Require(!isBusy_);
        const auto& files = Record().filesWritten;
        Require(files.empty() || files.size() == 2);
        Require(machine_.app.space->availableSpace >= Currency());
    }

    /// However it went so far, Stop and the drive's own end give the window back.
    void Finish() {
        depth_ = MostNested; // nobody presses anything any more
        run_.Stop();
        if (FakeDiscWriter* writer = Writer()) writer->PlayToEnd();
        Check();
        Require(state_.phase.IsAt(RunPhase::Idle) && !discs_.IsBusy());
        discs_.ReleaseWriter();
        state_.phase.Enter(RunPhase::Closed);
        Require(Record().alive == 0);
    }

  private:
    DiscFamily Family() const { return DiscFamilyOf(state_.miTypeMedia).value_or(DiscFamily::Cd); }
    FakeDiscRecord& Record() { return machine_.discWriters.Record(Family()); }
    FakeDiscWriter* Writer() { return machine_.discWriters.Latest(Family()); }

    /// What comes while messages run: not too deep, or it would never end.
    void Nested() {
        if (depth_ >= MostNested || input_.IsAtEnd() || input_.Bool()) return;
        ++depth_;
        Act();
        --depth_;
    }
    void Press(std::size_t action) {
        if (action == 2) {
            if (IsDisc(state_.miTypeMedia) && view_.isEraseEnabled) discs_.EffacerDisque();
            return;
        }
        const std::size_t before = Record().calls.size();
        run_.Launch();
        if (!steps_.archives || !steps_.givesPassword || !steps_.hasArchiver) RequireNothingAdded(before);
    }
    void RequireNothingAdded(std::size_t from) {
        const auto& calls = Record().calls;
        Require(std::none_of(calls.begin() + static_cast<std::ptrdiff_t>(from), calls.end(),
                             [](const std::wstring& call) { return call.starts_with(L"AddFile"); }));
    }
    void PlayDrive(std::size_t action) {
        FakeDiscWriter* writer = Writer();
        if (writer == nullptr) return;
        switch (action) {
        case 5:
            return writer->PlayToEnd();
        case 6:
            return writer->InsertDisc(AnyDisc());
        case 7:
            // A drive tells of an operation while it is at one.
            if (writer->IsBusy())
                writer->RaiseProgress(input_.OneOf(Operations), static_cast<std::int16_t>(input_.Below(101)),
                                      static_cast<WritingStage>(input_.Below(3)));
            return;
        case 8:
            if (writer->IsBusy()) writer->FailOperation(input_.OneOf(ErrorCodes), input_.Text(8));
            return;
        case 9:
            return writer->RaiseDiscReadAgain();
        case 10:
            return writer->RaiseWritersChange();
        case 11:
            machine_.discWriters.startError = FakeDiscError{input_.OneOf(ErrorCodes), input_.Text(8)};
            return;
        default:
            return writer->RaiseMediaChange();
        }
    }
    void ChangeOutcome() {
        // During a run its outcome is settled.
        if (depth_ > 0) return;
        const std::uint8_t bits = input_.Byte();
        steps_.hasArchiver = (bits & 1) == 0;
        steps_.givesPassword = (bits & 2) == 0;
        steps_.archives = (bits & 4) == 0;
        steps_.copies = (bits & 8) == 0;
        steps_.count = (bits & 16) == 0 ? 1 : 0;
        machine_.app.archive->archiveSizeBytes = (bits & 32) == 0 ? 100 : 10'000'000'000;
        if ((bits & 64) != 0) machine_.drives.Remove(L"E:\\");
        if ((bits & 128) != 0) machine_.files.AddFile(machine_.app.ListFileFolder() + L"transfert.lst");
    }
    FakeDisc AnyDisc() {
        FakeDisc disc = BlankDisc(input_.OneOf(Kinds), std::uint64_t{input_.Bits<std::uint16_t>()} << 20);
        disc.presence = static_cast<DiscPresence>(input_.Below(4));
        disc.status = static_cast<DiscStatus>(input_.Below(4));
        disc.isWritable = input_.Bool();
        disc.isDvdReady = input_.Bool();
        return disc;
    }

    FuzzInput& input_;
    FakeMachine machine_;
    FakeBackupView view_;
    BackupState state_;
    FakeBackupSteps steps_;
    DiscSide discs_{machine_.app, state_, view_};
    BackupRun run_{machine_.app, state_, view_, steps_, discs_};
    std::size_t depth_ = 0;
    bool isBusy_ = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    FuzzInput input(data, sizeBytes);
    BackupWindowUser user(input);
    while (!input.IsAtEnd()) {
        user.Act();
        user.Check();
    }
    user.Finish();
    return 0;
}
