#include "check/BackupWalk.h"

#include "check/DirectoryParts.h"
#include "check/InnerWalk.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <set>

namespace {

constexpr std::size_t PieceBytes = std::size_t{256} << 10;

/// The walk by the directory first; where that leads no further, by the entries as they follow each other.
class OuterWalk {
  public:
    OuterWalk(InputFile& archive, const std::optional<std::string>& passphrase, WalkListener& listener,
              const std::function<void(std::size_t)>& onBytes)
        : medium_(archive, PieceBytes, onBytes), passphrase_(passphrase), listener_(listener),
          directory_(archive, onBytes) {}

    WalkOutcome Run() {
        outcome_.hasDirectory = FollowDirectory() && !hasStrangers_;
        // It has no checksum of its own: it must say the same as the entries.
        outcome_.doesDirectoryAgree = outcome_.hasDirectory && directory_.Agrees();
        if (!outcome_.hasDirectory) {
            medium_.Seek(0);
            Pass(medium_, ZipReader::Way::ByHeaders);
        }
        outcome_.unreadableBytes = medium_.UnreadableBytes();
        return outcome_;
    }

  private:
    bool FollowDirectory() {
        const std::vector<DirectoryPart>& parts = directory_.All();
        if (parts.empty()) return Pass(medium_, ZipReader::Way::ByDirectory);
        return std::all_of(parts.begin(), parts.end(), [&](const DirectoryPart& part) {
            PartSource source(medium_, parts.front().place, part);
            return Pass(source, ZipReader::Way::ByDirectory);
        });
    }

    bool Pass(ZipSource& source, ZipReader::Way way) {
        std::set<std::size_t> met;
        if (way == ZipReader::Way::ByHeaders) met.insert(met_.begin(), met_.end());
        ZipReader reader(source, way, passphrase_);
        ZipEntry item;
        ZipStep step = reader.Next(item);
        for (; step == ZipStep::Ok; step = reader.Next(item)) {
            // What the directory has led to is not read again.
            if (way == ZipReader::Way::ByDirectory || met.insert(Print(item)).second) Read(reader, item);
        }
        if (step != ZipStep::End && outcome_.reason.empty()) outcome_.reason = reader.Reason();
        return step == ZipStep::End;
    }

    /// Names themselves would take many times the room.
    static std::size_t Print(const ZipEntry& item) { return std::hash<std::wstring>()(item.name); }

    void Read(ZipReader& reader, const ZipEntry& item) {
        if (item.isFolder || item.isLink) {
            // A backup's archive holds none: the directory has made one of something else.
            hasStrangers_ = true;
            return;
        }
        directory_.Met(item.name, item.sizeBytes.value_or(0));
        met_.push_back(Print(item));
        if (!listener_.Wants(item.name)) return;
        listener_.OnItem(item);
        ItemOutcome outcome = WalkInner(reader, listener_);
        if (item.isInconsistent && outcome.state == ItemState::Whole) {
            outcome.state = ItemState::Damaged;
            outcome.reason = "the directory and the entry do not agree";
        }
        listener_.OnItemEnd(outcome);
    }

    MediumSource medium_;
    const std::optional<std::string>& passphrase_;
    WalkListener& listener_;
    DirectoryParts directory_;
    std::deque<std::size_t> met_; ///< prints of the items
    WalkOutcome outcome_;
    bool hasStrangers_ = false;
};

} // namespace

WalkOutcome WalkBackup(InputFile& archive, const std::optional<std::string>& passphrase, WalkListener& listener,
                       const std::function<void(std::size_t)>& onBytes) {
    return OuterWalk(archive, passphrase, listener, onBytes).Run();
}
