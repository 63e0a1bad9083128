#include "Stick.h"

#include "Words.h"
#include "WorkFolder.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <array>

namespace kit {

namespace {

// What the program and the bare archiver's program put at the root of a medium, under whatever name it was broken off.
constexpr std::array OwnNames = {L"OKRBACKUP.ZIP",       L"_listFich.lst",       L"OKRBACKUP.ZIP.~new",
                                 L"OKRBACKUP.ZIP.~old",  L"OKRBACKUP.ZIP.~part", L"_listFich.lst.~new",
                                 L"_listFich.lst.~part", L"_listFich.lst.~old",  L"_floor.lst"};

// Windows keeps notes about a drive in it, whenever it likes.
constexpr const wchar_t* SystemFolder = L"System Volume Information";

bool IsSystemDrive(wchar_t letter) {
    wchar_t folder[MAX_PATH] = {};
    GetWindowsDirectoryW(folder, MAX_PATH);
    return (folder[0] | 0x20) == (letter | 0x20);
}

} // namespace

Stick::Stick(wchar_t letter) : root_{static_cast<wchar_t>(letter & ~0x20), L':', L'\\'} {
    const UINT type = GetDriveTypeW(root_.c_str());
    isRemovable_ = type == DRIVE_REMOVABLE;
    if (IsSystemDrive(letter) || (!isRemovable_ && type != DRIVE_FIXED))
        throw Failure(Say({L"Ce lecteur n'est ni une clé USB ni un disque externe : ",
                           L"This drive is neither a USB stick nor an external disk: "}) +
                      root_);
    if (GetFileAttributesW(root_.c_str()) == INVALID_FILE_ATTRIBUTES)
        throw Failure(Say({L"Ce lecteur ne peut pas être lu : ", L"This drive cannot be read: "}) + root_);
    for (const wchar_t* name : OwnNames) {
        if (IsHere(root_ + name))
            throw Failure(Say({L"Ce lecteur contient déjà une copie de sécurité, qui serait remplacée. Prenez-en un "
                               L"autre. Rien n'a été touché : ",
                               L"This drive holds a backup already, which would be replaced. Take another one. Nothing "
                               L"was touched: "}) +
                          root_ + name);
    }
    before_ = Look();
    isLent_ = true;
}

Stick::Entries Stick::Look() const {
    Entries entries;
    WIN32_FIND_DATAW entry{};
    const UniqueFind search(FindFirstFileW((root_ + L"*").c_str(), &entry));
    if (!search) return entries;
    do {
        if (entry.cFileName == std::wstring(SystemFolder)) continue;
        const auto whole = [](DWORD high, DWORD low) { return static_cast<unsigned long long>(high) << 32 | low; };
        entries[entry.cFileName] = {whole(entry.nFileSizeHigh, entry.nFileSizeLow),
                                    whole(entry.ftLastWriteTime.dwHighDateTime, entry.ftLastWriteTime.dwLowDateTime)};
    } while (FindNextFileW(search.Get(), &entry));
    return entries;
}

double Stick::FreeBytes() const {
    ULARGE_INTEGER free{};
    GetDiskFreeSpaceExW(root_.c_str(), &free, nullptr, nullptr);
    return static_cast<double>(free.QuadPart);
}

void Stick::RequireBackup() const {
    Entries entries = Look();
    for (const wchar_t* name : {OwnNames[0], OwnNames[1]}) {
        if (entries.erase(name) != 1) throw Failure(std::wstring(L"missing on the medium: ") + name);
    }
    if (entries != before_) throw Failure(L"the medium holds more than a backup's two files, or other files changed");
}

bool Stick::Clear() {
    if (!isLent_) return true;
    bool isClear = true;
    for (const wchar_t* name : OwnNames) {
        const std::wstring path = root_ + name;
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(path.c_str());
        isClear = isClear && !IsHere(path);
    }
    return isClear;
}

void Stick::RequireAsBefore() const {
    if (Look() != before_) throw Failure(L"something at the root of the medium came, went or changed");
}

} // namespace kit
