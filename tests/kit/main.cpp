// Tries Backup on a real Windows and writes one report: kit [LETTER [--quick] [--install]]
#include "Console.h"
#include "Installation.h"
#include "Machine.h"
#include "MainJob.h"
#include "Report.h"
#include "Samples.h"
#include "Stick.h"
#include "TestPrograms.h"
#include "Timings.h"
#include "WorkFolder.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace kit {

namespace {

constexpr int NotRun = 2;

// Two tests leave the person's own things alone only on a test workstation: one writes to the event log, and one
// changes for a moment what the Explorer shows.
constexpr const wchar_t* AllUnitTests = L"-EventLogContract/1.*";
constexpr const wchar_t* AllWindowTests = L"-ShownContents.*";
constexpr const wchar_t* FewUnitTests =
    L"FilesContract/1.*:OperatingSystemContract/1.*:EnvironmentContract/1.*:LocaleContract/1.*:"
    L"SettingsFilesContract/1.*:UserAccountContract/1.*:ClockContract/1.*:DrivesContract/1.*:"
    L"ProcessesContract/1.*:UsbDevicesContract/1.*:HeldFiles.*";
constexpr const wchar_t* FewWindowTests =
    L"ScanControl*:StringResource*:ProgressBar*:MessageBox*:Windows/PowerContract/*";

struct Options {
    wchar_t letter = L'\0';
    bool isQuick = false;
    bool isInstalling = false;
};

bool IsLetter(wchar_t character) {
    return (character | 0x20) >= L'a' && (character | 0x20) <= L'z';
}

/// Nothing when the words mean nothing.
std::optional<Options> OptionsOf(const std::vector<std::wstring>& words) {
    Options options;
    for (const std::wstring& word : words) {
        if (word == L"--quick")
            options.isQuick = true;
        else if (word == L"--install")
            options.isInstalling = true;
        else if (!word.empty() && word.size() <= 3 && IsLetter(word[0]) && options.letter == L'\0')
            options.letter = word[0];
        else
            return std::nullopt;
    }
    return options;
}

void AskPerson(Options& options) {
    Print(Say(
        {L"Cet essai passe environ une heure à essayer Copies de sécurité sur cet ordinateur : des fenêtres s'ouvrent\n"
         L"et se ferment. N'utilisez ni la souris ni le clavier pendant ce temps.\n"
         L"Il travaille dans un dossier à lui et sur une clé USB que vous lui prêtez. Il ne touche à rien d'autre :\n"
         L"ni à vos documents, ni aux autres fichiers de la clé. À la fin il efface ce qu'il a fait.\n"
         L"Pour arrêter avant la fin, appuyez sur Ctrl+C dans cette fenêtre noire.\n\n",
         L"This trial spends about an hour trying Backup on this computer: windows open and close.\n"
         L"Use neither the mouse nor the keyboard meanwhile.\n"
         L"It works in a folder of its own and on a USB stick that you lend. It touches nothing else: neither your\n"
         L"documents nor the other files of the stick. At the end it deletes what it has made.\n"
         L"To stop before the end, press Ctrl+C in this black window.\n\n"}));
    while (options.letter == L'\0') {
        Print(Say({L"Lettre de la clé USB (par exemple E), ou Entrée pour ne rien faire : ",
                   L"Letter of the USB stick (for example E), or Enter to do nothing: "}));
        const std::wstring line = ReadLine();
        if (line.empty()) return;
        if (IsLetter(line[0])) options.letter = line[0];
    }
    Print(Say({L"Essayer aussi l'installation ? Windows demandera un administrateur, deux fois. (o/n) ",
               L"Try the installation as well? Windows will ask for an administrator, twice. (y/n) "}));
    const std::wstring answer = ReadLine();
    options.isInstalling = !answer.empty() && std::wstring(L"oOyY").find(answer[0]) != std::wstring::npos;
}

fs::path KitFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path().parent_path();
}

fs::path ReportPath() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    wchar_t name[64] = {};
    std::swprintf(name, 64, L"report-%04u%02u%02u-%02u%02u%02u.html", now.wYear, now.wMonth, now.wDay, now.wHour,
                  now.wMinute, now.wSecond);
    return KitFolder() / name;
}

