// The backup window with a disc writer that works: what it leaves behind, and whether it goes on answering.
#include "BurnerBench.h"
#include "backup/forms/frmBackup.h"
#include "core/ArchiveValues.h"
#include "core/StartUpValues.h"
#include "core/UserValues.h"
#include "selection/forms/ctlSelectionFichiersIds.h"
#include "support/FakeMachine.h"
#include "support/FakeMainWindow.h"
#include "ui/MessagePump.h"
#include "window/Footprint.h"
#include "window/FormDriver.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>

namespace {

class WindowLoop : public MessageLoop {
  public:
    void RunPending() override { ui::RunPendingMessages(); }
    void SetPointer(Pointer pointer) override { ui::ShowHourglass(pointer == Pointer::Hourglass); }
};

class BackupWindow : public testing::Test, protected FormDriver {
  protected:
    BackupWindow() {
        stands_.drives.Add(L"C:\\", DriveType::Fixed, L"", {5e9, 9e9});
        stands_.files.AddFile(L"C:\\Valcoreaux\\Backup\\7Za.exe", "x");
        stands_.files.AddSizedFile(L"C:\\Data\\a.txt", 1000000);
        stands_.files.AddFolder(L"C:\\Temp");
        stands_.environment.Set(L"Temp", L"C:\\Temp");
        stands_.processes.effect = [this](const std::wstring& commandLine) {
            const bool isOuter = commandLine.find(L"OKRBACKUP.ZIP") != std::wstring::npos;
            stands_.files.AddSizedFile(isOuter ? L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP"
                                               : L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip",
                                       900000);
        };
        app_.startUp->strRepRacine = L"C:\\Valcoreaux";
        app_.user->strProfilUtilisateur = stands_.account.profileFolder;
        app_.user->strNomUtilisateur = L"agent";
        app_.startUp->dblEspaceDisponible = 5e9;
        // What the writer reads is really there.
        std::error_code ignored;
        std::filesystem::create_directories(L"C:\\Valcoreaux\\Backup\\zip", ignored);
        for (const wchar_t* name : {L"_listFich.lst", L"OKRBACKUP.ZIP"})
            CopyFileW(bench_.MakeFile(name, 400000).c_str(),
                      (std::wstring(L"C:\\Valcoreaux\\Backup\\zip\\") + name).c_str(), FALSE);
    }

    void Open() {
        form_ = std::make_unique<frmBackup>(app_, [this](ui::Form&) {
            app_.archive->backupPassword = L"Secret-1";
            return true;
        });
        form_->SetMedia(Medium::Cd);
        form_->SetParent(mainWindow_);
        form_->Create();
        form_->Show();
    }
    HWND Window() const override { return form_->Handle(); }
    /// As the main window or the end of the session does: the cross is refused during a burn.
    void CloseForGood() {
        form_->Unload();
        EXPECT_FALSE(form_->IsLoaded());
        form_.reset();
    }
    /// Drops one file on the list.
    void AddItem() { ListViewDriver(HostedAt(IDC_lvFichRep)).Drop({L"C:\\Data\\a.txt"}); }
    void StartBurn() {
        AddItem();
        Click(IDC_cmdLancer);
    }
    void LiveOnce(int turn) {
        bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdRw);
        Open();
        switch (turn % 4) {
        case 0: // as it was opened
            break;
        case 1: // at the start of a burn
            StartBurn();
            break;
        case 2: // in the middle of one
            StartBurn();
            bench_.RunUntil([this] { return BurnerBench::HasImage(L'G'); });
            break;
        default: // after a stop, the drive still at work
            StartBurn();
            Click(IDC_cmdStopWrite);
            break;
        }
        CloseForGood();
    }

    Machine Ports() {
        Machine ports = stands_.Ports();
        ports.messageLoop = loop_;
        ports.discWriters = discWriters_;
        return ports;
    }

    BurnerBench bench_;
    WindowLoop loop_;
    FakeMachine stands_;
    ImapiDiscWriters discWriters_{loop_};
    FakeMainWindow mainWindow_;
    Application app_{Ports()};
    std::unique_ptr<frmBackup> form_;
};

TEST_F(BackupWindow, TwoHundredLivesWithAWriterAtWorkLeaveNothingBehind) {
    BurnerBench::SetDrive(L'G', {{"write milliseconds", "300"}, {"stop milliseconds", "20"}, {"shows content", "no"}});
    // What the system loads once is there after the first windows.
    for (int turn = 0; turn < 12; ++turn) LiveOnce(turn);
    const Footprint before = FootprintNow();
    ASSERT_GT(before.handles, 0u);
    ASSERT_GT(before.gdiObjects, 0u);
    for (int turn = 0; turn < 200; ++turn) LiveOnce(turn);
    // The burner's last late events are still on their way.
    bench_.RunUntil([&] { return LiveBurnerObjects() == 0 && FootprintNow() == before; });
    EXPECT_EQ(LiveBurnerObjects(), 0);
    EXPECT_EQ(FootprintNow(), before);
}

TEST_F(BackupWindow, AnswersWithinATenthOfASecondWhileADiscIsWritten) {
    BurnerBench::SetDrive(L'G', {{"write milliseconds", "1000"}, {"shows content", "no"}});
    ULONGLONG longest = 0;
    // A window that waits for the drive does so every time; one that had to wait for this machine's other work does
    // not.
    for (int attempt = 0; attempt < 5 && (attempt == 0 || longest > 100); ++attempt) {
        bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdR);
        Open();
        StartBurn();
        longest = 0;
        ULONGLONG last = GetTickCount64();
        bench_.RunUntil([&] {
            longest = std::max(longest, GetTickCount64() - last);
            last = GetTickCount64();
            return BurnerBench::DiscSetting(L'G', "state") == "open";
        });
        EXPECT_EQ(BurnerBench::DiscSetting(L'G', "state"), "open");
        bench_.RunUntil([this] { return !form_->IsLoaded(); });
        EXPECT_FALSE(form_->IsLoaded());
        EXPECT_TRUE(mainWindow_.FullExit());
    }
    EXPECT_LE(longest, 100u);
}

} // namespace
