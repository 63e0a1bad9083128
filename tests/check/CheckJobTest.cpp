#include "check/CheckJob.h"

#include "check/ReportFile.h"
#include "check/ZipBuilder.h"
#include "resources/TextId.h"
#include "support/GatedFileStore.h"

#include <gtest/gtest.h>
#include <utility>

#include <chrono>
#include <thread>

namespace {

constexpr const char* Password = "Valcoreaux1";

class CheckJobTest : public testing::Test {
  protected:
    CheckJobTest() {
        files->Add(L"E:\\OKRBACKUP.ZIP",
                   BuildBackup({{{"a.txt", "a"}}, {{"b.txt", "bb"}}, {{"c.txt", "c"}}}, Password));
        files->Add(L"E:\\_listFich.lst", "C:\\a.txt,32,Zip0001\r\nC:\\b.txt,32,Zip0002\r\n");
        request.place = L"E:\\";
        request.password = L"Valcoreaux1";
    }
    static bool WaitForEnd(const CheckJob& job) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!job.HasEnded() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return job.HasEnded();
    }

    std::shared_ptr<GatedFileStore> files = std::make_shared<GatedFileStore>();
    CheckRequest request;
};

TEST_F(CheckJobTest, ItemsComeWithTheListAndAgainWhenTheyAreSettled) {
    CheckJob job(files, request);
    ASSERT_TRUE(files->gate.WaitUntilReached());
    EXPECT_FALSE(job.HasEnded());
    EXPECT_FALSE(job.Now().isPasswordAccepted);
    files->gate.Open();
    ASSERT_TRUE(WaitForEnd(job));
    EXPECT_TRUE(job.Now().isPasswordAccepted);
    EXPECT_GT(job.Now().totalBytes, 0u);
    std::vector<std::pair<std::wstring, bool>> seen;
    for (const auto& known : job.TakeItems()) seen.emplace_back(known.item->archive, known.isSettled);
    EXPECT_EQ(seen, (std::vector<std::pair<std::wstring, bool>>{{L"Zip0001", false},
                                                                {L"Zip0002", false},
                                                                {L"Zip0001", true},
                                                                {L"Zip0002", true},
                                                                {L"Zip0003", false},
                                                                {L"Zip0003", true}}));
    EXPECT_TRUE(job.TakeItems().empty());
    EXPECT_EQ(job.Report()->items.at(2).place, 2u);
}

TEST_F(CheckJobTest, ItemsOutliveTheJobWithItsContents) {
    files->gate.Open();
    auto job = std::make_unique<CheckJob>(files, request);
    ASSERT_TRUE(WaitForEnd(*job));
    const auto known = job->TakeItems();
    const auto contents = job->Contents();
    const auto report = job->Report();
    job.reset();
    EXPECT_EQ(known.front().item, &report->items.front()) << "an item stays where it was told of";
    EXPECT_EQ(known.front().item->verdict, ItemVerdict::Whole);
}

TEST_F(CheckJobTest, AStoppedJobEndsWithItsNextRead) {
    CheckJob job(files, request);
    ASSERT_TRUE(files->gate.WaitUntilReached());
    job.Stop();
    files->gate.Open();
    ASSERT_TRUE(WaitForEnd(job));
    EXPECT_EQ(job.Report()->verdict, Verdict::Stopped);
}

TEST_F(CheckJobTest, AJobThatIsLeftWhileItReadsEndsByItself) {
    BackgroundTask task;
    {
        const CheckJob job(files, request);
        task = job.Task();
        ASSERT_TRUE(files->gate.WaitUntilReached());
    }
    EXPECT_FALSE(task.HasEnded());
    files->gate.Open();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!task.HasEnded() && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    EXPECT_TRUE(task.HasEnded());
}

TEST_F(CheckJobTest, TheListAloneIsReadWithoutTheArchive) {
    request.isListOnly = true;
    CheckJob job(files, request);
    ASSERT_TRUE(WaitForEnd(job)) << "the gate before the archive is shut";
    EXPECT_EQ(job.Report()->verdict, Verdict::NotChecked);
    EXPECT_EQ(job.TakeItems().size(), 2u);
    files->Delete(L"E:\\OKRBACKUP.ZIP");
    CheckJob older(files, request);
    ASSERT_TRUE(WaitForEnd(older));
    EXPECT_EQ(older.Report()->verdict, Verdict::OlderFormat);
}

TEST_F(CheckJobTest, RowsThatAreStillTheSameAreTakenOver) {
    request.isListOnly = true;
    CheckJob listing(files, request);
    ASSERT_TRUE(WaitForEnd(listing));
    const ItemReport* const first = &listing.Report()->items.at(0);
    files->gate.Open();
    request.isListOnly = false;
    request.known = listing.HandOver();
    CheckJob job(files, request);
    ASSERT_TRUE(WaitForEnd(job));
    EXPECT_EQ(&job.Report()->items.at(0), first);
    EXPECT_EQ(first->verdict, ItemVerdict::Whole);
    EXPECT_EQ(first->archive, L"Zip0001");
    EXPECT_EQ(job.TakeItems().size(), 6u) << "told as if they were new";
    EXPECT_EQ(job.Report()->items.at(2).place, 2u);
    EXPECT_TRUE(listing.Report()->items.empty());
}

