#include "selection/SelectionRows.h"

#include "support/Failures.h"

#include <gtest/gtest.h>

namespace {

class SelectionRowsTest : public testing::Test {
  protected:
    SelectionRow& Add(const std::wstring& path, bool hasAllFiles = false) {
        SelectionRow row;
        row.path = std::make_shared<const std::wstring>(path);
        row.hasAllFiles = hasAllFiles;
        return rows.Add(std::move(row));
    }

    SelectionRows rows;
};

TEST_F(SelectionRowsTest, RowIsFoundInAnyLetterCaseByWhatItShows) {
    SelectionRow& folder = Add(L"C:\\Été", true);
    SelectionRow& file = Add(L"C:\\Été");
    EXPECT_EQ(rows.Find(L"c:\\éTÉ\\*.*"), &folder);
    EXPECT_EQ(rows.Find(L"C:\\ÉTÉ"), &file);
    EXPECT_EQ(rows.Find(L"C:\\Ét"), nullptr);
}

TEST_F(SelectionRowsTest, RowAddedAfterALookUpIsFound) {
    EXPECT_EQ(rows.Find(L"C:\\a"), nullptr);
    SelectionRow& row = Add(L"C:\\a");
    EXPECT_EQ(rows.Find(L"C:\\a"), &row);
}

TEST_F(SelectionRowsTest, RowThatIsGoneIsNotFound) {
    Add(L"C:\\a");
    SelectionRow& kept = Add(L"C:\\b");
    ASSERT_NE(rows.Find(L"C:\\a"), nullptr);
    rows.Remove(0);
    EXPECT_EQ(rows.Find(L"C:\\a"), nullptr);
    EXPECT_EQ(rows.Find(L"C:\\b"), &kept);
    rows.Clear();
    EXPECT_EQ(rows.Find(L"C:\\b"), nullptr);
}

TEST_F(SelectionRowsTest, MarkedRowIsOutOfEveryLookUpBeforeTheSweepAndGoneAfterIt) {
    SelectionRow& marked = Add(L"C:\\a");
    SelectionRow& kept = Add(L"C:\\b");
    ASSERT_EQ(rows.Find(L"C:\\a"), &marked);
    rows.Mark(marked);
    EXPECT_EQ(rows.Find(L"C:\\a"), nullptr);
    std::vector<const SelectionRow*> visited;
    rows.VisitBackwards([&](SelectionRow& row) { visited.push_back(&row); });
    EXPECT_EQ(visited, std::vector<const SelectionRow*>{&kept});
    EXPECT_EQ(rows.Count(), 2);
    rows.Sweep();
    EXPECT_EQ(rows.Count(), 1);
    EXPECT_EQ(rows.Find(L"C:\\b"), &kept);
}

TEST_F(SelectionRowsTest, PositionThatIsNotThereIsError9) {
    Add(L"C:\\a");
    for (const std::int32_t position : {-1, 1}) EXPECT_EQ(NumberThrownBy([&] { rows.Remove(position); }), 9);
    EXPECT_EQ(rows.Count(), 1);
}

} // namespace
