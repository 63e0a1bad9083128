#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What an archive's directory says of one entry beyond what stands at the entry itself.
struct DirectoryRecord {
    std::string_view name; ///< in the archive's own bytes; valid during the call
    std::uint64_t sizeBytes = 0;
    std::uint64_t created = 0; ///< in units of 100 nanoseconds since 1601, UTC; 0 is not known
    std::uint64_t written = 0;
    std::uint32_t attributes = 0; ///< those of Windows
    std::uint64_t place = 0;      ///< of this record, from the beginning of the directory
    std::uint64_t entryPlace = 0; ///< of the entry, as the directory has it
};

/// Compares the directory at the end of an archive with the entries that were met before it: a reader that goes from
/// entry to entry never looks at it, yet other programs go by nothing else. Takes the directory's bytes piece by piece.
class DirectoryTally {
  public:
    virtual ~DirectoryTally() = default;
    /// An entry was met. Names count where they are plain, because their code page is not known here.
    void Met(std::wstring_view name, std::uint64_t sizeBytes);
    /// The next bytes, from the first byte of the directory on.
    void Take(std::string_view bytes);
    /// Whether the directory was whole and named what was met.
    bool Agrees() const { return IsWhole() && metCount_ == namedCount_ && metSum_ == namedSum_; }
    std::uint64_t MetCount() const { return metCount_; }
    /// Whether the directory came to its end as it should.
    bool IsWhole() const { return hasEnded_ && !isBroken_; }
    /// How long the records were together.
    std::uint64_t RecordBytesTaken() const { return recordBytes_; }

  protected:
    /// Called for each record of the directory, in its order, from 0 on.
    virtual void OnRecord(std::uint64_t, const DirectoryRecord&) {}

  private:
    std::size_t TakeRecord(std::string_view bytes);

    std::string pending_;
    std::uint64_t metCount_ = 0;
    std::uint64_t metSum_ = 0;
    std::uint64_t namedCount_ = 0;
    std::uint64_t namedSum_ = 0;
    std::uint64_t recordBytes_ = 0;
    bool hasEnded_ = false;
    bool isBroken_ = false;
};
