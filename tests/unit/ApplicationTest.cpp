#include "core/Application.h"

#include "core/ArchiveValues.h"
#include "core/StartUpValues.h"
#include "platform/Files.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using ConstantApplication = const Application&;

TEST(Application, AConstantOneLetsValuesBeReadOnly) {
    using Value = decltype((std::declval<ConstantApplication>().archive->archiveSizeBytes));
    EXPECT_TRUE((std::is_same_v<Value, const std::int64_t&>));
}

TEST(Application, AConstantOneLetsPortsBeAskedOnly) {
    EXPECT_TRUE((std::is_same_v<decltype(*std::declval<ConstantApplication>().machine.files), const Files&>));
    EXPECT_TRUE(
        (std::is_same_v<decltype(std::declval<ConstantApplication>().machine.files.operator->()), const Files*>));
}

TEST(Application, AConstantWayToAPortGivesNoOtherOne) {
    EXPECT_FALSE((std::is_constructible_v<Port<Files>, const Port<Files>&>));
    EXPECT_FALSE((std::is_constructible_v<Machine, const Machine&>));
}

TEST(Application, ListsOfTheSetsAreBelowTheRootThatTheProgramWasFoundIn) {
    FakeMachine machine;
    machine.app.startUp->strRepRacine = L"D:\\Valcoreaux";
    EXPECT_EQ(machine.app.ListFileFolder(), L"D:\\Valcoreaux\\backup\\Fichierlst\\Medium\\");
}

} // namespace
