#include "archive/DriveLines.h"
#include "core/LanguageValues.h"
#include "core/UsbAnswer.h"
#include "resources/TextId.h"
#include "restore/InsertedMedium.h"
#include "restore/RestoreRows.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::wstring>;

class RestoreDrives : public testing::Test {
  protected:
    void AddUsbDisk(const std::wstring& drive, std::optional<std::wstring> label) {
        machine.drives.Add(drive + L"\\", DriveType::Fixed, std::move(label));
        machine.usb.busTypes[drive] = 7;
        machine.usb.serviceNames = {L"USBSTOR"};
    }

    FakeMachine machine;
};

TEST_F(RestoreDrives, RemovableDiskIsListedWithItsLabel) {
    machine.drives.Add(L"E:\\", DriveType::Removable, L"SAUVEGARDE");
    EXPECT_EQ(DriveLines(machine.app), Lines{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
}

TEST_F(RestoreDrives, RemovableDiskWithoutAReadableVolumeIsListedAlone) {
    machine.drives.Add(L"A:\\", DriveType::Removable).canRead = false;
    EXPECT_EQ(DriveLines(machine.app), Lines{L"A:\\ Disque amovible"});
}

TEST_F(RestoreDrives, EmptyLabelIsALabelAllTheSame) {
    machine.drives.Add(L"E:\\", DriveType::Removable, L"");
    EXPECT_EQ(DriveLines(machine.app), Lines{L"E:\\ Disque amovible  Volume : "});
}

TEST_F(RestoreDrives, CdRomAndCdWriterDifferByTheProbe) {
    machine.drives.Add(L"D:\\", DriveType::CdRom, L"DISQUE");
    machine.drives.Add(L"F:\\", DriveType::CdRom, L"DISQUE").canOpenVolume = false;
    EXPECT_EQ(DriveLines(machine.app), (Lines{L"D:\\ CD/DVD-ROM  Volume : DISQUE", L"F:\\ CD-R/RW  Volume : DISQUE"}));
}

TEST_F(RestoreDrives, CdDriveWithoutAReadableDiscSaysSo) {
    machine.drives.Add(L"D:\\", DriveType::CdRom).canRead = false;
    auto& writer = machine.drives.Add(L"F:\\", DriveType::CdRom);
    writer.canRead = false;
    writer.canOpenVolume = false;
    EXPECT_EQ(DriveLines(machine.app),
              (Lines{L"D:\\ Aucun CD/DVD inséré ou CD/DVD vierge", L"F:\\ Aucun CD inséré ou CD vierge"}));
}

TEST_F(RestoreDrives, FixedDiskIsListedOnTheUsbBusOnly) {
    machine.drives.Add(L"C:\\", DriveType::Fixed, L"SYSTEME");
    machine.usb.busTypes[L"C:"] = 11;
    AddUsbDisk(L"G:", L"EXTERNE");
    EXPECT_EQ(DriveLines(machine.app), Lines{L"G:\\ Disque externe  Volume : EXTERNE"});
}

TEST_F(RestoreDrives, FixedDiskIsSkippedWhenTheUserDeclinedUsb) {
    AddUsbDisk(L"G:", L"EXTERNE");
    machine.app.usbAnswer->blnQuestionUSB = 1;
    machine.app.usbAnswer->intReponseUSB = 7;
    machine.drives.Add(L"E:\\", DriveType::Removable, L"X");
    EXPECT_EQ(DriveLines(machine.app), Lines{L"E:\\ Disque amovible  Volume : X"});
}

TEST_F(RestoreDrives, NetworkAndRamDrivesAreSkipped) {
    machine.drives.Add(L"N:\\", DriveType::Network);
    machine.drives.Add(L"R:\\", DriveType::RamDisk);
    EXPECT_EQ(DriveLines(machine.app), Lines{L"Aucun lecteur de CD ou de disquette trouvé sur cet ordinateur"});
}

TEST_F(RestoreDrives, EnglishLinesUseTheEnglishTexts) {
    machine.app.language->lngLangue = 10000;
    machine.drives.Add(L"E:\\", DriveType::Removable, L"BACKUP");
    EXPECT_EQ(DriveLines(machine.app), Lines{L"E:\\ Removable disk  Volume : BACKUP"});
}

TEST_F(RestoreDrives, RootIsTheFirstThreeCharactersOfADrivesLine) {
    EXPECT_EQ(RootOfLine(L"E:\\ Disque amovible"), L"E:\\");
    EXPECT_EQ(RootOfLine(L"Aucun lecteur de CD ou de disquette trouvé sur cet ordinateur"), L"");
    EXPECT_EQ(RootOfLine(L""), L"");
}

TEST(RestoreRows, KindIsLabelledByItsNumber) {
    FakeMachine machine;
    EXPECT_EQ(KindLabel(machine.app, L"-1"), L"Rep.");
    EXPECT_EQ(KindLabel(machine.app, L"16"), L"Répertoire");
    EXPECT_EQ(KindLabel(machine.app, L"32"), L"Fichier");
    machine.app.language->lngLangue = 10000;
    EXPECT_EQ(KindLabel(machine.app, L"-1"), L"Dir.");
    EXPECT_EQ(KindLabel(machine.app, L"16"), L"Directory");
    EXPECT_EQ(KindLabel(machine.app, L"32"), L"File");
}

TEST(RestoreRows, KindIsFollowedByTheLettersOfItsAttributes) {
    FakeMachine machine;
    EXPECT_EQ(KindLabel(machine.app, L"35"), L"Fichier HR");
    EXPECT_EQ(KindLabel(machine.app, L"20"), L"Répertoire S");
}

TEST(RestoreRows, KindThatIsNoIntegerHasNoLabel) {
    FakeMachine machine;
    for (const wchar_t* kind : {L"b.txt", L"", L"32768", L"99999999999"}) EXPECT_EQ(KindLabel(machine.app, kind), L"");
}

TEST(RestoreRows, AttributesAreHiddenSystemReadOnlyInThisOrder) {
    std::wstring text = L"x";
    RemplirAttrib(1 | 2 | 4, text);
    EXPECT_EQ(text, L"xHSR");
    RemplirAttrib(16 | 32, text);
    EXPECT_EQ(text, L"xHSR");
    std::wstring readOnly;
    RemplirAttrib(1, readOnly);
    EXPECT_EQ(readOnly, L"R");
}

TEST(RestoreRows, FolderIsExtractedWithoutItsAllFilesMark) {
    EXPECT_EQ(ExtractionPath(L"C:\\Data\\*.*"), L"C:\\Data");
    EXPECT_EQ(ExtractionPath(L"C:\\a\\*.*\\b\\*.*"), L"C:\\a\\b");
    EXPECT_EQ(ExtractionPath(L"C:\\a.txt"), L"C:\\a.txt");
}

TEST(RestoreRows, ColumnsArePathLabelKindAndArchive) {
    FakeMachine machine;
    RestoreRows rows;
    rows.Add(machine.app, {{L"C:\\a.txt", L"32", L"Zip0001"}, {L"C:\\Data\\*.*", L"-1", L"Zip0002"}});
    ASSERT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.Cell(1, 0), L"C:\\Data\\*.*");
    EXPECT_EQ(rows.Cell(1, 1), L"Rep.");
    EXPECT_EQ(rows.Cell(1, 2), L"-1");
    EXPECT_EQ(rows.Cell(1, 3), L"Zip0002");
    EXPECT_EQ(rows.Cell(1, 4), L"");
    EXPECT_EQ(rows.Cell(0, 1), L"Fichier");
}

TEST(RestoreRows, PathTakesTheWidthThatTheTypeLeavesAndTheOtherColumnsHaveNone) {
    const auto columns = RestoreRows::Columns();
    ASSERT_EQ(columns.size(), 4u);
    EXPECT_EQ(columns[0].headerId, TextId::PathHeader);
    EXPECT_EQ(columns[1].headerId, TextId::TypeHeader);
    EXPECT_EQ(columns[1].widthTwips, 1400);
    for (const std::size_t column : {0u, 2u, 3u}) EXPECT_EQ(columns[column].widthTwips, 0) << column;
    for (const std::size_t column : {2u, 3u}) EXPECT_EQ(columns[column].headerId, TextId::None) << column;
}

TEST(RestoreRows, ShiftedFieldsAreListedAsTheyAreRead) {
    FakeMachine machine;
    RestoreRows rows;
    rows.Add(machine.app, {{L"C:\\b", L"c.txt", L"32"}, {L"C:\\d", L"32", L"Zip0003"}});
    ASSERT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.Cell(0, 0), L"C:\\b");
    EXPECT_EQ(rows.Cell(0, 1), L"");
    EXPECT_EQ(rows.Cell(0, 2), L"c.txt");
    EXPECT_EQ(rows.Cell(1, 1), L"Fichier");
}

