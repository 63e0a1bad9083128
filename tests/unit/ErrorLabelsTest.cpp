// Under which label a procedure's failure is told: what users quote to the support desk.
#include "archive/clsCopie.h"
#include "archive/clsListe.h"
#include "selection/clsColFileInfo.h"
#include "support/FakeMachine.h"
#include "support/FakeProgressBar.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

class IdleParent : public BackupParent {
  public:
    bool StopWrite() override { return false; }
    void RefreshWindow() override {}
};

struct LabelledFailure {
    const wchar_t* label;
    /// Makes the procedure fail on this machine.
    std::function<void(FakeMachine&)> provoke;
};

constexpr const wchar_t* Archiver = L"C:\\Valcoreaux\\Backup\\7Za.exe";
constexpr const wchar_t* WorkFolder = L"C:\\Valcoreaux\\Backup\\zip";

void BreakArchiver(FakeMachine& machine) {
    machine.processes.effect = [](const std::wstring&) { throw RuntimeError(ErrorNumber::DeviceIoError); };
}

const LabelledFailure Failures[] = {
    {L"CopierListeFichiers, Class clsCopie",
     [](FakeMachine& machine) {
         machine.files.AddFolder(WorkFolder);
         machine.files.Deny(WorkFolder);
         clsColFileInfo items(machine.app);
         FakeProgressBar progress;
         IdleParent parent;
         EXPECT_FALSE(clsCopie(machine.app).CopierListeFichiers(items, progress, parent));
     }},
    {L"CopierUSB, Class clsCopie",
     [](FakeMachine& machine) {
         machine.drives.Add(L"E:\\", DriveType::Removable);
         EXPECT_FALSE(clsCopie(machine.app).CopierUSB(L"E:\\"));
     }},
    {L"ExecCmd, Class clsCopie",
     [](FakeMachine& machine) {
         BreakArchiver(machine);
         EXPECT_EQ(clsCopie(machine.app).ExecCmd(Archiver), 0);
     }},
    {L"EnregistrerListeFichiers, module frmBackupCD",
     [](FakeMachine& machine) {
         machine.environment.Set(L"Temp", L"C:\\None");
         clsColFileInfo items(machine.app);
         FakeProgressBar progress;
         clsListe(machine.app).EnregistrerListeFichiers(items, progress);
     }},
};

TEST(ErrorLabels, EachProcedureFailsUnderItsOwn) {
    for (const LabelledFailure& failure : Failures) {
        FakeMachine machine;
        machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
        failure.provoke(machine);
        const std::wstring told = std::wstring(L" dans la procédure ") + failure.label + L" à la ligne nº 0";
        ASSERT_EQ(machine.messageBoxes.shown.size(), 1u) << failure.label;
        EXPECT_NE(machine.messageBoxes.shown[0].text.find(told), std::wstring::npos)
            << machine.messageBoxes.shown[0].text;
    }
}

} // namespace
