#include "check/DirectoryTally.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using namespace std::string_literals;

std::string Bytes(std::uint64_t value, std::size_t count) {
    std::string bytes;
    for (; count > 0; --count, value >>= 8) bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

struct Entry {
    std::string name = "a.txt";
    std::uint64_t size = 7;
    std::string extra;
    std::uint64_t system = 0;
    std::uint64_t attributes = 0x21;
    std::string remark;
};

Entry Named(std::string name, std::uint64_t size = 7, std::string extra = {}) {
    Entry entry;
    entry.name = std::move(name);
    entry.size = size;
    entry.extra = std::move(extra);
    return entry;
}

std::string Record(const Entry& entry) {
    return "PK\1\2"s + Bytes(20, 1) + Bytes(entry.system, 1) + Bytes(0, 18) + Bytes(entry.size, 4) +
           Bytes(entry.name.size(), 2) + Bytes(entry.extra.size(), 2) + Bytes(entry.remark.size(), 2) + Bytes(0, 4) +
           Bytes(entry.attributes, 4) + Bytes(0, 4) + entry.name + entry.extra + entry.remark;
}

std::string Extra(std::uint64_t field, const std::string& value) {
    return Bytes(field, 2) + Bytes(value.size(), 2) + value;
}

/// The moments of the system's own field: written, used and created.
std::string Times(std::uint64_t tag = 1) {
    return Extra(0x000A, Bytes(0, 4) + Bytes(tag, 2) + Bytes(24, 2) + Bytes(111, 8) + Bytes(222, 8) + Bytes(333, 8));
}

std::string End(std::uint64_t count) {
    return "PK\5\6"s + Bytes(0, 6) + Bytes(count, 2) + Bytes(0, 10);
}

std::string LargeEnd(std::uint64_t length) {
    return "PK\6\6"s + Bytes(length, 8) + std::string(static_cast<std::size_t>(length), '\0');
}

class Tally : public DirectoryTally {
  public:
    std::vector<DirectoryRecord> records;

  private:
    void OnRecord(std::uint64_t number, const DirectoryRecord& record) override {
        EXPECT_EQ(number, records.size());
        records.push_back(record);
    }
};

class DirectoryTallyTest : public testing::Test {
  protected:
    DirectoryRecord OnlyRecord(const Entry& entry) {
        tally.Take(Record(entry));
        return tally.records.size() == 1 ? tally.records[0] : DirectoryRecord{};
    }
    bool AgreesOn(const std::string& directory) {
        tally.Met(L"a.txt", 7);
        tally.Take(directory);
        return tally.Agrees();
    }

    Tally tally;
};

} // namespace

TEST_F(DirectoryTallyTest, TheDirectoryThatNamesWhatWasMetAgrees) {
    EXPECT_TRUE(AgreesOn(Record({}) + End(1)));
    EXPECT_EQ(tally.MetCount(), 1u);
}

TEST_F(DirectoryTallyTest, TheDirectoryMayComeByteByByteAndARecordMayCarryARemark) {
    tally.Met(L"a.txt", 7);
    Entry entry;
    entry.extra = Times();
    entry.remark = "PK\5\6 in a remark is no end";
    for (const char byte : Record(entry) + End(1)) tally.Take({&byte, 1});
    EXPECT_TRUE(tally.Agrees());
}

TEST_F(DirectoryTallyTest, AnotherNameSizeOrCountDoesNotAgree) {
    EXPECT_FALSE(AgreesOn(Record(Named("b.txt")) + End(1)));
    const std::string others[] = {Record(Named("a.txt", 8)) + End(1), Record({}) + Record({}) + End(2), End(0),
                                  Record({}) + End(2), Record({})};
    for (const std::string& directory : others) {
        Tally other;
        other.Met(L"a.txt", 7);
        other.Take(directory);
        EXPECT_FALSE(other.Agrees());
    }
}

TEST_F(DirectoryTallyTest, AnythingButARecordBreaksIt) {
    EXPECT_FALSE(AgreesOn("PK\3\4"s + Record({}) + End(1)));
}

