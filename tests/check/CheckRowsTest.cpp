#include "check/CheckRows.h"

#include "resources/TextId.h"
#include "support/FakeStringTable.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class CheckRowsTest : public testing::Test {
  protected:
    CheckRowsTest() {
        AddItem(L"C:\\zone.txt", L"Zip0001", false);
        AddItem(L"C:\\Été", L"Zip0002", true);
        AddItem(L"C:\\abc.txt", L"Zip0003", false);
    }

    void AddItem(const std::wstring& path, const std::wstring& archive, bool isFolder) {
        ItemReport item;
        item.place = static_cast<std::uint32_t>(report->items.size());
        item.number = path.empty() ? 0 : static_cast<int>(item.place) + 1;
        item.path = report->texts.Keep(path);
        item.archive = report->texts.Keep(archive);
        item.isFolder = isFolder;
        report->items.push_back(item);
    }
    ItemReport& Item(std::size_t at) { return report->items.at(at); }
    void Settle(std::size_t at, ItemVerdict verdict, std::uint32_t files = 1, std::uint64_t bytes = 1) {
        Item(at).verdict = verdict;
        Item(at).files = files;
        Item(at).bytes = bytes;
        rows.Take({&Item(at), true}, report);
    }
    void List() {
        for (const ItemReport& item : report->items) rows.Take({&item, false}, report);
    }
    std::vector<std::wstring> Cells(CheckColumn column) const {
        std::vector<std::wstring> cells;
        for (int row = 0; row < rows.Count(); ++row) cells.push_back(rows.Cell(row, column));
        return cells;
    }
    std::vector<std::wstring> WantedOfThree() const {
        const auto wanted = rows.Wanted();
        std::vector<std::wstring> names;
        for (const wchar_t* name : {L"Zip0001", L"Zip0002", L"Zip0003"}) {
            if (wanted && wanted->Contains(name)) names.emplace_back(name);
        }
        return names;
    }

    FakeStringTable strings;
    NumberWords words{[this](TextId id) { return strings.Load(static_cast<int>(id) + 10000); }, L"."};
    CheckRows rows{words};
    std::shared_ptr<BackupReport> report = std::make_shared<BackupReport>();
};

TEST_F(CheckRowsTest, ARowThatIsNotReadSaysSoAndShowsNoAmounts) {
    List();
    EXPECT_THAT(Cells(CheckColumn::Number), ElementsAre(L"1", L"2", L"3"));
    EXPECT_THAT(Cells(CheckColumn::Kind), ElementsAre(L"File", L"Directory", L"File"));
    EXPECT_THAT(Cells(CheckColumn::Result), ElementsAre(L"Not checked", L"Not checked", L"Not checked"));
    EXPECT_THAT(Cells(CheckColumn::Size), ElementsAre(L"", L"", L""));
    EXPECT_EQ(rows.ToolTip(0), L"");
    EXPECT_EQ(rows.Sign(0), VerdictSign::None);
    EXPECT_EQ(rows.Settled(0), nullptr);
}

TEST_F(CheckRowsTest, AReadRowShowsItsAmountsItsVerdictAndItsSign) {
    List();
    Settle(1, ItemVerdict::Damaged, 12345, 5 * 1024 * 1024);
    EXPECT_EQ(rows.Cell(1, CheckColumn::Files), L"12 345");
    EXPECT_EQ(rows.Cell(1, CheckColumn::Size), L"5.0 MB");
    EXPECT_EQ(rows.Cell(1, CheckColumn::Result), L"Damaged");
    EXPECT_EQ(rows.Sign(1), VerdictSign::Bad);
    EXPECT_NE(rows.ToolTip(1).find(L"Damaged on the medium"), std::wstring::npos);
    EXPECT_EQ(rows.Settled(1), &Item(1));
}

TEST_F(CheckRowsTest, AWholeItemThatRestoreCannotPutBackIsAWarningWithItsReason) {
    Item(0).problems = static_cast<std::uint8_t>(RowProblem::Comma);
    List();
    Settle(0, ItemVerdict::Whole);
    EXPECT_EQ(rows.Sign(0), VerdictSign::Warning);
    EXPECT_EQ(rows.Cell(0, CheckColumn::Result), L"Whole, recover it here");
    EXPECT_NE(rows.ToolTip(0).find(L"comma"), std::wstring::npos);
}

TEST_F(CheckRowsTest, AnItemWithoutARowIsCalledByItsArchive) {
    AddItem(L"", L"Zip0009", false);
    List();
    Settle(3, ItemVerdict::NotListed);
    EXPECT_EQ(rows.Cell(3, CheckColumn::Number), L"");
    EXPECT_EQ(rows.Cell(3, CheckColumn::Path), L"Zip0009");
    EXPECT_EQ(rows.Cell(3, CheckColumn::Kind), L"");
    EXPECT_EQ(rows.Cell(3, CheckColumn::Result), L"Extra");
}

