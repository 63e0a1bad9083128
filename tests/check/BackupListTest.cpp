#include "check/BackupList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

std::deque<ListedItem> Read(std::string_view bytes) {
    static PackedTexts texts;
    return ReadBackupList(bytes, L"C:\\users\\agent", texts);
}

} // namespace

TEST(BackupList, RowsOfAGoodListHaveNoProblem) {
    const auto rows = Read("**UserProfile**\\a.txt,32,Zip0001\r\nC:\\Donnees\\*.*,-1,Zip0002\r\n");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].path, L"C:\\users\\agent\\a.txt");
    EXPECT_EQ(rows[0].archive, L"Zip0001");
    EXPECT_FALSE(rows[0].isFolder);
    EXPECT_EQ(rows[1].path, L"C:\\Donnees");
    EXPECT_TRUE(rows[1].isFolder);
    EXPECT_EQ(rows[0].problems + rows[1].problems, 0u);
}

TEST(BackupList, ACommaSpoilsItsRowButNotWhatItMeant) {
    const auto rows = Read("C:\\a.txt,32,Zip0001\r\nC:\\b, c.txt,32,Zip0002\r\n");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].path, L"C:\\b, c.txt");
    EXPECT_EQ(rows[1].archive, L"Zip0002");
    EXPECT_TRUE(rows[1].Has(RowProblem::Comma));
}

TEST(BackupList, ACommaInTheFirstRowSpoilsAllRows) {
    const auto rows = Read("C:\\a, b.txt,32,Zip0001\r\nC:\\c.txt,32,Zip0002\r\n");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_TRUE(rows[0].Has(RowProblem::Comma));
    EXPECT_TRUE(rows[1].Has(RowProblem::NotRestorable));
    EXPECT_EQ(rows[1].path, L"C:\\c.txt");
}

TEST(BackupList, LostLettersAreToldAndTheRealNameIsStillMeant) {
    const auto rows = Read("C:\\??.txt,32,Zip0001\r\n");
    EXPECT_TRUE(rows.at(0).Has(RowProblem::LostLetters));
    EXPECT_TRUE(IsNameMeant(L"??.txt", L"\u65E5\u672C.txt"));
    EXPECT_FALSE(IsNameMeant(L"??.txt", L"ab.txt"));
    EXPECT_FALSE(IsNameMeant(L"a.txt", L"b.txt"));
    EXPECT_TRUE(IsNameMeant(L"A.TXT", L"a.txt"));
}

TEST(BackupList, ALongListIsReadInParts) {
    std::string list;
    std::string utf8 = "\xEF\xBB\xBF";
    constexpr int count = 9000;
    for (int number = 1; number <= count; ++number) {
        const std::string row = "C:\\Dossier " + std::to_string(number) + "\\a.txt,32,Zip";
        const std::string digits = std::to_string(number);
        list.append(row).append(4 - std::min<std::size_t>(digits.size(), 4), '0').append(digits).append("\r\n");
        utf8.append("C:\\\xC3\xA9").append(digits).append(",32,Zip").append(digits).append("\n\n");
    }
    ASSERT_GT(list.size(), 4u * 65536);
    const auto rows = Read(list + " \t\x1A" + "C:\\behind,32,Zip1\r\n");
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(count)) << "nothing is cut, and nothing is read behind the mark";
    for (int number = 1; number <= count; ++number) {
        const ListedItem& row = rows[static_cast<std::size_t>(number) - 1];
        ASSERT_EQ(row.path, L"C:\\Dossier " + std::to_wstring(number) + L"\\a.txt");
        ASSERT_EQ(row.number, number);
        ASSERT_EQ(row.problems, 0u) << number;
    }
    const auto marked = Read(utf8);
    ASSERT_EQ(marked.size(), static_cast<std::size_t>(count)) << "empty lines are no rows";
    EXPECT_EQ(marked.back().path, L"C:\\\u00E9" + std::to_wstring(count));
    EXPECT_EQ(marked.back().problems, 0u);
}

TEST(BackupList, ALineOfALongListThatBeginsLikeAMarkIsALine) {
    for (const std::string mark : {"\xFF\xFE", "\xFE\xFF", "\xEF\xBB\xBF"}) {
        std::string list = "C:\\a.txt,32,Zip0001\r\n";
        std::size_t count = 1;
        for (; list.size() < 3u * 65536; ++count) list.append(mark).append("b.txt,32,Zip0002\r\n");
        const auto rows = Read(list);
        ASSERT_EQ(rows.size(), count);
        EXPECT_TRUE(std::all_of(rows.begin() + 1, rows.end(),
                                [&](const ListedItem& row) { return row.path.size() == mark.size() + 5; }));
    }
}

TEST(BackupList, TheFirstRecordOfANameCountsForAllItsRows) {
    const auto rows = Read("C:\\a\\x.txt,32,Zip0001\r\nC:\\b\\y.txt,32,Zip0001\r\nC:\\c\\z.txt,32,zip0001\r\n");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].problems, 0u);
    EXPECT_TRUE(rows[1].Has(RowProblem::NotRestorable));
    EXPECT_EQ(rows[2].archive, L"Zip0003") << "no name of an inner archive";
}

TEST(BackupList, RowsOfTheTwoFieldFormAreNamedAfterTheirPlace) {
    const auto rows = Read("C:\\a.txt,32\r\nC:\\b\\*.*,-1\r\n");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].archive, L"Zip0002");
    EXPECT_TRUE(rows[0].Has(RowProblem::TwoFields));
    EXPECT_TRUE(rows[1].Has(RowProblem::TwoFields));
}

TEST(BackupList, MailStoresOfOneNameShareOnePlace) {
    const auto rows = Read("C:\\a\\mail.pst,32,Zip0001\r\nD:\\b\\MAIL.pst,32,Zip0002\r\nC:\\c.pst,32,Zip0003\r\n");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_TRUE(rows[0].Has(RowProblem::SharedMailStore));
    EXPECT_TRUE(rows[1].Has(RowProblem::SharedMailStore));
    EXPECT_EQ(rows[2].problems, 0u);
    EXPECT_EQ(rows[0].path, L"C:\\a\\mail.pst");
}

TEST(BackupList, LongPathsAreTold) {
    const auto rows = Read("C:\\" + std::string(260, 'a') + ",32,Zip0001\r\n");
    EXPECT_TRUE(rows.at(0).Has(RowProblem::TooLong));
}

TEST(BackupList, WhatIsNoRowIsKeptAsOne) {
    const auto rows = Read("\r\nnonsense\r\n\r\n");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_TRUE(rows[0].Has(RowProblem::NotRestorable));
    EXPECT_TRUE(Read("").empty());
}
