// What a report says, in words and as JSON.
#include "core/Application.h"
#include "platform/CodePages.h"
#include "resources/TextId.h"
#include "support/FakeStringTable.h"
#include "support/ReportTexts.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A text's number and the values that were put into it.
std::wstring Numbered(TextId id) {
    return std::to_wstring(static_cast<int>(id)) + L"(%1;%2;%3;%4;%5)";
}

NumberWords Wording() {
    return {Numbered, L","};
}

std::wstring Sentence(TextId id, int behind, const std::wstring& values) {
    return std::to_wstring(static_cast<int>(id) + behind) + L"(" + values + L")";
}

/// An amount below a kilobyte.
std::wstring Bytes(const std::wstring& amount) {
    return Sentence(TextId::CheckBytes, 0, amount + L";%2;%3;%4;%5");
}

BackupReport GoodReport() {
    BackupReport report;
    report.verdict = Verdict::Good;
    report.archive = L"E:\\OKRBACKUP.ZIP";
    report.archiveBytes = 500;
    report.hasList = true;
    report.isEncrypted = true;
    report.walk.hasDirectory = true;
    report.walk.doesDirectoryAgree = true;
    return report;
}

ItemReport WholeItem() {
    static PackedTexts texts;
    ItemReport item;
    item.number = 1;
    item.path = texts.Keep(L"C:\\a.txt");
    item.archive = texts.Keep(L"Zip0001");
    item.verdict = ItemVerdict::Whole;
    item.files = 3;
    item.bytes = 20;
    return item;
}

std::string Member(const std::string& json, const std::string& key) {
    const std::size_t at = json.find("\"" + key + "\":");
    if (at == std::string::npos) return "absent";
    const std::size_t begin = at + key.size() + 3;
    return json.substr(begin, json.find_first_of(",}", begin) - begin);
}

} // namespace

