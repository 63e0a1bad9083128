// Runs the archiver command lines of a backup or a restore, copies the two files, and writes to the result file the
// milliseconds that it took, or what went wrong:
//   floor backup|restore DRIVE PASSWORD LISTFILE RESULTFILE [boxes]
// The list file names one item per line, in UTF-8. The archiver lies beside this program. Like the program that is
// measured it has no console, so that the archiver starts under the same conditions. With "boxes" it starts, like that
// program, when a button is pressed in a dialog, which goes, and ends with a message box, for somebody who presses
// them.

#include <windows.h>

#include <shlwapi.h>

#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Failure {
    const char* what;
    DWORD error;
};

std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.rfind(L'\\'));
}

std::vector<std::wstring> ReadItems(const std::wstring& listFile) {
    char path[MAX_PATH] = {};
    WideCharToMultiByte(CP_ACP, 0, listFile.c_str(), -1, path, MAX_PATH, nullptr, nullptr);
    std::ifstream stream(path);
    std::vector<std::wstring> items;
    for (std::string line; std::getline(stream, line);) {
        wchar_t wide[1024] = {};
        MultiByteToWideChar(CP_UTF8, 0, line.c_str(), -1, wide, 1024);
        items.emplace_back(wide);
    }
    return items;
}

std::wstring Joined(std::initializer_list<std::wstring_view> parts) {
    std::wstring joined;
    for (const std::wstring_view part : parts) joined += part;
    return joined;
}

std::wstring Quoted(const std::wstring& path) {
    std::wstring quoted;
    std::size_t start = 0;
    for (bool isFirst = true;; isFirst = false) {
        const std::size_t end = path.find(L'\\', start);
        const std::wstring piece = path.substr(start, end == std::wstring::npos ? end : end - start);
        quoted += isFirst ? piece : L'"' + piece + L'"';
        if (end == std::wstring::npos) return quoted;
        quoted += L'\\';
        start = end + 1;
    }
}

void Run(std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                        &startup, &started)) {
        throw Failure{"cannot start", GetLastError()};
    }
    WaitForSingleObject(started.hProcess, INFINITE);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
}

void CopyFileTo(const std::wstring& source, const std::wstring& target) {
    if (!CopyFileW(source.c_str(), target.c_str(), FALSE)) throw Failure{"cannot copy", GetLastError()};
}

void Flush(const std::wstring& target) {
    const HANDLE file = CreateFileW(target.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    FlushFileBuffers(file);
    CloseHandle(file);
}

std::wstring InnerName(std::size_t position) {
    wchar_t name[16] = {};
    std::swprintf(name, 16, L"Zip%04zu", position);
    return name;
}

void BackUp(const std::wstring& drive, const std::wstring& password, const std::wstring& listFile) {
    const std::vector<std::wstring> items = ReadItems(listFile);
    const std::wstring folder = ProgramFolder();
    const std::wstring work = folder + L"\\zip";
    const std::wstring outer = work + L"\\OKRBACKUP.ZIP";
    CreateDirectoryW(work.c_str(), nullptr);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const std::wstring inner = work + L'\\' + InnerName(index + 1);
        if (PathIsDirectoryW(items[index].c_str())) {
            Run(Joined({folder, L"\\7Za.exe a -tzip ", Quoted(inner), L" ", Quoted(items[index]), L" -r0"}));
        } else {
            Run(Joined({folder, L"\\7Za.exe a -tzip \"", inner, L"\" \"", items[index], L"\""}));
        }
        Run(Joined({folder, L"\\7Za.exe a -tzip \"", outer, L"\" -p", password, L" \"", inner, L".zip\""}));
        DeleteFileW((inner + L".zip").c_str());
    }
    CopyFileTo(outer, drive + L"OKRBACKUP.ZIP");
    CopyFileTo(listFile, drive + L"_floor.lst");
    Flush(drive + L"OKRBACKUP.ZIP");
    Flush(drive + L"_floor.lst");
    DeleteFileW(outer.c_str());
    RemoveDirectoryW(work.c_str());
}

void Restore(const std::wstring& drive, const std::wstring& password, const std::wstring& listFile) {
    const std::vector<std::wstring> items = ReadItems(listFile);
    const std::wstring folder = ProgramFolder();
    const std::wstring work = folder + L"\\zip";
    CreateDirectoryW(work.c_str(), nullptr);
    Run(folder + L"\\7za x " + drive + L"OKRBACKUP.ZIP -o" + Quoted(work) + L" -aoa -p" + password);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const std::wstring inner = work + L'\\' + InnerName(index + 1) + L".zip";
        const std::wstring parent = items[index].substr(0, items[index].rfind(L'\\'));
        Run(folder + L"\\7za x " + Quoted(inner) + L" -aoa -o" + Quoted(parent) + L'\\');
        DeleteFileW(inner.c_str());
    }
    RemoveDirectoryW(work.c_str());
}

/// The result file appears whole: whoever waits for it finds no half of it.
void WriteResult(const std::wstring& path, const std::string& text) {
    const std::wstring unfinished = path + L".tmp";
    DWORD written = 0;
    const HANDLE file =
        CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
    MoveFileW(unfinished.c_str(), path.c_str());
}

} // namespace

int APIENTRY wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    if (__argc != 6 && __argc != 7) return 2;
    const std::vector<std::wstring> arguments(__wargv + 1, __wargv + __argc);
    const bool hasBoxes = arguments.size() == 6 && arguments[5] == L"boxes";
    if (hasBoxes) MessageBoxW(nullptr, L"Start", L"Floor", MB_OK);
    LARGE_INTEGER start{};
    LARGE_INTEGER end{};
    LARGE_INTEGER frequency{};
    std::string result;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    try {
        (arguments[0] == L"backup" ? BackUp : Restore)(arguments[1], arguments[2], arguments[3]);
        QueryPerformanceCounter(&end);
        result = std::to_string((end.QuadPart - start.QuadPart) * 1000 / frequency.QuadPart);
    } catch (const Failure& failure) {
        result = std::string(failure.what) + ", error " + std::to_string(failure.error);
    }
    WriteResult(arguments[4], result);
    if (hasBoxes) MessageBoxW(nullptr, L"Done", L"Floor", MB_OK);
    return 0;
}
