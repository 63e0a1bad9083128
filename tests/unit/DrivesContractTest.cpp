// What every implementation of Drives does; run against the stand-in, and under Windows against the real one too.
#include "support/Failures.h"
#include "support/FakeDrives.h"

#include <gmock/gmock.h>

#include <algorithm>

#ifdef _WIN32
#include "platform/windows/WindowsDrives.h"
#endif

namespace {

struct FakeDrivesBench {
    FakeDrivesBench() { drives.Add(L"C:\\", DriveType::Fixed, L"System"); }
    FakeDrives drives;
};

#ifdef _WIN32
struct WindowsDrivesBench {
    WindowsDrives drives;
};
using Benches = testing::Types<FakeDrivesBench, WindowsDrivesBench>;
#else
using Benches = testing::Types<FakeDrivesBench>;
#endif

template<typename Bench>
class DrivesContract : public testing::Test {
  protected:
    /// The root of a letter that no drive has.
    std::wstring FreeRoot() const {
        const std::vector<std::wstring> roots = drives_.Roots();
        for (wchar_t letter = L'Z'; letter > L'C'; --letter) {
            std::wstring root = {letter, L':', L'\\'};
            if (std::find(roots.begin(), roots.end(), root) == roots.end()) return root;
        }
        return {};
    }

    Bench bench_;
    Drives& drives_ = bench_.drives;
};

TYPED_TEST_SUITE(DrivesContract, Benches);

TYPED_TEST(DrivesContract, RootsAreLetterColonBackslash) {
    const std::vector<std::wstring> roots = this->drives_.Roots();
    EXPECT_THAT(roots, testing::Contains(L"C:\\"));
    for (const std::wstring& root : roots) {
        ASSERT_EQ(root.size(), 3u);
        EXPECT_EQ(root.substr(1), L":\\");
        EXPECT_TRUE(this->drives_.Exists(root));
    }
}

TYPED_TEST(DrivesContract, TheSystemDriveIsFixed) {
    EXPECT_EQ(this->drives_.Type(L"C:\\"), DriveType::Fixed);
}

TYPED_TEST(DrivesContract, ADriveExistsWithAndWithoutBackslashInAnyCase) {
    EXPECT_TRUE(this->drives_.Exists(L"C:"));
    EXPECT_TRUE(this->drives_.Exists(L"c:\\"));
}

TYPED_TEST(DrivesContract, AFreeLetterIsNoDrive) {
    const std::wstring root = this->FreeRoot();
    ASSERT_FALSE(root.empty());
    EXPECT_FALSE(this->drives_.Exists(root));
    EXPECT_EQ(this->drives_.Type(root), DriveType::NoRoot);
    EXPECT_FALSE(this->drives_.VolumeLabel(root).has_value());
    EXPECT_FALSE(this->drives_.CanOpenVolume(root.substr(0, 1)));
    EXPECT_EQ(NumberThrownBy([&] { this->drives_.Space(root); }), 71);
    EXPECT_EQ(NumberThrownBy([&] { this->drives_.FreeClusterBytes(root); }), 71);
    EXPECT_EQ(this->drives_.FileSystemName(root), L"");
    EXPECT_NO_THROW(this->drives_.Touch(root));
}

TYPED_TEST(DrivesContract, NoNameIsNoDrive) {
    EXPECT_FALSE(this->drives_.Exists(L""));
}

TYPED_TEST(DrivesContract, FreeSpaceIsWithinTheTotal) {
    const DriveSpace space = this->drives_.Space(L"C:\\");
    EXPECT_GT(space.freeBytes, 0);
    EXPECT_LE(space.freeBytes, space.totalBytes);
    EXPECT_GT(this->drives_.FreeClusterBytes(L"C:\\"), 0);
}

TYPED_TEST(DrivesContract, AVolumeThatCanBeReadHasAFileSystem) {
    EXPECT_NE(this->drives_.FileSystemName(L"C:\\"), L"");
    EXPECT_EQ(this->drives_.FileSystemName(L"C:"), this->drives_.FileSystemName(L"C:\\"));
}

TYPED_TEST(DrivesContract, AVolumeThatCanBeReadHasALabelIfOnlyAnEmptyOne) {
    EXPECT_TRUE(this->drives_.VolumeLabel(L"C:\\").has_value());
}

TYPED_TEST(DrivesContract, AVolumeIsClaimedOnceAtATimeUnderEachOfItsNames) {
    std::unique_ptr<Hold> claim = this->drives_.Claim(L"C:\\");
    ASSERT_NE(claim, nullptr);
    for (const wchar_t* name : {L"C:\\", L"C:", L"c:\\"}) EXPECT_EQ(this->drives_.Claim(name), nullptr);
    claim.reset();
    EXPECT_NE(this->drives_.Claim(L"c:"), nullptr);
}

TYPED_TEST(DrivesContract, AClaimLeavesOtherVolumesFree) {
    const std::unique_ptr<Hold> claim = this->drives_.Claim(L"C:\\");
    ASSERT_NE(claim, nullptr);
    EXPECT_NE(this->drives_.Claim(this->FreeRoot()), nullptr);
}

TEST(FakeDrives, ADriveWithoutAMediumExistsButHasNoVolume) {
    FakeDrives drives;
    drives.Add(L"D:\\", DriveType::CdRom, std::nullopt);
    EXPECT_TRUE(drives.Exists(L"D:"));
    EXPECT_FALSE(drives.VolumeLabel(L"D:\\").has_value());
    EXPECT_EQ(NumberThrownBy([&] { drives.Space(L"D:\\"); }), 71);
}

} // namespace
