#include "check/BackupWalk.h"

#include "check/InnerWalk.h"

#include <algorithm>
#include <set>

namespace {

constexpr std::size_t PieceBytes = std::size_t{256} << 10;
/// The directory's end stands in the last 64 KB of an archive.
constexpr std::uint64_t LongestTail = 65536 + 22;

/// The walk by the directory first; where that leads no further, by the entries as they follow each other.
class OuterWalk {
  public:
    OuterWalk(InputFile& archive, const std::optional<std::string>& passphrase, WalkListener& listener,
              const std::function<void(std::size_t)>& onBytes)
        : archive_(archive), passphrase_(passphrase), listener_(listener), onBytes_(onBytes) {}

    WalkOutcome Run() {
        outcome_.hasDirectory = Pass(ZipReader::Way::ByDirectory);
        // It has no checksum of its own: it must say the same as the entries.
        if (outcome_.hasDirectory)
            outcome_.doesDirectoryAgree = ReadOuterDirectory(archive_, tally_, onBytes_) && tally_.Agrees();
        if (!outcome_.hasDirectory) Pass(ZipReader::Way::ByHeaders);
        return outcome_;
    }

  private:
    bool Pass(ZipReader::Way way) {
        MediumSource source(archive_, PieceBytes, onBytes_);
        ZipReader reader(source, way, passphrase_);
        ZipEntry item;
        ZipStep step = reader.Next(item);
        for (; step == ZipStep::Ok; step = reader.Next(item)) {
            if (way == ZipReader::Way::ByDirectory || !done_.contains(item.name)) Read(reader, item);
        }
        outcome_.unreadableBytes += source.UnreadableBytes();
        if (step != ZipStep::End && outcome_.reason.empty()) outcome_.reason = reader.Reason();
        return step == ZipStep::End && !hasStrangers_;
    }

    void Read(ZipReader& reader, const ZipEntry& item) {
        if (item.isFolder || item.isLink) {
            // A backup's archive holds none: the directory has made one of something else.
            hasStrangers_ = true;
            return;
        }
        tally_.Met(item.name, item.sizeBytes.value_or(0));
        done_.insert(item.name);
        if (!listener_.Wants(item.name)) return;
        listener_.OnItem(item);
        ItemOutcome outcome = WalkInner(reader, listener_);
        if (item.isInconsistent && outcome.state == ItemState::Whole) {
            outcome.state = ItemState::Damaged;
            outcome.reason = "the directory and the entry do not agree";
        }
        listener_.OnItemEnd(outcome);
    }

    InputFile& archive_;
    const std::optional<std::string>& passphrase_;
    WalkListener& listener_;
    const std::function<void(std::size_t)>& onBytes_;
    std::set<std::wstring> done_;
    DirectoryTally tally_;
    WalkOutcome outcome_;
    bool hasStrangers_ = false;
};

} // namespace

bool ReadOuterDirectory(InputFile& archive, DirectoryTally& tally, const std::function<void(std::size_t)>& onBytes) {
    const std::uint64_t size = archive.SizeBytes();
    std::string tail(static_cast<std::size_t>(std::min(size, LongestTail)), '\0');
    tail.resize(archive.ReadAt(size - tail.size(), tail));
    const std::size_t end = tail.rfind(std::string_view("PK\5\6", 4));
    if (end == std::string::npos || end + 22 > tail.size()) return false;
    std::uint64_t length = 0;
    for (int at = 3; at >= 0; --at) length = length << 8 | static_cast<unsigned char>(tail[end + 12 + at]);
    const std::uint64_t endPlace = size - tail.size() + end;
    // Directories beyond 4 GiB or 65,535 entries say so elsewhere, a fixed length before their end.
    constexpr std::uint64_t largeEndBytes = 56 + 20;
    const bool isLarge = end >= largeEndBytes && tail.compare(end - 20, 4, std::string_view("PK\6\7", 4)) == 0;
    const std::uint64_t directoryEnd = isLarge ? endPlace - largeEndBytes : endPlace;
    if (isLarge) {
        length = 0;
        for (int at = 7; at >= 0; --at)
            length = length << 8 | static_cast<unsigned char>(tail[end - largeEndBytes + 40 + at]);
    }
    if (length > directoryEnd) return false;
    MediumSource source(archive, PieceBytes, onBytes);
    source.Seek(directoryEnd - length);
    for (std::string_view piece = source.Next(); !piece.empty(); piece = source.Next()) tally.Take(piece);
    return true;
}

WalkOutcome WalkBackup(InputFile& archive, const std::optional<std::string>& passphrase, WalkListener& listener,
                       const std::function<void(std::size_t)>& onBytes) {
    return OuterWalk(archive, passphrase, listener, onBytes).Run();
}