TEST(RestoreRows, LastTickTakenAwayLeavesNone) {
    FakeMachine machine;
    RestoreRows rows;
    rows.Add(machine.app, {{L"C:\\a", L"32", L"Zip0001"}, {L"C:\\b", L"32", L"Zip0002"}});
    EXPECT_FALSE(rows.IsAnyTicked());
    rows.TickAll(true);
    EXPECT_TRUE(rows.IsAnyTicked());
    rows.Toggle(0);
    EXPECT_TRUE(rows.IsAnyTicked());
    rows.Toggle(1);
    EXPECT_FALSE(rows.IsAnyTicked());
    rows.Toggle(1);
    EXPECT_TRUE(rows.At(1).isTicked);
    EXPECT_TRUE(rows.IsAnyTicked());
    rows.TickAll(false);
    EXPECT_FALSE(rows.IsAnyTicked());
}

TEST(RestoreRows, TicksOfFewerOrMoreRowsCountForThoseThatThereAre) {
    FakeMachine machine;
    RestoreRows rows;
    rows.Add(machine.app, {{L"C:\\a", L"32", L"Zip0001"}, {L"C:\\b", L"32", L"Zip0002"}});
    rows.TickAll(true);
    rows.SetTicks({true});
    EXPECT_EQ(rows.Ticks(), (std::vector<bool>{true, false}));
    rows.SetTicks({false, true, true});
    EXPECT_EQ(rows.Ticks(), (std::vector<bool>{false, true}));
    rows.Toggle(1);
    EXPECT_FALSE(rows.IsAnyTicked()) << "the third tick is of no row";
}

