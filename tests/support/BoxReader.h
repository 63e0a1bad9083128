#pragma once

#include "support/FakeMessageBoxes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

/// A fixture that says what boxes the user must have been shown.
class BoxReader {
  protected:
    ~BoxReader() = default;
    virtual const FakeMessageBoxes& Boxes() const = 0;

    void ExpectBox(std::size_t at, const std::wstring& text, const std::wstring& title, std::uint32_t style) const {
        ASSERT_LT(at, Boxes().shown.size());
        EXPECT_EQ(Boxes().shown[at].text, text);
        EXPECT_EQ(Boxes().shown[at].title, title);
        EXPECT_EQ(Boxes().shown[at].style, style);
    }
    void ExpectOnlyBox(const std::wstring& text, const std::wstring& title, std::uint32_t style) const {
        EXPECT_EQ(Boxes().shown.size(), 1u);
        ExpectBox(0, text, title, style);
    }
};
