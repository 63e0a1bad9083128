#include "check/BackupReport.h"

#include <algorithm>

namespace {

constexpr std::size_t MostFindings = 5000;

bool IsFault(FileFinding::What what) {
    using What = FileFinding::What;
    return what == What::Damaged || what == What::BrokenOff || what == What::Unreadable || what == What::TooLong ||
           what == What::Refused || what == What::Absent;
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
           std::any_of(findings.begin(), findings.end(), [](const FileFinding& f) { return IsFault(f.what); });
}

void ItemReport::Add(FileFinding finding) {
    if (findings.size() < MostFindings) {
        findings.push_back(std::move(finding));
        return;
    }
    ++moreFindings;
    // One that counts is not lost behind those that do not.
    if (IsFault(finding.what)) findings.back() = std::move(finding);
}

std::uint64_t BackupReport::Files() const {
    return Sum(items, [](const ItemReport& item) { return item.outcome.files; });
}

std::uint64_t BackupReport::Bytes() const {
    return Sum(items, [](const ItemReport& item) { return item.outcome.bytes; });
}

std::uint64_t BackupReport::FaultyItems() const {
    return Sum(items, [](const ItemReport& item) { return item.HasFault() ? 1u : 0u; });
}

std::uint64_t BackupReport::RecoveredFiles() const {
    return Sum(items, [](const ItemReport& item) { return item.recoveredFiles; });
}

std::uint64_t BackupReport::PresentFiles() const {
    return Sum(items, [](const ItemReport& item) { return item.presentFiles; });
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
