#include "check/DirectoryParts.h"

#include "check/ZipFormat.h"

#include <algorithm>
#include <optional>

namespace {

constexpr std::uint64_t Version = 45;

constexpr std::size_t PieceBytes = std::size_t{256} << 10;
/// The directory's end stands in the last 64 KB of an archive.
constexpr std::uint64_t LongestTail = 65536 + ZipEndBytes;
/// Records may carry remarks of any length.
constexpr std::uint64_t MostPartBytes = std::uint64_t{256} << 10;

void Put(std::uint64_t value, std::size_t length, std::string& bytes) {
    for (std::size_t i = 0; i < length; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

/// Reads on until there are so many bytes, or no more.
std::string ReadBytes(MediumSource& medium, std::uint64_t place, std::uint64_t length) {
    std::string bytes;
    medium.Seek(place);
    while (bytes.size() < length) {
        const std::string_view piece = medium.Next();
        if (piece.empty()) break;
        bytes +=
            piece.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(piece.size(), length - bytes.size())));
    }
    return bytes;
}

struct Found {
    std::uint64_t place = 0;  ///< where the directory begins
    std::uint64_t stated = 0; ///< where its end says that it does
};

std::optional<Found> FindDirectory(InputFile& archive, const std::function<void(std::size_t)>& onBytes) {
    const std::uint64_t size = archive.SizeBytes();
    MediumSource medium(archive, LongestTail, onBytes);
    const std::string tail = ReadBytes(medium, size - std::min(size, LongestTail), LongestTail);
    const std::size_t end = tail.rfind(ZipEndSign);
    if (end == std::string::npos || end + ZipEndBytes > tail.size()) return std::nullopt;
    std::uint64_t length = ZipNumber(tail, end + 12, 4);
    std::uint64_t stated = ZipNumber(tail, end + 16, 4);
    std::uint64_t directoryEnd = size - tail.size() + end;
    // Directories beyond 4 GiB or 65,535 entries say so elsewhere, a fixed length before their end.
    constexpr std::size_t largeBytes = ZipLargeEndBytes + ZipLargeEndPlaceBytes;
    if (end >= largeBytes && tail.compare(end - ZipLargeEndPlaceBytes, 4, ZipLargeEndPlaceSign) == 0) {
        directoryEnd -= largeBytes;
        length = ZipNumber(tail, end - largeBytes + 40, 8);
        stated = ZipNumber(tail, end - largeBytes + 48, 8);
    }
    if (length > directoryEnd) return std::nullopt;
    return Found{directoryEnd - length, stated};
}

void ReadFrom(std::uint64_t place, InputFile& archive, DirectoryTally& tally,
              const std::function<void(std::size_t)>& onBytes) {
    MediumSource medium(archive, PieceBytes, onBytes);
    medium.Seek(place);
    for (std::string_view piece = medium.Next(); !piece.empty(); piece = medium.Next()) tally.Take(piece);
}

} // namespace

bool ReadOuterDirectory(InputFile& archive, DirectoryTally& tally, const std::function<void(std::size_t)>& onBytes) {
    const auto found = FindDirectory(archive, onBytes);
    if (found) ReadFrom(found->place, archive, tally, onBytes);
    return found.has_value();
}

DirectoryParts::DirectoryParts(InputFile& archive, const std::function<void(std::size_t)>& onBytes,
                               std::uint64_t mostRecords)
    : mostRecords_(mostRecords) {
    const auto found = FindDirectory(archive, onBytes);
    if (found) ReadFrom(found->place, archive, *this, onBytes);
    // The library sorts the records of one directory by their entries. Parts of one that is not in that order, or
    // of which the places are not what they say, would not be the same.
    if (!found || found->stated != found->place || !IsWhole() || !isInOrder_ || parts_.size() < 2) {
        parts_.clear();
        return;
    }
    for (std::size_t at = 0; at < parts_.size(); ++at) {
        const std::uint64_t end = at + 1 < parts_.size() ? parts_[at + 1].place : RecordBytesTaken();
        parts_[at].bytes = end - parts_[at].place;
    }
    for (DirectoryPart& part : parts_) part.place += found->place;
}

void DirectoryParts::OnRecord(std::uint64_t index, const DirectoryRecord& record) {
    isInOrder_ = isInOrder_ && (index == 0 || record.entryPlace > lastEntryPlace_);
    lastEntryPlace_ = record.entryPlace;
    const bool isFull =
        parts_.empty() || parts_.back().records == mostRecords_ || record.place - parts_.back().place > MostPartBytes;
    if (isFull) parts_.push_back({record.place, 0, 0});
    ++parts_.back().records;
}

PartSource::PartSource(MediumSource& medium, std::uint64_t directoryPlace, const DirectoryPart& part)
    : medium_(medium), directoryPlace_(directoryPlace), directory_(ReadBytes(medium, part.place, part.bytes)) {
    const std::uint64_t length = directory_.size();
    directory_ += ZipLargeEndSign;
    Put(ZipLargeEndBytes - ZipLargeEndHeadBytes, 8, directory_);
    Put(Version, 2, directory_);
    Put(Version, 2, directory_);
    Put(0, 8, directory_);
    Put(part.records, 8, directory_);
    Put(part.records, 8, directory_);
    Put(length, 8, directory_);
    Put(directoryPlace, 8, directory_);
    directory_ += ZipLargeEndPlaceSign;
    Put(0, 4, directory_);
    Put(directoryPlace + length, 8, directory_);
    Put(1, 4, directory_);
    directory_ += ZipEndSign;
    Put(0, 4, directory_);
    Put(std::min(part.records, ZipFull16), 2, directory_);
    Put(std::min(part.records, ZipFull16), 2, directory_);
    Put(std::min(length, ZipFull32), 4, directory_);
    Put(std::min(directoryPlace, ZipFull32), 4, directory_);
    Put(0, 2, directory_);
}

std::string_view PartSource::Next() {
    std::string_view piece;
    if (place_ < directoryPlace_) {
        medium_.Seek(place_);
        piece = medium_.Next();
        piece =
            piece.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(piece.size(), directoryPlace_ - place_)));
    } else if (place_ < SizeBytes()) {
        piece = std::string_view(directory_).substr(static_cast<std::size_t>(place_ - directoryPlace_));
    }
    place_ += piece.size();
    return piece;
}

bool PartSource::Seek(std::uint64_t place) {
    place_ = place;
    return true;
}
