// A load, a selection, a run and a restore, each with one allocation after the other that fails: the medium keeps a
// whole pair, the user is told, and the next try is as good as if there had been memory all the time.
#include "archive/MediumPair.h"
#include "archive/WorkFolder.h"
#include "archive/clsListe.h"
#include "archive/modGestionRestaure.h"
#include "backup/ArchiveSteps.h"
#include "backup/BackupRun.h"
#include "core/ArchiveValues.h"
#include "core/SpaceValues.h"
#include "core/UserValues.h"
#include "low_memory/AllocationFailure.h"
#include "platform/Text.h"
#include "restore/TickMemory.h"
#include "shell/DiskDetection.h"
#include "shell/ErrorReport.h"
#include "shell/LanguageChoice.h"
#include "support/FakeBackupView.h"
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

const std::wstring Work = L"C:\\Valcoreaux\\Backup\\zip\\";

/// Which allocations are made to fail, one trial each: a sample, or every one up to BACKUP_ALLOCATIONS.
struct Sample {
    long last = 10000;
    long step = 3;

    Sample() {
        const char* wanted = std::getenv("BACKUP_ALLOCATIONS");
        if (wanted == nullptr) return;
        last = std::atol(wanted);
        step = 1;
    }
};

/// Runs `trial(at, count)` for each number until one is past the last allocation of the trial; it gives whether the
/// failure happened.
template<typename Trial>
void ForEachFailure(Trial trial) {
    const Sample sample;
    for (const long count : {1L, 3L}) {
        long failures = 0;
        for (long at = 1; at <= sample.last && trial(at, count); at += sample.step) {
            ++failures;
            if (testing::Test::HasFailure()) FAIL() << "allocation " << at << ", " << count << " in a row";
        }
        EXPECT_GT(failures, 0) << "no allocation was made to fail";
        testing::Test::RecordProperty("failures_of_" + std::to_string(count), static_cast<int>(failures));
    }
}

