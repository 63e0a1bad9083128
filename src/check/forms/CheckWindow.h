#pragma once

#include "check/CheckRows.h"
#include "check/forms/CheckWindowIds.h"
#include "platform/Power.h"
#include "shell/forms/ApplicationForm.h"
#include "ui/Anchors.h"
#include "ui/ControlKeys.h"
#include "ui/DelayedCall.h"
#include "ui/IconList.h"
#include "ui/ListView.h"
#include "ui/SessionEndHold.h"
#include "ui/Timer.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What the check window asks of the machine. The first two are used on other threads as well.
struct CheckWays {
    std::shared_ptr<FileStore> files;
    /// The lines of the drives that may hold a backup, each with the drive's root before it.
    std::function<std::vector<std::wstring>()> driveLines;
    using Choose = std::function<std::optional<std::wstring>(ui::Form& owner, const std::wstring& text)>;
    Choose chooseBackup; ///< a folder or an archive
    Choose chooseTarget; ///< a folder
    Choose chooseReport; ///< a file; its text is the name that is offered
};

/// The user picks a backup, has it checked, looks at what is wrong with it, and recovers what is whole. Everything that
/// reads from a medium does so on another thread.
class CheckWindow final : public ApplicationForm {
  public:
    CheckWindow(Application& app, CheckWays ways);

    /// Whether nothing of this window runs on another thread any more.
    bool HasWorkEnded() const;

  protected:
    void OnLoad() override;
    bool OnClosing() override;
    void OnUnload() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    static constexpr UINT FollowMilliseconds = 100;
    static constexpr int ProgressRange = 1000;

    enum class Work { None, Listing, Checking, Recovering, Saving };

    /// A line of the list of places.
    struct Place {
        std::wstring path;
        std::wstring line;
    };

    /// The rows as the list view shows them.
    class ShownRows final : public ui::ListViewRows {
      public:
        explicit ShownRows(const CheckRows& rows) : rows_(rows) {}
        int Count() const override { return rows_.Count(); }
        std::wstring Cell(int row, int column) const override;
        bool IsTicked(int row) const override { return rows_.IsTicked(row); }
        int Icon(int row) const override;
        std::wstring ToolTip(int row) const override { return rows_.ToolTip(row); }

      private:
        const CheckRows& rows_;
    };

    void Connect();
    void SetTexts();
    void AddColumns();
    bool IsBusy() const { return work_ != Work::None && work_ != Work::Listing; }
    bool CanRecover() const;

    void ListPlaces();
    void ShowPlaces(const std::vector<std::wstring>& driveLines);
    std::vector<Place>::const_iterator PlaceShown() const;
    void PlaceClicked();
    void BrowseClicked();
    void UsePlace(const std::wstring& path);

    void ClearRows();

    void CheckClicked();
    void RecoverClicked();
    void SaveReportClicked();
    void CancelClicked();
    void RowTicked(int row);
    void TickAll(bool isTicked);
    void SortBy(int column);

    void Begin(Work work, CheckRequest request);
    void Follow();
    void FollowJob();
    void TakeRows();
    void BeginRows();
    void EndJob();
    void GiveUpJob();
    void EndSaving();
    void BackToIdle();
    void ShowProgress();
    void ShowVerdict(VerdictSign sign, const std::wstring& text);
    void ShowDetails();
    void Tell(std::function<void()> box);
    void TellOutcome();
    void EnableControls();

    CheckWays ways_;
    Texts texts_;
    NumberWords words_;
    ui::ListBox places_{*this, IDC_Places};
    ui::Button browse_{*this, IDC_Browse};
    ui::TextBox password_{*this, IDC_Password};
    ui::CheckButton compare_{*this, IDC_Compare};
    ui::Button check_{*this, IDC_Check};
    ui::Picture sign_{*this, IDC_Sign};
    ui::Label verdict_{*this, IDC_Verdict};
    ui::ListView items_{*this, IDC_Items};
    ui::Button selectAll_{*this, IDC_SelectAll};
    ui::Button deselectAll_{*this, IDC_DeselectAll};
    ui::Button recover_{*this, IDC_Recover};
    ui::Button saveReport_{*this, IDC_SaveReport};
    ui::TextBox details_{*this, IDC_Details};
    ui::ProgressBarControl progress_{*this, IDC_Progress};
    ui::Label progressText_{*this, IDC_ProgressText};
    ui::Button close_{*this, IDC_Close};
    ui::Button cancel_{*this, IDC_Cancel};

    ui::IconList icons_;
    ui::Anchors anchors_{*this};
    ui::ControlKeys detailsKeys_{*this, IDC_Details};
    ui::Timer follow_;
    ui::DelayedCall refresh_;

    std::vector<Place> shownPlaces_;
    std::vector<std::wstring> pickedPlaces_;
    std::wstring place_;     ///< of the backup that the window is about; empty: none
    std::wstring placeLine_; ///< of that place, when it was chosen
    CheckRows rows_;
    ShownRows shownRows_{rows_};
    const ItemReport* shownItem_ = nullptr; ///< whose details are shown
    int placesUsed_ = 0;
    bool isPlaceThere_ = false; ///< and its medium the same, as far as the list of places knows
    bool isMediumLost_ = false; ///< it has left since the work began
    std::wstring archive_;      ///< that the rows are about; empty while none is known

    Work work_ = Work::None;
    std::unique_ptr<CheckJob> job_;
    std::shared_ptr<BackupReport> untouched_;    ///< of a job that has read rows only; a next one takes them over
    bool isPart_ = false;                        ///< the job is about the ticked items only
    bool hasNewRows_ = false;                    ///< items of the job are among the rows
    int selectedBefore_ = -1;                    ///< where the selected item will stand again
    bool isAsking_ = false;                      ///< whether the window may close
    std::function<void()> untold_;               ///< what has ended meanwhile
    std::shared_ptr<const BackupReport> report_; ///< of the last work that has ended
    WorkPace pace_;
    std::chrono::steady_clock::time_point startedAt_;
    std::optional<std::chrono::steady_clock::time_point> cancelledAt_;
    std::unique_ptr<Hold> awake_;
    std::optional<ui::SessionEndHold> session_;

    BackgroundTask placesTask_;
    std::shared_ptr<std::vector<std::wstring>> listedDrives_;
    BackgroundTask savingTask_;
    std::shared_ptr<std::optional<std::wstring>> savingFailure_;
    std::wstring savedPath_;
    bool closesWhenSaved_ = false;
    std::vector<BackgroundTask> tasks_; ///< all that were begun
};
