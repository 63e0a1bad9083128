#include "platform/windows/WindowsStringTable.h"
#include "support/FakeStringTable.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

TEST(StringResource, HoldsEveryTextInBothLanguages) {
    const WindowsStringTable resource;
    for (const FakeStringTable::Row& row : FakeStringTable::Rows()) {
        EXPECT_EQ(resource.Load(row.id), row.french) << row.id;
        EXPECT_EQ(resource.Load(row.id + 10000), row.english) << row.id;
    }
}

TEST(StringResource, MissingIdGivesNothing) {
    EXPECT_EQ(WindowsStringTable().Load(100), L"");
    EXPECT_EQ(FakeStringTable().Load(100), L"");
}

TEST(StringResource, IsFoundWhateverTheThreadsLanguage) {
    const LCID previous = GetThreadLocale();
    for (const LCID locale : {0x0409u, 0x040Cu, 0x0411u}) {
        SetThreadLocale(locale);
        EXPECT_EQ(WindowsStringTable().Load(5), L"Erreur fatale du logiciel de prise de sauvegarde") << locale;
    }
    SetThreadLocale(previous);
}

TEST(ProgramResource, HasAnIconAndAManifest) {
    const HMODULE program = GetModuleHandleW(nullptr);
    EXPECT_NE(FindResourceW(program, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(14)), nullptr); // icon group
    EXPECT_NE(FindResourceW(program, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)), nullptr); // manifest
}

TEST(ProgramResource, VersionIsTheBuilds) {
    const HMODULE program = GetModuleHandleW(nullptr);
    const HRSRC found = FindResourceW(program, MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16));
    ASSERT_NE(found, nullptr);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(program, found)));
    const auto* info = reinterpret_cast<const VS_FIXEDFILEINFO*>(bytes + 40); // after the key "VS_VERSION_INFO"
    ASSERT_EQ(info->dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(HIWORD(info->dwFileVersionMS), BACKUP_VERSION_MAJOR);
    EXPECT_EQ(LOWORD(info->dwFileVersionMS), BACKUP_VERSION_MINOR);
    EXPECT_EQ(HIWORD(info->dwFileVersionLS), BACKUP_VERSION_REVISION);
}

} // namespace
