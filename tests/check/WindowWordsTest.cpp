#include "check/WindowWords.h"

#include "check/VerdictSign.h"
#include "resources/TextId.h"
#include "support/FakeStringTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

class WindowWordsTest : public testing::Test {
  protected:
    FakeStringTable strings;
    Texts french = [this](TextId id) { return strings.Load(static_cast<int>(id)); };
    NumberWords words{french, L","};
};

TEST_F(WindowWordsTest, SizesComeInTheUnitThatSuitsThem) {
    EXPECT_EQ(words.Size(0), L"0 o");
    EXPECT_EQ(words.Size(1023), L"1 023 o");
    EXPECT_EQ(words.Size(1024), L"1,0 Ko");
    EXPECT_EQ(words.Size(1536 * 1024), L"1,5 Mo");
    EXPECT_EQ(words.Size(1024 * 1024 - 1), L"1,0 Mo");
    EXPECT_EQ(words.Size(5ull << 30), L"5,0 Go");
    EXPECT_EQ(words.Size(5000ull << 30), L"5 000,0 Go");
}

TEST_F(WindowWordsTest, DurationsComeInSecondsThenMinutesThenHours) {
    EXPECT_EQ(words.Duration(0.2), L"1 s");
    EXPECT_EQ(words.Duration(59), L"59 s");
    EXPECT_EQ(words.Duration(59.5), L"1 min 0 s");
    EXPECT_EQ(words.Duration(3599), L"59 min 59 s");
    EXPECT_EQ(words.Duration(3600 + 125), L"1 h 2 min");
}

TEST_F(WindowWordsTest, ProgressTellsItsSpeedAndTheRestOnceTheyAreKnown) {
    WorkPace pace;
    const CheckJob::Progress now{10 << 20, 50 << 20, true};
    pace.Note(0, 0);
    EXPECT_EQ(ProgressWords(words, now, pace), L"10,0 Mo sur 50,0 Mo");
    pace.Note(2, 10 << 20);
    EXPECT_EQ(ProgressWords(words, now, pace), L"10,0 Mo sur 50,0 Mo, 5,0 Mo par seconde, encore 8 s");
}

TEST_F(WindowWordsTest, ProgressThatStandsStillPromisesNoEnd) {
    WorkPace pace;
    pace.Note(0, 100);
    pace.Note(3, 100);
    EXPECT_EQ(ProgressWords(words, {100, 1000, true}, pace), L"100 o sur 1 000 o, 0 o par seconde");
}

TEST_F(WindowWordsTest, EveryVerdictHasAWordOfItsOwn) {
    std::vector<std::wstring> found;
    for (int verdict = 0; verdict <= static_cast<int>(ItemVerdict::NotChecked); ++verdict) {
        ItemReport item;
        item.verdict = static_cast<ItemVerdict>(verdict);
        found.push_back(ShortVerdict(item, french));
    }
    EXPECT_EQ(found, (std::vector<std::wstring>{L"Intact", L"Endommagé", L"Enregistré endommagé", L"Incomplet", L"Vide",
                                                L"Table des matières abîmée", L"Illisible", L"Absent", L"En trop",
                                                L"Autre contenu", L"Non vérifié"}));
}

TEST_F(WindowWordsTest, ABackupOfWhichOnlyTheListWasReadIsCalledUnchecked) {
    BackupReport report;
    report.verdict = Verdict::NotChecked;
    EXPECT_EQ(VerdictSentence(report, words), french(TextId::CheckNotCheckedYet));
    EXPECT_EQ(SignOf(report), VerdictSign::None);
}

TEST(WorkPaceTest, OnlyTheLastSecondsCount) {
    WorkPace pace;
    EXPECT_FALSE(pace.BytesPerSecond());
    for (int second = 0; second <= 20; ++second) pace.Note(second, static_cast<std::uint64_t>(second) * 1000);
    for (int second = 21; second <= 40; ++second)
        pace.Note(second, 20000 + static_cast<std::uint64_t>(second - 20) * 10);
    EXPECT_NEAR(pace.BytesPerSecond().value_or(0), 10, 0.001);
    EXPECT_NEAR(pace.SecondsLeft(20300).value_or(0), 10, 0.001);
}