TEST(ReportText, PlacesInATextAreFilledOnceAndWhatIsNoneStays) {
    EXPECT_EQ(Filled(L"%1 of %2", {L"%2", L"b"}), L"%2 of b");
    EXPECT_EQ(Filled(L"%1%1", {L"a"}), L"aa");
    EXPECT_EQ(Filled(L"100% %3 %0 %", {L"a", L"b"}), L"100% %3 %0 %");
    EXPECT_EQ(Filled(L"%9", {L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9"}), L"9");
}

TEST(ReportText, EveryVerdictHasItsSentence) {
    BackupReport report = GoodReport();
    report.failure = RuntimeError(1, L"why");
    report.neededBytes = 11;
    report.freeBytes = 7;
    for (int verdict = 0; verdict <= static_cast<int>(Verdict::Stopped); ++verdict) {
        report.verdict = static_cast<Verdict>(verdict);
        if (report.verdict == Verdict::Faulty) continue;
        EXPECT_EQ(VerdictSentence(report, Wording()),
                  Sentence(TextId::CheckGood, verdict, L"0;0;why;" + Bytes(L"11") + L";" + Bytes(L"7")))
            << verdict;
    }
    report.verdict = Verdict::Good;
    report.isRecovery = true;
    EXPECT_EQ(VerdictSentence(report, Wording()),
              Sentence(TextId::CheckGoodRecovery, 0, L"0;0;why;" + Bytes(L"11") + L";" + Bytes(L"7")));
}

TEST(ReportText, AFaultIsInTheItemsOrAroundThem) {
    BackupReport report = GoodReport();
    report.verdict = Verdict::Faulty;
    report.items = {WholeItem()};
    EXPECT_EQ(VerdictSentence(report, Wording()),
              Sentence(TextId::CheckFaultyAround, 0, L"0;1;;" + Bytes(L"0") + L";" + Bytes(L"0")));
    report.items[0].verdict = ItemVerdict::Damaged;
    EXPECT_EQ(VerdictSentence(report, Wording()), Sentence(TextId::CheckGood, static_cast<int>(Verdict::Faulty),
                                                           L"1;1;;" + Bytes(L"0") + L";" + Bytes(L"0")));
    report.isRecovery = true;
    EXPECT_EQ(VerdictSentence(report, Wording()),
              Sentence(TextId::CheckFaultyRecovery, 0, L"1;1;;" + Bytes(L"0") + L";" + Bytes(L"0")));
}

TEST(ReportText, EveryStateOfAnItemHasItsSentence) {
    ItemReport item = WholeItem();
    item.remarks.Set().damagedFiles = 2;
    for (int verdict = 1; verdict <= static_cast<int>(ItemVerdict::NotChecked); ++verdict) {
        item.verdict = static_cast<ItemVerdict>(verdict);
        EXPECT_EQ(ItemSentence(item, Numbered), Sentence(TextId::CheckItemWhole, verdict, L"3;20;2;%4;%5")) << verdict;
    }
    item = WholeItem();
    EXPECT_EQ(ItemSentence(item, Numbered), Sentence(TextId::CheckItemWhole, 0, L"3;20;0;%4;%5"));
    item.files = 0;
    item.verdict = ItemVerdict::Damaged;
    EXPECT_EQ(ItemSentence(item, Numbered), Numbered(TextId::CheckItemNothingFound)) << "no amounts of nothing";
    item = WholeItem();
    item.Add({FileFinding::What::Absent, L"b.txt", 0, L""});
    EXPECT_EQ(ItemSentence(item, Numbered), Numbered(TextId::CheckItemFilesDiffer));
    item.problems = static_cast<std::uint8_t>(RowProblem::Comma);
    EXPECT_EQ(ItemSentence(item, Numbered), Numbered(TextId::CheckItemNotRestorable));
}

TEST(ReportText, EveryProblemAndEveryFindingHasItsSentence) {
    ItemReport item;
    EXPECT_THAT(ProblemSentences(item, Numbered), IsEmpty());
    for (const RowProblem problem : {RowProblem::Comma, RowProblem::LostLetters, RowProblem::TwoFields,
                                     RowProblem::SharedMailStore, RowProblem::TooLong, RowProblem::NotRestorable})
        item.problems = static_cast<std::uint8_t>(item.problems | static_cast<unsigned>(problem));
    EXPECT_THAT(ProblemSentences(item, Numbered),
                ElementsAre(Numbered(TextId::CheckProblemComma), Numbered(TextId::CheckProblemLostLetters),
                            Numbered(TextId::CheckProblemTwoFields), Numbered(TextId::CheckProblemSharedMailStore),
                            Numbered(TextId::CheckProblemTooLong), Numbered(TextId::CheckProblemNotRestorable)));
    for (int what = 0; what <= static_cast<int>(FileFinding::What::AddedSince); ++what)
        EXPECT_EQ(FindingSentence({static_cast<FileFinding::What>(what), L"f", 9, L"o"}, Numbered),
                  Sentence(TextId::CheckFileDamaged, what, L"f;9;o;%4;%5"));
}

TEST(ReportText, WhatCouldNotBeDoneIsToldWithItsReason) {
    for (const auto what : {FileFinding::What::NotWritten, FileFinding::What::NotMarked}) {
        const auto disk = static_cast<std::uint64_t>(ErrorNumber::DiskFull);
        EXPECT_EQ(FindingSentence({what, L"f", disk, L""}, Numbered),
                  Sentence(TextId::CheckFileDamaged, static_cast<int>(what),
                           L"f;61;" + Numbered(TextId::FailedDiskFull) + L";%4;%5"));
    }
}

TEST(ReportText, AFailureIsToldInTheUsersLanguage) {
    const FakeStringTable strings;
    BackupReport report = GoodReport();
    report.verdict = Verdict::NotWritable;
    std::set<std::wstring> told;
    for (const int number : {52, 53, 57, 61, 70, 71, 75, 76}) {
        report.failure = RuntimeError(static_cast<ErrorNumber>(number));
        for (const int language : {0, 10000}) {
            const NumberWords words{[&](TextId id) { return strings.Load(static_cast<int>(id) + language); }, L","};
            const std::wstring sentence = VerdictSentence(report, words);
            EXPECT_EQ(sentence.find(report.failure->Description()), std::wstring::npos) << number;
            told.insert(sentence);
        }
    }
    EXPECT_EQ(told.size(), 16u) << "each has words of its own";
    EXPECT_EQ(FailureWords(RuntimeError(70, L"Rien ici."), Numbered), L"Rien ici.") << "said already";
    EXPECT_EQ(FailureWords(RuntimeError(ErrorNumber::OutOfMemory), Numbered), L"Out of memory");
}

TEST(ReportText, RoomIsToldInUnitsThatSuitAndExactlyWhereLittleLacks) {
    const FakeStringTable strings;
    const NumberWords words{[&](TextId id) { return strings.Load(static_cast<int>(id)); }, L","};
    BackupReport report = GoodReport();
    report.verdict = Verdict::NoRoom;
    report.neededBytes = 123456789012;
    report.freeBytes = 3 << 20;
    const std::wstring before = L"Il n'y a pas assez d'espace libre dans le dossier choisi : ";
    EXPECT_EQ(VerdictSentence(report, words), before + L"115,0 Go ou plus sont nécessaires, 3,0 Mo sont libres.");
    report.freeBytes = report.neededBytes - 1;
    EXPECT_EQ(VerdictSentence(report, words),
              before + L"123 456 789 012 o ou plus sont nécessaires, 123 456 789 011 o sont libres.");
}

TEST(ReportText, RemarksAreMadeOfABackupThatWasRead) {
    BackupReport report = GoodReport();
    EXPECT_THAT(Remarks(report, Numbered), IsEmpty());
    report.isOpenedByFirstWord = true;
    report.hasList = false;
    report.walk.doesDirectoryAgree = false;
    report.walk.unreadableBytes = 5;
    EXPECT_THAT(Remarks(report, Numbered),
                ElementsAre(Numbered(TextId::CheckFirstWord), Numbered(TextId::CheckListMissing),
                            Numbered(TextId::CheckDirectoryDisagrees),
                            Sentence(TextId::CheckUnreadableBytes, 0, L"5;%2;%3;%4;%5")));
    report.verdict = Verdict::Faulty;
    report.isListUnreadable = true;
    report.walk = {};
    EXPECT_THAT(Remarks(report, Numbered),
                ElementsAre(Numbered(TextId::CheckFirstWord), Numbered(TextId::CheckListUnreadable),
                            Numbered(TextId::CheckDirectoryMissing)));
    report.verdict = Verdict::WrongPassword;
    EXPECT_THAT(Remarks(report, Numbered), ElementsAre(Numbered(TextId::CheckFirstWord)));
}

TEST(ReportText, TheLinesTellItemByItemAndThenTheWhole) {
    BackupReport report = GoodReport();
    report.verdict = Verdict::Faulty;
    report.isRecovery = true;
    report.target = L"D:\\Cible";
    report.walk.reason = "outer";
    report.items = {WholeItem(), WholeItem()};
    report.items[0].problems = static_cast<std::uint8_t>(RowProblem::Comma);
    report.items[0].recoveredFiles = 2;
    report.items[0].presentFiles = 1;
    report.items[1].number = 0;
    report.items[1].remarks.Set().reason = "inner";
    report.items[1].remarks.Set().findings = {{FileFinding::What::Newer, L"f", 0, L""}};
    report.items[1].remarks.Set().moreFindings = 4;
    const auto line = [](TextId id, const std::wstring& values) { return Sentence(id, 0, values); };
    EXPECT_THAT(
        ReportLines(report, Wording()),
        ElementsAre(
            line(TextId::CheckBackupAt, L"E:\\OKRBACKUP.ZIP;500;%3;%4;%5"),
            line(TextId::CheckRecoverTo, L"D:\\Cible;%2;%3;%4;%5"),
            line(TextId::CheckItemLine, L"1;C:\\a.txt;Zip0001;%4;%5") + L" " + Numbered(TextId::CheckItemNotRestorable),
            L"    " + Numbered(TextId::CheckProblemComma),
            line(TextId::CheckItemWithoutRow, L"Zip0001;%2;%3;%4;%5") + L" " +
                line(TextId::CheckItemWhole, L"3;20;0;%4;%5"),
            L"    " + line(TextId::CheckSupport, L"inner;%2;%3;%4;%5"),
            L"    " + Sentence(TextId::CheckFileDamaged, static_cast<int>(FileFinding::What::Newer), L"f;0;;%4;%5"),
            L"    " + line(TextId::CheckMoreFindings, L"4;%2;%3;%4;%5"),
            L"    " + line(TextId::CheckSupport, L"outer;%2;%3;%4;%5"), line(TextId::CheckTotals, L"2;6;40;%4;%5"),
            line(TextId::CheckRecovered, L"2;1;%3;%4;%5"), VerdictSentence(report, Wording())));
}

TEST(ReportText, AReportWithoutItemsHasNoTotals) {
    BackupReport report;
    report.isRecovery = true;
    EXPECT_THAT(ReportLines(report, Wording()),
                ElementsAre(Sentence(TextId::CheckBackupAt, 0, L";0;%3;%4;%5"), VerdictSentence(report, Wording())));
}

TEST(ReportJson, AWholeReportIsWrittenToTheLetter) {
    BackupReport report = GoodReport();
    report.isRecovery = true;
    report.target = L"D:\\Cible";
    report.items = {WholeItem()};
    report.items[0].problems =
        static_cast<std::uint8_t>(RowProblem::Comma) | static_cast<std::uint8_t>(RowProblem::TwoFields);
    report.items[0].remarks.Set().findings = {{FileFinding::What::BrokenOff, L"\u00E9\n\"", 9, L""},
                                              {FileFinding::What::KeptAs, L"b", 9, L"c"},
                                              {FileFinding::What::NotWritten, L"d", 75, L""}};
    EXPECT_EQ(ReportJson(report),
              "{\"format\":1,\"program\":\"BackupCheck " + ToUtf8(VersionText()) +
                  "\",\"action\":\"recover\",\"compared\":false,\"verdict\":\"good\",\"exitCode\":0,\"failure\":\"\","
                  "\"list\":\"read\",\"password\":\"whole\",\"target\":\"D:\\\\Cible\",\"archive\":{\"path\":"
                  "\"E:\\\\OKRBACKUP.ZIP\",\"bytes\":500,\"directory\":\"agrees\",\"unreadableBytes\":0,\"reason\":"
                  "\"\"},\"totals\":{\"items\":1,\"faultyItems\":1,\"files\":3,\"bytes\":20,\"recoveredFiles\":0,"
                  "\"presentFiles\":0},\"items\":[{\"number\":1,\"path\":\"C:\\\\a.txt\",\"archive\":\"Zip0001\","
                  "\"kind\":\"file\",\"verdict\":\"whole\",\"isGood\":false,\"files\":3,\"bytes\":20,"
                  "\"damagedFiles\":0,\"recoveredFiles\":0,\"presentFiles\":0,\"problems\":[\"comma\",\"twoFields\"],"
                  "\"findings\":[{\"file\":\"\xC3\xA9\\u000a\\\"\",\"what\":\"brokenOff\",\"wholeBytes\":9},"
                  "{\"file\":\"b\",\"what\":\"keptAs\",\"path\":\"c\"},"
                  "{\"file\":\"d\",\"what\":\"notWritten\",\"error\":75}],\"moreFindings\":0,\"reason\":\"\"}]}\n");
}

TEST(ReportJson, StatesHaveTheirWords) {
    BackupReport report = GoodReport();
    report.items = {WholeItem()};
    report.items[0].isFolder = true;
    report.walk.doesDirectoryAgree = false;
    report.isOpenedByFirstWord = true;
    report.isComparison = true;
    std::string json = ReportJson(report);
    EXPECT_EQ(Member(json, "action"), "\"check\"");
    EXPECT_EQ(Member(json, "compared"), "true");
    EXPECT_EQ(Member(json, "kind"), "\"folder\"");
    EXPECT_EQ(Member(json, "directory"), "\"disagrees\"");
    EXPECT_EQ(Member(json, "password"), "\"firstWord\"");
    EXPECT_EQ(Member(json, "target"), "absent");
    EXPECT_EQ(Member(json, "recoveredFiles"), "absent");
    report.items[0].number = 0;
    report.walk.hasDirectory = false;
    report.isEncrypted = false;
    report.hasList = false;
    json = ReportJson(report);
    EXPECT_EQ(Member(json, "kind"), "\"unknown\"");
    EXPECT_EQ(Member(json, "directory"), "\"missing\"");
    EXPECT_EQ(Member(json, "password"), "\"notNeeded\"");
    EXPECT_EQ(Member(json, "list"), "\"missing\"");
    report.isListUnreadable = true;
    report.verdict = Verdict::WrongPassword;
    json = ReportJson(report);
    EXPECT_EQ(Member(json, "list"), "\"unreadable\"");
    EXPECT_EQ(Member(json, "password"), "\"wrong\"");
    report.verdict = Verdict::PasswordMissing;
    EXPECT_EQ(Member(ReportJson(report), "password"), "\"missing\"");
}
