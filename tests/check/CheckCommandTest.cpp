#include "check/CheckCommand.h"

#include "check/ZipBuilder.h"
#include "resources/TextId.h"
#include "support/FakeConsole.h"
#include "support/FakeFileStore.h"
#include "support/FakeStringTable.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::wstring>;

std::wstring NumberAsText(TextId id) {
    return L"#" + std::to_wstring(static_cast<int>(id)) + L" %1";
}

NumberWords Numbers() {
    return {NumberAsText, L","};
}

/// Files in memory that count how often one of them is read.
class CountedFiles final : public FakeFileStore {
  public:
    std::unique_ptr<InputFile> Open(const std::wstring& path) const override {
        ++opened;
        return FakeFileStore::Open(path);
    }
    mutable int opened = 0;
};

TextId FaultOf(const Words& words) {
    const auto read = ReadCommand(words);
    const auto* fault = std::get_if<CommandFault>(&read);
    return fault ? fault->text : TextId::None;
}

} // namespace

TEST(CheckCommand, AWholeLineIsUnderstood) {
    const auto read =
        ReadCommand({L"/RECOVER", L"E:\\", L"/to", L"D:\\a b\\\\", L"/password-file", L"-", L"/Report", L"r.json"});
    const auto* command = std::get_if<CheckCommand>(&read);
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->request.place, L"E:\\");
    EXPECT_EQ(command->request.target, L"D:\\a b\\");
    EXPECT_EQ(command->passwordFile, L"-");
    EXPECT_EQ(command->reportFile, L"r.json");
}

TEST(CheckCommand, PathsMayHaveSlashesAndBlanksBehindThem) {
    const auto read = ReadCommand({L"/check", L"E:/  ", L"/report", L"D:/a/r.json", L"/password-file", L"C:\\\\\\"});
    const auto* command = std::get_if<CheckCommand>(&read);
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->request.place, L"E:\\");
    EXPECT_EQ(command->reportFile, L"D:\\a\\r.json");
    EXPECT_EQ(command->passwordFile, L"C:\\");
}

TEST(CheckCommand, WrongUsageIsNamed) {
    EXPECT_EQ(FaultOf({L"/check"}), TextId::CheckValueMissing);
    EXPECT_EQ(FaultOf({L"/check", L"/compare"}), TextId::CheckValueMissing);
    EXPECT_EQ(FaultOf({L"/check", L"E:\\", L"/check", L"F:\\"}), TextId::CheckGivenTwice);
    EXPECT_EQ(FaultOf({L"/check", L"E:\\", L"more"}), TextId::CheckUnknownWord);
    EXPECT_EQ(FaultOf({L"/recover", L"E:\\"}), TextId::CheckWorkMissing);
    EXPECT_EQ(FaultOf({L"/check", L"E:\\", L"/to", L"D:\\"}), TextId::CheckWorkMissing);
    EXPECT_EQ(FaultOf({L"/check", L"E:\\", L"/recover", L"E:\\", L"/to", L"D:\\"}), TextId::CheckWorkMissing);
    EXPECT_EQ(FaultOf({L"/compare"}), TextId::CheckWorkMissing);
}

TEST(CheckCommand, TheUsageNamesEveryWordOfBothWorks) {
    const FakeStringTable strings;
    for (const int language : {0, 10000}) {
        const std::wstring usage = strings.Load(static_cast<int>(TextId::CheckUsage) + language);
        const std::wstring check = usage.substr(0, usage.find(L'\n'));
        const std::wstring recover = usage.substr(check.size() + 1, usage.find(L'\n', check.size() + 1) - check.size());
        EXPECT_NE(recover.find(L"/recover E:\\ /to D:\\"), std::wstring::npos);
        for (const wchar_t* word : {L"[/password-file F]", L"[/compare]", L"[/report R.json]"}) {
            EXPECT_NE(check.find(word), std::wstring::npos) << word;
            EXPECT_NE(recover.find(word), std::wstring::npos) << word;
        }
    }
    EXPECT_EQ(FaultOf({L"/recover", L"E:\\", L"/to", L"D:\\", L"/compare", L"/report", L"r"}), TextId::None);
}

TEST(CheckCommand, ThePasswordIsTheFirstLineWithoutItsEnd) {
    EXPECT_EQ(PasswordIn("Mot de passe \r\nmore"), L"Mot de passe ");
    EXPECT_EQ(PasswordIn("\xC9t\xE9\n"), L"Été");
    EXPECT_EQ(PasswordIn("\xEF\xBB\xBF\xC3\x89t\xC3\xA9"), L"Été");
    EXPECT_EQ(PasswordIn(""), L"");
}