/// As a window procedure does: what leaves a handler is reported, and nothing is thrown on. What fails there is lost.
template<typename Steps>
bool AsAHandler(Steps steps) {
    try {
        steps();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// What the archiver does with its command lines, in the stand-in's files.
void Archive(FakeMachine& machine, const std::wstring& commandLine) {
    const OutsideTheProgram otherProcess;
    FakeFiles& files = machine.files;
    const bool isFinal = commandLine.find(L" -p") != std::wstring::npos;
    if (commandLine.find(L" a -tzip ") == std::wstring::npos) {
        if (commandLine.find(L"E:\\OKRBACKUP.ZIP") != std::wstring::npos && files.FileExists(L"E:\\OKRBACKUP.ZIP"))
            files.AddFile(Work + L"Zip0001.zip", files.Read(L"E:\\OKRBACKUP.ZIP"));
        return;
    }
    const std::wstring inner =
        Work + L"Zip000" + (commandLine.find(L"Zip0002") != std::wstring::npos ? L"2" : L"1") + L".zip";
    if (!isFinal) {
        files.AddFile(inner, "inner");
        return;
    }
    const std::wstring outer = Work + L"OKRBACKUP.ZIP";
    const std::string before = files.FileExists(outer) ? files.Read(outer) : "new:";
    if (files.FileExists(inner)) files.AddFile(outer, before + files.Read(inner));
}

/// A workstation with documents, and a disk with an older backup.
struct LowMemoryBench {
    FakeMachine machine;
    SelectionBench selection{machine};
    FakeBackupView view;
    BackupState state;
    DiscSide discs{machine.app, state, view};
    ArchiveSteps steps{machine.app, {view, [this] { return selection.list.ArrayFichier(); }, [] { return true; }}};
    BackupRun run{machine.app, state, view, steps, discs};

    LowMemoryBench() {
        machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\7Za.exe");
        machine.environment.Set(L"Temp", L"C:\\Temp");
        machine.files.AddFolder(L"C:\\Temp");
        machine.files.AddFile(L"C:\\Docs\\a.txt", "one");
        machine.files.AddFile(L"C:\\Docs\\Lettres\\b.txt", "two");
        machine.drives.Add(L"E:\\", DriveType::Removable, L"STICK", {1e6, 2e6});
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"", {1e6, 2e6});
        machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old archive");
        machine.files.AddFile(L"E:\\_listFich.lst", "C:\\Docs\\a.txt,32,Zip0001\r\n");
        machine.processes.effect = [this](const std::wstring& line) { Archive(machine, line); };
        state.miTypeMedia = Medium::RemovableDisk;
        state.mstrDrive = L"E:\\";
        view.drive = L"(E:\\) Disque amovible";
        machine.app.archive->backupPassword = L"Valcoreaux1";
        machine.app.space->availableSpace = Currency::FromDouble(1e6);
        state.phase.Enter(RunPhase::Idle);
    }

    bool WasTold(TextId title) const {
        return std::ranges::any_of(machine.messageBoxes.shown,
                                   [&](const auto& box) { return box.title == machine.app.Text(title); });
    }
    std::string Told() const {
        std::string lines;
        for (const auto& box : machine.messageBoxes.shown) lines += ToAnsi(box.text) + "\n";
        return lines;
    }
    std::string OnDisk(const std::wstring& name) const {
        return machine.files.FileExists(L"E:\\" + name) ? machine.files.Read(L"E:\\" + name) : "";
    }
    /// After the next start on the disk: "old", "new", or what is there.
    std::string Pair() {
        FinishExchange(machine.files, L"E:\\");
        const std::string archive = OnDisk(L"OKRBACKUP.ZIP");
        const std::string list = OnDisk(L"_listFich.lst");
        for (const std::wstring& path : machine.files.Paths())
            if (path.find(L".~") != std::wstring::npos) return "left behind: " + ToAnsi(path);
        if (archive == "old archive" && list == "C:\\Docs\\a.txt,32,Zip0001\r\n") return "old";
        if (archive == "new:innerinner" &&
            list == "C:\\Docs\\a.txt,32,Zip0001\r\nC:\\Docs\\Lettres\\*.*,-1,Zip0002\r\n")
            return "new";
        return "mixture of " + archive + " and " + list;
    }
};

TEST(LowMemory, ARunKeepsAWholePairAndTheNextOneIsGood) {
    ForEachFailure([](long at, long count) {
        LowMemoryBench bench;
        bench.selection.Add(L"C:\\Docs\\a.txt");
        bench.selection.Add(L"C:\\Docs\\Lettres");
        bool hasHappened = false;
        bool isHandled = false;
        {
            const AllocationFailure failure(at, count);
            isHandled = AsAHandler([&] { bench.run.Launch(); });
            hasHappened = failure.HasHappened();
        }
        const std::string pair = bench.Pair();
        const bool isReported = bench.WasTold(TextId::ReportTitle);
        // An archiver that could not be started is told of, and then taken for one that has done its work.
        EXPECT_TRUE(pair == "old" || pair == "new" || (isReported && pair.starts_with("mixture of new"))) << pair;
        const bool isCalledGood = bench.WasTold(TextId::BackupDoneTitle);
        if (isCalledGood && !isReported) {
            EXPECT_EQ(pair, "new");
        }
        if (pair == "old") {
            EXPECT_TRUE(!isHandled || !bench.machine.messageBoxes.shown.empty()) << "nothing was told";
        }
        if (!bench.view.hasEnded) {
            EXPECT_FALSE(bench.state.phase.IsRunning()) << "the window stays busy";
            EXPECT_TRUE(bench.state.awake == nullptr);
            bench.run.Launch();
            EXPECT_EQ(bench.Pair(), "new") << bench.Told();
        }
        return hasHappened;
    });
}

TEST(LowMemory, ASelectionStaysInStepAndTheNextOneIsTaken) {
    ForEachFailure([](long at, long count) {
        LowMemoryBench bench;
        SelectionList& list = bench.selection.list;
        bool hasHappened = false;
        bool isHandled = false;
        {
            const AllocationFailure failure(at, count);
            isHandled = AsAHandler([&] {
                list.AddDropped({L"C:\\Docs\\a.txt", L"C:\\Docs\\Lettres"});
                if (list.RowCount() > 0) list.DetruireItem(0);
                list.AddFiles(L"C:\\Docs", {L"a.txt"});
                list.AddFolder(L"C:\\Docs");
            });
            hasHappened = failure.HasHappened();
        }
        // Where a step failed and was told, a row may be without its item or an item without its row.
        if (bench.machine.messageBoxes.shown.empty() && isHandled) {
            EXPECT_EQ(list.RowCount(), list.ArrayFichier()->Count());
            EXPECT_EQ(bench.machine.app.space->requiredSpace, bench.selection.SumOfItems());
        }
        list.EffacerTouteListe();
        list.AddDropped({L"C:\\Docs\\a.txt", L"C:\\Docs\\Lettres"});
        EXPECT_EQ(list.RowCount(), 2);
        EXPECT_EQ(list.ArrayFichier()->Count(), 2);
        return hasHappened;
    });
}

TEST(LowMemory, ARecordIsKeptWithItsKeyOrNotAtAll) {
    ForEachFailure([](long at, long count) {
        FakeMachine machine;
        clsColFileInfo collection(machine.app);
        bool hasHappened = false;
        {
            const AllocationFailure failure(at, count);
            AsAHandler([&] { collection.Add(L"C:\\Docs\\Lettres d'été\\Madame Tremblay.doc", KindFile); });
            hasHappened = failure.HasHappened();
        }
        const bool isFound = collection.Find(L"C:\\Docs\\Lettres d'été\\Madame Tremblay.doc", KindFile) != nullptr;
        EXPECT_EQ(collection.Count(), isFound ? 1 : 0);
        return hasHappened;
    });
}

TEST(LowMemory, ALoadGoesOnWithWhatItHasAndTheNextOneIsWhole) {
    ForEachFailure([](long at, long count) {
        LowMemoryBench bench;
        bench.selection.AddListFile(L"qamor.lst", {L"C:\\Docs\\a.txt", L"C:\\Docs\\Let*"});
        bench.selection.AddListFile(L"vexal.lst", {L"C:\\Docs\\Lettres\\b.txt"});
        FakeMachine& machine = bench.machine;
        bool hasHappened = false;
        {
            const AllocationFailure failure(at, count);
            AsAHandler([&] { ChooseLanguage(machine.app); });
            AsAHandler([&] { DetectRemovableDisks(machine.app); });
            AsAHandler([&] { DetectExternalDisks(machine.app); });
            AsAHandler([&] { bench.selection.list.LoadSets(); });
            hasHappened = failure.HasHappened();
        }
        SelectionBench next(machine);
        machine.app.space->requiredSpace = Currency();
        next.list.LoadSets();
        EXPECT_EQ(next.list.RowCount(), 3);
        EXPECT_EQ(DetectRemovableDisks(machine.app).roots.size(), 1u);
        return hasHappened;
    });
}

TEST(LowMemory, ARestoreLeavesTheMediumAloneAndTheNextOneSeesIt) {
    ForEachFailure([](long at, long count) {
        LowMemoryBench bench;
        FakeMachine& machine = bench.machine;
        const auto restore = [&] {
            TickMemory ticks;
            RestoreRows rows;
            ResetWorkFolder(machine.app);
            FinishExchangeIfPossible(machine.app, L"E:\\");
            const InsertedMedium medium = LookAtMedium(machine.app, L"E:\\");
            if (medium.failure) throw RuntimeError(*medium.failure);
            std::vector<ControlFileRecord> records;
            ReadControlFile(medium.controlFile, machine.app.user->strProfilUtilisateur, records);
            rows.Add(machine.app, std::move(records));
            rows.TickAll(true);
            ticks.Keep(medium.print, rows);
            modGestionRestaure::UnZipOkrBackup(machine.app, L"E:\\", L"OKRBACKUP.ZIP");
            for (int row = 0; row < rows.Count(); ++row) {
                const ControlFileRecord& record = rows.At(row).record;
                modGestionRestaure::UnZipIntermediaire(machine.app, ExtractionPath(record.restorePath),
                                                       record.innerArchive);
            }
            RemoveWorkFolder(machine.app);
            return rows.Count();
        };
        bool hasHappened = false;
        {
            const AllocationFailure failure(at, count);
            AsAHandler([&] { Guarded(machine.app, L"cmdLancerRestauration_Click, module frmRestaureCD", restore); });
            hasHappened = failure.HasHappened();
        }
        EXPECT_EQ(bench.Pair(), "old");
        EXPECT_EQ(restore(), 1);
        return hasHappened;
    });
}

/// Boxes that take no memory.
struct BoxesWithoutMemory : MessageBoxes {
    std::wstring expected;
    std::wstring expectedTitle;
    int asExpected = 0;

    int Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) override {
        asExpected += text == expected && title == expectedTitle && style == box::Critical ? 1 : 0;
        return 1;
    }
};

