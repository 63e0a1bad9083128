#include "core/SequentialInput.h"
#include "core/TextDecoding.h"
#include "core/UserProfileMarker.h"
#include "support/Failures.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Fields = std::vector<std::wstring>;

Fields AllFields(std::string_view bytes) {
    SequentialInput input(DecodeText(bytes));
    Fields fields;
    while (!input.IsAtEnd()) fields.push_back(input.Field());
    return fields;
}

TEST(SequentialInput, FieldEndsAtACommaOrAtTheEndOfALine) {
    EXPECT_EQ(AllFields("a,b\r\nc\nd\re"), (Fields{L"a", L"b", L"c", L"d", L"e"}));
}

TEST(SequentialInput, BlanksAroundAFieldAreDroppedAndInsideKept) {
    EXPECT_EQ(AllFields("  \tMes documents \t, b\r\n"), (Fields{L"Mes documents", L"b"}));
}

TEST(SequentialInput, QuotedFieldLosesItsQuotesAndKeepsItsCommas) {
    EXPECT_EQ(AllFields("\"C:\\a, b\" ,32\r\n\"C:\\c\"\r\n"), (Fields{L"C:\\a, b", L"32", L"C:\\c"}));
}

TEST(SequentialInput, QuoteInsideAFieldIsAnOrdinaryCharacter) {
    EXPECT_EQ(AllFields("a\"b,c"), (Fields{L"a\"b", L"c"}));
}

TEST(SequentialInput, QuoteThatIsNeverClosedRunsToTheEndOfTheLine) {
    EXPECT_EQ(AllFields("\"a,b\r\nc"), (Fields{L"a,b", L"c"}));
}

TEST(SequentialInput, EmptyLineIsOneEmptyField) {
    EXPECT_EQ(AllFields("a\r\n\r\nb\r\n"), (Fields{L"a", L"", L"b"}));
    EXPECT_EQ(AllFields("a,,b"), (Fields{L"a", L"", L"b"}));
}

TEST(SequentialInput, ReadingPastTheEndFailsWith62) {
    SequentialInput input(L"a");
    EXPECT_EQ(input.Field(), L"a");
    EXPECT_EQ(NumberThrownBy([&] { input.Field(); }), 62);
    SequentialInput blanks(L"  ");
    EXPECT_EQ(NumberThrownBy([&] { blanks.Field(); }), 62);
}

TEST(SequentialInput, EndOfFileByteEndsTheFile) {
    EXPECT_EQ(AllFields("a\r\n\x1A"
                        "b\r\n"),
              Fields{L"a"});
}

TEST(SequentialInput, BlanksBeforeTheEndAreNoField) {
    EXPECT_EQ(AllFields("a\r\n  \x1A"), Fields{L"a"});
    EXPECT_EQ(AllFields("a\r\n \t"), Fields{L"a"});
}

TEST(SequentialInput, LineThatEndsInACommaEndsInAnEmptyField) {
    EXPECT_EQ(FieldsOfLine(L"a,32,"), (Fields{L"a", L"32", L""}));
    EXPECT_EQ(FieldsOfLine(L"a , \"b,c\""), (Fields{L"a", L"b,c"}));
    EXPECT_EQ(FieldsOfLine(L" "), Fields{L""});
    EXPECT_EQ(FieldsOfLine(L""), Fields{L""});
}

TEST(SequentialInput, LineIsReadWholeWithItsCommasAndQuotes) {
    SequentialInput input(L"\"a\",b\r\nc");
    EXPECT_EQ(input.Line(), L"\"a\",b");
    EXPECT_EQ(input.Line(), L"c");
    EXPECT_EQ(input.Line(), L"");
}

TEST(SequentialInput, BytesAreTakenInTheSystemsCodePage) {
    EXPECT_EQ(AllFields("\xC9t\xE9"), Fields{L"Été"});
}

TEST(UserProfileMarker, StandsForTheProfileEachTime) {
    EXPECT_EQ(WithUserProfile(L"**UserProfile**\\a\\**UserProfile**", L"C:\\Users\\agent"),
              L"C:\\Users\\agent\\a\\C:\\Users\\agent");
    EXPECT_EQ(WithUserProfile(L"**userprofile**\\a", L"C:\\Users\\agent"), L"**userprofile**\\a");
}

TEST(UserProfileMarker, UnknownProfileLeavesThePathAsItIs) {
    EXPECT_EQ(WithProfileMarker(L"C:\\Data", L""), L"C:\\Data");
}

} // namespace