TEST(WorkPaceTest, TheFirstSecondTellsNothing) {
    WorkPace pace;
    pace.Note(0, 0);
    pace.Note(0.9, 1000000);
    EXPECT_FALSE(pace.BytesPerSecond());
    EXPECT_FALSE(pace.SecondsLeft(2000000));
}

TEST(WorkPaceTest, WorkThatStandsStillHasNoEndInSight) {
    WorkPace pace;
    pace.Note(0, 500);
    pace.Note(5, 500);
    EXPECT_EQ(pace.BytesPerSecond(), 0);
    EXPECT_FALSE(pace.SecondsLeft(1000));
}

TEST(VerdictSignTest, TheWorstItemGivesABackupItsSign) {
    BackupReport report;
    report.verdict = Verdict::Faulty;
    report.items.resize(2);
    report.items[0].verdict = ItemVerdict::Whole;
    report.items[1].verdict = ItemVerdict::NotListed;
    EXPECT_EQ(SignOf(report), VerdictSign::Warning);
    report.items[0].verdict = ItemVerdict::Missing;
    EXPECT_EQ(SignOf(report), VerdictSign::Bad);
    report.verdict = Verdict::WrongPassword;
    EXPECT_EQ(SignOf(report), VerdictSign::Warning);
}

TEST(VerdictSignTest, SignsFillTheirSquareAndDifferInFormToo) {
    for (const int size : {16, 20, 24, 32}) {
        std::vector<std::size_t> painted;
        for (int sign = 0; sign < VerdictSigns; ++sign) {
            const auto pixels = PaintSign(static_cast<VerdictSign>(sign), size);
            ASSERT_EQ(pixels.size(), static_cast<std::size_t>(size * size));
            EXPECT_EQ(pixels.front(), 0u) << "corners are clear";
            painted.push_back(static_cast<std::size_t>(
                std::count_if(pixels.begin(), pixels.end(), [](std::uint32_t pixel) { return pixel >> 24 == 255; })));
        }
        EXPECT_EQ(painted[0], 0u);
        EXPECT_GT(painted[1], static_cast<std::size_t>(size * size / 2));
        EXPECT_EQ(painted[1], painted[3]) << "both are discs";
        EXPECT_NE(painted[1], painted[2]) << "a warning is none";
    }
}

TEST(VerdictSignTest, StrokesAreDrawnFromEndToEndAndNowhereElse) {
    constexpr std::uint32_t green = 0xFF1E8E3E, amber = 0xFFF2B705, red = 0xFFC62828, white = 0xFFFFFFFF,
                            black = 0xFF202020;
    constexpr int size = 100;
    const auto expectAt = [](VerdictSign sign, std::uint32_t color, std::initializer_list<std::pair<int, int>> places) {
        const auto pixels = PaintSign(sign, size);
        for (const auto& [column, row] : places)
            EXPECT_EQ(pixels[static_cast<std::size_t>(row * size + column)], color) << column << ", " << row;
    };
    expectAt(VerdictSign::Good, white, {{28, 52}, {36, 60}, {44, 68}, {58, 51}, {73, 34}});
    expectAt(VerdictSign::Good, green, {{50, 8}, {50, 91}, {8, 50}, {91, 50}, {36, 44}, {58, 68}, {20, 44}, {80, 26}});
    expectAt(VerdictSign::Bad, white, {{33, 33}, {50, 50}, {67, 67}, {67, 33}, {33, 67}, {40, 60}, {60, 60}});
    expectAt(VerdictSign::Bad, red, {{50, 33}, {50, 67}, {33, 50}, {67, 50}, {24, 24}, {75, 75}});
    expectAt(VerdictSign::Warning, black, {{50, 40}, {50, 52}, {50, 62}, {50, 79}, {45, 52}, {54, 79}});
    expectAt(VerdictSign::Warning, amber,
             {{50, 30}, {50, 71}, {42, 52}, {58, 52}, {42, 79}, {50, 88}, {20, 90}, {80, 90}});
}

} // namespace