TEST(LowMemory, AFailureThatCannotBeReportedIsToldWithWhatWasMadeBefore) {
    FakeMachine machine;
    ChooseLanguage(machine.app);
    BoxesWithoutMemory boxes;
    boxes.expected =
        machine.app.Text(TextId::ReportNumber) + L"7 (Out of memory)\r\n\r\n" + machine.app.Text(TextId::ReportSupport);
    boxes.expectedTitle = machine.app.Text(TextId::ReportTitle);
    machine.app.machine.messageBoxes = boxes;
    {
        const AllocationFailure failure(1, 1000);
        AsAHandler(
            [&] { Guarded(machine.app, L"cmdLancer_Click, module frmBackupCD", [] { throw std::bad_alloc(); }); });
    }
    EXPECT_EQ(boxes.asExpected, 1);
}

TEST(LowMemory, AnExchangeOfThePairIsFinishedOrUndone) {
    ForEachFailure([](long at, long count) {
        LowMemoryBench bench;
        bench.machine.files.AddFile(Work + L"OKRBACKUP.ZIP", "new:innerinner");
        bench.machine.files.AddFile(Work + L"_listFich.lst",
                                    "C:\\Docs\\a.txt,32,Zip0001\r\nC:\\Docs\\Lettres\\*.*,-1,Zip0002\r\n");
        bool hasHappened = false;
        {
            const AllocationFailure failure(at, count);
            AsAHandler([&] {
                ExchangePair(bench.machine.files, L"E:\\", {Work + L"OKRBACKUP.ZIP", Work + L"_listFich.lst"});
            });
            hasHappened = failure.HasHappened();
        }
        const std::string pair = bench.Pair();
        EXPECT_TRUE(pair == "old" || pair == "new") << pair;
        return hasHappened;
    });
}

} // namespace
