#include "check/ReportWords.h"

#include "resources/TextId.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<RowProblem, TextId>, 6> Problems = {{
    {RowProblem::Comma, TextId::CheckProblemComma},
    {RowProblem::LostLetters, TextId::CheckProblemLostLetters},
    {RowProblem::TwoFields, TextId::CheckProblemTwoFields},
    {RowProblem::SharedMailStore, TextId::CheckProblemSharedMailStore},
    {RowProblem::TooLong, TextId::CheckProblemTooLong},
    {RowProblem::NotRestorable, TextId::CheckProblemNotRestorable},
}};

constexpr std::array<std::pair<ErrorNumber, TextId>, 9> Failures = {{
    {ErrorNumber::Overflow, TextId::FailedTooLarge},
    {ErrorNumber::BadFileName, TextId::FailedFileName},
    {ErrorNumber::FileNotFound, TextId::FailedFileNotFound},
    {ErrorNumber::DeviceIoError, TextId::FailedDevice},
    {ErrorNumber::DiskFull, TextId::FailedDiskFull},
    {ErrorNumber::PermissionDenied, TextId::FailedPermission},
    {ErrorNumber::DiskNotReady, TextId::FailedDiskNotReady},
    {ErrorNumber::PathFileAccessError, TextId::FailedAccess},
    {ErrorNumber::PathNotFound, TextId::FailedPathNotFound},
}};

std::wstring Amount(std::uint64_t value) {
    return std::to_wstring(value);
}

/// The text that many places behind another: those of one table follow each other, in the order of its values.
template<typename Place>
TextId Behind(TextId first, Place place) {
    return static_cast<TextId>(static_cast<int>(first) + static_cast<int>(place));
}

TextId TextOf(const BackupReport& report) {
    if (report.verdict == Verdict::NotChecked) return TextId::CheckNotCheckedYet;
    if (report.isTargetOnMedium) return TextId::CheckTargetOnMedium;
    if (report.verdict == Verdict::Good && report.isRecovery) return TextId::CheckGoodRecovery;
    if (report.verdict == Verdict::Faulty && report.FaultyItems() == 0) return TextId::CheckFaultyAround;
    if (report.verdict == Verdict::Faulty && report.isRecovery) return TextId::CheckFaultyRecovery;
    return Behind(TextId::CheckGood, report.verdict);
}

/// For the support desk: what the library said.
void AddReason(const std::string& reason, const Texts& texts, std::vector<std::wstring>& lines) {
    if (reason.empty()) return;
    lines.push_back(L"    " + Filled(texts(TextId::CheckSupport), {std::wstring(reason.begin(), reason.end())}));
}

} // namespace

std::wstring FailureWords(const RuntimeError& error, const Texts& texts) {
    for (const auto& [number, text] : Failures) {
        const auto plain = static_cast<std::int32_t>(number);
        // A description of its own says more, and is in the user's language already.
        if (error.Number() == plain && error.Description() == DescriptionOf(plain)) return texts(text);
    }
    return error.Description();
}

std::wstring VerdictSentence(const BackupReport& report, const NumberWords& words) {
    std::wstring needed = words.Size(report.neededBytes);
    std::wstring there = words.Size(report.freeBytes);
    // What lacks little looks the same in a large unit.
    if (needed == there) {
        needed = Filled(words.texts(TextId::CheckBytes), {words.Count(report.neededBytes)});
        there = Filled(words.texts(TextId::CheckBytes), {words.Count(report.freeBytes)});
    }
    return Filled(words.texts(TextOf(report)),
                  {Amount(report.FaultyItems()), Amount(report.items.size()),
                   report.failure ? FailureWords(*report.failure, words.texts) : std::wstring(), needed, there});
}

std::vector<std::wstring> Remarks(const BackupReport& report, const Texts& texts) {
    std::vector<std::wstring> remarks;
    if (report.isOpenedByFirstWord) remarks.push_back(texts(TextId::CheckFirstWord));
    const bool isWalked = report.verdict == Verdict::Good || report.verdict == Verdict::Faulty;
    if (!isWalked) return remarks;
    if (report.isListUnreadable) {
        remarks.push_back(texts(TextId::CheckListUnreadable));
    } else if (!report.hasList) {
        remarks.push_back(texts(TextId::CheckListMissing));
    }
    if (!report.walk.hasDirectory) {
        remarks.push_back(texts(TextId::CheckDirectoryMissing));
    } else if (!report.walk.doesDirectoryAgree) {
        remarks.push_back(texts(TextId::CheckDirectoryDisagrees));
    }
    if (report.walk.unreadableBytes > 0)
        remarks.push_back(Filled(texts(TextId::CheckUnreadableBytes), {Amount(report.walk.unreadableBytes)}));
    return remarks;
}

