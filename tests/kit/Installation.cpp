#include "Installation.h"

#include "Machine.h"
#include "MainJob.h"
#include "Samples.h"
#include "WorkFolder.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <shellapi.h>

namespace kit {

namespace {

constexpr const wchar_t* ParentFolder = L"C:\\Valcoreaux";
constexpr const wchar_t* InstallFolder = L"C:\\Valcoreaux\\Backup";
constexpr DWORD LimitMilliseconds = 10 * 60 * 1000;

/// Runs a program with the rights of an administrator, for which Windows asks; gives its exit code.
DWORD RunElevated(const std::wstring& program, const std::wstring& arguments) {
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC;
    execution.lpVerb = L"runas";
    execution.lpFile = program.c_str();
    execution.lpParameters = arguments.c_str();
    execution.nShow = SW_SHOWNORMAL;
    if (!ShellExecuteExW(&execution)) {
        const DWORD error = GetLastError();
        if (error == ERROR_CANCELLED)
            throw NotHere(Say({L"les droits d'administrateur ont été refusés", L"administrator rights were refused"}));
        throw Failure(L"cannot be started, error " + std::to_wstring(error));
    }
    const UniqueObject process(execution.hProcess);
    if (WaitForSingleObject(process.Get(), LimitMilliseconds) != WAIT_OBJECT_0) throw Failure(L"no end");
    DWORD code = 0;
    GetExitCodeProcess(process.Get(), &code);
    return code;
}

bool WaitUntilGone(const std::wstring& path) {
    constexpr ULONGLONG limitMilliseconds = 60 * 1000;
    const ULONGLONG end = GetTickCount64() + limitMilliseconds;
    while (IsHere(path) && GetTickCount64() < end) Sleep(100);
    return !IsHere(path);
}

/// The program while it is installed; it is removed again, whatever happens in between.
class Installed {
  public:
    Installed() = default;
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
    ~Installed() {
        try {
            Remove();
        } catch (const Failure&) {
            // It stays installed; the report lacks the line about its removal or says that it failed.
        }
    }
    void Remove() {
        if (isRemoved_) return;
        isRemoved_ = true;
        const std::wstring folder = InstallFolder;
        RunElevated(folder + L"\\Uninstall.exe", L"/S");
        // It goes on from a copy of itself.
        if (!WaitUntilGone(folder)) throw Failure(L"something is left in " + folder);
    }

  private:
    bool isRemoved_ = false;
};

std::wstring Variable(const wchar_t* name) {
    wchar_t value[MAX_PATH] = {};
    GetEnvironmentVariableW(name, value, MAX_PATH);
    return value;
}

/// What the setup would replace and the uninstaller remove, and the kit has not made; empty when there is nothing.
std::wstring InTheWay() {
    if (IsHere(ParentFolder)) return ParentFolder;
    for (const std::wstring& folder : {Variable(L"PUBLIC") + L"\\Desktop\\",
                                       Variable(L"ProgramData") + L"\\Microsoft\\Windows\\Start Menu\\Programs\\"}) {
        for (const wchar_t* name : {L"Backup.lnk", L"Copies de sécurité.lnk"}) {
            if (IsHere(folder + name)) return folder + name;
        }
    }
    return {};
}

void TellRights(Report& report) {
    for (const wchar_t* name : {L"", L"\\Backup.exe", L"\\7Za.exe", L"\\LICENSES", L"\\Fichierlst"}) {
        const std::wstring path = std::wstring(InstallFolder) + name;
        const auto rights = [&] { return path + L" " + Ask({L"rights", path}).front().front(); };
        report.Step({L"propriétaire et droits", L"owner and rights"}, rights);
    }
}

/// Whether this account can make a file there; the file goes at once.
bool CanMakeFileIn(const std::wstring& folder) {
    const UniqueFile file(CreateFileW((folder + L"\\kit.tmp").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    return static_cast<bool>(file);
}

void TryAsOrdinaryUser(Report& report) {
    report.Step({L"un utilisateur ne dépose rien à côté du programme", L"a user puts nothing beside the program"}, [&] {
        if (IsWine()) throw NotHere(Say({L"Wine n'applique pas les droits", L"Wine does not enforce rights"}));
        if (IsElevated()) throw NotHere(Say({L"essai lancé en administrateur", L"run as administrator"}));
        for (const wchar_t* name : {L"", L"\\LICENSES", L"\\Fichierlst", L"\\Fichierlst\\Medium"}) {
            if (CanMakeFileIn(std::wstring(InstallFolder) + name)) throw Failure(std::wstring(InstallFolder) + name);
        }
        return std::wstring();
    });
}

void TellWorkFolderRights(Report& report) {
    report.Step({L"un utilisateur fait et vide le dossier de travail", L"a user makes and empties the work folder"},
                [&] {
                    const std::wstring folder = std::wstring(InstallFolder) + L"\\zip";
                    if (!CreateDirectoryW(folder.c_str(), nullptr))
                        throw Failure(L"error " + std::to_wstring(GetLastError()));
                    std::wstring rights = Ask({L"rights", folder}).front().front();
                    const bool canFill = CanMakeFileIn(folder);
                    const bool canRemove = RemoveDirectoryW(folder.c_str()) != 0;
                    if (!canFill || !canRemove) throw Failure(rights);
                    return rights;
                });
}

void BackUpAsInstalled(const WorkFolder& work, Stick& stick, Report& report) {
    work.EmptyDocuments();
    WriteDocuments(work.Documents());
    MainJob({InstallFolder, work.Documents(), Say({L"installé", L"installed"}), false}, stick, report).Run();
}

} // namespace

void TryInstallation(const std::filesystem::path& setup, const WorkFolder& work, Stick& stick, Report& report) {
    report.Begin({L"Installation", L"Installation"});
    const bool isInstalled = report.Step({L"installation silencieuse", L"silent installation"}, [&] {
        if (const std::wstring found = InTheWay(); !found.empty())
            throw NotHere(Say({L"déjà là, et l'essai n'y touche pas : ", L"there already, and not the trial's: "}) +
                          found);
        if (const DWORD code = RunElevated(setup.wstring(), L"/S"); code != 0)
            throw Failure(L"exit code " + std::to_wstring(code));
        return std::wstring();
    });
    if (!isInstalled) return;
    Installed installed;
    TellRights(report);
    TryAsOrdinaryUser(report);
    TellWorkFolderRights(report);
    report.Step({L"copie et restauration par le programme installé", L"backup and restore by the installed program"},
                [&] { return BackUpAsInstalled(work, stick, report), std::wstring(); });
    report.Step({L"désinstallation", L"removal"}, [&] {
        installed.Remove();
        WaitUntilGone(ParentFolder);
        if (const std::wstring left = InTheWay(); !left.empty()) throw Failure(left);
        return std::wstring();
    });
}

} // namespace kit
