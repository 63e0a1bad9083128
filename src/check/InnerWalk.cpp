#include "check/InnerWalk.h"

#include <optional>

namespace {

/// How far the library may have looked ahead over the border between two pieces.
constexpr std::size_t KeptBytes = 256;

/// The data of the outer entry, as the bytes of an inner archive.
class EntryData final : public ZipSource {
  public:
    explicit EntryData(ZipReader& outer) : outer_(outer) {}

    std::string_view Next() override {
        Keep();
        piece_ = {};
        while (!HasEnded() && piece_.empty()) end_ = outer_.Read(piece_);
        if (HasEnded() && end_ != ZipStep::End) reason_ = outer_.Reason();
        given_ += piece_.size();
        return piece_;
    }

    /// The bytes from a place on that were given out; nothing when they are not kept any more.
    std::optional<std::string> From(std::uint64_t place) const {
        const std::string all = kept_ + std::string(piece_);
        const std::uint64_t first = given_ - all.size();
        if (place < first || place > given_) return std::nullopt;
        return all.substr(static_cast<std::size_t>(place - first));
    }

    bool HasEnded() const { return end_ != ZipStep::Ok; }
    ZipStep End() const { return end_; }
    std::uint64_t Given() const { return given_; }
    const std::string& Reason() const { return reason_; }

  private:
    void Keep() {
        if (piece_.size() >= KeptBytes) {
            kept_.assign(piece_.substr(piece_.size() - KeptBytes));
            return;
        }
        kept_ += piece_;
        if (kept_.size() > KeptBytes) kept_.erase(0, kept_.size() - KeptBytes);
    }

    ZipReader& outer_;
    std::string_view piece_;
    std::string kept_;
    std::string reason_;
    ZipStep end_ = ZipStep::Ok;
    std::uint64_t given_ = 0;
};

class ListenedTally final : public DirectoryTally {
  public:
    explicit ListenedTally(WalkListener& listener) : listener_(listener) {}

  protected:
    void OnRecord(std::uint64_t index, const DirectoryRecord& record) override {
        if (index < MetCount()) listener_.OnRecord(index, record);
    }

  private:
    WalkListener& listener_;
};

class InnerWalk {
  public:
    InnerWalk(ZipReader& outer, WalkListener& listener) : data_(outer), listener_(listener), tally_(listener) {}

    ItemOutcome Run() {
        const ZipStep end = ReadFiles();
        if (end == ZipStep::End) {
            ReadDirectory();
        } else {
            while (!data_.HasEnded()) data_.Next();
        }
        outcome_.state = StateAfter(end);
        return outcome_;
    }

  private:
    ZipStep ReadFiles() {
        reader_.emplace(data_, ZipReader::Way::ByHeaders, std::nullopt);
        ZipEntry file;
        ZipStep step = reader_->Next(file);
        for (; step == ZipStep::Ok; step = reader_->Next(file)) ReadFile(file);
        if (step != ZipStep::End) outcome_.reason = reader_->Reason();
        return step;
    }

    void ReadFile(const ZipEntry& file) {
        listener_.OnFile(file);
        FileOutcome outcome;
        if (!file.isFolder) {
            ++outcome_.files;
            ReadData(outcome);
            if (outcome.state != FileState::Whole) {
                ++outcome_.damagedFiles;
                if (outcome_.reason.empty()) outcome_.reason = outcome.reason;
            }
        }
        outcome_.bytes += outcome.bytes;
        tally_.Met(file.name,
                   outcome.state == FileState::Whole ? outcome.bytes : file.sizeBytes.value_or(outcome.bytes));
        listener_.OnFileEnd(outcome);
    }

    void ReadData(FileOutcome& outcome) {
        for (;;) {
            std::string_view bytes;
            const ZipStep step = reader_->Read(bytes);
            if (!bytes.empty()) listener_.OnData(bytes);
            outcome.bytes += bytes.size();
            if (step == ZipStep::Ok) continue;
            if (step == ZipStep::End) return;
            outcome.reason = reader_->Reason();
            outcome.isBrokenOff = step == ZipStep::Broken;
            outcome.state =
                step == ZipStep::Broken || step == ZipStep::Mismatch ? FileState::Damaged : FileState::Unreadable;
            return;
        }
    }

    /// The reader stops at the directory or a little before it, and has not given back what it had looked at.
    void ReadDirectory() {
        std::optional<std::string> first = data_.From(reader_->Consumed());
        const std::size_t sign = first ? first->find("PK") : std::string::npos;
        isDirectoryKnown_ = sign != std::string::npos;
        if (isDirectoryKnown_) tally_.Take(std::string_view(*first).substr(sign));
        while (!data_.HasEnded()) {
            const std::string_view more = data_.Next();
            if (isDirectoryKnown_) tally_.Take(more);
        }
    }

    ItemState StateAfter(ZipStep innerEnd) {
        const bool isWholeOnMedium = data_.End() == ZipStep::End;
        if (data_.End() == ZipStep::WrongPassword) return Explained(ItemState::Locked);
        if (!isWholeOnMedium) return Explained(ItemState::Damaged);
        if (data_.Given() == 0) return ItemState::Empty;
        if (outcome_.damagedFiles > 0 && innerEnd == ZipStep::End) return ItemState::DamagedWhenSaved;
        if (innerEnd != ZipStep::End) return ItemState::Cut;
        if (isDirectoryKnown_ && !tally_.Agrees()) return ItemState::DirectoryDamaged;
        return tally_.MetCount() == 0 ? ItemState::Empty : ItemState::Whole;
    }

    ItemState Explained(ItemState state) {
        outcome_.reason = data_.Reason();
        return state;
    }

    EntryData data_;
    WalkListener& listener_;
    ListenedTally tally_;
    std::optional<ZipReader> reader_;
    ItemOutcome outcome_;
    bool isDirectoryKnown_ = false;
};

} // namespace

ItemOutcome WalkInner(ZipReader& outer, WalkListener& listener) {
    return InnerWalk(outer, listener).Run();
}