TEST_F(CheckJobTest, RowsOfAnotherListAreReadAnew) {
    request.isListOnly = true;
    CheckJob listing(files, request);
    ASSERT_TRUE(WaitForEnd(listing));
    files->Add(L"E:\\_listFich.lst", "C:\\other.txt,32,Zip0001\r\n");
    files->gate.Open();
    request.isListOnly = false;
    request.known = listing.HandOver();
    CheckJob job(files, request);
    ASSERT_TRUE(WaitForEnd(job));
    EXPECT_EQ(job.Report()->items.at(0).path, L"C:\\other.txt");
    EXPECT_EQ(listing.Report()->items.size(), 2u);
}

TEST_F(CheckJobTest, APartKeepsThePlacesOfItsItems) {
    files->gate.Open();
    request.wanted = std::make_shared<const NameSet>(std::vector{L"zip0002", L"Zip0003"});
    CheckJob job(files, request);
    ASSERT_TRUE(WaitForEnd(job));
    const auto report = job.Report();
    ASSERT_EQ(report->items.size(), 2u);
    EXPECT_EQ(report->items[0].place, 1u);
    EXPECT_EQ(report->items[0].verdict, ItemVerdict::Whole) << "whatever the case of its name";
    EXPECT_EQ(report->items[1].archive, L"Zip0003");
}

TEST_F(CheckJobTest, AReportNeverTakesThePlaceOfWhatItIsAbout) {
    BackupReport report;
    report.archive = L"E:\\OKRBACKUP.ZIP";
    const NumberWords words{[](TextId) { return std::wstring(L"x"); }, L","};
    const std::vector<std::wstring> before = files->Paths();
    for (const wchar_t* path : {L"E:\\okrbackup.zip", L"E:\\_listFich.lst", L"E:\\rapport.txt", L"e:\\sous\\r.json"})
        EXPECT_THROW(WriteReport(*files, report, path, words), RuntimeError) << path;
    EXPECT_EQ(files->Paths(), before);
    files->Add(L"D:\\copie\\OKRBACKUP.ZIP", "archive");
    files->Add(L"D:\\copie\\_listFich.lst", "liste");
    report.archive = L"D:\\copie\\OKRBACKUP.ZIP";
    for (const wchar_t* path : {L"D:\\copie\\okrbackup.zip", L"D:\\copie\\_listFich.lst"})
        EXPECT_THROW(WriteReport(*files, report, path, words), RuntimeError) << path;
    WriteReport(*files, report, L"D:\\copie\\rapport.txt", words);
    EXPECT_EQ(files->BytesOf(L"D:\\copie\\rapport.txt").value_or("").substr(0, 3), "\xEF\xBB\xBF");
    WriteReport(*files, report, L"D:\\copie\\rapport.json", words);
    EXPECT_EQ(files->BytesOf(L"D:\\copie\\rapport.json").value_or("").substr(0, 1), "{");
}

TEST_F(CheckJobTest, AReportReplacesOnlyTheFileOfItsNameAndOnlyWhenItIsWhole) {
    BackupReport report;
    report.archive = L"E:\\OKRBACKUP.ZIP";
    const NumberWords words{[](TextId) { return std::wstring(L"x"); }, L","};
    files->Add(L"D:\\r.json", "ancien");
    files->Add(L"D:\\r.json.new", "à moi");
    const std::vector<std::wstring> before = files->Paths();
    files->freeBytes = 10;
    EXPECT_THROW(WriteReport(*files, report, L"D:\\r.json", words), RuntimeError);
    EXPECT_EQ(files->BytesOf(L"D:\\r.json"), "ancien");
    EXPECT_EQ(files->Paths(), before) << "nothing half is left";
    files->freeBytes = 100000;
    WriteReport(*files, report, L"D:\\r.json", words);
    EXPECT_EQ(files->BytesOf(L"D:\\r.json").value_or("").substr(0, 1), "{");
    EXPECT_EQ(files->BytesOf(L"D:\\r.json.new"), "à moi");
    EXPECT_EQ(files->Paths(), before);
}

TEST(IsOnMediumTest, OnlyTheDriveOfAMediumIsClosed) {
    const FakeFileStore files;
    EXPECT_TRUE(IsOnMedium(files, L"E:\\OKRBACKUP.ZIP", L"e:\\Recuperes"));
    EXPECT_TRUE(IsOnMedium(files, L"E:\\OKRBACKUP.ZIP", L"E:\\"));
    EXPECT_FALSE(IsOnMedium(files, L"E:\\OKRBACKUP.ZIP", L"D:\\Recuperes"));
    EXPECT_FALSE(IsOnMedium(files, L"D:\\Copies\\OKRBACKUP.ZIP", L"D:\\Recuperes"));
    EXPECT_FALSE(IsOnMedium(files, L"\\\\poste\\copies\\OKRBACKUP.ZIP", L"\\\\poste\\copies\\ici"));
    EXPECT_FALSE(IsOnMedium(files, L"", L"D:\\Recuperes"));
}

} // namespace