void LayOut(const WorkFolder& work) {
    for (const wchar_t* name : {L"Backup.exe", L"7Za.exe"})
        fs::copy_file(KitFolder() / L"program" / name, work.ProgramFolder() / name);
    fs::copy_file(KitFolder() / L"tests" / L"floor.exe", work.ProgramFolder() / L"floor.exe");
}

void TryMainJob(const WorkFolder& work, Stick& stick, bool isFrench, Report& report) {
    report.Begin(isFrench ? Words{L"Le travail principal, en français", L"The main job, in French"}
                          : Words{L"Le travail principal, en anglais", L"The main job, in English"});
    report.Step({L"tout revient", L"everything comes back"}, [&] {
        work.SetLanguage(isFrench);
        work.EmptyDocuments();
        WriteDocuments(work.Documents());
        MainJob({work.ProgramFolder().wstring(), work.Documents(), isFrench ? L"fr" : L"en"}, stick, report).Run();
        return std::wstring();
    });
}

void TryEverything(const Options& options, const WorkFolder& work, Stick& stick, Report& report) {
    TryMainJob(work, stick, IsFrench(), report);
    if (!options.isQuick) TryMainJob(work, stick, !IsFrench(), report);
    report.Begin({L"Temps", L"Times"});
    TakeTimes(work, stick, options.isQuick, report);
    if (options.isInstalling) TryInstallation(KitFolder() / L"Backup-setup.exe", work, stick, report);
    report.Begin({L"Essais sans fenêtres", L"Tests without windows"});
    RunTests(KitFolder() / L"tests" / L"unit_tests.exe", options.isQuick ? FewUnitTests : AllUnitTests, work.Temp(),
             report);
    report.Begin({L"Essais des fenêtres", L"Tests of the windows"});
    RunTests(KitFolder() / L"tests" / L"window_tests.exe", options.isQuick ? FewWindowTests : AllWindowTests,
             work.Temp(), report);
}

void TryWith(const Options& options, Report& report) {
    WorkFolder work;
    report.Hide(work.Path().wstring(), L"<kit>");
    Stick stick(options.letter);
    LayOut(work);
    TellMachine(report);
    report.Tell({L"place libre sur la clé", L"free on the stick"},
                std::to_wstring(static_cast<long long>(stick.FreeBytes() / 1024 / 1024)) + L" MB");
    TryEverything(options, work, stick, report);
    report.Begin({L"Ménage", L"Cleaning up"});
    report.Step({L"la clé est comme avant", L"the stick is as before"}, [&] {
        if (!stick.Clear()) throw Failure(L"the trial's files cannot be deleted from it");
        return stick.RequireAsBefore(), std::wstring();
    });
    report.Step({L"rien ne reste sur l'ordinateur", L"nothing is left on the computer"}, [&] {
        if (!work.Remove()) throw Failure(work.Path().wstring());
        return std::wstring();
    });
}

int Run(const Options& options) {
    Report report(ReportPath());
    wchar_t profile[MAX_PATH] = {};
    GetEnvironmentVariableW(L"USERPROFILE", profile, MAX_PATH);
    try {
        report.Hide(profile, L"<profile>");
        TryWith(options, report);
        report.Write();
    } catch (const Failure& failure) {
        Print(failure.Said() + L"\n");
        return NotRun;
    }
    Print(L"\n" + std::to_wstring(report.Count(Outcome::Passed)) + Say({L" réussis, ", L" passed, "}) +
          std::to_wstring(report.Count(Outcome::Failed)) + Say({L" échecs, ", L" failed, "}) +
          std::to_wstring(report.Count(Outcome::Skipped)) + Say({L" omis\n", L" skipped\n"}) +
          Say({L"Relisez le rapport, puis envoyez-le : ", L"Look through the report, then send it: "}) +
          report.Path().wstring() + L"\n");
    return report.Count(Outcome::Failed) == 0 ? 0 : 1;
}

} // namespace

} // namespace kit

int wmain(int count, wchar_t** arguments) {
    SetProcessDPIAware();
    kit::WatchForEnd();
    std::optional<kit::Options> options = kit::OptionsOf({arguments + 1, arguments + count});
    if (!options) {
        kit::Print(L"kit [LETTER [--quick] [--install]]\n");
        return kit::NotRun;
    }
    if (options->letter == L'\0') kit::AskPerson(*options);
    return options->letter == L'\0' ? kit::NotRun : kit::Run(*options);
}
