// Lines of a control file that no backup writes: they would steer the archiver.
#include "archive/ControlFile.h"

#include <gtest/gtest.h>

namespace {

TEST(HostileList, WhatABackupWritesCouldBeWritten) {
    for (const wchar_t* path :
         {L"C:\\Mes documents\\a, b.txt", L"D:\\", L"C:\\Data\\*.*", L"C:\\a\\*.*\\b", L"C:\\notes..txt",
          L"C:\\.git\\...a", L"\\\\serveur\\partage\\a.txt", L"c:\\Été\\1 (2) & [3]' -o.doc"})
        EXPECT_TRUE(CouldBeWritten(path, L"Zip0001")) << path;
    EXPECT_TRUE(CouldBeWritten(L"C:\\Clients", L"C:\\Clients"));
    for (const wchar_t* name : {L"Zip12345", L"Zip1"}) EXPECT_TRUE(CouldBeWritten(L"C:\\Clients", name)) << name;
}

TEST(HostileList, DriveIsOneOfTheTwentySixLetters) {
    for (const wchar_t* path : {L"A:\\x", L"Z:\\x", L"a:\\x", L"z:\\x"})
        EXPECT_TRUE(CouldBeWritten(path, L"Zip0001")) << path;
    for (const wchar_t* path : {L"@:\\x", L"[:\\x", L"`:\\x", L"{:\\x", L"1:\\x", L":\\x"})
        EXPECT_FALSE(CouldBeWritten(path, L"Zip0001")) << path;
}

TEST(HostileList, PathsThatLeadElsewhereCouldNot) {
    for (const wchar_t* path : {L"C:\\Data\\..\\Windows\\a.txt", L"C:\\..", L"C:\\a\\.. \\b", L"C:\\a\\...\\b",
                                L"C:\\.\\a", L"C:/Data/../a", L"C:a.txt", L"a.txt", L"..\\a.txt", L"\\a.txt", L"",
                                L"C:", L"-oC:\\a", L"C:\\a\\*.*\\..\\b", L"C:\\.\\*.*.\\b"})
        EXPECT_FALSE(CouldBeWritten(path, L"Zip0001")) << path;
}

TEST(HostileList, CharactersThatNoNameHasCouldNot) {
    for (const wchar_t* path : {L"C:\\a\" -so \"b\\c", L"C:\\a\x01\\b", L"C:\\a\tb", L"C:\\a*\\b", L"C:\\a?",
                                L"C:\\a:b", L"C:\\<a>", L"C:\\a|b"})
        EXPECT_FALSE(CouldBeWritten(path, L"Zip0001")) << path;
}

TEST(HostileList, OtherInnerNamesCouldNot) {
    for (const wchar_t* name :
         {L"", L"Zip", L"zip0001", L"Zip0001 -oC:\\", L"..\\Zip0001", L"Zip00a1", L"C:\\other", L"32", L"-y"})
        EXPECT_FALSE(CouldBeWritten(L"C:\\a.txt", name)) << name;
}

TEST(HostileList, PathsThatWouldBringSwitchesAlongAreNoInnerNames) {
    for (const wchar_t* path :
         {L"\\\\serveur\\a -spf -r b", L"C:\\a -an -ai!\\zip\\b", L"C:\\a @b", L"C:\\a\\b  -so"}) {
        EXPECT_FALSE(CouldBeWritten(path, path)) << path;
        EXPECT_TRUE(CouldBeWritten(path, L"Zip0001")) << path;
    }
    EXPECT_TRUE(CouldBeWritten(L"C:\\Mes documents\\a-b@c", L"C:\\Mes documents\\a-b@c"));
}

TEST(HostileList, EveryLineIsListedAndSaysWhatItIs) {
    std::vector<ControlFileRecord> records;
    ReadControlFile("C:\\a.txt,32,Zip0001\r\nC:\\..\\b.txt,32,Zip0002\r\n**UserProfile**\\k,16,**UserProfile**\\k\r\n"
                    "C:\\m.pst,32,C:\\m.pst\r\nC:\\n.pst,32,..\\n\r\n",
                    L"C:\\Users\\agent", records);
    std::vector<bool> fit;
    for (const ControlFileRecord& record : records) fit.push_back(record.couldBeWritten);
    EXPECT_EQ(fit, (std::vector<bool>{true, false, true, true, false}));
}

} // namespace
