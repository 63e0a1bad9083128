#include "check/NameSet.h"

#include <gtest/gtest.h>

namespace {

TEST(NameSetTest, ANameIsFoundInEitherCaseAndNoOther) {
    const NameSet names(std::vector{L"Zip0002", L"zip0010", L"Zip0001"});
    EXPECT_TRUE(names.Contains(L"ZIP0001"));
    EXPECT_TRUE(names.Contains(L"Zip0010"));
    EXPECT_FALSE(names.Contains(L"Zip001"));
    EXPECT_FALSE(names.Contains(L"Zip0003"));
    EXPECT_FALSE(names.Contains(L""));
}

TEST(NameSetTest, ItKeepsItsNamesItself) {
    std::vector<PackedText> borrowed;
    auto texts = std::make_unique<PackedTexts>();
    borrowed.push_back(texts->Keep(L"Zip0001"));
    const NameSet names(borrowed);
    texts.reset();
    EXPECT_TRUE(names.Contains(L"Zip0001"));
}

} // namespace
