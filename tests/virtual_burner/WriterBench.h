#pragma once

#include "BurnerBench.h"
#include "DiscContent.h"
#include "support/DiscWriterContract.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

/// A disc writer on the virtual burner's drives.
class WriterBench : public testing::Test {
  protected:
    DiscWriter& Open(DiscFamily family = DiscFamily::Cd) {
        writer_ = bench_.Writers().Create(family);
        events_.writer = writer_.get();
        writer_->SetEvents(&events_);
        return *writer_;
    }
    void StartWrite(std::size_t sizeBytes = 3000000) {
        list_ = bench_.MakeFile(L"_listFich.lst", 77);
        archive_ = bench_.MakeFile(L"OKRBACKUP.ZIP", sizeBytes);
        writer_->AddFile(list_);
        writer_->AddFile(archive_);
        writer_->StartWrite();
    }
    void RunToEnd() {
        bench_.RunUntil([this] { return events_.HasFinished() || !events_.errors.empty(); });
        RunUntilRead();
    }
    /// Until the disc that an operation left has been read.
    void RunUntilRead() {
        bench_.RunUntil([this] { return !writer_->IsBusy(); });
    }
    void EraseToEnd(bool isQuick) {
        writer_->Erase(isQuick);
        bench_.RunUntil(
            [this] { return events_.HasReached(DiscOperation::EraseInProgress, 100) || !events_.errors.empty(); });
        RunUntilRead();
    }
    static std::string Content(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Write(std::size_t sizeBytes = 3000000) {
        StartWrite(sizeBytes);
        RunToEnd();
    }
    /// What the drive shows is what was added, and nothing else.
    void ExpectContent(wchar_t letter) {
        ASSERT_TRUE(bench_.WaitForContent(letter));
        const auto volume = BurnerBench::DriveFolder(letter) / "disc" / "volume";
        EXPECT_EQ(Content(volume / "_listFich.lst"), Content(list_));
        EXPECT_TRUE(Content(volume / "OKRBACKUP.ZIP") == Content(archive_));
        const auto image = ReadDiscVolume((BurnerBench::DriveFolder(letter) / "disc" / "disc.iso").wstring());
        ASSERT_TRUE(image);
        EXPECT_EQ(image->files.size(), 2u);
    }

    BurnerBench bench_;
    RecordedDiscEvents events_;
    std::unique_ptr<DiscWriter> writer_;
    std::wstring list_;
    std::wstring archive_;
};
