#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A text of which there are very many: a plain letter takes one byte, and any letter comes back as it was. Borrowed
/// from the `PackedTexts` that keep it.
class PackedText {
  public:
    PackedText() = default;

    operator std::wstring() const;
    // Named as in the strings that it stands in for.
    std::size_t size() const { return Letters(*this).Left(); } // NOLINT(readability-identifier-naming)
    bool empty() const { return size() == 0; }                 // NOLINT(readability-identifier-naming)
    bool operator==(std::wstring_view text) const;

    /// Gives the letters one after another, without a copy of the text.
    class Letters {
      public:
        explicit Letters(PackedText text) : at_(text.bytes_), left_(at_ ? Number() : 0) {}
        std::size_t Left() const { return left_; }
        wchar_t Next() {
            --left_;
            return static_cast<wchar_t>(Number());
        }

      private:
        std::uint32_t Number();

        const unsigned char* at_;
        std::size_t left_;
    };

  private:
    friend class PackedTexts;
    explicit PackedText(const unsigned char* bytes) : bytes_(bytes) {}

    const unsigned char* bytes_ = nullptr;
};

/// Keeps texts where they are, also while others are added or it is moved.
class PackedTexts {
  public:
    PackedText Keep(std::wstring_view text);

  private:
    std::vector<std::unique_ptr<unsigned char[]>> blocks_;
    unsigned char* free_ = nullptr;
    std::size_t freeBytes_ = 0;
};

/// The order of two names for which the case of letters is the same; negative: the left one comes first.
int OrderOfNames(PackedText left, PackedText right);

/// Finds texts by what they say: their numbers. The texts stay with whoever has them.
class TextIndex {
  public:
    enum class Case { Matters, IsTheSame };
    using TextOf = std::function<PackedText(std::uint32_t number)>;

    TextIndex() = default;
    /// Of the texts from number 0 on.
    TextIndex(std::size_t count, TextOf textOf, Case letterCase);
    /// The numbers of the texts that are equal to this one, the smallest first.
    std::span<const std::uint32_t> Find(std::wstring_view text) const;

  private:
    template<typename Letters>
    int OrderFrom(std::uint32_t number, Letters other) const;

    TextOf textOf_;
    std::vector<std::uint32_t> order_; ///< the numbers, by the lengths of the texts and then by their letters
    Case case_ = Case::Matters;
};
