#include "core/SequentialInput.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace {

constexpr wchar_t EndOfFileMark = 26;
constexpr std::wstring_view Blanks = L" \t";
constexpr std::wstring_view LineEnds = L"\r\n";

} // namespace

SequentialInput::SequentialInput(std::wstring text) : text_(std::move(text)) {
    text_.resize(std::min(text_.find(EndOfFileMark), text_.size()));
    text_.resize(text_.find_last_not_of(Blanks) + 1);
}

std::wstring SequentialInput::Field() {
    SkipBlanks();
    if (IsAtEnd()) throw RuntimeError(ErrorNumber::InputPastEndOfFile);
    std::wstring field;
    if (text_[position_] == L'"') {
        ++position_;
        field = TakeUntil(L"\"\r\n");
        if (!IsAtEnd() && text_[position_] == L'"') ++position_;
        SkipBlanks();
    } else {
        field = TakeUntil(L",\r\n");
        field.resize(field.find_last_not_of(Blanks) + 1);
    }
    if (!IsAtEnd() && text_[position_] == L',') {
        ++position_;
    } else {
        SkipLineEnd();
    }
    return field;
}

std::wstring SequentialInput::Line() {
    std::wstring line = TakeUntil(LineEnds);
    SkipLineEnd();
    return line;
}

void SequentialInput::SkipBlanks() {
    position_ = std::min(text_.find_first_not_of(Blanks, position_), text_.size());
}

void SequentialInput::SkipLineEnd() {
    if (!IsAtEnd() && text_[position_] == L'\r')
        ++position_;
    else if (IsAtEnd() || text_[position_] != L'\n')
        return;
    if (!IsAtEnd() && text_[position_] == L'\n') ++position_;
}

std::wstring SequentialInput::TakeUntil(std::wstring_view terminators) {
    const std::size_t end = std::min(text_.find_first_of(terminators, position_), text_.size());
    std::wstring taken = text_.substr(position_, end - position_);
    position_ = end;
    return taken;
}

std::vector<std::wstring> FieldsOfLine(std::wstring line) {
    // A line end of its own makes what follows the last comma a field, if only an empty one.
    SequentialInput input(std::move(line) + L"\n");
    std::vector<std::wstring> fields;
    do fields.push_back(input.Field());
    while (!input.IsAtEnd());
    return fields;
}
