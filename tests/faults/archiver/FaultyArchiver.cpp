// Stands in the archiver's place and behaves as the word in 7Za.fault beside it says; the real archiver is
// 7Za.real.exe. That it did so is left behind as 7Za.met.
#include <windows.h>

#include <fstream>
#include <string>

namespace {

std::wstring Folder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

/// The command line without the program's own name.
std::wstring Arguments() {
    const std::wstring line = GetCommandLineW();
    const bool isQuoted = line.starts_with(L'"');
    const std::size_t end = isQuoted ? line.find(L'"', 1) + 1 : line.find(L' ');
    return end == std::wstring::npos ? L"" : line.substr(end);
}

DWORD RunRealArchiver(const std::wstring& folder) {
    std::wstring line = L"\"" + folder + L"7Za.real.exe\"" + Arguments();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started))
        return 99;
    WaitForSingleObject(started.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(started.hProcess, &code);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return code;
}

} // namespace

int wmain() {
    const std::wstring folder = Folder();
    std::ifstream fault((folder + L"7Za.fault").c_str());
    std::string word;
    DWORD number = 0;
    fault >> word >> number;
    if (word != "work") std::ofstream((folder + L"7Za.met").c_str());
    if (word == "fail") return static_cast<int>(number);
    if (word == "hang") Sleep(INFINITE);
    if (word == "crash") TerminateProcess(GetCurrentProcess(), 0xC0000005);
    if (word == "late") Sleep(number);
    const DWORD code = RunRealArchiver(folder);
    return static_cast<int>(word == "claim" ? number : code);
}
