#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Reads the fields of a text file as the platform's sequential-input statement does. A field ends at a comma or at the
/// end of a line (CR, LF or both); blanks around it are dropped; a field that begins with a double quote runs to the
/// next one or to the end of the line, and may hold commas; an empty line is one empty field. A character 26 ends the
/// file, and so do blanks that nothing but the end follows.
class SequentialInput {
  public:
    explicit SequentialInput(std::wstring text);

    /// Whether no field is left.
    bool IsAtEnd() const { return position_ >= text_.size(); }
    /// The next field. Throws 62 (input past end of file) when none is left.
    std::wstring Field();
    /// The rest of the current line whole, commas and quotes included; empty at the end of the file.
    std::wstring Line();

  private:
    void SkipBlanks();
    void SkipLineEnd();
    std::wstring TakeUntil(std::wstring_view terminators);

    std::wstring text_;
    std::size_t position_ = 0;
};

/// The fields of a single line, at least one; a line that ends in a comma ends in an empty field.
std::vector<std::wstring> FieldsOfLine(std::wstring line);
