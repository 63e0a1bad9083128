#include "check/PackedText.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

} // namespace

TEST(PackedText, ComesBackToTheLetter) {
    PackedTexts texts;
    EXPECT_TRUE(PackedText().empty());
    EXPECT_EQ(std::wstring(PackedText()), L"");
    const std::wstring odd = std::wstring(L"a\u00E9\u20AC") + wchar_t(0xD800) + wchar_t(0xFFFF) + L'\0' + L"z";
    const std::wstring longer(70000, L'\uFFFD');
    const PackedText first = texts.Keep(odd);
    const PackedText second = texts.Keep(longer);
    const PackedText empty = texts.Keep(L"");
    EXPECT_EQ(std::wstring(first), odd);
    EXPECT_EQ(first.size(), odd.size());
    EXPECT_EQ(std::wstring(second), longer);
    EXPECT_TRUE(empty.empty());
    EXPECT_TRUE(first == odd);
    EXPECT_FALSE(first == odd.substr(1));
    EXPECT_FALSE(first == std::wstring(odd.size(), L'a'));
}

TEST(PackedText, StaysWhereItIsWhenOthersAreAddedOrAllAreMoved) {
    PackedTexts texts;
    const PackedText first = texts.Keep(L"first");
    for (int number = 0; number < 50000; ++number) texts.Keep(L"text " + std::to_wstring(number));
    const PackedTexts moved = std::move(texts);
    EXPECT_EQ(std::wstring(first), L"first");
}

TEST(PackedText, NamesStandInOrderWhateverTheirCase) {
    PackedTexts texts;
    const auto order = [&](const wchar_t* left, const wchar_t* right) {
        return OrderOfNames(texts.Keep(left), texts.Keep(right));
    };
    EXPECT_EQ(order(L"\u00C9t\u00E9", L"\u00E9T\u00C9"), 0);
    EXPECT_LT(order(L"abc", L"ABCD"), 0);
    EXPECT_GT(order(L"b", L"AZ"), 0);
    EXPECT_LT(order(L"", L"a"), 0);
}

TEST(TextIndex, FindsAllTextsThatAreEqualInTheirOrder) {
    PackedTexts texts;
    std::vector<PackedText> names;
    for (const wchar_t* name : {L"Zip0002", L"zip0001", L"Zip10000", L"ZIP0001", L"Zip0001", L""})
        names.push_back(texts.Keep(name));
    const auto nameOf = [&](std::uint32_t number) { return names.at(number); };
    const TextIndex exact(names.size(), nameOf, TextIndex::Case::Matters);
    EXPECT_THAT(exact.Find(L"Zip0001"), ElementsAre(4));
    EXPECT_THAT(exact.Find(L"ZIP0002"), IsEmpty());
    const TextIndex folded(names.size(), nameOf, TextIndex::Case::IsTheSame);
    EXPECT_THAT(folded.Find(L"ziP0001"), ElementsAre(1, 3, 4));
    EXPECT_THAT(folded.Find(L"zip10000"), ElementsAre(2));
    EXPECT_THAT(folded.Find(L""), ElementsAre(5));
    EXPECT_THAT(folded.Find(L"Zip"), IsEmpty());
    EXPECT_THAT(TextIndex().Find(L"Zip0001"), IsEmpty());
}
