#include "core/SequentialInput.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>

namespace {

constexpr char EndOfFileMark = 26;
constexpr std::string_view Blanks = " \t";

} // namespace

SequentialInput::SequentialInput(std::string_view bytes) : bytes_(bytes.substr(0, bytes.find(EndOfFileMark))) {}

std::wstring SequentialInput::Field() {
    SkipBlanks();
    if (IsAtEnd()) throw RuntimeError(ErrorNumber::InputPastEndOfFile);
    std::string_view field;
    if (bytes_[position_] == '"') {
        ++position_;
        field = TakeUntil("\"\r\n");
        if (!IsAtEnd() && bytes_[position_] == '"') ++position_;
        SkipBlanks();
    } else {
        field = TakeUntil(",\r\n");
        field = field.substr(0, field.find_last_not_of(Blanks) + 1);
    }
    if (!IsAtEnd() && bytes_[position_] == ',') {
        ++position_;
    } else {
        SkipLineEnd();
    }
    return FromAnsi(field);
}

std::wstring SequentialInput::Line() {
    const std::string_view line = TakeUntil("\r\n");
    SkipLineEnd();
    return FromAnsi(line);
}

void SequentialInput::SkipBlanks() {
    position_ = std::min(bytes_.find_first_not_of(Blanks, position_), bytes_.size());
}

void SequentialInput::SkipLineEnd() {
    if (!IsAtEnd() && bytes_[position_] == '\r')
        ++position_;
    else if (IsAtEnd() || bytes_[position_] != '\n')
        return;
    if (!IsAtEnd() && bytes_[position_] == '\n') ++position_;
}

std::string_view SequentialInput::TakeUntil(std::string_view terminators) {
    const std::size_t end = std::min(bytes_.find_first_of(terminators, position_), bytes_.size());
    const std::string_view taken = bytes_.substr(position_, end - position_);
    position_ = end;
    return taken;
}
