#include "core/SpaceValues.h"
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

#include <random>

namespace {

const std::vector<std::wstring> Pool = {L"C:\\Data\\a.dat",
                                        L"C:\\Data\\A.DAT",
                                        L"C:\\Data\\b.dat",
                                        L"C:\\Data",
                                        L"C:\\Data\\*.*",
                                        L"c:\\data\\sub",
                                        L"C:\\Data\\Sub\\c.dat",
                                        L"C:\\Fam\\Rep1",
                                        L"C:\\Fam\\Rep.txt",
                                        L"C:\\Fam\\Other.txt",
                                        L"C:\\Fam",
                                        L"C:\\Mail\\a.pst",
                                        L"C:\\Mail\\b.PST",
                                        L"C:\\Users\\agent\\Desktop",
                                        L"C:\\Data2003",
                                        L"C:\\Mail\\old.pst",
                                        L"C:\\Data2003\\x.dat"};

/// The files of every sequence; nothing in a sequence changes them.
void Fill(SelectionBench& bench) {
    FakeFiles& files = bench.machine.files;
    files.AddSizedFile(L"C:\\Data\\a.dat", 1);
    files.AddSizedFile(L"C:\\Data\\b.dat", 999999999999);
    files.AddSizedFile(L"C:\\Data\\Sub\\c.dat", 123456789012345);
    files.AddSizedFile(L"C:\\Data2003\\x.dat", 77777);
    files.AddSizedFile(L"C:\\Fam\\Rep1\\x", 33333333);
    files.AddSizedFile(L"C:\\Fam\\Rep2\\y", 0);
    files.AddSizedFile(L"C:\\Fam\\Rep.txt", 7);
    files.AddSizedFile(L"C:\\Fam\\Other.txt", 4095);
    files.AddSizedFile(L"C:\\Mail\\a.pst", 2147483649);
    files.AddSizedFile(L"C:\\Mail\\b.PST", 65537);
    files.AddSizedFile(L"C:\\Mail\\old.pst\\below.pst", 3);
    files.AddSizedFile(L"C:\\Users\\agent\\Desktop\\d.txt", 19);
    bench.AddListFile(L"vexal.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\a.dat", L"C:\\Data\\Sub", L"C:\\None", L""});
    bench.AddListFile(L"brinde.lst", {L"C:\\Fam\\Rep*", L"C:\\Data\\b.dat", L"C:\\Mail\\old.pst"});
    bench.AddListFile(L"qamor.lst", {L"C:\\Data\\*", L"c:\\DATA\\b.dat", L"C:\\Data2003", L"C:\\Data2003\\x.dat"});
    bench.AddListFile(L"tarvel.lst", {L"**UserProfile**\\Desktop", L"C:\\Fam\\Rep.txt", L"C:\\Fam\\*.txt"});
    bench.AddListFile(L"outlookVista.lst", {L"C:\\Mail\\*.pst", L"**UserProfile**\\*.pst"});
}

class Sequence {
  public:
    Sequence(FakeMachine& machine, std::mt19937& random) : random_(random), bench_(machine) {
        machine.app.space->requiredSpace = Currency();
    }

    /// Runs random steps and tells them.
    std::string Run() {
        std::string told;
        if (Below(3) == 0) {
            bench_.list.LoadSets();
            told += "load ";
        }
        for (std::size_t steps = 1 + Below(10); steps > 0; --steps) told += Step() + " ";
        return told;
    }
    SelectionBench& Bench() { return bench_; }

  private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }
    const std::wstring& AnyPath() { return Pool[Below(Pool.size())]; }

    std::string Step() {
        const auto rows = static_cast<std::size_t>(bench_.list.RowCount());
        switch (Below(8)) {
        case 0:
        case 1:
            bench_.Add(AnyPath());
            return "add";
        case 2:
            bench_.list.AddDropped({AnyPath(), AnyPath(), AnyPath()});
            return "drop";
        case 3:
        case 4:
            if (rows > 0) bench_.list.EffacerFichierListe(static_cast<std::int32_t>(Below(rows)));
            return "remove";
        case 5:
        case 6: {
            const auto box = static_cast<std::int32_t>(Below(SetCount));
            if (bench_.list.Box(box).isEnabled) bench_.list.ClickBox(box);
            return "click" + std::to_string(box);
        }
        default:
            if (Below(4) == 0) bench_.list.EffacerTouteListe();
            return "all";
        }
    }

    std::mt19937& random_;
    SelectionBench bench_;
};

TEST(RequiredSpace, IsTheSumOverTheCollectionAfterAnySequence) {
    FakeMachine machine;
    SelectionBench files(machine);
    Fill(files);
    std::mt19937 random(20260314);
    int withItems = 0;
    for (int number = 0; number < 10000; ++number) {
        Sequence sequence(machine, random);
        const std::string told = sequence.Run();
        SelectionBench& bench = sequence.Bench();
        ASSERT_EQ(bench.machine.app.space->requiredSpace, bench.SumOfItems()) << "sequence " << number << ": " << told;
        ASSERT_EQ(bench.list.RowCount(), bench.list.ArrayFichier()->Count()) << "sequence " << number << ": " << told;
        ASSERT_TRUE(bench.machine.messageBoxes.shown.empty()) << "sequence " << number << ": " << told;
        if (bench.list.RowCount() > 0) ++withItems;
    }
    EXPECT_GT(withItems, 3000);
}

TEST(RequiredSpace, ComesBackToWhereItWasWhenAnItemIsAddedAndRemoved) {
    SelectionBench bench;
    Fill(bench);
    bench.list.LoadSets();
    const Currency before = bench.machine.app.space->requiredSpace;
    bench.Add(L"C:\\Mail\\b.PST");
    EXPECT_GT(bench.machine.app.space->requiredSpace, before);
    bench.list.EffacerFichierListe(bench.list.RowCount() - 1);
    EXPECT_EQ(bench.machine.app.space->requiredSpace, before);
}

} // namespace
