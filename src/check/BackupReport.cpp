#include "check/BackupReport.h"

#include <algorithm>

namespace {

constexpr std::size_t MostFindings = 5000;

bool IsFault(FileFinding::What what) {
    using What = FileFinding::What;
    return what == What::Damaged || what == What::BrokenOff || what == What::Unreadable || what == What::TooLong ||
           what == What::Refused || what == What::Absent || what == What::NotWritten;
}

template<typename Amount>
std::uint64_t Sum(const std::deque<ItemReport>& items, Amount amount) {
    std::uint64_t sum = 0;
    for (const ItemReport& item : items) sum += amount(item);
    return sum;
}

} // namespace

bool ItemReport::HasFault() const {
    return verdict != ItemVerdict::Whole || problems != 0 ||
           std::any_of(remarks->findings.begin(), remarks->findings.end(),
                       [](const FileFinding& f) { return IsFault(f.what); });
}

void ItemReport::Take(const ItemOutcome& outcome) {
    files = static_cast<std::uint32_t>(outcome.files);
    bytes = outcome.bytes;
    if (outcome.damagedFiles == 0 && outcome.reason.empty()) return;
    remarks.Set().damagedFiles = outcome.damagedFiles;
    remarks.Set().reason = outcome.reason;
}

void ItemReport::Add(FileFinding finding) {
    ItemRemarks& mine = remarks.Set();
    if (mine.findings.size() < MostFindings) {
        mine.findings.push_back(std::move(finding));
        return;
    }
    ++mine.moreFindings;
    // One that counts is not lost behind those that do not.
    if (IsFault(finding.what)) mine.findings.back() = std::move(finding);
}

std::uint64_t BackupReport::Files() const {
    return Sum(items, [](const ItemReport& item) { return std::uint64_t{item.files}; });
}

std::uint64_t BackupReport::Bytes() const {
    return Sum(items, [](const ItemReport& item) { return item.bytes; });
}

std::uint64_t BackupReport::FaultyItems() const {
    return Sum(items, [](const ItemReport& item) { return item.HasFault() ? 1u : 0u; });
}

std::uint64_t BackupReport::RecoveredFiles() const {
    return Sum(items, [](const ItemReport& item) { return std::uint64_t{item.recoveredFiles}; });
}

std::uint64_t BackupReport::PresentFiles() const {
    return Sum(items, [](const ItemReport& item) { return std::uint64_t{item.presentFiles}; });
}

int BackupReport::ExitCode() const {
    switch (verdict) {
    case Verdict::Good:
        return 0;
    case Verdict::Faulty:
    case Verdict::Empty:
        return 1;
    case Verdict::WrongPassword:
    case Verdict::PasswordMissing:
        return 2;
    case Verdict::NoBackup:
    case Verdict::OlderFormat:
        return 3;
    case Verdict::Unreadable:
    case Verdict::NoRoom:
    case Verdict::NotWritable:
    case Verdict::Stopped:
    case Verdict::NotChecked:
        break;
    }
    return 4;
}

void BackupReport::Conclude() {
    const bool isOuterGood = walk.hasDirectory && walk.doesDirectoryAgree && walk.unreadableBytes == 0;
    if (items.empty() && isOuterGood) {
        verdict = Verdict::Empty;
    } else {
        verdict = isOuterGood && hasList && FaultyItems() == 0 ? Verdict::Good : Verdict::Faulty;
    }
}
