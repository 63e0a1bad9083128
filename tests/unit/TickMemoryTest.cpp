#include "restore/TickMemory.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

class TickMemoryTest : public testing::Test {
  protected:
    TickMemoryTest() {
        machine.drives.Add(L"E:\\", DriveType::Removable, L"SAUVEGARDE");
        machine.files.AddFile(L"E:\\_listFich.lst", "list");
        machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "archive");
        Fill(rows);
    }

    void Fill(RestoreRows& filled) {
        filled.Clear();
        filled.Add(machine.app, {{L"C:\\a", L"32", L"Zip0001"}, {L"C:\\b", L"32", L"Zip0002"}});
    }
    InsertedMedium::Print Print(const std::wstring& root = L"E:\\") { return LookAtMedium(machine.app, root).print; }
    /// Whether a medium's ticks are given back; they are those that were kept then.
    bool IsKnown(const InsertedMedium::Print& print) {
        RestoreRows shown;
        Fill(shown);
        shown.TickAll(true);
        if (!memory.GiveBack(print, shown)) return false;
        EXPECT_EQ(shown.Ticks(), rows.Ticks());
        return true;
    }

    FakeMachine machine;
    RestoreRows rows;
    TickMemory memory;
};

TEST_F(TickMemoryTest, GivesASameMediumItsTicks) {
    EXPECT_FALSE(IsKnown(Print()));
    rows.Toggle(1);
    memory.Keep(Print(), rows);
    EXPECT_TRUE(IsKnown(Print()));
    rows.Toggle(0);
    rows.Toggle(1);
    memory.Keep(Print(), rows);
    EXPECT_TRUE(IsKnown(Print())) << "the latest ticks count";
    memory.Clear();
    EXPECT_FALSE(IsKnown(Print()));
}

TEST_F(TickMemoryTest, NoTickAtAllIsRememberedToo) {
    memory.Keep(Print(), rows);
    EXPECT_TRUE(IsKnown(Print()));
}

TEST_F(TickMemoryTest, RowsThatCannotBeTickedAreNotRemembered) {
    rows.ShowNoBackup(L"rien");
    memory.Keep(Print(), rows);
    EXPECT_FALSE(IsKnown(Print()));
}

TEST_F(TickMemoryTest, TheSameMediumMayComeBackUnderAnotherLetter) {
    memory.Keep(Print(), rows);
    machine.drives.Add(L"F:\\", DriveType::Removable, L"SAUVEGARDE");
    machine.files.AddFile(L"F:\\_listFich.lst", "list");
    machine.files.AddFile(L"F:\\OKRBACKUP.ZIP", "archive");
    EXPECT_TRUE(IsKnown(Print(L"F:\\")));
    EXPECT_NE(Print(L"F:\\"), Print(L"E:\\"));
}

TEST_F(TickMemoryTest, AnotherLabelListOrArchiveSizeIsAnotherMedium) {
    memory.Keep(Print(), rows);
    machine.drives.At(L"E:\\")->label = L"AUTRE";
    EXPECT_FALSE(IsKnown(Print()));
    machine.drives.At(L"E:\\")->label = L"SAUVEGARDE";
    machine.files.AddFile(L"E:\\_listFich.lst", "lisd");
    EXPECT_FALSE(IsKnown(Print()));
    machine.files.AddFile(L"E:\\_listFich.lst", "list");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "archives");
    EXPECT_FALSE(IsKnown(Print()));
}

TEST_F(TickMemoryTest, SeveralMediaAreKeptApartAndTheOldestIsForgottenOfVeryMany) {
    const InsertedMedium::Print first = Print();
    memory.Keep(first, rows);
    rows.TickAll(true);
    for (int other = 1; other <= 31; ++other) {
        machine.drives.At(L"E:\\")->label = std::to_wstring(other);
        memory.Keep(Print(), rows);
    }
    rows.TickAll(false);
    EXPECT_TRUE(IsKnown(first));
    machine.drives.At(L"E:\\")->label = L"32";
    memory.Keep(Print(), rows);
    EXPECT_FALSE(IsKnown(first));
    EXPECT_TRUE(IsKnown(Print()));
}

} // namespace