TEST(RestoreRows, RowThatNoBackupWritesCountsOnlyWhileItIsTicked) {
    FakeMachine machine;
    RestoreRows rows;
    rows.Add(machine.app, {{L"C:\\a", L"32", L"Zip0001"}, {L"C:\\..\\b", L"32", L"Zip0002", false}});
    EXPECT_FALSE(rows.IsAnyTickedUnfit());
    rows.Toggle(0);
    EXPECT_FALSE(rows.IsAnyTickedUnfit());
    rows.Toggle(1);
    EXPECT_TRUE(rows.IsAnyTickedUnfit());
}

TEST(RestoreRows, NoBackupIsSaidTwiceAndCannotBeTicked) {
    RestoreRows rows;
    rows.ShowNoBackup(L"rien");
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.Cell(0, 0), L"rien");
    EXPECT_EQ(rows.Cell(1, 0), L"rien");
    rows.TickAll(true);
    rows.Toggle(0);
    EXPECT_FALSE(rows.IsAnyTicked());
    EXPECT_FALSE(rows.At(0).isTicked);
    EXPECT_FALSE(rows.HoldItems());
}

class RestoreMedium : public testing::Test {
  protected:
    RestoreMedium() {
        machine.drives.Add(L"E:\\", DriveType::Removable);
        machine.files.AddFolder(L"E:\\");
    }

    FakeMachine machine;
};

TEST_F(RestoreMedium, WithoutAControlFileHoldsNoBackup) {
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "archive");
    EXPECT_EQ(LookAtMedium(machine.app, L"E:\\").print.content, InsertedMedium::Content::NoBackup);
    EXPECT_EQ(LookAtMedium(machine.app, L"").print.content, InsertedMedium::Content::NoBackup);
}

