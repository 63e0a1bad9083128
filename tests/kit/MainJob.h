#pragma once

#include "Program.h"
#include "Report.h"
#include "Stick.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kit {

struct JobTimes {
    double backupSeconds = 0;
    double restoreSeconds = 0;
};

/// The program's main job in its real windows: everything in the documents folder goes to the stick, the originals are
/// deleted, everything comes back and is compared. What does not go well is noted in the report and is a Failure.
class MainJob {
  public:
    struct Plan {
        std::wstring programFolder;
        std::filesystem::path documents;
        std::wstring language; ///< for the names of steps and pictures
        bool arePicturesTaken = true;
    };

    MainJob(const Plan& plan, Stick& stick, Report& report) : plan_(plan), stick_(stick), report_(report) {}

    /// What takes the time of the archiver is timed: from the password to the last message.
    JobTimes Run();

    /// What the driven steps work with: the selected paths in their order.
    const std::vector<std::wstring>& Items() const { return items_; }

    static constexpr const wchar_t* Password = L"Valcoreaux1";

  private:
    void BackUp();
    void Restore();
    HWND OpenBackup(Program& program);
    void PickEverything(Program& program, HWND backup);
    void AddFolder(Program& program, HWND backup, const std::wstring& name);
    void RefuseWeakPassword(Program& program);
    double FinishAfterPassword(Program& program, const wchar_t* picture);
    void RefuseWrongPassword(Program& program);
    void Picture(HWND window, const wchar_t* what);

    Plan plan_;
    Stick& stick_;
    Report& report_;
    std::vector<std::wstring> items_;
    JobTimes times_;
};

/// Seconds with two digits.
std::wstring InSeconds(double seconds);

} // namespace kit
