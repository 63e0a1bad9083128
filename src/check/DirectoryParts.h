#pragma once

#include "check/DirectoryTally.h"
#include "check/MediumSource.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Gives the bytes of the outer directory to `tally`; false where it is not found. Throws what `MediumSource` does.
bool ReadOuterDirectory(InputFile& archive, DirectoryTally& tally, const std::function<void(std::size_t)>& onBytes);

/// Some records of a directory that follow each other.
struct DirectoryPart {
    std::uint64_t place = 0; ///< in the archive
    std::uint64_t bytes = 0;
    std::uint64_t records = 0;
};

/// The directory of an outer archive, parted. The library keeps some 170 bytes for each record of a directory that it
/// is given: one of very many is given to it in parts.
class DirectoryParts final : public DirectoryTally {
  public:
    static constexpr std::uint64_t MostRecords = 1024;

    /// Reads all of it. Throws what `MediumSource` does.
    DirectoryParts(InputFile& archive, const std::function<void(std::size_t)>& onBytes,
                   std::uint64_t mostRecords = MostRecords);

    /// The parts, in their order; none where the directory is small, or not such that it can be parted.
    const std::vector<DirectoryPart>& All() const { return parts_; }

  protected:
    void OnRecord(std::uint64_t index, const DirectoryRecord& record) override;

  private:
    std::uint64_t mostRecords_;
    std::vector<DirectoryPart> parts_; ///< while it is read, with their places in the directory
    std::uint64_t lastEntryPlace_ = 0;
    bool isInOrder_ = true;
};

/// An archive up to its directory, and behind it a part of that as if it were the whole.
class PartSource final : public ZipSource {
  public:
    /// Borrows the medium. `directoryPlace` is where the first part begins. Throws what reading the part meets.
    PartSource(MediumSource& medium, std::uint64_t directoryPlace, const DirectoryPart& part);

    std::string_view Next() override;
    bool Seek(std::uint64_t place) override;
    std::uint64_t Place() const override { return place_; }
    std::uint64_t SizeBytes() const override { return directoryPlace_ + directory_.size(); }

  private:
    MediumSource& medium_;
    std::uint64_t directoryPlace_;
    std::string directory_; ///< the part, and an end
    std::uint64_t place_ = 0;
};
