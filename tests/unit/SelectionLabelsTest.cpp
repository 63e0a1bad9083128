// The label under which each procedure of the selection reports its failures: users quote it to the support desk.
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace {

struct Failure {
    const wchar_t* label;
    int number;
    std::function<void(SelectionBench&)> provoke;
};

void PrintTo(const Failure& failure, std::ostream* out) {
    *out << ToAnsi(failure.label);
}

void FailAtEveryEvent(SelectionBench& bench) {
    bench.host.whenRaised = [](const std::wstring&) { throw RuntimeError(ErrorNumber::DeviceIoError); };
}

/// A set whose one entry stands for the file C:\Fam\Rep.txt.
void LoadFamily(SelectionBench& bench) {
    bench.AddListFile(L"qamor.lst", {L"C:\\Fam\\Rep*"});
    bench.list.LoadSets();
}

const std::vector<Failure> Failures = {
    {L"AjouterFichRep, module frmBackupCD", 57,
     [](SelectionBench& bench) {
         FailAtEveryEvent(bench);
         bench.Add(L"C:\\Fam\\Rep.txt");
     }},
    {L"DetruireItem, module frmBackupCD", 57,
     [](SelectionBench& bench) {
         bench.Add(L"C:\\Fam\\Rep.txt");
         FailAtEveryEvent(bench);
         bench.list.DetruireItem(0);
     }},
    {L"EffacerTouteListe, module frmBackupCD", 57,
     [](SelectionBench& bench) {
         FailAtEveryEvent(bench);
         bench.list.EffacerTouteListe();
     }},
    {L"cmdAjouterRep_Click, module frmBackupCD", 7,
     [](SelectionBench& bench) {
         bench.machine.strings.outOfMemoryAt = 257;
         bench.list.AddFolder(L"C:\\");
     }},
    {L"lvFichRep_OLEDragDrop, module frmBackupCD", 7,
     [](SelectionBench& bench) {
         bench.machine.strings.outOfMemoryAt = 257;
         bench.list.AddDropped({L"C:\\"});
     }},
    {L"Form_Load, module frmBackupCD", 57,
     [](SelectionBench& bench) {
         bench.machine.messageLoop.handler = [] { throw RuntimeError(ErrorNumber::DeviceIoError); };
         bench.list.LoadSets();
     }},
    {L"chkSauvOKR_Click, module frmBackupCD", 57,
     [](SelectionBench& bench) {
         LoadFamily(bench);
         FailAtEveryEvent(bench);
         bench.list.ClickBox(1);
     }},
    {L"RemplirArray, module frmBackupCD", 70,
     [](SelectionBench& bench) {
         bench.machine.files.Deny(bench.machine.app.ListFileFolder() + L"qamor.lst");
         LoadFamily(bench);
     }},
    {L"ViderArray, module frmBackupCD", 70,
     [](SelectionBench& bench) {
         LoadFamily(bench);
         bench.machine.files.Deny(bench.machine.app.ListFileFolder() + L"qamor.lst");
         bench.list.ClickBox(1);
     }},
    {L"AjouteMultiple, module modFonctionsCommunes", 70,
     [](SelectionBench& bench) {
         bench.machine.files.Deny(L"C:\\Fam");
         LoadFamily(bench);
     }},
    {L"AjouteToListAndArray, module modFonctionsCommunes", 70,
     [](SelectionBench& bench) {
         bench.machine.files.Deny(L"C:\\Fam\\Rep.txt");
         LoadFamily(bench);
     }},
    {L"EffacerMultiple, module modFonctionsCommunes", 53,
     [](SelectionBench& bench) {
         LoadFamily(bench);
         bench.machine.files.Remove(L"C:\\Fam\\Rep.txt");
         bench.list.ClickBox(1);
     }},
};

class SelectionLabels : public testing::TestWithParam<Failure> {};

TEST_P(SelectionLabels, ProcedureReportsOnceUnderItsOwn) {
    SelectionBench bench;
    bench.machine.files.AddSizedFile(L"C:\\Fam\\Rep.txt", 10);
    GetParam().provoke(bench);
    ASSERT_EQ(bench.machine.messageBoxes.shown.size(), 1u);
    const std::wstring& text = bench.machine.messageBoxes.shown[0].text;
    EXPECT_EQ(text.find(L"Erreur nº " + std::to_wstring(GetParam().number) + L" ("), 0u) << text;
    EXPECT_NE(text.find(L" dans la procédure " + std::wstring(GetParam().label) + L" à la ligne nº 0"),
              std::wstring::npos)
        << text;
}

INSTANTIATE_TEST_SUITE_P(Each, SelectionLabels, testing::ValuesIn(Failures));

class StubbornPointer : public FakeMessageLoop {
  public:
    void SetPointer(Pointer) override { throw RuntimeError(ErrorNumber::InvalidCall); }
};

TEST(SelectionLabel, AddingFilesReportsUnderItsOwn) {
    StubbornPointer messages;
    FakeMachine machine(&messages);
    SelectionBench bench(machine);
    bench.list.AddFiles(L"C:\\Fam", {L"Rep.txt"});
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L" AjouterFichier, module frmBackupCD "), std::wstring::npos);
}

} // namespace
