// What the check window does while it works, and at the end of it.
#include "check/ReportFile.h"
#include "check/forms/CheckWindow.h"
#include "core/UserValues.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"

#include <utility>

namespace {

/// A read from a bad disc may take longer. Its thread is left to end by itself then.
constexpr std::chrono::milliseconds LongestCancel{600};

std::uint32_t StyleOf(VerdictSign sign) {
    switch (sign) {
    case VerdictSign::Good:
        return box::Information;
    case VerdictSign::Bad:
        return box::Critical;
    default:
        return box::Exclamation;
    }
}

} // namespace

void CheckWindow::Begin(Work work, CheckRequest request) {
    request.place = place_;
    request.profileFolder = app_.user->strProfilUtilisateur;
    if (work != Work::Listing) request.password = password_.Text();
    std::erase_if(tasks_, [](const BackgroundTask& task) { return task.HasEnded(); });
    isPart_ = request.wanted != nullptr;
    hasNewRows_ = false;
    isMediumLost_ = false;
    if (!isPart_) request.known = std::exchange(untouched_, nullptr);
    job_ = std::make_unique<CheckJob>(ways_.files, std::move(request));
    rows_.Keep(job_->Contents());
    tasks_.push_back(job_->Task());
    work_ = work;
    cancelledAt_.reset();
    follow_.Start(FollowMilliseconds);
    EnableControls();
    if (!IsBusy()) return;
    report_.reset();
    pace_ = {};
    startedAt_ = std::chrono::steady_clock::now();
    awake_ = app_.machine.power->KeepAwake();
    session_.emplace(*this, Text(work == Work::Recovering ? TextId::RecoveryRuns : TextId::CheckRuns));
    progress_.SetValue(0);
    progressText_.SetText(L"");
    ShowVerdict(VerdictSign::None, Text(TextId::CheckPasswordTried));
    ShowDetails();
    cancel_.SetFocus();
}

void CheckWindow::Follow() {
    Guarded(L"Follow, module CheckWindow", [this] {
        if (listedDrives_ && placesTask_.HasEnded()) ShowPlaces(*std::exchange(listedDrives_, nullptr));
        if (job_) FollowJob();
        if (work_ == Work::Saving && savingTask_.HasEnded()) EndSaving();
        if (!job_ && !listedDrives_ && work_ == Work::None) follow_.Stop();
    });
}

void CheckWindow::FollowJob() {
    const bool hasEnded = job_->HasEnded();
    TakeRows();
    if (hasEnded) {
        EndJob();
    } else if (cancelledAt_ && std::chrono::steady_clock::now() - *cancelledAt_ > LongestCancel) {
        GiveUpJob();
    } else if (IsBusy() && !cancelledAt_) {
        ShowProgress();
    }
}

void CheckWindow::TakeRows() {
    std::deque<CheckJob::KnownItem> known = job_->TakeItems();
    if (known.empty()) return;
    // Rows without a password say nothing new where there are some.
    if (IsBusy() && !job_->Now().isPasswordAccepted && rows_.Count() > 0 && !hasNewRows_) return;
    if (!std::exchange(hasNewRows_, true)) BeginRows();
    const auto contents = job_->Contents();
    // They go one by one while the rows come.
    for (; !known.empty(); known.pop_front()) rows_.Take(known.front(), contents);
    items_.RowsChanged();
    items_.FillWidth(static_cast<int>(CheckColumn::Path));
    if (selectedBefore_ >= 0 && selectedBefore_ < rows_.Count()) items_.Select(std::exchange(selectedBefore_, -1));
    const int row = items_.Selected();
    if (row >= 0 && row < rows_.Count() && rows_.Settled(row) != shownItem_) ShowDetails();
}

/// Rows that are told anew come in the order of the backup, and the selection goes to where its item stands then.
void CheckWindow::BeginRows() {
    selectedBefore_ = -1;
    if (isPart_) return rows_.BeginTicked();
    const int row = items_.Selected();
    if (row >= 0 && row < rows_.Count()) selectedBefore_ = rows_.PlaceOf(row);
    rows_.BeginAll();
}

void CheckWindow::ShowProgress() {
    const CheckJob::Progress now = job_->Now();
    if (!now.isPasswordAccepted) return;
    ShowVerdict(VerdictSign::None, Text(work_ == Work::Recovering ? TextId::CheckRecovering : TextId::CheckReading));
    if (now.totalBytes == 0) return;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - startedAt_;
    pace_.Note(elapsed.count(), now.doneBytes);
    progress_.SetValue(
        static_cast<int>(static_cast<double>(now.doneBytes) / static_cast<double>(now.totalBytes) * ProgressRange));
    progressText_.SetText(ProgressWords(words_, now, pace_));
}

void CheckWindow::CancelClicked() {
    Guarded(L"CancelClicked, module CheckWindow", [this] {
        if (!job_ || cancelledAt_) return;
        job_->Stop();
        cancelledAt_ = std::chrono::steady_clock::now();
        ShowVerdict(VerdictSign::None, Text(TextId::StoppingRun));
        EnableControls();
    });
}

