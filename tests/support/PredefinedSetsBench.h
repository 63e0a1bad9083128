#pragma once

#include "core/SpaceValues.h"
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A selection whose sets name three files of C:\Data.
class PredefinedSetsTest : public testing::Test, protected SelectionBench {
  protected:
    using Texts = std::vector<std::wstring>;

    PredefinedSetsTest() {
        machine.files.AddSizedFile(L"C:\\Data\\a.dat", 1000);
        machine.files.AddSizedFile(L"C:\\Data\\b.dat", 2001);
        machine.files.AddSizedFile(L"C:\\Data\\Sub\\c.dat", 4000);
    }

    SetBox Box(std::int32_t index) const { return list.Box(index); }
    void ExpectSpaceIsTheSum() { EXPECT_EQ(machine.app.space->requiredSpace, SumOfItems()); }
};
