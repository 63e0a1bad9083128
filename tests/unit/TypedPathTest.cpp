#include "ui/TypedPath.h"

#include <gtest/gtest.h>

namespace {

TEST(TypedPath, IsTakenFromTheRootOfADriveOrOfAShareOn) {
    for (const wchar_t* path : {L"D:\\", L"d:\\a b\\c", L"\\\\server\\share", L"\\\\server\\share\\a"})
        EXPECT_EQ(ui::WholePath(path), path);
}

TEST(TypedPath, MayHaveSlashesAndADriveNone) {
    EXPECT_EQ(ui::WholePath(L"D:/a/b"), L"D:\\a\\b");
    EXPECT_EQ(ui::WholePath(L"//server/share"), L"\\\\server\\share");
    EXPECT_EQ(ui::WholePath(L"D:"), L"D:\\");
}

TEST(TypedPath, IsNotTakenWhereItDependsOnWhereTheProgramIs) {
    for (const wchar_t* path : {L"", L"a", L"a:b", L"D:a", L"\\a", L"a\\b", L":\\a", L"1:\\a", L"\\\\", L"\\\\server",
                                L"\\\\server\\", L"\\\\\\share"})
        EXPECT_EQ(ui::WholePath(path), std::nullopt) << path;
}

} // namespace
