#include "core/Medium.h"

#include "platform/RuntimeError.h"
#include "resources/TextId.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(Medium, CodesAreThoseThatTheWindowsHandEachOther) {
    EXPECT_EQ(static_cast<int>(Medium::Cd), 0);
    EXPECT_EQ(static_cast<int>(Medium::Dvd), 1);
    EXPECT_EQ(static_cast<int>(Medium::RemovableDisk), 2);
    EXPECT_EQ(static_cast<int>(Medium::ExternalDisk), 3);
}

TEST(Medium, AreListedByCodeWithoutAGap) {
    for (std::size_t code = 0; code < AllMedia.size(); ++code)
        EXPECT_EQ(static_cast<std::size_t>(AllMedia[code]), code);
}

TEST(Medium, OnlyThoseWithAFamilyAreDiscs) {
    EXPECT_EQ(DiscFamilyOf(Medium::Cd), DiscFamily::Cd);
    EXPECT_EQ(DiscFamilyOf(Medium::Dvd), DiscFamily::Dvd);
    EXPECT_EQ(DiscFamilyOf(Medium::RemovableDisk), std::nullopt);
    EXPECT_EQ(DiscFamilyOf(Medium::ExternalDisk), std::nullopt);
    for (const Medium medium : AllMedia) EXPECT_EQ(IsDisc(medium), DiscFamilyOf(medium).has_value());
}

TEST(Medium, EachHasANameOfItsOwnAndDiscsNameTheDiscWanted) {
    std::set<TextId> labels;
    for (const Medium medium : AllMedia) {
        EXPECT_TRUE(labels.insert(Describe(medium).labelId).second);
        EXPECT_EQ(Describe(medium).wantedDiscId != TextId::None, IsDisc(medium));
        EXPECT_EQ(Describe(medium).notFoundToolTipId, IsDisc(medium) ? TextId::NoWriterConfigured : TextId::None);
    }
}

TEST(Medium, ACodeThatNoMediumHasIsAnError) {
    const auto unknown = static_cast<Medium>(AllMedia.size());
    for (const auto& ask : {+[](Medium medium) { static_cast<void>(Describe(medium)); },
                            +[](Medium medium) { static_cast<void>(DiscFamilyOf(medium)); },
                            +[](Medium medium) { static_cast<void>(IsDisc(medium)); }}) {
        try {
            ask(unknown);
            ADD_FAILURE() << "taken for a medium";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 9);
        }
    }
}

} // namespace
