// List files as other programs save them, and lists that are damaged at their end.
#include "support/PredefinedSetsBench.h"

namespace {

using namespace std::string_literals;

class SetListEncoding : public PredefinedSetsTest {
  protected:
    SetListEncoding() { machine.files.AddSizedFile(L"C:\\Data\\été.dat", 8); }

    /// The items of a set whose list file has these bytes; nothing is reported of it.
    Texts ItemsOf(const std::string& bytes) {
        AddRawListFile(L"qamor.lst", bytes);
        list.LoadSets();
        EXPECT_TRUE(machine.messageBoxes.shown.empty());
        return Items();
    }
    static std::string Utf16(const std::wstring& text, bool isLittleEndian) {
        std::string bytes = isLittleEndian ? "\xFF\xFE" : "\xFE\xFF";
        for (const wchar_t c : text) {
            const char units[] = {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
            bytes += units[isLittleEndian ? 0 : 1];
            bytes += units[isLittleEndian ? 1 : 0];
        }
        return bytes;
    }

    const Texts summer{L"C:\\Data\\été.dat/32"};
    const Texts first{L"C:\\Data\\a.dat/32"};
};

TEST_F(SetListEncoding, WithoutAMarkAListIsAnsi) {
    EXPECT_EQ(ItemsOf("C:\\Data\\\xE9t\xE9.dat\r\n"), summer);
}

TEST_F(SetListEncoding, ListSavedAsUtf8IsReadAsItsMarkSays) {
    EXPECT_EQ(ItemsOf("\xEF\xBB\xBF"
                      "C:\\Data\\\xC3\xA9t\xC3\xA9.dat\r\n"),
              summer);
}

TEST_F(SetListEncoding, ListSavedAsUtf16IsReadAsItsMarkSays) {
    EXPECT_EQ(ItemsOf(Utf16(L"C:\\Data\\été.dat\r\n", true)), summer);
}

TEST_F(SetListEncoding, ListSavedAsUtf16OfTheOtherOrderIsReadAsItsMarkSays) {
    EXPECT_EQ(ItemsOf(Utf16(L"C:\\Data\\été.dat\r\n", false)), summer);
}

TEST_F(SetListEncoding, UntickingReadsTheListAsTickingDid) {
    ASSERT_EQ(ItemsOf(Utf16(L"C:\\Data\\été.dat\r\n", true)), summer);
    list.ClickBox(1);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(list.ArrayFichier()->Count(), 0);
}

TEST_F(SetListEncoding, EntriesBeforeAStrayEndMarkStay) {
    EXPECT_EQ(ItemsOf("C:\\Data\\a.dat\r\n\x1A\r\nC:\\Data\\b.dat\r\n"), first);
}

TEST_F(SetListEncoding, EntriesBeforeADamagedEndStay) {
    EXPECT_EQ(ItemsOf(Utf16(L"C:\\Data\\a.dat\r\n", true) + "C"), first) << "half a character";
}

TEST_F(SetListEncoding, EntriesBeforeACutUtf8CharacterStay) {
    EXPECT_EQ(ItemsOf("\xEF\xBB\xBF"
                      "C:\\Data\\a.dat\r\nC:\\Data\\\xC3"),
              first);
}

} // namespace
