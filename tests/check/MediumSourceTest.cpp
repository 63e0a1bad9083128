#include "check/MediumSource.h"

#include "check/MediumLost.h"
#include "platform/RuntimeError.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

using testing::ElementsAre;

constexpr std::size_t GapBytes = 32768;

/// A file of one letter that cannot be read in some of its pieces of 32 KiB.
class ScratchedFile : public InputFile {
  public:
    explicit ScratchedFile(std::uint64_t sizeBytes) : size_(sizeBytes) {}

    std::set<std::uint64_t> scratches; ///< their numbers
    ErrorNumber failure = ErrorNumber::DeviceIoError;

    std::uint64_t SizeBytes() const override { return size_; }
    std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) override {
        const std::uint64_t end = std::min<std::uint64_t>(size_, offset + buffer.size());
        for (std::uint64_t piece = offset / GapBytes; piece * GapBytes < end; ++piece)
            if (scratches.count(piece) > 0) throw RuntimeError(failure);
        std::fill_n(buffer.begin(), end - offset, 'x');
        return static_cast<std::size_t>(end - offset);
    }

  private:
    std::uint64_t size_;
};

std::string All(MediumSource& source) {
    std::string bytes;
    for (std::string_view piece = source.Next(); !piece.empty(); piece = source.Next()) bytes += piece;
    return bytes;
}

} // namespace

TEST(MediumSource, GivesTheFilePieceByPieceAndTellsOfEachOnce) {
    ScratchedFile file(250);
    std::vector<std::size_t> told;
    MediumSource source(file, 100, [&](std::size_t bytes) { told.push_back(bytes); });
    EXPECT_EQ(All(source), std::string(250, 'x'));
    EXPECT_THAT(told, ElementsAre(0, 100, 0, 100, 0, 50, 0)) << "before each piece, and of each that there was";
    EXPECT_EQ(source.Place(), 250u);
    EXPECT_EQ(source.UnreadableBytes(), 0u);
}

TEST(MediumSource, GoesOnFromThePlaceThatIsSought) {
    ScratchedFile file(250);
    MediumSource source(file, 100);
    EXPECT_TRUE(source.Seek(240));
    EXPECT_EQ(source.Next().size(), 10u);
    source.Seek(251);
    EXPECT_EQ(source.Next(), "");
}

TEST(MediumSource, PlacesThatCannotBeReadComeAsZerosAndTheRestAsItIs) {
    ScratchedFile file(3 * GapBytes + 100);
    file.scratches = {1, 3};
    MediumSource source(file, 4 * GapBytes);
    const std::string expected =
        std::string(GapBytes, 'x') + std::string(GapBytes, '\0') + std::string(GapBytes, 'x') + std::string(100, '\0');
    EXPECT_TRUE(All(source) == expected);
    EXPECT_EQ(source.UnreadableBytes(), GapBytes + 100);
}

TEST(MediumSource, ADeviceThatFailsInTooManyPiecesInARowHasGone) {
    for (const std::uint64_t scratched : {256u, 257u}) {
        ScratchedFile file(300 * GapBytes);
        for (std::uint64_t piece = 0; piece < scratched; ++piece) file.scratches.insert(piece);
        MediumSource source(file, 300 * GapBytes);
        if (scratched == 256)
            EXPECT_EQ(source.Next().size(), 300 * GapBytes);
        else
            EXPECT_THROW(source.Next(), MediumLost);
    }
}

TEST(MediumSource, PiecesInARowAreCountedAnewAfterOneThatCouldBeRead) {
    ScratchedFile file(400 * GapBytes);
    for (std::uint64_t piece = 0; piece < 400; ++piece)
        if (piece != 200) file.scratches.insert(piece);
    MediumSource source(file, 400 * GapBytes);
    EXPECT_EQ(source.Next().size(), 400 * GapBytes);
    ScratchedFile other(400 * GapBytes);
    for (std::uint64_t piece = 0; piece < 400; ++piece)
        if (piece != 200) other.scratches.insert(piece);
    MediumSource pieceByPiece(other, GapBytes);
    EXPECT_EQ(All(pieceByPiece).size(), 400 * GapBytes);
    EXPECT_EQ(pieceByPiece.UnreadableBytes(), 399 * GapBytes);
}

TEST(MediumSource, ADeviceThatIsNotThereIsLostAtOnce) {
    ScratchedFile file(3 * GapBytes);
    file.scratches = {1};
    file.failure = ErrorNumber::DiskNotReady;
    MediumSource source(file, GapBytes);
    EXPECT_EQ(source.Next().size(), GapBytes);
    EXPECT_THROW(source.Next(), MediumLost);
}