std::wstring ItemSentence(const ItemReport& item, const Texts& texts) {
    if (item.verdict == ItemVerdict::Whole && item.problems != 0) return texts(TextId::CheckItemNotRestorable);
    if (item.verdict == ItemVerdict::Whole && item.HasFault()) return texts(TextId::CheckItemFilesDiffer);
    if (item.verdict == ItemVerdict::Damaged && item.files == 0) return texts(TextId::CheckItemNothingFound);
    return Filled(texts(Behind(TextId::CheckItemWhole, item.verdict)),
                  {Amount(item.files), Amount(item.bytes), Amount(item.remarks->damagedFiles)});
}

std::vector<std::wstring> ProblemSentences(const ItemReport& item, const Texts& texts) {
    std::vector<std::wstring> sentences;
    for (const auto& [problem, text] : Problems) {
        if ((item.problems & static_cast<unsigned>(problem)) != 0) sentences.push_back(texts(text));
    }
    return sentences;
}

bool HasNumber(FileFinding::What what) {
    return what == FileFinding::What::NotWritten || what == FileFinding::What::NotMarked;
}

std::wstring FindingSentence(const FileFinding& finding, const Texts& texts) {
    const std::wstring other = HasNumber(finding.what)
                                   ? FailureWords(RuntimeError(static_cast<ErrorNumber>(finding.at)), texts)
                                   : finding.other;
    return Filled(texts(Behind(TextId::CheckFileDamaged, finding.what)), {finding.file, Amount(finding.at), other});
}

std::vector<std::wstring> ItemLines(const ItemReport& item, const Texts& texts) {
    const std::wstring name = item.number == 0
                                  ? Filled(texts(TextId::CheckItemWithoutRow), {item.archive})
                                  : Filled(texts(TextId::CheckItemLine),
                                           {Amount(static_cast<std::uint64_t>(item.number)), item.path, item.archive});
    std::vector<std::wstring> lines = {name + L" " + ItemSentence(item, texts)};
    AddReason(item.remarks->reason, texts, lines);
    for (const std::wstring& problem : ProblemSentences(item, texts)) lines.push_back(L"    " + problem);
    for (const FileFinding& finding : item.remarks->findings)
        lines.push_back(L"    " + FindingSentence(finding, texts));
    if (item.remarks->moreFindings > 0)
        lines.push_back(L"    " + Filled(texts(TextId::CheckMoreFindings), {Amount(item.remarks->moreFindings)}));
    return lines;
}

std::vector<std::wstring> SummaryLines(const BackupReport& report, const NumberWords& words) {
    std::vector<std::wstring> lines = Remarks(report, words.texts);
    AddReason(report.walk.reason, words.texts, lines);
    if (!report.items.empty())
        lines.push_back(Filled(words.texts(TextId::CheckTotals),
                               {Amount(report.items.size()), Amount(report.Files()), Amount(report.Bytes())}));
    if (report.isRecovery && !report.items.empty())
        lines.push_back(Filled(words.texts(TextId::CheckRecovered),
                               {Amount(report.RecoveredFiles()), Amount(report.PresentFiles())}));
    lines.push_back(VerdictSentence(report, words));
    return lines;
}

void TellReport(const BackupReport& report, const NumberWords& words,
                const std::function<void(const std::wstring& line)>& tell) {
    tell(Filled(words.texts(TextId::CheckBackupAt), {report.archive, Amount(report.archiveBytes)}));
    if (!report.target.empty()) tell(Filled(words.texts(TextId::CheckRecoverTo), {report.target}));
    for (const ItemReport& item : report.items) {
        for (const std::wstring& line : ItemLines(item, words.texts)) tell(line);
    }
    for (const std::wstring& line : SummaryLines(report, words)) tell(line);
}
