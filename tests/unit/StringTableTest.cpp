#include "support/FakeStringTable.h"

#include <gmock/gmock.h>

#include <cwctype>
#include <set>
#include <string>
#include <vector>

namespace {

using Row = FakeStringTable::Row;

// Texts that users and the support desk know by number; those that came later start at the next thousand.
constexpr int LastSettledId = 923;
constexpr int FirstNewId = 1001;
constexpr int EnglishOffset = 10000;

std::multiset<std::wstring> Placeholders(const std::wstring& text) {
    std::multiset<std::wstring> found;
    for (std::size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at + 1)) {
        if (at + 1 < text.size() && std::iswdigit(text[at + 1])) found.insert(text.substr(at, 2));
    }
    return found;
}

wchar_t AccessKey(const std::wstring& text) {
    const std::size_t at = text.find(L'&');
    if (at == std::wstring::npos || at + 1 == text.size()) return 0;
    return static_cast<wchar_t>(std::towlower(text[at + 1]));
}

/// The captions that stand in one window, with those pairs that share a key by the author's own texts: two buttons
/// of which one is hidden while the other shows, or a French text that was never given a key of its own.
struct Window {
    const char* name;
    std::vector<int> captions;
    std::set<wchar_t> sharedInFrench;
};

const std::vector<Window> Windows = {
    {"main, next", {102, 103, 104, 105, 107, 108, 126, 127, 128, 129, 165, 170, 171}, {L's'}},
    {"main, restore", {102, 104, 105, 107, 108, 121, 126, 127, 128, 129, 165, 170, 171}, {L'r'}},
    {"backup",
     {102, 132, 133, 135, 204, 205, 209, 222, 223, 225, 226, 227, 228, 229, 230, 231, 232, 233, 234, 235},
     {L'a'}},
    {"password, help shut", {502, 902, 904, 905, 917}, {}},
    {"password, help open", {502, 902, 904, 906, 917}, {}},
    {"restore", {407, 605, 803, 805, 806}, {}},
    {"disc information", {148, 502, 605, 606, 607, 608, 609}, {}},
    {"disc erase", {407, 703, 704, 705}, {}},
};

std::set<wchar_t> KeysUsedTwice(const Window& window, int languageOffset) {
    const FakeStringTable table;
    std::set<wchar_t> used;
    std::set<wchar_t> twice;
    for (const int id : window.captions) {
        const wchar_t key = AccessKey(table.Load(languageOffset + id));
        if (key != 0 && !used.insert(key).second) twice.insert(key);
    }
    return twice;
}

TEST(StringTable, IdsAreSortedUniqueAndInRange) {
    int previous = 0;
    for (const Row& row : FakeStringTable::Rows()) {
        EXPECT_GT(row.id, previous);
        EXPECT_TRUE(row.id <= LastSettledId || (row.id >= FirstNewId && row.id < EnglishOffset)) << row.id;
        previous = row.id;
    }
}

TEST(StringTable, NoTextIsEmpty) {
    for (const Row& row : FakeStringTable::Rows()) {
        EXPECT_FALSE(std::wstring(row.french).empty()) << row.id;
        EXPECT_FALSE(std::wstring(row.english).empty()) << row.id;
    }
}

TEST(StringTable, BothLanguagesHaveTheSamePlaceholders) {
    for (const Row& row : FakeStringTable::Rows()) {
        EXPECT_EQ(Placeholders(row.french), Placeholders(row.english)) << row.id;
    }
}

TEST(StringTable, CaptionsOfAWindowHaveTheirOwnAccessKeys) {
    for (const Window& window : Windows) {
        EXPECT_EQ(KeysUsedTwice(window, 0), window.sharedInFrench) << window.name;
        EXPECT_THAT(KeysUsedTwice(window, 10000), testing::IsEmpty()) << window.name;
    }
}

TEST(StringTable, EveryCaptionWithAKeyInOneLanguageHasOneInTheOther) {
    // The English frame over the predefined sets never had a key.
    const std::set<int> without = {228};
    for (const Row& row : FakeStringTable::Rows()) {
        if (without.contains(row.id)) continue;
        EXPECT_EQ(AccessKey(row.french) != 0, AccessKey(row.english) != 0) << row.id;
    }
}

TEST(StringTable, EnglishStandsTenThousandAboveFrench) {
    const FakeStringTable table;
    EXPECT_EQ(table.Load(101), L"Copies de sécurité");
    EXPECT_EQ(table.Load(10101), L"Backup");
    EXPECT_EQ(table.Load(100), L"");
    EXPECT_EQ(table.Load(20101), L"");
}

TEST(StringTable, PeculiarTextsStayAsTheyAre) {
    const FakeStringTable table;
    EXPECT_EQ(table.Load(139), L"Megs");
    EXPECT_EQ(table.Load(10139), L"Mo");
    EXPECT_EQ(table.Load(290), L"Mo");
    EXPECT_EQ(table.Load(10290), L"Mb");
    EXPECT_EQ(table.Load(226), L"Ajouter les  &fichiers sélectionnés");
    EXPECT_EQ(table.Load(10228), L"Backup ORK software");
    EXPECT_EQ(table.Load(225).back(), L' ');
    EXPECT_EQ(table.Load(606).back(), L' ');
    EXPECT_NE(table.Load(263).find(L"s\u2019est"), std::wstring::npos);
    EXPECT_EQ(table.Load(262), L"Error");
}

} // namespace