TEST_F(RestoreMedium, WithTheControlFileAloneIsOfTheOlderFormat) {
    machine.files.AddFile(L"E:\\_listFich.lst", "x");
    EXPECT_EQ(LookAtMedium(machine.app, L"E:\\").print.content, InsertedMedium::Content::OlderFormat);
}

TEST_F(RestoreMedium, WithAControlFileTooLargeForMemoryIsABackupThatFails) {
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32,Zip0001\r\n");
    machine.files.AddSizedFile(L"E:\\OKRBACKUP.ZIP", 1000);
    machine.files.tooLargeToRead = L"E:\\_listFich.lst";
    const InsertedMedium medium = LookAtMedium(machine.app, L"E:\\");
    EXPECT_EQ(medium.print.content, InsertedMedium::Content::Backup);
    ASSERT_TRUE(medium.failure);
    EXPECT_EQ(medium.failure->Number(), 7);
}

TEST_F(RestoreMedium, WithAControlFileOfGigabytesIsNotReadAtAll) {
    machine.files.AddSizedFile(L"E:\\_listFich.lst", 5'000'000'000);
    machine.files.AddSizedFile(L"E:\\OKRBACKUP.ZIP", 1000);
    const InsertedMedium medium = LookAtMedium(machine.app, L"E:\\");
    ASSERT_TRUE(medium.failure);
    EXPECT_EQ(medium.failure->Number(), 7);
}

TEST_F(RestoreMedium, WithAControlFileOf64MegabytesIsTheLargestThatIsRead) {
    constexpr std::uint64_t largest = 67'108'864;
    machine.files.AddSizedFile(L"E:\\OKRBACKUP.ZIP", 1000);
    machine.files.AddSizedFile(L"E:\\_listFich.lst", largest);
    EXPECT_FALSE(LookAtMedium(machine.app, L"E:\\").failure);
    machine.files.AddSizedFile(L"E:\\_listFich.lst", largest + 1);
    EXPECT_TRUE(LookAtMedium(machine.app, L"E:\\").failure);
}

TEST_F(RestoreMedium, WithBothFilesIsABackupOfItsArchivesSize) {
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32,Zip0001\r\n");
    machine.files.AddSizedFile(L"E:\\OKRBACKUP.ZIP", 3'000'000'000);
    const InsertedMedium medium = LookAtMedium(machine.app, L"E:\\");
    EXPECT_EQ(medium.print.content, InsertedMedium::Content::Backup);
    EXPECT_EQ(medium.print.archiveSizeBytes, 3'000'000'000u);
    EXPECT_EQ(medium.controlFile, "C:\\a,32,Zip0001\r\n");
}

TEST_F(RestoreMedium, IsACdRomWhereItsDriveIsOne) {
    machine.drives.Add(L"F:\\", DriveType::CdRom);
    EXPECT_FALSE(LookAtMedium(machine.app, L"E:\\").isCdRom);
    EXPECT_TRUE(LookAtMedium(machine.app, L"F:\\").isCdRom);
}

TEST_F(RestoreMedium, IsTheSameAsLongAsItsFilesAre) {
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32,Zip0001\r\n");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "archive");
    const auto first = LookAtMedium(machine.app, L"E:\\").print;
    EXPECT_EQ(LookAtMedium(machine.app, L"E:\\").print, first);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\b,32,Zip0001\r\n");
    EXPECT_NE(LookAtMedium(machine.app, L"E:\\").print, first);
}

TEST_F(RestoreMedium, ThatCannotBeReadSaysWhy) {
    machine.files.AddFile(L"E:\\_listFich.lst", "x");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "archive");
    machine.files.FailWith(L"E:\\OKRBACKUP.ZIP", ErrorNumber::DeviceIoError);
    const InsertedMedium medium = LookAtMedium(machine.app, L"E:\\");
    ASSERT_TRUE(medium.failure.has_value());
    EXPECT_EQ(medium.failure->Number(), 57);
}

} // namespace