TEST_F(CheckRowsTest, RowsAreOrderedByAColumnAndTheOtherWayRoundTheSecondTime) {
    List();
    EXPECT_EQ(rows.SortBy(CheckColumn::Path, 0), 1) << "the row goes with its item";
    EXPECT_THAT(Cells(CheckColumn::Path), ElementsAre(L"C:\\abc.txt", L"C:\\zone.txt", L"C:\\Été"));
    EXPECT_FALSE(rows.IsDescending());
    EXPECT_EQ(rows.SortBy(CheckColumn::Path, 1), 1);
    EXPECT_THAT(Cells(CheckColumn::Path), ElementsAre(L"C:\\Été", L"C:\\zone.txt", L"C:\\abc.txt"));
    EXPECT_TRUE(rows.IsDescending());
    EXPECT_EQ(rows.SortBy(CheckColumn::Number, -1), -1);
    EXPECT_THAT(Cells(CheckColumn::Number), ElementsAre(L"1", L"2", L"3"));
}

TEST_F(CheckRowsTest, NamesAreOrderedWithoutRegardToCase) {
    AddItem(L"C:\\ABD.txt", L"Zip0004", false);
    List();
    rows.SortBy(CheckColumn::Path, -1);
    EXPECT_EQ(rows.Cell(0, CheckColumn::Path), L"C:\\abc.txt");
    EXPECT_EQ(rows.Cell(1, CheckColumn::Path), L"C:\\ABD.txt");
}

TEST_F(CheckRowsTest, VerdictsAreOrderedByHowBadTheyAreAndWhatIsNotReadStandsFirst) {
    List();
    Settle(0, ItemVerdict::Missing);
    Settle(1, ItemVerdict::Whole);
    rows.SortBy(CheckColumn::Result, -1);
    EXPECT_THAT(Cells(CheckColumn::Result), ElementsAre(L"Not checked", L"Whole", L"Missing"));
    rows.SortBy(CheckColumn::Size, -1);
    EXPECT_EQ(rows.Cell(0, CheckColumn::Result), L"Not checked");
}

TEST_F(CheckRowsTest, AmountsAreOrderedAsNumbers) {
    List();
    Settle(0, ItemVerdict::Whole, 10, 900);
    Settle(1, ItemVerdict::Whole, 9, 1024 * 1024);
    Settle(2, ItemVerdict::Whole, 100, 5000);
    rows.SortBy(CheckColumn::Files, -1);
    EXPECT_THAT(Cells(CheckColumn::Files), ElementsAre(L"9", L"10", L"100"));
    rows.SortBy(CheckColumn::Size, -1);
    EXPECT_THAT(Cells(CheckColumn::Size), ElementsAre(L"900 B", L"4.9 KB", L"1.0 MB"));
}

TEST_F(CheckRowsTest, AllAreTickedAndThenNothingIsLeftOut) {
    List();
    EXPECT_TRUE(rows.IsAnyTicked());
    EXPECT_EQ(rows.Wanted(), nullptr);
    rows.SortBy(CheckColumn::Path, -1);
    rows.Toggle(0);
    EXPECT_THAT(WantedOfThree(), ElementsAre(L"Zip0001", L"Zip0002"));
    rows.TickAll(false);
    EXPECT_FALSE(rows.IsAnyTicked());
    rows.Toggle(0);
    EXPECT_THAT(WantedOfThree(), ElementsAre(L"Zip0003"));
    rows.TickAll(true);
    EXPECT_EQ(rows.Wanted(), nullptr);
}

TEST_F(CheckRowsTest, TicksStayWhenAllIsToldAnew) {
    List();
    rows.Toggle(1);
    rows.BeginAll();
    List();
    EXPECT_TRUE(rows.IsTicked(0));
    EXPECT_FALSE(rows.IsTicked(1));
    EXPECT_EQ(rows.Count(), 3);
    rows.Clear();
    List();
    EXPECT_TRUE(rows.IsTicked(1)) << "another backup";
}

TEST_F(CheckRowsTest, APartThatIsToldAnewFindsItsRowsAndLeavesTheOthers) {
    AddItem(L"", L"Zip0009", false);
    List();
    Settle(0, ItemVerdict::Whole);
    Settle(2, ItemVerdict::Damaged);
    Settle(3, ItemVerdict::NotListed);
    rows.BeginTicked();
    const auto part = std::make_shared<BackupReport>();
    part->items = {Item(2), Item(3)};
    part->items[0].verdict = ItemVerdict::Whole;
    part->items[1].place = 7;
    for (const ItemReport& item : part->items) rows.Take({&item, false}, part);
    EXPECT_EQ(rows.Cell(2, CheckColumn::Result), L"Damaged") << "until there is something new";
    for (const ItemReport& item : part->items) rows.Take({&item, true}, part);
    EXPECT_THAT(Cells(CheckColumn::Result), ElementsAre(L"Whole", L"Not checked", L"Whole", L"Extra"));
    EXPECT_EQ(rows.Settled(3), &part->items[1]);
}

TEST_F(CheckRowsTest, RowsKeepWhatTheyAreLent) {
    List();
    Settle(0, ItemVerdict::Whole);
    const std::weak_ptr<BackupReport> lent = report;
    report.reset();
    EXPECT_FALSE(lent.expired());
    EXPECT_EQ(rows.Cell(0, CheckColumn::Path), L"C:\\zone.txt");
    rows.Clear();
    EXPECT_TRUE(lent.expired());
}

} // namespace
