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

std::wstring Filled(std::wstring text, const std::vector<std::wstring>& values) {
    // Parted first: a value may hold what looks like a place for another one.
    std::wstring filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t value =
            at + 1 < text.size() && text[at] == L'%' && text[at + 1] >= L'1' && text[at + 1] <= L'9'
                ? static_cast<std::size_t>(text[at + 1] - L'1')
                : values.size();
        if (value < values.size()) {
            filled += values[value];
            ++at;
        } else {
            filled += text[at];
        }
    }
    return filled;
}

std::wstring VerdictSentence(const BackupReport& report, const Texts& texts) {
    return Filled(texts(TextOf(report)),
                  {Amount(report.FaultyItems()), Amount(report.items.size()), report.failure.value_or(L""),
                   Amount(report.neededBytes), Amount(report.freeBytes)});
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

std::wstring FindingSentence(const FileFinding& finding, const Texts& texts) {
    return Filled(texts(Behind(TextId::CheckFileDamaged, finding.what)),
                  {finding.file, Amount(finding.at), finding.other});
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

std::vector<std::wstring> SummaryLines(const BackupReport& report, const Texts& texts) {
    std::vector<std::wstring> lines = Remarks(report, texts);
    AddReason(report.walk.reason, texts, lines);
    if (!report.items.empty())
        lines.push_back(Filled(texts(TextId::CheckTotals),
                               {Amount(report.items.size()), Amount(report.Files()), Amount(report.Bytes())}));
    if (report.isRecovery && !report.items.empty())
        lines.push_back(
            Filled(texts(TextId::CheckRecovered), {Amount(report.RecoveredFiles()), Amount(report.PresentFiles())}));
    lines.push_back(VerdictSentence(report, texts));
    return lines;
}

void TellReport(const BackupReport& report, const Texts& texts,
                const std::function<void(const std::wstring& line)>& tell) {
    tell(Filled(texts(TextId::CheckBackupAt), {report.archive, Amount(report.archiveBytes)}));
    if (!report.target.empty()) tell(Filled(texts(TextId::CheckRecoverTo), {report.target}));
    for (const ItemReport& item : report.items) {
        for (const std::wstring& line : ItemLines(item, texts)) tell(line);
    }
    for (const std::wstring& line : SummaryLines(report, texts)) tell(line);
}
