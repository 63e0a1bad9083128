#include "check/PackedText.h"

#include "platform/Text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

// A number stands in groups of seven bits, the lowest first; each but the last has the eighth bit set.
constexpr unsigned GroupBits = 7;
constexpr unsigned MoreGroups = 1u << GroupBits;
constexpr std::size_t LongestNumber = 5;
constexpr std::size_t BlockBytes = 65536;
constexpr wchar_t FirstBeyondAscii = 0x80;

unsigned char* Put(std::uint32_t number, unsigned char* at) {
    for (; number >= MoreGroups; number >>= GroupBits) *at++ = static_cast<unsigned char>(number | MoreGroups);
    *at++ = static_cast<unsigned char>(number);
    return at;
}

wchar_t Folded(wchar_t letter) {
    if (letter >= L'a' && letter <= L'z') return static_cast<wchar_t>(letter - L'a' + L'A');
    if (letter < FirstBeyondAscii) return letter;
    return UpperCase({&letter, 1}).front();
}

wchar_t AsItIs(wchar_t letter) {
    return letter;
}

template<typename Value>
int Order(Value left, Value right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

/// The letters of a text that is not packed.
class PlainLetters {
  public:
    explicit PlainLetters(std::wstring_view text) : text_(text) {}
    std::size_t Left() const { return text_.size(); }
    wchar_t Next() {
        const wchar_t letter = text_.front();
        text_.remove_prefix(1);
        return letter;
    }

  private:
    std::wstring_view text_;
};

/// Letter by letter: with very many texts, copies would take longer than all else.
template<typename Letters, typename Shape>
int OrderOfLetters(PackedText::Letters first, Letters second, Shape shape) {
    while (first.Left() > 0 && second.Left() > 0) {
        const wchar_t one = first.Next();
        const wchar_t other = second.Next();
        if (one == other) continue;
        if (const int order = Order(shape(one), shape(other)); order != 0) return order;
    }
    return Order(first.Left(), second.Left());
}

} // namespace

std::uint32_t PackedText::Letters::Number() {
    std::uint32_t number = 0;
    for (unsigned shift = 0;; shift += GroupBits) {
        const unsigned char group = *at_++;
        number |= (group & (MoreGroups - 1)) << shift;
        if (group < MoreGroups) return number;
    }
}

PackedText::operator std::wstring() const {
    Letters letters(*this);
    std::wstring text(letters.Left(), L'\0');
    for (wchar_t& letter : text) letter = letters.Next();
    return text;
}

bool PackedText::operator==(std::wstring_view text) const {
    Letters letters(*this);
    return letters.Left() == text.size() &&
           std::all_of(text.begin(), text.end(), [&](wchar_t letter) { return letter == letters.Next(); });
}

PackedText PackedTexts::Keep(std::wstring_view text) {
    if (text.empty()) return {};
    const std::size_t mostBytes = (text.size() + 1) * LongestNumber;
    if (mostBytes > freeBytes_) {
        freeBytes_ = std::max(mostBytes, BlockBytes);
        blocks_.push_back(std::make_unique_for_overwrite<unsigned char[]>(freeBytes_));
        free_ = blocks_.back().get();
    }
    unsigned char* const begin = free_;
    free_ = Put(static_cast<std::uint32_t>(text.size()), free_);
    for (const wchar_t letter : text) free_ = Put(static_cast<std::uint32_t>(letter), free_);
    freeBytes_ -= static_cast<std::size_t>(free_ - begin);
    return PackedText(begin);
}

int OrderOfNames(PackedText left, PackedText right) {
    return OrderOfLetters(PackedText::Letters(left), PackedText::Letters(right), Folded);
}

TextIndex::TextIndex(std::size_t count, TextOf textOf, Case letterCase)
    : textOf_(std::move(textOf)), order_(count), case_(letterCase) {
    std::iota(order_.begin(), order_.end(), 0u);
    std::sort(order_.begin(), order_.end(), [this](std::uint32_t left, std::uint32_t right) {
        const int order = OrderFrom(left, PackedText::Letters(textOf_(right)));
        return order != 0 ? order < 0 : left < right;
    });
}

template<typename Letters>
int TextIndex::OrderFrom(std::uint32_t number, Letters other) const {
    const PackedText::Letters letters(textOf_(number));
    // Names that are numbered stand in their order already that way.
    if (letters.Left() != other.Left()) return Order(letters.Left(), other.Left());
    return case_ == Case::Matters ? OrderOfLetters(letters, other, AsItIs) : OrderOfLetters(letters, other, Folded);
}

std::span<const std::uint32_t> TextIndex::Find(std::wstring_view text) const {
    const PlainLetters wanted(text);
    const auto begin = std::partition_point(order_.begin(), order_.end(),
                                            [&](std::uint32_t number) { return OrderFrom(number, wanted) < 0; });
    const auto end =
        std::partition_point(begin, order_.end(), [&](std::uint32_t number) { return OrderFrom(number, wanted) <= 0; });
    return {begin, end};
}