TEST(CheckCommand, TheExitCodeAndTheReportTellTheSame) {
    FakeFileStore files;
    files.Add(L"E:\\OKRBACKUP.ZIP", BuildBackup({{{"a.txt", "premier"}}}, "Valcoreaux1"));
    files.Add(L"E:\\_listFich.lst", "C:\\a.txt,32,Zip0001\r\n");
    FakeConsole console;
    console.input = "Valcoreaux1";
    const Words words = {L"/check", L"E:\\", L"/password-file", L"-", L"/report", L"D:\\r.json"};
    EXPECT_EQ(RunCommand(files, console, Numbers(), words, {}), 0);
    const std::string report = files.BytesOf(L"D:\\r.json").value_or("");
    EXPECT_NE(report.find("\"verdict\":\"good\""), std::string::npos) << report;
    EXPECT_NE(report.find("\"exitCode\":0"), std::string::npos);
    console.input = "wrong";
    EXPECT_EQ(RunCommand(files, console, Numbers(), words, {}), 2);
    EXPECT_NE(files.BytesOf(L"D:\\r.json")->find("\"exitCode\":2"), std::string::npos);
}

TEST(CheckCommand, APasswordFileThatIsNotThereAndAReportOverTheBackupEndWithFour) {
    FakeFileStore files;
    files.Add(L"E:\\OKRBACKUP.ZIP", BuildBackup({{{"a.txt", "premier"}}}, "Valcoreaux1"));
    FakeConsole console;
    EXPECT_EQ(RunCommand(files, console, Numbers(), {L"/check", L"E:\\", L"/password-file", L"D:\\no"}, {}), 4);
    EXPECT_EQ(RunCommand(files, console, Numbers(), {L"/check", L"E:\\", L"/report", L"E:\\OKRBACKUP.ZIP"}, {}), 4);
    EXPECT_EQ(RunCommand(files, console, Numbers(), {}, {}), 5);
    const auto reason = [](TextId text, TextId why) {
        return L"#" + std::to_wstring(static_cast<int>(text)) + L" " + NumberAsText(why);
    };
    EXPECT_EQ(console.lines.at(0), reason(TextId::CheckPasswordUnreadable, TextId::FailedFileNotFound));
    EXPECT_EQ(console.lines.at(1), reason(TextId::CheckReportNotWritten, TextId::CheckTargetOnMedium));
}

TEST(CheckCommand, AReportOnTheMediumIsRefusedBeforeAnythingIsRead) {
    CountedFiles files;
    const std::string backup = BuildBackup({{{"a.txt", "premier"}}}, "Valcoreaux1");
    files.Add(L"E:\\OKRBACKUP.ZIP", backup);
    files.Add(L"D:\\copie\\OKRBACKUP.ZIP", backup);
    files.Add(L"D:\\secret.txt", "Valcoreaux1");
    FakeConsole console;
    for (const Words& words :
         {Words{L"/check", L"E:\\", L"/password-file", L"D:\\secret.txt", L"/report", L"E:\\r.json"},
          Words{L"/recover", L"E:", L"/to", L"D:\\Cible", L"/report", L"e:\\r.txt"},
          Words{L"/check", L"D:\\copie", L"/report", L"D:\\copie\\_listFich.lst"}})
        EXPECT_EQ(RunCommand(files, console, Numbers(), words, {}), 4);
    EXPECT_EQ(files.opened, 0);
    ASSERT_EQ(console.lines.size(), 3u) << "why, and nothing else";
    EXPECT_EQ(console.lines[2], L"#1178 " + NumberAsText(TextId::FailedPermission));
}

TEST(CheckCommand, AWorkThatIsBrokenOffFromTheConsoleIsReportedAsStopped) {
    FakeFileStore files;
    files.Add(L"E:\\OKRBACKUP.ZIP", BuildBackup({{{"a.txt", "premier"}}}, "Valcoreaux1"));
    FakeConsole console;
    console.input = "Valcoreaux1";
    console.isStopAsked = true;
    const Words words = {L"/check", L"E:\\", L"/password-file", L"-", L"/report", L"D:\\r.json"};
    EXPECT_EQ(RunCommand(files, console, Numbers(), words, {}), 4);
    EXPECT_NE(files.BytesOf(L"D:\\r.json").value_or("").find("\"verdict\":\"stopped\""), std::string::npos);
}
