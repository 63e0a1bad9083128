// What the folder lists show of a real folder, by the attributes of its entries and the user's choice in Explorer.
#include "platform/windows/WindowsFiles.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

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
        SetFileAttributesW(Path(name).c_str(), attributes);
        areAttributesKept = areAttributesKept && (GetFileAttributesW(Path(name).c_str()) & attributes) == attributes;
    }

    const std::filesystem::path root = std::filesystem::temp_directory_path() / L"ShownContents";
    std::optional<DWORD> choiceBefore;
    bool areAttributesKept = true;
    WindowsFiles files;
};

TEST_F(ShownContents, FollowTheUsersChoiceAndNeverIncludeWhatIsHiddenForTheSystem) {
    AddFile(L"plain.txt", FILE_ATTRIBUTE_NORMAL);
    AddFile(L"hidden.txt", FILE_ATTRIBUTE_HIDDEN);
    AddFile(L"desktop.ini", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    AddFolder(L"plain", 0);
    AddFolder(L"hidden", FILE_ATTRIBUTE_HIDDEN);
    AddFolder(L"system", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    if (!areAttributesKept) GTEST_SKIP() << "this file system keeps no hidden and system attributes";
    Choose(2);
    EXPECT_THAT(files.ShownContents(root.wstring()).files, UnorderedElementsAre(L"plain.txt"));
    EXPECT_THAT(files.ShownContents(root.wstring()).folders, UnorderedElementsAre(L"plain"));
    Choose(1);
    EXPECT_THAT(files.ShownContents(root.wstring()).files, UnorderedElementsAre(L"plain.txt", L"hidden.txt"));
    EXPECT_THAT(files.ShownContents(root.wstring()).folders, UnorderedElementsAre(L"plain", L"hidden"));
    EXPECT_EQ(files.Contents(root.wstring()).files.size(), 3u) << "sets and measuring go on seeing everything";
    EXPECT_EQ(files.Contents(root.wstring()).folders.size(), 3u);
}

TEST_F(ShownContents, OfAnEmptyFolderAreEmptyAndOfAMissingOneAFailure) {
    EXPECT_THAT(files.ShownContents(root.wstring()).files, IsEmpty());
    EXPECT_THAT(files.ShownContents(root.wstring()).folders, IsEmpty());
    EXPECT_ANY_THROW(files.ShownContents(Path(L"none")));
}

} // namespace
