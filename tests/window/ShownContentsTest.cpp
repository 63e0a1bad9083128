// What the folder lists show of a real folder, by the attributes of its entries and the user's choice in Explorer.
#include "ImportSwap.h"
#include "platform/windows/WindowsFiles.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

extern "C" {
extern decltype(&FindNextFileW) __imp_FindNextFileW;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

constexpr const wchar_t* ExplorerKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Advanced";

class ShownContents : public testing::Test {
  protected:
    ShownContents() {
        std::filesystem::create_directories(root);
        DWORD value = 0;
        DWORD bytes = sizeof value;
        if (RegGetValueW(HKEY_CURRENT_USER, ExplorerKey, L"Hidden", RRF_RT_REG_DWORD, nullptr, &value, &bytes) == 0)
            choiceBefore = value;
    }
    ~ShownContents() override {
        if (choiceBefore)
            Choose(*choiceBefore);
        else
            RegDeleteKeyValueW(HKEY_CURRENT_USER, ExplorerKey, L"Hidden");
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    static void Choose(DWORD choice) {
        RegSetKeyValueW(HKEY_CURRENT_USER, ExplorerKey, L"Hidden", REG_DWORD, &choice, sizeof choice);
    }
    std::wstring Path(const wchar_t* name) const { return (root / name).wstring(); }
    void AddFile(const wchar_t* name, DWORD attributes) {
        std::ofstream(root / name).put('x');
        Mark(name, attributes);
    }
    void AddFolder(const wchar_t* name, DWORD attributes) {
        std::filesystem::create_directory(root / name);
        Mark(name, attributes);
    }
    void Mark(const wchar_t* name, DWORD attributes) {
        if (attributes != 0) SetFileAttributesW(Path(name).c_str(), attributes);
    }
    /// What should be shown, by the attributes that the entries really have.
    std::vector<std::wstring> Expected(bool areFolders, bool areHiddenShown) {
        std::vector<std::wstring> names;
        for (const auto& entry : std::filesystem::directory_iterator(root)) {
            const DWORD attributes = GetFileAttributesW(entry.path().c_str());
            const bool isHidden = (attributes & FILE_ATTRIBUTE_HIDDEN) != 0;
            const bool isForTheSystem = isHidden && (attributes & FILE_ATTRIBUTE_SYSTEM) != 0;
            hiddenEntries += isHidden && !isForTheSystem ? 1 : 0;
            systemEntries += isForTheSystem ? 1 : 0;
            if (entry.is_directory() == areFolders && !isForTheSystem && (!isHidden || areHiddenShown))
                names.push_back(entry.path().filename().wstring());
        }
        return names;
    }

    const std::filesystem::path root = std::filesystem::temp_directory_path() / L"ShownContents";
    std::optional<DWORD> choiceBefore;
    int hiddenEntries = 0;
    int systemEntries = 0;
    WindowsFiles files;
};

TEST_F(ShownContents, FollowTheUsersChoiceAndNeverIncludeWhatIsHiddenForTheSystem) {
    AddFile(L"plain.txt", FILE_ATTRIBUTE_NORMAL);
    AddFile(L"hidden.txt", FILE_ATTRIBUTE_HIDDEN);
    AddFile(L"desktop.ini", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    AddFile(L".dot", 0);
    AddFolder(L"plain", 0);
    AddFolder(L"hidden", FILE_ATTRIBUTE_HIDDEN);
    AddFolder(L"system", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    for (const DWORD choice : {2, 1}) {
        Choose(choice);
        const FolderContents shown = files.ShownContents(root.wstring());
        EXPECT_THAT(shown.files, UnorderedElementsAreArray(Expected(false, choice == 1))) << choice;
        EXPECT_THAT(shown.folders, UnorderedElementsAreArray(Expected(true, choice == 1))) << choice;
    }
    EXPECT_EQ(files.Contents(root.wstring()).files.size(), 4u) << "sets and measuring go on seeing everything";
    EXPECT_EQ(files.Contents(root.wstring()).folders.size(), 3u);
    if (hiddenEntries == 0 || systemEntries == 0)
        GTEST_SKIP() << "this file system keeps " << hiddenEntries << " of the hidden and " << systemEntries
                     << " of the system attributes; the rest was not shown here";
}

decltype(&FindNextFileW) realFindNext = nullptr;

/// Not every file system has links: it makes one of each entry that is called so, and a file that is kept online.
BOOL WINAPI FindNextWithTags(HANDLE search, LPWIN32_FIND_DATAW entry) {
    if (!realFindNext(search, entry)) return FALSE;
    const std::wstring name = entry->cFileName;
    if (!name.starts_with(L"link") && !name.starts_with(L"online")) return TRUE;
    entry->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    entry->dwReserved0 = name.starts_with(L"link") ? IO_REPARSE_TAG_MOUNT_POINT : IO_REPARSE_TAG_ONEDRIVE;
    return TRUE;
}

TEST_F(ShownContents, NeverIncludeLinksAndDoIncludeWhatIsKeptOnline) {
    AddFile(L"plain.txt", 0);
    AddFile(L"link.txt", 0);
    AddFile(L"online.txt", 0);
    AddFolder(L"link", 0);
    AddFolder(L"online", 0);
    realFindNext = __imp_FindNextFileW;
    const ImportSwap swap(&__imp_FindNextFileW, &FindNextWithTags);
    EXPECT_THAT(files.ShownContents(root.wstring()).files, UnorderedElementsAre(L"online.txt", L"plain.txt"));
    EXPECT_THAT(files.ShownContents(root.wstring()).folders, ElementsAre(L"online"));
    EXPECT_THAT(files.Contents(root.wstring()).folders, UnorderedElementsAre(L"link", L"online"));
}

TEST_F(ShownContents, OfAnEmptyFolderAreEmptyAndOfAMissingOneAFailure) {
    EXPECT_THAT(files.ShownContents(root.wstring()).files, IsEmpty());
    EXPECT_THAT(files.ShownContents(root.wstring()).folders, IsEmpty());
    EXPECT_ANY_THROW(files.ShownContents(Path(L"none")));
}

} // namespace