TEST_F(DirectoryTallyTest, AFoldersSlashAndABackslashInANameMakeNoDifference) {
    tally.Met(L"Dossier\\b", 0);
    tally.Take(Record(Named("Dossier/b/", 0)) + End(1));
    EXPECT_TRUE(tally.Agrees());
}

TEST_F(DirectoryTallyTest, ABackslashAtTheEndOfAFolderMakesNoDifferenceEither) {
    tally.Met(L"Dossier", 0);
    tally.Take(Record(Named("Dossier\\", 0)) + End(1));
    EXPECT_TRUE(tally.Agrees());
}

TEST_F(DirectoryTallyTest, NamesThatAreNotPlainCountByTheirSizeAlone) {
    tally.Met(L"\u00E9t\u00E9.txt", 7);
    tally.Take(Record(Named("\x82t\x82.txt")) + End(1));
    EXPECT_TRUE(tally.Agrees());
}

TEST_F(DirectoryTallyTest, TheSizeOfALargeEntryStandsInItsOwnField) {
    constexpr std::uint64_t size = 0x1234567890;
    tally.Met(L"a.txt", size);
    Entry entry;
    entry.size = 0xFFFFFFFF;
    entry.extra = Extra(0x7075, "other") + Extra(1, Bytes(size, 8));
    tally.Take(Record(entry) + End(1));
    EXPECT_TRUE(tally.Agrees());
}

TEST_F(DirectoryTallyTest, AFieldForLargeSizesSaysNothingOfAnEntryWhoseSizeFits) {
    Entry entry;
    entry.extra = Extra(1, Bytes(9, 8));
    EXPECT_TRUE(AgreesOn(Record(entry) + End(1)));
}

TEST_F(DirectoryTallyTest, TheMomentsOfTheSystemsFieldAreTaken) {
    const DirectoryRecord record = OnlyRecord(Named("a.txt", 7, Times()));
    EXPECT_EQ(record.written, 111u);
    EXPECT_EQ(record.created, 333u);
}

TEST_F(DirectoryTallyTest, AFieldThatIsShortCutOrOfAnotherSortGivesNoMoments) {
    const std::string fields[] = {Times(2), Extra(0x000A, std::string(31, '\1')), Times().substr(0, 35),
                                  Extra(0x000B, Times().substr(4)), "\x0A"s};
    for (const std::string& field : fields) {
        Tally other;
        other.Take(Record(Named("a.txt", 7, field)));
        ASSERT_EQ(other.records.size(), 1u);
        EXPECT_EQ(other.records[0].written, 0u);
        EXPECT_EQ(other.records[0].created, 0u);
    }
}

TEST_F(DirectoryTallyTest, AttributesAreThoseOfWindowsOnly) {
    constexpr std::pair<std::uint64_t, std::uint32_t> systems[] = {{0, 0x23}, {10, 0x23}, {3, 0}};
    for (const auto& [system, attributes] : systems) {
        Entry entry;
        entry.system = system;
        entry.attributes = 0x81A40023;
        Tally other;
        other.Take(Record(entry));
        EXPECT_EQ(other.records.at(0).attributes, attributes) << system;
    }
}

TEST_F(DirectoryTallyTest, TheEndOfALargeArchiveIsPassedOverUpToItsLongest) {
    const std::string place = "PK\6\7"s + Bytes(0, 16);
    EXPECT_TRUE(AgreesOn(Record({}) + LargeEnd(16384) + place + End(1)));
    Tally other;
    other.Met(L"a.txt", 7);
    other.Take(Record({}) + LargeEnd(16385) + place + End(1));
    EXPECT_FALSE(other.Agrees());
}

TEST_F(DirectoryTallyTest, ACountThatIsSaturatedSaysNothing) {
    EXPECT_TRUE(AgreesOn(Record({}) + End(0xFFFF)));
}

TEST_F(DirectoryTallyTest, WhatFollowsTheEndIsNotRead) {
    EXPECT_TRUE(AgreesOn(Record({}) + End(1) + "what else there is"));
    tally.Take("more");
    EXPECT_TRUE(tally.Agrees());
}
