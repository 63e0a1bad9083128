#pragma once

#include "backup/BackupRun.h"
#include "core/ArchiveValues.h"
#include "resources/TextId.h"
#include "support/BoxReader.h"
#include "support/FakeBackupSteps.h"
#include "support/FakeBackupView.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

/// A run on a stand-in workstation.
class BackupRunTest : public testing::Test, protected BoxReader {
  protected:
    static constexpr std::uint64_t Megabyte = 1048576;

    void SetUp() override {
        machine.app.archive->archiveSizeBytes = 100;
        state.phase.Enter(RunPhase::Idle);
    }

    void UseDisk(Medium medium, const std::wstring& root = L"E:\\") {
        state.miTypeMedia = medium;
        state.mstrDrive = root;
        view.drive = L"(" + root + L") x";
        machine.drives.Add(root, DriveType::Removable, L"", {1e6, 2e6});
        discs.RefreshDiscInfo();
        view.calls.clear();
    }
    void UseDisc(Medium medium, const FakeDisc& disc) {
        state.miTypeMedia = medium;
        machine.discWriters.Drives(Family(medium)).push_back({L"WRITER (G:)", disc});
        discs.CreateWriter();
        discs.RefreshDiscInfo();
        view.calls.clear();
    }
    void UseCd() { UseDisc(Medium::Cd, BlankDisc(MediaKind::CdR, 700 * Megabyte)); }
    static DiscFamily Family(Medium medium) { return medium == Medium::Cd ? DiscFamily::Cd : DiscFamily::Dvd; }
    FakeDiscWriter& Writer() { return *machine.discWriters.Latest(Family(state.miTypeMedia)); }
    FakeDiscRecord& Record() { return machine.discWriters.Record(Family(state.miTypeMedia)); }
    std::wstring Text(TextId id) const { return machine.app.Text(id); }
    const FakeMessageBoxes& Boxes() const override { return machine.messageBoxes; }
    /// The window's way into and out of its busy mode.
    std::vector<std::wstring> Modes() const {
        std::vector<std::wstring> modes;
        for (const std::wstring& call : view.calls) {
            if (call == L"busy" || call == L"idle" || call == L"end") modes.push_back(call);
        }
        return modes;
    }

    FakeMachine machine;
    FakeBackupView view;
    BackupState state;
    FakeBackupSteps steps;
    DiscSide discs{machine.app, state, view};
    BackupRun run{machine.app, state, view, steps, discs};
};