void CheckWindow::EndJob() {
    const std::shared_ptr<const BackupReport> report = job_->Report();
    const bool isListing = work_ == Work::Listing;
    // Where the check was begun before the list was read, it is the first to know of the archive.
    const bool areRowsKnown = rows_.Count() > 0 || !report->hasList;
    const bool hasArchive =
        isListing ? report->verdict == Verdict::NotChecked : report->archiveBytes > 0 && areRowsKnown;
    if (hasArchive && !isMediumLost_) archive_ = report->archive;
    const bool isUntouched =
        isListing || report->verdict == Verdict::WrongPassword || report->verdict == Verdict::PasswordMissing;
    if (isUntouched && !isPart_) untouched_ = job_->HandOver();
    if (!isListing) {
        report_ = report;
        if (report->verdict == Verdict::Good || report->verdict == Verdict::Faulty) progress_.SetValue(ProgressRange);
        progressText_.SetText(L"");
    }
    BackToIdle();
    ShowVerdict(SignOf(*report), VerdictSentence(*report, words_));
    ShowDetails();
    if (!isListing && report->verdict != Verdict::Stopped) Tell([this] { TellOutcome(); });
}

/// A box over the question whether the window may close would hide it: what it has to tell waits for the answer.
void CheckWindow::Tell(std::function<void()> box) {
    if (isAsking_) {
        untold_ = std::move(box);
    } else {
        Post(std::move(box));
    }
}

/// The thread is busy with something that nobody can end. What it finds is of no use any more.
void CheckWindow::GiveUpJob() {
    BackToIdle();
    ShowVerdict(VerdictSign::Warning, Text(TextId::CheckStopped));
}

void CheckWindow::BackToIdle() {
    const bool hadFocus = cancel_.HasFocus() || cancelledAt_;
    job_.reset();
    work_ = Work::None;
    cancelledAt_.reset();
    awake_.reset();
    session_.reset();
    const int row = items_.Selected();
    items_.Select(rows_.SortAgain(row < rows_.Count() ? row : -1));
    items_.Redraw();
    EnableControls();
    if (hadFocus) items_.SetFocus();
    // Meanwhile it may have had no label. What that means is found out now that nothing reads any more.
    const auto shown = PlaceShown();
    if (!isMediumLost_ && shown != shownPlaces_.end() && shown->line != placeLine_) ListPlaces();
}

void CheckWindow::TellOutcome() {
    if (!report_) return;
    const std::shared_ptr<const BackupReport> report = report_;
    std::wstring text = VerdictSentence(*report, words_);
    for (const std::wstring& remark : Remarks(*report, texts_)) text += L"\n\n" + remark;
    app_.ShowMessage(text, TextId::CheckTitle, StyleOf(SignOf(*report)));
    const bool isPassword = report->verdict == Verdict::WrongPassword || report->verdict == Verdict::PasswordMissing;
    if (isPassword && IsLoaded()) password_.SetFocus();
}

void CheckWindow::SaveReportClicked() {
    Guarded(L"SaveReportClicked, module CheckWindow", [this] {
        const std::shared_ptr<const BackupReport> report = report_;
        const auto path = ways_.chooseReport(*this, Text(TextId::CheckReportName));
        if (!path || path->empty() || !IsLoaded()) return;
        const auto failure = std::make_shared<std::optional<std::wstring>>();
        tasks_.emplace_back([files = ways_.files, report, path = *path, words = words_, failure] {
            try {
                WriteReport(*files, *report, path, words);
            } catch (const RuntimeError& error) {
                *failure = FailureWords(error, words.texts);
            }
        });
        savingTask_ = tasks_.back();
        savingFailure_ = failure;
        savedPath_ = *path;
        work_ = Work::Saving;
        closesWhenSaved_ = false;
        EnableControls();
        follow_.Start(FollowMilliseconds);
    });
}

void CheckWindow::EndSaving() {
    work_ = Work::None;
    EnableControls();
    const std::optional<std::wstring> failure = *savingFailure_;
    if (closesWhenSaved_ && !failure) return Unload();
    const std::wstring text = failure ? Filled(Text(TextId::CheckReportNotWritten), {*failure})
                                      : Filled(Text(TextId::CheckReportSaved), {savedPath_});
    Post([this, text, isSaved = !failure] {
        app_.ShowMessage(text, TextId::CheckTitle, isSaved ? box::Information : box::Critical);
    });
}

void CheckWindow::ShowVerdict(VerdictSign sign, const std::wstring& text) {
    sign_.SetIcon(sign == VerdictSign::None ? nullptr : icons_.Icon(static_cast<int>(sign)));
    sign_.Show(sign != VerdictSign::None);
    if (verdict_.Text() != text) verdict_.SetText(text);
}
