#include "WorkFolder.h"

#include "Words.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <fstream>

namespace kit {

namespace {

void DeleteOnce(const fs::path& folder) {
    {
        WIN32_FIND_DATAW entry{};
        const UniqueFind search(FindFirstFileW((folder / L"*").c_str(), &entry));
        for (BOOL isFound = static_cast<bool>(search); isFound; isFound = FindNextFileW(search.Get(), &entry)) {
            const std::wstring name = entry.cFileName;
            if (name == L"." || name == L"..") continue;
            const fs::path path = folder / name;
            const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            const bool isLink = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
            if (!isLink) SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (!isFolder)
                DeleteFileW(path.c_str());
            else if (isLink)
                RemoveDirectoryW(path.c_str());
            else
                DeleteOnce(path);
        }
    }
    RemoveDirectoryW(folder.c_str());
}

fs::path NewFolder() {
    wchar_t temp[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, temp);
    constexpr int tries = 100;
    for (int number = 0; number < tries; ++number) {
        fs::path path = fs::path(temp) / (L"Backup-kit-" + std::to_wstring(GetCurrentProcessId() + number));
        // Only a folder that was not there before is the kit's own.
        if (CreateDirectoryW(path.c_str(), nullptr)) return path;
    }
    throw Failure(std::wstring(L"no folder can be made in ") + temp);
}

} // namespace

bool IsHere(const fs::path& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool DeleteTree(const fs::path& folder) {
    constexpr int tries = 25;
    constexpr DWORD pauseMilliseconds = 200;
    for (int attempt = 0; attempt < tries && IsHere(folder); ++attempt) {
        if (attempt > 0) Sleep(pauseMilliseconds);
        DeleteOnce(folder);
    }
    return !IsHere(folder);
}

WorkFolder::WorkFolder() : path_(NewFolder()) {
    fs::create_directories(ProgramFolder());
    fs::create_directories(Documents());
    fs::create_directories(Temp());
    SetEnvironmentVariableW(L"TEMP", Temp().c_str());
    SetEnvironmentVariableW(L"TMP", Temp().c_str());
    SetEnvironmentVariableW(L"USERPROFILE", Profile().c_str());
}

void WorkFolder::SetLanguage(bool isFrench) const {
    const fs::path folder = path_ / L"Valcoreaux" / L"Accueil";
    fs::create_directories(folder);
    std::ofstream(folder / L"accueil.ini", std::ios::binary)
        << "[ACCUEIL-DEFAULTS]\r\nLang=" << (isFrench ? "20001" : "20002") << "\r\n";
}

double WorkFolder::FreeBytes() const {
    ULARGE_INTEGER free{};
    GetDiskFreeSpaceExW(path_.c_str(), &free, nullptr, nullptr);
    return static_cast<double>(free.QuadPart);
}

void WorkFolder::EmptyDocuments() const {
    if (!DeleteTree(Documents())) throw Failure(L"the documents of the trial cannot be deleted");
    fs::create_directories(Documents());
}

bool WorkFolder::Remove() {
    return DeleteTree(path_);
}

} // namespace kit
