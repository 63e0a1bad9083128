#include "shell/ErrorReport.h"
#include "core/LanguageValues.h"
#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace {

TEST(ErrorReport, ReadsInFrenchAsTheSupportDeskKnowsIt) {
    FakeMachine machine;
    ReportError(machine.app, L"InitLangue, module frmMain", 13, L"Type mismatch");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text,
              L"Erreur nº 13 (Type mismatch) dans la procédure InitLangue, module frmMain à la ligne nº 0\r\n\r\n"
              L"Veuillez contacter Ardel-Services au 1-800-555-0199 en citant la première partie de ce message.");
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Erreur fatale du logiciel de prise de sauvegarde");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, 16u);
}

TEST(ErrorReport, ReadsInEnglishWithItsOwnTitle) {
    FakeMachine machine;
    machine.app.language->lngLangue = 10000;
    ReportError(machine.app, L"InitLangue, module frmMain", 13, L"Type mismatch");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text,
              L"Error number 13 (Type mismatch) in procedure InitLangue, module frmMain at line number 0\r\n\r\n"
              L"Please contact the Ardel Support Desk at 1-800-555-0142 quoting the first part of this message.");
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Fatal error of the backup software");
}

TEST(ErrorReport, LogsWhatItShows) {
    FakeMachine machine;
    ReportError(machine.app, L"Add, Class clsColFileInfo", 457, L"x");
    ASSERT_EQ(machine.eventLog.errors.size(), 1u);
    EXPECT_EQ(machine.eventLog.errors[0], machine.messageBoxes.shown.at(0).text);
}

TEST(ErrorReport, IsLoggedBeforeItIsShown) {
    FakeMachine machine;
    std::size_t loggedWhenShown = 0;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        loggedWhenShown = machine.eventLog.errors.size();
    };
    ReportError(machine.app, L"P, module M", 5, L"x");
    EXPECT_EQ(loggedWhenShown, 1u);
}

TEST(ErrorReport, ProcedureWithoutLineNumbersReportsLineZero) {
    FakeMachine machine;
    Guarded(machine.app, L"P, module M", [] { throw RuntimeError(ErrorNumber::DiskFull); });
    EXPECT_NE(machine.messageBoxes.shown.at(0).text.find(L"P, module M à la ligne nº 0\r\n"), std::wstring::npos);
}

TEST(ErrorReport, NumbersAndLinesAreWrittenInDecimal) {
    FakeMachine machine;
    ReportError(machine.app, L"P, module M", -2147221164, L"x", 32767);
    EXPECT_NE(machine.messageBoxes.shown.at(0).text.find(L"nº -2147221164 (x)"), std::wstring::npos);
    EXPECT_NE(machine.messageBoxes.shown.at(0).text.find(L"ligne nº 32767\r\n"), std::wstring::npos);
}

TEST(Guarded, GivesTheStepsValueWhenTheySucceed) {
    FakeMachine machine;
    EXPECT_EQ(Guarded(machine.app, L"P, module M", [] { return 42; }), 42);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST(Guarded, StopsTheProcedureKeepsItsEffectsAndGivesTheDefault) {
    FakeMachine machine;
    int steps = 0;
    const int result = Guarded(machine.app, L"P, module M", [&]() -> int {
        ++steps;
        throw RuntimeError(ErrorNumber::DiskFull);
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(steps, 1);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"61 (Disk full)"), std::wstring::npos);
}

TEST(Guarded, ReportsOnceThroughNestedProcedures) {
    FakeMachine machine;
    bool hasGoneOn = false;
    Guarded(machine.app, L"Outer, module M", [&] {
        Guarded(machine.app, L"Inner, module M", [] { throw RuntimeError(ErrorNumber::FileNotFound); });
        hasGoneOn = true;
    });
    EXPECT_TRUE(hasGoneOn);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"Inner, module M"), std::wstring::npos);
}

TEST(Guarded, GivesForeignFailuresANumberToo) {
    FakeMachine machine;
    Guarded(machine.app, L"P, module M", [] { throw std::bad_alloc(); });
    Guarded(machine.app, L"P, module M", [] { throw std::runtime_error("strange"); });
    Guarded(machine.app, L"P, module M", [] { throw 1; });
    ASSERT_EQ(machine.messageBoxes.shown.size(), 3u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L" 7 (Out of memory)"), std::wstring::npos);
    EXPECT_NE(machine.messageBoxes.shown[1].text.find(L" 5 (strange)"), std::wstring::npos);
    EXPECT_NE(machine.messageBoxes.shown[2].text.find(L" 5 (Invalid procedure call or argument)"), std::wstring::npos);
}

} // namespace
