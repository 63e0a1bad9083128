#pragma once

#include "backup/BackupView.h"
#include "support/CountedHold.h"
#include "support/FakeProgressBar.h"

#include <functional>
#include <string>
#include <vector>

/// Records what the backup window is told, in order.
class FakeBackupView : public BackupView, private RunDisplay {
  public:
    std::vector<std::wstring> calls;
    std::vector<std::wstring> runStatuses;
    std::vector<std::wstring> writerStatuses;
    MediumReport report;
    bool isEraseVisible = false;
    bool isEraseEnabled = false;
    bool isWorkSpaceMarked = false;
    bool hasEnded = false;
    FakeProgressBar step;
    FakeProgressBar total;
    std::wstring drive;
    std::optional<double> speed;
    std::wstring label;
    std::vector<std::int16_t> erasePercents;
    int holds = 0; ///< on the machine, alive now
    /// Runs while the window lets messages run.
    std::function<void(bool isBusy)> whenBusyChanges;
    std::function<void()> whenEnabled;
    std::function<void()> whileErasing;

    void AfficherProgression(bool isBusy) override {
        calls.push_back(isBusy ? L"busy" : L"idle");
        if (whenBusyChanges) whenBusyChanges(isBusy);
    }
    std::unique_ptr<Hold> HoldMachine() override { return std::make_unique<CountedHold>(holds); }
    void ActiverControles(bool isEnabled) override {
        calls.push_back(isEnabled ? L"enable" : L"disable");
        if (isEnabled && whenEnabled) whenEnabled();
    }
    void MajBoutonLancer() override { calls.push_back(L"start button"); }
    void AfficherEspaces() override { calls.push_back(L"spaces"); }
    void AfficherEspaceRequis() override { calls.push_back(L"required"); }
    void MarkWorkSpace(bool isUsedUp) override { isWorkSpaceMarked = isUsedUp; }
    void ShowPanels(const MediumReport& newReport) override {
        calls.push_back(L"panels");
        report = newReport;
    }
    void ShowEraseButton(bool isVisible, bool isEnabled) override {
        isEraseVisible = isVisible;
        isEraseEnabled = isEnabled;
    }
    void ShowWriters() override { calls.push_back(L"writers"); }
    void ProbeSpeedsAgain() override { calls.push_back(L"speeds"); }
    void RefreshWindow() override { calls.push_back(L"refresh"); }
    bool StopWrite() override { return false; }
    RunDisplay& Display() override { return *this; }
    std::wstring RequiredSpaceText() const override { return {}; }
    std::wstring RunStatus() const override { return runStatuses.empty() ? L"" : runStatuses.back(); }
    void SetRunStatus(const std::wstring& text) override { runStatuses.push_back(text); }
    void SetWriterStatus(const std::wstring& text) override { writerStatuses.push_back(text); }
    ProgressBar& Step() override { return step; }
    ProgressBar& Total() override { return total; }
    void HideStep() override { calls.push_back(L"hide step"); }
    void DisableStop() override { calls.push_back(L"no stop"); }
    std::wstring SelectedDrive() const override { return drive; }
    std::optional<double> SelectedSpeed() const override { return speed; }
    std::wstring DiscLabel() const override { return label; }
    void ShowDiscLabel(const std::wstring& newLabel) override { label = newLabel; }
    void ShowEraseProgress(std::int16_t percent) override { erasePercents.push_back(percent); }
    void ShowEraseWindow() override {
        calls.push_back(L"erase window");
        if (whileErasing) whileErasing();
    }
    void EndProgram() override {
        calls.push_back(L"end");
        hasEnded = true;
    }
};
