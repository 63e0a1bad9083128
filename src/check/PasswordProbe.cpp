#include "check/PasswordProbe.h"

#include "check/DirectoryParts.h"
#include "check/MediumSource.h"
#include "check/ZipFormat.h"
#include "check/ZipReader.h"
#include "platform/CodePages.h"
#include "platform/Text.h"

#include <algorithm>

namespace {

/// Small, so that the first bytes of an entry come before a damage that follows soon.
constexpr std::size_t PieceBytes = 32;
constexpr std::size_t MediumPieceBytes = 65536;
constexpr int MostEntries = 8;
constexpr std::size_t SignBytes = 4;

/// What the archiver takes for the password: a quotation mark is none of its letters, and an open blank ends it.
std::wstring FirstWord(const std::wstring& password) {
    std::wstring word;
    bool isQuoted = false;
    for (const wchar_t letter : password) {
        if (letter == L'"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && (letter == L' ' || letter == L'\t')) {
            return word;
        } else {
            word += letter;
        }
    }
    return word;
}

void AddReadings(const std::wstring& text, bool isFirstWord, std::vector<PasswordCandidate>& candidates) {
    for (const std::string& bytes : {ToOem(text), ToAnsi(text), ToUtf8(text)}) {
        const auto isSame = [&](const PasswordCandidate& other) { return other.bytes == bytes; };
        if (!bytes.empty() && std::none_of(candidates.begin(), candidates.end(), isSame))
            candidates.push_back({bytes, isFirstWord});
    }
}

struct Tally {
    int entries = 0;
    int encrypted = 0;
    int accepted = 0; ///< by the one byte that tells a wrong password in most cases
    bool isProven = false;
};

bool IsArchiveSign(std::string_view bytes) {
    return bytes.starts_with(ZipEntrySign) || bytes.starts_with(ZipEndSign);
}

void TryEntry(ZipReader& reader, Tally& tally) {
    std::string first;
    ZipStep step = ZipStep::Ok;
    while (step == ZipStep::Ok && first.size() < SignBytes) {
        std::string_view bytes;
        step = reader.Read(bytes);
        first += bytes.substr(0, SignBytes);
    }
    if (step == ZipStep::WrongPassword) return;
    ++tally.accepted;
    tally.isProven = tally.isProven || IsArchiveSign(first);
}

/// Gives out small pieces of another source's.
class SmallPieces final : public ZipSource {
  public:
    explicit SmallPieces(ZipSource& source) : source_(source) {}

    std::string_view Next() override {
        if (rest_.empty()) rest_ = source_.Next();
        const std::string_view piece = rest_.substr(0, PieceBytes);
        rest_.remove_prefix(piece.size());
        return piece;
    }
    bool Seek(std::uint64_t place) override {
        rest_ = {};
        return source_.Seek(place);
    }
    std::uint64_t Place() const override { return source_.Place() - rest_.size(); }
    std::uint64_t SizeBytes() const override { return source_.SizeBytes(); }

  private:
    ZipSource& source_;
    std::string_view rest_;
};

Tally TryCandidate(ZipSource& archive, ZipReader::Way way, const std::string& bytes) {
    SmallPieces source(archive);
    source.Seek(0);
    ZipReader reader(source, way, bytes);
    Tally tally;
    ZipEntry entry;
    while (!tally.isProven && tally.entries < MostEntries && reader.Next(entry) == ZipStep::Ok) {
        ++tally.entries;
        if (!entry.isEncrypted) continue;
        ++tally.encrypted;
        TryEntry(reader, tally);
    }
    return tally;
}

} // namespace

std::vector<PasswordCandidate> PasswordCandidates(const std::wstring& password) {
    std::vector<PasswordCandidate> candidates;
    AddReadings(password, false, candidates);
    AddReadings(FirstWord(password), true, candidates);
    return candidates;
}

ProbeOutcome ProbePassword(InputFile& archive, const std::vector<PasswordCandidate>& candidates,
                           const std::function<void(std::size_t)>& onBytes) {
    using Answer = ProbeOutcome::Answer;
    std::vector<PasswordCandidate> tried = candidates;
    if (tried.empty()) tried.push_back({});
    std::optional<PasswordCandidate> likely;
    const DirectoryParts directory(archive, onBytes);
    MediumSource medium(archive, MediumPieceBytes, onBytes);
    std::optional<PartSource> firstPart;
    if (!directory.All().empty()) firstPart.emplace(medium, directory.All().front().place, directory.All().front());
    ZipSource& byDirectory = firstPart ? static_cast<ZipSource&>(*firstPart) : medium;
    for (const PasswordCandidate& candidate : tried) {
        Tally tally = TryCandidate(byDirectory, ZipReader::Way::ByDirectory, candidate.bytes);
        if (!tally.isProven && tally.entries < MostEntries)
            tally = TryCandidate(medium, ZipReader::Way::ByHeaders, candidate.bytes);
        if (tally.entries == 0) return {Answer::NoEntries, {}};
        if (tally.encrypted == 0) return {Answer::NotNeeded, {}};
        if (tally.isProven) return {Answer::Opens, candidate};
        // One byte lets one wrong password in 256 pass; two entries hardly ever do.
        if (tally.accepted > 1 && !likely) likely = candidate;
    }
    if (likely) return {Answer::Opens, likely};
    return {Answer::Wrong, {}};
}
